// What the system's query language becomes: parts of the storage's statement.
#pragma once

#include <QString>
#include <QVariant>

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

}  // namespace lokari
