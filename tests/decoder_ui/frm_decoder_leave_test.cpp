// The ways out of the decoder window, and out of a cell of its grid.
#include <QLineEdit>

#include "window_fixture.h"

namespace lokari {
namespace {

class FrmDecoderLeave : public test::WindowFixture {
 protected:
  FrmDecoderLeave() { describe("SPEEDTABLE=N\nCV_3=Beschleunigung,0-255,5\n"); }

  void typeTime(const char* text) { type(field("txtDcComAccTime"), QString::fromLatin1(text)); }
  char storedTime() const { return record.recCvValues[0].at(2); }
};

TEST_F(FrmDecoderLeave, AbbruchEscAndTheCloseBoxAskBeforeTypedValuesAreLost) {
  EXPECT_FALSE(edit([&] {
    typeTime("7");
    click("cmdCancel");
    EXPECT_TRUE(window.isVisible());
    EXPECT_EQ(prompt.asked.size(), 1);
    QTest::keyClick(field("txtDcComAccTime"), Qt::Key_Escape);
    EXPECT_TRUE(window.isVisible());
    EXPECT_EQ(prompt.asked.size(), 2);
    window.close();
    EXPECT_TRUE(window.isVisible());
    EXPECT_EQ(prompt.asked.size(), 3);
    EXPECT_EQ(field("txtDcComAccTime")->text(), QStringLiteral("7")) << "still in hand";
  }));
  EXPECT_EQ(storedTime(), 0);
}

TEST_F(FrmDecoderLeave, VerwerfenClosesAndLeavesTheRecord) {
  EXPECT_FALSE(edit([&] {
    typeTime("7");
    prompt.choices = {0};
    click("cmdCancel");
    EXPECT_FALSE(window.isVisible());
  }));
  EXPECT_EQ(storedTime(), 0);
}

TEST_F(FrmDecoderLeave, SpeichernIsOk) {
  EXPECT_TRUE(edit([&] {
    typeTime("7");
    prompt.choices = {1};
    QTest::keyClick(field("txtDcComAccTime"), Qt::Key_Escape);
    EXPECT_FALSE(window.isVisible());
  }));
  EXPECT_EQ(storedTime(), 7);
}

TEST_F(FrmDecoderLeave, SpeichernWithAValueOutOfRangeStaysAtTheField) {
  setValue(4, 1);
  describe("SPEEDTABLE=N\nCV_3=Beschleunigung,0-255,5\nCV_4=Bremsen,0-63,5\n");
  edit([&] {
    typeTime("7");
    type(field("txtDcComDecTime"), QStringLiteral("64"));
    prompt.choices = {1};
    click("cmdCancel");
    EXPECT_TRUE(window.isVisible());
    EXPECT_TRUE(prompt.shown.contains(QStringLiteral("Eingabe außerhalb des Wertebereichs!")));
    EXPECT_TRUE(field("txtDcComDecTime")->hasFocus());
  });
}

TEST_F(FrmDecoderLeave, AWindowThatWasOnlyLookedAtClosesAtOnce) {
  EXPECT_FALSE(edit([&] {
    tabs()->setCurrentIndex(kGridTab);
    QTest::keyClick(grid(), Qt::Key_Escape);
    EXPECT_FALSE(window.isVisible());
  }));
  EXPECT_TRUE(prompt.asked.isEmpty());
}

TEST_F(FrmDecoderLeave, EscGivesUpTheCellWithItsValueAndItsMark) {
  setValue(3, 20, '1');
  edit([&] {
    tabs()->setCurrentIndex(kGridTab);
    bench.gridClicked(1, GridColumn::Value);
    QTest::keyClicks(field("tabText"), QStringLiteral("99"));
    QTest::keyClick(field("tabText"), Qt::Key_Escape);
    QCoreApplication::processEvents();
    EXPECT_FALSE(field("tabText")->isVisible());
    EXPECT_TRUE(window.isVisible());
    EXPECT_EQ(value(3), 20);
    EXPECT_EQ(bench.sets.mark(CvIndex(3)), CvMark::Verified);
    EXPECT_EQ(grid()->model()->index(0, 3).data().toString(), QStringLiteral("20"));
    EXPECT_TRUE(grid()->hasFocus());
    QTest::keyClick(grid(), Qt::Key_Escape);
    EXPECT_FALSE(window.isVisible()) << "nothing is left to lose";
  });
  EXPECT_TRUE(prompt.asked.isEmpty());
}

TEST_F(FrmDecoderLeave, TheWindowSaysWhoseDecoderItIs) {
  EXPECT_EQ(vehicleLine(QStringLiteral("BR 64"), QStringLiteral("64"), QStringLiteral("Anlage")),
            QStringLiteral("BR 64, Adresse 64, Sammlung Anlage"));
  EXPECT_EQ(vehicleLine({}, QStringLiteral("3"), {}),
            QStringLiteral("(ohne Namen), Adresse 3, Sammlung (keine)"));
  test::ActivationHook hook([&] {
    EXPECT_TRUE(label("lblVehicle")->isVisible());
    EXPECT_EQ(label("lblVehicle")->text(), QStringLiteral("BR <64>, Adresse 3"));
    window.reject();
  });
  window.installEventFilter(&hook);
  window.edit(record, QStringLiteral("3"), QStringLiteral("BR <64>, Adresse 3"));
}

TEST_F(FrmDecoderLeave, AFullSetNameTakesDeleteAndTypingOverASelection) {
  record.recCvName[0] = QStringLiteral("Sommerfe");
  edit([&] {
    QComboBox* sets = list("cbDcVer");
    sets->setFocus();
    sets->lineEdit()->setSelection(6, 2);
    QTest::keyClicks(sets, QStringLiteral("x"));
    EXPECT_EQ(sets->currentText(), QStringLiteral("Sommerx"));
    QTest::keyClicks(sets, QStringLiteral("yz"));
    EXPECT_EQ(sets->currentText(), QStringLiteral("Sommerxy")) << "the limit holds";
    sets->lineEdit()->setCursorPosition(0);
    QTest::keyClick(sets, Qt::Key_Delete);
    EXPECT_EQ(sets->currentText(), QStringLiteral("ommerxy"));
    sets->lineEdit()->setText(QStringLiteral("Sommerfe"));
    sets->lineEdit()->setCursorPosition(0);
    QTest::keyClick(sets, Qt::Key_Delete);
    EXPECT_EQ(sets->currentText(), QStringLiteral("ommerfe"));
  });
}

}  // namespace
}  // namespace lokari
