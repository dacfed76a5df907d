// Choosing maker and decoder type in the window, with a catalogue and a description file of each
// type.
#include "choice_fixture.h"

namespace lokari {
namespace {

class FrmDecoderChoice : public test::ChoiceFixture {
 protected:
  FrmDecoderChoice() {
    describe("CV_33=Standard,0-255,9,3\n");
    describeType("Adler/Eins.dec", "CV_33=Erstes Licht,0-255,11,3\n");
    describeType("Adler/Zwei.dec", "CV_3=Beschleunigung,0-255,7\n" + cvLines(100, 25, 6));
    setValue(33, 44, '1');
    setValue(29, 1 + 4 + 16, '1');
  }
};

TEST_F(FrmDecoderChoice, OpeningShowsTheStoredTypeWithItsStoredValues) {
  edit([&] {
    EXPECT_EQ(list("cbDcManuf")->currentText(), QStringLiteral("Adler"));
    EXPECT_EQ(list("cbDcManuf")->count(), 2);
    EXPECT_EQ(list("cbDcDecoder")->currentText(), QStringLiteral("Eins"));
    tabs()->setCurrentIndex(2);
    EXPECT_EQ(label("labFunc_1")->text(), QStringLiteral("Erstes Licht (0-255):"));
    EXPECT_EQ(field("txtFunc_1")->text(), QStringLiteral("44"));
    EXPECT_EQ(test::textColourOf(field("txtFunc_1")), QColor(0, 0, 255));
    EXPECT_NE(window.cursor().shape(), Qt::WaitCursor);
  });
}

TEST_F(FrmDecoderChoice, AnotherTypeIsLoadedAfterTheListHasClosed) {
  edit([&] {
    tabs()->setCurrentIndex(2);
    list("cbDcDecoder")->setFocus();
    QTest::keyClick(list("cbDcDecoder"), Qt::Key_Down);
    QTest::keyClick(list("cbDcDecoder"), Qt::Key_Return);
    EXPECT_EQ(tabs()->currentIndex(), 0);
    EXPECT_FALSE(tabs()->isEnabled());
    EXPECT_EQ(window.cursor().shape(), Qt::WaitCursor);
    clock.advance(100);
    EXPECT_TRUE(tabs()->isEnabled());
    EXPECT_NE(window.cursor().shape(), Qt::WaitCursor);
    EXPECT_FALSE(tabs()->isTabVisible(2));
    EXPECT_TRUE(tabs()->isTabVisible(5));
    EXPECT_EQ(tabs()->tabText(6), QStringLiteral("Sound 2"));
    EXPECT_EQ(field("txtDcComAccTime")->text(), QStringLiteral("7"));
    EXPECT_EQ(window.findChild<ValueEdit*>(QStringLiteral("txtFunc_1")), nullptr);
  });
}

TEST_F(FrmDecoderChoice, AnotherTypeResetsTheOptionsToNoNormalAnd28Steps) {
  edit([&] {
    EXPECT_TRUE(button("optDcComDirReverse")->isChecked());
    EXPECT_TRUE(button("optDcComAnalogYes")->isChecked());
    choose("cbDcDecoder", QStringLiteral("Zwei"));
    EXPECT_TRUE(button("optDcComDirNormal")->isChecked());
    EXPECT_TRUE(button("optDcComAnalogNo")->isChecked());
    EXPECT_TRUE(button("optDcComSpdTblNo")->isChecked());
    EXPECT_TRUE(button("optDcComSteps28")->isChecked());
    EXPECT_TRUE(button("optDcDrvSteps28")->isChecked());
  });
}

TEST_F(FrmDecoderChoice, AMakerWithoutTypesShowsDefaultAndItsDescription) {
  EXPECT_TRUE(edit([&] {
    choose("cbDcManuf", QStringLiteral("Kessler"));
    EXPECT_EQ(list("cbDcManuf")->currentText(), QStringLiteral("Kessler"));
    EXPECT_EQ(list("cbDcDecoder")->currentText(), QStringLiteral("Default"));
    tabs()->setCurrentIndex(2);
    EXPECT_EQ(label("labFunc_1")->text(), QStringLiteral("Standard (0-255):"));
    EXPECT_EQ(field("txtFunc_1")->text(), QStringLiteral("9"));
    click("cmdOK");
  }));
  EXPECT_EQ(record.recManuf, 60);
  EXPECT_EQ(record.recDecoder, QStringLiteral("Default"));
}

TEST_F(FrmDecoderChoice, ARefusedValueKeepsTheDecoderTypeInTheList) {
  describeType("Adler/Eins.dec", "CV_3=Beschleunigung,0-9,1\n");
  edit([&] {
    type(field("txtDcComAccTime"), QStringLiteral("10"));
    list("cbDcDecoder")->setFocus();
    QTest::keyClick(list("cbDcDecoder"), Qt::Key_Down);
    QTest::keyClick(list("cbDcDecoder"), Qt::Key_Return);
    EXPECT_EQ(prompt.shown.size(), 1);
    EXPECT_EQ(list("cbDcDecoder")->currentText(), QStringLiteral("Eins"));
    EXPECT_EQ(field("txtDcComAccTime")->text(), QStringLiteral("10"));
    EXPECT_TRUE(field("txtDcComAccTime")->hasFocus());
  });
}

TEST_F(FrmDecoderChoice, AReadThatFindsAnotherMakerTakesItOverInTheLists) {
  sim::Decoder& decoder = layout.add({}).decoder;
  decoder.setAddress(3);
  decoder.store(8, 60);
  decoder.store(33, 5);
  prompt.answers = {Answer::Ok};
  edit([&] {
    tabs()->setCurrentIndex(2);
    click("chkFuncRd_1");
    click("cmdDcRead");
    EXPECT_EQ(prompt.shown,
              QStringList{QStringLiteral("Abweichender Decoderhersteller (Kessler)!")});
    EXPECT_EQ(list("cbDcManuf")->currentText(), QStringLiteral("Kessler"));
    EXPECT_EQ(list("cbDcDecoder")->currentText(), QStringLiteral("Default"));
    EXPECT_TRUE(tabs()->isEnabled());
  });
}

// ---- Choosing what is chosen, and looking at entries ------------------------------------------

TEST_F(FrmDecoderChoice, ChoosingTheSameTypeAgainChangesNothing) {
  edit([&] {
    tabs()->setCurrentIndex(2);
    click("chkFuncRd_1");
    choose("cbDcDecoder", QStringLiteral("Eins"));
    EXPECT_EQ(tabs()->currentIndex(), 2);
    EXPECT_EQ(field("txtFunc_1")->text(), QStringLiteral("44"));
    EXPECT_EQ(test::textColourOf(field("txtFunc_1")), QColor(0, 0, 255));
    EXPECT_TRUE(button("chkFuncRd_1")->isChecked());
    EXPECT_EQ(value(29), 1 + 4 + 16);
    EXPECT_TRUE(prompt.shown.isEmpty());
  });
}

TEST_F(FrmDecoderChoice, ChoosingTheSameMakerAgainKeepsTheTypeAndItsValues) {
  record.recDecoder = QStringLiteral("Zwei");
  setValue(3, 21, '1');
  edit([&] {
    choose("cbDcManuf", QStringLiteral("Adler"));
    EXPECT_EQ(list("cbDcDecoder")->currentText(), QStringLiteral("Zwei"));
    EXPECT_EQ(field("txtDcComAccTime")->text(), QStringLiteral("21"));
    EXPECT_TRUE(prompt.shown.isEmpty());
  });
}

TEST_F(FrmDecoderChoice, ArrowKeysOnTheClosedListChangeNothingUntilEnter) {
  edit([&] {
    QComboBox* types = list("cbDcDecoder");
    types->setFocus();
    QTest::keyClick(types, Qt::Key_Down);
    QTest::keyClick(types, Qt::Key_Down);
    clock.advance(1000);
    EXPECT_EQ(types->currentText(), QStringLiteral("Drei"));
    EXPECT_EQ(value(33), 44);
    EXPECT_TRUE(tabs()->isEnabled());
    QTest::keyClick(types, Qt::Key_Up);
    QTest::keyClick(types, Qt::Key_Return);
    clock.advance(100);
    EXPECT_TRUE(window.isVisible()) << "the key has not pressed a button as well";
    EXPECT_EQ(types->currentText(), QStringLiteral("Zwei"));
    EXPECT_EQ(value(3), 7);
  });
}

TEST_F(FrmDecoderChoice, LeavingTheListChoosesTheEntryOnShow) {
  edit([&] {
    list("cbDcDecoder")->setFocus();
    QTest::keyClick(list("cbDcDecoder"), Qt::Key_Down);
    QTest::keyClick(list("cbDcDecoder"), Qt::Key_Tab);
    QCoreApplication::processEvents();
    clock.advance(100);
    EXPECT_EQ(list("cbDcDecoder")->currentText(), QStringLiteral("Zwei"));
    EXPECT_EQ(value(3), 7);
  });
}

TEST_F(FrmDecoderChoice, EscapeBringsTheChosenEntryBackAndLeavesTheWindowOpen) {
  edit([&] {
    list("cbDcManuf")->setFocus();
    QTest::keyClick(list("cbDcManuf"), Qt::Key_Down);
    EXPECT_EQ(list("cbDcManuf")->currentText(), QStringLiteral("Kessler"));
    QTest::keyClick(list("cbDcManuf"), Qt::Key_Escape);
    EXPECT_TRUE(window.isVisible());
    QTest::keyClick(list("cbDcManuf"), Qt::Key_Tab);
    QCoreApplication::processEvents();
    clock.advance(100);
    EXPECT_EQ(list("cbDcManuf")->currentText(), QStringLiteral("Adler"));
    EXPECT_EQ(value(33), 44);
  });
}

TEST_F(FrmDecoderChoice, AJobStartedByItsMnemonicTakesTheEntryOnShowFirst) {
  edit([&] {
    click("cmdWriteAll");
    list("cbDcDecoder")->setFocus();
    QTest::keyClick(list("cbDcDecoder"), Qt::Key_Down);
    button("cmdDcProg")->click();  // the focus stays where it is
    EXPECT_EQ(value(3), 7);
    EXPECT_EQ(prompt.shown, QStringList({"Keine Daten zum Schreiben ausgewählt!"}));
  });
  EXPECT_TRUE(line.writes.isEmpty());
}

// ---- Values that only the window holds --------------------------------------------------------

TEST_F(FrmDecoderChoice, AnotherTypeAsksBeforeATypedValueGoes) {
  edit([&] {
    tabs()->setCurrentIndex(2);
    type(field("txtFunc_1"), QStringLiteral("45"));
    leave(field("txtFunc_1"));
    choose("cbDcDecoder", QStringLiteral("Zwei"));
    EXPECT_EQ(prompt.shown, QStringList({"Decodertyp wechseln?"}));
    EXPECT_TRUE(prompt.below.last().startsWith(QStringLiteral("Ein eingegebener")));
    EXPECT_EQ(list("cbDcDecoder")->currentText(), QStringLiteral("Eins")) << "Abbruch is safe";
    EXPECT_EQ(value(33), 45);
    EXPECT_TRUE(tabs()->isEnabled());
    prompt.answers = {Answer::Ok};
    choose("cbDcDecoder", QStringLiteral("Zwei"));
    EXPECT_EQ(value(3), 7);
    // What stands there now are the type's own values.
    choose("cbDcDecoder", QStringLiteral("Eins"));
    EXPECT_EQ(prompt.shown.size(), 2);
    EXPECT_EQ(value(33), 11);
  });
}

TEST_F(FrmDecoderChoice, AnotherMakerAsksBeforeAClickedOptionGoes) {
  edit([&] {
    click("optDcComAnalogNo");
    choose("cbDcManuf", QStringLiteral("Kessler"));
    EXPECT_EQ(prompt.shown, QStringList({"Decodertyp wechseln?"}));
    EXPECT_EQ(list("cbDcManuf")->currentText(), QStringLiteral("Adler"));
    EXPECT_EQ(list("cbDcDecoder")->currentText(), QStringLiteral("Eins"));
    EXPECT_EQ(value(29), 1 + 16);
  });
}

TEST_F(FrmDecoderChoice, AnotherTypeAsksBeforeAValueThatWasReadGoesAlsoWhenItIsTheStoredOne) {
  sim::Decoder& decoder = layout.add({}).decoder;
  decoder.setAddress(3);
  decoder.store(33, 44);
  settings.addressCheckNow = settings.manufacturerCheckNow = false;
  setValue(33, 44);
  edit([&] {
    tabs()->setCurrentIndex(2);
    click("chkFuncRd_1");
    click("cmdDcRead");
    choose("cbDcDecoder", QStringLiteral("Zwei"));
    EXPECT_EQ(prompt.shown, QStringList({"Decodertyp wechseln?"}));
    EXPECT_EQ(bench.sets.mark(CvIndex(33)), CvMark::Verified);
  });
}

TEST_F(FrmDecoderChoice, ATypeThatIsRefusedKeepsTheWindowOpenAtOk) {
  EXPECT_FALSE(edit([&] {
    tabs()->setCurrentIndex(2);
    type(field("txtFunc_1"), QStringLiteral("45"));
    leave(field("txtFunc_1"));
    list("cbDcDecoder")->setFocus();
    QTest::keyClick(list("cbDcDecoder"), Qt::Key_Down);
    click("cmdOK");
    EXPECT_TRUE(window.isVisible());
    EXPECT_EQ(prompt.shown, QStringList({"Decodertyp wechseln?"}));
    EXPECT_EQ(list("cbDcDecoder")->currentText(), QStringLiteral("Eins"));
  }));
}

TEST_F(FrmDecoderChoice, AJobNeverAsksAboutValuesThatWereTyped) {
  sim::Decoder& decoder = layout.add({}).decoder;
  decoder.setAddress(3);
  decoder.store(8, 60);
  prompt.answers = {Answer::Ok};
  edit([&] {
    tabs()->setCurrentIndex(2);
    type(field("txtFunc_1"), QStringLiteral("45"));
    click("chkFuncRd_1");
    click("cmdDcRead");
    EXPECT_FALSE(prompt.shown.contains(QStringLiteral("Decodertyp wechseln?")));
    EXPECT_EQ(list("cbDcManuf")->currentText(), QStringLiteral("Kessler"));
  });
}

}  // namespace
}  // namespace lokari
