#include "db/database.h"

#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QUuid>

#include <stdexcept>
#include <utility>

#include "base/paths.h"
#include "base/plain_file.h"
#include "db/access_database.h"
#include "db/jet_sql.h"
#include "db/sqlite_functions.h"

namespace lokari {
namespace {

// Primary result codes of the engine, and the extended ones of unique indexes.
struct EngineFault {
  int code;
  int number;
  const char16_t* text;
};
constexpr EngineFault kEngineFaults[] = {
    {2067, storage_error::kDuplicateKey, u"Diesen Schlüssel gibt es bereits."},
    {1555, storage_error::kDuplicateKey, u"Diesen Schlüssel gibt es bereits."},
    {2579, storage_error::kDuplicateKey, u"Diesen Schlüssel gibt es bereits."},
    {1299, storage_error::kNullField, u"Ein Feld, das einen Wert haben muss, ist leer."},
    {5, storage_error::kLocked, u"Die Datenbank wird gerade von einem anderen Programm benutzt."},
    {6, storage_error::kLocked, u"Die Datenbank wird gerade von einem anderen Programm benutzt."},
    {1032, storage_error::kFileMoved,
     u"Die Datenbankdatei liegt nicht mehr an ihrem Platz: Sie wurde gelöscht, umbenannt oder "
     u"ersetzt."},
    {8, storage_error::kReadOnly, u"Die Datenbank ist schreibgeschützt."},
    {10, storage_error::kMediumFailed,
     u"Die Datenbankdatei kann nicht gelesen oder geschrieben werden."},
    {11, storage_error::kDamaged, u"Die Datenbankdatei ist beschädigt."},
    {13, storage_error::kDiskFull, u"Der Datenträger ist voll, es wurde nichts gespeichert."},
    {14, storage_error::kNoDatabase, u"Die Datenbankdatei kann nicht geöffnet werden."},
    {26, storage_error::kNoDatabase, u"Die Datei ist keine Datenbank."},
};

constexpr qint64 kHeadSize = 32;

StorageError storageError(const QSqlError& error) {
  const int code = error.nativeErrorCode().toInt();
  for (const EngineFault& fault : kEngineFaults) {
    if (fault.code == code || fault.code == (code & 0xFF)) {
      return {fault.number, QString::fromUtf16(fault.text)};
    }
  }
  return {storage_error::kOther,
          QStringLiteral("Fehler der Datenbank: %1")
              .arg(error.databaseText().isEmpty() ? error.driverText() : error.databaseText())};
}

void run(QSqlQuery& query, const QString& statement, const QVariantList& values) {
  query.setForwardOnly(true);
  if (!query.prepare(statement)) throw storageError(query.lastError());
  for (const QVariant& value : values) query.addBindValue(value);
  if (!query.exec()) throw storageError(query.lastError());
}

void connectTo(const QString& name, const QString& path, const QString& options) {
  QSqlDatabase connection = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), name);
  connection.setDatabaseName(path);
  connection.setConnectOptions(
      QStringLiteral("QSQLITE_BUSY_TIMEOUT=%1%2").arg(kLockPatience).arg(options));
  if (!connection.open()) throw storageError(connection.lastError());
  registerSqliteFunctions(connection);
}

// The engine makes an empty file a database without a word; this program does not.
void checkHead(const QString& path) {
  // The engine opens what it finds under these names, and waits for whoever writes into a pipe.
  for (const char16_t* suffix : {u"", u"-journal", u"-wal", u"-shm"}) {
    const QString each = path + QString::fromUtf16(suffix);
    const QString fault = specialFileFault(each, fileNameOf(each));
    if (!fault.isEmpty()) throw StorageError(storage_error::kNoDatabase, fault);
  }
  PlainFile file(path);
  if (!file.open()) {
    throw StorageError(storage_error::kNoDatabase,
                       QStringLiteral("Die Datenbankdatei kann nicht geöffnet werden."));
  }
  const QByteArray head = file.read(kHeadSize);
  if (isAccessFile(path)) {
    throw StorageError(storage_error::kAccessFile,
                       QStringLiteral("Die Datei ist eine Access-Datenbank, die nicht unmittelbar "
                                      "geöffnet werden kann."));
  }
  if (!head.startsWith("SQLite format 3")) {
    throw StorageError(storage_error::kNoDatabase,
                       QStringLiteral("Die Datei ist keine Datenbank."));
  }
}

}  // namespace

Database::Database(const QString& path) : path_(path) {
  checkHead(path);
  const QString id = QUuid::createUuid().toString(QUuid::WithoutBraces);
  readerName_ = QStringLiteral("read-") + id;
  writerName_ = QStringLiteral("write-") + id;
  try {
    openConnections();
    checkFormat();
    readSchema();
  } catch (...) {
    closeConnections();
    throw;
  }
}

Database::~Database() {
  closeConnections();
}

