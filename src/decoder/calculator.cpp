#include "decoder/calculator.h"

#include <algorithm>

#include "decoder/dec_fields.h"

namespace lokari {
namespace {

constexpr int kHighestValue = 255;
constexpr qsizetype kBinaryDigits = 8;
constexpr int kHexDigits = 2;

struct Notation {
  int base;
  const char16_t* digits;
};

/// By box.
constexpr Notation kNotations[] = {
    {2, u"01"},
    {10, u"0123456789"},
    {16, u"0123456789ABCDEF"},
};

bool hasOnly(const QString& text, QStringView digits) {
  return std::all_of(text.begin(), text.end(), [digits](QChar c) { return digits.contains(c); });
}

/// The value of a text of digits; above 255 for every one that is.
int valueOf(const QString& text, const Notation& notation) {
  int value = 0;
  for (const QChar digit : text) {
    value = value * notation.base + static_cast<int>(QStringView(notation.digits).indexOf(digit));
    value = std::min(value, kHighestValue + 1);
  }
  return value;
}

}  // namespace

Calculator::Calculator(const QString& text) {
  type(Box::Dec, trimBlanks(text));
}

Calculator::Typed Calculator::type(Box box, const QString& typed) {
  const Notation& notation = kNotations[static_cast<size_t>(box)];
  const QString digits = box == Box::Hex ? typed.toUpper() : typed;
  if (!hasOnly(digits, notation.digits)) return Typed::Swallowed;
  if (box == Box::Bin && digits.size() > kBinaryDigits) return Typed::Swallowed;
  const int value = valueOf(digits, notation);
  if (value > kHighestValue) return Typed::OutOfRange;
  if (digits.isEmpty()) {
    texts_.fill(QString());
  } else {
    show(value);
  }
  at(box) = digits;
  return Typed::Taken;
}

void Calculator::show(int value) {
  at(Box::Bin) = QStringLiteral("%1").arg(value, static_cast<int>(kBinaryDigits), 2, QChar(u'0'));
  at(Box::Dec) = QString::number(value);
  at(Box::Hex) = QStringLiteral("%1").arg(value, kHexDigits, 16, QChar(u'0')).toUpper();
}

}  // namespace lokari
