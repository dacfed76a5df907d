// The dialogs of the five reference lists, and what their grids do with keys and mouse.
#include "db/ui/dlg_list.h"

#include <QContextMenuEvent>
#include <QMenu>
#include <QTimer>

#include "db/reference_lists.h"
#include "grid_dialog_fixture.h"

namespace lokari {
namespace {

class DlgListTest : public test::GridDialogFixture {
 protected:
  DlgListTest() { base_.run("INSERT INTO ERAS VALUES (1, 'I'), (2, 'II'), (3, 'III')"); }
  void openList(const char* control) {
    GridDialogFixture::open(std::make_unique<DlgList>(*referenceListOf(str(control)), base_.open(),
                                                      prompt_, scale_, nullptr));
  }
  void open() { openList("fz_era"); }
  /// The right button on a row.
  void pointAt(int row) const {
    const QPoint point = middleOf(row, 1);
    QContextMenuEvent event(QContextMenuEvent::Mouse, point,
                            grid()->viewport()->mapToGlobal(point));
    QApplication::sendEvent(grid()->viewport(), &event);
  }
  QString eras() { return stored("SELECT FZ_ERA FROM ERAS ORDER BY rowid"); }
};

TEST_F(DlgListTest, EachListHasItsDialog) {
  struct Expected {
    const char* control;
    const char* name;
    const char* title;
    const char* source;
    const char* caption;
  };
  for (const Expected& list :
       {Expected{"fz_ftype", "dlgFTypes", "Fahrzeugtypen", "datFTypes", "Type"},
        Expected{"fz_line", "dlgLines", "Bahnverwaltungen", "datLines", "Bahnverwaltung"},
        Expected{"fz_era", "dlgEras", "Modellbahn-Epochen", "datEras", "Epoche"},
        Expected{"md_manuf", "dlgManuf", "Modellbahn-Hersteller", "datManufs", "Hersteller"},
        Expected{"md_motor", "dlgMotor", "Motortypen", "datMotors", "Motortype"}}) {
    openList(list.control);
    EXPECT_EQ(dialog_->objectName(), str(list.name));
    EXPECT_EQ(dialog_->windowTitle(), str(list.title));
    EXPECT_TRUE(dialog_->isModal());
    EXPECT_EQ(grid()->model()->objectName(), str(list.source));
    EXPECT_EQ(grid()->model()->headerData(0, Qt::Horizontal).toString(), str("Seq."));
    EXPECT_EQ(grid()->model()->headerData(1, Qt::Horizontal).toString(), str(list.caption));
  }
}

TEST_F(DlgListTest, TheTextColumnIs1540TwipsWideAtTheMainWindowsScale) {
  open();
  EXPECT_EQ(grid()->columnWidth(1), 103);
  scale_.scaleX = 1.5;
  grid()->setColumnWidth(1, 7);
  QEvent activation(QEvent::WindowActivate);
  QApplication::sendEvent(dialog_.get(), &activation);
  EXPECT_EQ(grid()->columnWidth(1), 154);
}

TEST_F(DlgListTest, ALongEntryIsNotCutOff) {
  base_.run("INSERT INTO ERAS VALUES (4, 'Eine Epoche, die einen langen Namen hat')");
  open();
  EXPECT_GT(grid()->columnWidth(1), grid()->fontMetrics().horizontalAdvance(cell(3, 1)));
}

TEST_F(DlgListTest, AColumnGrowsWithALongerEntryOnceItsRowIsStored) {
  open();
  grid()->setColumnWidth(0, 90);
  goToEnd(1);
  keys("Eine Epoche mit langem Namen");
  key(Qt::Key_Return);
  key(Qt::Key_Up);
  EXPECT_GT(grid()->columnWidth(1), grid()->fontMetrics().horizontalAdvance(cell(3, 1)));
  EXPECT_EQ(grid()->columnWidth(0), 90) << "a width that the user gave stays";
}

// ---- Keys ---------------------------------------------------------------------------------------

TEST_F(DlgListTest, TypingReplacesACellAndEnterTakesIt) {
  open();
  go(0, 1);
  keys("Ia");
  EXPECT_TRUE(isEditing());
  key(Qt::Key_Return);
  EXPECT_FALSE(isEditing());
  EXPECT_EQ(cell(0, 1), str("Ia"));
  EXPECT_EQ(place(), str("0,1"));
  EXPECT_EQ(mark(0), str("✎"));
  EXPECT_EQ(eras(), str("I|II|III")) << "the row is not left yet";
  key(Qt::Key_Return);
  EXPECT_EQ(place(), str("1,1"));
  EXPECT_EQ(mark(0), QString());
  EXPECT_EQ(eras(), str("Ia|II|III"));
}

TEST_F(DlgListTest, F2EditsTheTextThatStandsThere) {
  open();
  go(1, 1);
  key(Qt::Key_F2);
  key(Qt::Key_End);
  keys("a");
  key(Qt::Key_Return);
  EXPECT_EQ(cell(1, 1), str("IIa"));
}

TEST_F(DlgListTest, TabGoesOnFromCellToCell) {
  open();
  goToEnd(0);
  keys("4");
  key(Qt::Key_Tab);
  EXPECT_EQ(place(), str("3,1"));
  keys("IV");
  key(Qt::Key_Tab);
  EXPECT_EQ(place(), str("4,0")) << "the next empty row";
  EXPECT_TRUE(isEditing());
  EXPECT_EQ(stored("SELECT FZ_ERA FROM ERAS WHERE FZ_ERA_SEQ = 4"), str("IV"));
}

TEST_F(DlgListTest, ANameInTheEmptyRowIsEnough) {
  open();
  goToEnd(1);
  keys("Alpha");
  key(Qt::Key_Return);
  EXPECT_EQ(rows(), 5);
  EXPECT_EQ(mark(4), str("*"));
  key(Qt::Key_Up);
  EXPECT_EQ(stored("SELECT FZ_ERA_SEQ FROM ERAS WHERE FZ_ERA = 'Alpha'"), str("Null"));
  EXPECT_EQ(column(1), str("I|II|III|Alpha|"));
  EXPECT_EQ(place(), str("2,1"));
}

TEST_F(DlgListTest, TheCursorGoesWhereItWasSentThoughTheRowMoves) {
  open();
  go(0, 0);
  keys("9");
  key(Qt::Key_Return);
  key(Qt::Key_Down);
  EXPECT_EQ(column(1), str("II|III|I|"));
  EXPECT_EQ(grid()->currentIndex().siblingAtColumn(1).data().toString(), str("II"));
  EXPECT_EQ(place(), str("0,0"));
}

TEST_F(DlgListTest, EscapeGivesUpFirstTheCellThenTheRowThenTheDialog) {
  open();
  go(0, 0);
  keys("9");
  key(Qt::Key_Return);
  go(0, 1);
  keys("x");
  key(Qt::Key_Escape);
  EXPECT_EQ(cell(0, 1), str("I"));
  EXPECT_EQ(cell(0, 0), str("9")) << "the row is still being edited";
  key(Qt::Key_Escape);
  EXPECT_EQ(cell(0, 0), str("1"));
  EXPECT_TRUE(dialog_->isVisible());
  key(Qt::Key_Escape);
  EXPECT_FALSE(dialog_->isVisible());
  EXPECT_EQ(eras(), str("I|II|III"));
}

TEST_F(DlgListTest, EscapeRemovesARowThatWasBegun) {
  open();
  goToEnd(1);
  keys("IV");
  key(Qt::Key_Return);
  key(Qt::Key_Escape);
  EXPECT_EQ(column(1), str("I|II|III|"));
  EXPECT_EQ(place(), str("3,1")) << "ready for another one";
}

TEST_F(DlgListTest, EntfDeletesTheRow) {
  open();
  go(1, 0);
  key(Qt::Key_Delete);
  EXPECT_EQ(eras(), str("I|II|III")) << "nobody said yes";
  EXPECT_EQ(prompt_.shown, QStringList(str("„II“ aus der Liste löschen?")));
  prompt_.answers = {Answer::Yes};
  key(Qt::Key_Delete);
  EXPECT_EQ(eras(), str("I|III"));
  EXPECT_EQ(place(), str("1,0"));
  prompt_.shown.clear();
  goToEnd(0);
  key(Qt::Key_Delete);
  EXPECT_EQ(eras(), str("I|III")) << "the empty row is none";
  EXPECT_TRUE(prompt_.shown.isEmpty());
}

TEST_F(DlgListTest, EntfInACellDeletesACharacter) {
  open();
  go(2, 1);
  key(Qt::Key_F2);
  key(Qt::Key_Home);
  key(Qt::Key_Delete);
  key(Qt::Key_Return);
  EXPECT_EQ(cell(2, 1), str("II"));
  EXPECT_EQ(rows(), 4);
}

// ---- Refusals -----------------------------------------------------------------------------------

TEST_F(DlgListTest, ARefusedTextLeavesTheOldOneAndTheCursor) {
  open();
  go(0, 0);
  keys("x");
  key(Qt::Key_Tab);
  EXPECT_EQ(message(), str("Numerische Eingabe erforderlich!"));
  EXPECT_EQ(cell(0, 0), str("1"));
  EXPECT_EQ(place(), str("0,0"));
  EXPECT_FALSE(isEditing());
}

TEST_F(DlgListTest, ARowThatCannotBeStoredIsNotLeft) {
  base_.run("CREATE TRIGGER no BEFORE UPDATE ON ERAS BEGIN SELECT RAISE(ABORT, 'nein'); END");
  open();
  go(0, 1);
  keys("x");
  key(Qt::Key_Return);
  key(Qt::Key_Down);
  EXPECT_TRUE(message().contains(str("nein")));
  EXPECT_EQ(place(), str("0,1"));
  click(2, 1);
  EXPECT_TRUE(message().contains(str("nein")));
  EXPECT_EQ(place(), str("0,1"));
  const QModelIndexList selected = grid()->selectionModel()->selectedIndexes();
  EXPECT_EQ(selected, QModelIndexList{grid()->currentIndex()});
  child<QPushButton>("cmdCancel")->click();
  EXPECT_TRUE(message().contains(str("nein")));
  EXPECT_TRUE(dialog_->isVisible());
  grid()->setFocus();
  key(Qt::Key_Escape);
  child<QPushButton>("cmdCancel")->click();
  EXPECT_FALSE(dialog_->isVisible());
}

// ---- Mouse and closing --------------------------------------------------------------------------

TEST_F(DlgListTest, AClickElsewhereStoresTheRow) {
  open();
  go(0, 1);
  keys("Ia");
  click(2, 1);
  EXPECT_EQ(place(), str("2,1"));
  EXPECT_EQ(eras(), str("Ia|II|III"));
}

TEST_F(DlgListTest, ADoubleClickEdits) {
  open();
  click(1, 1);
  QTest::mouseDClick(grid()->viewport(), Qt::LeftButton, {}, middleOf(1, 1));
  EXPECT_TRUE(isEditing());
  EXPECT_EQ(child<QLineEdit>("gridText")->accessibleName(), str("Epoche"));
}

TEST_F(DlgListTest, AClickOnAMarkGoesToItsRow) {
  open();
  QHeaderView* marks = grid()->verticalHeader();
  QTest::mouseClick(marks->viewport(), Qt::LeftButton, {},
                    {marks->width() / 2, marks->sectionViewportPosition(2) + 5});
  EXPECT_EQ(place(), str("2,0"));
}

TEST_F(DlgListTest, TheContextMenuDeletesTheRowThatIsPointedAt) {
  open();
  QTimer::singleShot(0, dialog_.get(), [] {
    auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    ASSERT_NE(menu, nullptr);
    ASSERT_EQ(menu->actions().size(), 1);
    EXPECT_TRUE(menu->actions().front()->text().startsWith(QStringLiteral("Zeile &löschen")));
    menu->setActiveAction(menu->actions().front());
    QTest::keyClick(menu, Qt::Key_Return);
  });
  prompt_.answers = {Answer::Yes};
  pointAt(1);
  EXPECT_EQ(eras(), str("I|III"));
}

TEST_F(DlgListTest, TheEmptyRowHasNoContextMenu) {
  open();
  pointAt(3);
  EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
  EXPECT_EQ(place(), str("0,0"));
}

TEST_F(DlgListTest, ClosingTakesWhatIsBeingTyped) {
  open();
  goToEnd(1);
  keys("IV");
  QTest::mouseClick(child<QPushButton>("cmdCancel"), Qt::LeftButton);
  EXPECT_FALSE(dialog_->isVisible());
  EXPECT_EQ(eras(), str("I|II|III|IV"));
}

TEST_F(DlgListTest, ClosingTheWindowTakesItToo) {
  open();
  go(0, 1);
  keys("Ia");
  EXPECT_TRUE(dialog_->close());
  EXPECT_EQ(eras(), str("Ia|II|III"));
}

TEST_F(DlgListTest, ClosingWithARefusedTextKeepsTheDialogOpen) {
  open();
  go(0, 0);
  keys("x");
  QTest::mouseClick(child<QPushButton>("cmdCancel"), Qt::LeftButton);
  EXPECT_EQ(message(), str("Numerische Eingabe erforderlich!"));
  EXPECT_TRUE(dialog_->isVisible());
}

TEST_F(DlgListTest, EveryControlHasAnAccessibleNameAndAPlaceInTheTabOrder) {
  open();
  for (const char* name : {"DBGrid1", "cmdCancel"}) {
    EXPECT_FALSE(child<QWidget>(name)->accessibleName().isEmpty()) << name;
    EXPECT_TRUE(child<QWidget>(name)->focusPolicy() & Qt::TabFocus) << name;
  }
  EXPECT_EQ(QApplication::focusWidget(), grid());
  key(Qt::Key_Tab);
  EXPECT_EQ(QApplication::focusWidget(), child<QPushButton>("cmdCancel"));
}

}  // namespace
}  // namespace lokari