void Database::openConnections() {
  // The writer comes first: it takes back what an interrupted write left, which a connection that
  // only reads cannot.
  connectTo(writerName_, path_, QString());
  write(QStringLiteral("PRAGMA synchronous = FULL"), {});
  write(QStringLiteral("PRAGMA foreign_keys = OFF"), {});
  QSqlQuery first(QSqlDatabase::database(writerName_, false));
  run(first, QStringLiteral("SELECT COUNT(*) FROM sqlite_master"), {});
  first.finish();
  connectTo(readerName_, path_, QStringLiteral(";QSQLITE_OPEN_READONLY"));
}

void Database::closeConnections() {
  for (const QString& name : {readerName_, writerName_}) {
    if (QSqlDatabase::contains(name)) QSqlDatabase::removeDatabase(name);
  }
}

void Database::checkFormat() {
  const auto number = [this](const QString& pragma) {
    int result = 0;
    read(pragma, {}, [&](const QSqlQuery& row) { result = row.value(0).toInt(); });
    return result;
  };
  if (number(QStringLiteral("PRAGMA application_id")) != kApplicationId) {
    throw StorageError(storage_error::kNoDatabase,
                       QStringLiteral("Die Datei ist keine Datenbank dieses Programms."));
  }
  if (number(QStringLiteral("PRAGMA user_version")) > kFormatVersion) {
    throw StorageError(
        storage_error::kNewerFormat,
        QStringLiteral("Die Datenbank wurde mit einer neueren Programmversion angelegt."));
  }
}

void Database::readSchema() {
  QStringList names;
  read(QStringLiteral("SELECT name FROM sqlite_master WHERE type = 'table' AND "
                      "name NOT LIKE 'sqlite\\_%' ESCAPE '\\'"),
       {}, [&](const QSqlQuery& row) { names.append(row.value(0).toString()); });
  for (const QString& name : names) {
    TableInfo table;
    table.name = name;
    read(QStringLiteral("SELECT name, type FROM pragma_table_info(?)"), {name},
         [&](const QSqlQuery& row) {
           table.columns.append(
               ColumnInfo::declared(row.value(0).toString(), row.value(1).toString()));
         });
    QStringList indexes;
    read(QStringLiteral("SELECT name FROM pragma_index_list(?) WHERE \"unique\" = 1"), {name},
         [&](const QSqlQuery& row) { indexes.append(row.value(0).toString()); });
    for (const QString& index : indexes) {
      QStringList key;
      read(QStringLiteral("SELECT name FROM pragma_index_info(?)"), {index},
           [&](const QSqlQuery& row) { key.append(row.value(0).toString()); });
      table.uniqueKeys.append(key);
    }
    schema_.add(table);
  }
}

void Database::read(const QString& statement, const QVariantList& values,
                    const RowHandler& row) const {
  // A transaction that outgrows the engine's memory locks the file against the reader.
  const QString& connection = inTransaction_ ? writerName_ : readerName_;
  QSqlQuery query(QSqlDatabase::database(connection, false));
  run(query, statement, values);
  while (query.next()) row(query);
  // The loop ends for a failure as it does for the last row.
  if (query.lastError().isValid()) throw storageError(query.lastError());
}

qint64 Database::write(const QString& statement, const QVariantList& values) {
  QSqlQuery query(QSqlDatabase::database(writerName_, false));
  run(query, statement, values);
  return query.lastInsertId().toLongLong();
}

void Database::changeRow(const QString& statement, const QVariantList& values) {
  QSqlQuery query(QSqlDatabase::database(writerName_, false));
  run(query, statement, values);
  if (query.numRowsAffected() == 0) throw recordDeleted();
}

void Database::setPatience(int ms) {
  patience_ = ms;
  for (const QString& name : {readerName_, writerName_}) {
    QSqlQuery query(QSqlDatabase::database(name, false));
    run(query, QStringLiteral("PRAGMA busy_timeout = %1").arg(ms), {});
  }
}

void Database::transaction(const std::function<void()>& work) {
  if (inTransaction_) throw std::logic_error("transaction within a transaction");
  // The lock is taken at once, so that another program cannot come between reading and writing.
  write(QStringLiteral("BEGIN IMMEDIATE"), {});
  inTransaction_ = true;
  try {
    work();
    write(QStringLiteral("COMMIT"), {});
  } catch (...) {
    inTransaction_ = false;
    try {
      write(QStringLiteral("ROLLBACK"), {});
    } catch (const StorageError&) {
      // Some failures, a full disk among them, have already taken everything back.
    }
    doWaiting();
    throw;
  }
  inTransaction_ = false;
  doWaiting();
}

void Database::whenFree(const std::function<void()>& work) {
  if (inTransaction_) {
    waiting_.push_back(work);
  } else {
    work();
  }
}

void Database::doWaiting() {
  for (const auto& work : std::exchange(waiting_, {})) work();
}

void Database::query(const QString& query, const RowHandler& row) const {
  const JetSelect select = translateSelect(schema_, query);
  read(select.statement(), select.values, row);
}

QStringList Database::integrityFaults() const {
  QStringList faults;
  try {
    read(QStringLiteral("PRAGMA integrity_check"), {},
         [&](const QSqlQuery& row) { faults.append(row.value(0).toString()); });
  } catch (const StorageError& error) {
    faults.append(error.text());
  }
  if (faults == QStringList{QStringLiteral("ok")}) faults.clear();
  return faults;
}

}  // namespace lokari
