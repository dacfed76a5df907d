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

#include "db/columns.h"
#include "db/jet_statement.h"

namespace lokari {

/// Translates a query. Throws StorageError (kSyntax, kUnknownName, kTypeMismatch).
JetSelect translateSelect(const Schema& schema, const QString& query);

/// Translates a condition on a table, without WHERE. Throws like translateSelect().
JetCondition translateCondition(const TableInfo& table, const QString& condition);

/// " WHERE condition" for a query. The condition is proved by itself before: what is wrong with it
/// is told in its own words, and it cannot become another part of the query. Throws like
/// translateSelect().
QString provenWhere(const TableInfo& table, const QString& condition);

}  // namespace lokari
