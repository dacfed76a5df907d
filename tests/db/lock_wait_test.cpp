#include "db/lock_wait.h"

#include <gtest/gtest.h>

#include <QSqlQuery>

#include "db/database.h"
#include "support/test_database.h"

namespace lokari {
namespace {

class LockWaitTest : public ::testing::Test {
 protected:
  LockWaitTest() { base.close(); }

  void hold() { other.write(QStringLiteral("BEGIN IMMEDIATE"), {}); }
  void release() { other.write(QStringLiteral("COMMIT"), {}); }
  int patience() {
    int ms = -1;
    database.read(QStringLiteral("PRAGMA busy_timeout"), {},
                  [&](const QSqlQuery& row) { ms = row.value(0).toInt(); });
    return ms;
  }
  void change() { database.write(QStringLiteral("DELETE FROM LOCO_DAT"), {}); }

  test::TestDatabase base;
  Database other{base.path()};
  Database database{base.path()};
};

TEST_F(LockWaitTest, AFileThatIsFreeIsNotWaitedFor) {
  whileLocked(
      database,
      [](const QString&, const std::function<bool()>&) {
        ADD_FAILURE();
        return false;
      },
      [this] { change(); });
}

TEST_F(LockWaitTest, AHeldFileIsAskedForWithoutHoldingAnythingUpUntilItIsFree) {
  hold();
  int before = patience();
  int asked = 0;
  whileLocked(
      database,
      [&](const QString& fault, const std::function<bool()>& done) {
        EXPECT_FALSE(fault.isEmpty());
        EXPECT_EQ(patience(), 0) << "windows live on";
        EXPECT_FALSE(done());
        release();
        return done();
      },
      [&] {
        ++asked;
        change();
      });
  EXPECT_EQ(asked, 3);
  EXPECT_EQ(patience(), before);
}

TEST_F(LockWaitTest, WhoGivesUpLearnsThatItIsHeld) {
  hold();
  const auto giveUp = [](const QString&, const std::function<bool()>&) { return false; };
  try {
    whileLocked(database, giveUp, [this] { change(); });
    ADD_FAILURE();
  } catch (const StorageError& error) {
    EXPECT_EQ(error.code(), storage_error::kLocked);
  }
  EXPECT_EQ(patience(), kLockPatience);
  release();
}

TEST_F(LockWaitTest, AnotherFaultEndsTheWait) {
  hold();
  bool fails = false;
  const auto wait = [&](const QString&, const std::function<bool()>& done) {
    release();
    fails = true;
    return done();
  };
  const auto work = [&] {
    if (fails) throw recordDeleted();
    change();
  };
  EXPECT_THROW(whileLocked(database, wait, work), StorageError);
  EXPECT_EQ(patience(), kLockPatience);
}

TEST_F(LockWaitTest, OneWaitAtATimeTheOuterOneAsksAgain) {
  hold();
  int boxes = 0;
  const auto inner = [&](const QString&, const std::function<bool()>&) {
    ++boxes;
    return false;
  };
  whileLocked(
      database,
      [&](const QString&, const std::function<bool()>& done) {
        EXPECT_THROW(whileLocked(database, inner, [this] { change(); }), StorageError);
        EXPECT_EQ(patience(), 0) << "the windows of the outer one live on";
        release();
        return done();
      },
      [this] { change(); });
  EXPECT_EQ(boxes, 0);
}

}  // namespace
}  // namespace lokari
