// Fields, options, sets and colours of the decoder window.
#include <QLineEdit>

#include "window_fixture.h"

namespace lokari {
namespace {

const QColor kBlue(0, 0, 255);
const QColor kRed(255, 0, 0);

class FrmDecoderFields : public test::WindowFixture {
 protected:
  FrmDecoderFields() { describe("CV_2=Anfahrspannung,0-63,3\nCV_3=Beschleunigung,0-255,5\n"); }
};

TEST_F(FrmDecoderFields, TheAddressHasTheFocusAndIsSelected) {
  edit(
      [&] {
        EXPECT_TRUE(field("dc_adr")->hasFocus());
        EXPECT_EQ(field("dc_adr")->selectedText(), QStringLiteral("1234"));
        EXPECT_EQ(label("labAdr")->text(), QStringLiteral("Adresse (1-10239):"));
      },
      QStringLiteral("1234"));
}

TEST_F(FrmDecoderFields, AVerifiedValueIsBlueAFailedOneRedAndATypedOneNormal) {
  setValue(2, 10, '1');
  setValue(3, 20, '2');
  edit([&] {
    EXPECT_EQ(test::textColourOf(field("txtDcDrvMinVolt")), kBlue);
    EXPECT_EQ(test::textColourOf(field("txtDcComAccTime")), kRed);
    type(field("txtDcComAccTime"), QStringLiteral("21"));
    EXPECT_EQ(test::textColourOf(field("txtDcComAccTime")),
              QApplication::palette().color(QPalette::Active, QPalette::Text));
    leave(field("txtDcComAccTime"));
    EXPECT_EQ(value(3), 21);
  });
}

TEST_F(FrmDecoderFields, AFieldWithoutADescriptionIsDisabledAndShowsZero) {
  setValue(4, 7);
  edit([&] {
    EXPECT_FALSE(field("txtDcComDecTime")->isEnabled());
    EXPECT_EQ(field("txtDcComDecTime")->text(), QStringLiteral("0"));
    EXPECT_FALSE(button("chkRd_4")->isEnabled());
    EXPECT_TRUE(field("txtDcComAccTime")->isEnabled());
    EXPECT_EQ(label("labDcComAccTime")->text(), QStringLiteral("Beschleunigung (0-255):"));
  });
}

TEST_F(FrmDecoderFields, AValueOutOfRangeComesBackSelectedAndTheOldOneStays) {
  setValue(2, 10);
  edit([&] {
    tabs()->setCurrentIndex(1);
    type(field("txtDcDrvMinVolt"), QStringLiteral("64"));
    leave(field("txtDcDrvMinVolt"));
    EXPECT_EQ(prompt.shown, QStringList{QStringLiteral("Eingabe außerhalb des Wertebereichs!")});
    EXPECT_TRUE(field("txtDcDrvMinVolt")->hasFocus());
    EXPECT_EQ(field("txtDcDrvMinVolt")->selectedText(), QStringLiteral("64"));
    EXPECT_EQ(value(2), 10);
  });
}

TEST_F(FrmDecoderFields, NothingIsDoneWithAnOutOfRangeValueInHand) {
  const bool success = edit([&] {
    tabs()->setCurrentIndex(1);
    type(field("txtDcDrvMinVolt"), QStringLiteral("64"));
    click("cmdOK");
    QCoreApplication::processEvents();
    EXPECT_TRUE(window.isVisible());
    EXPECT_EQ(prompt.shown.size(), 1);
    click("cmdDcRead");
    EXPECT_EQ(link.commJob, CommJob::None);
  });
  EXPECT_FALSE(success);
}

TEST_F(FrmDecoderFields, AValueInHandIsTakenWhenAMnemonicPressesOk) {
  edit([&] {
    tabs()->setCurrentIndex(1);
    type(field("txtDcDrvMinVolt"), QStringLiteral("63"));
    button("cmdOK")->click();
    EXPECT_EQ(value(2), 63);
  });
}

TEST_F(FrmDecoderFields, CancelWorksWithAnOutOfRangeValueInHand) {
  const QByteArray before = record.recCvValues[0];
  EXPECT_FALSE(edit([&] {
    tabs()->setCurrentIndex(1);
    type(field("txtDcDrvMinVolt"), QStringLiteral("64"));
    click("cmdCancel");
    EXPECT_FALSE(window.isVisible());
  }));
  EXPECT_TRUE(prompt.shown.isEmpty());
  EXPECT_EQ(record.recCvValues[0], before);
}

TEST_F(FrmDecoderFields, TextThatIsNoNumberStaysWithoutAMessageAndChangesNothing) {
  setValue(3, 20);
  edit([&] {
    type(field("txtDcComAccTime"), QStringLiteral("abc"));
    leave(field("txtDcComAccTime"));
    EXPECT_EQ(field("txtDcComAccTime")->text(), QStringLiteral("abc"));
    EXPECT_EQ(value(3), 20);
    EXPECT_TRUE(prompt.shown.isEmpty());
  });
}

// ---- Texts that are not taken -----------------------------------------------------------------

QColor groundOf(const QWidget* control) {
  return control->palette().color(QPalette::Active, QPalette::Base);
}
const QColor kAmber(0xFF, 0xF3, 0xCD);

TEST_F(FrmDecoderFields, ATextThatWasNotUnderstoodLooksNotTakenAndTheValueThatHoldsStandsBeside) {
  setValue(3, 20);
  edit([&] {
    ValueEdit* time = field("txtDcComAccTime");
    const QLabel* holds = label("holds_txtDcComAccTime");
    const QColor plain = groundOf(time);
    for (const char* text : {"0x10", "1 2", "abc"}) {
      type(time, QString::fromLatin1(text));
      leave(time);
      EXPECT_EQ(time->text(), QString::fromLatin1(text));
      EXPECT_EQ(groundOf(time), kAmber) << text;
      EXPECT_TRUE(holds->isVisible());
      EXPECT_EQ(holds->text(), QStringLiteral("gilt 20"));
      EXPECT_EQ(time->accessibleDescription(), QStringLiteral("nicht übernommen, es gilt 20"));
      EXPECT_EQ(value(3), 20);
    }
    type(time, QStringLiteral("21"));
    EXPECT_EQ(groundOf(time), plain);
    EXPECT_FALSE(holds->isVisible());
    leave(time);
    EXPECT_EQ(value(3), 21);
  });
}

TEST_F(FrmDecoderFields, ANumberThatIsRoundedShowsWhatWasTaken) {
  setValue(3, 20);
  edit([&] {
    ValueEdit* time = field("txtDcComAccTime");
    type(time, QStringLiteral("12,5"));
    EXPECT_EQ(label("holds_txtDcComAccTime")->text(), QStringLiteral("gilt 20")) << "not left yet";
    leave(time);
    EXPECT_EQ(time->text(), QStringLiteral("12,5"));
    EXPECT_EQ(value(3), 12);
    EXPECT_EQ(groundOf(time), kAmber);
    EXPECT_EQ(label("holds_txtDcComAccTime")->text(), QStringLiteral("gilt 12"));
    tabs()->setCurrentIndex(1);
    EXPECT_EQ(time->text(), QStringLiteral("12"));
  });
}

TEST_F(FrmDecoderFields, AnotherPageLetsATextGiveWayToTheValue) {
  setValue(3, 20);
  edit([&] {
    ValueEdit* time = field("txtDcComAccTime");
    type(time, QStringLiteral("0x10"));
    tabs()->setCurrentIndex(1);
    QCoreApplication::processEvents();
    tabs()->setCurrentIndex(0);
    EXPECT_EQ(time->text(), QStringLiteral("20"));
    EXPECT_NE(groundOf(time), kAmber);
    EXPECT_FALSE(label("holds_txtDcComAccTime")->isVisible());
    EXPECT_EQ(value(3), 20);
  });
}

TEST_F(FrmDecoderFields, AnotherPageTakesANumberThatWasTypedAndNotLeft) {
  setValue(3, 20);
  edit([&] {
    type(field("txtDcComAccTime"), QStringLiteral("30,4"));
    click(tabs()->tabBar());
    tabs()->setCurrentIndex(1);
    QCoreApplication::processEvents();
    EXPECT_EQ(value(3), 30);
  });
}

TEST_F(FrmDecoderFields, AJobStartsWithTheValuesThatHold) {
  setValue(3, 20);
  edit([&] {
    type(field("txtDcComAccTime"), QStringLiteral("1 2"));
    type(field("dc_adr"), QStringLiteral("x"));
    QString time;
    QString address;
    QObject::connect(&bench, &DecoderBench::jobRequested, &window, [&] {
      time = field("txtDcComAccTime")->text();
      address = field("dc_adr")->text();
    });
    click("cmdDcRead");
    EXPECT_EQ(time, QStringLiteral("20"));
    EXPECT_EQ(address, QStringLiteral("3"));
  });
}

TEST_F(FrmDecoderFields, OkHandsOverTheAddressThatHolds) {
  edit([&] {
    type(field("dc_adr"), QStringLiteral("64.5"));
    EXPECT_EQ(groundOf(field("dc_adr")), kAmber);
    EXPECT_EQ(label("holds_dc_adr")->text(), QStringLiteral("gilt 64"));
    type(field("dc_adr"), QStringLiteral("1e2"));
    EXPECT_EQ(label("holds_dc_adr")->text(), QStringLiteral("gilt 100"));
    type(field("dc_adr"), QStringLiteral("neu"));
    EXPECT_EQ(label("holds_dc_adr")->text(), QStringLiteral("gilt 3"));
    click("cmdOK");
    EXPECT_FALSE(window.isVisible());
  });
  EXPECT_EQ(bench.controls.at(QStringLiteral("dc_adr")).text, QStringLiteral("3"));
}

TEST_F(FrmDecoderFields, ARowOfAPageShowsTheValueThatHoldsAsWell) {
  describe("CV_52=Zeile,0-255,0,3\n");
  setValue(52, 9);
  edit([&] {
    tabs()->setCurrentIndex(2);
    type(field("txtFunc_1"), QStringLiteral("0x9"));
    leave(field("txtFunc_1"));
    EXPECT_EQ(groundOf(field("txtFunc_1")), kAmber);
    EXPECT_EQ(label("holds_txtFunc_1")->text(), QStringLiteral("gilt 9"));
    tabs()->setCurrentIndex(0);
    EXPECT_EQ(field("txtFunc_1")->text(), QStringLiteral("9"));
  });
}

TEST_F(FrmDecoderFields, AnEmptyFieldIsTakenAsItAlwaysWas) {
  setValue(3, 20);
  edit([&] {
    ValueEdit* time = field("txtDcComAccTime");
    type(time, QStringLiteral("7"));
    QTest::keyClick(time, Qt::Key_Backspace);
    EXPECT_NE(groundOf(time), kAmber);
    leave(time);
    EXPECT_EQ(value(3), 0);
  });
}

TEST_F(FrmDecoderFields, AnOptionSetsItsBitAndItsTwin) {
  edit([&] {
    click("optDcComDirReverse");
    EXPECT_EQ(value(29), 1);
    click("optDcComSteps28");
    EXPECT_EQ(value(29), 3);
    EXPECT_TRUE(button("optDcDrvSteps28")->isChecked());
    tabs()->setCurrentIndex(1);
    click("optDcDrvSteps14");
    EXPECT_EQ(value(29), 1);
    EXPECT_TRUE(button("optDcComSteps14")->isChecked());
    EXPECT_FALSE(button("optDcComSteps28")->isChecked());
  });
}

TEST_F(FrmDecoderFields, OptionsShowTheStoredBitsInTheColourOfTheirMark) {
  setValue(29, 2 | 4, '1');
  edit([&] {
    EXPECT_TRUE(button("optDcComDirNormal")->isChecked());
    EXPECT_TRUE(button("optDcComSteps28")->isChecked());
    EXPECT_TRUE(button("optDcComAnalogYes")->isChecked());
    EXPECT_EQ(button("optDcComAnalogYes")->palette().color(QPalette::Active, QPalette::WindowText),
              kBlue);
    click("optDcComAnalogNo");
    EXPECT_NE(button("optDcComAnalogYes")->palette().color(QPalette::Active, QPalette::WindowText),
              kBlue);
  });
}

TEST_F(FrmDecoderFields, OptionGroupsThatTheDecoderLacksAreHidden) {
  edit([&] {
    EXPECT_FALSE(button("optDcComRailComYes")->isVisible());
    EXPECT_FALSE(label("labDcComRailCom")->isVisible());
    EXPECT_FALSE(button("optDcComDetectPulseYes")->isVisible());
    EXPECT_TRUE(button("optDcComAnalogYes")->isVisible());
  });
}

TEST_F(FrmDecoderFields, TheBoxesOfCv29AreTwins) {
  edit([&] {
    click("chkRd_29");
    EXPECT_TRUE(button("chkDrvRd_29")->isChecked());
    tabs()->setCurrentIndex(1);
    click("chkDrvWrt_29");
    EXPECT_TRUE(button("chkWrt_29")->isChecked());
  });
}

TEST_F(FrmDecoderFields, TheConsistFieldKeepsItsDirectionBit) {
  setValue(19, 128 + 5);
  edit([&] {
    EXPECT_EQ(field("txtDcComConsist")->text(), QStringLiteral("5"));
    EXPECT_TRUE(button("optDcConsistDirReverse")->isChecked());
    type(field("txtDcComConsist"), QStringLiteral("9"));
    leave(field("txtDcComConsist"));
    EXPECT_EQ(value(19), 128 + 9);
    click("optDcConsistDirNormal");
    EXPECT_EQ(value(19), 9);
  });
}

TEST_F(FrmDecoderFields, AnotherSetShowsItsOwnValues) {
  setValue(3, 11);
  setValue(3, 22, '1', 1);
  record.recCvName[1] = QStringLiteral("Winter");
  edit([&] {
    EXPECT_EQ(list("cbDcVer")->currentText(), QStringLiteral("Set 1"));
    EXPECT_EQ(field("txtDcComAccTime")->text(), QStringLiteral("11"));
    list("cbDcVer")->setFocus();
    QTest::keyClick(list("cbDcVer"), Qt::Key_Down);
    EXPECT_EQ(list("cbDcVer")->currentText(), QStringLiteral("Winter"));
    EXPECT_EQ(field("txtDcComAccTime")->text(), QStringLiteral("22"));
    EXPECT_EQ(test::textColourOf(field("txtDcComAccTime")), kBlue);
  });
}

TEST_F(FrmDecoderFields, ASetNameTakesEightCharactersByKeysAndByPasting) {
  edit([&] {
    QComboBox* sets = list("cbDcVer");
    sets->setFocus();
    sets->lineEdit()->selectAll();
    QTest::keyClick(sets, Qt::Key_Delete);
    QTest::keyClicks(sets, QStringLiteral("Sommerfest"));
    EXPECT_EQ(sets->currentText(), QStringLiteral("Sommerfe"));
    sets->lineEdit()->selectAll();
    sets->lineEdit()->insert(QStringLiteral("Langer Name"));
    EXPECT_EQ(sets->currentText(), QStringLiteral("Langer N"));
    QTest::keyClick(sets, Qt::Key_Tab);
    QCoreApplication::processEvents();
    EXPECT_EQ(bench.sets.setNames(SetNumber(1)), QStringLiteral("Langer N"));
    EXPECT_EQ(sets->itemText(0), QStringLiteral("Langer N"));
  });
}

TEST_F(FrmDecoderFields, ALongerStoredSetNameIsShownWhole) {
  record.recCvName[0] = QStringLiteral("Neunstell");
  edit([&] {
    EXPECT_EQ(list("cbDcVer")->currentText(), QStringLiteral("Neunstell"));
    list("cbDcVer")->setFocus();
    QTest::keyClicks(list("cbDcVer"), QStringLiteral("x"));
    EXPECT_EQ(list("cbDcVer")->currentText(), QStringLiteral("Neunstell"));
  });
}

TEST_F(FrmDecoderFields, TheWheelAboveAListChangesNothing) {
  edit([&] {
    QComboBox* sets = list("cbDcVer");
    QWheelEvent turn(QPointF(5, 5), sets->mapToGlobal(QPointF(5, 5)), QPoint(), QPoint(0, -120),
                     Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(sets, &turn);
    EXPECT_EQ(sets->currentText(), QStringLiteral("Set 1"));
  });
}

}  // namespace
}  // namespace lokari
