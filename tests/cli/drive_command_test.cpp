#include "cli_fixture.h"

namespace lokari {
namespace {

using DriveCommandTest = CliFixture;

TEST_F(DriveCommandTest, PrintsTheStateOfTheVehicle) {
  EXPECT_EQ(run("drive 3"), 0);
  EXPECT_EQ(console.results,
            (QStringList{"Geschwindigkeit\t0", "Richtung\tvorwärts", "F0\taus", "F1\taus",
                         "F2\taus", "F3\taus", "F4\taus", "F5\taus", "F6\taus", "F7\taus"}));
  EXPECT_TRUE(console.messages.isEmpty());
  EXPECT_FALSE(line_.isOpen());
}

TEST_F(DriveCommandTest, DrivesAndSwitchesAndPrintsTheStateAfterwards) {
  EXPECT_EQ(run("drive 3 --speed 40 --back --function 0=on --function 5=on"), 0);
  EXPECT_EQ(console.results.mid(0, 3),
            (QStringList{"Geschwindigkeit\t40", "Richtung\trückwärts", "F0\tein"}));
  EXPECT_EQ(console.results[7], "F5\tein");
  const sim::DriveState vehicle = layout.drive(3);
  EXPECT_EQ(vehicle.speed, 40);
  EXPECT_TRUE(vehicle.backward);
  EXPECT_EQ(vehicle.functions, 0b100001U);
}

TEST_F(DriveCommandTest, ASpeedWithoutBackIsOneForward) {
  EXPECT_EQ(run("drive 3 --back"), 0);
  EXPECT_TRUE(layout.drive(3).backward);
  EXPECT_EQ(run("drive 3 --function 1=on"), 0);
  EXPECT_TRUE(layout.drive(3).backward);
  EXPECT_EQ(run("drive 3 --speed 10"), 0);
  EXPECT_FALSE(layout.drive(3).backward);
}

TEST_F(DriveCommandTest, AFunctionThatIsSoAlreadyStaysSo) {
  EXPECT_EQ(run("drive 3 --function 2=on"), 0);
  EXPECT_EQ(run("drive 3 --function 2=on"), 0);
  EXPECT_EQ(layout.drive(3).functions, 0b100U);
}

TEST_F(DriveCommandTest, TheStopIsForTheWholeTrackAndStays) {
  EXPECT_EQ(run("drive 3 --stop"), 0);
  EXPECT_EQ(console.results.last(), "Halt\tein");
  EXPECT_TRUE(layout.stopped() || !layout.trackPower());
}

TEST_F(DriveCommandTest, AWrongCallSendsNothing) {
  for (const char* call :
       {"drive", "drive 0", "drive 10240", "drive x", "drive 3 4", "drive 3 --speed 128",
        "drive 3 --speed -1", "drive 3 --speed", "drive 3 --speed 1 --speed 2",
        "drive 3 --function 8=on", "drive 3 --function 1", "drive 3 --function 1=ein",
        "drive 3 --function -1=on", "drive 3 --function", "drive 3 --laut"}) {
    EXPECT_EQ(run(call), 2) << call;
    EXPECT_FALSE(console.messages.isEmpty()) << call;
    EXPECT_TRUE(console.results.isEmpty()) << call;
  }
  EXPECT_TRUE(untouched());
}

TEST_F(DriveCommandTest, TheKindWithoutCabsIsAWrongCall) {
  writeIni("LOKARI", "BaseUnit=LIDP\r\nComPort=3\r\n");
  EXPECT_EQ(run("drive 3 --speed 5"), 2);
  EXPECT_EQ(console.messages.first(), "LIDP kann nicht fahren!");
  EXPECT_EQ(run("switch 3 1=on"), 2);
  EXPECT_EQ(console.messages.first(), "LIDP kann nicht schalten!");
  EXPECT_TRUE(untouched());
}

TEST_F(DriveCommandTest, ASilentStationIsToldAndNothingIsDriven) {
  faults.add({.kind = sim::FaultKind::Silence, .count = sim::Fault::kAlways});
  EXPECT_EQ(run("drive 3 --speed 40"), 1);
  EXPECT_EQ(console.messages, QStringList{"Keine Daten von Digitalzentrale erhalten"});
  EXPECT_TRUE(console.results.isEmpty());
  EXPECT_EQ(layout.drive(3).speed, 0);
  EXPECT_FALSE(line_.isOpen());
}

TEST_F(DriveCommandTest, ACommandThatTheStationDoesNotAcknowledgeIsAFailure) {
  // The reading is two exchanges.
  faults.add({.kind = sim::FaultKind::Silence, .skip = 2});
  EXPECT_EQ(run("drive 3 --speed 40"), 1);
  EXPECT_EQ(console.messages, QStringList{"Die Digitalzentrale hat einen Befehl nicht bestätigt!"});
  EXPECT_EQ(run("drive 3 --speed 50"), 0);
  EXPECT_TRUE(console.messages.isEmpty());
}

TEST_F(DriveCommandTest, WithoutASessionTheCallFails) {
  line_.failsToOpen = true;
  EXPECT_EQ(run("drive 3"), 2);
  EXPECT_EQ(console.messages.first(), "Kann Kommunikationsschnittstelle nicht öffnen (0)!");
}

TEST_F(DriveCommandTest, CtrlCEndsTheWaitForASilentStation) {
  faults.add({.kind = sim::FaultKind::Silence, .count = sim::Fault::kAlways});
  writeIni("LOKARI", "BaseUnit=TAMSMC\r\nComPort=3\r\nTimeout=999\r\nDelay=0\r\n");
  clock.schedule(3000, [&] { interrupt.raise(); });
  EXPECT_EQ(run("drive 3 --speed 40"), 1);
  EXPECT_LT(clock.now(), 10000);
  EXPECT_FALSE(line_.isOpen());
}

TEST_F(DriveCommandTest, CtrlCWhileACommandIsSentIsAFailure) {
  faults.add({.kind = sim::FaultKind::Silence, .count = 1, .skip = 2});
  writeIni("LOKARI", "BaseUnit=TAMSMC\r\nComPort=3\r\nTimeout=999\r\nDelay=0\r\n");
  clock.schedule(3000, [&] { interrupt.raise(); });
  EXPECT_EQ(run("drive 3 --speed 40"), 1);
  EXPECT_LT(clock.now(), 10000);
  EXPECT_FALSE(line_.isOpen());
}

// ---- Switching ----------------------------------------------------------------------------------

TEST_F(DriveCommandTest, SwitchesOutputsCountedFromOneAndPrintsAllFour) {
  EXPECT_EQ(run("switch 5 1=on 4=on 4=off"), 0);
  EXPECT_EQ(console.results, (QStringList{"1\tein", "2\taus", "3\taus", "4\taus"}));
  EXPECT_TRUE(layout.output(17));
  EXPECT_FALSE(layout.output(20));
}

TEST_F(DriveCommandTest, AWrongSwitchCallSendsNothing) {
  for (const char* call : {"switch", "switch 5", "switch 0 1=on", "switch 10240 1=on",
                           "switch 5 0=on", "switch 5 5=on", "switch 5 1", "switch 5 1=1",
                           "switch 5 1=on 9=off", "switch 5 1=on --laut"}) {
    EXPECT_EQ(run(call), 2) << call;
    EXPECT_TRUE(console.results.isEmpty()) << call;
  }
  EXPECT_TRUE(untouched());
}

}  // namespace
}  // namespace lokari
