// The dialogs for bits and function mapping.
#include "decoder/ui/dlg_bit.h"

#include <QCheckBox>
#include <QGroupBox>
#include <QLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>

#include "decoder/ui/dlg_func_map.h"
#include "dialog_script.h"
#include "window_fixture.h"

namespace lokari {
namespace {

using test::in;
using test::inDialog;

QString caption() {
  return QStringLiteral("Detaileingabe CV 52");
}

TEST(DlgBit, ShowsOptionsInFramesAndNumbersInBoxes) {
  const DlgBit dlgBit(5, QStringLiteral("1,Licht,Aus,Ein|2,Art,A,B,C,D|3,Stufe"), caption());
  EXPECT_EQ(dlgBit.objectName(), "dlgBit");
  EXPECT_EQ(dlgBit.windowTitle(), "Detaileingabe CV 52");
  EXPECT_EQ(in<QGroupBox>(dlgBit, "bitFrm_1")->title(), "Licht");
  EXPECT_EQ(in<QGroupBox>(dlgBit, "bitFrm_2")->title(), "Art");
  EXPECT_EQ(in<QRadioButton>(dlgBit, "bitOpt_2")->text(), "Ein");
  EXPECT_TRUE(in<QRadioButton>(dlgBit, "bitOpt_2")->isChecked());
  EXPECT_EQ(in<QRadioButton>(dlgBit, "bitOpt_5")->text(), "C");
  EXPECT_TRUE(in<QRadioButton>(dlgBit, "bitOpt_5")->isChecked());
  EXPECT_EQ(in<QLabel>(dlgBit, "bitLab_1")->text(), "Stufe (0-7):");
  EXPECT_EQ(in<QLineEdit>(dlgBit, "bitTxt_1")->text(), "0");
}

TEST(DlgBit, OkSumsTheEntriesUp) {
  DlgBit dlgBit(5, QStringLiteral("1,Licht,Aus,Ein|2,Art,A,B,C,D|3,Stufe"), caption());
  in<QRadioButton>(dlgBit, "bitOpt_1")->click();
  in<QRadioButton>(dlgBit, "bitOpt_6")->click();
  in<QLineEdit>(dlgBit, "bitTxt_1")->setText(QStringLiteral("4"));
  in<QPushButton>(dlgBit, "cmdOK")->click();
  EXPECT_EQ(dlgBit.result(), QDialog::Accepted);
  EXPECT_EQ(dlgBit.value(), 0 + 3 * 2 + 4 * 8);
}

TEST(DlgBit, ARefusedNumberKeepsTheDialogOpenAndGetsTheFocus) {
  DlgBit dlgBit(0, QStringLiteral("3,Stufe|3,Zeit"), caption());
  dlgBit.show();
  auto* bitTxt = in<QLineEdit>(dlgBit, "bitTxt_2");
  for (const char* text : {"8", "", "99999"}) {
    bitTxt->setText(QString::fromLatin1(text));
    in<QLineEdit>(dlgBit, "bitTxt_1")->setFocus();
    in<QPushButton>(dlgBit, "cmdOK")->click();
    EXPECT_TRUE(dlgBit.isVisible()) << text;
    EXPECT_EQ(dlgBit.focusWidget(), bitTxt) << text;
    EXPECT_EQ(bitTxt->selectedText(), QString::fromLatin1(text));
  }
  bitTxt->setText(QStringLiteral("7"));
  in<QPushButton>(dlgBit, "cmdOK")->click();
  EXPECT_EQ(dlgBit.value(), 56);
}

TEST(DlgBit, AValueWithoutANameWantsAChoice) {
  DlgBit dlgBit(3, QStringLiteral("2,Art,A,B,C"), caption());
  dlgBit.show();
  for (const char* name : {"bitOpt_1", "bitOpt_2", "bitOpt_3"})
    EXPECT_FALSE(in<QRadioButton>(dlgBit, name)->isChecked());
  in<QPushButton>(dlgBit, "cmdOK")->click();
  EXPECT_TRUE(dlgBit.isVisible());
  EXPECT_EQ(dlgBit.focusWidget(), in<QRadioButton>(dlgBit, "bitOpt_1"));
}

TEST(DlgBit, AGroupWithoutAFittingChoiceSaysWhatItWaitsFor) {
  DlgBit dlgBit(3, QStringLiteral("2,Art,A,B,C"), caption());
  dlgBit.show();
  const auto* hint = in<QLabel>(dlgBit, "bitHint_1");
  EXPECT_EQ(hint->text(), "Zum Wert 3 passt keine Auswahl: bitte eine treffen.");
  in<QPushButton>(dlgBit, "cmdOK")->click();
  EXPECT_EQ(in<QLabel>(dlgBit, "lblNote")->text(), "Art: bitte eine Auswahl treffen.");
  in<QRadioButton>(dlgBit, "bitOpt_2")->click();
  EXPECT_EQ(hint->text(), "");
  EXPECT_EQ(in<QLabel>(dlgBit, "lblNote")->text(), "");
}

TEST(DlgBit, ADigitThatTheBoxCannotHoldSaysWhatItWaitsFor) {
  DlgBit dlgBit(137, QStringLiteral("#,Einer|#,Zehner"), caption());
  dlgBit.show();
  const auto* hint = in<QLabel>(dlgBit, "bitHint_1");
  EXPECT_EQ(hint->text(), "13 geht hier nicht: bitte 0 bis 9 eingeben.");
  in<QPushButton>(dlgBit, "cmdOK")->click();
  EXPECT_TRUE(dlgBit.isVisible());
  EXPECT_EQ(in<QLabel>(dlgBit, "lblNote")->text(), "Zehner: bitte 0 bis 9 eingeben.");
  in<QLineEdit>(dlgBit, "bitTxt_2")->setText(QStringLiteral("3"));
  EXPECT_EQ(hint->text(), "");
}

TEST(DlgBit, OkWithoutAChangeKeepsTheBitsThatTheTextPassesOver) {
  DlgBit dlgBit(15, QStringLiteral("1,Licht,Aus,Ein|1,Dimmen,Nein,Ja"), caption());
  in<QPushButton>(dlgBit, "cmdOK")->click();
  EXPECT_EQ(dlgBit.result(), QDialog::Accepted);
  EXPECT_EQ(dlgBit.value(), 15);
}

TEST(DlgBit, AChangeThatClearsBitsSaysSoBesideOk) {
  DlgBit dlgBit(15, QStringLiteral("1,Licht,Aus,Ein|1,Dimmen,Nein,Ja"), caption());
  const auto* note = in<QLabel>(dlgBit, "lblNote");
  EXPECT_EQ(note->text(), "");
  in<QRadioButton>(dlgBit, "bitOpt_1")->click();
  EXPECT_EQ(note->text(), "OK löscht auch, was hier nicht steht: Bit 2, 3 (Wert 12).");
  in<QRadioButton>(dlgBit, "bitOpt_2")->click();
  EXPECT_EQ(note->text(), "") << "as it was: nothing is lost";
  in<QRadioButton>(dlgBit, "bitOpt_1")->click();
  in<QPushButton>(dlgBit, "cmdOK")->click();
  EXPECT_EQ(dlgBit.value(), 2);
}

TEST(DlgBit, AChangedDigitThatDropsTheOthersSaysSoBesideOk) {
  DlgBit dlgBit(137, QStringLiteral("#,Einer"), caption());
  in<QLineEdit>(dlgBit, "bitTxt_1")->setText(QStringLiteral("8"));
  EXPECT_EQ(in<QLabel>(dlgBit, "lblNote")->text(), "OK löscht auch, was hier nicht steht: 130.");
}

TEST(DlgBit, ATextThatNamesEveryBitNeedsNoNote) {
  DlgBit dlgBit(255, QStringLiteral("1,Licht,Aus,Ein|7,Rest"), caption());
  in<QRadioButton>(dlgBit, "bitOpt_1")->click();
  EXPECT_EQ(in<QLabel>(dlgBit, "lblNote")->text(), "");
}

TEST(DlgBit, ADescriptionWithoutControlsCannotBeAccepted) {
  const DlgBit dlgBit(77, QStringLiteral("8"), caption());
  EXPECT_FALSE(in<QPushButton>(dlgBit, "cmdOK")->isEnabled());
  EXPECT_TRUE(in<QPushButton>(dlgBit, "cmdCancel")->isEnabled());
}

TEST(DlgBit, ElevenRowsStandInOneColumnAndTwelveInTwo) {
  const auto columns = [](int rows) {
    QStringList groups;
    for (int i = 0; i < rows; ++i) groups << QStringLiteral("0,Zahl");
    DlgBit dlgBit(0, groups.join(u'|'), caption());
    dlgBit.show();
    QSet<int> places;
    for (const QLineEdit* box : dlgBit.findChildren<QLineEdit*>())
      places << box->mapTo(&dlgBit, QPoint()).x();
    return places.size();
  };
  EXPECT_EQ(columns(11), 1);
  EXPECT_EQ(columns(12), 2);
  EXPECT_EQ(columns(40), 2);
}

TEST(DlgBit, NothingCutsItsTexts) {
  DlgBit dialog(0, QStringLiteral("3,Eine Zahl mit einem sehr langen Namen, der Platz braucht"),
                QStringLiteral("CV"));
  dialog.show();
  dialog.resize(1, 1);
  EXPECT_GE(dialog.width(), dialog.layout()->totalMinimumSize().width());
}

TEST(DlgBit, EveryControlOfTheKeyboardHasAnAccessibleName) {
  const DlgBit dlgBit(5, QStringLiteral("1,,Aus,Ein|2,Stufe"), caption());
  for (const QWidget* control : dlgBit.findChildren<QWidget*>()) {
    if (control->focusPolicy() == Qt::NoFocus || qobject_cast<const QPushButton*>(control))
      continue;
    EXPECT_FALSE(control->objectName().isEmpty());
    EXPECT_FALSE(control->accessibleName().isEmpty()) << control->objectName().toStdString();
  }
}

class BitWindow : public test::WindowFixture {};

TEST_F(BitWindow, ABitButtonEditsItsRow) {
  describe("CV_52=Bits,0-255,0,3,,\"1,Licht,Aus,Ein|2,Stufe\"\n");
  setValue(52, 5);
  edit([&] {
    tabs()->setCurrentIndex(2);
    inDialog("dlgBit", [&](QDialog& dlgBit) {
      EXPECT_EQ(dlgBit.windowTitle(), "Detaileingabe CV 52");
      EXPECT_EQ(in<QLineEdit>(dlgBit, "bitTxt_1")->text(), "2");
      in<QLineEdit>(dlgBit, "bitTxt_1")->setText(QStringLiteral("3"));
      in<QPushButton>(dlgBit, "cmdOK")->click();
    });
    button("bitFunc_1")->click();
    EXPECT_EQ(value(52), 7);
    EXPECT_EQ(field("txtFunc_1")->text(), "7");
  });
}

TEST_F(BitWindow, OkWithoutAChangeLeavesValueAndMark) {
  describe("SPEEDTABLE=N\nCV_52=Bits,0-255,0,3,,\"1,Licht,Aus,Ein|1,Dimmen,Nein,Ja\"\n");
  setValue(52, 15, '1');
  edit([&] {
    tabs()->setCurrentIndex(2);
    inDialog("dlgBit", [&](QDialog& dlgBit) { in<QPushButton>(dlgBit, "cmdOK")->click(); });
    button("bitFunc_1")->click();
    EXPECT_EQ(value(52), 15);
    EXPECT_EQ(bench.sets.mark(CvIndex(52)), CvMark::Verified);
  });
}

TEST_F(BitWindow, EscapeLeavesTheValue) {
  describe("CV_52=Bits,0-255,0,3,,\"3,Stufe\"\n");
  setValue(52, 5);
  edit([&] {
    tabs()->setCurrentIndex(2);
    inDialog("dlgBit", [&](QDialog& dlgBit) {
      in<QLineEdit>(dlgBit, "bitTxt_1")->setText(QStringLiteral("3"));
      QTest::keyClick(&dlgBit, Qt::Key_Escape);
    });
    button("bitFunc_1")->click();
    EXPECT_EQ(value(52), 5);
  });
}

TEST_F(BitWindow, AnAddressOverTwoCvsIsOneNumber) {
  describe("SPEEDTABLE=N\nCV_52=hoch,0-255,0,3,,A\nCV_53=tief,0-255,0,3\n");
  setValue(52, 192 + 3);
  setValue(53, 232);
  edit([&] {
    tabs()->setCurrentIndex(2);
    inDialog("dlgBit", [&](QDialog& dlgBit) {
      EXPECT_EQ(in<QLabel>(dlgBit, "bitLab_1")->text(), "Adresse (128-10239):");
      EXPECT_EQ(in<QLineEdit>(dlgBit, "bitTxt_1")->text(), "1000");
      in<QLineEdit>(dlgBit, "bitTxt_1")->setText(QStringLiteral("4711"));
      in<QPushButton>(dlgBit, "cmdOK")->click();
    });
    button("bitFunc_1")->click();
    EXPECT_EQ(value(52), 192 + 18);
    EXPECT_EQ(value(53), 103);
  });
}

// ---- Function mapping -------------------------------------------------------------------------

constexpr const char* kMapped =
    "FUNCMAP=J\nFUNCTIONS=6\nFUNCCOUNT=4\nFUNCSHIFT=3\n"
    "CV_33=a,0-255,1,3\nCV_34=b,0-255,2,3\nCV_35=c,0-15,2,3\nCV_37=d,0-255,2,3\n";

TEST_F(BitWindow, TheMatrixSetsTheFunctionCvs) {
  describe(kMapped);
  setValue(33, 1);
  setValue(37, 2);
  edit([&] {
    tabs()->setCurrentIndex(2);
    inDialog("dlgFuncMap", [&](QDialog& dlgFuncMap) {
      EXPECT_EQ(in<QLabel>(dlgFuncMap, "Label_func_0")->text(), QStringLiteral("F0 vorwärts"));
      EXPECT_EQ(in<QLabel>(dlgFuncMap, "Label_func_6")->text(), "F5");
      EXPECT_EQ(dlgFuncMap.findChildren<QCheckBox*>().size(), 7 * 8);
      EXPECT_TRUE(in<QCheckBox>(dlgFuncMap, "chkMap_0")->isChecked());
      EXPECT_TRUE(in<QCheckBox>(dlgFuncMap, "chkMap_33")->isChecked());
      in<QCheckBox>(dlgFuncMap, "chkMap_0")->click();
      in<QCheckBox>(dlgFuncMap, "chkMap_7")->click();
      in<QCheckBox>(dlgFuncMap, "chkMap_17")->click();
      in<QPushButton>(dlgFuncMap, "cmdOK")->click();
    });
    button("cmdFuncMap")->click();
    EXPECT_EQ(value(33), 128);
    EXPECT_EQ(value(35), 2);
    EXPECT_EQ(value(37), 2);
    EXPECT_EQ(field("txtFunc_1")->text(), "128");
  });
}

TEST_F(BitWindow, CancellingTheMatrixLeavesTheCvs) {
  describe(kMapped);
  setValue(33, 1);
  edit([&] {
    tabs()->setCurrentIndex(2);
    inDialog("dlgFuncMap", [&](QDialog& dlgFuncMap) {
      in<QCheckBox>(dlgFuncMap, "chkMap_0")->click();
      in<QPushButton>(dlgFuncMap, "cmdCancel")->click();
    });
    button("cmdFuncMap")->click();
    EXPECT_EQ(value(33), 1);
  });
}

TEST_F(BitWindow, ShiftedKeysStandBelowTheirOutputs) {
  describe(kMapped);
  edit([&] {
    tabs()->setCurrentIndex(2);
    inDialog("dlgFuncMap", [&](QDialog& dlgFuncMap) {
      const auto left = [&](const char* name) {
        return in<QCheckBox>(dlgFuncMap, name)->geometry().center().x();
      };
      EXPECT_EQ(left("chkMap_8"), left("chkMap_0"));
      EXPECT_EQ(left("chkMap_32"), left("chkMap_3")) << "output 4";
      EXPECT_EQ(in<QCheckBox>(dlgFuncMap, "chkMap_32")->accessibleName(), "F3, Ausgang 4");
    });
    button("cmdFuncMap")->click();
  });
}

TEST_F(BitWindow, TheArrowKeysGoFromBoxToBox) {
  describe(kMapped);
  edit([&] {
    tabs()->setCurrentIndex(2);
    inDialog("dlgFuncMap", [&](QDialog& dlgFuncMap) {
      const auto press = [&](Qt::Key key) { QTest::keyClick(dlgFuncMap.focusWidget(), key); };
      const auto at = [&] { return dlgFuncMap.focusWidget()->objectName(); };
      EXPECT_EQ(at(), "chkMap_0");
      press(Qt::Key_Right);
      press(Qt::Key_Down);
      EXPECT_EQ(at(), "chkMap_9");
      press(Qt::Key_Up);
      press(Qt::Key_Up);
      EXPECT_EQ(at(), "chkMap_1") << "and no further than the edge";
      for (int i = 0; i < 5; ++i) press(Qt::Key_Right);
      press(Qt::Key_Down);
      press(Qt::Key_Down);
      EXPECT_EQ(at(), "chkMap_30") << "past the box that the range of CV 35 forbids";
      press(Qt::Key_Down);
      EXPECT_EQ(at(), "chkMap_35");
    });
    button("cmdFuncMap")->click();
  });
}

}  // namespace
}  // namespace lokari
