// Many changes as one: all of them are on disk, or none.
#include <QSqlQuery>

#include <stdexcept>

#include "db/record_set.h"
#include "support/test_database.h"

namespace lokari {
namespace {

class DatabaseTransaction : public ::testing::Test {
 protected:
  DatabaseTransaction() {
    for (int address = 1; address <= 3; ++address)
      base_.addVehicle(address, QStringLiteral("A"), QStringLiteral("alt"));
  }

  void rename(int address, const QVariant& name) {
    base_.run("UPDATE LOCO_DAT SET ST_SNAME = ? WHERE DC_ADR = ?", {name, address});
  }

  static QString namesIn(const Database& database) {
    QStringList names;
    database.read(QStringLiteral("SELECT ST_SNAME FROM LOCO_DAT ORDER BY DC_ADR"), {},
                  [&names](const QSqlQuery& row) { names << row.value(0).toString(); });
    return names.join(u' ');
  }
  /// As another program sees the file.
  QString onDisk() const { return namesIn(Database(base_.path())); }

  test::TestDatabase base_;
};

TEST_F(DatabaseTransaction, IsOnDiskWhenItReturns) {
  base_.open().transaction([this] {
    rename(1, QStringLiteral("neu"));
    rename(3, QStringLiteral("neu"));
  });
  EXPECT_EQ(onDisk(), "neu alt neu");
}

TEST_F(DatabaseTransaction, NobodyElseSeesAPartOfIt) {
  base_.open().transaction([this] {
    rename(1, QStringLiteral("neu"));
    EXPECT_EQ(namesIn(base_.open()), "neu alt alt") << "reading within it sees what was written";
    EXPECT_EQ(onDisk(), "alt alt alt");
  });
}

TEST_F(DatabaseTransaction, TakesEverythingBackWhenItsWorkThrows) {
  struct Left {};
  EXPECT_THROW(base_.open().transaction([this] {
    rename(1, QStringLiteral("neu"));
    throw Left();
  }),
               Left);
  EXPECT_EQ(namesIn(base_.open()), "alt alt alt");
  EXPECT_EQ(onDisk(), "alt alt alt");
}

TEST_F(DatabaseTransaction, TakesEverythingBackWhenAWriteFails) {
  EXPECT_THROW(base_.open().transaction([this] {
    rename(1, QStringLiteral("neu"));
    base_.run("UPDATE KEINE_TABELLE SET X = 1");
  }),
               StorageError);
  EXPECT_EQ(onDisk(), "alt alt alt");
}

TEST_F(DatabaseTransaction, TheNextOneGoesThroughAfterAFailure) {
  EXPECT_THROW(base_.open().transaction([] { throw std::runtime_error("weg"); }),
               std::runtime_error);
  base_.open().transaction([this] { rename(2, QStringLiteral("neu")); });
  EXPECT_EQ(onDisk(), "alt neu alt");
}

TEST_F(DatabaseTransaction, IsRefusedWhileAnotherProgramHoldsTheFile) {
  Database other(base_.path());
  bool ran = false;
  other.transaction([this, &ran] {
    try {
      base_.open().transaction([&ran] { ran = true; });
      ADD_FAILURE() << "two at once";
    } catch (const StorageError& error) {
      EXPECT_EQ(error.code(), storage_error::kLocked);
    }
  });
  EXPECT_FALSE(ran);
}

TEST_F(DatabaseTransaction, OneWithinAnotherIsAProgrammingErrorAndNothingIsKept) {
  EXPECT_THROW(base_.open().transaction([this] {
    rename(1, QStringLiteral("neu"));
    base_.open().transaction([] {});
  }),
               std::logic_error);
  EXPECT_EQ(onDisk(), "alt alt alt");
}

// More than the engine keeps in memory, so that a part of it is in the file before the end.
TEST_F(DatabaseTransaction, IsTakenBackThoughItOutgrewTheMemory) {
  const QVariantList values{QByteArray(8'000'000, 'x')};
  EXPECT_THROW(base_.open().transaction([&] {
    for (int i = 0; i < 3; ++i) base_.run("UPDATE LOCO_DAT SET MD_PIC = ?", values);
    EXPECT_EQ(namesIn(base_.open()), "alt alt alt") << "the file's lock does not shut us out";
    throw std::runtime_error("weg");
  }),
               std::runtime_error);
  int pictures = 0;
  base_.open().read(QStringLiteral("SELECT MD_PIC FROM LOCO_DAT WHERE MD_PIC IS NOT NULL"), {},
                    [&pictures](const QSqlQuery&) { ++pictures; });
  EXPECT_EQ(pictures, 0);
  EXPECT_TRUE(base_.open().integrityFaults().isEmpty());
}

TEST_F(DatabaseTransaction, ARecordThatIsStoredBesideItIsRefusedAndNotLostWithIt) {
  RecordSet beside;
  beside.open(base_.open(), QStringLiteral("SELECT * FROM LOCO_DAT WHERE DC_ADR = 2"));
  beside.Edit();
  beside.setValue(QStringLiteral("ST_SNAME"), QStringLiteral("neu"));
  EXPECT_THROW(base_.open().transaction([&] {
    try {
      beside.Update();
      ADD_FAILURE() << "it would be taken back with the transaction";
    } catch (const StorageError& error) {
      EXPECT_EQ(error.code(), storage_error::kBusy);
    }
    throw std::runtime_error("the import failed");
  }),
               std::runtime_error);
  EXPECT_EQ(beside.editMode(), EditMode::Edit);
  beside.Update();
  EXPECT_EQ(onDisk(), "alt neu alt");
}

TEST_F(DatabaseTransaction, WhatNobodyWaitsForIsDoneBehindItHoweverItEnds) {
  EXPECT_THROW(base_.open().transaction([&] {
    base_.open().whenFree([this] { rename(2, QStringLiteral("neu")); });
    rename(1, QStringLiteral("weg"));
    throw std::runtime_error("the import failed");
  }),
               std::runtime_error);
  EXPECT_EQ(onDisk(), "alt neu alt");
  base_.open().whenFree([this] { rename(3, QStringLiteral("neu")); });
  EXPECT_EQ(onDisk(), "alt neu neu");
}

}  // namespace
}  // namespace lokari
