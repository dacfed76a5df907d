// The vehicle list: where it stands, how it is sorted and looked through, what it hands back.
#include "db/ui/dlg_table.h"

#include <QApplication>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QTableView>
#include <QTest>

#include <optional>

#include "base/ui/window_scale.h"
#include "tests/db/form_fixture.h"

namespace lokari {
namespace {

class DlgTableTest : public test::FormFixture {
 protected:
  /// Opens the list the way the button does.
  void openList() {
    ASSERT_TRUE(form_.prepareList());
    dialog_.emplace(form_, scale_, nullptr);
    dialog_->show();
    QApplication::processEvents();
  }
  template <typename T>
  T* child(const char* name) {
    T* found = dialog_->findChild<T*>(str(name));
    EXPECT_NE(found, nullptr) << name;
    return found;
  }
  QTableView* grid() { return child<QTableView>("DBGrid1"); }
  QString cell(int row, int column) {
    return grid()->model()->index(row, column).data().toString();
  }
  QString current() { return cell(grid()->currentIndex().row(), 2); }
  QString names() {
    QStringList names;
    for (int row = 0; row < grid()->model()->rowCount(); ++row) names << cell(row, 2);
    return names.join(u' ');
  }
  void clickHeader(int column) {
    const QHeaderView* header = grid()->horizontalHeader();
    QTest::mouseClick(header->viewport(), Qt::LeftButton, {},
                      {header->sectionViewportPosition(column) + 12, header->height() / 2});
  }
  QPoint middleOf(int row) { return grid()->visualRect(grid()->model()->index(row, 2)).center(); }
  void close() {
    dialog_.reset();
    form_.takeFromList();
  }

