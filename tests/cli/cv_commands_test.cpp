#include "cli_fixture.h"

namespace lokari {
namespace {

using CvCommandsTest = CliFixture;

TEST_F(CvCommandsTest, ReadsInTheOrderOfTheArguments) {
  EXPECT_EQ(run("cv read 29 8 1"), 0);
  EXPECT_EQ(console.results, (QStringList{"29\t14", "8\t97", "1\t3"}));
  EXPECT_TRUE(console.messages.isEmpty());
  EXPECT_FALSE(line_.isOpen());
}

TEST_F(CvCommandsTest, WritesAndTellsWhatItWrote) {
  EXPECT_EQ(run("cv write 5=200 6=77"), 0);
  EXPECT_EQ(console.results, (QStringList{"5\t200", "6\t77"}));
  EXPECT_EQ(layout.onProgrammingTrack()->stored(5), 200);
  EXPECT_EQ(layout.onProgrammingTrack()->stored(6), 77);
}

TEST_F(CvCommandsTest, AFailedCvIsToldAndTheOthersAreStillRead) {
  EXPECT_EQ(run("cv read 700 1"), 1);
  EXPECT_EQ(console.results, (QStringList{"700\t-1021\tKein ACK vom Decoder", "1\t3"}));
}

TEST_F(CvCommandsTest, BehindABankRegisterThatFailedNothingIsWritten) {
  for (const char* setting : {"0", "1"}) {
    writeIni("LOKARI", QByteArray("BaseUnit=TAMSMC\r\nComPort=3\r\nTimeout=2\r\nDelay=0\r\n"
                                  "ContinueOnError=") +
                           setting + "\r\n");
    for (const int cv : {31, 32}) {
      layout.onProgrammingTrack()->readOnly = {cv};
      line_.writes.clear();
      EXPECT_EQ(run("cv write 31=16 32=3 257=100 5=1"), 1);
      EXPECT_EQ(line_.sent(), cv == 31 ? "xPTWD 31, 16\r" : "xPTWD 31, 16\rxPTWD 32, 3\r");
      EXPECT_EQ(console.results.last(), QStringLiteral("%1\t-1021\tKein ACK vom Decoder").arg(cv));
    }
  }
}

TEST_F(CvCommandsTest, ASilentStationIsToldAsSuch) {
  faults.add({.kind = sim::FaultKind::Silence});
  EXPECT_EQ(run("cv read 1"), 1);
  EXPECT_EQ(console.results, QStringList{"1\t-1001\tKeine Antwort vom Basisgerät"});
  EXPECT_EQ(console.messages, QStringList{"Keine / falsche Antwort vom Basisgerät!"});
}

TEST_F(CvCommandsTest, TheProgrammingMethodMayBeChosen) {
  EXPECT_EQ(run("cv read --mode paged 1"), 0);
  EXPECT_EQ(line_.sent(), "xPTRP 1\r");
  EXPECT_EQ(run("cv write --mode register 1=4"), 0);
  EXPECT_TRUE(line_.sent().endsWith("xPTWR 1, 4\r"));
  EXPECT_EQ(run("cv read --mode direct 1"), 0);
  EXPECT_TRUE(line_.sent().endsWith("xPTRB 1\r"));
  EXPECT_EQ(run("cv read --mode laut 1"), 2);
}

TEST_F(CvCommandsTest, WritesOnTheMainTrackByAddress) {
  EXPECT_EQ(run("cv write --main --address 1000 5=99"), 0);
  EXPECT_EQ(line_.sent(), "xPD 1000, 5, 99\r");
  EXPECT_EQ(console.results, QStringList{"5\t99"});
  EXPECT_EQ(layout.onMainTrack(1000)->stored(5), 99);
}

TEST_F(CvCommandsTest, TheMainTrackNeedsAnAddress) {
  EXPECT_EQ(run("cv write --main 5=99"), 2);
  EXPECT_EQ(console.messages.first(), "Auf dem Hauptgleis muss --address stehen!");
  EXPECT_TRUE(untouched());
}

TEST_F(CvCommandsTest, WhatTheStationDoesNotOfferIsAWrongCall) {
  EXPECT_EQ(run("cv read --main --address 3 1"), 2);
  EXPECT_EQ(console.messages.first(), "TAMSMC kann nicht auf dem Hauptgleis lesen!");

  writeIni("LOKARI", "BaseUnit=LI100\r\nLenzV36=0\r\n");
  EXPECT_EQ(run("cv write --main --address 3 1=5"), 2);
  EXPECT_TRUE(console.messages.contains("LI100 kann nicht auf dem Hauptgleis schreiben!"));
  EXPECT_EQ(run("cv read 255 256"), 2);
  EXPECT_TRUE(console.messages.contains("LI100 kann nicht CV 256 lesen!"));

  writeIni("LOKARI", "BaseUnit=MX1\r\n");
  EXPECT_EQ(run("cv write 255=1 256=1"), 2);
  EXPECT_EQ(console.messages.first(), "MX1 kann nicht CV 256 schreiben!");
  EXPECT_TRUE(untouched());
}

TEST_F(CvCommandsTest, NumbersOutOfRangeAreAWrongCallAndNothingIsSent) {
  for (const char* call : {"cv read 0",
                           "cv read 1025",
                           "cv read x",
                           "cv read -1",
                           "cv read 1 2,3",
                           "cv read",
                           "cv write 5",
                           "cv write 5=256",
                           "cv write 5=-1",
                           "cv write 5=",
                           "cv write =5",
                           "cv write 5=1=2",
                           "cv write 0=1",
                           "cv write 1025=1",
                           "cv write",
                           "cv write --main --address 0 5=1",
                           "cv write --main --address 10240 5=1",
                           "cv write --main --address 5=1",
                           "cv write 5=1 6=256",
                           "cv read 1 --laut"}) {
    EXPECT_EQ(run(call), 2) << call;
    EXPECT_TRUE(console.results.isEmpty()) << call;
  }
  EXPECT_TRUE(untouched());
}

TEST_F(CvCommandsTest, CtrlCEndsTheWaitAndTheStationGetsItsFarewell) {
  faults.add({.kind = sim::FaultKind::Silence, .count = sim::Fault::kAlways});
  clock.schedule(1500, [&] { interrupt.raise(); });
  EXPECT_EQ(run("cv read 1 2"), 1);
  EXPECT_EQ(console.results, QStringList{"1\t-1002\tAbgebrochen"});
  EXPECT_EQ(line_.sent(), "xPTRB 1\r");
  EXPECT_FALSE(line_.isOpen());
  EXPECT_EQ(clock.now(), 2500);
}

TEST_F(CvCommandsTest, CtrlCDuringTheOpeningReadsNothing) {
  clock.schedule(500, [&] { interrupt.raise(); });
  EXPECT_EQ(run("cv read 1"), 1);
  EXPECT_TRUE(line_.writes.isEmpty());
  EXPECT_FALSE(line_.isOpen());
}

TEST_F(CvCommandsTest, CtrlCBeforeTheSessionReadsNothing) {
  interrupt.raise();
  EXPECT_EQ(run("cv read 1"), 1);
  EXPECT_TRUE(line_.writes.isEmpty());
  EXPECT_FALSE(line_.isOpen());
}

TEST_F(CvCommandsTest, AStationThatIsPulledOutEndsTheCommandWithAMessage) {
  faults.add({.kind = sim::FaultKind::Unplugged, .skip = 1});
  EXPECT_EQ(run("cv read 1 8 29"), 1);
  EXPECT_EQ(console.results, QStringList{"1\t3"});
  EXPECT_EQ(console.messages, QStringList{"Die Schnittstelle ist nicht mehr da!"});
}

TEST_F(CvCommandsTest, ASpanReadsAllItsCvs) {
  EXPECT_EQ(run("cv read 1-3 8"), 0);
  EXPECT_EQ(console.results.size(), 4);
  EXPECT_EQ(console.results.first(), "1\t3");
  EXPECT_EQ(console.results.last(), "8\t97");
  EXPECT_EQ(run("cv read 3-1"), 2);
}

TEST_F(CvCommandsTest, ResultsAsJsonAreOneObjectALine) {
  EXPECT_EQ(run("cv read 1 700 --json"), 1);
  EXPECT_EQ(console.results,
            (QStringList{"{\"cv\":1,\"value\":3}",
                         "{\"code\":-1021,\"cv\":700,\"text\":\"Kein ACK vom Decoder\"}"}));
}

TEST_F(CvCommandsTest, AFailureEndsTheWritingUnlessTheSettingsGoOn) {
  layout.onProgrammingTrack()->readOnly.insert(5);
  EXPECT_EQ(run("cv write 5=200 6=77"), 1);
  EXPECT_EQ(console.results.size(), 2) << "ContinueOnError is 1 unless it is set";
  EXPECT_EQ(console.results.last(), "6\t77");

  writeIni("LOKARI",
           "BaseUnit=TAMSMC\r\nComPort=3\r\nTimeout=2\r\nDelay=0\r\nContinueOnError=0\r\n");
  EXPECT_EQ(run("cv write 5=200 6=78 7=1"), 1);
  EXPECT_EQ(console.results.size(), 1);
  EXPECT_EQ(console.results.first().count('\t'), 2) << "a failing CV has its text";
  EXPECT_EQ(console.messages.last(), "Nicht mehr bearbeitet: CV 6, 7");
  EXPECT_EQ(layout.onProgrammingTrack()->stored(6), 77);
}

TEST_F(CvCommandsTest, WhatNoValueOfTheDecoderStandsBehindIsNamed) {
  EXPECT_EQ(run("cv write 5=200 6=77"), 0);
  EXPECT_EQ(console.messages, QStringList{"CV 5, 6: geschrieben, nicht geprüft!"});
  layout.onProgrammingTrack()->readOnly.insert(5);
  EXPECT_EQ(run("cv write 5=200"), 1);
  EXPECT_TRUE(console.messages.filter("nicht geprüft").isEmpty());
}

TEST_F(CvCommandsTest, WhatNoValueOfTheDecoderStandsBehindIsNamedAlsoWhenTheLineBreaks) {
  faults.add({.kind = sim::FaultKind::Unplugged, .skip = 1});
  EXPECT_EQ(run("cv write 5=200 6=77"), 1);
  EXPECT_EQ(console.results, QStringList{"5\t200"});
  EXPECT_EQ(console.messages, (QStringList{"CV 5: geschrieben, nicht geprüft!",
                                           "Die Schnittstelle ist nicht mehr da!"}));
}

class CvOnLenzTest : public CliFixture {
 protected:
  CvOnLenzTest() : CliFixture(u"LI100V3") {
    writeIni("LOKARI", "BaseUnit=LI100V3\r\nComPort=3\r\nTimeout=2\r\nDelay=0\r\nLenzV36=0\r\n");
  }
};

TEST_F(CvOnLenzTest, AMethodThatTheWireLacksIsRefused) {
  EXPECT_EQ(run("cv write 5=10 --mode register"), 2);
  EXPECT_EQ(console.messages.first(), "LI100V3 kann nicht mit --mode register programmieren!");
  EXPECT_EQ(run("cv read 5 --mode register"), 2);
  EXPECT_TRUE(untouched());
  EXPECT_EQ(run("cv write 5=10 --mode paged"), 0);
  EXPECT_TRUE(console.messages.filter("nicht geprüft").isEmpty()) << "it was read back";
  writeIni("LOKARI", "BaseUnit=Z21IP\r\n");
  EXPECT_EQ(run("cv read 5 --mode paged"), 2);
  EXPECT_TRUE(console.messages.contains("Z21IP kann nicht mit --mode paged programmieren!"));
}

TEST_F(CvOnLenzTest, ACvThatNoMessageWritesIsRefused) {
  EXPECT_EQ(run("cv write 255=1 300=0"), 2);
  EXPECT_TRUE(console.messages.contains("LI100V3 kann nicht CV 300 schreiben!"));
  EXPECT_TRUE(untouched());
}

class CvOnMx1Test : public CliFixture {
 protected:
  CvOnMx1Test() : CliFixture(u"MX1") {}
};

TEST_F(CvOnMx1Test, AMainTrackWriteThatTheStationRefusesAtTheEndIsAFailure) {
  faults.add({.kind = sim::FaultKind::Busy});
  EXPECT_EQ(run("cv write --main --address 3 5=99"), 1);
  EXPECT_EQ(console.results,
            QStringList{"5\t-1003\tAdresse gesperrt - Programmierung nicht möglich!"});
}

TEST_F(CvOnMx1Test, AMainTrackWriteWithoutARefusalIsDone) {
  EXPECT_EQ(run("cv write --main --address 3 5=99"), 0);
  EXPECT_EQ(console.results, QStringList{"5\t99"});
}

}  // namespace
}  // namespace lokari
