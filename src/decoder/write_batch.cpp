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
                .addressSteps = 2}) {}

template <typename OnFailure>
WriteBatch::Written WriteBatch::write(int cv, int wanted, OnFailure onFailure) {
  const int result = link().WriteCV(cv, wanted, address_, description().PROGMODE);
  if (result == wanted) return Written::Verified;
  onFailure();
  return surviveWrite(wanted, result) ? Written::Failed : Written::Ended;
}

bool WriteBatch::finish(CvIndex cv, Written outcome) {
  if (outcome == Written::Ended) return false;
  bench_.sets.setMark(cv, outcome == Written::Verified ? CvMark::Verified : CvMark::Failed);
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
    if (!writeAddress()) return false;
  } else if (settings().addressCheckNow && progOn() && !compareAddress()) {
    return false;
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
  const auto maker = read(cv::kMaker);
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
  const auto config = read(configCv());
  if (!config) return false;
  // What could not be read must not be written back.
  if (link().lastCvFailed) return true;
  config_ = *config;
  const bool functionDecoder = (config_ & config_bit::kFunctionDecoder) != 0;
  return !functionDecoder || acceptFunctionDecoder() || endAs(End::Orderly);
}

bool WriteBatch::writeAddress() {
  const auto address = bench_.addressNumber();
  if (!address || *address < 1 || *address > kHighestAddress) {
    bench_.parts_.prompt.message(QStringLiteral("Eingegebene Adresse ungültig!"));
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
  refillAddress();
  done_ = 1;
  return true;
}

bool WriteBatch::writeShortAddress(int address, bool& failed) {
  const CvIndex cv(cv::kAddress);
  const Written written = write(cv::kAddress, address, [&] {
    bench_.sets.setMark(cv, CvMark::Failed);
    refillAddress();
  });
  if (!finish(cv, written)) return false;
  failed = written == Written::Failed;
  // The kind of address changes only with an address that is there.
  if (failed) return true;
  if (config_ >= 0) {
    config_ &= ~config_bit::kLongAddress;
    link().WriteCV(configCv(), config_, address_, description().PROGMODE);
  }
  forceConfig_ = true;
  return true;
}

bool WriteBatch::writeLongAddress(int address, bool& failed, bool& refused) {
  int answer = config_bit::kLongAddress;
  if (config_ >= 0) {
    const int withBit = config_ | config_bit::kLongAddress;
    answer = link().WriteCV(configCv(), withBit, address_, description().PROGMODE);
    if (answer < 0) {
      if (!survive(answer)) return false;
      answer = 0;
    }
    if ((answer & config_bit::kLongAddress) != 0) config_ = withBit;
  } else {
    forceConfig_ = true;
  }
  if ((answer & config_bit::kLongAddress) == 0) {
    refused = true;
    bench_.sets.setMark(CvIndex(cv::kAddress), CvMark::Failed);
    refillAddress();
    const Answer go =
        bench_.parts_.prompt.ask(QStringLiteral("Decoder unterstützt keine Adresse über 127!"),
                                 Buttons::OkCancel, Icon::Warning);
    return go == Answer::Ok || endAs(End::Orderly);
  }
  // The marks are crossed: that of CV 17 follows the write of CV 18, and the other way round.
  const CvIndex high(cv::kLongAddressHigh);
  const CvIndex low(cv::kLongAddressLow);
  const auto writeHalf = [&](CvIndex half, CvIndex other, int wanted) {
    const Written written = write(half.value(), wanted, [&] {
      bench_.sets.setMark(half, CvMark::Failed);
      refillAddress();
    });
    if (written == Written::Ended) return false;
    if (written == Written::Verified) bench_.sets.setMark(other, CvMark::Verified);
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
  const Written written = write(cv::kConsist, wanted, [&] {
    bench_.sets.setMark(cv, CvMark::Failed);
    show();
  });
  if (!finish(cv, written)) return false;
  show();
  bench_.CheckDcField(QStringLiteral("txtDcComConsist"), cv, consistRange());
  countDone();
  return true;
}

bool WriteBatch::config() {
  status(QStringLiteral("Schreibe Grundeinstellungen (CV 29)"));
  const CvIndex cv(cv::kConfig);
  int wanted = bench_.sets.value(cv);
  if (!longWritten_ && config_ >= 0) {
    // Added, not merged: a value that holds the bit already carries into bit 6. Beyond a byte
    // there is nothing to carry into.
    const int bit = config_ & config_bit::kLongAddress;
    wanted = wanted + bit <= 255 ? wanted + bit : wanted | bit;
  } else if (longWritten_ || address_ > kHighestShortAddress) {
    wanted |= config_bit::kLongAddress;
  }
  if (bench_.controls.at(QStringLiteral("optDcComRailComYes")).checked) {
    wanted |= config_bit::kPulseOrRailCom;
  }
  const Written written = write(cv::kConfig, wanted, [&] {
    bench_.sets.setMark(cv, CvMark::Failed);
    bench_.switchDirectionOverAndBack();
  });
  if (!finish(cv, written)) return false;
  bench_.switchDirectionOverAndBack();
  countDone();
  return true;
}

bool WriteBatch::tablePoint(CvIndex cv) {
  status(QStringLiteral("Schreibe Geschwindigkeitstabelle (CV %1)").arg(cv.value()));
  const Written written = write(cv.value(), bench_.sets.value(cv), [&] {
    bench_.sets.setMark(cv, CvMark::Failed);
    bench_.showValue(cv);
  });
  if (!finish(cv, written)) return false;
  bench_.showValue(cv);
  countDone();
  return true;
}

bool WriteBatch::plain(CvIndex cv) {
  plainStatus(cv);
  const int wanted = bench_.sets.value(cv);
  const auto markFailed = [&] {
    bench_.sets.setMark(cv, CvMark::Failed);
    bench_.showValue(cv);
  };
  switch (selectBank(cv)) {
    case Bank::Ended:
      return false;
    case Bank::Missed:
      markFailed();
      break;
    case Bank::Selected:
      if (!finish(cv, write(description().realNumber(cv).value(), wanted, markFailed))) {
        return false;
      }
  }
  showInControl(cv, wanted);
  countDone();
  return true;
}

void DecoderBench::WriteComm() {
  WriteBatch(*this, parts_.link.commJob == CommJob::WriteProgTrack).run();
}

}  // namespace lokari
