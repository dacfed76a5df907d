#include "cab/main_cvs.h"

#include <algorithm>
#include <cmath>

#include "base/numbers.h"
#include "decoder/cv_numbers.h"
#include "decoder/dec_fields.h"
#include "decoder/dec_reader.h"

namespace lokari {
namespace {

constexpr int kLowestCv = 2;
constexpr int kHighestProgMode = 2;
constexpr int kLimit = 256;  // of the fourth field

bool isYes(const QString& value) {
  return value.startsWith(u'Y', Qt::CaseInsensitive) || value.startsWith(u'J', Qt::CaseInsensitive);
}

/// CVs that must not change under a running vehicle: its address, what identifies the decoder, its
/// basic configuration, and the speed table.
bool isLeftOut(int number) {
  constexpr int kFixed[] = {7, 8, 17, 18, 19, 29};
  return number < kLowestCv || number >= kHighestCvIndex || cv::inTable(CvIndex(number)) ||
         std::find(std::begin(kFixed), std::end(kFixed), number) != std::end(kFixed);
}

/// The number in a key CV_<number>, what follows another "_" not counted; 0 for one out of range.
int numberOf(const QString& key) {
  const double number = numericPrefix(key.section(u'_', 1, 1));
  return number >= 0 && number < kHighestCvIndex ? static_cast<int>(std::nearbyint(number)) : 0;
}

std::optional<MainCV> readEntry(int number, const QString& value, int highestCv) {
  StrParts parts(value);
  MainCV cv{.number = number, .name = parts.next(), .range = parts.next(), .hint = {}};
  if (cv.name.isEmpty()) cv.name = QStringLiteral("CV") + printed(number);
  if (cv.range.isEmpty()) cv.range = QStringLiteral("0-255");
  parts.next();
  const bool limited = numericPrefix(parts.next()) >= kLimit;
  cv.hint = parts.next();
  if (limited || number > highestCv) return std::nullopt;
  return cv;
}

}  // namespace

MainCVs readMainCVs(const QString& text, int highestCv) {
  MainCVs list;
  for (const DecStatement& statement : readStatements(text)) {
    if (statement.key == u"PROGMODE") {
      const auto number = parseNumber(statement.value);
      const double mode = number ? std::nearbyint(*number) : 0;
      if (mode >= 0 && mode <= kHighestProgMode) list.progMode = static_cast<int>(mode);
      continue;
    }
    list.progMode = 0;
    if (statement.key == u"PROGMAIN") {
      list.progMain = isYes(statement.value);
    } else if (statement.key.startsWith(u"CV_") && list.progMain) {
      const int number = numberOf(statement.key);
      if (isLeftOut(number)) continue;
      if (auto cv = readEntry(number, statement.value, highestCv)) {
        list.entries.push_back(std::move(*cv));
      }
    }
  }
  return list;
}

}  // namespace lokari
