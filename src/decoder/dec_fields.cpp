#include "decoder/dec_fields.h"

#include <algorithm>
#include <limits>

#include "base/numbers.h"

namespace lokari {
namespace {

bool isDigit(QChar c) {
  return c >= u'0' && c <= u'9';
}

/// The number of a run of digits, 0 for none; numbers that are too long are cut, which keeps them
/// above everything they are compared with.
int digitsToInt(const QString& digits) {
  constexpr int kSafeDigits = 9;
  const qsizetype firstSignificant =
      std::find_if(digits.begin(), digits.end(), [](QChar c) { return c != u'0'; }) -
      digits.begin();
  if (digits.size() - firstSignificant > kSafeDigits) return std::numeric_limits<int>::max();
  return digits.toInt();
}

}  // namespace

QString StrParts::next() {
  QString field;
  bool quoted = false;
  while (position_ < text_.size()) {
    const QChar c = text_[position_++];
    if (c == u'"') {
      quoted = !quoted;
    } else if (c == u',' && !quoted) {
      break;
    } else {
      field += c;
    }
  }
  open_ = quoted;
  return trimBlanks(field);
}

int GetMinMax(const QString& rangeText, bool wantMax) {
  int lowest = 255;
  int highest = 0;
  QString digits;
  for (const QChar c : QString(rangeText + u',')) {
    if (isDigit(c)) {
      digits += c;
    } else if (c == u',' || c == u'-') {
      const int number = toInt16(static_cast<double>(digitsToInt(digits)));
      lowest = std::min(lowest, number);
      highest = std::max(highest, number);
      digits.clear();
    }
  }
  highest = std::min(highest, 255);
  lowest = std::min(lowest, highest);
  if (highest == 0) highest = 255;
  return wantMax ? highest : lowest;
}

bool rangeHolds(const QString& rangeText, int value) {
  int from = -1;
  QString digits;
  for (const QChar c : QString(rangeText + u',')) {
    if (isDigit(c)) {
      digits += c;
    } else if (c == u'-') {
      from = digitsToInt(digits);
      digits.clear();
    } else if (c == u',') {
      const int number = digitsToInt(digits);
      if (from == -1 ? value == number : from <= value && value <= number) return true;
      from = -1;
      digits.clear();
    }
  }
  return false;
}

std::vector<int> numberList(const QString& text, int highest) {
  std::vector<int> numbers;
  QString digits;
  for (const QChar c : QString(text + u',')) {
    if (isDigit(c)) {
      digits += c;
    } else if (c == u',') {
      if (!digits.isEmpty()) numbers.push_back(std::min(digitsToInt(digits), highest));
      digits.clear();
    }
  }
  return numbers;
}

QString trimBlanks(const QString& text) {
  qsizetype end = text.size();
  while (end > 0 && text[end - 1] == u' ') --end;
  return trimLeadingBlanks(text.left(end));
}

QString trimLeadingBlanks(const QString& text) {
  qsizetype start = 0;
  while (start < text.size() && text[start] == u' ') ++start;
  return text.mid(start);
}

}  // namespace lokari
