// A stop that does not get out, on every kind of station: the adapter is pulled, its port is
// missing, the network is away, the station says no. And what becomes of it when the line is back.
#include "cab_sim_fixture.h"
#include "link/track_stop.h"

namespace lokari {
namespace {

class LineGone : public test::CabOnStation, public ::testing::WithParamInterface<StationKindRow> {
 protected:
  LineGone() : CabOnStation(GetParam().kind) {}

  void pull() {
    line->vanish();
    socket->failsToSend = true;
  }
  void plugIn() {
    line->comeBack();
    socket->failsToSend = false;
  }
  static QString stopOf(FrmCab* window) {
    return control<PictureButton>(window, "imgStop")->accessibleName();
  }
  static QString noticeOf(FrmCab* window) {
    auto* label = control<QLabel>(window, "labNotice");
    return label->isVisible() ? label->text() : QString();
  }
};

INSTANTIATE_TEST_SUITE_P(Kinds, LineGone, ::testing::ValuesIn(test::kindsWithCabs()),
                         test::nameOfKind);

TEST_P(LineGone, AStopThatDidNotGetOutStaysHaltAndEveryCabSaysWhy) {
  FrmCab* one = openCab(3);
  FrmCab* two = openCab(64);
  pull();
  click(one, "imgStop");
  clock.advance(20000);
  EXPECT_FALSE(halted());
  EXPECT_EQ(stopOf(one), QStringLiteral("Halt"));
  EXPECT_TRUE(noticeOf(one).startsWith(
      QStringLiteral("Halt wurde nicht gesendet!\nKeine Verbindung zur Zentrale.")))
      << noticeOf(one).toStdString();
  EXPECT_TRUE(noticeOf(two).startsWith(QStringLiteral("Keine Verbindung zur Zentrale.")))
      << noticeOf(two).toStdString();
  EXPECT_GE(prompt.beeps, 1);
  EXPECT_EQ(prompt.shown, QStringList());
}

TEST_P(LineGone, LampsAndArrowsKeepWhatTheUserDid) {
  FrmCab* window = openCab(3);
  pull();
  click(window, "imgDirBackward");
  click(window, "cmdFunc_2");
  clock.advance(1000);
  EXPECT_TRUE(control<PictureButton>(window, "imgDirBackward")->isChecked());
  EXPECT_TRUE(lampIsOn(window, 2));
  EXPECT_FALSE(noticeOf(window).isEmpty());
}

TEST_P(LineGone, TheNextCommandOpensALineThatIsBack) {
  FrmCab* one = openCab(3);
  FrmCab* two = openCab(64);
  pull();
  click(one, "imgStop");
  clock.advance(20000);
  plugIn();
  EXPECT_FALSE(noticeOf(two).isEmpty()) << "nobody has asked yet";
  click(two, "imgStop");
  clock.advance(20000);
  EXPECT_TRUE(halted());
  EXPECT_EQ(stopOf(two), QStringLiteral("Los"));
  EXPECT_EQ(noticeOf(two), QString());
  EXPECT_EQ(stopOf(one), QStringLiteral("Halt"));
  one->close();
  click(two, "imgStop");
  clock.advance(1000);
  EXPECT_FALSE(halted()) << "the line stays open while a cab is left";
  two->close();
  clock.advance(1000);
  EXPECT_EQ(link->commUseCount, 0);
  EXPECT_FALSE(line->isOpen());
}

TEST_P(LineGone, ALineThatComesBackSwitchesNothingOn) {
  FrmCab* window = openCab(3);
  click(window, "imgStop");
  clock.advance(1000);
  ASSERT_TRUE(halted());
  pull();
  click(window, "cmdFunc_1");
  clock.advance(20000);
  plugIn();
  click(window, "cmdFunc_2");
  clock.advance(20000);
  EXPECT_TRUE(halted());
  EXPECT_EQ(noticeOf(window), QString());
  EXPECT_NE(vehicle().functions & 4U, 0U);
}

TEST_P(LineGone, TheWindowGrowsByTheNoticeAndShrinksBehindItAndNoButtonMoves) {
  FrmCab* window = openCab(3);
  const QSize before = window->size();
  auto* imgStop = control<QWidget>(window, "imgStop");
  const QPoint place = imgStop->mapTo(window, QPoint(0, 0));
  pull();
  click(window, "imgStop");
  clock.advance(20000);
  QCoreApplication::processEvents();
  EXPECT_EQ(imgStop->mapTo(window, QPoint(0, 0)), place);
  auto* labNotice = control<QLabel>(window, "labNotice");
  EXPECT_GE(labNotice->height(), labNotice->heightForWidth(labNotice->width()));
  EXPECT_GT(window->height(), before.height());
  plugIn();
  click(window, "imgStop");
  clock.advance(20000);
  QCoreApplication::processEvents();
  EXPECT_EQ(window->size(), before);
}

using PortMissing = LineGone;

/// The others tell that there is no session, and open no cab.
std::vector<StationKindRow> kindsWithAPort() {
  std::vector<StationKindRow> kinds = test::kindsWithCabs();
  std::erase_if(kinds, [](const StationKindRow& row) { return row.cab.linkStaysOpen; });
  return kinds;
}

INSTANTIATE_TEST_SUITE_P(Kinds, PortMissing, ::testing::ValuesIn(kindsWithAPort()),
                         test::nameOfKind);

TEST_P(PortMissing, ACabWithoutItsPortShowsThatItHasNoLine) {
  line->failsToOpen = true;
  cabs.OpenCab(3, false);
  clock.advance(20000);
  EXPECT_EQ(noticeOf(frmCab),
            QStringLiteral("Keine Verbindung zur Zentrale. Kein Gerät!\n"
                           "Die Zentrale hat den Stand des Fahrzeugs nicht gemeldet."));
  click(frmCab, "imgStop");
  clock.advance(20000);
  EXPECT_EQ(stopOf(frmCab), QStringLiteral("Halt"));
  line->failsToOpen = false;
  click(frmCab, "imgStop");
  clock.advance(20000);
  EXPECT_TRUE(halted());
  EXPECT_EQ(stopOf(frmCab), QStringLiteral("Los"));
  EXPECT_EQ(noticeOf(frmCab), QString());
}

class StopRefused : public test::CabOnStation,
                    public ::testing::WithParamInterface<StationKindRow> {
 protected:
  StopRefused() : CabOnStation(GetParam().kind) {}
};

std::vector<StationKindRow> kindsThatConfirm() {
  return {stationKind(StationKind::Ibx), stationKind(StationKind::TamsMc),
          stationKind(StationKind::Mx1Bin), stationKind(StationKind::Mx1Ulf)};
}

INSTANTIATE_TEST_SUITE_P(Kinds, StopRefused, ::testing::ValuesIn(kindsThatConfirm()),
                         test::nameOfKind);

TEST_P(StopRefused, AStopThatTheStationDoesNotConfirmStaysHaltAndIsTold) {
  FrmCab* window = openCab(3);
  fault("silence:immer");
  click(window, "imgStop");
  clock.advance(300000);
  EXPECT_EQ(control<PictureButton>(window, "imgStop")->accessibleName(), QStringLiteral("Halt"));
  EXPECT_EQ(control<QLabel>(window, "labNotice")->text(),
            QStringLiteral("Die Zentrale hat „Halt“ nicht bestätigt!"));
  EXPECT_GE(prompt.beeps, 1);
}

TEST_P(StopRefused, AStopThatIsNotConfirmedLeavesTheStopOfAnotherCabHolding) {
  FrmCab* first = openCab(3);
  FrmCab* second = openCab(100);
  click(first, "imgStop");
  clock.advance(1000);
  ASSERT_TRUE(link->trackStop().isHeld());
  fault("silence:immer");
  click(second, "imgStop");
  clock.advance(300000);
  EXPECT_TRUE(link->trackStop().isHeld());
  EXPECT_EQ(control<PictureButton>(first, "imgStop")->accessibleName(), QStringLiteral("Los"));
  EXPECT_EQ(control<PictureButton>(second, "imgStop")->accessibleName(), QStringLiteral("Halt"));
}

}  // namespace
}  // namespace lokari
