// A database of another program or format, read row by row.
#pragma once

#include <QStringList>
#include <QVariantList>

#include <memory>

namespace lokari {

/// One table of it, from its first row on.
class ForeignTable {
 public:
  virtual ~ForeignTable() = default;

  /// Names as in the file, in the file's order.
  virtual const QStringList& columns() const = 0;
  /// The number of rows that the file claims.
  virtual int rowCount() const = 0;
  /// The next row, a value a column: QString, a whole number (int), an amount (double), QByteArray,
  /// or an invalid QVariant for Null. False behind the last row. Throws StorageError (kDamaged)
  /// when the file cannot be read on.
  virtual bool next(QVariantList& row) = 0;
};

class ForeignDatabase {
 public:
  virtual ~ForeignDatabase() = default;

  virtual QStringList tables() const = 0;
  /// The table of that name (names have no case), or null when there is none. Throws StorageError
  /// (kDamaged).
  virtual std::unique_ptr<ForeignTable> table(const QString& name) = 0;
};

}  // namespace lokari
