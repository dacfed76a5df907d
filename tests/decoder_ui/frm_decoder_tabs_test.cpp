// Tabs and rows of the decoder window.
#include <QCheckBox>
#include <QTabBar>

#include "window_fixture.h"

namespace lokari {
namespace {

class FrmDecoderTabs : public test::WindowFixture {
 protected:
  QStringList visibleTabs() {
    QStringList captions;
    for (int tab = 0; tab < tabs()->count(); ++tab)
      if (tabs()->isTabVisible(tab)) captions << tabs()->tabText(tab);
    return captions;
  }

  /// Value fields on the tab in view.
  qsizetype fieldsInView() { return tabs()->currentWidget()->findChildren<ValueEdit*>().size(); }
};

TEST_F(FrmDecoderTabs, FortyFiveFunctionRowsMakeThreeTabsTheThirdWithFiveRows) {
  describe(cvLines(33, 34, 3) + cvLines(100, 11, 3));
  edit([&] {
    EXPECT_EQ(visibleTabs(),
              (QStringList{QStringLiteral("Allgemein"), QStringLiteral("Fahren"),
                           QStringLiteral("Funktionen"), QStringLiteral("Funktionen 2"),
                           QStringLiteral("Funktionen 3"), QStringLiteral("Alle CVs")}));
    tabs()->setCurrentIndex(2);
    EXPECT_EQ(fieldsInView(), 20);
    EXPECT_EQ(label("labFunc_1")->text(), QStringLiteral("Zeile 33 (0-255):"));
    tabs()->setCurrentIndex(6);
    EXPECT_EQ(fieldsInView(), 20);
    EXPECT_EQ(label("labFunc_21")->text(), QStringLiteral("Zeile 53 (0-255):"));
    tabs()->setCurrentIndex(7);
    EXPECT_EQ(fieldsInView(), 5);
    EXPECT_EQ(label("labFunc_45")->text(), QStringLiteral("Zeile 110 (0-255):"));
    EXPECT_EQ(label("labFunc_45")->toolTip(), QStringLiteral("CV 110"));
  });
}

TEST_F(FrmDecoderTabs, TheEleventhRowBeginsTheRightColumn) {
  describe(cvLines(100, 12, 4));
  edit([&] {
    tabs()->setCurrentIndex(3);
    QCoreApplication::processEvents();
    const QPoint first = field("txtManuf_1")->pos();
    const QPoint tenth = field("txtManuf_10")->pos();
    const QPoint eleventh = field("txtManuf_11")->pos();
    EXPECT_EQ(first.x(), tenth.x());
    EXPECT_LT(first.y(), tenth.y());
    EXPECT_LT(tenth.x(), eleventh.x());
    EXPECT_EQ(first.y(), eleventh.y());
  });
}

TEST_F(FrmDecoderTabs, MaxTabsSixKeepsOneTabForEachPageAndTheGridHasTheRest) {
  describe("MAXTABS=6\n" + cvLines(100, 25, 3) + cvLines(200, 2, 6));
  edit([&] {
    EXPECT_EQ(visibleTabs(), (QStringList{QStringLiteral("Allgemein"), QStringLiteral("Fahren"),
                                          QStringLiteral("Funktionen"), QStringLiteral("Sound"),
                                          QStringLiteral("Alle CVs")}));
    tabs()->setCurrentIndex(2);
    EXPECT_EQ(fieldsInView(), 20);
    const QAbstractItemModel* cvs = grid()->model();
    EXPECT_EQ(cvs->match(cvs->index(0, 0), Qt::DisplayRole, QStringLiteral("124")).size(), 1);
  });
}

TEST_F(FrmDecoderTabs, ADecoderWithoutDriveHasNoDriveTab) {
  describe("TYPE=3\n");
  edit([&] {
    EXPECT_FALSE(tabs()->isTabVisible(1));
    EXPECT_FALSE(button("chkRd_2")->isEnabled());
  });
}

TEST_F(FrmDecoderTabs, ARowShowsItsBankNumberValueAndTip) {
  describe(
      "MAPCVA=31\nMAPCVB=32\nMAPVALA_2=16\nMAPVALB_2=0\n"
      "CV_257_2=Lautstaerke,0-128,100,6,\"Gesamt, in Stufen\",\"8,Wert\"\n");
  setValue(1024, 77);
  edit([&] {
    tabs()->setCurrentIndex(5);
    EXPECT_EQ(label("labSound_1")->text(), QStringLiteral("Lautstaerke (0-128):"));
    EXPECT_EQ(label("labSound_1")->toolTip(), QStringLiteral("CV 257 (2)"));
    EXPECT_EQ(field("txtSound_1")->text(), QStringLiteral("77"));
    field("txtSound_1")->setFocus();
    auto* tip = control<QLabel>(QStringLiteral("toolTip"));
    EXPECT_TRUE(tip->isVisible());
    EXPECT_EQ(tip->text(), QStringLiteral(" Gesamt, in Stufen "));
    type(field("txtSound_1"), QStringLiteral("1"));
    EXPECT_FALSE(tip->isVisible());
  });
}

TEST_F(FrmDecoderTabs, RowBoxesSetTheMarksOfTheirCv) {
  describe(cvLines(100, 2, 5));
  edit([&] {
    tabs()->setCurrentIndex(4);
    click("chkOtherRd_2");
    click("chkOtherWrt_1");
    EXPECT_TRUE(bench.description.info(CvIndex(101)).cvRead);
    EXPECT_FALSE(bench.description.info(CvIndex(100)).cvRead);
    EXPECT_TRUE(bench.description.info(CvIndex(100)).cvWrite);
    click("chkOtherRd_2");
    EXPECT_FALSE(bench.description.info(CvIndex(101)).cvRead);
  });
}

TEST_F(FrmDecoderTabs, TheButtonsOfATabMarkItsTwentyRowsOnly) {
  describe(cvLines(100, 25, 3));
  edit([&] {
    tabs()->setCurrentIndex(6);
    click("cmdReadFunc_2");
    EXPECT_FALSE(bench.description.info(CvIndex(119)).cvRead);
    EXPECT_TRUE(bench.description.info(CvIndex(120)).cvRead);
    EXPECT_TRUE(button("chkFuncRd_21")->isChecked());
    tabs()->setCurrentIndex(2);
    EXPECT_FALSE(button("chkFuncRd_20")->isChecked());
    click("cmdWriteFunc_1");
    EXPECT_TRUE(bench.description.info(CvIndex(100)).cvWrite);
    EXPECT_FALSE(bench.description.info(CvIndex(120)).cvWrite);
  });
}

TEST_F(FrmDecoderTabs, ReadAllAndWriteNoneShowInEveryBox) {
  describe("CV_2=Anfahren,0-63\n" + cvLines(100, 1, 3));
  edit([&] {
    tabs()->setCurrentIndex(2);
    click("cmdReadAll");
    click("cmdWriteAll");
    click("cmdWriteNone");
    EXPECT_TRUE(button("chkFuncRd_1")->isChecked());
    EXPECT_TRUE(button("chkRd_2")->isChecked());
    EXPECT_FALSE(button("chkFuncWrt_1")->isChecked());
    click("cmdReadNone");
    EXPECT_FALSE(button("chkFuncRd_1")->isChecked());
  });
}

TEST_F(FrmDecoderTabs, ARowOfARefusedValueComesBackIntoView) {
  describe("CV_100=Enge,0-9,0,3\n");
  edit([&] {
    tabs()->setCurrentIndex(2);
    type(field("txtFunc_1"), QStringLiteral("10"));
    tabs()->setCurrentIndex(0);
    QCoreApplication::processEvents();
    EXPECT_EQ(prompt.shown, QStringList{QStringLiteral("Eingabe außerhalb des Wertebereichs!")});
    EXPECT_EQ(tabs()->currentIndex(), 2);
    EXPECT_TRUE(field("txtFunc_1")->hasFocus());
    EXPECT_EQ(field("txtFunc_1")->selectedText(), QStringLiteral("10"));
    EXPECT_EQ(value(100), 0);
  });
}

TEST_F(FrmDecoderTabs, RowsComeAheadOfTheFooterInTheTabOrder) {
  describe(cvLines(100, 2, 3));
  edit([&] {
    tabs()->setCurrentIndex(2);
    tabs()->tabBar()->setFocus();
    QStringList order;
    QWidget* at = tabs()->tabBar();
    for (int step = 0; step < 9; ++step) {
      QTest::keyClick(at, Qt::Key_Tab);
      at = QApplication::focusWidget();
      order << at->objectName();
    }
    EXPECT_EQ(order, (QStringList{QStringLiteral("txtFunc_1"), QStringLiteral("chkFuncRd_1"),
                                  QStringLiteral("chkFuncWrt_1"), QStringLiteral("txtFunc_2"),
                                  QStringLiteral("chkFuncRd_2"), QStringLiteral("chkFuncWrt_2"),
                                  QStringLiteral("cmdReadFunc_1"), QStringLiteral("cmdWriteFunc_1"),
                                  QStringLiteral("cmdReadAll")}));
  });
}

class FrmDecoderOnMx1 : public FrmDecoderTabs {
 protected:
  FrmDecoderOnMx1() {
    settings.baseUnit = StationKind::Mx1;
    settings.lenzV36 = false;
  }
};

TEST_F(FrmDecoderOnMx1, ACvAbove255HasNeitherReadNorWriteBox) {
  describe("CV_255=Innen,0-255,0,3\nCV_256=Aussen,0-255,0,3\n");
  edit([&] {
    tabs()->setCurrentIndex(2);
    EXPECT_TRUE(button("chkFuncRd_1")->isEnabled());
    EXPECT_TRUE(button("chkFuncWrt_1")->isEnabled());
    EXPECT_FALSE(button("chkFuncRd_2")->isEnabled());
    EXPECT_FALSE(button("chkFuncWrt_2")->isEnabled());
    EXPECT_FALSE(field("txtFunc_2")->isReadOnly());
  });
}

TEST_F(FrmDecoderOnMx1, OnALi100V3WithoutProtocol36ItsFieldIsLockedAsWell) {
  settings.baseUnit = StationKind::Li100V3;
  describe("CV_256=Aussen,0-255,0,3\n");
  edit([&] {
    tabs()->setCurrentIndex(2);
    EXPECT_FALSE(button("chkFuncRd_1")->isEnabled());
    EXPECT_TRUE(field("txtFunc_1")->isReadOnly());
  });
}

}  // namespace
}  // namespace lokari
