// One open database file.
//
// The file is an SQLite database whatever its extension says. Two connections serve it: one that
// reads and can do nothing else, and one that writes a record at a time. A record is on disk,
// whole, when the write returns; a crash at any moment leaves the last state that was whole.
#pragma once

#include <QHash>
#include <QList>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QString>
#include <QVariant>

#include "db/columns.h"
#include "db/storage_error.h"

namespace lokari {

/// Stored in every database: "LOKA" as a number, and the version of the tables.
inline constexpr int kApplicationId = 0x4C4F4B41;
inline constexpr int kFormatVersion = 1;

class Database {
 public:
  /// Opens the file. Throws StorageError: kNoDatabase when it is no database of this program
  /// (missing, empty, foreign, damaged in its head), kNewerFormat when a newer version wrote it,
  /// kLocked when another program holds it. Nothing is written to it.
  explicit Database(const QString& path);
  ~Database();
  Database(const Database&) = delete;
  Database& operator=(const Database&) = delete;

  const QString& path() const { return path_; }

  /// The columns of a table in their order; empty when there is no such table. Names of tables and
  /// columns have no case.
  const QList<ColumnInfo>& columns(const QString& table) const;
  /// The column, or nullptr.
  const ColumnInfo* column(const QString& table, const QString& column) const;

  /// Runs one statement that reads. The statement is the caller's own text, values come through
  /// `values`. Throws StorageError. The caller reads the answer to its end or drops it before the
  /// next write.
  QSqlQuery read(const QString& statement, const QVariantList& values = {}) const;

  /// Runs one statement that writes, as a transaction of its own. Gives the row id of an insert.
  /// Throws StorageError; nothing has changed then.
  qint64 write(const QString& statement, const QVariantList& values);

  /// Rows of a query in the system's query language (see jet_sql.h), all values fetched. For lists
  /// and look-ups; a record set serves everything else.
  QList<QVariantList> rows(const QString& query) const;

  /// What the engine finds wrong with the file, one line each; empty when it is sound.
  QStringList integrityFaults() const;

 private:
  QString path_;
  QString readerName_;
  QString writerName_;
  QHash<QString, QList<ColumnInfo>> tables_;
};

}  // namespace lokari
