#include "decoder/write_batch.h"

#include "base/prompt.h"
#include "decoder/decoder_bench.h"
#include "link/station_link.h"

namespace lokari {
namespace {

constexpr int kHighestShortAddress = 127;
constexpr int kHighestAddress = 10239;
constexpr int kLongAddressMark = 192;

}  // namespace

WriteBatch::WriteBatch(DecoderBench& bench, bool progOn)
    : BatchRun(bench, progOn,
               {.write = true,
                .verb = u"Schreibe",
                .nothingToDo = u"Keine Daten zum Schreiben ausgewählt!",
                .takingOver = u"OK übernimmt diesen Hersteller und seinen ersten Decodertyp mit "
                              u"dessen Vorgabewerten. Geschrieben wird in beiden Fällen nichts.",
                .addressSteps = 2,
                .leavesOut = u"Nicht geschrieben werden, obwohl angekreuzt:"}) {}

WriteBatch::Written WriteBatch::write(CvIndex cv, int wanted,
                                      const std::function<void()>& onFailure) {
  inHand_ = description().cvText(cv);
  const int result = link().WriteCV(description().realNumber(cv).value(), wanted, address_,
                                    description().PROGMODE);
  if (result == wanted) return Written::Done;
  onFailure();
  return surviveWrite(cv, wanted, result) ? Written::Failed : Written::Ended;
}

CvDeed WriteBatch::deed() const {
  return settings().station().provesWrites(progOn()) ? CvDeed::Proved : CvDeed::Unproved;
}

bool WriteBatch::finish(CvIndex cv, Written outcome, int sent) {
  if (outcome == Written::Ended) return false;
  if (outcome == Written::Done) {
    report(cv, deed(), sent);
    bench_.sets.setWritten(cv, deed() == CvDeed::Proved);
  } else {
    bench_.sets.setWriteFailed(cv);
  }
  return true;
}

// ---- Before the main loop ---------------------------------------------------------------------

bool WriteBatch::checks() {
  if (!progOn() && !findMainAddress()) return false;
  address_ = bench_.addressNumber().value_or(0);
  if (cancelled()) return endAs(End::Orderly);
  if (settings().manufacturerCheckNow && progOn() && !checkMaker()) return false;
  if (cancelled()) return endAs(End::Orderly);
  if (settings().addressCheckNow && progOn() && !readConfig()) return false;
  if (addressMarked()) {
    // Asked ahead of everything that is written.
    if (!confirmConfig(expectedState())) return endAs(End::Orderly);
    if (!writeAddress()) return false;
  } else {
    if (settings().addressCheckNow && progOn() && !compareAddress()) return false;
    if (!confirmConfig(configState())) return endAs(End::Orderly);
  }
  if (cancelled()) return endAs(End::Orderly);
  startProgress();
  return true;
}

bool WriteBatch::findMainAddress() {
  const auto address = bench_.addressNumber();
  if (!address || *address < 1 || *address > kHighestAddress) {
    // The main track has more than one vehicle: without an address the write would reach another.
    const QString text = QStringLiteral("Eingegebene Adresse ungültig!");
    bench_.parts_.prompt.message(text);
    status(text);
    return endAs(End::Failed);
  }
  const int known = *address > kHighestShortAddress ? link().getAddrIndex(*address) : *address;
  if (known >= 0) {
    link().pomAddr = known;
    return true;
  }
  const QString text = QStringLiteral("Adresse derzeit nicht verfügbar!");
  bench_.parts_.prompt.message(text);
  settings().continueOnError = false;
  status(text);
  return endAs(End::Failed);
}

bool WriteBatch::checkMaker() {
  status(QStringLiteral("Herstellerkontrolle ..."));
  const auto maker = read(CvIndex(cv::kMaker));
  if (!maker) return false;
  switch (askMaker(*maker)) {
    case MakerAnswer::Same:
      return true;
    case MakerAnswer::TakeOver:
      // The description differs now, so nothing is written.
      takeOverMaker(*maker);
      break;
    case MakerAnswer::Cancel:
      break;
  }
  return endAs(End::Orderly);
}

bool WriteBatch::readConfig() {
  status(QStringLiteral("Lese Grundeinstellungen..."));
  const auto config = readConfigCv();
  if (!config) return false;
  // What could not be read must not be written back.
  if (link().lastCvFailed) return true;
  config_ = *config;
  configRead_ = config_;
  const bool functionDecoder = (config_ & config_bit::kFunctionDecoder) != 0;
  return !functionDecoder || acceptFunctionDecoder() || endAs(End::Orderly);
}

bool WriteBatch::writeAddress() {
  const auto address = bench_.addressNumber();
  if (!address || *address < 1 || *address > kHighestAddress) {
    const QString text = QStringLiteral("Eingegebene Adresse ungültig!");
    bench_.report_.add({.cv = CvIndex(cv::kAddress), .deed = CvDeed::Failed, .reason = text});
    bench_.parts_.prompt.message(text);
    return true;
  }
  status(QStringLiteral("Schreibe Adresse..."));
  bool failed = false;
  bool refused = false;
  const bool isLong = *address > kHighestShortAddress;
  const bool goesOn =
      isLong ? writeLongAddress(*address, failed, refused) : writeShortAddress(*address, failed);
  if (!goesOn) return false;
  if (failed && !refused) {
    if (isLong) {
      bench_.sets.setMark(CvIndex(cv::kLongAddressHigh), CvMark::Failed);
      bench_.sets.setMark(CvIndex(cv::kLongAddressLow), CvMark::Failed);
    } else {
      bench_.sets.setMark(CvIndex(cv::kAddress), CvMark::Failed);
    }
  }
  if (!failed && !refused) report(CvIndex(cv::kAddress), deed(), *address);
  refillAddress();
  done_ = 1;
  return true;
}

void WriteBatch::failAddress(CvIndex cv) {
  bench_.report_.add({.cv = CvIndex(cv::kAddress), .deed = CvDeed::Failed, .reason = {}});
  bench_.sets.setMark(cv, CvMark::Failed);
  refillAddress();
}

bool WriteBatch::writeShortAddress(int address, bool& failed) {
  const CvIndex cv(cv::kAddress);
  const Written written = write(cv, address, [&] { failAddress(cv); });
  if (!finish(cv, written, address)) return false;
  failed = written == Written::Failed;
  // The kind of address changes only with an address that is there.
  if (failed) return true;
  if (config_ >= 0) {
    config_ &= ~config_bit::kLongAddress;
    const int answer = link().WriteCV(configCv(), config_, address_, description().PROGMODE);
    noteConfig(config_, answer == config_);
  }
  forceConfig_ = true;
  return true;
}

bool WriteBatch::writeLongAddress(int address, bool& failed, bool& refused) {
  int answer = config_bit::kLongAddress;
  if (config_ >= 0) {
    const int withBit = config_ | config_bit::kLongAddress;
    inHand_ = QStringLiteral("CV %1").arg(configCv());
    answer = link().WriteCV(configCv(), withBit, address_, description().PROGMODE);
    noteConfig(withBit, answer == withBit);
    if (answer < 0) {
      if (!survive(CvIndex(cv::kConfig), answer)) return false;
      answer = 0;
    }
    if ((answer & config_bit::kLongAddress) != 0) config_ = withBit;
  } else {
    forceConfig_ = true;
  }
  if ((answer & config_bit::kLongAddress) == 0) {
    refused = true;
    failAddress(CvIndex(cv::kAddress));
    const Answer go =
        bench_.parts_.prompt.ask(QStringLiteral("Decoder unterstützt keine Adresse über 127!"),
                                 Buttons::OkCancel, Icon::Warning);
    return go == Answer::Ok || endAs(End::Orderly);
  }
  // The marks are crossed: that of CV 17 follows the write of CV 18, and the other way round.
  const CvIndex high(cv::kLongAddressHigh);
  const CvIndex low(cv::kLongAddressLow);
  const auto writeHalf = [&](CvIndex half, CvIndex other, int wanted) {
    const Written written = write(half, wanted, [&] { failAddress(half); });
    if (written == Written::Ended) return false;
    if (written == Written::Done) bench_.sets.setWritten(other, deed() == CvDeed::Proved);
    failed = failed || written == Written::Failed;
    return true;
  };
  if (!writeHalf(low, high, address & 255)) return false;
  if (!writeHalf(high, low, address / 256 | kLongAddressMark)) return false;
  longWritten_ = true;
  return true;
}

bool WriteBatch::compareAddress() {
  status(QStringLiteral("Adresskontrolle ..."));
  const auto found = readAddress();
  if (!found) return false;
  const auto address = bench_.addressNumber();
  return !address || *address == *found || acceptAddress(*found) || endAs(End::Orderly);
}

// ---- The CVs ----------------------------------------------------------------------------------

bool WriteBatch::consist() {
  status(QStringLiteral("Schreibe Verbundadresse (CV 19)"));
  const CvIndex cv(cv::kConsist);
  const int wanted = bench_.sets.value(cv);
  const auto show = [&] {
    constexpr int kDirectionBit = 128;
    bench_.refillField(QStringLiteral("txtDcComConsist"), QString::number(wanted & ~kDirectionBit));
  };
  const Written written = write(cv, wanted, [&] {
    bench_.sets.setWriteFailed(cv);
    show();
  });
  if (!finish(cv, written, wanted)) return false;
  show();
  bench_.CheckDcField(QStringLiteral("txtDcComConsist"), cv, consistRange());
  countDone();
  return true;
}

bool WriteBatch::tablePoint(CvIndex cv) {
  status(QStringLiteral("Schreibe Geschwindigkeitstabelle (CV %1)").arg(cv.value()));
  const int wanted = bench_.sets.value(cv);
  const Written written = write(cv, wanted, [&] {
    bench_.sets.setWriteFailed(cv);
    bench_.showValue(cv);
  });
  if (!finish(cv, written, wanted)) return false;
  bench_.showValue(cv);
  countDone();
  return true;
}

bool WriteBatch::plain(CvIndex cv) {
  plainStatus(cv);
  const int wanted = bench_.sets.value(cv);
  const auto markFailed = [&] {
    bench_.sets.setWriteFailed(cv);
    bench_.showValue(cv);
  };
  switch (selectBank(cv)) {
    case Bank::Ended:
      return false;
    case Bank::Missed:
      markFailed();
      break;
    case Bank::Selected:
      if (!finish(cv, write(cv, wanted, markFailed), wanted)) return false;
  }
  showInControl(cv, wanted);
  countDone();
  return true;
}

void DecoderBench::WriteComm() {
  WriteBatch(*this, parts_.link.commJob == CommJob::WriteProgTrack).run();
}

}  // namespace lokari
