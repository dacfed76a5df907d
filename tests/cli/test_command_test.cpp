// `lokari-cli test` in virtual time.
#include "cli_fixture.h"

namespace lokari {
namespace {

using TestCommand = CliFixture;

TEST_F(TestCommand, PrintsTheLinesOfTheTest) {
  EXPECT_EQ(run("test"), 0);
  EXPECT_EQ(console.results,
            (QStringList{"Tams MC SPU Version 2.14a", "MC Serien-#: 0001E240", "Power On "}));
  EXPECT_TRUE(console.messages.isEmpty());
  EXPECT_FALSE(line_.isOpen());
}

TEST_F(TestCommand, ASilentStationIsAFailure) {
  faults.add({.kind = sim::FaultKind::Silence, .count = sim::Fault::kAlways});
  EXPECT_EQ(run("test"), 1);
  EXPECT_TRUE(console.results.isEmpty());
  EXPECT_EQ(console.messages,
            (QStringList{"Keine Antwort vom Basisgerät!",
                         "Bitte Kabel an COM3, Stromversorgung und Baudrate (2400) prüfen."}));
}

TEST_F(TestCommand, WithoutAPortThereIsNoSession) {
  line_.failsToOpen = true;
  EXPECT_EQ(run("test"), 2);
  EXPECT_TRUE(console.results.isEmpty());
  EXPECT_EQ(console.messages.first(), "Kann Kommunikationsschnittstelle nicht öffnen (0)!");
  EXPECT_TRUE(console.messages.last().startsWith("Bitte Kabel an COM3"));
}

TEST_F(TestCommand, CtrlCEndsItAfterTheFarewell) {
  faults.add({.kind = sim::FaultKind::Silence, .count = sim::Fault::kAlways});
  clock.schedule(1500, [this] { interrupt.raise(); });
  EXPECT_EQ(run("test"), 1);
  EXPECT_EQ(console.messages, QStringList{"Keine Antwort vom Basisgerät!"});
  EXPECT_LT(clock.now(), 4000);
  EXPECT_FALSE(line_.isOpen());
  EXPECT_FALSE(interrupt.action);
}

TEST_F(TestCommand, AnotherLenzInterfaceThanTheConfiguredOneIsNamed) {
  writeIni("LOKARI", "BaseUnit=LI100\r\nComPort=3\r\nTimeout=2\r\nDelay=0\r\n");
  station = sim::stationByName(u"LI100V3")->make({clock, layout, faults, 20});
  test::SimLine lenz(clock, *station);
  const CliWorld world{folder.path(), clock, {lenz, socket, can}, console, interrupt};
  EXPECT_EQ(runCli({"test"}, world), ExitStatus::Done);
  EXPECT_EQ(console.results.first(), "Lenz Zentrale Version 3.6");
  EXPECT_EQ(console.messages,
            (QStringList{"Achtung: test schaltet an LI100 die Anlage ein, auch eine angehaltene.",
                         "Angeschlossen ist LI100V3, eingestellt ist LI100!"}));
}

TEST_F(TestCommand, WhatAnswersWithoutSenseIsAFailure) {
  writeIni("LOKARI", "BaseUnit=LI100\r\nComPort=3\r\nTimeout=2\r\nDelay=0\r\n");
  faults.add({.kind = sim::FaultKind::Garbage, .count = sim::Fault::kAlways});
  station = sim::stationByName(u"LI100V3")->make({clock, layout, faults, 20});
  test::SimLine lenz(clock, *station);
  const CliWorld world{folder.path(), clock, {lenz, socket, can}, console, interrupt};
  EXPECT_EQ(runCli({"test"}, world), ExitStatus::Failed);
  EXPECT_EQ(console.results, QStringList{"Ungültige Antwort vom LI100"});
}

TEST_F(TestCommand, TakesNoArguments) {
  EXPECT_EQ(run("test jetzt"), 2);
  EXPECT_EQ(console.messages.first(), "test hat keine Argumente!");
  EXPECT_TRUE(untouched());
}

}  // namespace
}  // namespace lokari
