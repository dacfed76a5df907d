#include "base/numbers.h"

#include <QList>

#include <cmath>
#include <limits>

namespace lokari {
namespace {

bool isDigit(QChar c) {
  return c >= u'0' && c <= u'9';
}

/// Strips grouping separators from the integer part; nothing when a group is not of three digits.
std::optional<QString> ungroup(QStringView part, QChar separator) {
  const auto groups = part.split(separator);
  QString digits;
  for (qsizetype i = 0; i < groups.size(); ++i) {
    const bool good =
        i == 0 ? (!groups[i].isEmpty() && groups[i].size() <= 3) : groups[i].size() == 3;
    if (!good) return std::nullopt;
    digits += groups[i];
  }
  return digits;
}

/// The text with "." as its only separator, or nothing when its separators make no number.
std::optional<QString> withPlainPoint(QStringView text) {
  const auto points = text.count(u'.');
  const auto commas = text.count(u',');
  if (points == 0 && commas == 0) return text.toString();
  if (points > 0 && commas > 0) {
    const QChar decimal = text.lastIndexOf(u'.') > text.lastIndexOf(u',') ? u'.' : u',';
    const QChar grouping = decimal == u'.' ? u',' : u'.';
    if (text.count(decimal) != 1) return std::nullopt;
    const auto at = text.indexOf(decimal);
    if (text.mid(at).contains(grouping)) return std::nullopt;
    const auto whole = ungroup(text.left(at), grouping);
    if (!whole) return std::nullopt;
    return *whole + u'.' + text.mid(at + 1).toString();
  }
  const QChar only = points > 0 ? u'.' : u',';
  // "100,110,120" is a list, not a grouped number.
  if (text.count(only) > 1) return std::nullopt;
  return text.toString().replace(only, u'.');
}

}  // namespace

std::optional<double> parseNumber(QStringView text) {
  QStringView body = text.trimmed();
  bool negative = false;
  if (!body.isEmpty() && (body.front() == u'+' || body.front() == u'-')) {
    negative = body.front() == u'-';
    body = body.mid(1).trimmed();
  }
  qsizetype mantissaEnd = 0;
  bool hasDigit = false;
  while (mantissaEnd < body.size() &&
         (isDigit(body[mantissaEnd]) || body[mantissaEnd] == u'.' || body[mantissaEnd] == u',')) {
    hasDigit = hasDigit || isDigit(body[mantissaEnd]);
    ++mantissaEnd;
  }
  if (!hasDigit) return std::nullopt;
  auto number = withPlainPoint(body.left(mantissaEnd));
  if (!number) return std::nullopt;
  if (mantissaEnd < body.size()) {
    const QStringView exponent = body.mid(mantissaEnd);
    if (exponent.front().toLower() != u'e') return std::nullopt;
    QStringView digits = exponent.mid(1);
    if (!digits.isEmpty() && (digits.front() == u'+' || digits.front() == u'-')) {
      digits = digits.mid(1);
    }
    if (digits.isEmpty()) return std::nullopt;
    for (const QChar c : digits) {
      if (!isDigit(c)) return std::nullopt;
    }
    *number += exponent;
  }
  bool good = false;
  const double value = number->toDouble(&good);
  if (!good || !std::isfinite(value)) return std::nullopt;
  return negative ? -value : value;
}

bool isNumeric(QStringView text) {
  return parseNumber(text).has_value();
}

double numericPrefix(QStringView text) {
  const QStringView body = text.trimmed();
  qsizetype end = 0;
  if (end < body.size() && (body[end] == u'+' || body[end] == u'-')) ++end;
  bool point = false;
  while (end < body.size() && (isDigit(body[end]) || (body[end] == u'.' && !point))) {
    point = point || body[end] == u'.';
    ++end;
  }
  bool good = false;
  const double value = body.left(end).toDouble(&good);
  return good ? value : 0.0;
}

qint16 toInt16(double value) {
  // nearbyint rounds ties to even in the default rounding mode, which nothing here changes.
  const double rounded = std::nearbyint(value);
  if (!(rounded >= std::numeric_limits<qint16>::min() &&
        rounded <= std::numeric_limits<qint16>::max())) {
    throw NumberError("number does not fit 16 bits");
  }
  return static_cast<qint16>(rounded);
}

qint16 toInt16(QStringView text) {
  const auto value = parseNumber(text);
  if (!value) throw NumberError("text is not numeric");
  return toInt16(*value);
}

quint8 toCvByte(double value) {
  const double rounded = std::nearbyint(value);
  if (!(rounded > 0)) return 0;
  return rounded > 255 ? quint8{255} : static_cast<quint8>(rounded);
}

QString printed(qint64 value) {
  const QString digits = QString::number(value);
  return value < 0 ? digits : u' ' + digits;
}

QString hex(qint64 value) {
  const quint64 bits = value < 0 ? static_cast<quint32>(value) : static_cast<quint64>(value);
  return QString::number(bits, 16).toUpper();
}

QString hexPadded(qint64 value) {
  const QString digits = hex(value);
  return digits.size() == 1 ? u'0' + digits : digits;
}

std::optional<quint32> parseHex(QStringView text) {
  if (text.isEmpty() || text.size() > 8) return std::nullopt;
  quint32 value = 0;
  for (const QChar c : text) {
    const char16_t u = c.toUpper().unicode();
    quint32 digit = 0;
    if (u >= u'0' && u <= u'9') {
      digit = u - u'0';
    } else if (u >= u'A' && u <= u'F') {
      digit = u - u'A' + 10U;
    } else {
      return std::nullopt;
    }
    value = value * 16 + digit;
  }
  return value;
}

}  // namespace lokari
