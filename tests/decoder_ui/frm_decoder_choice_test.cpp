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

}  // namespace
}  // namespace lokari
