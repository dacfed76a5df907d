// The cab under the keyboard.
#include "cab_fixture.h"

namespace lokari {
namespace {

class FrmCabKeys : public test::CabWindows {
 protected:
  void key(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
    QTest::keyClick(bar(window), key, modifiers);
  }

  FrmCab* window = openCab();
};

TEST_F(FrmCabKeys, DigitsUpTo7AreFunctions) {
  for (int n = 0; n <= 7; ++n) key(static_cast<Qt::Key>(Qt::Key_0 + n));
  QStringList expected;
  for (int n = 0; n <= 7; ++n) expected << QStringLiteral("F%1 ein").arg(n);
  EXPECT_EQ(sent(), expected);
  EXPECT_EQ(shownBy(window, "cmdFunc_7"), QStringLiteral("lmpon_n.bmp"));
}

TEST_F(FrmCabKeys, DigitsOfTheNumberPadAreTheSame) {
  key(Qt::Key_2, Qt::KeypadModifier);
  EXPECT_EQ(sent(), QStringList{QStringLiteral("F2 ein")});
}

TEST_F(FrmCabKeys, EightAndNineDoNothingAlthoughThereAreLamps) {
  key(Qt::Key_8);
  key(Qt::Key_9);
  EXPECT_EQ(sent(), QStringList());
  EXPECT_EQ(shownBy(window, "cmdFunc_8"), QStringLiteral("lmpoff_n.bmp"));
  EXPECT_EQ(shownBy(window, "cmdFunc_9"), QStringLiteral("lmpoff_n.bmp"));
}

TEST_F(FrmCabKeys, PlusAndMinusAreTheDirections) {
  key(Qt::Key_Minus, Qt::KeypadModifier);
  EXPECT_EQ(shownBy(window, "imgDirBackward"), QStringLiteral("arrdng_n.bmp"));
  key(Qt::Key_Plus, Qt::KeypadModifier);
  EXPECT_EQ(shownBy(window, "imgDirForward"), QStringLiteral("arrupg_n.bmp"));
  key(Qt::Key_Minus);
  key(Qt::Key_Plus);
  EXPECT_EQ(sent(), (QStringList{QStringLiteral("rückwärts"), QStringLiteral("vorwärts"),
                                 QStringLiteral("rückwärts"), QStringLiteral("vorwärts")}));
}

TEST_F(FrmCabKeys, MIsTheManualMode) {
  key(Qt::Key_M);
  key(Qt::Key_M, Qt::ShiftModifier);
  EXPECT_EQ(sent(), (QStringList{QStringLiteral("manuell"), QStringLiteral("automatisch")}));
}

TEST_F(FrmCabKeys, TheSpaceBarStopsAndGoes) {
  key(Qt::Key_Space);
  EXPECT_EQ(shownBy(window, "imgStop"), QStringLiteral("go_n.bmp"));
  key(Qt::Key_Space);
  EXPECT_EQ(shownBy(window, "imgStop"), QStringLiteral("stop_n.bmp"));
  EXPECT_EQ(sent(), (QStringList{QStringLiteral("Halt"), QStringLiteral("Los")}));
}

TEST_F(FrmCabKeys, AKeyHeldDownActsOnce) {
  for (int i = 0; i < 5; ++i) {
    QKeyEvent event(QEvent::KeyPress, Qt::Key_Space, {}, QStringLiteral(" "), i > 0);
    QApplication::sendEvent(bar(window), &event);
  }
  EXPECT_EQ(sent(), QStringList{QStringLiteral("Halt")});
}

TEST_F(FrmCabKeys, ArrowKeysDrive) {
  key(Qt::Key_Up);
  key(Qt::Key_Up);
  key(Qt::Key_Down);
  EXPECT_EQ(sent(), (QStringList{QStringLiteral("Stufe 1"), QStringLiteral("Stufe 2"),
                                 QStringLiteral("Stufe 1")}));
}

TEST_F(FrmCabKeys, ShortcutsOfTheProgramAreNoFunctions) {
  key(Qt::Key_1, Qt::ControlModifier);
  key(Qt::Key_M, Qt::AltModifier);
  EXPECT_EQ(sent(), QStringList());
}

TEST_F(FrmCabKeys, LampsAndArrowsWithTheFocusArePressedByEnter) {
  QTest::keyClick(picture(window, "cmdFunc_11"), Qt::Key_Return);
  QTest::keyClick(picture(window, "imgDirBackward"), Qt::Key_Enter);
  EXPECT_EQ(sent(), (QStringList{QStringLiteral("F11 ein"), QStringLiteral("rückwärts")}));
}

TEST_F(FrmCabKeys, TheSpaceBarIsTheStopWhateverHasTheFocus) {
  for (const char* name : {"cmdFunc_11", "imgDirBackward", "cmdOK", "vsbSpeed", "cbCV"}) {
    QTest::keyClick(control<QWidget>(window, name), Qt::Key_Space);
    EXPECT_EQ(sent(), QStringList{QStringLiteral("Halt")}) << name;
    QTest::keyClick(control<QWidget>(window, name), Qt::Key_Space);
    EXPECT_EQ(sent(), QStringList{QStringLiteral("Los")}) << name;
  }
  EXPECT_TRUE(window->isVisible());
}

TEST_F(FrmCabKeys, InATextFieldTheSpaceBarIsAnEmptyPlace) {
  auto* field = control<QLineEdit>(window, "dc_adr");
  QTest::keyClick(field, Qt::Key_Space);
  EXPECT_EQ(sent(), QStringList());
}

TEST_F(FrmCabKeys, TheCabSaysWhomHaltAndLosAreFor) {
  EXPECT_EQ(textOf(window, "labWhole"), QStringLiteral("„Halt“ hält die ganze Anlage an."));
  key(Qt::Key_Space);
  EXPECT_EQ(textOf(window, "labWhole"),
            QStringLiteral("„Los“ lässt alle Fahrzeuge mit ihrer Geschwindigkeit weiterfahren."));
}

}  // namespace
}  // namespace lokari
