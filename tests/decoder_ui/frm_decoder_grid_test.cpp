// The grid of all CVs in the decoder window.
#include <QHeaderView>

#include "window_fixture.h"

namespace lokari {
namespace {

class FrmDecoderGrid : public test::WindowFixture {
 protected:
  FrmDecoderGrid() {
    describe(
        "SPEEDTABLE=N\nMAPVALA_2=16\n"
        "CV_50=Fuenfzig,0-9,4\n"
        "CV_51=Nur lesen,0-255,256\n"
        "CV_52=Bits,0-255,0,0,,\"1,Licht,Aus,Ein\"\n"
        "CV_257_2=Im Block,0-255,1\n");
  }

  QString cell(int row, GridColumn column) {
    return grid()->model()->index(row - 1, static_cast<int>(column)).data().toString();
  }

  void clickCell(int row, GridColumn column, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    const QModelIndex index = grid()->model()->index(row - 1, static_cast<int>(column));
    grid()->scrollTo(index);
    QTest::mouseClick(grid()->viewport(), Qt::LeftButton, modifiers,
                      grid()->visualRect(index).center());
  }

  bool read(int cv) const { return bench.description.info(CvIndex(cv)).cvRead; }
  bool write(int cv) const { return bench.description.info(CvIndex(cv)).cvWrite; }

