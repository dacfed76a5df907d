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
  if (cancelled()) {
    endAs(End::Orderly);
    return Written::Ended;
  }
  const int result = send(cv, description().realNumber(cv).value(), wanted);
  if (result == wanted) return Written::Done;
  onFailure();
  return surviveWrite(cv, wanted, result) ? Written::Failed : Written::Ended;
}

int WriteBatch::send(CvIndex cv, int number, int wanted) {
  // Remembered ahead of the message: behind it the line may break.
  const bool isConfig = cv == CvIndex(cv::kConfig);
  if (isConfig) noteConfig(wanted, false);
  const bool isFirst = bench_.written_.insert(cv).second;
  const int result = writeCv(number, wanted);
  if (isFirst && link().lastCvRefused) bench_.written_.erase(cv);
  if (isConfig) noteConfig(wanted, result == wanted);
  return result;
}

bool WriteBatch::canSend(CvIndex cv) const {
  return settings().station().canSendWrite(description().realNumber(cv).value(), progOn(),
                                           settings().lenzV36);
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
    if (!confirmConfig(expectedState()) || cancelled()) return endAs(End::Orderly);
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
  if (link().lastCvFailed) {
    return goOnUnchecked(QStringLiteral("Der Hersteller des Decoders ließ sich nicht prüfen!"));
  }
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
  if (link().lastCvFailed) {
    // Without its tick the address is compared behind this, with a question of its own.
    return !addressMarked() ||
           goOnUnchecked(QStringLiteral("Die Art des Decoders (CV 29) ließ sich nicht prüfen!"));
  }
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
  addressJob_.begin(*address);
  const bool isLong = *address > kHighestShortAddress;
  if (!(isLong ? writeLongAddress(*address) : writeShortAddress(*address))) return false;
  refillAddress();
  done_ = 1;
  return true;
}

void WriteBatch::failAddress(CvIndex cv) {
  addressJob_.setNumber(AddressJob::Part::Failed);
  bench_.report_.add({.cv = CvIndex(cv::kAddress), .deed = CvDeed::Failed, .reason = {}});
  bench_.sets.setMark(cv, CvMark::Failed);
  refillAddress();
}

bool WriteBatch::writeShortAddress(int address) {
  const CvIndex cv(cv::kAddress);
  const Written written = write(cv, address, [&] { failAddress(cv); });
  if (written == Written::Done) addressJob_.setNumber(AddressJob::Part::Done);
  if (!finish(cv, written, address)) return false;
  // The kind of address changes only with an address that is there.
  if (written == Written::Failed) return true;
  if (config_ >= 0) {
    config_ &= ~config_bit::kLongAddress;
    sendConfig(config_);
  }
  forceConfig_ = true;
  return true;
}

bool WriteBatch::writeLongAddress(int address) {
  const int withBit = config_ | config_bit::kLongAddress;
  int answer = config_bit::kLongAddress;
  if (config_ >= 0) {
    answer = sendConfig(withBit);
    if (answer < 0) {
      if (!surviveWrite(CvIndex(cv::kConfig), withBit, answer)) return false;
      answer = 0;
    }
  }
  if ((answer & config_bit::kLongAddress) == 0) return refuseLongAddress();
  const bool configKnown = config_ >= 0;
  const bool otherValue = configKnown && answer != withBit;
  if (configKnown) config_ = withBit;
  // The marks are crossed: that of CV 17 follows the write of CV 18, and the other way round.
  const CvIndex high(cv::kLongAddressHigh);
  const CvIndex low(cv::kLongAddressLow);
  const auto writeHalf = [&](CvIndex half, CvIndex other, int wanted) {
    const Written written = write(half, wanted, [&] { failAddress(half); });
    if (written == Written::Done) bench_.sets.setWritten(other, deed() == CvDeed::Proved);
    return written != Written::Ended;
  };
  if (!writeHalf(low, high, address & 255)) return false;
  if (!writeHalf(high, low, address / 256 | kLongAddressMark)) return false;
  if (addressJob_.number() == AddressJob::Part::Failed) {
    markAddressFailed();
  } else {
    addressJob_.setNumber(AddressJob::Part::Done);
    // As above: only with an address that is there.
    longWritten_ = true;
    forceConfig_ = !configKnown;
  }
  // The decoder listens to the long address by now, so it has got its number first.
  inHand_ = configText();
  return !otherValue || surviveWrite(CvIndex(cv::kConfig), withBit, answer);
}

bool WriteBatch::refuseLongAddress() {
  // A long one that is blue would stay so: its colour comes from these two.
  for (const CvIndex cv : {CvIndex(cv::kLongAddressHigh), CvIndex(cv::kLongAddressLow)}) {
    if (bench_.sets.mark(cv) == CvMark::Verified) bench_.sets.setMark(cv, CvMark::Failed);
  }
  failAddress(CvIndex(cv::kAddress));
  const Answer go =
      bench_.parts_.prompt.ask(QStringLiteral("Decoder unterstützt keine Adresse über 127!"),
                               Buttons::OkCancel, Icon::Warning);
  return go == Answer::Ok || endAs(End::Orderly);
}

void WriteBatch::settleAddress() {
  const CvIndex cv(cv::kAddress);
  if (!addressJob_.begun()) return;
  if (addressJob_.done()) {
    report(cv, deed(), addressJob_.address());
    // On the main track whoever was spoken to has it, and nobody has seen who that is.
    if (progOn()) bench_.noteAddress(addressJob_.address());
    // A long one has its marks elsewhere; a failure of before is over all the same.
    if (bench_.sets.mark(cv) == CvMark::Failed) {
      bench_.sets.setWritten(cv, deed() == CvDeed::Proved);
    }
    return;
  }
  bench_.report_.add({.cv = cv, .deed = CvDeed::Failed, .reason = link().lateRefusal});
  // A number that failed has its marks.
  if (addressJob_.number() != AddressJob::Part::Failed) markAddressFailed();
  if (!addressJob_.lacksKind()) return;
  // Where nothing is known about CV 29 that has been told.
  const CvReport* config = bench_.report_.of(CvIndex(cv::kConfig));
  if (addressJob_.kind() == AddressJob::Part::Open && config != nullptr) return;
  remark(addressJob_.kind() == AddressJob::Part::Open
             ? QStringLiteral("Die Art der Adresse (kurz oder lang) ist nicht gesetzt: CV 29 wurde "
                              "nicht mehr geschrieben.")
             : QStringLiteral("Die Art der Adresse (kurz oder lang) ist nicht gesetzt: CV 29 ist "
                              "misslungen."));
}

bool WriteBatch::compareAddress() {
  status(QStringLiteral("Adresskontrolle ..."));
  const auto found = readAddress();
  if (!found) return false;
  const auto address = bench_.addressNumber();
  if (address && *address != *found) return acceptAddress(*found) || endAs(End::Orderly);
  return !link().lastCvFailed ||
         goOnUnchecked(QStringLiteral("Die Adresse des Decoders ließ sich nicht prüfen!"));
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
  // Ahead of its bank, which would be selected for nothing.
  if (!canSend(cv)) {
    markFailed();
    inHand_ = description().cvText(cv);
    if (!surviveUnsendable(cv)) return false;
    showInControl(cv, wanted);
    countDone();
    return true;
  }
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
