// The switch panel's window.
#include "cab_fixture.h"

namespace lokari {
namespace {

class FrmPanelTest : public test::CabWindows {
 protected:
  FrmPanel* openPanel(int address = 7) {
    panels.OpenPanel(address, QStringLiteral("Bahnhof"));
    return panelWindows.isEmpty() ? nullptr : panelWindows.last();
  }
  static QWidget* cmdSwitch(FrmPanel* window, int n) {
    return control<QAbstractButton>(window, ("cmdSwitch_" + QByteArray::number(n)).constData());
  }
  static PictureButton* lamp(FrmPanel* window, int n) {
    return picture(window, ("cmdFunc_" + QByteArray::number(n)).constData());
  }
};

const QString kOn = QStringLiteral("lmpon_n.bmp");
const QString kOff = QStringLiteral("lmpred_n.bmp");

TEST_F(FrmPanelTest, ShowsTheOutputsAsTheStationToldThem) {
  station.outputs = 0b00000101;  // 0 and 1 off
  FrmPanel* window = openPanel();
  ASSERT_NE(window, nullptr);
  EXPECT_TRUE(window->isVisible());
  EXPECT_FALSE(window->isModal());
  EXPECT_EQ(window->windowTitle(), QStringLiteral("Bahnhof (7)"));
  EXPECT_EQ(textOf(window, "labName"), QStringLiteral("Bahnhof"));
  EXPECT_EQ(control<QLineEdit>(window, "dc_adr")->text(), QStringLiteral("7"));
  EXPECT_EQ(lamp(window, 0)->picture(), kOff);
  EXPECT_EQ(lamp(window, 1)->picture(), kOff);
  EXPECT_EQ(lamp(window, 2)->picture(), kOn);
  EXPECT_EQ(lamp(window, 3)->picture(), kOn);
  EXPECT_EQ(sent(), QStringList());
}

TEST_F(FrmPanelTest, AnOutputThatWasNeverSwitchedHasASignUntilItIs) {
  station.neverSwitched = {false, false, true, false};
  FrmPanel* window = openPanel();
  EXPECT_EQ(lamp(window, 2)->picture(), kOn) << "the told lamp stays";
  for (int n = 0; n < 4; ++n) {
    auto* sign = control<QLabel>(window, ("labNever_" + QByteArray::number(n)).constData());
    EXPECT_EQ(sign->isVisible(), n == 2) << n;
    EXPECT_TRUE(sign->toolTip().contains(QStringLiteral("noch nie geschaltet"))) << n;
    EXPECT_EQ(sign->accessibleName(), sign->toolTip()) << n;
  }
  click(cmdSwitch(window, 2));
  EXPECT_FALSE(control<QLabel>(window, "labNever_2")->isVisible());
}

TEST_F(FrmPanelTest, APressOnTheButtonIsAPressOnItsLamp) {
  station.outputs = 0b01010101;
  FrmPanel* window = openPanel();
  click(cmdSwitch(window, 2));
  EXPECT_EQ(lamp(window, 2)->picture(), kOn);
  EXPECT_TRUE(lamp(window, 2)->isChecked());
  click(lamp(window, 2));
  EXPECT_EQ(lamp(window, 2)->picture(), kOff);
  EXPECT_EQ(sent(), (QStringList{QStringLiteral("A2 ein"), QStringLiteral("A2 aus")}));
}

TEST_F(FrmPanelTest, TheKeys1To4AreTheOutputsAnd5DoesNothing) {
  station.outputs = 0b01010101;
  FrmPanel* window = openPanel();
  QTest::keyClick(control<QWidget>(window, "cmdOK"), Qt::Key_1);
  QTest::keyClick(cmdSwitch(window, 0), Qt::Key_2);
  QTest::keyClick(cmdSwitch(window, 3), Qt::Key_3, Qt::KeypadModifier);
  QTest::keyClick(control<QWidget>(window, "dc_adr"), Qt::Key_4);
  QTest::keyClick(cmdSwitch(window, 0), Qt::Key_5);
  QTest::keyClick(cmdSwitch(window, 0), Qt::Key_0);
  EXPECT_EQ(sent(), (QStringList{QStringLiteral("A0 ein"), QStringLiteral("A1 ein"),
                                 QStringLiteral("A2 ein"), QStringLiteral("A3 ein")}));
  EXPECT_EQ(control<QLineEdit>(window, "dc_adr")->text(), QStringLiteral("7"));
}

TEST_F(FrmPanelTest, WithoutAnAnswerTheLampsAreGreyAndTheWindowStaysOpen) {
  station.answers = false;
  FrmPanel* window = openPanel();
  EXPECT_EQ(prompt.shown, QStringList{QStringLiteral("Keine Daten von Digitalzentrale erhalten")});
  EXPECT_TRUE(window->isVisible());
  for (int n = 0; n < 4; ++n)
    EXPECT_EQ(lamp(window, n)->picture(), QStringLiteral("lmpgrey.bmp")) << n;
  click(cmdSwitch(window, 1));
  EXPECT_EQ(lamp(window, 1)->picture(), kOn);
  EXPECT_EQ(sent(), QStringList{QStringLiteral("A1 ein")});
}

TEST_F(FrmPanelTest, OkAndTheFramesCloseButtonEndIt) {
  FrmPanel* first = openPanel(7);
  FrmPanel* second = openPanel(8);
  EXPECT_EQ(second->pos() - first->pos(), QPoint(20, 20));
  click(control<QWidget>(first, "cmdOK"));
  EXPECT_FALSE(first->isVisible());
  EXPECT_TRUE(serial.isOpen());
  second->close();
  EXPECT_FALSE(second->isVisible());
  EXPECT_FALSE(serial.isOpen());
  EXPECT_EQ(panels.panelForms(1), nullptr);
  EXPECT_EQ(panels.panelForms(2), nullptr);
}

TEST_F(FrmPanelTest, SixteenStandOpenAndThe17thIsRefused) {
  for (int address = 1; address <= 16; ++address) openPanel(address);
  EXPECT_TRUE(prompt.shown.isEmpty());
  openPanel(17);
  EXPECT_EQ(prompt.shown, QStringList{QStringLiteral("Keine weiteren Schaltfenster möglich!")});
  EXPECT_EQ(panelWindows.size(), 16);
  panelWindows.first()->showMinimized();
  openPanel(1);
  EXPECT_FALSE(panelWindows.first()->isMinimized());
}

TEST_F(FrmPanelTest, EveryControlHasANameAndAToolTip) {
  FrmPanel* window = openPanel();
  for (int n = 0; n < 4; ++n) {
    EXPECT_FALSE(lamp(window, n)->accessibleName().isEmpty());
    EXPECT_FALSE(lamp(window, n)->toolTip().isEmpty());
    EXPECT_NE(cmdSwitch(window, n)->focusPolicy() & Qt::TabFocus, 0);
    EXPECT_FALSE(cmdSwitch(window, n)->toolTip().isEmpty());
  }
  for (const char* name : {"labNm", "Label1"}) EXPECT_FALSE(textOf(window, name).isEmpty()) << name;
}

}  // namespace
}  // namespace lokari
