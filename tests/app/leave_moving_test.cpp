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
