// Texts in value fields that were not taken: what holds beside them, and when they give way to it.
#include <algorithm>
#include <cmath>

#include "base/numbers.h"
#include "decoder/dec_fields.h"
#include "decoder/decoder_bench.h"
#include "decoder/fixed_fields.h"

namespace lokari {
namespace {

constexpr int kLowestAddress = 1;
constexpr int kHighestAddress = 10239;
constexpr int kConsistMask = 127;

const QString& addressField() {
  static const QString name = QStringLiteral("dc_adr");
  return name;
}

const QString& consistField() {
  static const QString name = QStringLiteral("txtDcComConsist");
  return name;
}

/// The only form in which text and value cannot be mistaken for each other.
bool isPlain(const QString& text) {
  return std::all_of(text.begin(), text.end(), [](QChar c) { return c >= u'0' && c <= u'9'; });
}

}  // namespace

QString DecoderBench::heldText(const QString& field) const {
  if (field == addressField()) {
    const auto number = addressNumber();
    const bool possible = number && *number >= kLowestAddress && *number <= kHighestAddress;
    return possible ? QString::number(*number) : addressHeld_;
  }
  if (field == consistField())
    return QString::number(sets.value(CvIndex(cv::kConsist)) & kConsistMask);
  const CvIndex cv = cvOfField(field);
  return cv.inRange() ? QString::number(sets.value(cv)) : QString();
}

void DecoderBench::holdAddress() {
  const QString text = trimBlanks(controls.at(addressField()).text);
  if (isPlain(text)) addressHeld_ = text;
}

void DecoderBench::showHolds(const QString& field) {
  const bool taken = isPlain(trimBlanks(fieldText(field)));
  const auto holds = taken ? std::nullopt : std::optional(heldText(field));
  const int row = rowNamed(field);
  if (row < 0) {
    controls.setHolds(field, holds);
  } else if (PageRow& entry = rows_[static_cast<size_t>(row)]; entry.holds != holds) {
    entry.holds = holds;
    emit rowChanged(row);
  }
}

bool DecoderBench::givesWay(const QString& field) const {
  const int row = rowNamed(field);
  const std::optional<QString>& holds =
      row >= 0 ? rows_[static_cast<size_t>(row)].holds : controls.at(field).holds;
  if (!holds) return false;
  if (field == addressField()) return true;
  // A number that another one holds beside has not been left yet, or was refused: leaving the field
  // decides about it.
  const auto number = parseNumber(trimBlanks(fieldText(field)));
  return !number || QString::number(std::nearbyint(*number)) == *holds;
}

void DecoderBench::giveWay() {
  QStringList fields{addressField(), consistField()};
  for (const FixedField& fixed : kFixedFields) fields << QString::fromLatin1(fixed.field);
  for (const PageRow& row : rows_) fields << row.fieldName();
  for (const QString& field : fields)
    if (givesWay(field)) showFieldText(field, heldText(field));
  showMarkAdr();
}

}  // namespace lokari
