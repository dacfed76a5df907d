#include "db/column_values.h"

#include <cmath>
#include <limits>

#include "base/numbers.h"
#include "db/column_captions.h"
#include "db/storage_error.h"

namespace lokari {
namespace {

constexpr double kCurrencyPlaces = 10000.0;
constexpr int kStoredPlaces = 4;
/// An amount is shown as prices are written, with more places only where it has them.
constexpr int kShownPlaces = 2;
// An amount is a 64-bit count of its smallest part elsewhere; beyond this a double is not exact.
constexpr double kLargestAmount = 900000000000.0;

struct Range {
  double lowest;
  double highest;
};

Range rangeOf(ColumnType type) {
  switch (type) {
    case ColumnType::Byte:
      return {0, std::numeric_limits<quint8>::max()};
    case ColumnType::Integer:
      return {std::numeric_limits<qint16>::min(), std::numeric_limits<qint16>::max()};
    case ColumnType::Long:
      return {std::numeric_limits<qint32>::min(), std::numeric_limits<qint32>::max()};
    case ColumnType::Currency:
    case ColumnType::Text:
    case ColumnType::Binary:
      break;
  }
  return {-kLargestAmount, kLargestAmount};
}

[[noreturn]] void notNumeric(const ColumnInfo& column, const QString& text) {
  throw StorageError(storage_error::kNotNumeric,
                     QStringLiteral("\"%1\" ist kein gültiger Wert für das Feld %2.")
                         .arg(text, captionOf(column.name)));
}

QVariant textValue(const ColumnInfo& column, const QString& text) {
  if (text.size() > column.size) {
    throw StorageError(
        storage_error::kTooLong,
        QStringLiteral("Der Text ist zu lang für das Feld %1 (höchstens %2 Zeichen).")
            .arg(captionOf(column.name))
            .arg(column.size));
  }
  // A null QString would be stored as Null, which an empty text is not.
  return text.isNull() ? QStringLiteral("") : text;
}

QVariant numericValue(const ColumnInfo& column, const QVariant& value) {
  const QString text = value.toString();
  const std::optional<double> number = value.typeId() == QMetaType::QString
                                           ? parseNumber(text)
                                           : std::optional<double>(value.toDouble());
  const auto [lowest, highest] = rangeOf(column.type);
  if (!number || !std::isfinite(*number)) notNumeric(column, text);
  if (column.type == ColumnType::Currency) {
    if (*number < lowest || *number > highest) notNumeric(column, text);
    return std::nearbyint(*number * kCurrencyPlaces) / kCurrencyPlaces;
  }
  const double whole = std::nearbyint(*number);
  if (whole < lowest || whole > highest) notNumeric(column, text);
  return static_cast<qlonglong>(whole);
}

}  // namespace

QVariant columnValue(const ColumnInfo& column, const QVariant& value) {
  // An empty QString may be null and still is a text.
  if (!value.isValid() || (value.isNull() && value.typeId() != QMetaType::QString &&
                           value.typeId() != QMetaType::QByteArray)) {
    return {};
  }
  if (column.isText()) return textValue(column, value.toString());
  if (column.isNumeric()) return numericValue(column, value);
  const QByteArray data = value.toByteArray();
  return data.isNull() ? QByteArray("") : data;
}

QString shownValue(const ColumnInfo& column, const QVariant& value) {
  if (value.isNull() || column.type == ColumnType::Binary) return {};
  if (column.type != ColumnType::Currency) return value.toString();
  QString text = QString::number(value.toDouble(), 'f', kStoredPlaces);
  const qsizetype shortest = text.indexOf(u'.') + 1 + kShownPlaces;
  while (text.size() > shortest && text.endsWith(u'0')) text.chop(1);
  return text.replace(u'.', u',');
}

}  // namespace lokari
