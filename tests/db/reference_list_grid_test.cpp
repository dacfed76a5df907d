// The five reference lists in their grid: adding, changing, deleting, and what becomes of the
// numbers that order them.
#include "db/reference_list_rules.h"
#include "db/reference_lists.h"
#include "list_grid_fixture.h"

namespace lokari {
namespace {

constexpr int kSeq = ReferenceListRules::kSequence;
constexpr int kText = ReferenceListRules::kText;

class ReferenceListGridTest : public test::ListGridFixture {
 protected:
  void SetUp() override {
    base_.run("INSERT INTO LINES VALUES (2, 'ÖBB'), (1, 'DB'), (NULL, 'SBB'), (NULL, 'BLS')");
    show(str("fz_line"));
  }
  void show(const QString& control) {
    const ReferenceList& list = *referenceListOf(control);
    ListGridFixture::show(std::make_unique<ReferenceListRules>(list, prompt_),
                          QString::fromUtf16(list.query));
  }
  QString sequenceOf(const char* line) {
    return stored(QByteArray("SELECT FZ_LINE_SEQ FROM LINES WHERE FZ_LINE = '")
                      .append(line)
                      .append("'")
                      .constData());
  }
};

TEST_F(ReferenceListGridTest, NumberedRowsStandAheadOfTheOthersWhichComeByName) {
  EXPECT_EQ(column(kText), str("DB ÖBB BLS SBB"));
  EXPECT_EQ(column(kSeq), str("1 2  "));
  EXPECT_EQ(cell(grid_->blankRow(), kText), QString());
}

TEST_F(ReferenceListGridTest, EveryListHasItsColumns) {
  for (const ReferenceList& list : referenceLists()) {
    show(QString::fromUtf16(list.control));
    ASSERT_EQ(grid_->columnCount(), 2);
    EXPECT_EQ(grid_->headerData(0, Qt::Horizontal).toString(), str("Seq."));
    EXPECT_EQ(grid_->headerData(1, Qt::Horizontal).toString(), QString::fromUtf16(list.caption));
    EXPECT_TRUE(typeNew(kText, "Neu"));
    EXPECT_TRUE(grid_->storeRow());
    EXPECT_TRUE(readReferenceList(base_.open(), list).contains(str("Neu")))
        << QString::fromUtf16(list.table).toStdString();
  }
}

TEST_F(ReferenceListGridTest, ANewRowWithANameAloneHasANullSequenceAndStandsBehindTheNumbered) {
  ASSERT_TRUE(typeNew(kText, "Alpha"));
  EXPECT_EQ(stored("SELECT COUNT(*) FROM LINES"), str("4")) << "nothing before the row is left";
  ASSERT_TRUE(grid_->storeRow());
  EXPECT_EQ(sequenceOf("Alpha"), str("Null"));
  EXPECT_EQ(column(kText), str("DB ÖBB Alpha BLS SBB"));
  EXPECT_TRUE(isQuiet());
}

TEST_F(ReferenceListGridTest, ANewRowWithANumberStandsAtItsNumber) {
  ASSERT_TRUE(typeNew(kSeq, "1"));
  ASSERT_TRUE(type(grid_->editedRow(), kText, "Alpha"));
  ASSERT_TRUE(grid_->storeRow());
  EXPECT_EQ(sequenceOf("Alpha"), str("1"));
  EXPECT_EQ(column(kText), str("Alpha DB ÖBB BLS SBB"));
}

TEST_F(ReferenceListGridTest, TheSequence0IsANumberToo) {
  ASSERT_TRUE(type(3, kSeq, "0"));
  ASSERT_TRUE(grid_->storeRow());
  EXPECT_EQ(sequenceOf("SBB"), str("0"));
  EXPECT_EQ(column(kText), str("SBB DB ÖBB BLS"));
}

TEST_F(ReferenceListGridTest, AnEmptiedSequenceIsNull) {
  ASSERT_TRUE(type(0, kSeq, ""));
  ASSERT_TRUE(grid_->storeRow());
  EXPECT_EQ(sequenceOf("DB"), str("Null"));
  EXPECT_EQ(column(kText), str("ÖBB BLS DB SBB"));
}

TEST_F(ReferenceListGridTest, AnEmptyRowIsNotSaved) {
  EXPECT_TRUE(grid_->storeRow());
  ASSERT_TRUE(typeNew(kText, "Alpha"));
  ASSERT_TRUE(type(grid_->editedRow(), kText, ""));
  EXPECT_TRUE(grid_->storeRow());
  ASSERT_TRUE(typeNew(kSeq, "7"));
  EXPECT_TRUE(grid_->storeRow()) << "a number alone is no entry";
  ASSERT_TRUE(typeNew(kText, "   "));
  EXPECT_TRUE(grid_->storeRow());
  EXPECT_EQ(stored("SELECT COUNT(*) FROM LINES"), str("4"));
  EXPECT_EQ(grid_->rowCount(), 5);
  EXPECT_TRUE(isQuiet());
}

TEST_F(ReferenceListGridTest, AStoredEntryCannotBeEmptied) {
  EXPECT_FALSE(type(0, kText, ""));
  EXPECT_EQ(message(), str("Ein leerer Eintrag wird nicht gespeichert.\n"
                           "Mit Entf wird die Zeile gelöscht."));
  EXPECT_EQ(cell(0, kText), str("DB"));
  EXPECT_EQ(grid_->editedRow(), -1);
}

TEST_F(ReferenceListGridTest, AnEmptyEntryOfAForeignDatabaseMayGetANumberAndAName) {
  base_.run("INSERT INTO LINES VALUES (0, NULL)");
  show(str("fz_line"));
  ASSERT_TRUE(type(0, kSeq, "7"));
  ASSERT_TRUE(grid_->storeRow());
  EXPECT_EQ(stored("SELECT FZ_LINE_SEQ FROM LINES WHERE FZ_LINE IS NULL"), str("7"));
  ASSERT_TRUE(type(2, kText, "KBS"));
  ASSERT_TRUE(grid_->storeRow());
  EXPECT_EQ(sequenceOf("KBS"), str("7"));
}

TEST_F(ReferenceListGridTest, ARenamedEntryDoesNotReachTheVehicles) {
  base_.run("INSERT INTO LOCO_DAT (DC_ADR, DC_COLL, FZ_LINE) VALUES (3, '', 'DB')");
  ASSERT_TRUE(type(0, kText, "DB AG"));
  ASSERT_TRUE(grid_->storeRow());
  EXPECT_EQ(sequenceOf("DB AG"), str("1"));
  EXPECT_EQ(stored("SELECT FZ_LINE FROM LOCO_DAT"), str("DB"));
}

TEST_F(ReferenceListGridTest, AnEntryIsDeletedAfterAYesOnly) {
  EXPECT_FALSE(grid_->deleteRow(0));
  EXPECT_EQ(column(kText), str("DB ÖBB BLS SBB"));
  EXPECT_EQ(message(), str("„DB“ aus der Liste löschen?"));
}

TEST_F(ReferenceListGridTest, AnEntryThatVehiclesUseIsDeletedLikeAnyOther) {
  base_.run("INSERT INTO LOCO_DAT (DC_ADR, DC_COLL, FZ_LINE) VALUES (3, '', 'DB')");
  prompt_.answers = {Answer::Yes};
  EXPECT_TRUE(grid_->deleteRow(0));
  EXPECT_EQ(column(kText), str("ÖBB BLS SBB"));
  EXPECT_EQ(stored("SELECT COUNT(*) FROM LINES"), str("3"));
  EXPECT_EQ(stored("SELECT FZ_LINE FROM LOCO_DAT"), str("DB"));
}

TEST_F(ReferenceListGridTest, EqualEntriesAreAllowedAndOnlyOneOfThemIsDeleted) {
  ASSERT_TRUE(typeNew(kText, "SBB"));
  ASSERT_TRUE(grid_->storeRow());
  EXPECT_EQ(column(kText), str("DB ÖBB BLS SBB SBB"));
  prompt_.answers = {Answer::Yes};
  EXPECT_TRUE(grid_->deleteRow(4));
  EXPECT_EQ(stored("SELECT FZ_LINE FROM LINES WHERE FZ_LINE = 'SBB'"), str("SBB"));
}

TEST_F(ReferenceListGridTest, TheSequenceTakesNumbersOnly) {
  EXPECT_FALSE(type(0, kSeq, "eins"));
  EXPECT_EQ(message(), str("Numerische Eingabe erforderlich!"));
  EXPECT_FALSE(type(0, kSeq, "40000"));
  EXPECT_EQ(message(), str("\"40000\" ist kein gültiger Wert für das Feld FZ_LINE_SEQ."));
  EXPECT_EQ(cell(0, kSeq), str("1"));
}

TEST_F(ReferenceListGridTest, AnEntryIsNotLongerThanItsColumn) {
  const QByteArray longest(50, 'x');
  EXPECT_FALSE(type(0, kText, (longest + "x").constData()));
  EXPECT_EQ(message(), str("Maximale Eingabelänge überschritten!"));
  EXPECT_TRUE(type(0, kText, longest.constData()));
}

TEST_F(ReferenceListGridTest, AQuoteIsATextLikeAnyOther) {
  ASSERT_TRUE(typeNew(kText, "O'Brien \"Bahn\"; DROP TABLE LINES --"));
  ASSERT_TRUE(grid_->storeRow());
  EXPECT_EQ(stored("SELECT COUNT(*) FROM LINES WHERE FZ_LINE LIKE 'O''Brien \"Bahn\"; DROP%'"),
            str("1"));
}

}  // namespace
}  // namespace lokari
