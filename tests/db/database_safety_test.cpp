// Other programs, full disks and crashes: the last record that was saved stays whole.
#include <gtest/gtest.h>

#include <QFileInfo>
#include <QSqlQuery>

#include <array>
#include <csignal>
#include <sqlite3.h>
#include <sys/wait.h>
#include <unistd.h>

#include "db/record_set.h"
#include "support/no_larger_files.h"
#include "support/test_database.h"

namespace lokari {
namespace {

QString str(const char* text) {
  return QString::fromUtf8(text);
}

// Another program that works on the file.
class OtherProgram {
 public:
  explicit OtherProgram(const QString& path) {
    EXPECT_EQ(sqlite3_open(path.toUtf8().constData(), &handle_), SQLITE_OK);
  }
  ~OtherProgram() { sqlite3_close(handle_); }
  OtherProgram(const OtherProgram&) = delete;
  OtherProgram& operator=(const OtherProgram&) = delete;

  void run(const char* statement) {
    EXPECT_EQ(sqlite3_exec(handle_, statement, nullptr, nullptr, nullptr), SQLITE_OK) << statement;
  }

 private:
  sqlite3* handle_ = nullptr;
};

int codeOfOpening(const QString& path) {
  try {
    const Database database(path);
  } catch (const StorageError& error) {
    return error.code();
  }
  return 0;
}

// One change of a vehicle: everything in it carries the same number.
void storeNumber(RecordSet& set, int number) {
  set.Edit();
  set.setValue(str("FZ_LNAME"), QString::number(number));
  set.setValue(str("FZ_MAXSPEED"), number % 1000);
  set.setValue(str("DC_CV"), QByteArray(4865, static_cast<char>(number % 100)));
  set.setValue(str("MD_PIC"), QByteArray(200000, static_cast<char>(number % 100)));
  set.Update();
}

// The number of a vehicle whose columns must all tell the same.
int wholeNumber(const QString& path) {
  Database database(path);
  EXPECT_TRUE(database.integrityFaults().isEmpty());
  RecordSet set;
  set.open(database, str("SELECT * FROM LOCO_DAT"));
  const int number = set.value(str("FZ_LNAME")).toInt();
  EXPECT_EQ(set.value(str("FZ_MAXSPEED")).toInt(), number % 1000);
  EXPECT_EQ(set.value(str("DC_CV")).toByteArray(),
            QByteArray(4865, static_cast<char>(number % 100)));
  EXPECT_EQ(set.value(str("MD_PIC")).toByteArray(),
            QByteArray(200000, static_cast<char>(number % 100)));
  return number;
}

class DatabaseSafety : public ::testing::Test {
 protected:
  DatabaseSafety() {
    base_.addVehicle(3, QStringLiteral("A"), QStringLiteral("x"));
    RecordSet set;
    set.open(base_.open(), str("SELECT * FROM LOCO_DAT"));
    storeNumber(set, 1);
    base_.close();
  }

