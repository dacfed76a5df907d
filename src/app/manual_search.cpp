#include "app/manual_search.h"

#include <algorithm>

namespace lokari {
namespace {

// What a word is worth where it stands.
constexpr int kInPageTitle = 40;
constexpr int kInHeading = 24;
constexpr int kInText = 8;
constexpr int kMostInText = 4;   ///< times that count
constexpr int kShortText = 150;  ///< words, up to which length makes little difference
constexpr int kFewWords = 4;     ///< of a title, to which its other words make little difference
// A synonym and a part of a longer word tell less.
constexpr int kWholeWord = 3;
constexpr int kMeant = 2;
constexpr int kPartOfWord = 1;
/// Shorter words begin or end too many others ("halt" ends "schalt").
constexpr int kShortestBeginning = 4;
constexpr int kShortestEnding = 5;
/// A section with all words comes before one with many of a single word.
constexpr int kEveryTerm = 10'000;
/// Letters of an excerpt, and of what of it stands before the word that was found.
constexpr int kExcerpt = 150;
constexpr int kBefore = 40;

QStringList stemsOf(const QString& text) {
  QStringList result;
  for (const WordAt& word : wordsOf(text)) result << word.stem;
  return result;
}

/// Each word as it is written, without the parts of one with hyphens.
QStringList wholeStems(const QString& text) {
  QStringList result;
  int start = -1;
  for (const WordAt& word : wordsOf(text)) {
    if (word.start > start) result << word.stem;
    start = std::max(start, word.start);
  }
  return result;
}

int times(const QStringList& words, const QString& stem) {
  return static_cast<int>(words.count(stem));
}

/// "Sicherungskopie" and "Datensicherung" have "Sicherung" in them.
bool isPart(const QString& stem, const QString& word) {
  if (word == stem) return false;
  return (stem.size() >= kShortestBeginning && word.startsWith(stem)) ||
         (stem.size() >= kShortestEnding && word.endsWith(stem));
}

int partTimes(const QStringList& words, const QString& stem) {
  return static_cast<int>(
      std::ranges::count_if(words, [&](const QString& word) { return isPart(stem, word); }));
}

int wordCount(const QString& title) {
  return static_cast<int>(title.count(u' ')) + 1;
}

/// A word that a long section has among many others tells less of it.
int inText(int times, const QStringList& body) {
  const int length = static_cast<int>(body.size());
  return kInText * std::min(times, kMostInText) * kShortText / (kShortText + length);
}

/// A title that is the word alone tells more than one that has others as well.
int inTitle(int times, const QString& title, int weight) {
  return times == 0 ? 0 : weight * kFewWords / (kFewWords - 1 + wordCount(title));
}

/// Whether the word is one of those looked for, or has one of them in it.
bool isFound(const QString& word, const QStringList& stems) {
  return std::ranges::any_of(
      stems, [&](const QString& stem) { return word == stem || isPart(stem, word); });
}

QString excerptOf(const QString& text, const QStringList& stems) {
  const QList<WordAt> found = foundWords(text, stems);
  qsizetype from = found.isEmpty() ? 0 : std::max(found.first().start - kBefore, 0);
  // Both ends lie between words.
  if (from > 0) from = text.indexOf(u' ', from) + 1;
  qsizetype to = text.indexOf(u' ', from + kExcerpt);
  if (to < 0) to = text.size();
  const QString dots = QStringLiteral("… ");
  return (from > 0 ? dots : QString()) + text.mid(from, to - from) +
         (to < text.size() ? QStringLiteral(" …") : QString());
}

}  // namespace

QList<WordAt> foundWords(const QString& text, const QStringList& stems) {
  QList<WordAt> result;
  for (const WordAt& word : wordsOf(text)) {
    const bool again = !result.isEmpty() && result.last().start == word.start;
    if (!again && isFound(word.stem, stems)) result.append(word);
  }
  return result;
}

ManualSearch::ManualSearch(const QList<ManualPage>& pages, const QString& synonyms) {
  for (const ManualPage& page : pages) {
    for (const ManualSection& each : sectionsOf(page)) {
      sections_.append({each, stemsOf(each.page), stemsOf(each.heading), stemsOf(each.text)});
    }
  }
  for (const QString& line : synonyms.split(u'\n')) {
    const QStringList sides = line.split(u'=');
    if (line.startsWith(u'#') || sides.size() != 2) continue;
    for (const QString& word : sides[0].split(u',')) {
      synonyms_[wordStem(word.trimmed())] << wholeStems(sides[0]) << wholeStems(sides[1]);
    }
  }
}

QList<ManualSearch::Term> ManualSearch::termsOf(const QString& question) const {
  QList<Term> terms;
  const QList<WordAt> words = wordsOf(question);
  for (qsizetype i = 0; i < words.size(); ++i) {
    const WordAt& word = words[i];
    // "CV 29" is one word.
    const bool isCv = word.stem == QStringLiteral("cv") && i + 2 < words.size() &&
                      words[i + 2].stem == QStringLiteral("cv") + words[i + 1].stem;
    if (isCv) {
      terms.append({{words[i + 2].stem}, {}});
      i += 2;
      continue;
    }
    // A word with hyphens is looked for as a whole, with or without them.
    QStringList asked{word.stem};
    const auto sameWord = [&] { return i + 1 < words.size() && words[i + 1].start == word.start; };
    if (sameWord()) asked << words[++i].stem;
    while (sameWord()) ++i;
    QStringList meant;
    for (const QString& each : asked) meant << synonyms_.value(each);
    meant.removeDuplicates();
    meant.removeIf([&](const QString& each) { return asked.contains(each); });
    terms.append({asked, meant});
  }
  return terms;
}

int ManualSearch::worth(const Section& section, const Term& term) {
  const auto worthOf = [&](const QString& stem, auto count) {
    return inTitle(count(section.page, stem), section.text.page, kInPageTitle) +
           inTitle(count(section.heading, stem), section.text.heading, kInHeading) +
           inText(count(section.body, stem), section.body);
  };
  int sum = 0;
  for (const QString& stem : term.asked) {
    sum += kWholeWord * worthOf(stem, times) + kPartOfWord * worthOf(stem, partTimes);
  }
  for (const QString& stem : term.meant) sum += kMeant * worthOf(stem, times);
  return sum;
}

QList<ManualHit> ManualSearch::find(const QString& question) const {
  const QList<Term> terms = termsOf(question);
  QStringList stems;
  for (const Term& term : terms) stems << term.asked << term.meant;
  struct Rated {
    int worth;
    const Section* section;
  };
  QList<Rated> rated;
  for (const Section& section : sections_) {
    int sum = 0;
    for (const Term& term : terms) {
      const int one = worth(section, term);
      if (one > 0) sum += one + kEveryTerm;
    }
    if (sum > 0) rated.append({sum, &section});
  }
  // Sections that are worth the same stay in the order of the pages.
  std::ranges::stable_sort(rated, std::ranges::greater(), &Rated::worth);
  QList<ManualHit> hits;
  for (const Rated& each : rated) {
    const ManualSection& text = each.section->text;
    const QString title = text.heading == text.page
                              ? text.page
                              : QStringLiteral("%1: %2").arg(text.page, text.heading);
    hits.append({text.place, title, excerptOf(text.text, stems), stems});
  }
  return hits;
}

}  // namespace lokari
