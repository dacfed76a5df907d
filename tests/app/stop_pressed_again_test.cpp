// A stop that the station has not confirmed is never taken for one that holds: not when it is
// pressed again meanwhile, nor behind a message of ours that switches the layout on.
#include <QLabel>

#include "link/ui/dlg_comm.h"
#include "simulated_desk.h"

namespace lokari {
namespace {

class AgainDesk : public test::SimulatedDesk {
 protected:
  explicit AgainDesk(StationKind kind) : SimulatedDesk(kind) {}

  QString noticeOf(int address) {
    auto* label = control<QLabel>(cabWindow(address), "labNotice");
    return label != nullptr && label->isVisible() ? label->text() : QString();
  }
  QString word(int address) { return wordOfStop(cabWindow(address)); }
  void click(int address, const char* name) {
    QTest::mouseClick(control<QWidget>(cabWindow(address), name), Qt::LeftButton);
  }
  void pressPause() { QTest::keyClick(window.get(), Qt::Key_Pause); }
  void fallSilent() { faults.add(*sim::faultFromText(QStringLiteral("silence:immer"))); }
  /// Runs `act` so many milliseconds from now, also inside what a handler waits for.
  void in(Millis moment, std::function<void()> act) { clock().schedule(moment, std::move(act)); }
  void drive(int address) {
    driving().OpenCab(address, true);
    driving().cabs().cabFor(address)->vsbSpeed(40);
    clock().advance(1000);
  }

