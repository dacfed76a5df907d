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

TEST_F(DriveCommandTest, ASpeedLeavesTheDirectionAlone) {
  EXPECT_EQ(run("drive 3 --back"), 0);
  EXPECT_TRUE(layout.drive(3).backward);
  EXPECT_EQ(run("drive 3 --function 1=on"), 0);
  EXPECT_TRUE(layout.drive(3).backward);
  EXPECT_EQ(run("drive 3 --speed 10"), 0);
  EXPECT_TRUE(layout.drive(3).backward);
  EXPECT_EQ(run("drive 3 --speed 10 --forward"), 0);
  EXPECT_FALSE(layout.drive(3).backward);
  EXPECT_EQ(console.results[1], "Richtung\tvorwärts");
}

TEST_F(DriveCommandTest, GoReleasesTheTrackLast) {
  layout.setStopped(true);
  layout.setTrackPower(false);
  EXPECT_EQ(run("drive 3 --speed 20 --go"), 0);
  EXPECT_EQ(console.results.last(), "Halt\taus");
  EXPECT_TRUE(layout.trackPower());
  EXPECT_EQ(line_.writes.last().data.toHex(), "a7");
  EXPECT_EQ(run("drive 3"), 0);
  EXPECT_FALSE(console.results.last().startsWith("Halt")) << "nothing was asked about it";
}

