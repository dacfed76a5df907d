#include "app/word_forms.h"

#include <QRegularExpression>

namespace lokari {
namespace {

constexpr int kShortestStem = 3;
/// Shorter words are names and abbreviations rather than inflected.
constexpr int kShortestInflected = 4;

// The longer ending first.
constexpr const char16_t* kEndings[] = {u"ern", u"em", u"en", u"er", u"es", u"e", u"n", u"s"};

const QString kCv = QStringLiteral("cv");

QString folded(const QString& word) {
  QString result;
  for (const QChar c : word.toLower()) {
    switch (c.unicode()) {
      case u'ä':
        result += u'a';
        break;
      case u'ö':
        result += u'o';
        break;
      case u'ü':
        result += u'u';
        break;
      case u'ß':
        result += QStringLiteral("ss");
        break;
      default:
        result += c;
    }
  }
  return result;
}

bool isNumber(const QString& word) {
  static const QRegularExpression digits(QStringLiteral("^[0-9]+$"));
  return digits.match(word).hasMatch();
}

/// What stands between the numbers of "CV 2, 6 und 5".
bool joinsNumbers(const QString& between) {
  const QString text = between.simplified();
  return text.isEmpty() || text == QStringLiteral(",");
}

/// Takes the words in their order and finds the numbers that name a CV.
class CvNumbers {
 public:
  /// The word "cv29" for a number behind "CV", else an empty one.
  QString next(const QString& stem, const QString& between) {
    if (stem == kCv) {
      open_ = true;
      return {};
    }
    const bool joins = stem == QStringLiteral("und") || stem == QStringLiteral("oder");
    open_ = open_ && joinsNumbers(between) && (joins || isNumber(stem));
    return open_ && !joins ? kCv + stem : QString();
  }

 private:
  bool open_ = false;
};

}  // namespace

QString wordStem(const QString& word) {
  QString stem = folded(word);
  if (stem == kCv + u's') return kCv;
  if (stem.size() < kShortestInflected) return stem;
  for (const char16_t* ending : kEndings) {
    const QString tail = QString::fromUtf16(ending);
    if (stem.size() - tail.size() >= kShortestStem && stem.endsWith(tail)) {
      stem.chop(tail.size());
      break;
    }
  }
  return stem;
}

QList<WordAt> wordsOf(const QString& text) {
  static const QRegularExpression word(QStringLiteral(R"([\p{L}\p{N}]+(?:[-_.][\p{L}\p{N}]+)*)"));
  static const QRegularExpression joint(QStringLiteral("[-_.]"));
  QList<WordAt> result;
  CvNumbers cvs;
  qsizetype before = 0;  // where the word before begins
  qsizetype end = 0;     // and ends
  auto each = word.globalMatch(text);
  while (each.hasNext()) {
    const auto match = each.next();
    const auto addFrom = [&](qsizetype start, const QString& stem) {
      const auto length = static_cast<int>(match.capturedEnd() - start);
      result.append({stem, static_cast<int>(start), length});
    };
    const auto add = [&](const QString& stem) { addFrom(match.capturedStart(), stem); };
    const QString whole = wordStem(match.captured());
    add(whole);
    const QStringList parts = match.captured().split(joint);
    if (parts.size() > 1) {
      add(wordStem(parts.join(QString())));
      for (const QString& part : parts) add(wordStem(part));
    }
    const QString cv = cvs.next(whole, text.mid(end, match.capturedStart() - end));
    const bool isNext = wordStem(text.mid(before, end - before)) == kCv;
    if (!cv.isEmpty()) addFrom(isNext ? before : match.capturedStart(), cv);
    before = match.capturedStart();
    end = match.capturedEnd();
  }
  return result;
}

}  // namespace lokari
