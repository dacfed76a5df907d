// Leaving vehicles that move, on every kind of station: whoever closes a cab or the program is
// asked once.
#include <QToolButton>

#include "simulated_desk.h"

namespace lokari {
namespace {

class LeaveMoving : public test::SimulatedDesk,
                    public ::testing::WithParamInterface<StationKindRow> {
 protected:
  enum Answer { LetRun, StopThese, SwitchOff };

  LeaveMoving() : SimulatedDesk(GetParam().kind) {}

  Cab* drive(int address, int speed) {
    driving().OpenCab(address, true);
    Cab* cab = driving().cabs().cabFor(address);
    cab->vsbSpeed(speed);
    clock().advance(1000);
    return cab;
  }
  void clickOk(int address) {
    QTest::mouseClick(control<QPushButton>(cabWindow(address), "cmdOK"), Qt::LeftButton);
    clock().advance(1000);
  }
  int speedOf(int address) const { return layout.drive(address).speed; }
  qsizetype messages() const { return line->writes.size() + socket->sent.size(); }
  void pull() {
    line->vanish();
    socket->close();
    socket->failsToSend = true;
  }
};

std::vector<StationKindRow> kindsWithCabs() {
  std::vector<StationKindRow> kinds;
  for (const StationKindRow& row : kStationKinds)
    if (row.cab.available()) kinds.push_back(row);
  return kinds;
}

INSTANTIATE_TEST_SUITE_P(Kinds, LeaveMoving, ::testing::ValuesIn(kindsWithCabs()),
                         [](const auto& row) {
                           return QString::fromUtf16(row.param.name).toStdString();
                         });

TEST_P(LeaveMoving, AClosedBoxLetsTheVehicleRunAndTheCabGoes) {
  drive(3, 40);
  const int speed = speedOf(3);
  ASSERT_GT(speed, 0);
  clickOk(3);
  ASSERT_EQ(prompt().asked.size(), 1);
  EXPECT_TRUE(prompt().asked.first().text.endsWith(QStringLiteral("(3) fährt noch.")));
  EXPECT_EQ(prompt().asked.first().answers.at(prompt().asked.first().safe),
            QStringLiteral("&Fahren lassen"));
  EXPECT_EQ(cabWindow(3), nullptr);
  EXPECT_EQ(speedOf(3), speed);
  EXPECT_FALSE(halted());
}

TEST_P(LeaveMoving, AnhaltenTakesItToSpeed0AndTheCabGoes) {
  drive(3, 40);
  drive(100, 40);
  const int other = speedOf(100);
  prompt().choices = {StopThese};
  clickOk(3);
  EXPECT_EQ(speedOf(3), 0);
  EXPECT_EQ(speedOf(100), other);
  EXPECT_EQ(cabWindow(3), nullptr);
  EXPECT_FALSE(halted());
}

TEST_P(LeaveMoving, AbschaltenStopsTheLayoutAndTheCabGoes) {
  drive(3, 40);
  driving().OpenCab(100, true);
  prompt().choices = {SwitchOff};
  cabWindow(3)->close();
  clock().advance(1000);
  EXPECT_TRUE(halted());
  EXPECT_TRUE(stop().isHeld());
  EXPECT_EQ(cabWindow(3), nullptr);
  EXPECT_EQ(wordOfStop(cabWindow(100)), QStringLiteral("Los"));
}

TEST_P(LeaveMoving, WhatStandsOrIsStoppedIsNotAskedAbout) {
  drive(3, 40);
  drive(100, 0);
  clickOk(100);
  QTest::mouseClick(control<QToolButton>(window.get(), "butStop"), Qt::LeftButton);
  clock().advance(1000);
  clickOk(3);
  EXPECT_EQ(prompt().asked.size(), 0);
  EXPECT_EQ(cabWindow(3), nullptr);
}

TEST_P(LeaveMoving, AVehicleThatCouldNotBeStoppedKeepsItsCabAndIsTold) {
  Cab* cab = drive(3, 40);
  pull();
  prompt().choices = {StopThese};
  clickOk(3);
  clock().advance(20000);
  ASSERT_NE(cabWindow(3), nullptr);
  EXPECT_EQ(prompt().shown.size(), 2);
  EXPECT_TRUE(prompt().shown.last().contains(QStringLiteral("wurde nicht angehalten")));
  EXPECT_GT(cab->state().speed, 0);
  prompt().choices = {SwitchOff};
  clickOk(3);
  clock().advance(20000);
  ASSERT_NE(cabWindow(3), nullptr);
  EXPECT_TRUE(prompt().shown.last().startsWith(QStringLiteral("Halt nicht gesendet")));
  clickOk(3);
  clock().advance(20000);
  EXPECT_EQ(cabWindow(3), nullptr) << "letting it run needs no line";
}

TEST_P(LeaveMoving, TheEndOfTheProgramAsksOnceForAllAndLetsThemRun) {
  drive(3, 40);
  drive(100, 40);
  EXPECT_TRUE(window->close());
  clock().advance(5000);
  ASSERT_EQ(prompt().asked.size(), 1);
  EXPECT_TRUE(prompt().asked.first().text.contains(QStringLiteral("(3)")));
  EXPECT_TRUE(prompt().asked.first().text.contains(QStringLiteral("(100)")));
  EXPECT_GT(speedOf(3), 0);
  EXPECT_GT(speedOf(100), 0);
  EXPECT_EQ(link().commUseCount, 0);
}

TEST_P(LeaveMoving, TheEndOfTheProgramStopsThemAll) {
  drive(3, 40);
  drive(100, 40);
  prompt().choices = {StopThese};
  EXPECT_TRUE(window->close());
  clock().advance(5000);
  EXPECT_EQ(speedOf(3), 0);
  EXPECT_EQ(speedOf(100), 0);
  EXPECT_FALSE(halted());
}

TEST_P(LeaveMoving, TheEndWaitsForStopsThatStandBehindAnExchange) {
  drive(3, 40);
  prompt().choices = {StopThese};
  bool tried = false;
  // Another cab is being read.
  clock().schedule(5, [&] {
    tried = true;
    EXPECT_FALSE(window->close());
    EXPECT_GT(speedOf(3), 0);
    EXPECT_FALSE(window->close()) << "the end is on its way: nothing to ask";
  });
  driving().OpenCab(100, true);
  EXPECT_TRUE(tried);
  clock().advance(5000);
  EXPECT_EQ(prompt().asked.size(), 1);
  EXPECT_EQ(speedOf(3), 0);
  EXPECT_FALSE(window->isVisible());
  EXPECT_EQ(link().commUseCount, 0);
}

TEST_P(LeaveMoving, ACabThatIsClosedWhileTheEndStopsTheOthersIsLeftAlone) {
  for (const int address : {3, 100, 101}) drive(address, 40);
  prompt().choices = {StopThese, LetRun};
  layout.onChange = [this](const QString&) {
    if (speedOf(3) == 0 && cabWindow(101) != nullptr) cabWindow(101)->close();
  };
  EXPECT_TRUE(window->close());
  clock().advance(5000);
  EXPECT_EQ(prompt().asked.size(), 2);
  EXPECT_EQ(speedOf(3), 0);
  EXPECT_EQ(speedOf(100), 0);
  EXPECT_GT(speedOf(101), 0);
}

class LeavePolled : public LeaveMoving {};

// Its polls wait for an answer.
INSTANTIATE_TEST_SUITE_P(Kinds, LeavePolled, ::testing::Values(stationKind(StationKind::Z21Ip)));

TEST_P(LeavePolled, TheEndInTheMiddleOfAPollWaitsForTheStops) {
  drive(3, 40);
  prompt().choices = {StopThese};
  const qsizetype before = messages();
  bool tried = false;
  std::function<void()> look = [&] {
    if (messages() == before) return clock().schedule(1, look);
    tried = true;
    EXPECT_FALSE(window->close());
  };
  clock().schedule(1, look);
  clock().advance(10000);
  EXPECT_TRUE(tried);
  EXPECT_EQ(speedOf(3), 0);
  EXPECT_FALSE(window->isVisible());
}

TEST_P(LeaveMoving, TheEndOfTheProgramSwitchesOff) {
  drive(3, 40);
  prompt().choices = {SwitchOff};
  EXPECT_TRUE(window->close());
  clock().advance(5000);
  EXPECT_TRUE(halted());
}

TEST_P(LeaveMoving, TheProgramGoesOnWhenTheyCouldNotBeStopped) {
  drive(3, 40);
  pull();
  for (const int answer : {StopThese, SwitchOff}) {
    prompt().choices = {answer};
    EXPECT_FALSE(window->close());
    clock().advance(20000);
    EXPECT_NE(cabWindow(3), nullptr);
  }
}

/// They answer a speed, or tell the vehicle's state behind it.
std::vector<StationKindRow> kindsThatAnswerSpeeds() {
  std::vector<StationKindRow> kinds = kindsWithCabs();
  std::erase_if(kinds, [](const StationKindRow& row) {
    return row.family == ProtocolFamily::Lenz || row.family == ProtocolFamily::Mx10;
  });
  return kinds;
}

class LeaveAtASilentStation : public LeaveMoving {
 protected:
  /// A long address, whose speeds the text protocol answers too.
  static constexpr int kAddress = 1000;

