// The words of the query language.
#pragma once

#include <QList>
#include <QString>

namespace lokari {

enum class JetTokenKind { Word, Number, Text, Symbol, End };

struct JetToken {
  JetTokenKind kind = JetTokenKind::End;
  QString text;      ///< a word as written, a number's digits, a text without quotes, a symbol
  qsizetype at = 0;  ///< where it begins in the query

  bool is(QStringView word) const {
    return kind == JetTokenKind::Word && text.compare(word, Qt::CaseInsensitive) == 0;
  }
  bool isSymbol(QStringView symbol) const { return kind == JetTokenKind::Symbol && text == symbol; }
};

/// The tokens of a query, an End last. A number ends at the first character that cannot belong to
/// it, so "7AND" is a number and a word; it may hold decimal points and commas. Texts stand in
/// double or single quotes, a doubled quote inside stands for one. Throws StorageError for any
/// other character and for a text without an end.
QList<JetToken> jetTokens(const QString& query);

}  // namespace lokari
