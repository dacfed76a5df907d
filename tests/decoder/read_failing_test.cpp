// RdComm: banks, failures and cancels.
#include "read_fixture.h"

namespace lokari {
namespace {

class ReadFailing : public ReadFixture {};

// ---- Banks ------------------------------------------------------------------------------------

const char* const kBanks =
    "[X]\nMAPCVA=31\nMAPCVB=32\nMAPVALA_2=16\nMAPVALB_2=0\nMAPVALA_3=16\nMAPVALB_3=1\n"
    "CV_49=Regler,0-255,0,4\n"
    "CV_257_2=Motor,0-128,100,6\nCV_258_2=Pfiff,0-128,128,6\nCV_257_3=Bremse,0-128,1,6\n";

class ReadBanks : public ReadFailing {
 protected:
  ReadBanks() {
    decoder().banks = {{{16, 0}, {{257, 11}, {258, 12}}}, {{16, 1}, {{257, 21}}}};
    decoder().store(31, 0);
    decoder().store(32, 0);
    openEco(kBanks);
  }
};

TEST_F(ReadBanks, ABankIsSelectedOnceForAllItsCvs) {
  for (const int index : {49, 1024, 1025, 1280}) markRow(index);
  read();
  EXPECT_EQ(sent(), QStringList({"xPTRB 49", "xPTWD 31, 16", "xPTWD 32, 0", "xPTRB 257",
                                 "xPTRB 258", "xPTWD 31, 16", "xPTWD 32, 1", "xPTRB 257"}));
  EXPECT_EQ(steps(), QStringList({"Lese Regler (CV 49)", "Lese Motor (CV 257 (2))",
                                  "Lese Pfiff (CV 258 (2))", "Lese Bremse (CV 257 (3))"}));
  EXPECT_EQ(value(1024), 11);
  EXPECT_EQ(value(1025), 12);
  EXPECT_EQ(value(1280), 21);
  EXPECT_EQ(row(1280).text, "21");
}

TEST_F(ReadBanks, ABankThatCannotBeSelectedIsAFailure) {
  decoder().readOnly.insert(32);
  markRow(1024);
  read();
  EXPECT_EQ(view.statuses.last(), "Kein ACK vom Decoder");
  EXPECT_EQ(mark(1024), CvMark::None);
  EXPECT_EQ(view.hides, 0);
  expectSessionClosed();
}

TEST_F(ReadBanks, ABankThatWasMissedIsSelectedAnewForTheNextCv) {
  settings.continueOnError = true;
  markRow(1024);
  markRow(1025);
  fault("noack@1");
  read();
  EXPECT_EQ(sent(), QStringList({"xPTWD 31, 16", "xPTWD 32, 0", "xPTWD 31, 16", "xPTWD 32, 0",
                                 "xPTRB 258"}));
  EXPECT_EQ(mark(1024), CvMark::Failed);
  EXPECT_EQ(value(1025), 12);
  EXPECT_EQ(mark(1025), CvMark::Verified);
}

TEST_F(ReadBanks, AfterAContinuedFailureNoCvOfAnotherBankIsTaken) {
  settings.continueOnError = true;
  decoder().readOnly.insert(32);
  markRow(49);
  markRow(1280);
  read();
  EXPECT_EQ(sent(), QStringList({"xPTRB 49", "xPTWD 31, 16", "xPTWD 32, 1"}));
  EXPECT_EQ(value(1280), 0);
  EXPECT_EQ(mark(1280), CvMark::Failed);
  EXPECT_EQ(view.details, QStringList({"CV 257 (3): Bank nicht gewählt (CV 32)", ""}));
  EXPECT_EQ(row(1280).colour, TextColour::Red);
  EXPECT_EQ(mark(49), CvMark::Verified);
}

class ReadBanksOnMx1 : public BenchFixture {
 protected:
  ReadBanksOnMx1() : BenchFixture(StationKind::Mx1) {}
};

TEST_F(ReadBanksOnMx1, ABankIsSelectedOnTheProgrammingTrack) {
  decoder().banks = {{{16, 0}, {{257, 11}}}};
  decoder().store(31, 0);
  decoder().store(32, 0);
  openEco(kBanks);
  markRow(1024);
  read();
  EXPECT_EQ(sent().mid(1, 3), QStringList({"RN1F10", "RN2000", "QN101"}));
  EXPECT_EQ(value(1024), 11);
  EXPECT_EQ(link.commJob, CommJob::ReadProgTrack);
}

// ---- Failures ---------------------------------------------------------------------------------

struct FailureCase {
  const char* fault;
  const char* status;
};

class ReadFailures : public ReadFailing, public ::testing::WithParamInterface<FailureCase> {};

TEST_P(ReadFailures, EndTheRunWithTheirTextAndKeepTheValuesReadSoFar) {
  openEco(kReadDescription);
  check("chkRd_3");
  markRow(33);
  markRow(49);
  fault(GetParam().fault);
  read();
  EXPECT_EQ(view.statuses.last(), QString::fromUtf8(GetParam().status));
  EXPECT_EQ(prompt.beeps, 1);
  EXPECT_EQ(value(3), 3);
  EXPECT_EQ(mark(3), CvMark::Verified);
  EXPECT_EQ(view.details.last(), "CV 33") << "below the text stands which CV it was";
  EXPECT_EQ(value(33), 0);
  EXPECT_EQ(mark(33), CvMark::Failed);
  EXPECT_EQ(row(33).colour, TextColour::Red);
  EXPECT_EQ(sent().filter(QStringLiteral("xPTRB")).last(), "xPTRB 33")
      << "nothing is read behind it";
  EXPECT_EQ(view.hides, 0) << "the dialog stays up with the text";
  expectSessionClosed();
}

TEST_P(ReadFailures, AreSurvivedWithZeroAndARedMark) {
  settings.continueOnError = true;
  openEco(kReadDescription);
  check("chkRd_3");
  markRow(33);
  markRow(49);
  fault(GetParam().fault);
  read();
  EXPECT_TRUE(view.statuses.contains(QString::fromUtf8(GetParam().status)));
  EXPECT_EQ(prompt.beeps, 1);
  EXPECT_EQ(value(33), 0);
  EXPECT_EQ(mark(33), CvMark::Failed);
  EXPECT_EQ(row(33).colour, TextColour::Red);
  EXPECT_EQ(value(49), 49);
  EXPECT_EQ(mark(49), CvMark::Verified);
  EXPECT_EQ(view.percents.at(view.percents.size() - 2), 100);
  EXPECT_EQ(view.hides, 1);
  expectSessionClosed();
}

INSTANTIATE_TEST_SUITE_P(OnTheSecondCv, ReadFailures,
                         ::testing::Values(FailureCase{"silence@1", "Keine Antwort vom Basisgerät"},
                                           FailureCase{"garbage@1",
                                                       "Falsche Antwort vom Basisgerät"},
                                           FailureCase{"noack@1", "Kein ACK vom Decoder"}));

TEST_F(ReadFailing, AContinuedFailurePausesForThreeSeconds) {
  settings.continueOnError = true;
  openEco(kReadDescription);
  markRow(33);
  markRow(49);
  fault("noack");
  read();
  ASSERT_EQ(line.writes.size(), 2);
  EXPECT_GE(line.writes[1].at - line.writes[0].at, 3000);
  EXPECT_LT(line.writes[1].at - line.writes[0].at, 4000);
}

TEST_F(ReadFailing, AContinuedFailureOfTheConfigurationShowsItsOwnOptions) {
  settings.continueOnError = true;
  record.recCvValues[0][28] = 1 + 2 + 4 + 8 + 16;
  openEco(kReadDescription);
  check("chkRd_29");
  fault("noack");
  read();
  EXPECT_EQ(mark(29), CvMark::Failed);
  for (const char* name : {"optDcComDirNormal", "optDcComSteps14", "optDcDrvSteps14",
                           "optDcComAnalogNo", "optDcComSpdTblNo", "optDcDrvSpdTblNo",
                           "optDcComRailComNo", "optDcComDetectPulseNo", "optDcComManBitYes"}) {
    EXPECT_TRUE(checked(name)) << name;
    EXPECT_EQ(control(name).colour, TextColour::Red) << name;
  }
  EXPECT_EQ(value(29), 64);
}

TEST_F(ReadFailing, AContinuedFailureOfTheConsistAddress) {
  settings.continueOnError = true;
  record.recCvValues[0][18] = '\x85';
  openEco(kReadDescription);
  check("chkRd_19");
  fault("noack");
  read();
  EXPECT_EQ(mark(19), CvMark::Failed);
  EXPECT_TRUE(checked("optDcConsistDirNormal"));
  EXPECT_EQ(value(19), 0);
}

TEST_F(ReadFailing, AContinuedFailureOfATablePoint) {
  settings.continueOnError = true;
  openEco(kReadDescription);
  check("chkRd_Tbl");
  fault("noack@5");
  read();
  EXPECT_EQ(mark(72), CvMark::Failed);
  EXPECT_EQ(value(72), 0);
  EXPECT_EQ(mark(73), CvMark::Verified);
}

TEST_F(ReadFailing, ALinkThatCannotBeOpenedStaysInTheStatusLine) {
  openEco(kReadDescription);
  markRow(33);
  line.failsToOpen = true;
  read();
  EXPECT_EQ(view.statuses.last(), "Kann Kommunikationsschnittstelle nicht öffnen (0)!");
  EXPECT_EQ(prompt.beeps, 1);
  EXPECT_EQ(view.hides, 0);
  EXPECT_EQ(view.captions, QStringList({"Abbruch", "OK"}));
  EXPECT_FALSE(bench->commRunning);
  // Or the port of the next session would stay open for nobody.
  EXPECT_EQ(link.commUseCount, 0);
}

TEST_F(ReadFailing, APortThatVanishesEndsTheRunAndKeepsTheValues) {
  settings.continueOnError = true;
  openEco(kReadDescription);
  check("chkRd_3");
  markRow(33);
  markRow(49);
  fault("unplugged@1");
  read();
  EXPECT_FALSE(view.statuses.last().isEmpty());
  EXPECT_NE(view.statuses.last(), "Beende Kommunikation ...");
  EXPECT_NE(view.statuses.last(), "Lese Licht (CV 33)");
  EXPECT_EQ(value(3), 3);
  EXPECT_EQ(mark(3), CvMark::Verified);
  EXPECT_EQ(value(33), 0);
  EXPECT_EQ(mark(33), CvMark::None);
  EXPECT_EQ(view.hides, 0);
  EXPECT_EQ(prompt.beeps, 1);
  expectSessionClosed();
}

// ---- Cancel -----------------------------------------------------------------------------------

TEST_F(ReadFailing, ACancelDuringAReadEndsOrderly) {
  openEco(kReadDescription);
  check("chkRd_3");
  markRow(33);
  markRow(49);
  fault("silence@1");
  clock.schedule(2000, [this] { link.cancelRequested = true; });
  read();
  EXPECT_EQ(value(3), 3);
  EXPECT_EQ(mark(33), CvMark::None);
  EXPECT_EQ(sent().last(), "xPTRB 33");
  EXPECT_EQ(view.statuses.last(), "Beende Kommunikation ...");
  EXPECT_EQ(prompt.beeps, 0);
  EXPECT_EQ(view.hides, 1);
  expectSessionClosed();
}

TEST_F(ReadFailing, ACancelDuringThePauseAfterAFailureEndsTheRunBehindTheCv) {
  settings.continueOnError = true;
  openEco(kReadDescription);
  markRow(33);
  markRow(49);
  fault("noack");
  clock.schedule(2500, [this] { link.cancelRequested = true; });
  read();
  EXPECT_EQ(mark(33), CvMark::Failed);
  EXPECT_EQ(mark(49), CvMark::None);
  EXPECT_EQ(view.hides, 1);
  expectSessionClosed();
}

TEST_F(ReadFailing, AnOrderlyEndDrawsTheSpeedTableAnewAndAFailedOneDoesNot) {
  openEco(kReadDescription);
  markRow(33);
  int draws = 0;
  QObject::connect(bench.get(), &DecoderBench::speedTableChanged, bench.get(), [&] { ++draws; });
  read();
  EXPECT_EQ(draws, 1);
  fault("noack");
  read();
  EXPECT_EQ(draws, 1);
}

TEST_F(ReadFailing, TheWindowsFlagsHoldDuringTheRun) {
  openEco(kReadDescription);
  markRow(33);
  bool running = false;
  bool enabled = false;
  fault("late:1:500");
  clock.schedule(1300, [&] {
    running = bench->commRunning;
    enabled = view.progressEnabled;
  });
  read();
  EXPECT_TRUE(running);
  EXPECT_TRUE(enabled);
  EXPECT_EQ(value(33), 33);
}

TEST_F(ReadFailing, ABenchWithoutAViewWorksAsWell) {
  link.setView(nullptr);
  openEco(kReadDescription);
  markRow(33);
  read();
  EXPECT_EQ(value(33), 33);
}

}  // namespace
}  // namespace lokari
