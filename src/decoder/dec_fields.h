// The small texts inside a description file: comma-separated fields, value ranges, lists of
// numbers.
#pragma once

#include <QString>

#include <vector>

namespace lokari {

/// `GetStrPart`: the fields of a text, one after the other. Double quotes protect commas and are
/// not copied; blanks around a field go. Behind the last field each further one is empty.
class StrParts {
 public:
  explicit StrParts(QString text) : text_(std::move(text)) {}

  QString next();
  bool atEnd() const { return position_ >= text_.size(); }
  /// The field given last had no closing quote.
  bool lastWasOpen() const { return open_; }

 private:
  QString text_;
  qsizetype position_ = 0;
  bool open_ = false;
};

/// The lowest or highest value of a range text, 0 to 255. Every "," and "-" ends a number, an empty
/// one counting as 0, and one "," is added at the end: "5-10," has a lowest value of 0. A highest
/// value of 0 becomes 255. A number beyond 16 bits throws NumberError.
int GetMinMax(const QString& rangeText, bool wantMax);

/// Whether a value is in a range text: single numbers and from-to pairs, separated by ",". Other
/// characters than digits, "-" and "," are skipped.
bool rangeHolds(const QString& rangeText, int value);

/// The numbers of a list separated by ",". Characters other than digits and "," are dropped, empty
/// items add nothing, a number above `highest` is cut to it.
std::vector<int> numberList(const QString& text, int highest);

/// Without the blanks at both ends; other white space stays.
QString trimBlanks(const QString& text);
/// Without the blanks in front.
QString trimLeadingBlanks(const QString& text);

}  // namespace lokari
