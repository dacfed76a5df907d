#include "db/record_set.h"

#include <gtest/gtest.h>

#include "db/reference_lists.h"
#include "support/test_database.h"

namespace lokari {
namespace {

using namespace storage_error;

int codeOf(const std::function<void()>& operation) {
  try {
    operation();
  } catch (const StorageError& error) {
    EXPECT_FALSE(error.text().isEmpty());
    return error.code();
  }
  return 0;
}

class RecordSetTest : public ::testing::Test {
 protected:
  RecordSetTest() {
    base_.addVehicle(3, QStringLiteral("Anlage"), QStringLiteral("A3"));
    base_.addVehicle(5, QStringLiteral("Anlage"), QStringLiteral("A5"));
    base_.addVehicle(7, QStringLiteral("Anlage"), QStringLiteral("A7"));
    open();
  }

  void open() { set_.open(base_.open(), QString::fromUtf16(kDefaultQuery)); }
  QString name() const { return set_.text(QStringLiteral("ST_SNAME")); }
  void set(const char* column, const QVariant& value) {
    set_.setValue(QString::fromUtf8(column), value);
  }

  test::TestDatabase base_;
  RecordSet set_;
};

TEST_F(RecordSetTest, OpensAtTheFirstRecord) {
  EXPECT_EQ(set_.position(), 0);
  EXPECT_EQ(set_.count(), 3);
  EXPECT_EQ(set_.editMode(), EditMode::None);
  EXPECT_EQ(name(), QStringLiteral("A3"));
  EXPECT_FALSE(set_.BOF());
  EXPECT_FALSE(set_.EOF_());
}

TEST_F(RecordSetTest, MovesBeyondTheEndsHaveNoRecordAndThenFail) {
  set_.MoveLast();
  EXPECT_EQ(set_.position(), 2);
  set_.MoveNext();
  EXPECT_EQ(set_.position(), -1);
  EXPECT_TRUE(set_.EOF_());
  EXPECT_EQ(codeOf([this] { set_.MoveNext(); }), kNoRecord);
  EXPECT_EQ(codeOf([this] { name(); }), kNoRecord);
  set_.MovePrevious();
  EXPECT_EQ(name(), QStringLiteral("A7"));
  set_.MoveFirst();
  set_.MovePrevious();
  EXPECT_TRUE(set_.BOF());
  EXPECT_EQ(codeOf([this] { set_.MovePrevious(); }), kNoRecord);
  set_.MoveNext();
  EXPECT_EQ(name(), QStringLiteral("A3"));
}

TEST_F(RecordSetTest, AnEmptySetStandsAtBothEnds) {
  set_.open(base_.open(), QStringLiteral("SELECT * FROM LOCO_DAT WHERE DC_ADR = 99"));
  EXPECT_EQ(set_.position(), -1);
  EXPECT_TRUE(set_.BOF());
  EXPECT_TRUE(set_.EOF_());
  set_.MoveFirst();
  set_.MoveLast();
  EXPECT_EQ(set_.position(), -1);
  EXPECT_EQ(codeOf([this] { set_.MoveNext(); }), kNoRecord);
  EXPECT_EQ(codeOf([this] { set_.Edit(); }), kNoRecord);
  EXPECT_FALSE(set_.bookmark().has_value());
}

TEST_F(RecordSetTest, AnAddedRecordStandsAtTheEndUntilTheSetIsOpenedAgain) {
  set_.AddNew();
  EXPECT_EQ(set_.editMode(), EditMode::Add);
  EXPECT_EQ(set_.position(), 0);
  EXPECT_TRUE(set_.value(QStringLiteral("ST_SNAME")).isNull());
  set("DC_ADR", QStringLiteral("1"));
  set("DC_COLL", QStringLiteral("Anlage"));
  set("ST_SNAME", QStringLiteral("A1"));
  set_.Update();
  EXPECT_EQ(set_.editMode(), EditMode::None);
  EXPECT_EQ(set_.position(), 0);
  EXPECT_EQ(name(), QStringLiteral("A3"));
  set_.MoveLast();
  EXPECT_EQ(name(), QStringLiteral("A1"));
  open();
  EXPECT_EQ(name(), QStringLiteral("A1"));
}

TEST_F(RecordSetTest, AnEditIsStoredByUpdateAndDroppedByCancel) {
  set_.Edit();
  set("ST_SNAME", QStringLiteral("neu"));
  EXPECT_EQ(name(), QStringLiteral("neu"));
  set_.CancelUpdate();
  EXPECT_EQ(name(), QStringLiteral("A3"));
  set_.Edit();
  set("ST_SNAME", QStringLiteral("neu"));
  set_.Update();
  EXPECT_EQ(name(), QStringLiteral("neu"));
  EXPECT_EQ(codeOf([this] { set_.Update(); }), kNotEditing);
  EXPECT_EQ(codeOf([this] { set("ST_SNAME", QStringLiteral("x")); }), kNotEditing);
}

TEST_F(RecordSetTest, AMoveDropsTheEdit) {
  set_.Edit();
  set("ST_SNAME", QStringLiteral("neu"));
  set_.MoveNext();
  EXPECT_EQ(set_.editMode(), EditMode::None);
  set_.MoveFirst();
  EXPECT_EQ(name(), QStringLiteral("A3"));
}

TEST_F(RecordSetTest, OneAddressTwiceInACollectionIsRefusedWith3022AndTheEditGoesOn) {
  set_.Edit();
  set("DC_ADR", 5);
  EXPECT_EQ(codeOf([this] { set_.Update(); }), 3022);
  EXPECT_EQ(set_.editMode(), EditMode::Edit);
  set("DC_ADR", 6);
  set_.Update();
  EXPECT_EQ(set_.text(QStringLiteral("DC_ADR")), QStringLiteral("6"));
}

TEST_F(RecordSetTest, TheSameAddressInAnotherCollectionIsLegal) {
  set_.AddNew();
  set("DC_ADR", 3);
  set("DC_COLL", QStringLiteral("Vitrine"));
  set_.Update();
  EXPECT_EQ(set_.count(), 4);
}

TEST_F(RecordSetTest, TwoEmptyCollectionsWithOneAddressCollide) {
  for (const int expected : {0, 3022}) {
    set_.AddNew();
    set("DC_ADR", 3);
    set("DC_COLL", QStringLiteral(""));
    EXPECT_EQ(codeOf([this] { set_.Update(); }), expected);
  }
}

TEST_F(RecordSetTest, TwoNullCollectionsWithOneAddressAreLegal) {
  for (int i = 0; i < 2; ++i) {
    set_.AddNew();
    set("DC_ADR", 3);
    EXPECT_EQ(codeOf([this] { set_.Update(); }), 0);
  }
}

TEST_F(RecordSetTest, CollectionsThatDifferInCaseOnlyAreOneUmlautsIncluded) {
  base_.addVehicle(1, QStringLiteral("Gäste"), QStringLiteral("G1"));
  set_.AddNew();
  set("DC_ADR", 1);
  set("DC_COLL", QStringLiteral("GÄSTE"));
  EXPECT_EQ(codeOf([this] { set_.Update(); }), 3022);
}

TEST_F(RecordSetTest, AChangeBesideTheKeyIsStoredAlsoOfOneOfTwoThatAnotherProgramMade) {
  base_.addVehicle(1, QStringLiteral("Gäste"), QStringLiteral("G1"));
  base_.addVehicle(1, QStringLiteral("GÄSTE"), QStringLiteral("G2"));
  open();
  set_.FindFirst(QStringLiteral("ST_SNAME=\"G2\""));
  set_.Edit();
  set("FZ_CODE", QStringLiteral("103"));
  set_.Update();
  EXPECT_EQ(set_.text(QStringLiteral("FZ_CODE")), QStringLiteral("103"));
  set_.Edit();
  set("DC_ADR", 1);
  EXPECT_EQ(codeOf([this] { set_.Update(); }), 3022);
}

TEST_F(RecordSetTest, NullAndTheEmptyTextAreKeptApart) {
  set_.Edit();
  set("FZ_LNAME", QStringLiteral(""));
  set("FZ_CODE", QVariant());
  set("FZ_OPCODE", QString());
  set_.Update();
  EXPECT_FALSE(set_.value(QStringLiteral("FZ_LNAME")).isNull());
  EXPECT_EQ(set_.value(QStringLiteral("FZ_LNAME")).toString(), QString());
  EXPECT_TRUE(set_.value(QStringLiteral("FZ_CODE")).isNull());
  EXPECT_FALSE(set_.value(QStringLiteral("FZ_OPCODE")).isNull());
}

TEST_F(RecordSetTest, ColumnsTellTypeAndSize) {
  const TableInfo& table = set_.table();
  EXPECT_EQ(table.column(QStringLiteral("st_sname"))->type, ColumnType::Text);
  EXPECT_EQ(table.column(QStringLiteral("ST_SNAME"))->size, 6);
  EXPECT_EQ(table.column(QStringLiteral("DC_ADR"))->type, ColumnType::Integer);
  EXPECT_EQ(table.column(QStringLiteral("DC_RECNO"))->type, ColumnType::Long);
  EXPECT_EQ(table.column(QStringLiteral("MD_PRICE"))->type, ColumnType::Currency);
  EXPECT_EQ(table.column(QStringLiteral("DC_CV"))->type, ColumnType::Binary);
  EXPECT_EQ(table.column(QStringLiteral("NOSUCH")), nullptr);
}

TEST_F(RecordSetTest, ValuesThatAColumnCannotHoldAreRefused) {
  set_.Edit();
  EXPECT_EQ(codeOf([this] { set("ST_SNAME", QStringLiteral("1234567")); }), kTooLong);
  EXPECT_EQ(codeOf([this] { set("DC_ADR", QStringLiteral("x")); }), kNotNumeric);
  EXPECT_EQ(codeOf([this] { set("DC_ADR", QStringLiteral("40000")); }), kNotNumeric);
  EXPECT_EQ(codeOf([this] { set("NOSUCH", 1); }), kUnknownName);
  EXPECT_EQ(codeOf([this] { set("DC_ADR", QStringLiteral("10239")); }), 0);
}

TEST_F(RecordSetTest, AnAmountIsKeptToTheHundredthAndShownWithAComma) {
  set_.Edit();
  set("MD_PRICE", QStringLiteral("149,90"));
  set_.Update();
  EXPECT_EQ(set_.text(QStringLiteral("MD_PRICE")), QStringLiteral("149,90"));
  set_.Edit();
  set("MD_PRICE", QStringLiteral("1.234,05"));
  set_.Update();
  EXPECT_EQ(set_.text(QStringLiteral("MD_PRICE")), QStringLiteral("1234,05"));
  set_.Edit();
  set("MD_PRICE", QStringLiteral("150"));
  set_.Update();
  EXPECT_EQ(set_.text(QStringLiteral("MD_PRICE")), QStringLiteral("150,00"));
  set_.Edit();
  set("MD_PRICE", QStringLiteral("0,125"));
  set_.Update();
  EXPECT_EQ(set_.text(QStringLiteral("MD_PRICE")), QStringLiteral("0,125"));
}

TEST_F(RecordSetTest, DeleteLeavesTheSetBetweenTwoRecords) {
  set_.MoveNext();
  set_.Delete();
  EXPECT_EQ(set_.position(), -1);
  EXPECT_EQ(set_.count(), 2);
  set_.MoveNext();
  EXPECT_EQ(name(), QStringLiteral("A7"));
  set_.Delete();
  set_.MoveNext();
  EXPECT_TRUE(set_.EOF_());
  set_.MovePrevious();
  EXPECT_EQ(name(), QStringLiteral("A3"));
  set_.Delete();
  EXPECT_TRUE(set_.BOF());
  EXPECT_TRUE(set_.EOF_());
}

TEST_F(RecordSetTest, ADeleteThatTheStorageRefusesLeavesRecordAndEdit) {
  set_.Edit();
  set("FZ_CODE", QStringLiteral("neu"));
  base_.run("PRAGMA query_only = 1");
  EXPECT_EQ(codeOf([this] { set_.Delete(); }), kReadOnly);
  base_.run("PRAGMA query_only = 0");
  EXPECT_EQ(set_.position(), 0);
  EXPECT_EQ(set_.editMode(), EditMode::Edit);
  set_.Update();
  EXPECT_EQ(set_.text(QStringLiteral("FZ_CODE")), QStringLiteral("neu"));
}

TEST_F(RecordSetTest, MovePreviousAfterDeleteGoesToTheRecordAhead) {
  set_.MoveLast();
  set_.Delete();
  set_.MovePrevious();
  EXPECT_EQ(name(), QStringLiteral("A5"));
}

TEST_F(RecordSetTest, ABookmarkLeadsBackUntilItsRecordIsDeleted) {
  set_.MoveNext();
  const Bookmark kept = set_.bookmark();
  set_.MoveLast();
  set_.setBookmark(kept);
  EXPECT_EQ(name(), QStringLiteral("A5"));
  set_.Delete();
  EXPECT_EQ(codeOf([&] { set_.setBookmark(kept); }), kNoRecord);
}

TEST_F(RecordSetTest, FindFirstGoesToTheFirstMatchInTheOrderOfTheSet) {
  base_.addVehicle(1, QStringLiteral("Zoo"), QStringLiteral("A5"));
  set_.FindFirst(QStringLiteral("ST_SNAME=\"a5\""));
  EXPECT_FALSE(set_.NoMatch());
  EXPECT_EQ(set_.position(), 1);
  set_.FindFirst(QStringLiteral("ST_SNAME=\"none\""));
  EXPECT_TRUE(set_.NoMatch());
  EXPECT_EQ(set_.position(), 1);
  EXPECT_EQ(codeOf([this] { set_.FindFirst(QStringLiteral("nonsense")); }), kUnknownName);
  EXPECT_EQ(set_.position(), 1);
}

TEST_F(RecordSetTest, FindFirstStaysInsideAFilter) {
  set_.open(base_.open(), QStringLiteral("SELECT * FROM LOCO_DAT WHERE DC_ADR > 3"));
  set_.FindFirst(QStringLiteral("DC_ADR=3"));
  EXPECT_TRUE(set_.NoMatch());
}

TEST_F(RecordSetTest, ARefusedQueryLeavesTheOpenSet) {
  EXPECT_NE(codeOf([this] {
              set_.open(base_.open(), QStringLiteral("SELECT * FROM LOCO_DAT WHERE DC_ADR=*"));
            }),
            0);
  EXPECT_EQ(set_.count(), 3);
  EXPECT_EQ(name(), QStringLiteral("A3"));
}

TEST_F(RecordSetTest, TheRecordNumberIsAssignedAndNeverUsedAgain) {
  set_.MoveLast();
  const int last = set_.value(QStringLiteral("DC_RECNO")).toInt();
  set_.Delete();
  set_.AddNew();
  set("DC_ADR", 8);
  set_.Update();
  set_.MoveLast();
  EXPECT_EQ(set_.value(QStringLiteral("DC_RECNO")).toInt(), last + 1);
}

TEST_F(RecordSetTest, ARecordThatAnotherProgramDeletedIsReported) {
  base_.run("DELETE FROM LOCO_DAT WHERE DC_ADR = 5");
  set_.MoveNext();
  EXPECT_EQ(codeOf([this] { name(); }), kRecordDeleted);
  set_.Edit();
  set("FZ_CODE", QStringLiteral("x"));
  EXPECT_EQ(codeOf([this] { set_.Update(); }), kRecordDeleted);
}

TEST_F(RecordSetTest, OnlyColumnsThatWereSetAreWritten) {
  set_.Edit();
  set("FZ_CODE", QStringLiteral("x"));
  base_.run("UPDATE LOCO_DAT SET FZ_LNAME = 'fremd' WHERE DC_ADR = 3");
  set_.Update();
  EXPECT_EQ(set_.text(QStringLiteral("FZ_LNAME")), QStringLiteral("fremd"));
}

TEST_F(RecordSetTest, AFullDiskLeavesRecordAndEdit) {
  base_.run("PRAGMA max_page_count = 1");  // as large as it is now, and no larger
  set_.Edit();
  set("MD_PIC", QByteArray(100000, 'x'));
  EXPECT_EQ(codeOf([this] { set_.Update(); }), kDiskFull);
  EXPECT_EQ(set_.editMode(), EditMode::Edit);
  set_.CancelUpdate();
  EXPECT_TRUE(set_.value(QStringLiteral("MD_PIC")).isNull());
  EXPECT_TRUE(base_.open().integrityFaults().isEmpty());
}

TEST_F(RecordSetTest, TwentyThousandVehiclesAreFoundSortedAndStepped) {
  base_.run(
      "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 20000) "
      "INSERT INTO LOCO_DAT (DC_ADR, DC_COLL, ST_SNAME) "
      "SELECT i % 10000 + 1, CASE WHEN i > 10000 THEN 'B' ELSE 'A' END, 'L' FROM n");
  open();
  ASSERT_EQ(set_.count(), 20003);
  EXPECT_EQ(set_.text(QStringLiteral("DC_COLL")), QStringLiteral("A"));
  int last = 0;
  for (int i = 0; i < 10000; ++i) {
    const int address = set_.value(QStringLiteral("DC_ADR")).toInt();
    ASSERT_EQ(address, last + 1);
    last = address;
    set_.MoveNext();
  }
  set_.FindFirst(QStringLiteral("DC_COLL=\"B\" AND DC_ADR=10000"));
  EXPECT_EQ(set_.position(), 20002);
}

TEST_F(RecordSetTest, RenamingALineChangesNoVehicle) {
  set_.Edit();
  set("FZ_LINE", QStringLiteral("Bundesbahn"));
  set_.Update();
  RecordSet lines;
  lines.open(base_.open(), QStringLiteral("SELECT * FROM LINES"));
  lines.FindFirst(QStringLiteral("FZ_LINE = 'Bundesbahn'"));
  ASSERT_FALSE(lines.NoMatch());
  lines.Edit();
  lines.setValue(QStringLiteral("FZ_LINE"), QStringLiteral("Neubahn"));
  lines.Update();
  open();
  EXPECT_EQ(set_.text(QStringLiteral("FZ_LINE")), QStringLiteral("Bundesbahn"));
}

}  // namespace
}  // namespace lokari