  static QString unconfirmed() {
    return QStringLiteral("Die Zentrale hat „Halt“ nicht bestätigt!");
  }
};

class StopPressedAgain : public AgainDesk, public ::testing::WithParamInterface<StationKindRow> {
 protected:
  StopPressedAgain() : AgainDesk(GetParam().kind) {}
};

std::vector<StationKindRow> kindsThatConfirm() {
  std::vector<StationKindRow> kinds;
  for (const StationKindRow& row : kStationKinds) {
    // The text protocol says nothing to a stop.
    if (row.cab.available() && row.family != ProtocolFamily::Mx1Text) kinds.push_back(row);
  }
  return kinds;
}

INSTANTIATE_TEST_SUITE_P(Kinds, StopPressedAgain, ::testing::ValuesIn(kindsThatConfirm()),
                         [](const auto& row) {
                           return QString::fromUtf16(row.param.name).toStdString();
                         });

TEST_P(StopPressedAgain, ByPauseAtASilentStationIsHaltInEveryCabAndToldInABox) {
  driving().OpenCab(3, true);
  fallSilent();
  in(1000, [this] { pressPause(); });
  pressPause();
  clock().advance(200'000);
  EXPECT_EQ(word(3), QStringLiteral("Halt"));
  EXPECT_FALSE(stop().isHeld());
  EXPECT_TRUE(stop().mayStand()) << "it may have been heard";
  EXPECT_EQ(prompt().shown.value(0), unconfirmed());
}

TEST_P(StopPressedAgain, InAnotherCabShowsTheFailureInBoth) {
  driving().OpenCab(3, true);
  driving().OpenCab(100, true);
  fallSilent();
  in(1000, [this] { click(100, "imgStop"); });
  click(3, "imgStop");
  clock().advance(200'000);
  for (const int address : {3, 100}) {
    EXPECT_EQ(word(address), QStringLiteral("Halt")) << address;
    EXPECT_TRUE(noticeOf(address).startsWith(unconfirmed())) << address;
  }
  EXPECT_FALSE(stop().isHeld());
}

TEST_P(StopPressedAgain, IsConfirmedAsEver) {
  driving().OpenCab(3, true);
  driving().OpenCab(100, true);
  in(1, [this] { pressPause(); });
  click(3, "imgStop");
  clock().advance(200'000);
  for (const int address : {3, 100}) {
    EXPECT_EQ(word(address), QStringLiteral("Los")) << address;
    EXPECT_EQ(noticeOf(address), QString()) << address;
  }
  EXPECT_TRUE(stop().isHeld());
  EXPECT_EQ(prompt().shown, QStringList());
}

TEST_P(StopPressedAgain, BehindAConfirmedOneLeavesThatOneHolding) {
  driving().OpenCab(3, true);
  pressPause();
  clock().advance(10'000);
  ASSERT_TRUE(stop().isHeld());
  fallSilent();
  in(1000, [this] { pressPause(); });
  pressPause();
  clock().advance(200'000);
  EXPECT_TRUE(stop().isHeld());
  EXPECT_EQ(word(3), QStringLiteral("Los"));
}

TEST_P(StopPressedAgain, ByTheWayOutKeepsTheCabOfAVehicleThatRuns) {
  enum Answer { LetRun, StopThese, SwitchOff };
  drive(3);
  fallSilent();
  prompt().whileAsked = [this] {
    prompt().whileAsked = nullptr;
    pressPause();
  };
  prompt().choices = {SwitchOff};
  click(3, "cmdOK");
  clock().advance(200'000);
  EXPECT_NE(cabWindow(3), nullptr);
}

TEST_P(StopPressedAgain, ByTheEndOfTheProgramKeepsItOpen) {
  enum Answer { LetRun, StopThese, SwitchOff };
  drive(3);
  fallSilent();
  prompt().whileAsked = [this] {
    prompt().whileAsked = nullptr;
    pressPause();
  };
  prompt().choices = {SwitchOff};
  EXPECT_FALSE(window->close());
  clock().advance(200'000);
  EXPECT_TRUE(window->isVisible());
}

// ---- A message of ours switches the layout on behind the stop -----------------------------------

class StopBehindAJob : public StopPressedAgain {
 protected:
  void readACv(const std::function<void()>& inIt) {
    driving().runAlone(this, [&] {
      DlgComm dialog(link(), window.get());
      dialog.run(CommJob::ReadProgTrack, [&] {
        link().initComm(true, true, true);
        inIt();
        link().cancelRequested = false;
        link().endcomm(true, true);
        dialog.hide();
      });
    });
  }
};

/// Their farewell switches the layout on.
std::vector<StationKindRow> kindsThatSwitchOn() {
  std::vector<StationKindRow> kinds = kindsThatConfirm();
  std::erase_if(kinds, [](const StationKindRow& row) { return !row.switchesOn.cvJob; });
  return kinds;
}

INSTANTIATE_TEST_SUITE_P(Kinds, StopBehindAJob, ::testing::ValuesIn(kindsThatSwitchOn()),
                         [](const auto& row) {
                           return QString::fromUtf16(row.param.name).toStdString();
                         });

TEST_P(StopBehindAJob, ThatIsNotConfirmedBehindTheFarewellIsHaltAndTold) {
  driving().OpenCab(3, true);
  readACv([this] {
    pressPause();
    clock().advance(2000);
    EXPECT_TRUE(stop().isHeld());
    fallSilent();
  });
  clock().advance(200'000);
  EXPECT_FALSE(stop().isHeld());
  EXPECT_TRUE(stop().mayStand());
  EXPECT_EQ(word(3), QStringLiteral("Halt"));
  EXPECT_EQ(prompt().shown, QStringList{unconfirmed()});
}

TEST_P(StopBehindAJob, ThatIsConfirmedHolds) {
  driving().OpenCab(3, true);
  readACv([this] { pressPause(); });
  clock().advance(200'000);
  EXPECT_TRUE(stop().isHeld());
  EXPECT_TRUE(halted());
  EXPECT_EQ(word(3), QStringLiteral("Los"));
  EXPECT_EQ(prompt().shown, QStringList());
}

class StopOfLi100V3 : public AgainDesk {
 protected:
  StopOfLi100V3() : AgainDesk(StationKind::Li100V3) {}
};

TEST_F(StopOfLi100V3, ThatWasNeverConfirmedIsNotMadeOneByAGoThatFails) {
  folder.write(QStringLiteral("Zimo/MX620.dec"), "PROGMAIN=J\nCV_3=Anfahren\n");
  folder.change(3, {{QStringLiteral("DC_MANUF"), 145}, {QStringLiteral("DC_DECODER"), "MX620"}});
  ASSERT_EQ(form().FindFirst(QStringLiteral("DC_ADR=5")), FindResult::Found);
  ASSERT_EQ(form().FindFirst(QStringLiteral("DC_ADR=3")), FindResult::Found);
  driving().butDrive();
  ASSERT_NE(cabWindow(3), nullptr);
  fallSilent();
  click(3, "imgStop");
  clock().advance(10'000);
  ASSERT_FALSE(stop().isHeld());
  ASSERT_TRUE(stop().mayStand());
  prompt().choices = {0};
  driving().cabs().cabForms(1)->stepCVUp();
  ASSERT_EQ(prompt().asked.size(), 1);
  clock().advance(10'000);
  EXPECT_FALSE(stop().isHeld());
  EXPECT_TRUE(stop().mayStand());
  EXPECT_EQ(word(3), QStringLiteral("Halt")) << "one press stops";
}

}  // namespace
}  // namespace lokari
