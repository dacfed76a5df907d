// A database of Access, read by the program lokari-access-reader.
//
// The file is only read. Its text is Unicode, its amounts are exact, and a Null is told from an
// empty value.
#pragma once

#include "db/access_reading.h"
#include "db/foreign_database.h"

namespace lokari {

/// Whether the file is a database of Access, by its head. False also when it cannot be read.
bool isAccessFile(const QString& path);

class AccessDatabase final : public ForeignDatabase {
 public:
  /// Reads the names of the tables. Throws StorageError: kDamaged when the file is no database of
  /// Access or a broken one, kMediumFailed when there is no reader.
  AccessDatabase(AccessReader reader, QString path);

  QStringList tables() const override { return tables_; }
  /// Fewer rows than the file claims are damage; that is told behind the last row, not here.
  std::unique_ptr<ForeignTable> table(const QString& name) override;

 private:
  AccessReader reader_;
  QString path_;
  QStringList tables_;
};

}  // namespace lokari
