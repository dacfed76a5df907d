// The conversations of the communication test as strict scripts, byte by byte.
#include "comm_fixture.h"

namespace lokari {
namespace {

using test::CommFixture;

// ---- Zimo binary --------------------------------------------------------------------------------

class ZimoBinaryTest : public CommFixture {
 protected:
  ZimoBinaryTest() : CommFixture(StationKind::Mx1Bin) {}

  void expectGreeting() {
    expect("01 01 00 10 30 00 3E 17").answer(fromHex("01 01 00 50 00 00 00 11 17"));
    expect("01 01 10 21 10 30 11 04 10 21 B8 17")
        .answer(fromHex("01 01 10 21 50 11 10 21 00 F9 17"));
  }
  void expectFarewell(const char* frame) { expect(frame); }
};

TEST_F(ZimoBinaryTest, AsksWhoItIsAndThenForTheTrack) {
  expectGreeting();
  expect("01 01 02 10 30 0D 00 2F 17")
      .answer(fromHex("01 01 02 50 0D 02 00 00 04 00 00 00 00 02 05 02 0C 0E 07 00 00 02 09 00 00 "
                      "00 00 03 E8 55 17"));
  expect("01 01 03 10 30 02 03 5A 17").answer(fromHex("01 01 03 50 02 03 03 82 55 17"));
  expectFarewell("01 01 04 10 30 11 04 00 34 17");
  EXPECT_EQ(run().lines,
            (QStringList{"MXULF", "Software 2.05.07 vom 2.12.14", "Boot ROM 2.09", "Ser. Nr. 1000",
                         "DCC Datenformat aktiv", "Fahrspannung eingeschaltet"}));
}

TEST_F(ZimoBinaryTest, WithoutAnAnswerAboutTheTrackTheStationIsStillNamed) {
  expectGreeting();
  expect("01 01 02 10 30 0D 00 2F 17").answer(fromHex("01 01 02 50 0D 02 00 00 03 55 17"));
  expect("01 01 03 10 30 02 03 5A 17");
  expectFarewell("01 01 04 10 30 11 04 00 34 17");
  EXPECT_EQ(run().lines, QStringList{"MX31ZL"});
}

TEST_F(ZimoBinaryTest, NoiseIsNoAnswer) {
  expectGreeting();
  expect("01 01 02 10 30 0D 00 2F 17").answer("hello");
  expectFarewell("01 01 03 10 30 11 04 00 65 17");
  EXPECT_EQ(run().lines.first(), "Keine Antwort vom Basisgerät!");
}

TEST_F(ZimoBinaryTest, ACancelInTheQuestionForTheTrackKeepsTheName) {
  expectGreeting();
  expect("01 01 02 10 30 0D 00 2F 17").answer(fromHex("01 01 02 50 0D 02 00 00 01 55 17"));
  expect("01 01 03 10 30 02 03 5A 17").then([this] { cancel(); }, 500);
  expectFarewell("01 01 04 10 30 11 04 00 34 17");
  const CommTestResult result = run();
  EXPECT_TRUE(result.cancelled);
  EXPECT_EQ(result.lines, QStringList{"MX1 2000 / HS"});
}

// ---- Lenz ---------------------------------------------------------------------------------------

class LenzTest : public CommFixture {
 protected:
  LenzTest() : CommFixture(StationKind::Li100V3) {}
  explicit LenzTest(StationKind kind) : CommFixture(kind) {}

