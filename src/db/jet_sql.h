// The system's query language, translated for the storage.
//
//   SELECT what FROM table [WHERE condition] [ORDER BY term [ASC|DESC], ...]
//   what       *, columns, DISTINCT(column) or MAX(column)
//   term       column or ISNULL(column)
//   condition  comparisons (= <> < <= > >=), LIKE, NOT LIKE, IS [NOT] NULL, ISNULL(column), joined
//   by
//              AND, OR, NOT and parentheses
//
// ISNULL is -1 for Null and 0 otherwise. Texts are compared without regard to case, in German
// order. Every word of the result is the translator's own: names are those of the schema, values
// are handed over as such and never as text of the statement. What is not understood is refused by
// StorageError.
#pragma once

#include <QString>
#include <QVariant>

#include "db/columns.h"

namespace lokari {

/// A condition in the storage's own language, with the values of its marks.
struct JetCondition {
  QString sql;
  QVariantList values;
};

struct JetSelect {
  QString table;     ///< as in the schema
  bool all = false;  ///< "*": the rows as a whole, which a record set can show
  QString what;      ///< the columns of the answer
  QString where;     ///< with WHERE, or empty
  QString order;     ///< with ORDER BY; ends in the row's number, so that no order is left open
  QVariantList values;

  /// The statement for the columns asked for.
  QString statement() const { return QStringLiteral("SELECT ") + what + from() + where + order; }
  /// The statement for the rows' numbers. Only for a query of whole rows.
  QString keys() const { return QStringLiteral("SELECT rowid") + from() + where + order; }

 private:
  QString from() const { return QStringLiteral(" FROM \"") + table + u'"'; }
};

/// Translates a query. Throws StorageError (kSyntax, kUnknownName, kTypeMismatch).
JetSelect translateSelect(const Schema& schema, const QString& query);

/// Translates a condition on a table, without WHERE. Throws like translateSelect().
JetCondition translateCondition(const TableInfo& table, const QString& condition);

}  // namespace lokari
