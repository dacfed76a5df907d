// Value fields: their texts, their colours, and the road of an edited value into the working set.
#include "base/numbers.h"
#include "base/prompt.h"
#include "decoder/dec_fields.h"
#include "decoder/decoder_bench.h"
#include "decoder/fixed_fields.h"

namespace lokari {
namespace {

const QString& addressField() {
  static const QString name = QStringLiteral("dc_adr");
  return name;
}

const QString& consistField() {
  static const QString name = QStringLiteral("txtDcComConsist");
  return name;
}

const QString& gridField() {
  static const QString name = QStringLiteral("tabText");
  return name;
}

QString withNote(const QString& tip, const QString& note) {
  return tip.isEmpty() || note.isEmpty() ? tip + note : tip + QStringLiteral(" – ") + note;
}

constexpr int kLowestAddress = 1;
constexpr int kHighestAddress = 10239;

}  // namespace

std::optional<int> DecoderBench::addressNumber() const {
  const auto number = parseNumber(controls.at(addressField()).text);
  if (!number) return std::nullopt;
  try {
    return toInt16(*number);
  } catch (const NumberError&) {
    // No address has so many digits; above every limit it is refused like any other that is.
    return *number > 0 ? std::numeric_limits<qint16>::max() : std::numeric_limits<qint16>::min();
  }
}

void DecoderBench::noteAddress(std::optional<int> address) {
  const bool possible = address && *address >= kLowestAddress && *address <= kHighestAddress;
  knownAddress_ = possible ? address : std::nullopt;
}

// ---- Which field, which CV --------------------------------------------------------------------

int DecoderBench::rowNamed(const QString& field) const {
  return rowOfField_.value(field, -1);
}

int DecoderBench::rowOf(CvIndex cv) const {
  return rowOfCv_[static_cast<size_t>(cv.value())];
}

CvIndex DecoderBench::cvOfField(const QString& field) const {
  if (const int row = rowNamed(field); row >= 0) return rows_[static_cast<size_t>(row)].cv;
  if (field == gridField()) return grid_.cvAt(gridEditRow_);
  for (const FixedField& fixed : kFixedFields) {
    if (field != QLatin1String(fixed.field)) continue;
    return fixed.cv == cv::kUserRow ? userRowCv_ : CvIndex(fixed.cv);
  }
  return {};
}

QString DecoderBench::fieldOf(CvIndex cv) const {
  for (const FixedField& fixed : kFixedFields) {
    const bool spare = fixed.cv == cv::kUserRow;
    if (spare ? cv == userRowCv_ && description.info(cv).cvPage == page::kDrive
              : cv == CvIndex(fixed.cv)) {
      return QString::fromLatin1(fixed.field);
    }
  }
  const int row = rowOf(cv);
  return row >= 0 ? rows_[static_cast<size_t>(row)].fieldName() : QString();
}

QString DecoderBench::fieldText(const QString& field) const {
  const int row = rowNamed(field);
  return row >= 0 ? rows_[static_cast<size_t>(row)].text : controls.at(field).text;
}

void DecoderBench::setFieldText(const QString& field, const QString& text) {
  const bool changed = showFieldText(field, text);
  if (field == addressField()) holdAddress();
  if (changed) fieldChanged(field);
}

bool DecoderBench::showFieldText(const QString& field, const QString& text) {
  const int row = rowNamed(field);
  bool changed = false;
  if (row < 0) {
    changed = controls.setText(field, text);
  } else if (PageRow& entry = rows_[static_cast<size_t>(row)]; entry.text != text) {
    entry.text = text;
    changed = true;
    emit rowChanged(row);
  }
  showHolds(field);
  return changed;
}

void DecoderBench::refillField(const QString& field, const QString& text) {
  // Emptied first, so that the field's change is noticed and colours it even when the text stays.
  // The text may be the field's own, which the first step empties.
  const QString kept(text);  // NOLINT(performance-unnecessary-copy-initialization)
  setFieldText(field, {});
  setFieldText(field, kept);
}

void DecoderBench::showValue(CvIndex cv) {
  const QString text = QString::number(sets.value(cv));
  if (const QString field = fieldOf(cv); !field.isEmpty()) {
    showFieldText(field, text);
    setFieldColour(field, colourOf(cv));
  }
  // A CV of the first tabs may stand on a page as well.
  if (const int row = rowOf(cv); row >= 0) {
    const QString field = rows_[static_cast<size_t>(row)].fieldName();
    showFieldText(field, text);
    setFieldColour(field, colourOf(cv));
  }
  valueChanged(cv);
}

void DecoderBench::valueChanged(CvIndex cv) {
  showLegend();
  if (const int row = grid_.rowOf(cv); row > 0) emit gridRowChanged(row);
  if (cv::inTable(cv) || cv == CvIndex(2) || cv == CvIndex(5) || cv == CvIndex(6)) {
    emit speedTableChanged();
  }
}

// ---- Events -----------------------------------------------------------------------------------

void DecoderBench::fieldEdited(const QString& name, const QString& text) {
  if (showFieldText(name, text)) fieldChanged(name);
}

void DecoderBench::fieldChanged(const QString& field) {
  emit toolTipHidden();
  if (field == addressField()) {
    ColorAdr();
    const auto address = addressNumber();
    if (address && !windowOpening && (*address < kLowestAddress || *address > kHighestAddress)) {
      emit focusRequested(field, true);
    }
    return;
  }
  if (field == consistField()) {
    if (refreshing) {
      showMark19();
    } else {
      ColorCV19();
    }
    return;
  }
  const CvIndex cv = cvOfField(field);
  if (!cv.inRange()) return;
  if (userChange()) sets.setMark(cv, CvMark::None);
  if (field == gridField()) {
    ColorCVx(cv, {}, gridEditRow_);
  } else {
    ColorCVx(cv, field, 0);
    valueChanged(cv);
  }
}

void DecoderBench::fieldLeft(const QString& name) {
  if (name == addressField()) {
    const auto address = addressNumber();
    if (address && *address > description.MAXADDRESS) {
      refuseAddress();
    } else {
      holdAddress();
    }
    return;
  }
  if (name == consistField()) {
    CheckDcField(name, CvIndex(cv::kConsist), consistRange());
    return;
  }
  if (name == gridField()) {
    gridEditLeft();
    return;
  }
  const CvIndex cv = cvOfField(name);
  if (cv.inRange()) CheckDcField(name, cv, description.info(cv).cvRange);
}

void DecoderBench::refuseAddress() {
  parts_.prompt.message(QStringLiteral("Adresse für diesen Decodertyp ungültig!"));
  emit focusRequested(addressField(), true);
}

void DecoderBench::rowEdited(int row, const QString& text) {
  fieldEdited(rows_[static_cast<size_t>(row)].fieldName(), text);
}

void DecoderBench::rowLeft(int row) {
  fieldLeft(rows_[static_cast<size_t>(row)].fieldName());
}

// ---- Values -----------------------------------------------------------------------------------

bool DecoderBench::CheckDcField(const QString& field, CvIndex cv, const QString& range) {
  if (calcOpen) return true;
  const bool quiet = progressEnabled_;
  const bool consist = cv == CvIndex(cv::kConsist);
  constexpr int kAllBits = 255;
  constexpr int kDirectionBit = 128;
  const int bits = consist ? kAllBits & ~kDirectionBit : kAllBits;

  const QString text = trimBlanks(fieldText(field));
  if (text.isEmpty()) {
    sets.setBits(cv, bits, 0);
    valueChanged(cv);
    return true;
  }
  const auto number = parseNumber(text);
  if (!number) return true;

  // What no byte holds is outside of every range.
  constexpr int kNoByte = -1;
  const double rounded = std::nearbyint(*number);
  const int value = rounded >= 0 && rounded <= 255 ? static_cast<int>(rounded) : kNoByte;
  if (value == kNoByte || !rangeHolds(range, value)) {
    if (!windowOpening && !commRunning && !quiet) {
      parts_.prompt.message(QStringLiteral("Eingabe außerhalb des Wertebereichs!"));
      emit focusRequested(field, true);
      return false;
    }
    if (value == kNoByte) return true;
  }
  // Passing a failed field chooses nothing; typing has taken its mark.
  const bool passed = sets.mark(cv) == CvMark::Failed && ((sets.value(cv) ^ value) & bits) == 0;
  if (!passed) sets.setBits(cv, bits | value, value);
  valueChanged(cv);
  showHolds(field);
  return true;
}

void DecoderBench::setCvval(int value, int index) {
  const CvIndex cv(index + 1);
  // What stays was not chosen.
  if (sets.value(cv) != value) sets.setValue(cv, value);
  showValue(cv);
}

QString DecoderBench::DcToolTips(const QString& tag) const {
  constexpr qsizetype kLongestNumber = 4;
  QString text = tag;
  if (const auto number = parseNumber(tag); number && tag.size() <= kLongestNumber) {
    const CvIndex cv(static_cast<int>(std::nearbyint(std::min(*number, 1e6))));
    if (cv.inRange()) text = withNote(description.info(cv).cvTip, noteOf(cv));
  }
  return text.isEmpty() ? QString() : QStringLiteral(" %1 ").arg(text);
}

// ---- Colours ----------------------------------------------------------------------------------

TextColour DecoderBench::colourOf(CvIndex cv) const {
  switch (sets.mark(cv)) {
    case CvMark::Verified:
      return TextColour::Blue;
    case CvMark::Failed:
      return TextColour::Red;
    case CvMark::None:
      break;
  }
  return TextColour::Normal;
}

void DecoderBench::setFieldColour(const QString& field, TextColour colour) {
  const int row = rowNamed(field);
  if (row < 0) {
    controls.setColour(field, colour);
    return;
  }
  PageRow& entry = rows_[static_cast<size_t>(row)];
  if (entry.colour == colour) return;
  entry.colour = colour;
  emit rowChanged(row);
}

void DecoderBench::ColorCVx(CvIndex cv, const QString& field, int gridRow) {
  if (field.isEmpty()) {
    emit gridRowChanged(gridRow);
  } else {
    setFieldColour(field, colourOf(cv));
  }
}

}  // namespace lokari