TEST_F(DriveCommandTest, TheStateAsJsonIsOneObject) {
  EXPECT_EQ(run("drive 3 --speed 40 --json"), 0);
  EXPECT_EQ(console.results,
            QStringList{"{\"F0\":false,\"F1\":false,\"F2\":false,\"F3\":false,\"F4\":false,"
                        "\"F5\":false,\"F6\":false,\"F7\":false,\"address\":3,"
                        "\"backward\":false,\"speed\":40}"});
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

TEST_F(DriveCommandTest, TheStopIsOnTheWireBeforeAnythingIsRead) {
  EXPECT_EQ(run("drive 3 --stop"), 0);
  EXPECT_TRUE(line_.sent().startsWith("x\xA5x\x84")) << line_.sent().toHex().constData();
}

TEST_F(DriveCommandTest, AStopIsTakenByAStationThatGivesNoState) {
  // The stop is acknowledged, both readings stay without an answer.
  faults.add({.kind = sim::FaultKind::Silence, .count = 2, .skip = 1});
  EXPECT_EQ(run("drive 3 --stop --speed 9"), 1);
  EXPECT_EQ(console.results, QStringList{"Halt\tein"});
  EXPECT_EQ(console.messages, QStringList{"Keine Daten von Digitalzentrale erhalten"});
  EXPECT_EQ(layout.drive(3).speed, 0);
  EXPECT_TRUE(layout.stopped() || !layout.trackPower());
}

TEST_F(DriveCommandTest, AStopThatNobodyAcknowledgesIsNotShownAsDone) {
  faults.add({.kind = sim::FaultKind::Silence, .count = sim::Fault::kAlways});
  EXPECT_EQ(run("drive 3 --stop"), 1);
  EXPECT_TRUE(console.results.isEmpty());
  EXPECT_EQ(console.messages.first(), "Die Digitalzentrale hat einen Befehl nicht bestätigt!");
}

TEST_F(DriveCommandTest, AStopOnAPortThatHasGoneIsAFailure) {
  faults.add({.kind = sim::FaultKind::Unplugged});
  EXPECT_EQ(run("drive 3 --stop"), 1);
  EXPECT_TRUE(console.results.isEmpty());
  EXPECT_EQ(console.messages.first(), "Die Schnittstelle ist nicht mehr da!");
}

TEST_F(DriveCommandTest, ACommandOnAPortThatHasGoneIsNeitherDoneNorShown) {
  faults.add({.kind = sim::FaultKind::Unplugged, .skip = 2});
  EXPECT_EQ(run("drive 3 --speed 40"), 1);
  EXPECT_EQ(console.results.first(), "Geschwindigkeit\t0");
  EXPECT_EQ(console.messages, QStringList{"Die Schnittstelle ist nicht mehr da!"});
}

TEST_F(DriveCommandTest, AWrongCallSendsNothing) {
  for (const char* call :
       {"drive 3 --back --forward", "drive 3 --stop --go", "drive", "drive 0", "drive 10240",
        "drive x", "drive 3 4", "drive 3 --speed 128", "drive 3 --speed -1", "drive 3 --speed",
        "drive 3 --speed 1 --speed 2", "drive 3 --function 8=on", "drive 3 --function 1",
        "drive 3 --function 1=ein", "drive 3 --function -1=on", "drive 3 --function",
        "drive 3 --laut"}) {
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

TEST_F(DriveCommandTest, WhatTheStationDoesNotTellBehindTheCommandsIsNotPrintedAsDone) {
  // The reading is two exchanges, the speed the third.
  faults.add({.kind = sim::FaultKind::Silence, .count = sim::Fault::kAlways, .skip = 3});
  EXPECT_EQ(run("drive 3 --speed 40"), 1);
  EXPECT_EQ(console.messages, (QStringList{"Keine Daten von Digitalzentrale erhalten",
                                           "Ob die Befehle angekommen sind, ist nicht bekannt!"}));
  EXPECT_TRUE(console.results.isEmpty());
}

class DriveOnLi100V3 : public CliFixture {
 protected:
  DriveOnLi100V3() : CliFixture(u"LI100V3") {
    writeIni("LOKARI", "BaseUnit=LI100V3\r\nComPort=3\r\nTimeout=2\r\nDelay=0\r\n");
  }
};

TEST_F(DriveOnLi100V3, PrintsWhatTheStationSaysBehindTheCommands) {
  EXPECT_EQ(run("drive 3 --speed 40 --back --function 2=on --function 7=on"), 0);
  EXPECT_EQ(console.results.mid(0, 2), (QStringList{"Geschwindigkeit\t40", "Richtung\trückwärts"}));
  EXPECT_TRUE(console.messages.isEmpty());
}

TEST_F(DriveOnLi100V3, CommandsThatTheStationDoesNotTakeAreToldAndTheStateIsTheStations) {
  // Whatever it is told, its vehicle stands.
  for (Millis at = 0; at < 10'000; at += 5) {
    clock.schedule(at, [&] { layout.setDrive(3, {}); });
  }
  EXPECT_EQ(run("drive 3 --speed 99 --function 2=on"), 1);
  EXPECT_EQ(console.results.value(0), "Geschwindigkeit\t0");
  EXPECT_EQ(console.results.value(4), "F2\taus");
  EXPECT_EQ(console.messages,
            QStringList{"Die Digitalzentrale meldet danach einen anderen Stand!"});
}

TEST_F(DriveOnLi100V3, ASpeed0ThatTheStationIgnoresIsAFailureAlsoInTheLowestStep) {
  ASSERT_EQ(run("drive 3 --speed 1"), 0);
  const sim::DriveState running = layout.drive(3);
  ASSERT_GT(running.speed, 0);
  for (Millis at = 0; at < 10'000; at += 5) {
    clock.schedule(at, [&] { layout.setDrive(3, running); });
  }
  EXPECT_EQ(run("drive 3 --speed 0"), 1);
  EXPECT_EQ(console.messages,
            QStringList{"Die Digitalzentrale meldet danach einen anderen Stand!"});
}

class DriveOnSerialKinds : public CliFixture,
                           public ::testing::WithParamInterface<const char16_t*> {
 protected:
  DriveOnSerialKinds() : CliFixture(GetParam()) {}
};

INSTANTIATE_TEST_SUITE_P(Kinds, DriveOnSerialKinds,
                         ::testing::Values(u"MX1", u"MX1V25", u"LI100", u"LI100V3", u"LIUSB",
                                           u"IBX", u"TAMSMC", u"MX1BIN"));

TEST_P(DriveOnSerialKinds, EverySpeedThatTheStationTookIsDone) {
  for (int speed = 127; speed >= 0; --speed) {
    const QByteArray call = "drive 3 --speed " + QByteArray::number(speed);
    EXPECT_EQ(run(call.constData()), 0) << speed << qPrintable(console.messages.join(u'\n'));
  }
}

class DriveOnOldMx1 : public CliFixture {
 protected:
  DriveOnOldMx1() : CliFixture(u"MX1") {}
};

TEST_F(DriveOnOldMx1, AFunctionThatItsAnswersDoNotTellStaysAsItWasSent) {
  EXPECT_EQ(run("drive 3 --function 10=on --function 2=on"), 0);
  EXPECT_TRUE(console.results.contains(QStringLiteral("F10\tein")));
  EXPECT_TRUE(console.results.contains(QStringLiteral("F2\tein")));
  EXPECT_TRUE(console.messages.isEmpty());
  EXPECT_EQ(layout.drive(3).functions, 0b100'0000'0100U);
}

class DriveOnMx1Bin : public CliFixture {
 protected:
  DriveOnMx1Bin() : CliFixture(u"MX1BIN") {}
};

TEST_F(DriveOnMx1Bin, AFunctionOfTheHighestGroupIsSwitched) {
  EXPECT_EQ(run("drive 3 --function 12=on"), 0);
  EXPECT_TRUE(console.results.contains(QStringLiteral("F12\tein")));
  EXPECT_EQ(layout.drive(3).functions, 1U << 12U);
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

TEST_F(DriveCommandTest, AnOutputThatIsSoAlreadyIsSentAllTheSame) {
  EXPECT_EQ(run("switch 5 1=on"), 0);
  const QByteArray before = line_.sent();
  EXPECT_EQ(run("switch 5 1=on"), 0);
  EXPECT_EQ(line_.sent().mid(before.size()).toHex(), "789503789011c0");
}

TEST_F(DriveCommandTest, AnOutputIsSwitchedAlsoWhereTheStationGivesNoState) {
  faults.add({.kind = sim::FaultKind::Silence, .count = 2});
  EXPECT_EQ(run("switch 5 2=on"), 1);
  EXPECT_TRUE(layout.output(18));
  EXPECT_TRUE(console.results.isEmpty());
  EXPECT_EQ(console.messages, QStringList{"Keine Daten von Digitalzentrale erhalten"});
}

TEST_F(DriveCommandTest, AnOutputThatTheStationDoesNotConfirmIsNotShownAsSwitched) {
  faults.add({.kind = sim::FaultKind::Silence, .skip = 1});
  faults.add({.kind = sim::FaultKind::Unplugged, .skip = 2});
  EXPECT_EQ(run("switch 5 1=on 2=on"), 1);
  EXPECT_EQ(console.results.value(1), "2\taus");
}

TEST_F(DriveCommandTest, TheOutputsAsJsonAreOneObject) {
  EXPECT_EQ(run("switch 5 1=on --json"), 0);
  EXPECT_EQ(console.results,
            QStringList{"{\"1\":true,\"2\":false,\"3\":false,\"4\":false,\"address\":5}"});
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

// ---- The Zimo binary stations
// --------------------------------------------------------------------

class DriveOnMx1Ulf : public CliFixture {
 protected:
  DriveOnMx1Ulf() : CliFixture(u"MX1ULF") {
    writeIni("LOKARI", "BaseUnit=MX1ULF\r\nComPort=3\r\nTimeout=999\r\nDelay=0\r\n");
  }

  /// The payloads of the frames sent, without escapes, from the command byte on.
  QList<QByteArray> sent() const {
    QList<QByteArray> payloads;
    for (const auto& write : line_.writes) payloads << write.data.mid(5).chopped(2).toHex();
    return payloads;
  }
};

TEST_F(DriveOnMx1Ulf, TheStopGoesOutAgainBehindTheReadingThatSwitchesOn) {
  EXPECT_EQ(run("drive 3 --stop"), 0);
  EXPECT_EQ(console.results.last(), "Halt\tein");
  EXPECT_FALSE(layout.trackPower());
  EXPECT_EQ(sent().mid(2), (QList<QByteArray>{"0200", "0202", "080003", "0200"}));
}

TEST_F(DriveOnMx1Ulf, TheStopGoesOutAgainBehindAReadingThatCtrlCHasEnded) {
  // The greetings, the stop and the power are answered, the question is not.
  faults.add({.kind = sim::FaultKind::Silence, .count = sim::Fault::kAlways, .skip = 4});
  clock.schedule(5000, [&] { interrupt.raise(); });
  EXPECT_EQ(run("drive 3 --stop"), 1);
  const QList<QByteArray> all = sent();
  EXPECT_GE(all.indexOf("080003"), 0);
  EXPECT_EQ(all.last(), "0200");
  EXPECT_LT(clock.now(), 9000);
}

TEST_F(DriveOnMx1Ulf, OneSessionIsOpened) {
  EXPECT_EQ(run("drive 3"), 0);
  EXPECT_EQ(line_.opens, 1);
  EXPECT_EQ(line_.closes, 1);
}

TEST_F(DriveOnMx1Ulf, AStopThatIsNotConfirmedIsToldWithinSecondsAndCtrlCDoesNotMakeItOne) {
  // The greetings are answered.
  faults.add({.kind = sim::FaultKind::Silence, .count = sim::Fault::kAlways, .skip = 2});
  QStringList told;
  clock.schedule(6000, [&] { told = console.messages; });
  clock.schedule(8000, [&] { interrupt.raise(); });
  EXPECT_EQ(run("drive 3 --stop"), 1);
  EXPECT_EQ(told.value(1), "Die Digitalzentrale hat einen Befehl nicht bestätigt!");
  EXPECT_FALSE(console.results.contains(QStringLiteral("Halt\tein")));
  EXPECT_LT(clock.now(), 15'000);
}

class StopOnLenz : public CliFixture, public ::testing::WithParamInterface<const char16_t*> {
 protected:
  StopOnLenz() : CliFixture(GetParam()) {}
};

INSTANTIATE_TEST_SUITE_P(Kinds, StopOnLenz, ::testing::Values(u"LI100", u"LI100V3", u"LIUSB"));

TEST_P(StopOnLenz, ThatIsNotConfirmedIsNotPrintedAsDone) {
  EXPECT_EQ(run("drive 3 --stop"), 0);
  EXPECT_EQ(console.results.last(), "Halt\tein");
  EXPECT_TRUE(console.messages.isEmpty());
  faults.add({.kind = sim::FaultKind::Silence, .count = sim::Fault::kAlways});
  EXPECT_EQ(run("drive 3 --stop"), 1);
  EXPECT_TRUE(console.results.isEmpty());
  EXPECT_EQ(console.messages.first(), "Die Digitalzentrale hat einen Befehl nicht bestätigt!");
}

class DriveOnSilentMx1Bin : public CliFixture, public ::testing::WithParamInterface<const char*> {
 protected:
  DriveOnSilentMx1Bin() : CliFixture(u"MX1BIN") {
    writeIni("LOKARI", "BaseUnit=MX1BIN\r\nComPort=3\r\nTimeout=999\r\nDelay=0\r\n");
    faults.add({.kind = sim::FaultKind::Silence, .count = sim::Fault::kAlways});
  }
};

INSTANTIATE_TEST_SUITE_P(Commands, DriveOnSilentMx1Bin,
                         ::testing::Values("drive 3 --speed 5", "switch 5 1=on", "cv read 8",
                                           "vehicle read Anlage 3", "test"));

TEST_P(DriveOnSilentMx1Bin, CtrlCInTheGreetingEndsTheCommandAtOnce) {
  clock.schedule(500, [&] { interrupt.raise(); });
  EXPECT_NE(run(GetParam()), 0);
  // The second of the opening and those of a farewell stay.
  EXPECT_LE(clock.now(), 4000);
  EXPECT_FALSE(line_.isOpen());
}

TEST_F(DriveCommandTest, CtrlCBeforeTheSessionWakesNoStation) {
  interrupt.raise();
  EXPECT_EQ(run("drive 3 --speed 5"), 1);
  EXPECT_EQ(run("switch 5 1=on"), 1);
  EXPECT_TRUE(untouched());
}

}  // namespace
}  // namespace lokari