  void editGrid(const std::function<void()>& script) {
    edit([&] {
      tabs()->setCurrentIndex(kGridTab);
      QCoreApplication::processEvents();
      script();
    });
  }
};

TEST_F(FrmDecoderGrid, ShowsSevenColumnsAndARowForEveryCv) {
  setValue(50, 7);
  editGrid([&] {
    QStringList heads;
    for (int column = 0; column < grid()->model()->columnCount(); ++column)
      heads << grid()->model()->headerData(column, Qt::Horizontal).toString();
    EXPECT_EQ(heads, (QStringList{QStringLiteral("CV"), QStringLiteral("Bezeichnung"),
                                  QStringLiteral("Bereich"), QStringLiteral("Wert"),
                                  QStringLiteral("Lesen"), QStringLiteral("Schreiben"),
                                  QStringLiteral("Details")}));
    EXPECT_EQ(grid()->model()->rowCount(), 4);
    EXPECT_EQ(cell(1, GridColumn::Cv), QStringLiteral("50"));
    EXPECT_EQ(cell(1, GridColumn::Name), QStringLiteral("Fuenfzig"));
    EXPECT_EQ(cell(1, GridColumn::Range), QStringLiteral("0-9"));
    EXPECT_EQ(cell(1, GridColumn::Value), QStringLiteral("7"));
    EXPECT_EQ(cell(4, GridColumn::Cv), QStringLiteral("257 (2)"));
  });
}

TEST_F(FrmDecoderGrid, ClicksToggleTheMarksOfOneCv) {
  editGrid([&] {
    clickCell(1, GridColumn::Read);
    clickCell(4, GridColumn::Write);
    EXPECT_TRUE(read(50));
    EXPECT_FALSE(read(51));
    EXPECT_TRUE(write(1024));
    clickCell(1, GridColumn::Read);
    EXPECT_FALSE(read(50));
  });
}

TEST_F(FrmDecoderGrid, AReadOnlyCvCanNeitherBeMarkedForWritingNorEdited) {
  editGrid([&] {
    clickCell(2, GridColumn::Write);
    EXPECT_FALSE(write(51));
    clickCell(2, GridColumn::Value);
    EXPECT_FALSE(field("tabText")->isVisible());
    clickCell(2, GridColumn::Read);
    EXPECT_TRUE(read(51));
  });
}

TEST_F(FrmDecoderGrid, CellsOfAReadOnlyCvLookIt) {
  editGrid([&] {
    const QAbstractItemModel* cvs = grid()->model();
    for (const GridColumn column : {GridColumn::Value, GridColumn::Write}) {
      const QModelIndex cell = cvs->index(1, static_cast<int>(column));
      EXPECT_EQ(cell.data(Qt::ToolTipRole).toString(), QStringLiteral("Nur lesbar"));
      EXPECT_TRUE(cell.data(Qt::BackgroundRole).isValid());
    }
    EXPECT_FALSE(cvs->index(0, 3).data(Qt::BackgroundRole).isValid());
    EXPECT_EQ(cvs->index(1, 4).data(Qt::ToolTipRole).toString(),
              QStringLiteral("Ohne Wirkung: steht auf keiner Seite dieses Decoders"));
  });
}

TEST_F(FrmDecoderGrid, ATickThatDoesNothingLooksDifferent) {
  describe("SPEEDTABLE=N\nCV_50=Ohne Seite,0-9,4,0\nCV_51=Mit Seite,0-9,4,3\n");
  editGrid([&] {
    clickCell(1, GridColumn::Read);
    clickCell(2, GridColumn::Read);
    grid()->clearSelection();
    grid()->setCurrentIndex({});
    grid()->setAlternatingRowColors(false);
    const auto picture = [&](int row) {
      return grid()->viewport()->grab(grid()->visualRect(grid()->model()->index(row, 4))).toImage();
    };
    EXPECT_NE(picture(0), picture(1));
    EXPECT_EQ(grid()->model()->index(0, 4).data(Qt::AccessibleDescriptionRole).toString(),
              QStringLiteral("Ohne Wirkung: steht auf keiner Seite dieses Decoders"));
  });
}

TEST_F(FrmDecoderGrid, TheBoxesOfPagedModeLookDifferentBeyondCv4) {
  describe("PROGMODE=1\nSPEEDTABLE=N\nCV_3=drei\nCV_50=Zeile,0-9,4,3\n");
  edit([&] {
    EXPECT_EQ(button("chkRd_3")->toolTip(), QString());
    EXPECT_EQ(button("chkRd_3")->graphicsEffect(), nullptr);
    EXPECT_NE(button("chkRd_19")->graphicsEffect(), nullptr);
    tabs()->setCurrentIndex(2);
    EXPECT_NE(button("chkFuncRd_1")->graphicsEffect(), nullptr);
    EXPECT_EQ(button("chkFuncRd_1")->toolTip(),
              QStringLiteral("Ohne Wirkung: mit der Programmierart dieses Decoders nicht "
                             "erreichbar"));
    click("chkFuncRd_1");
    EXPECT_TRUE(read(50)) << "it can be made all the same";
  });
}

TEST_F(FrmDecoderGrid, AHeadTogglesEveryRowOnItsOwn) {
  editGrid([&] {
    clickCell(1, GridColumn::Read);
    clickHead(GridColumn::Read);
    EXPECT_FALSE(read(50));
    EXPECT_TRUE(read(51));
    EXPECT_TRUE(read(52));
    EXPECT_TRUE(read(1024));
  });
}

TEST_F(FrmDecoderGrid, AHeadTogglesTheSelectedRowsOnly) {
  editGrid([&] {
    clickCell(2, GridColumn::Name);
    clickCell(3, GridColumn::Name, Qt::ShiftModifier);
    clickHead(GridColumn::Write);
    EXPECT_FALSE(write(50));
    EXPECT_TRUE(write(51));
    EXPECT_TRUE(write(52));
    EXPECT_FALSE(write(1024));
  });
}

TEST_F(FrmDecoderGrid, SelectingWithShiftOnABoxChangesNoMark) {
  editGrid([&] {
    clickCell(1, GridColumn::Name);
    clickCell(3, GridColumn::Read, Qt::ShiftModifier);
    EXPECT_FALSE(read(52));
  });
}

TEST_F(FrmDecoderGrid, AValueIsEditedInTheBoxOverItsCell) {
  setValue(50, 7, '1');
  editGrid([&] {
    clickCell(1, GridColumn::Value);
    ValueEdit* tabText = field("tabText");
    EXPECT_TRUE(tabText->isVisible());
    EXPECT_TRUE(tabText->hasFocus());
    EXPECT_EQ(tabText->selectedText(), QStringLiteral("7"));
    EXPECT_EQ(tabText->geometry(), grid()->visualRect(grid()->model()->index(0, 3)));
    QTest::keyClicks(tabText, QStringLiteral("9"));
    QTest::keyClick(tabText, Qt::Key_Return);
    QCoreApplication::processEvents();
    EXPECT_FALSE(tabText->isVisible());
    EXPECT_EQ(value(50), 9);
    EXPECT_EQ(cell(1, GridColumn::Value), QStringLiteral("9"));
    EXPECT_TRUE(window.isVisible());
  });
}

TEST_F(FrmDecoderGrid, AValueOutOfRangeKeepsTheBoxOpen) {
  setValue(50, 7);
  editGrid([&] {
    clickCell(1, GridColumn::Value);
    QTest::keyClicks(field("tabText"), QStringLiteral("10"));
    QTest::keyClick(field("tabText"), Qt::Key_Return);
    QCoreApplication::processEvents();
    EXPECT_EQ(prompt.shown, QStringList{QStringLiteral("Eingabe außerhalb des Wertebereichs!")});
    EXPECT_TRUE(field("tabText")->isVisible());
    EXPECT_TRUE(field("tabText")->hasFocus());
    EXPECT_EQ(field("tabText")->selectedText(), QStringLiteral("10"));
    EXPECT_EQ(value(50), 7);
  });
}

TEST_F(FrmDecoderGrid, ClickingAnotherCellTakesTheValueInHandFirst) {
  editGrid([&] {
    clickCell(1, GridColumn::Value);
    QTest::keyClicks(field("tabText"), QStringLiteral("3"));
    clickCell(4, GridColumn::Value);
    EXPECT_EQ(value(50), 3);
    EXPECT_TRUE(field("tabText")->isVisible());
    QTest::keyClicks(field("tabText"), QStringLiteral("200"));
    click("cmdReadAll");
    EXPECT_EQ(value(1024), 200);
  });
}

TEST_F(FrmDecoderGrid, EscapeLeavesTheBoxAndNotTheWindow) {
  editGrid([&] {
    clickCell(1, GridColumn::Value);
    QTest::keyClick(field("tabText"), Qt::Key_Escape);
    QCoreApplication::processEvents();
    EXPECT_FALSE(field("tabText")->isVisible());
    EXPECT_TRUE(window.isVisible());
  });
}

TEST_F(FrmDecoderGrid, TheKeyboardDoesWhatTheMouseDoes) {
  editGrid([&] {
    grid()->setFocus();
    grid()->setCurrentIndex(grid()->model()->index(0, 4));
    QTest::keyClick(grid(), Qt::Key_Space);
    EXPECT_TRUE(read(50));
    grid()->setCurrentIndex(grid()->model()->index(0, 3));
    QTest::keyClick(grid(), Qt::Key_Return);
    EXPECT_TRUE(field("tabText")->isVisible());
  });
}

TEST_F(FrmDecoderGrid, AValueHasTheColourOfItsMark) {
  setValue(50, 1, '1');
  setValue(52, 1, '2');
  editGrid([&] {
    const QAbstractItemModel* cvs = grid()->model();
    EXPECT_EQ(cvs->index(0, 3).data(Qt::ForegroundRole).value<QColor>(), QColor(0, 0, 255));
    EXPECT_EQ(cvs->index(2, 3).data(Qt::ForegroundRole).value<QColor>(), QColor(255, 0, 0));
    EXPECT_FALSE(cvs->index(3, 3).data(Qt::ForegroundRole).isValid());
  });
}

TEST_F(FrmDecoderGrid, MarksAreSeenWithoutTheirPicturesToo) {
  editGrid([&] {
    const auto picture = [&] {
      return grid()->viewport()->grab(grid()->visualRect(grid()->model()->index(0, 4))).toImage();
    };
    clickCell(1, GridColumn::Read);
    const QImage marked = picture();
    clickCell(1, GridColumn::Read);
    EXPECT_NE(picture(), marked);
    EXPECT_EQ(picture(), picture());
  });
}

TEST_F(FrmDecoderGrid, NoHeadIsCut) {
  editGrid([&] {
    const QHeaderView* heads = grid()->horizontalHeader();
    for (int column = 0; column < heads->count(); ++column)
      EXPECT_GE(heads->sectionSize(column), heads->sectionSizeHint(column)) << column;
  });
}

TEST_F(FrmDecoderGrid, TheRowsThatAHeadWorksOnStaySelectedWhenAnotherSetIsShown) {
  editGrid([&] {
    clickCell(2, GridColumn::Cv);
    clickCell(3, GridColumn::Cv, Qt::ShiftModifier);
    bench.chooseSet(QStringLiteral("Set 2"));
    EXPECT_EQ(grid()->selectionModel()->selectedRows().size(), 2);
    clickHead(GridColumn::Read);
    EXPECT_TRUE(read(51) && read(52));
    EXPECT_FALSE(read(50) || read(1024));
  });
}

}  // namespace
}  // namespace lokari
