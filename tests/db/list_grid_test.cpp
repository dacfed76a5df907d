// The grid itself: one edit at a time, stored when its row is left, and views that keep their
// place.
#include "db/list_grid.h"

#include "db/reference_list_rules.h"
#include "db/reference_lists.h"
#include "list_grid_fixture.h"

namespace lokari {
namespace {

constexpr int kSeq = ReferenceListRules::kSequence;
constexpr int kText = ReferenceListRules::kText;

class ListGridTest : public test::ListGridFixture {
 protected:
  void SetUp() override {
    base_.run("INSERT INTO ERAS VALUES (1, 'I'), (2, 'II'), (3, 'III')");
    const ReferenceList& list = *referenceListOf(str("fz_era"));
    show(std::make_unique<ReferenceListRules>(list, prompt_), QString::fromUtf16(list.query));
  }
  QString mark(int row) const { return grid_->headerData(row, Qt::Vertical).toString(); }
};

TEST_F(ListGridTest, EndsWithAnEmptyRowThatIsMarked) {
  EXPECT_EQ(grid_->rowCount(), 4);
  EXPECT_EQ(grid_->blankRow(), 3);
  EXPECT_EQ(mark(3), str("*"));
  EXPECT_EQ(mark(0), QString());
}

TEST_F(ListGridTest, TypingIntoTheEmptyRowOpensAnotherBelow) {
  ASSERT_TRUE(typeNew(kText, "IV"));
  EXPECT_EQ(grid_->rowCount(), 5);
  EXPECT_EQ(grid_->editedRow(), 3);
  EXPECT_EQ(mark(3), str("✎"));
  EXPECT_EQ(mark(4), str("*"));
}

TEST_F(ListGridTest, AnEditIsStoredWhenAnotherRowIsEdited) {
  ASSERT_TRUE(type(0, kText, "Ia"));
  EXPECT_EQ(stored("SELECT FZ_ERA FROM ERAS WHERE FZ_ERA_SEQ = 1"), str("I"));
  ASSERT_TRUE(type(1, kText, "IIa"));
  EXPECT_EQ(stored("SELECT FZ_ERA FROM ERAS WHERE FZ_ERA_SEQ = 1"), str("Ia"));
  EXPECT_EQ(grid_->editedRow(), 1);
}

TEST_F(ListGridTest, TheSecondEditGoesToItsRowThoughTheFirstMovedIt) {
  ASSERT_TRUE(type(0, kSeq, "9"));
  ASSERT_TRUE(type(1, kText, "IIa")) << "the row is the first one by now";
  ASSERT_TRUE(grid_->storeRow());
  EXPECT_EQ(column(kText), str("IIa III I"));
}

TEST_F(ListGridTest, GivingUpBringsTheStoredRowBack) {
  ASSERT_TRUE(type(0, kText, "x"));
  ASSERT_TRUE(type(0, kSeq, "9"));
  grid_->revertRow();
  EXPECT_EQ(cell(0, kText), str("I"));
  EXPECT_EQ(cell(0, kSeq), str("1"));
  EXPECT_EQ(grid_->editedRow(), -1);
  ASSERT_TRUE(grid_->storeRow());
  EXPECT_EQ(stored("SELECT FZ_ERA FROM ERAS ORDER BY FZ_ERA_SEQ"), str("I II III"));
}

TEST_F(ListGridTest, GivingUpShowsWhatAnotherProgramMadeOfTheRow) {
  ASSERT_TRUE(type(0, kText, "meine"));
  base_.run("UPDATE ERAS SET FZ_ERA = 'fremd' WHERE FZ_ERA_SEQ = 1");
  grid_->revertRow();
  EXPECT_EQ(cell(0, kText), str("fremd"));
}

TEST_F(ListGridTest, AFieldThatOnlyTheOtherProgramChangedIsNotToldAsMine) {
  ASSERT_TRUE(type(0, kText, "meine"));
  base_.run("UPDATE ERAS SET FZ_ERA = 'fremd', FZ_ERA_SEQ = 9 WHERE FZ_ERA_SEQ = 1");
  EXPECT_FALSE(grid_->storeRow());
  EXPECT_TRUE(prompt_.below.last().contains(str(": nur dort geändert (jetzt \"9\")")))
      << qPrintable(prompt_.below.last());
  EXPECT_TRUE(prompt_.below.last().contains(str("Epoche: dort \"fremd\", hier \"meine\"")));
}

TEST_F(ListGridTest, GivingUpANewRowRemovesIt) {
  ASSERT_TRUE(typeNew(kText, "IV"));
  grid_->revertRow();
  EXPECT_EQ(grid_->rowCount(), 4);
  EXPECT_EQ(grid_->editedRow(), -1);
  EXPECT_EQ(mark(3), str("*"));
}

TEST_F(ListGridTest, AChangeThatIsTakenBackIsNoEdit) {
  ASSERT_TRUE(type(0, kText, "x"));
  ASSERT_TRUE(type(0, kText, "I"));
  EXPECT_EQ(grid_->editedRow(), -1);
}

TEST_F(ListGridTest, TheTextThatStandsThereIsNoEdit) {
  EXPECT_TRUE(type(0, kText, "I"));
  EXPECT_TRUE(typeNew(kText, ""));
  EXPECT_EQ(grid_->editedRow(), -1);
  EXPECT_EQ(grid_->rowCount(), 4);
}

TEST_F(ListGridTest, DeletingTheEmptyRowDoesNothing) {
  EXPECT_FALSE(grid_->deleteRow(3));
  EXPECT_FALSE(grid_->deleteRow(-1));
  EXPECT_EQ(grid_->rowCount(), 4);
}

TEST_F(ListGridTest, DeletingARowThatIsOnlyBegunGivesItUp) {
  ASSERT_TRUE(typeNew(kText, "IV"));
  EXPECT_TRUE(grid_->deleteRow(3));
  EXPECT_EQ(grid_->rowCount(), 4);
  EXPECT_EQ(stored("SELECT COUNT(*) FROM ERAS"), str("3"));
}

TEST_F(ListGridTest, DeletingARowStoresTheEditOfAnotherFirst) {
  ASSERT_TRUE(type(0, kSeq, "9"));
  prompt_.answers = {Answer::Yes};
  EXPECT_TRUE(grid_->deleteRow(1));
  EXPECT_EQ(column(kText), str("III I")) << "the row that was pointed at, wherever it went";
}

TEST_F(ListGridTest, ARowKeepsItsPlaceInViewsWhenTheOrderChanges) {
  const QPersistentModelIndex first(grid_->index(0, kText));
  const QPersistentModelIndex second(grid_->index(1, kText));
  ASSERT_TRUE(type(0, kSeq, "9"));
  ASSERT_TRUE(grid_->storeRow());
  EXPECT_EQ(first.row(), 2);
  EXPECT_EQ(first.data().toString(), str("I"));
  EXPECT_EQ(second.row(), 0);
}

TEST_F(ListGridTest, WhatTheStorageRefusesStaysInItsEdit) {
  base_.run("CREATE TRIGGER no BEFORE UPDATE ON ERAS BEGIN SELECT RAISE(ABORT, 'gesperrt'); END");
  ASSERT_TRUE(type(0, kText, "x"));
  EXPECT_FALSE(grid_->storeRow());
  EXPECT_TRUE(message().contains(str("gesperrt")));
  EXPECT_EQ(grid_->editedRow(), 0);
  EXPECT_EQ(cell(0, kText), str("x"));
  EXPECT_FALSE(type(1, kText, "y")) << "another row cannot be edited before";
  EXPECT_TRUE(message().contains(str("gesperrt")));
  base_.run("DROP TRIGGER no");
  EXPECT_TRUE(grid_->storeRow());
  EXPECT_EQ(stored("SELECT FZ_ERA FROM ERAS WHERE FZ_ERA_SEQ = 1"), str("x"));
}

TEST_F(ListGridTest, ARowThatAnotherProgramDeletedIsToldAndCanBeGivenUp) {
  ASSERT_TRUE(type(0, kText, "x"));
  base_.run("DELETE FROM ERAS WHERE FZ_ERA_SEQ = 1");
  EXPECT_FALSE(grid_->storeRow());
  EXPECT_EQ(message(), str("Der Datensatz wurde gelöscht."));
  grid_->revertRow();
  EXPECT_TRUE(grid_->storeRow());
}

TEST_F(ListGridTest, ACellThatSomebodyElseChangedIsNotOverwrittenUnasked) {
  ASSERT_TRUE(type(0, kText, "meine"));
  base_.run("UPDATE ERAS SET FZ_ERA = 'fremd' WHERE FZ_ERA_SEQ = 1");
  EXPECT_FALSE(grid_->storeRow()) << "the safe answer goes on editing";
  ASSERT_EQ(prompt_.asked.size(), 1);
  EXPECT_EQ(prompt_.below[0], str("Epoche: dort \"fremd\", hier \"meine\""));
  EXPECT_EQ(stored("SELECT FZ_ERA FROM ERAS WHERE FZ_ERA_SEQ = 1"), str("fremd"));
  prompt_.choices = {0};
  EXPECT_TRUE(grid_->storeRow());
  EXPECT_EQ(stored("SELECT FZ_ERA FROM ERAS WHERE FZ_ERA_SEQ = 1"), str("meine"));
}

TEST_F(ListGridTest, TheOthersCellsStayWhereOnlyMineIsStored) {
  ASSERT_TRUE(type(0, kText, "meine"));
  base_.run("UPDATE ERAS SET FZ_ERA_SEQ = 9 WHERE FZ_ERA_SEQ = 1");
  prompt_.choices = {0};
  EXPECT_TRUE(grid_->storeRow());
  EXPECT_EQ(stored("SELECT FZ_ERA FROM ERAS WHERE FZ_ERA_SEQ = 9"), str("meine"));
  EXPECT_EQ(column(kText), str("II III meine")) << "at the place that its number gives it";
}

TEST_F(ListGridTest, TheirsIsTakenAndShown) {
  ASSERT_TRUE(type(0, kText, "meine"));
  base_.run("UPDATE ERAS SET FZ_ERA = 'fremd' WHERE FZ_ERA_SEQ = 1");
  prompt_.choices = {1};
  EXPECT_TRUE(grid_->storeRow());
  EXPECT_EQ(cell(0, kText), str("fremd"));
  EXPECT_EQ(stored("SELECT FZ_ERA FROM ERAS WHERE FZ_ERA_SEQ = 1"), str("fremd"));
  EXPECT_EQ(grid_->editedRow(), -1);
}

TEST_F(ListGridTest, ARowThatIsNotTheOneOnShowAnyMoreIsNotDeleted) {
  base_.run("UPDATE ERAS SET FZ_ERA = 'fremd' WHERE FZ_ERA_SEQ = 1");
  EXPECT_FALSE(grid_->deleteRow(0));
  EXPECT_EQ(message(), str("Die Zeile wurde inzwischen von einem anderen Programm geändert."));
  EXPECT_EQ(cell(0, kText), str("fremd"));
  prompt_.answers = {Answer::Yes};
  EXPECT_TRUE(grid_->deleteRow(0)) << "now that it is on show";
  EXPECT_EQ(stored("SELECT COUNT(*) FROM ERAS"), str("2"));
}

TEST_F(ListGridTest, AQueryThatFailsLeavesTheGridAsItWas) {
  EXPECT_THROW(grid_->open(str("SELECT * FROM NICHTS")), StorageError);
  EXPECT_EQ(column(kText), str("I II III"));
}

}  // namespace
}  // namespace lokari