  test::TestDatabase base_;
};

TEST_F(DatabaseSafety, AFileThatAnotherProgramHoldsIsNotOpened) {
  OtherProgram other(base_.path());
  other.run("BEGIN EXCLUSIVE");
  EXPECT_EQ(codeOfOpening(base_.path()), storage_error::kLocked);
  other.run("ROLLBACK");
  EXPECT_EQ(codeOfOpening(base_.path()), 0);
}

TEST_F(DatabaseSafety, AChangeDuringAnotherProgramsWriteIsRefusedAndCanBeRepeated) {
  RecordSet set;
  set.open(base_.open(), str("SELECT * FROM LOCO_DAT"));
  OtherProgram other(base_.path());
  other.run("BEGIN IMMEDIATE");
  set.Edit();
  set.setValue(str("FZ_CODE"), str("neu"));
  try {
    set.Update();
    ADD_FAILURE() << "stored in spite of the lock";
  } catch (const StorageError& error) {
    EXPECT_EQ(error.code(), storage_error::kLocked);
  }
  EXPECT_EQ(set.editMode(), EditMode::Edit);
  other.run("ROLLBACK");
  set.Update();
  EXPECT_EQ(set.text(str("FZ_CODE")), str("neu"));
}

TEST_F(DatabaseSafety, AnInterruptedWriteIsTakenBackAtTheNextOpening) {
  const QString copy = base_.folder() + str("/CRASH.MDB");
  {
    OtherProgram other(base_.path());
    // With next to no cache the half-done change reaches the file.
    other.run("PRAGMA cache_size = 1; PRAGMA cache_spill = 1; BEGIN IMMEDIATE");
    other.run(
        "UPDATE LOCO_DAT SET FZ_LNAME = '2', FZ_MAXSPEED = 2, DC_CV = zeroblob(4865), "
        "MD_PIC = zeroblob(200000)");
    ASSERT_TRUE(QFile::copy(base_.path(), copy));
    ASSERT_TRUE(QFile::copy(base_.path() + str("-journal"), copy + str("-journal")));
    other.run("ROLLBACK");
  }
  QFile half(copy);
  QFile whole(base_.path());
  ASSERT_TRUE(half.open(QIODevice::ReadOnly) && whole.open(QIODevice::ReadOnly));
  EXPECT_NE(half.readAll(), whole.readAll());
  EXPECT_EQ(wholeNumber(copy), 1);
}

TEST_F(DatabaseSafety, AKillAtAnyMomentLeavesARecordWhole) {
  int last = 1;
  for (int round = 0; round < 15; ++round) {
    std::array<int, 2> ends{};
    ASSERT_EQ(pipe(ends.data()), 0);
    const pid_t child = fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
      // Stores one change after the other and tells of each, until it is killed.
      Database database(base_.path());
      RecordSet set;
      set.open(database, str("SELECT * FROM LOCO_DAT"));
      for (int number = last + 1;; ++number) {
        storeNumber(set, number);
        if (write(ends[1], "x", 1) != 1) _exit(1);
      }
    }
    close(ends[1]);
    int told = 0;
    char byte = 0;
    while (told <= round % 4 && read(ends[0], &byte, 1) == 1) ++told;
    kill(child, SIGKILL);
    waitpid(child, nullptr, 0);
    while (read(ends[0], &byte, 1) == 1) ++told;
    close(ends[0]);
    ASSERT_GT(told, 0);
    const int number = wholeNumber(base_.path());
    // What was told to be stored is there; one more may have been.
    EXPECT_GE(number, last + told);
    EXPECT_LE(number, last + told + 1);
    last = number;
  }
}

TEST_F(DatabaseSafety, AMediumThatFailsLeavesRecordAndEdit) {
  RecordSet set;
  set.open(base_.open(), str("SELECT * FROM LOCO_DAT"));
  set.Edit();
  set.setValue(str("MD_PIC"), QByteArray(1000000, 'x'));
  {
    const test::NoLargerFiles limit(QFileInfo(base_.path()).size());
    try {
      set.Update();
      ADD_FAILURE() << "stored without a medium";
    } catch (const StorageError& error) {
      EXPECT_EQ(error.code(), storage_error::kMediumFailed);
      EXPECT_EQ(error.text(),
                str("Die Datenbankdatei kann nicht gelesen oder geschrieben werden."));
    }
    EXPECT_EQ(set.editMode(), EditMode::Edit);
  }
  EXPECT_EQ(wholeNumber(base_.path()), 1);
  set.Update();
  EXPECT_EQ(set.value(str("MD_PIC")).toByteArray(), QByteArray(1000000, 'x'));
}

TEST_F(DatabaseSafety, TheFileIsReadableWithoutThisProgram) {
  OtherProgram plain(base_.path());
  plain.run("SELECT * FROM LOCO_DAT ORDER BY DC_COLL, DC_ADR");
  plain.run("UPDATE LOCO_DAT SET DC_COLL = 'B', FZ_LNAME = '1'");
  plain.run("REINDEX");
  EXPECT_EQ(wholeNumber(base_.path()), 1);
}

TEST_F(DatabaseSafety, TheReadingConnectionCannotWrite) {
  EXPECT_THROW(base_.open().read(str("DELETE FROM LOCO_DAT"), {}, [](const QSqlQuery&) {}),
               StorageError);
  EXPECT_EQ(wholeNumber(base_.path()), 1);
}

TEST_F(DatabaseSafety, TwoStatementsAtOnceAreRefused) {
  EXPECT_THROW(base_.open().read(str("SELECT 1; SELECT 2"), {}, [](const QSqlQuery&) {}),
               StorageError);
}

TEST_F(DatabaseSafety, AProtectedFileIsReadAndNotWritten) {
  RecordSet set;
  // As the engine sees a medium without room for a journal.
  base_.run("PRAGMA query_only = 1");
  set.open(base_.open(), str("SELECT * FROM LOCO_DAT"));
  EXPECT_EQ(set.text(str("ST_SNAME")), str("x"));
  set.Edit();
  set.setValue(str("FZ_CODE"), str("neu"));
  try {
    set.Update();
    ADD_FAILURE() << "stored in spite of the protection";
  } catch (const StorageError& error) {
    EXPECT_EQ(error.code(), storage_error::kReadOnly);
  }
}

}  // namespace
}  // namespace lokari