  void fallSilent() { faults.add(*sim::faultFromText(QStringLiteral("silence:immer"))); }
  void expectNotStopped() {
    ASSERT_NE(cabWindow(kAddress), nullptr);
    ASSERT_FALSE(prompt().shown.isEmpty());
    EXPECT_TRUE(prompt().shown.last().endsWith(
        QStringLiteral("wurde nicht angehalten: Die Zentrale hat es nicht bestätigt!")))
        << qPrintable(prompt().shown.last());
    EXPECT_TRUE(driving().cabs().cabFor(kAddress)->isMoving());
  }
};

INSTANTIATE_TEST_SUITE_P(Kinds, LeaveAtASilentStation, ::testing::ValuesIn(kindsThatAnswerSpeeds()),
                         [](const auto& row) {
                           return QString::fromUtf16(row.param.name).toStdString();
                         });

TEST_P(LeaveAtASilentStation, AVehicleWhoseStopIsNotConfirmedKeepsItsCabAndIsTold) {
  drive(kAddress, 40);
  fallSilent();
  prompt().choices = {StopThese};
  clickOk(kAddress);
  clock().advance(2000);
  expectNotStopped();
}

TEST_P(LeaveAtASilentStation, TheProgramGoesOnWhenAStopIsNotConfirmed) {
  drive(kAddress, 40);
  fallSilent();
  prompt().choices = {StopThese};
  EXPECT_FALSE(window->close());
  clock().advance(2000);
  expectNotStopped();
}

TEST_P(LeaveAtASilentStation, AVehicleThatDidNotTakeTheSpeed0OfTheBarIsAskedAbout) {
  drive(kAddress, 40);
  fallSilent();
  driving().cabs().cabFor(kAddress)->vsbSpeed(0);
  clickOk(kAddress);
  EXPECT_EQ(prompt().asked.size(), 1);
}

class LeaveWhileTheLineIsBusy : public LeaveMoving {};

INSTANTIATE_TEST_SUITE_P(Kinds, LeaveWhileTheLineIsBusy, ::testing::ValuesIn(kindsWithCabs()),
                         [](const auto& row) {
                           return QString::fromUtf16(row.param.name).toStdString();
                         });

TEST_P(LeaveWhileTheLineIsBusy, TheProgramEndsWhenTheVehiclesStand) {
  drive(3, 40);
  drive(100, 40);
  prompt().choices = {StopThese};
  driving().runAlone(this, [this] {
    EXPECT_FALSE(window->close());
    EXPECT_GT(speedOf(3), 0);
    EXPECT_TRUE(driving().cabs().cabFor(3)->isMoving()) << "nothing went out yet";
  });
  clock().advance(5000);
  EXPECT_EQ(speedOf(3), 0);
  EXPECT_EQ(speedOf(100), 0);
  EXPECT_FALSE(window->isVisible());
  EXPECT_EQ(prompt().asked.size(), 1);
}

TEST_P(LeaveWhileTheLineIsBusy, TheProgramGoesOnWhenTheLineIsGoneBehindIt) {
  drive(3, 40);
  prompt().choices = {StopThese};
  driving().runAlone(this, [this] {
    EXPECT_FALSE(window->close());
    pull();
  });
  clock().advance(20000);
  EXPECT_TRUE(window->isVisible());
  ASSERT_NE(cabWindow(3), nullptr);
  EXPECT_TRUE(driving().cabs().cabFor(3)->isMoving());
}

class LeaveUnread : public test::SimulatedDesk {
 protected:
  LeaveUnread() : SimulatedDesk(StationKind::Mx1) {}
};

TEST_F(LeaveUnread, AnhaltenSendsNoGuessToAVehicleOfWhichTheStationTellsNothing) {
  constexpr int kStopThese = 1;
  faults.add(*sim::faultFromText(QStringLiteral("silence:immer")));
  driving().OpenCab(3, true);
  clock().advance(1000);
  prompt().choices = {kStopThese};
  // While the cab asks the station once more.
  clock().schedule(500, [this] {
    QTest::mouseClick(control<QPushButton>(cabWindow(3), "cmdOK"), Qt::LeftButton);
  });
  driving().cabs().cabFor(3)->vsbSpeed(40);
  clock().advance(20000);
  EXPECT_EQ(prompt().asked.size(), 1);
  for (const auto& write : line->writes) {
    EXPECT_FALSE(write.data.startsWith("FN")) << write.data.constData();
  }
  EXPECT_EQ(cabWindow(3), nullptr);
}

TEST_P(LeaveMoving, AnEndFromOutsideAsksNothingAndLetsThemRun) {
  drive(3, 40);
  const qsizetype before = messages();
  window->endProgram();
  EXPECT_FALSE(window->isVisible());
  EXPECT_EQ(prompt().asked.size(), 0);
  EXPECT_GT(speedOf(3), 0);
  if (GetParam().transport == Transport::Serial) {
    EXPECT_EQ(messages(), before);
  }
}

}  // namespace
}  // namespace lokari
