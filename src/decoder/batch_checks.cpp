// What a batch read and a batch write look at first: the decoder's address, its maker, its kind.
#include "base/prompt.h"
#include "db/catalogue.h"
#include "decoder/batch_run.h"
#include "decoder/decoder_bench.h"
#include "link/station_link.h"

namespace lokari {
namespace {

/// Makers that raise no question: none, and the number for home-built decoders.
constexpr int kNoMaker = 0;
constexpr int kPublicMaker = 13;

constexpr int kHighestShortAddress = 127;

}  // namespace

std::optional<int> BatchRun::readAddress() {
  const auto config = readConfigCv();
  if (!config) return std::nullopt;
  // What could not be read is not known: it must neither warn nor be written back.
  if (link().lastCvFailed) return 0;
  config_ = *config;
  if ((config_ & config_bit::kLongAddress) == 0) return read(CvIndex(cv::kAddress));
  const auto low = read(CvIndex(cv::kLongAddressLow));
  if (!low || link().lastCvFailed) return low;
  const auto high = read(CvIndex(cv::kLongAddressHigh));
  if (!high || link().lastCvFailed) return high;
  constexpr int kHighMask = 63;
  return (*high & kHighMask) * 256 + *low;
}

void BatchRun::markAddressFailed() {
  bench_.sets.setMark(CvIndex(cv::kAddress), CvMark::Failed);
  const auto address = bench_.addressNumber();
  if (address && *address > kHighestShortAddress) {
    bench_.sets.setMark(CvIndex(cv::kLongAddressHigh), CvMark::Failed);
    bench_.sets.setMark(CvIndex(cv::kLongAddressLow), CvMark::Failed);
  }
  refillAddress();
}

bool BatchRun::acceptAddress(int found) {
  markAddressFailed();
  const QString text = QStringLiteral("Abweichende Adresse im Empfänger (%1)!").arg(found);
  return bench_.parts_.prompt.ask(text, Buttons::OkCancel, Icon::Warning) == Answer::Ok;
}

bool BatchRun::acceptFunctionDecoder() {
  return bench_.parts_.prompt.ask(QStringLiteral("Achtung: Funktionsdecoder!"), Buttons::OkCancel,
                                  Icon::Warning) == Answer::Ok;
}

QString BatchRun::makerName(int number) const {
  const auto maker = bench_.parts_.catalogue.makerByNumber(number);
  return maker ? maker->name : QString::number(number);
}

BatchRun::MakerAnswer BatchRun::askMaker(int number) {
  if (number == bench_.dcManufNo || number == kNoMaker || number == kPublicMaker) {
    return MakerAnswer::Same;
  }
  const QString text =
      QStringLiteral("Abweichender Decoderhersteller (%1)!").arg(makerName(number));
  const Answer answer =
      bench_.parts_.prompt.ask(Box{.text = text,
                                   .buttons = Buttons::OkCancel,
                                   .icon = Icon::Warning,
                                   .more = QString::fromUtf16(direction_.takingOver)});
  return answer == Answer::Ok ? MakerAnswer::TakeOver : MakerAnswer::Cancel;
}

void BatchRun::takeOverMaker(int number) {
  bench_.chooseManufacturer(makerName(number));
}

}  // namespace lokari
