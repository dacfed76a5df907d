// Words of a German text in the form in which the manual's search compares them.
#pragma once

#include <QList>
#include <QString>

namespace lokari {

/// A word, and where it stands in the text. "CV 29" is three words, the last being
/// "cv29" at the place of both. A word with hyphens is followed by itself without them and by each
/// of its parts, all at the place of the whole.
struct WordAt {
  QString stem;
  int start = 0;
  int length = 0;
};

/// Without case, umlauts and the ending of its inflection: "Weichen" and "Weiche" are one.
QString wordStem(const QString& word);

/// Every word of the text, in its order.
QList<WordAt> wordsOf(const QString& text);

}  // namespace lokari