  void expectFarewell() { expect("21 81 A0").answer(fromHex("61 01 60")); }
  void expectUsbFarewell() { expect("FF FE 21 81 A0").answer(fromHex("FF FE 61 01 60")); }
};

class Li100Test : public LenzTest {
 protected:
  Li100Test() : LenzTest(StationKind::Li100) {}
};

class LiUsbTest : public LenzTest {
 protected:
  LiUsbTest() : LenzTest(StationKind::LiUsb) {}
};

TEST_F(LenzTest, AsksForTheVersionAndThenForTheState) {
  expect("21 21 00").answer(fromHex("63 21 36 00 74"));
  expect("21 24 05").answer(fromHex("62 22 04 44"));
  expectFarewell();
  const CommTestResult result = run();
  EXPECT_EQ(result.lines, (QStringList{"Lenz Zentrale Version 3.6", "LZ100", "Programmiermodus aus",
                                       "Startmodus automatisch"}));
  EXPECT_EQ(result.connected, (StationChoice{StationKind::Li100V3, false}));
  EXPECT_EQ(settings.baseUnit, StationKind::Li100V3);
}

TEST_F(LenzTest, AnOldInterfaceSelectedAsANewOneIsCorrected) {
  expect("21 21 00").answer(fromHex("62 21 23 60"));
  expect("21 24 05").answer(fromHex("62 22 03 43"));
  expectFarewell();
  const CommTestResult result = run();
  EXPECT_EQ(result.lines, (QStringList{"Lenz Zentrale Version 2.3", "Programmiermodus aus",
                                       "Startmodus manuell", "Notaus aktiv", "Nothalt aktiv"}));
  EXPECT_EQ(result.connected, (StationChoice{StationKind::Li100, false}));
  EXPECT_EQ(settings.baseUnit, StationKind::Li100);
}

TEST_F(Li100Test, ANewInterfaceSelectedAsAnOldOneIsCorrectedAndNamesItsCentral) {
  expect("21 21 00").answer(fromHex("63 21 30 01 73"));
  expect("21 24 05").answer(fromHex("62 22 08 48"));
  expectFarewell();
  EXPECT_EQ(run().lines, (QStringList{"Lenz Zentrale Version 3.0", "LH200", "Programmiermodus ein",
                                      "Startmodus manuell"}));
  EXPECT_EQ(settings.baseUnit, StationKind::Li100V3);
}

TEST_F(Li100Test, AUsbInterfaceSelectedAsLi100IsCorrectedByASingleTest) {
  expect("21 21 00").answer(fromHex("FF FE 63 21 36 00 74"));
  expect("FF FE 21 24 05").answer(fromHex("FF FE 62 22 04 44"));
  expectUsbFarewell();
  const CommTestResult result = run();
  EXPECT_EQ(result.lines, (QStringList{"Lenz Zentrale Version 3.6", "Programmiermodus aus",
                                       "Startmodus automatisch"}));
  EXPECT_EQ(result.connected, (StationChoice{StationKind::LiUsb, true}));
  EXPECT_EQ(settings.baseUnit, StationKind::LiUsb);
  EXPECT_EQ(line.opens, 1);
}

TEST_F(LiUsbTest, ALowerVersionIsTheOtherChoice) {
  expect("FF FE 21 21 00").answer(fromHex("FF FE 63 21 35 00 77"));
  expect("FF FE 21 24 05").answer(fromHex("FF FE 62 22 04 44"));
  expectUsbFarewell();
  EXPECT_EQ(run().connected, (StationChoice{StationKind::LiUsb, false}));
}

TEST_F(LiUsbTest, AMessageThatComesInPiecesIsWaitedFor) {
  expect("FF FE 21 21 00").answer(fromHex("FF FE 63 21")).answer(fromHex("36 00 74"), 900);
  expect("FF FE 21 24 05").answer(fromHex("FF FE 62 22")).answer(fromHex("05 45"), 900);
  expectUsbFarewell();
  EXPECT_EQ(run().lines, (QStringList{"Lenz Zentrale Version 3.6", "Programmiermodus aus",
                                      "Startmodus automatisch", "Nothalt aktiv"}));
}

TEST_F(LiUsbTest, AMessageThatStaysCutGivesTheLinesItCan) {
  expect("FF FE 21 21 00").answer(fromHex("FF FE 63 21 36"));
  expect("FF FE 21 24 05");
  expectUsbFarewell();
  const CommTestResult result = run();
  EXPECT_EQ(result.lines, QStringList{"Lenz Zentrale Version 3.6"});
  EXPECT_EQ(result.connected, (StationChoice{StationKind::LiUsb, true}));
}

TEST_F(LenzTest, AWrongHeadCorrectsNothing) {
  expect("21 21 00").answer(fromHex("61 82 E3 00"));
  expectFarewell();
  const CommTestResult result = run();
  EXPECT_EQ(result.outcome, Outcome::NotUnderstood);
  EXPECT_EQ(result.lines, QStringList{"Ungültige Antwort vom LI100"});
  EXPECT_FALSE(result.connected);
  EXPECT_EQ(settings.baseUnit, StationKind::Li100V3);
}

TEST_F(Li100Test, RepeatsOfTheVersionAreNotTakenForTheState) {
  expect("21 21 00").answer(fromHex("62 21 23 60 62 21 23 60")).answer(fromHex("62 21 23 60"), 60);
  expect("21 24 05").answer(fromHex("62 22 04 44 62 22 04 44"), 60);
  expectFarewell();
  EXPECT_EQ(run().lines, (QStringList{"Lenz Zentrale Version 2.3", "Programmiermodus aus",
                                      "Startmodus automatisch"}));
}

TEST_F(LenzTest, WaitingInputIsDroppedBeforeEachQuestion) {
  line.expect(fromHex("21 21 00")).then([this] { line.arrive(fromHex("01")); }, 500);
  expectFarewell();
  // A single byte is too little, and nothing to ask again for.
  EXPECT_EQ(run().lines.first(), "Keine Antwort vom Basisgerät!");
}

// ---- LIDP ---------------------------------------------------------------------------------------

class LidpTest : public CommFixture {
 protected:
  LidpTest() : CommFixture(StationKind::LiDp) {}
};

TEST_F(LidpTest, AsksAndSaysGoodbyeWithTheSameLine) {
  line.expect("01\r").answer("OK\r\n");
  line.expect("01\r").answer("OK\r\n");
  EXPECT_EQ(run().lines, (QStringList{"Lenz Decoderprogrammer", "Status OK, Gleisausgang aus"}));
}

TEST_F(LidpTest, TellsOvercurrent) {
  line.expect("01\r").answer("\r\nX3\r\n");
  line.expect("01\r");
  EXPECT_EQ(run().lines, (QStringList{"Lenz Decoderprogrammer", "Überstrom!"}));
}

// ---- Intellibox and Tams MC ---------------------------------------------------------------------

class IntelliboxTest : public CommFixture {
 protected:
  IntelliboxTest() : CommFixture(StationKind::Ibx) {}
  const char* const kVersions = "02 50 15 02 10 13 01 14 01 09 01 2A 05 00 01 23 4F 56 00";
};

TEST_F(IntelliboxTest, AsksForTheVersionsAndThenForThePower) {
  expect("78 A0").answer(fromHex(kVersions));
  expect("78 A2").answer(fromHex("18"));
  EXPECT_EQ(run().lines, (QStringList{"IBX SPU Version 1.550 / KPU Version 1.310",
                                      "PPU Version 1.4 / LIPU Version 0.9", "DNG Version 2.A",
                                      "IBX Serien-#: 0001234F56", "Power On Halt aktiv "}));
}

TEST_F(IntelliboxTest, OneThatAnswersNothingIsWokenAndASecondLaterAskedAgain) {
  Millis wokenAt = 0;
  expect("78 A0");
  expect("0D").then([&] { wokenAt = clock.now(); }).answer(fromHex("02 0D"), 50);
  expect("78 A0").answer(fromHex(kVersions));
  expect("78 A2").answer(fromHex("08"));
  EXPECT_EQ(run().lines.last(), "Power On ");
  for (const auto& write : line.writes) {
    if (write.at > wokenAt) {
      EXPECT_EQ(write.at - wokenAt, 1000);
      break;
    }
  }
}

TEST_F(IntelliboxTest, WithoutAnAnswerAboutThePowerTheVersionsStand) {
  expect("78 A0").answer(fromHex(kVersions));
  expect("78 A2");
  EXPECT_EQ(run().lines.size(), 4);
}

TEST_F(IntelliboxTest, EighteenBytesAreTooFew) {
  expect("78 A0").answer(fromHex(kVersions).left(18));
  EXPECT_EQ(run().lines.first(), "Keine Antwort vom Basisgerät!");
}

class TamsTest : public CommFixture {
 protected:
  TamsTest() : CommFixture(StationKind::TamsMc) {}
};

TEST_F(TamsTest, AsksForTheVersionAndThenForThePower) {
  expect("78 A0").answer(fromHex("04 02 01 04 61 00 A1 B2 0C 00"));
  expect("78 A2").answer(fromHex("40"));
  EXPECT_EQ(run().lines, (QStringList{"Tams MC SPU Version 2.14a", "MC Serien-#: 00A1B20C",
                                      "Power Off N-Spur-Gleisspannung"}));
}

TEST_F(TamsTest, SilenceIsWaitedOutASecondTimeWithoutASecondQuestion) {
  expect("78 A0").answer(fromHex("04 02 01 04 61 00 A1 B2 0C 00"), 3500);
  expect("78 A2").answer(fromHex("08"));
  EXPECT_EQ(run().lines.last(), "Power On ");
}

TEST_F(TamsTest, SilenceIsSilenceInTheEnd) {
  expect("78 A0");
  EXPECT_EQ(run().lines.first(), "Keine Antwort vom Basisgerät!");
}

}  // namespace
}  // namespace lokari