  WindowScale scale_{base_.folder() + str("/WINDOW.INI")};
  std::optional<DlgTable> dialog_;
};

TEST_F(DlgTableTest, StandsOnTheRecordOfTheForm) {
  open();
  form_.MoveNext();
  openList();
  EXPECT_EQ(dialog_->objectName(), str("dlgTable"));
  EXPECT_EQ(dialog_->windowTitle(), str("Fahrzeugliste"));
  EXPECT_EQ(names(), str("A3 A5 V7"));
  EXPECT_EQ(current(), str("A5"));
  EXPECT_TRUE(form_.pendingFind.isEmpty());
  EXPECT_EQ(grid()->selectionModel()->selectedRows().size(), 1);
  EXPECT_EQ(grid()->selectionModel()->selectedIndexes().size(), 7) << "the whole row";
}

TEST_F(DlgTableTest, CannotBeEdited) {
  open();
  openList();
  EXPECT_EQ(grid()->editTriggers(), QAbstractItemView::NoEditTriggers);
}

TEST_F(DlgTableTest, OkGoesToTheChosenRecord) {
  open();
  openList();
  grid()->selectRow(2);
  child<QPushButton>("OKButton")->click();
  EXPECT_EQ(form_.pendingFind, str("DC_COLL=\"Vitrine\" AND DC_ADR=7"));
  close();
  EXPECT_EQ(text("st_sname"), str("V7"));
  EXPECT_EQ(text("Data1"), str("Satz  3 von  3"));
  EXPECT_TRUE(form_.pendingFind.isEmpty());
}

TEST_F(DlgTableTest, ADoubleClickGoesToTheRecord) {
  open();
  openList();
  QTest::mouseClick(grid()->viewport(), Qt::LeftButton, {}, middleOf(1));
  QTest::mouseDClick(grid()->viewport(), Qt::LeftButton, {}, middleOf(1));
  EXPECT_FALSE(dialog_->isVisible());
  close();
  EXPECT_EQ(text("st_sname"), str("A5"));
}

TEST_F(DlgTableTest, EnterInTheGridGoesToTheRecord) {
  open();
  openList();
  QTest::keyClick(grid(), Qt::Key_Down);
  QTest::keyClick(grid(), Qt::Key_Return);
  EXPECT_FALSE(dialog_->isVisible());
  close();
  EXPECT_EQ(text("st_sname"), str("A5"));
}

TEST_F(DlgTableTest, CancelLeavesTheFormWhereItIs) {
  open();
  form_.MoveNext();
  openList();
  grid()->selectRow(2);
  child<QPushButton>("CancelButton")->click();
  EXPECT_TRUE(form_.pendingFind.isEmpty());
  close();
  EXPECT_EQ(text("st_sname"), str("A5"));
}

TEST_F(DlgTableTest, ANullCollectionIsNotFoundAgain) {
  base_.addVehicle(4, QString(), str("N4"));
  open();
  form_.MoveNext();
  openList();
  grid()->selectRow(3);
  ASSERT_EQ(current(), str("N4"));
  child<QPushButton>("OKButton")->click();
  EXPECT_EQ(form_.pendingFind, str("DC_COLL=\"\" AND DC_ADR=4"));
  close();
  EXPECT_EQ(text("st_sname"), str("A5"));
  EXPECT_TRUE(prompt_.shown.isEmpty());
}

TEST_F(DlgTableTest, HonoursTheFilterAndIsSortedEvenSo) {
  base_.addVehicle(1, str("Anlage"), str("A1"));
  open();
  form_.butFind();
  type("dc_coll", "Anlage");
  form_.butFilter();
  form_.MoveLast();
  ASSERT_EQ(text("st_sname"), str("A1"));
  openList();
  EXPECT_EQ(names(), str("A1 A3 A5"));
  EXPECT_EQ(current(), str("A1"));
}

TEST_F(DlgTableTest, AnUnsavedChangeIsStoredFirst) {
  open();
  type("st_sname", "Neu");
  openList();
  EXPECT_EQ(names(), str("Neu A5 V7"));
}

TEST_F(DlgTableTest, WithoutARecordThereIsNoList) {
  base_.run("DELETE FROM LOCO_DAT");
  open();
  EXPECT_FALSE(form_.prepareList());
  EXPECT_TRUE(form_.pendingFind.isEmpty());
}

TEST_F(DlgTableTest, AQuoteInTheCollectionIsReportedWhenItsRowIsChosen) {
  base_.addVehicle(8, str("Z\"quote"), str("Q8"));
  open();
  form_.MoveLast();
  openList();
  EXPECT_EQ(current(), str("A3")) << "the place is not found";
  grid()->selectRow(3);
  child<QPushButton>("OKButton")->click();
  close();
  ASSERT_EQ(prompt_.shown.size(), 1);
  EXPECT_TRUE(prompt_.shown[0].startsWith(str("Syntaxfehler")));
  EXPECT_EQ(text("st_sname"), str("Q8"));
}

TEST_F(DlgTableTest, AClickOnAHeaderSortsAndTheThirdBringsTheFirstOrderBack) {
  open();
  openList();
  clickHeader(2);
  EXPECT_EQ(names(), str("A3 A5 V7"));
  clickHeader(2);
  EXPECT_EQ(names(), str("V7 A5 A3"));
  EXPECT_EQ(current(), str("A3")) << "the chosen vehicle stays chosen";
  clickHeader(2);
  EXPECT_EQ(names(), str("A3 A5 V7"));
}

TEST_F(DlgTableTest, TypingInTheGridSearches) {
  open();
  openList();
  QTest::keyClicks(grid(), str("v"));
  EXPECT_EQ(current(), str("V7"));
  EXPECT_EQ(child<QLineEdit>("txtSearch")->text(), str("v"));
  EXPECT_EQ(QApplication::focusWidget(), child<QLineEdit>("txtSearch"));
}

TEST_F(DlgTableTest, SearchesAsOneTypesAndF3GoesOn) {
  open();
  openList();
  auto* search = child<QLineEdit>("txtSearch");
  search->setFocus();
  QTest::keyClicks(search, str("ANL"));
  EXPECT_EQ(current(), str("A3"));
  QTest::keyClick(search, Qt::Key_F3);
  EXPECT_EQ(current(), str("A5"));
  QTest::keyClick(search, Qt::Key_F3);
  EXPECT_EQ(current(), str("A3"));
  QTest::keyClicks(search, str("x"));
  EXPECT_TRUE(child<QLabel>("labSearch")->isVisible());
  EXPECT_EQ(child<QLabel>("labSearch")->text(), str("kein Treffer"));
  EXPECT_EQ(current(), str("A3"));
  QTest::keyClick(search, Qt::Key_Backspace);
  EXPECT_FALSE(child<QLabel>("labSearch")->isVisible());
}

TEST_F(DlgTableTest, TheArrowKeysMoveFromTheSearchLine) {
  open();
  openList();
  auto* search = child<QLineEdit>("txtSearch");
  search->setFocus();
  QTest::keyClick(search, Qt::Key_Down);
  EXPECT_EQ(current(), str("A5"));
  QTest::keyClick(search, Qt::Key_Up);
  EXPECT_EQ(current(), str("A3"));
}

TEST_F(DlgTableTest, UsualTextsAreNotCut) {
  // Sixteen characters are what the form takes for a collection.
  base_.run(
      "UPDATE LOCO_DAT SET DC_COLL = 'Sammlung Wohnzim', DC_ADR = 10239, ST_SNAME = 'BR 103', "
      "FZ_FTYPE = 'Elektrotriebwagen', FZ_LINE = 'Güterlogistik', MD_MANUF = 'Nordlicht Modell', "
      "DC_DECODER = 'MX632VWD' WHERE ST_SNAME = 'A3'");
  open();
  openList();
  const QAbstractItemView* view = grid();
  for (int column = 0; column < view->model()->columnCount(); ++column) {
    EXPECT_GE(grid()->columnWidth(column), view->sizeHintForColumn(column)) << column;
  }
  EXPECT_FALSE(view->horizontalScrollBar()->isVisible());
}

TEST_F(DlgTableTest, KeepsTheWidthsOfItsColumns) {
  open();
  openList();
  grid()->setColumnWidth(0, 222);
  grid()->setColumnWidth(3, 33);
  dialog_->reject();
  openList();
  EXPECT_EQ(grid()->columnWidth(0), 222);
  EXPECT_EQ(grid()->columnWidth(3), 33);
}

TEST_F(DlgTableTest, BrokenWidthsAreNotTaken) {
  open();
  openList();
  const int usual = grid()->columnWidth(1);
  dialog_.reset();
  for (const QList<int>& widths : {QList<int>{7}, QList<int>{0, 0, 0, 0, 0, 0, 0}}) {
    scale_.storeColumns(str("dlgTable"), widths);
    openList();
    EXPECT_EQ(grid()->columnWidth(1), usual);
    dialog_.reset();
  }
}

TEST_F(DlgTableTest, EveryControlHasAnAccessibleNameAndAPlaceInTheTabOrder) {
  open();
  openList();
  for (const char* name : {"txtSearch", "DBGrid1", "OKButton", "CancelButton"}) {
    EXPECT_FALSE(child<QWidget>(name)->accessibleName().isEmpty()) << name;
    EXPECT_TRUE(child<QWidget>(name)->focusPolicy() & Qt::TabFocus) << name;
  }
  child<QLineEdit>("txtSearch")->setFocus();
  QStringList order;
  for (int step = 0; step < 4; ++step) {
    order << QApplication::focusWidget()->objectName();
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
  }
  EXPECT_EQ(order,
            (QStringList{str("txtSearch"), str("DBGrid1"), str("OKButton"), str("CancelButton")}));
}

}  // namespace
}  // namespace lokari
