// What the storage reports about its tables and columns. Quotes in conditions and entry checks
// follow it.
#pragma once

#include <QHash>
#include <QList>
#include <QString>
#include <QStringList>

namespace lokari {

enum class ColumnType : int {
  Byte = 2,      ///< 0 to 255
  Integer = 3,   ///< 16 bits, signed
  Long = 4,      ///< 32 bits, signed
  Currency = 5,  ///< a number with four decimal places
  Text = 10,
  Binary = 11,
};

struct ColumnInfo {
  QString name;  ///< as in the table
  ColumnType type = ColumnType::Text;
  int size = 0;  ///< characters; 0 for everything but text

  bool isText() const { return type == ColumnType::Text; }
  bool isNumeric() const { return type >= ColumnType::Byte && type <= ColumnType::Currency; }

  /// From the declaration in the schema: VARCHAR(n), TINYINT, SMALLINT, INTEGER, CURRENCY, BLOB.
  /// Anything else is text without a limit, and so is VARCHAR(255): a memo.
  static ColumnInfo declared(const QString& name, const QString& declaration);
};

/// A name of the schema as a statement has it.
inline QString quotedName(const QString& name) {
  return u'"' + name + u'"';
}

struct TableInfo {
  QString name;  ///< as in the file
  QList<ColumnInfo> columns;
  QList<QStringList> uniqueKeys;  ///< columns whose values together occur once

  /// The column, or nullptr. Names have no case.
  const ColumnInfo* column(const QString& columnName) const;
};

/// The tables of a database, by name; names have no case.
class Schema {
 public:
  void add(const TableInfo& table) { tables_.insert(table.name.toUpper(), table); }
  /// The table, or nullptr.
  const TableInfo* table(const QString& name) const;

 private:
  QHash<QString, TableInfo> tables_;
};

}  // namespace lokari
