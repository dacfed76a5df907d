// A vehicle database in a folder of its own, for tests: a copy of the template.
// The test program links lokari_db_support.
#pragma once

#include <gtest/gtest.h>

#include <QFile>
#include <QTemporaryDir>

#include <memory>

#include "db/database.h"
#include "support/places.h"

namespace lokari::test {

class TestDatabase {
 public:
  TestDatabase() { EXPECT_TRUE(QFile::copy(places::emptyDatabase(), path())); }

  QString folder() const { return folder_.path(); }
  QString path() const { return folder_.filePath(QStringLiteral("TEST.MDB")); }

  /// The open database.
  Database& open() {
    if (!database_) database_ = std::make_unique<Database>(path());
    return *database_;
  }
  void close() { database_.reset(); }

  void run(const char* statement, const QVariantList& values = {}) {
    open().write(QString::fromUtf8(statement), values);
  }

  /// Empties the tables of the catalogue and of the lists.
  void clearLists() {
    for (const char* table :
         {"DCMANUFS", "DECODERS", "MANUFS", "MOTORS", "ERAS", "LINES", "FTYPES"}) {
      run(QByteArray("DELETE FROM ").append(table).constData());
    }
  }

  /// Adds a vehicle; a null `collection` is Null.
  void addVehicle(int address, const QString& collection, const QString& name) {
    run("INSERT INTO LOCO_DAT (DC_ADR, DC_COLL, DC_TYPE, ST_SNAME) VALUES (?, ?, 1, ?)",
        {address, collection.isNull() ? QVariant() : QVariant(collection), name});
  }

 private:
  QTemporaryDir folder_;
  std::unique_ptr<Database> database_;
};

}  // namespace lokari::test
