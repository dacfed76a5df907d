// One open database file.
//
// The file is an SQLite database whatever its extension says. Two connections serve it: one that
// reads and can do nothing else, and one that writes a record, or what one transaction joins, at a
// time. It is on disk, whole, when the write returns; a crash at any moment leaves the last state
// that was whole.
#pragma once

#include <QString>
#include <QStringList>
#include <QVariant>

#include <functional>
#include <vector>

#include "db/columns.h"
#include "db/storage_error.h"

class QSqlQuery;

namespace lokari {

/// Stored in every database: "LOKA" as a number, and the version of the tables.
inline constexpr int kApplicationId = 0x4C4F4B41;
inline constexpr int kFormatVersion = 1;

/// How long a file that another program holds is waited for, in milliseconds.
inline constexpr int kLockPatience = 500;

class Database {
 public:
  /// Opens the file. Throws StorageError: kNoDatabase when it is no database of this program
  /// (missing, empty, foreign, damaged in its head), kNewerFormat when a newer version wrote it,
  /// kLocked when another program holds it. Nothing is written to it, but that an interrupted write
  /// is taken back.
  explicit Database(const QString& path);
  ~Database();
  Database(const Database&) = delete;
  Database& operator=(const Database&) = delete;

  const QString& path() const { return path_; }
  const Schema& schema() const { return schema_; }

  /// Called for each row of an answer; value(0) is its first column.
  using RowHandler = std::function<void(const QSqlQuery& row)>;

  /// Runs one statement that reads. The statement is the program's own text, values come through
  /// `values`. The handler must not write. Throws StorageError.
  void read(const QString& statement, const QVariantList& values, const RowHandler& row) const;

  /// Runs one statement that writes, as a transaction of its own. Gives the row id of an insert.
  /// Throws StorageError; nothing has changed then.
  qint64 write(const QString& statement, const QVariantList& values);

  /// The same for a statement that changes or deletes one row. Throws kRecordDeleted when there is
  /// no such row any more.
  void changeRow(const QString& statement, const QVariantList& values);

  /// Runs `work` as one transaction: what it writes is on disk when this returns, all of it, and
  /// nothing of it when `work` throws or the storage fails. Reading within it sees what was
  /// written. Throws StorageError, and what `work` throws. A transaction within another is a
  /// programming error: std::logic_error.
  void transaction(const std::function<void()>& work);

  /// Does `work` as soon as no transaction runs: now, or behind its end, however it ends. For what
  /// must not be lost and nobody waits for.
  void whenFree(const std::function<void()>& work);

  /// How long, in milliseconds, a file that another program holds is waited for from now on.
  void setPatience(int ms);
  int patience() const { return patience_; }

  /// True within transaction().
  bool inTransaction() const { return inTransaction_; }

  /// Runs a query in the system's query language (see jet_sql.h). "*" reads whole rows, their
  /// arrays and pictures included: a list names its columns. Throws StorageError.
  void query(const QString& query, const RowHandler& row) const;

  /// What the engine finds wrong with the file, one line each; empty when it is sound.
  QStringList integrityFaults() const;

 private:
  void openConnections();
  void closeConnections();
  void checkFormat();
  void readSchema();
  void doWaiting();

  QString path_;
  QString readerName_;
  QString writerName_;
  Schema schema_;
  bool inTransaction_ = false;
  int patience_ = kLockPatience;
  std::vector<std::function<void()>> waiting_;  // for the end of the transaction
};

}  // namespace lokari
