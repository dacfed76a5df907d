// The calculator behind F2.
#include "decoder/ui/dlg_calc.h"

#include <QLineEdit>
#include <QPushButton>

#include "dialog_script.h"
#include "window_fixture.h"

namespace lokari {
namespace {

using test::in;
using test::inDialog;

class DlgCalcTest : public ::testing::Test {
 protected:
  void type(const char* box, const char* keys) {
    auto* edit = in<QLineEdit>(dlgCalc, box);
    edit->selectAll();
    QTest::keyClicks(edit, QString::fromLatin1(keys));
  }
  QString boxes() {
    return QStringList({in<QLineEdit>(dlgCalc, "txtBin")->text(),
                        in<QLineEdit>(dlgCalc, "txtDec")->text(),
                        in<QLineEdit>(dlgCalc, "txtHex")->text()})
        .join(u' ');
  }

  test::ScriptedPrompt prompt;
  DlgCalc dlgCalc{QStringLiteral("0"), prompt};
};

TEST_F(DlgCalcTest, TheThreeBoxesAreInStep) {
  EXPECT_EQ(boxes(), "00000000 0 00");
  type("txtDec", "171");
  EXPECT_EQ(boxes(), "10101011 171 AB");
  type("txtBin", "101");
  EXPECT_EQ(boxes(), "101 5 05");
  type("txtHex", "fe");
  EXPECT_EQ(boxes(), "11111110 254 FE");
}

TEST_F(DlgCalcTest, AKeyOtherThanADigitIsSwallowed) {
  type("txtDec", "1a-,2 ");
  EXPECT_EQ(boxes(), "00001100 12 0C");
  type("txtBin", "12301");
  EXPECT_EQ(boxes(), "101 5 05");
  type("txtHex", "gx1z");
  EXPECT_EQ(boxes(), "00000001 1 1");
  EXPECT_TRUE(prompt.shown.isEmpty());
}

TEST_F(DlgCalcTest, Decimal256IsToldAndSetBack) {
  type("txtDec", "256");
  EXPECT_EQ(prompt.shown, QStringList("Nur Eingaben von 0 bis 255 sind zulässig!"));
  EXPECT_EQ(boxes(), "00011001 25 19");
}

TEST_F(DlgCalcTest, TheNinthBinaryDigitIsSwallowed) {
  type("txtBin", "111111110");
  EXPECT_EQ(boxes(), "11111111 255 FF");
}

TEST_F(DlgCalcTest, AnEmptiedBoxGivesAnEmptyTextThatIsNotNull) {
  auto* txtDec = in<QLineEdit>(dlgCalc, "txtDec");
  txtDec->selectAll();
  QTest::keyClick(txtDec, Qt::Key_Backspace);
  EXPECT_EQ(boxes(), "  ");
  EXPECT_FALSE(dlgCalc.decimalText().isNull());
}

class CalcWindow : public test::WindowFixture {
 protected:
  /// What a desktop does when the dialog has closed.
  void comeBack() {
    window.activateWindow();
    QCoreApplication::processEvents();
  }
};

TEST_F(CalcWindow, F2PutsTheDecimalTextIntoTheField) {
  describe("CV_30=Dreissig,0-255,0,3\n");
  setValue(30, 10);
  edit([&] {
    tabs()->setCurrentIndex(2);
    field("txtFunc_1")->setFocus();
    inDialog("dlgCalc", [&](QDialog& dlgCalc) {
      EXPECT_TRUE(bench.calcOpen);
      EXPECT_EQ(in<QLineEdit>(dlgCalc, "txtHex")->text(), "0A");
      auto* txtBin = in<QLineEdit>(dlgCalc, "txtBin");
      txtBin->selectAll();
      QTest::keyClicks(txtBin, QStringLiteral("10000001"));
      in<QPushButton>(dlgCalc, "butOK")->click();
    });
    QTest::keyClick(field("txtFunc_1"), Qt::Key_F2);
    EXPECT_FALSE(bench.calcOpen);
    EXPECT_EQ(field("txtFunc_1")->text(), "129");
    comeBack();
    EXPECT_TRUE(field("txtFunc_1")->hasFocus());
    leave(field("txtFunc_1"));
    EXPECT_EQ(value(30), 129);
  });
}

TEST_F(CalcWindow, CancelLeavesTheFieldUncheckedMeanwhile) {
  describe("CV_30=Dreissig,0-20,0,3\n");
  edit([&] {
    tabs()->setCurrentIndex(2);
    type(field("txtFunc_1"), QStringLiteral("99"));
    inDialog("dlgCalc", [&](QDialog& dlgCalc) {
      QCoreApplication::processEvents();
      EXPECT_TRUE(prompt.shown.isEmpty()) << "a range is not checked while the dialog is open";
      in<QPushButton>(dlgCalc, "butCancel")->click();
    });
    QTest::keyClick(field("txtFunc_1"), Qt::Key_F2);
    EXPECT_EQ(field("txtFunc_1")->text(), "99");
  });
}

TEST_F(CalcWindow, F2WorksInTheGridToo) {
  describe("SPEEDTABLE=N\nCV_30=Dreissig,0-255,0\n");
  edit([&] {
    tabs()->setCurrentIndex(kGridTab);
    QCoreApplication::processEvents();
    bench.gridClicked(1, GridColumn::Value);
    auto* tabText = field("tabText");
    inDialog("dlgCalc", [&](QDialog& dlgCalc) {
      auto* txtHex = in<QLineEdit>(dlgCalc, "txtHex");
      txtHex->selectAll();
      QTest::keyClicks(txtHex, QStringLiteral("7f"));
      in<QPushButton>(dlgCalc, "butOK")->click();
    });
    QTest::keyClick(tabText, Qt::Key_F2);
    EXPECT_TRUE(tabText->isVisible());
    EXPECT_EQ(tabText->text(), "127");
    comeBack();
    EXPECT_TRUE(tabText->hasFocus());
    QTest::keyClick(tabText, Qt::Key_Return);
    QCoreApplication::processEvents();
    EXPECT_EQ(value(30), 127);
  });
}

}  // namespace
}  // namespace lokari
