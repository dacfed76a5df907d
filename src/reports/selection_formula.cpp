#include "reports/selection_formula.h"

#include <QRegularExpression>
#include <QSet>

#include <algorithm>
#include <array>

#include "db/form_fields.h"
#include "db/jet_sql.h"
#include "db/jet_tokens.h"
#include "db/storage_error.h"
#include "reports/report_error.h"

namespace lokari {
namespace {

[[noreturn]] void refuse(const QString& formula, const QString& reason) {
  throw ReportError(QStringLiteral("Die Auswahl der Fahrzeuge wird nicht verstanden:\r%1\r%2")
                        .arg(formula, reason));
}

/// A formula whose fields stand without their braces, as they do in the query language.
struct Plain {
  QString text;
  QSet<qsizetype> fields;  ///< where in `text` a field begins
};

/// The column that the inside of a pair of braces names.
QString columnNamed(const TableInfo& vehicles, const QString& formula, const QString& inside) {
  const QString table = inside.section(u'.', 0, 0).trimmed();
  const QString name = inside.section(u'.', 1).trimmed();
  const ColumnInfo* column =
      table.compare(vehicles.name, Qt::CaseInsensitive) == 0 ? vehicles.column(name) : nullptr;
  if (column == nullptr)
    refuse(formula, QStringLiteral("Das Feld {%1} gibt es nicht.").arg(inside));
  return column->name;
}

/// A formula in which an apostrophe that is part of a text is doubled, as it has to be. A search
/// sets the user's text between apostrophes as it was typed: one of its own is followed by more of
/// the text, and the text ends where the condition ends or goes on.
QString withDoubledApostrophes(const QString& formula) {
  static const QRegularExpression textEnd(
      QStringLiteral(R"('(?=\s*(?:$|\)|(?:AND|OR)\b\s*(?:NOT\b\s*)?\(*\s*(?:\{|ISNULL\b))))"),
      QRegularExpression::CaseInsensitiveOption);
  QString result;
  qsizetype at = 0;
  for (;;) {
    const qsizetype begin = formula.indexOf(u'\'', at);
    const qsizetype end = begin < 0 ? -1 : formula.indexOf(textEnd, begin + 1);
    if (end < 0) return result + formula.mid(at);
    result += formula.mid(at, begin + 1 - at) +
              formula.mid(begin + 1, end - begin - 1).replace(u'\'', QStringLiteral("''")) + u'\'';
    at = end + 1;
  }
}

Plain withoutBraces(const TableInfo& vehicles, const QString& formula) {
  Plain plain;
  QChar quote;
  for (qsizetype at = 0; at < formula.size(); ++at) {
    const QChar c = formula.at(at);
    if (quote.isNull() && c == u'{') {
      const qsizetype end = formula.indexOf(u'}', at);
      if (end < 0) refuse(formula, QStringLiteral("Einem Feld fehlt die schließende Klammer."));
      // The blanks keep the field from growing together with what stands beside it.
      plain.text += u' ';
      plain.fields.insert(plain.text.size());
      plain.text += columnNamed(vehicles, formula, formula.mid(at + 1, end - at - 1)) + u' ';
      at = end;
      continue;
    }
    // A doubled quote ends the text and begins it anew, which comes to the same here.
    if (quote.isNull() && (c == u'"' || c == u'\'')) {
      quote = c;
    } else if (c == quote) {
      quote = QChar();
    }
    plain.text += c;
  }
  return plain;
}

struct Spoken {
  const char16_t* sign;
  const char16_t* word;
};

/// The words that a formula may hold, and how people say them.
constexpr std::array kWords{Spoken{u"AND", u"und"}, Spoken{u"OR", u"oder"},
                            Spoken{u"NOT", u"nicht"}, Spoken{u"LIKE", u"wie"},
                            Spoken{u"ISNULL", u"ohne"}};
constexpr std::array kSigns{Spoken{u"<>", u"≠"}, Spoken{u"<=", u"≤"}, Spoken{u">=", u"≥"}};

template <typename Table>
const Spoken* spoken(const Table& table, const QString& sign) {
  const auto found = std::find_if(table.begin(), table.end(), [&](const Spoken& row) {
    return sign.compare(QStringView(row.sign), Qt::CaseInsensitive) == 0;
  });
  return found == table.end() ? nullptr : &*found;
}

struct Formula {
  Plain plain;
  QList<JetToken> tokens;
};

/// Reads a formula whose texts are in good order.
Formula readOrdered(const TableInfo& vehicles, const QString& formula) {
  Formula result;
  result.plain = withoutBraces(vehicles, formula);
  try {
    result.tokens = jetTokens(result.plain.text);
    for (const JetToken& token : result.tokens) {
      const bool known = token.kind != JetTokenKind::Word ||
                         result.plain.fields.contains(token.at) ||
                         spoken(kWords, token.text) != nullptr;
      if (!known) refuse(formula, QStringLiteral("Unbekanntes Wort \"%1\".").arg(token.text));
    }
    translateCondition(vehicles, result.plain.text);
  } catch (const StorageError& error) {
    refuse(formula, error.text());
  }
  return result;
}

Formula readFormula(const TableInfo& vehicles, const QString& formula) {
  try {
    return readOrdered(vehicles, formula);
  } catch (const ReportError&) {
    const QString doubled = withDoubledApostrophes(formula);
    if (doubled == formula) throw;
    try {
      return readOrdered(vehicles, doubled);
    } catch (const ReportError&) {
      // What is wrong is told of the formula as it came.
    }
    throw;
  }
}

/// What the record form calls the column: its label without colon and range.
QString columnInWords(const QString& column) {
  for (const FormField& field : formFields()) {
    const QString label = QString::fromUtf16(field.label);
    if (column == QStringView(field.column) && !label.isEmpty()) {
      return label.section(u'(', 0, 0).section(u':', 0, 0).trimmed();
    }
  }
  if (column == QStringLiteral("DC_DECODER")) return QStringLiteral("Decoder");
  if (column == QStringLiteral("DC_TYPE")) return QStringLiteral("Art");
  return column;
}

QString tokenInWords(const JetToken& token, bool isField) {
  const Spoken* known = nullptr;
  switch (token.kind) {
    case JetTokenKind::Word:
      if (isField) return columnInWords(token.text);
      known = spoken(kWords, token.text);
      break;
    case JetTokenKind::Symbol:
      known = spoken(kSigns, token.text);
      break;
    case JetTokenKind::Text:
      return u'„' + token.text + u'“';
    case JetTokenKind::Number:
      return QString(token.text).replace(u'.', u',');
    case JetTokenKind::End:
      break;
  }
  return known == nullptr ? token.text : QString::fromUtf16(known->word);
}

}  // namespace

QString formulaCondition(const TableInfo& vehicles, const QString& formula) {
  return readFormula(vehicles, formula).plain.text;
}

QString formulaInWords(const TableInfo& vehicles, const QString& formula) {
  const Formula read = readFormula(vehicles, formula);
  QString words;
  for (const JetToken& token : read.tokens) {
    if (token.kind == JetTokenKind::End) break;
    const bool isTight =
        words.isEmpty() || words.endsWith(u'(') || words.endsWith(u'-') || token.isSymbol(u")");
    if (!isTight) words += u' ';
    words += tokenInWords(token, read.plain.fields.contains(token.at));
  }
  return words;
}

}  // namespace lokari
