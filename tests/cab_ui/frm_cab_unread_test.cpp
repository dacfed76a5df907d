// A cab that the station has told nothing.
#include "cab_fixture.h"

namespace lokari {
namespace {

class FrmCabUnread : public test::CabWindows {
 protected:
  FrmCab* openUnread() {
    station.answers = false;
    FrmCab* window = openCab();
    EXPECT_EQ(prompt.shown.count(QStringLiteral("Keine Daten von Digitalzentrale erhalten")), 1);
    sent();
    station.reads = 0;
    return window;
  }
  QAbstractButton* cmdReread(FrmCab* window) {
    return control<QAbstractButton>(window, "cmdReread");
  }
};

TEST_F(FrmCabUnread, SaysSoAndHasNeuLesen) {
  FrmCab* window = openUnread();
  EXPECT_EQ(textOf(window, "labNotice"),
            QStringLiteral("Die Zentrale hat den Stand des Fahrzeugs nicht gemeldet."));
  EXPECT_TRUE(cmdReread(window)->isVisible());
}

TEST_F(FrmCabUnread, NeuLesenShowsTheVehicleAsItIs) {
  FrmCab* window = openUnread();
  station.answers = true;
  station.vehicle.speed = 40;
  station.functions = 1U << 3;
  click(cmdReread(window));
  EXPECT_EQ(station.reads, 1);
  EXPECT_EQ(bar(window)->value(), 40);
  EXPECT_EQ(shownBy(window, "cmdFunc_3"), QStringLiteral("lmpon_n.bmp"));
  EXPECT_EQ(textOf(window, "labNotice"), QString());
  EXPECT_FALSE(cmdReread(window)->isVisible());
  EXPECT_EQ(sent(), QStringList());
  click(picture(window, "cmdFunc_5"));
  EXPECT_EQ(sent(), QStringList{QStringLiteral("F5 ein")});
}

TEST_F(FrmCabUnread, NeuLesenWithoutAnAnswerLeavesItAsItIs) {
  FrmCab* window = openUnread();
  click(cmdReread(window));
  EXPECT_EQ(station.reads, 1);
  EXPECT_EQ(prompt.beeps, 1);
  EXPECT_TRUE(cmdReread(window)->isVisible());
}

TEST_F(FrmCabUnread, DoesNotReadByItself) {
  FrmCab* window = openUnread();
  station.answers = true;
  clock.advance(60000);
  EXPECT_EQ(station.reads, 0);
  EXPECT_TRUE(cmdReread(window)->isVisible());
}

TEST_F(FrmCabUnread, TheFirstMoveOfTheBarReadsAndGoesOutOnWhatWasRead) {
  FrmCab* window = openUnread();
  station.answers = true;
  station.vehicle.speed = 40;
  station.vehicle.backward = true;
  station.functions = 1U << 3;
  QTest::keyClick(bar(window), Qt::Key_Up);
  EXPECT_EQ(station.reads, 1);
  EXPECT_EQ(sent(), QStringList{QStringLiteral("Stufe 1")});
  EXPECT_EQ(bar(window)->value(), 1);
  EXPECT_EQ(shownBy(window, "imgDirBackward"), QStringLiteral("arrdng_n.bmp"));
  EXPECT_EQ(shownBy(window, "cmdFunc_3"), QStringLiteral("lmpon_n.bmp"));
  EXPECT_FALSE(cmdReread(window)->isVisible());
}

TEST_F(FrmCabUnread, TheFirstPressOnADirectionReadsAndGoesOutOnWhatWasRead) {
  FrmCab* window = openUnread();
  station.answers = true;
  station.vehicle.speed = 40;
  QTest::keyClick(bar(window), Qt::Key_Minus);
  EXPECT_EQ(station.reads, 1);
  EXPECT_EQ(sent(), QStringList{QStringLiteral("rückwärts")});
  EXPECT_EQ(bar(window)->value(), 40);
  EXPECT_EQ(shownBy(window, "imgDirBackward"), QStringLiteral("arrdng_n.bmp"));
}

TEST_F(FrmCabUnread, WithoutAnAnswerNothingButTheStopGoesOut) {
  FrmCab* window = openUnread();
  QTest::keyClick(bar(window), Qt::Key_Up);
  QTest::keyClick(bar(window), Qt::Key_Minus);
  QTest::keyClick(bar(window), Qt::Key_M);
  EXPECT_EQ(station.reads, 3);
  EXPECT_EQ(sent(), QStringList());
  EXPECT_EQ(prompt.beeps, 3);
  EXPECT_EQ(bar(window)->value(), 0);
  EXPECT_EQ(shownBy(window, "imgDirForward"), QStringLiteral("arrupg_n.bmp"));
  EXPECT_EQ(shownBy(window, "imgMan"), QStringLiteral("manoff_n.bmp"));
  EXPECT_EQ(textOf(window, "labNotice"),
            QStringLiteral("Die Zentrale hat den Stand des Fahrzeugs nicht gemeldet.\n"
                           "Es wurde nichts gesendet. „Neu lesen“ fragt noch einmal."));
  click(picture(window, "imgStop"));
  EXPECT_EQ(sent().size(), 1);
}

TEST_F(FrmCabUnread, ReadsByItselfWhenItsLineHasComeBack) {
  FrmCab* window = openUnread();
  station.answers = true;
  line.noteGone(QStringLiteral("Kein Gerät!"));
  clock.advance(60000);
  EXPECT_EQ(station.reads, 0);
  line.noteBack();
  clock.advance(100);
  EXPECT_EQ(station.reads, 1);
  EXPECT_FALSE(cmdReread(window)->isVisible());
}

TEST_F(FrmCabUnread, SendsNoFunctionGroupThatItDoesNotKnow) {
  FrmCab* window = openUnread();
  EXPECT_FALSE(picture(window, "cmdFunc_1")->isEnabled());
  QTest::keyClick(bar(window), Qt::Key_1);
  EXPECT_EQ(sent(), QStringList());
  EXPECT_EQ(shownBy(window, "cmdFunc_1"), QStringLiteral("lmpoff_n.bmp"));
}

class FrmCabUnreadZ21 : public FrmCabUnread {
 protected:
  FrmCabUnreadZ21() { settings.baseUnit = StationKind::Z21Ip; }
};

TEST_F(FrmCabUnreadZ21, DrivesWithoutAnAnswerOnceTheDirectionIsChosen) {
  FrmCab* window = openUnread();
  QTest::keyClick(bar(window), Qt::Key_Up);
  QTest::keyClick(bar(window), Qt::Key_Minus);
  EXPECT_EQ(sent(), QStringList());
  EXPECT_EQ(shownBy(window, "imgDirBackward"), QStringLiteral("arrdng_n.bmp"));
  QTest::keyClick(bar(window), Qt::Key_Up);
  EXPECT_EQ(sent(), QStringList{QStringLiteral("Stufe 1")});
  QTest::keyClick(bar(window), Qt::Key_Plus);
  EXPECT_EQ(sent(), QStringList{QStringLiteral("vorwärts")});
}

TEST_F(FrmCabUnreadZ21, SwitchesSingleFunctionsAllTheSame) {
  FrmCab* window = openUnread();
  click(picture(window, "cmdFunc_1"));
  EXPECT_EQ(sent(), QStringList{QStringLiteral("F1 ein")});
}

}  // namespace
}  // namespace lokari
