// The search of the manual: in the words of its owner, not only in those of its pages.
#pragma once

#include <QHash>
#include <QList>
#include <QStringList>

#include "app/manual_text.h"
#include "app/word_forms.h"

namespace lokari {

struct ManualHit {
  QString place;      ///< page and anchor
  QString title;      ///< "Seite: Abschnitt"
  QString excerpt;    ///< around the first word that was found
  QStringList stems;  ///< what was looked for, as wordsOf() tells it
};

/// The words of `text` that are among `stems`.
QList<WordAt> foundWords(const QString& text, const QStringList& stems);

class ManualSearch {
 public:
  /// `synonyms` has a line for each group of words: "Lok, Zug = Fahrzeug". Who looks for a word on
  /// the left means those on the right as well; lines that begin with # are remarks.
  ManualSearch(const QList<ManualPage>& pages, const QString& synonyms);

  /// The sections that have the words of the question, the best first.
  QList<ManualHit> find(const QString& question) const;

 private:
  struct Section {
    ManualSection text;
    QStringList page, heading, body;  ///< the stems of each
  };
  struct Term {
    QStringList asked;  ///< the word, with and without its hyphens
    QStringList meant;  ///< by the synonyms
  };

  QList<Term> termsOf(const QString& question) const;
  static int worth(const Section& section, const Term& term);

  QList<Section> sections_;
  QHash<QString, QStringList> synonyms_;
};

}  // namespace lokari
