// CV 29 in a batch write: the byte that goes out, and what is asked and told about it.
#include "base/prompt.h"
#include "decoder/decoder_bench.h"
#include "decoder/write_batch.h"
#include "link/station_link.h"

namespace lokari {
namespace {

constexpr int kHighestShortAddress = 127;

struct BitName {
  int bit;
  const char16_t* name;
};

constexpr BitName kBitNames[] = {
    {config_bit::kDirection, u"Fahrtrichtung"},
    {config_bit::kSteps, u"Fahrstufen"},
    {config_bit::kAnalog, u"Analogbetrieb"},
    {config_bit::kPulseOrRailCom, u"RailCom"},
    {config_bit::kSpeedTable, u"Geschwindigkeitstabelle"},
    {config_bit::kLongAddress, u"lange Adresse"},
    {config_bit::kManBit, u"Herstellerbit"},
    {config_bit::kFunctionDecoder, u"Funktionsdecoder"},
};

QString changes(int before, int after) {
  QStringList list;
  for (const BitName& bit : kBitNames) {
    if (((before ^ after) & bit.bit) == 0) continue;
    list << QString::fromUtf16(bit.name) +
                ((after & bit.bit) != 0 ? QStringLiteral(" ein") : QStringLiteral(" aus"));
  }
  return list.join(QStringLiteral(", "));
}

}  // namespace

WriteBatch::ConfigState WriteBatch::expectedState() const {
  ConfigState state = configState();
  if (address_ > kHighestShortAddress) {
    state.longWritten = true;
  } else if (state.config >= 0) {
    state.config &= ~config_bit::kLongAddress;
  }
  return state;
}

int WriteBatch::configByte(const ConfigState& state) const {
  int wanted = bench_.sets.value(CvIndex(cv::kConfig));
  if (!state.longWritten && state.config >= 0) {
    // Added, not merged: a value that holds the bit already carries into bit 6. Beyond a byte
    // there is nothing to carry into.
    const int bit = state.config & config_bit::kLongAddress;
    wanted = wanted + bit <= 255 ? wanted + bit : wanted | bit;
  } else if (state.longWritten || address_ > kHighestShortAddress) {
    wanted |= config_bit::kLongAddress;
  }
  // Without the group in view nobody has chosen anything.
  if (description().RAILCOM && bench_.controls.at(QStringLiteral("optDcComRailComYes")).checked) {
    wanted |= config_bit::kPulseOrRailCom;
  }
  return wanted;
}

bool WriteBatch::configFromDecoder() const {
  return !marked(CvIndex(cv::kConfig)) && configRead_;
}

bool WriteBatch::configUnknown() const {
  const CvIndex cv(cv::kConfig);
  return !marked(cv) && !configRead_ &&
         (bench_.sets.mark(cv) == CvMark::Failed || bench_.sets.unseenBits(cv) != 0);
}

bool WriteBatch::confirmConfig(const ConfigState& state) {
  const CvIndex cv(cv::kConfig);
  const bool forced = addressMarked() && (!state.longWritten || state.config < 0);
  if ((!marked(cv) && !forced) || configFromDecoder() || configUnknown()) return true;
  const bool isLong =
      state.longWritten || (state.config >= 0 ? (state.config & config_bit::kLongAddress) != 0
                                              : address_ > kHighestShortAddress);
  const int kept = bench_.sets.value(cv) & ~config_bit::kLongAddress;
  const int before = isLong ? kept | config_bit::kLongAddress : kept;
  const int after = configByte(state);
  if (bench_.configClicks_.unclicked(before, after) == 0 || configConfirmed_ == after) return true;
  const Answer answer = bench_.parts_.prompt.ask(
      Box{.text = QStringLiteral("CV 29 würde mit %2 statt %1 geschrieben, ohne dass das jemand "
                                 "eingestellt hat!")
                      .arg(before)
                      .arg(after),
          .buttons = Buttons::OkCancel,
          .icon = Icon::Warning,
          .more = QStringLiteral("Bisher %1, neu %2: %3. OK schreibt %2, Abbruch schreibt nichts.")
                      .arg(before)
                      .arg(after)
                      .arg(changes(before, after)),
          .preset = Answer::Cancel});
  if (answer != Answer::Ok) return false;
  configConfirmed_ = after;
  return true;
}

int WriteBatch::sendConfig(int wanted) {
  inHand_ = configText();
  return cancelled() ? cv_result::kCancelled : send(CvIndex(cv::kConfig), configCv(), wanted);
}

void WriteBatch::noteConfig(int sent, bool taken) {
  configSent_ = {sent, taken};
  addressJob_.setKind(taken ? AddressJob::Part::Done : AddressJob::Part::Failed);
}

void WriteBatch::markDecodersConfig(int taken) {
  const CvIndex cv(cv::kConfig);
  const bool same = bench_.sets.value(cv) == (taken & ~config_bit::kLongAddress);
  if (same) {
    bench_.sets.setWritten(cv, deed() == CvDeed::Proved);
  } else if (bench_.sets.mark(cv) == CvMark::Verified) {
    bench_.sets.setMark(cv, CvMark::None);
  }
}

void WriteBatch::settleConfig() {
  const CvIndex cv(cv::kConfig);
  if (!configSent_) return;
  const CvReport* told = bench_.report_.of(cv);
  if (!configSent_->taken) {
    if (told == nullptr) {
      bench_.report_.add({.cv = cv,
                          .deed = CvDeed::Failed,
                          .before = bench_.sets.value(cv),
                          .reason = link().lateRefusal});
    }
    bench_.sets.setWriteFailed(cv);
  } else if (told == nullptr && !marked(cv)) {
    report(cv, deed(), configSent_->value);
    markDecodersConfig(configSent_->value);
  } else if (told == nullptr) {
    // The value that was ticked did not go out: only what stands in the decoder keeps its colour.
    markDecodersConfig(configSent_->value);
  }
  bench_.ColorCV29();
}

void WriteBatch::tellUnknownConfig() {
  const CvIndex cv(cv::kConfig);
  const QString text = QStringLiteral(
      "Die Art der Adresse (kurz oder lang) ist nicht gesetzt: CV 29 ist nicht bekannt und wurde "
      "nicht geschrieben.");
  bench_.report_.add(
      {.cv = cv, .deed = CvDeed::Failed, .before = bench_.sets.value(cv), .reason = text});
  remark(text);
}

bool WriteBatch::writeDecodersConfig() {
  const CvIndex cv(cv::kConfig);
  const int wanted = bench_.configClicks_.appliedTo(config_);
  const Written written = write(cv, wanted, [&] {
    bench_.sets.setWriteFailed(cv);
    bench_.ColorCV29();
  });
  if (written != Written::Done) return written == Written::Failed;
  report(cv, deed(), wanted);
  markDecodersConfig(wanted);
  return true;
}

bool WriteBatch::writeWorkingConfig() {
  const CvIndex cv(cv::kConfig);
  if (!confirmConfig(configState())) return endAs(End::Orderly);
  const int wanted = configByte(configState());
  const Written written = write(cv, wanted, [&] {
    bench_.sets.setWriteFailed(cv);
    bench_.ColorCV29();
  });
  if (!finish(cv, written, wanted)) return false;
  if (written == Written::Done && configConfirmed_ == wanted) {
    // The user has seen this value and agreed: the mark is to stand beside it.
    bench_.sets.setValue(cv, wanted & ~config_bit::kLongAddress);
    bench_.showAllOptions();
  }
  return true;
}

bool WriteBatch::config() {
  status(QStringLiteral("Schreibe Grundeinstellungen (CV 29)"));
  if (configUnknown()) {
    tellUnknownConfig();
  } else {
    if (!(configFromDecoder() ? writeDecodersConfig() : writeWorkingConfig())) return false;
    bench_.ColorCV29();
    bench_.valueChanged(CvIndex(cv::kConfig));
  }
  countDone();
  return true;
}

void WriteBatch::takeLateRefusal(const QString& text) {
  // The refusal does not say which one it is for. The address and its CV 29 are settled behind it.
  if (addressJob_.number() == AddressJob::Part::Done) markAddressFailed();
  addressJob_.refuse();
  if (configSent_) configSent_->taken = false;
  for (const CvIndex cv : bench_.report_.with(CvDeed::Unproved)) {
    if (cv == CvIndex(cv::kAddress)) continue;
    CvReport refused = *bench_.report_.of(cv);
    refused.deed = CvDeed::Failed;
    refused.reason = text;
    bench_.report_.add(refused);
    bench_.sets.setWriteFailed(cv);
    bench_.showMarkOf(cv);
  }
}

void WriteBatch::addRemarks() {
  if (!link().lateRefusal.isEmpty()) takeLateRefusal(link().lateRefusal);
  settleConfig();
  settleAddress();
  if (!configSent_ || marked(CvIndex(cv::kConfig))) return;
  const QString before = configRead_ ? QStringLiteral("vorher %1").arg(*configRead_)
                                     : QStringLiteral("der Wert davor wurde nicht gelesen");
  const QString text =
      configSent_->taken
          ? QStringLiteral("Mit der Adresse ging auch CV 29 an den Decoder: %1, %2.")
          : QStringLiteral(
                "Mit der Adresse sollte auch CV 29 an den Decoder: %1, %2. Der Decoder "
                "hat CV 29 nicht bestätigt.");
  remark(text.arg(configSent_->value).arg(before));
}

}  // namespace lokari
