// The options of CV 29 and 19, the version, and the colours of what has no CV of its own.
#include "decoder/decoder_bench.h"
#include "decoder/fixed_fields.h"

namespace lokari {
namespace {

QString nameOf(const OptionRow& option) {
  return QString::fromLatin1(option.name);
}

}  // namespace

void DecoderBench::optionClicked(const QString& name) {
  const OptionRow* option = optionNamed(name);
  if (!option) return;
  if (option->cv == cv::kConfig) configClicks_.click(option->bit, option->sets);
  setOption(name);
}

void DecoderBench::setOption(const QString& name) {
  const OptionRow* option = optionNamed(name);
  if (!option) return;
  if (windowOpening) {
    // What a decoder lacks is shown as off; the stored value is kept as it was read.
    showOptions(QString::fromLatin1(option->group), option->sets);
    return;
  }
  // One that is shown as on may stand for a bit that is off.
  const bool set = (sets.value(CvIndex(option->cv)) & option->bit) != 0;
  if (!controls.at(name).checked || set != option->sets) {
    takeOption(*option);
  } else {
    // What was shown in place of a bit that nobody has seen is now chosen.
    sets.setBits(CvIndex(option->cv), option->bit, option->sets ? option->bit : 0);
  }
}

void DecoderBench::takeOption(const OptionRow& option) {
  const CvIndex cv(option.cv);
  sets.setBits(cv, option.bit, option.sets ? option.bit : 0);
  showOptions(QString::fromLatin1(option.group), option.sets);
  if (option.cv == cv::kConfig) {
    ColorCV29();
  } else {
    ColorCV19();
  }
  if (option.bit == config_bit::kSpeedTable || option.bit == config_bit::kSteps) {
    emit speedTableChanged();
  }
}

void DecoderBench::showOptions(const QString& group, bool set) {
  // The one that goes on comes last: buttons of a group that switch each other off agree with it.
  for (const OptionRow& option : optionsOf(group)) {
    if (option.sets != set) controls.setChecked(nameOf(option), false);
  }
  for (const OptionRow& option : optionsOf(group)) {
    if (option.sets == set) controls.setChecked(nameOf(option), true);
  }
}

void DecoderBench::showAllOptions() {
  configClicks_ = ConfigClicks(sets.value(CvIndex(cv::kConfig)));
  for (const OptionRow& option : kOptions) {
    // What the decoder lacks stays off, whatever the value holds.
    if (!controls.at(nameOf(option)).enabled) continue;
    showOptions(QString::fromLatin1(option.group),
                (sets.value(CvIndex(option.cv)) & option.bit) != 0);
  }
}

void DecoderBench::switchDirectionOverAndBack() {
  const QString normal = QStringLiteral("optDcComDirNormal");
  const QString reverse = QStringLiteral("optDcComDirReverse");
  const bool reversed = controls.at(reverse).checked;
  setOption(reversed ? normal : reverse);
  setOption(reversed ? reverse : normal);
}

// ---- Colours ----------------------------------------------------------------------------------

void DecoderBench::ColorCV29() {
  if (!windowOpening && !commRunning) sets.setMark(CvIndex(cv::kConfig), CvMark::None);
  showMark29();
}

void DecoderBench::ColorCV19() {
  if (!windowOpening && !commRunning) sets.setMark(CvIndex(cv::kConsist), CvMark::None);
  showMark19();
}

void DecoderBench::ColorAdr() {
  if (!windowOpening && !commRunning) sets.clearAddressMarks();
  showMarkAdr();
}

void DecoderBench::showMarkOfOptions(int cv) {
  const TextColour colour = colourOf(CvIndex(cv));
  for (const OptionRow& option : kOptions) {
    if (option.cv != cv) continue;
    controls.setColour(nameOf(option), colour);
    controls.setTag(nameOf(option), noteOf(CvIndex(cv)));
  }
  showLegend();
}

void DecoderBench::showMarkOf(CvIndex cv) {
  switch (cv.value()) {
    case cv::kAddress:
    case cv::kLongAddressHigh:
    case cv::kLongAddressLow:
      showMarkAdr();
      break;
    case cv::kConfig:
      showMark29();
      break;
    case cv::kConsist:
      showMark19();
      break;
    default:
      showValue(cv);
  }
}

void DecoderBench::showMark29() {
  showMarkOfOptions(cv::kConfig);
}

void DecoderBench::showMark19() {
  showMarkOfOptions(cv::kConsist);
  const QString field = QStringLiteral("txtDcComConsist");
  controls.setColour(field, colourOf(CvIndex(cv::kConsist)));
  controls.setTag(field, noteOf(CvIndex(cv::kConsist)));
}

void DecoderBench::showMarkAdr() {
  const auto address = addressNumber();
  TextColour colour = colourOf(CvIndex(cv::kAddress));
  QString note = noteOf(CvIndex(cv::kAddress));
  if (address && *address > 127) {
    note = noteOf(CvIndex(cv::kLongAddressLow));
    const CvMark high = sets.mark(CvIndex(cv::kLongAddressHigh));
    const CvMark low = sets.mark(CvIndex(cv::kLongAddressLow));
    colour = TextColour::Normal;
    if (high == CvMark::Verified && low == CvMark::Verified) colour = TextColour::Blue;
    if (high == CvMark::Failed || low == CvMark::Failed) colour = TextColour::Red;
  }
  controls.setColour(QStringLiteral("dc_adr"), colour);
  controls.setTag(QStringLiteral("dc_adr"), note);
  showLegend();
}

void DecoderBench::showVersion() {
  const int version = sets.value(CvIndex(cv::kVersion));
  QString text = QString::number(version);
  // Version 0 is that of a decoder that was not read: what CV 65 and 250 hold is of the one before.
  const bool known = version != 0;
  if (known && (sets.value(CvIndex(cv::kMaker)) == kMakerWithSubVersion ||
                version == kMakerWithSubVersion)) {
    text += u'.' + QString::number(sets.value(CvIndex(cv::kSubVersion)));
    text += decoderTypeText(sets.value(CvIndex(cv::kDecoderType)));
  }
  controls.setText(QStringLiteral("txtDcComVersion"), text);
}

QString DecoderBench::decoderTypeText(int type) const {
  const QString name = type > 0 ? parts_.decTypes.value(type) : QString();
  return name.isEmpty() ? QString() : QStringLiteral(" (%1)").arg(name);
}

}  // namespace lokari
