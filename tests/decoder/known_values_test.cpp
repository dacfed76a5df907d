// What is known better than a mark tells: values that failed reads stand in for, and values that
// were written without a proof.
#include "bench_fixture.h"
#include "decoder/speed_table_list.h"

namespace lokari {
namespace {

const char* const kPlain =
    "[X]\nPROGMAIN=J\nCV_3=Zeit\nCV_33=Licht,0-255,0,3\nCV_34=Pfiff,0-255,0,3\n";

// ---- Failed reads -----------------------------------------------------------------------------

class LostValues : public BenchFixture {
 protected:
  LostValues() {
    settings.continueOnError = true;
    record.recCvValues[0][32] = 12;
    record.recCvMarks[0][32] = '1';
    record.recCvValues[0][28] = 6;
    record.recCvMarks[0][28] = '1';
    decoder().store(33, 99);
    openEco(kPlain);
  }
  void failToRead() {
    markRow(33);
    check("chkRd_29");
    fault("noack:2");
    read();
    ASSERT_EQ(value(33), 0);
    ASSERT_EQ(value(29), 64);
  }
  int stored(int cv, size_t set = 0) const {
    return static_cast<quint8>(record.recCvValues[set][cv - 1]);
  }
  char storedMark(int cv) const { return record.recCvMarks[0][cv - 1]; }
};

TEST_F(LostValues, OkKeepsThemUnlessTheUserWantsTheOthers) {
  failToRead();
  bench->cmdOK(record);
  ASSERT_EQ(prompt.asked.size(), 1);
  EXPECT_EQ(prompt.asked[0].safe, 0);
  EXPECT_TRUE(prompt.asked[0].more.startsWith(QStringLiteral("Set 1: CV 29 und 33\n")));
  EXPECT_EQ(stored(33), 12);
  EXPECT_EQ(stored(29), 6);
  EXPECT_EQ(storedMark(33), '2');
  EXPECT_EQ(storedMark(29), '2');
}

TEST_F(LostValues, TheOtherAnswerTakesTheNewValues) {
  failToRead();
  prompt.choices = {1};
  bench->cmdOK(record);
  EXPECT_EQ(stored(33), 0);
  EXPECT_EQ(stored(29), 64);
}

TEST_F(LostValues, BelongToTheSetThatWasRead) {
  failToRead();
  bench->chooseSet(QStringLiteral("Set 3"));
  bench->cmdOK(record);
  EXPECT_EQ(prompt.asked.size(), 1);
  EXPECT_EQ(stored(33), 12);
  EXPECT_EQ(stored(33, 2), 0) << "the set that was not read";
}

TEST_F(LostValues, AreNotLostToASecondFailure) {
  failToRead();
  failToRead();
  settings.continueOnError = false;
  fault("noack");
  read();
  bench->cmdOK(record);
  EXPECT_EQ(stored(33), 12);
  EXPECT_EQ(stored(29), 6);
}

TEST_F(LostValues, AreNoLongerAskedAboutOnceReadTypedOrClicked) {
  failToRead();
  read();
  EXPECT_EQ(value(33), 99);
  bench->cmdOK(record);
  EXPECT_TRUE(prompt.asked.isEmpty());
  EXPECT_EQ(stored(33), 99);
  EXPECT_EQ(storedMark(33), '1');

  openEco(kPlain);
  fault("noack:2");
  failToRead();
  bench->rowEdited(rowOf(33), QStringLiteral("7"));
  bench->rowLeft(rowOf(33));
  bench->cmdOK(record);
  EXPECT_TRUE(prompt.asked.last().more.startsWith(QStringLiteral("Set 1: CV 29\n")));
  EXPECT_EQ(stored(33), 7);
}

TEST_F(LostValues, OfAByteWithOneBitClickedOnlyTheOthersAreAskedAbout) {
  failToRead();
  bench->optionClicked(QStringLiteral("optDcComDirReverse"));
  EXPECT_EQ(value(29), 65);
  bench->cmdOK(record);
  ASSERT_EQ(prompt.asked.size(), 1);
  EXPECT_EQ(stored(29), 7) << "the bits known before, and the one that was clicked";
}

TEST_F(LostValues, ATextThatIsNoneDoesNotMakeTheStandInKnown) {
  failToRead();
  bench->rowEdited(rowOf(33), QStringLiteral("abc"));
  bench->rowLeft(rowOf(33));
  markRowForWriting(33);
  write();
  EXPECT_EQ(prompt.asked.size(), 1);
  EXPECT_EQ(sent(), QStringList());
}

TEST_F(LostValues, PassingTheFieldDoesNotMakeTheStandInKnown) {
  failToRead();
  bench->rowLeft(rowOf(33));
  markRowForWriting(33);
  write();
  EXPECT_EQ(prompt.asked.size(), 1);
  EXPECT_EQ(sent(), QStringList());
}

TEST_F(LostValues, AreWrittenOnlyWhereTheUserWantsThem) {
  failToRead();
  markRowForWriting(33);
  markRowForWriting(34);
  write();
  ASSERT_EQ(prompt.asked.size(), 1);
  EXPECT_EQ(prompt.asked[0].text, "Sollen wirklich alle angekreuzten CVs geschrieben werden?");
  EXPECT_EQ(prompt.asked[0].more,
            "CV 33: nicht oder nicht ganz gelesen; der Wert stammt von einem misslungenen Lesen.");
  EXPECT_EQ(sent(), QStringList());
  EXPECT_EQ(bench->jobEnd, JobEnd::Stopped);
  prompt.choices = {1, 0};
  write();
  EXPECT_EQ(sent(), QStringList({"xPTWD 34, 0"}));
  write();
  EXPECT_EQ(sent(), QStringList({"xPTWD 33, 0", "xPTWD 34, 0"}));
}

TEST_F(LostValues, OfTheConsistTypingTheAddressLeavesTheDirectionUnseen) {
  record.recCvMarks[0][18] = '2';
  openEco(kPlain);
  bench->fieldEdited(QStringLiteral("txtDcComConsist"), QStringLiteral("5"));
  bench->fieldLeft(QStringLiteral("txtDcComConsist"));
  check("chkWrt_19");
  write();
  EXPECT_EQ(sent(), QStringList());
  bench->optionClicked(QStringLiteral("optDcConsistDirNormal"));
  write();
  EXPECT_EQ(sent(), QStringList({"xPTWD 19, 5"}));
  EXPECT_EQ(prompt.asked.size(), 1);
}

TEST_F(LostValues, AreCopiedIntoAnotherSetOnlyWhereTheUserWantsThem) {
  record.recCvValues[1][32] = 44;
  openEco(kPlain);
  failToRead();
  bench->chooseSet(QStringLiteral("Set 2"));
  CopyAnswer what = CopyAnswer::All;
  bench->copyBox = [&](const QString&) { return what; };
  bench->cmdCopy();
  ASSERT_EQ(prompt.asked.size(), 1);
  EXPECT_EQ(prompt.asked[0].more, "CV 29 und 33 von Set 1.");
  EXPECT_EQ(value(33), 44) << "nothing without an answer";
  markRowForWriting(33);
  what = CopyAnswer::Selected;
  prompt.choices = {1, 1, 0};
  bench->cmdCopy();
  EXPECT_EQ(value(33), 44);
  EXPECT_EQ(prompt.asked[1].more, "CV 33 von Set 1.");
  what = CopyAnswer::All;
  bench->cmdCopy();
  EXPECT_EQ(value(33), 44);
  EXPECT_EQ(mark(33), CvMark::None);
  bench->cmdCopy();
  EXPECT_EQ(value(33), 0);
  EXPECT_EQ(mark(33), CvMark::Failed);
}

// ---- What is told of a job --------------------------------------------------------------------

class ReportedJobs : public BenchFixture {
 protected:
  /// A job that has something to say.
  void speak() {
    openEco(kPlain, "5");
    check("chkDcAdrWrite");
    write();
    ASSERT_FALSE(control("lblReport").caption.isEmpty());
    bench->checkBoxToggled(QStringLiteral("chkDcAdrWrite"), false);
  }
};

TEST_F(ReportedJobs, TheNextJobEndsWhatTheOneBeforeSaid) {
  speak();
  write();
  EXPECT_EQ(prompt.shown.last(), "Keine Daten zum Schreiben ausgewählt!");
  EXPECT_EQ(control("lblReport").caption, "");
  speak();
  line.failsToOpen = true;
  check("chkWrt_3");
  write();
  EXPECT_EQ(bench->jobEnd, JobEnd::NoSession);
  EXPECT_EQ(control("lblReport").caption, "");
}

TEST_F(ReportedJobs, AnotherDecoderTypeEndsItToo) {
  describe("Adlerton/AT-SND16.dec", "[AT-SND16]\n");
  speak();
  prompt.answers = {Answer::Ok};
  bench->chooseDecoder(QStringLiteral("AT-SND16"));
  clock.advance(100);
  EXPECT_EQ(control("lblReport").caption, "");
}

TEST_F(ReportedJobs, AnEarlierJobThatReachedTheStationIsNotForgottenByALaterOneThatDidNot) {
  openEco(kPlain);
  EXPECT_FALSE(bench->reachedStation());
  write();
  EXPECT_FALSE(bench->reachedStation()) << "nothing was ticked";
  check("chkWrt_3");
  write();
  bench->checkBoxToggled(QStringLiteral("chkWrt_3"), false);
  write();
  EXPECT_EQ(bench->jobEnd, JobEnd::NothingMarked);
  EXPECT_TRUE(bench->reachedStation());
  openEco(kPlain);
  EXPECT_FALSE(bench->reachedStation()) << "of the vehicle before";
}

TEST_F(LostValues, AZeroThatWasZeroIsNoQuestion) {
  markRow(34);
  fault("noack");
  read();
  bench->cmdOK(record);
  EXPECT_TRUE(prompt.asked.isEmpty());
}

TEST_F(LostValues, TheVersionOfAFailedMakerCheckIsKeptAsWell) {
  record.recCvValues[0][6] = 31;
  record.recCvValues[0][7] = kAdlerton;
  openEco(kPlain);
  settings.manufacturerCheckNow = true;
  markRow(34);
  fault("noack:2");
  read();
  EXPECT_EQ(value(7), 0);
  bench->cmdOK(record);
  EXPECT_EQ(stored(7), 31);
  EXPECT_EQ(stored(8), kAdlerton);
}

// ---- Which CV failed --------------------------------------------------------------------------

TEST_F(LostValues, AFailedCheckEndsWithTheCvBelowItsText) {
  settings.continueOnError = false;
  settings.addressCheckNow = true;
  markRow(33);
  fault("noack@1");
  read();
  EXPECT_EQ(view.statuses.last(), "Kein ACK vom Decoder");
  EXPECT_EQ(view.details.last(), "CV 1");
  EXPECT_EQ(control("dc_adr").colour, TextColour::Red);
}

TEST_F(LostValues, TheLineBelowGoesWithTheNextCv) {
  markRow(33);
  markRow(34);
  fault("noack");
  read();
  EXPECT_EQ(view.details, QStringList({"CV 33", ""}));
}

// ---- Written without a proof ------------------------------------------------------------------

class Unproved : public BenchFixture, public ::testing::WithParamInterface<StationKind> {
 protected:
  Unproved() : BenchFixture(GetParam()) {}
};

TEST_P(Unproved, AWriteSaysSoUntilTheValueIsReadOrChanged) {
  openEco(kPlain);
  EXPECT_EQ(control("lblLegend").caption, "Blau: gelesen oder geprüft. Rot: misslungen.");
  markRowForWriting(33);
  check("chkWrt_3");
  write();
  EXPECT_EQ(mark(33), CvMark::Verified) << "colour and stored mark are those of a success";
  EXPECT_EQ(row(33).colour, TextColour::Blue);
  EXPECT_EQ(bench->report().with(CvDeed::Unproved).size(), 2U);
  EXPECT_EQ(bench->DcToolTips(QStringLiteral("33")), " geschrieben, nicht geprüft ");
  EXPECT_EQ(bench->gridRow(bench->grid().rowOf(CvIndex(33))).note, "geschrieben, nicht geprüft");
  EXPECT_EQ(control("lblLegend").caption,
            "Blau: gelesen, geprüft oder nur geschrieben (CV 3 und 33: geschrieben, nicht "
            "geprüft). Rot: misslungen.");
  markRow(33);
  read();
  bench->fieldEdited(QStringLiteral("txtDcComAccTime"), QStringLiteral("9"));
  EXPECT_EQ(bench->DcToolTips(QStringLiteral("33")), QString());
  EXPECT_EQ(control("lblLegend").caption, "Blau: gelesen oder geprüft. Rot: misslungen.");
}

INSTANTIATE_TEST_SUITE_P(WhereNothingIsReadBack, Unproved,
                         ::testing::Values(StationKind::TamsMc, StationKind::Ibx));

class Proved : public BenchFixture {
 protected:
  Proved() : BenchFixture(StationKind::Mx1) {}
};

TEST_F(Proved, AWriteThatIsReadBackIsOneAndOnTheMainTrackItIsNone) {
  openEco(kPlain);
  markRowForWriting(33);
  write();
  EXPECT_EQ(bench->report().with(CvDeed::Proved).size(), 1U);
  EXPECT_EQ(bench->noteOf(CvIndex(33)), QString());
  runJob(CommJob::WriteMain);
  EXPECT_EQ(bench->report().with(CvDeed::Unproved).size(), 1U);
  EXPECT_EQ(bench->noteOf(CvIndex(33)), "geschrieben, nicht geprüft");
}

class UnprovedOnTams : public BenchFixture {};

TEST_F(UnprovedOnTams, TheAddressAndTheOptionsSaySoToo) {
  openEco(kPlain, "128");
  check("chkDcAdrWrite");
  check("chkWrt_19");
  write();
  for (const char* name : {"dc_adr", "txtDcComConsist", "optDcComSteps28"}) {
    EXPECT_EQ(control(name).tag, "geschrieben, nicht geprüft") << name;
  }
}

TEST_F(UnprovedOnTams, ACopyOfTheFirstSetCarriesItAndAnotherSetDoesNot) {
  openEco(kPlain);
  markRowForWriting(33);
  write();
  bench->chooseSet(QStringLiteral("Set 2"));
  EXPECT_EQ(bench->noteOf(CvIndex(33)), QString());
  bench->copyBox = [](const QString&) { return CopyAnswer::All; };
  bench->cmdCopy();
  EXPECT_EQ(mark(33), CvMark::Verified);
  EXPECT_EQ(bench->noteOf(CvIndex(33)), "geschrieben, nicht geprüft");
}

TEST_F(UnprovedOnTams, TheListOfTheSpeedTablePutsItBackOnAbbruch) {
  record.recCvValues[0][28] = 2 + 16;
  openEco("[X]\n");
  check("chkWrt_Tbl");
  write();
  SpeedTableList list(*bench, prompt);
  ASSERT_TRUE(list.leave(3, QStringLiteral("77")));
  EXPECT_EQ(bench->noteOf(CvIndex(69)), QString());
  list.cancel();
  EXPECT_EQ(mark(69), CvMark::Verified);
  EXPECT_EQ(bench->noteOf(CvIndex(69)), "geschrieben, nicht geprüft");
}

// ---- Lists of CVs -----------------------------------------------------------------------------

TEST_F(UnprovedOnTams, NeighboursAreASpanAndBanksAreNamed) {
  openEco("[X]\nMAPCVA=31\nMAPVALA_2=16\nCV_257_2=Motor,0-128,100,6\n");
  const auto list = [this](std::initializer_list<int> indexes) {
    std::vector<CvIndex> cvs;
    for (const int index : indexes) cvs.emplace_back(index);
    return bench->listOfCvs(cvs);
  };
  EXPECT_EQ(list({}), QString());
  EXPECT_EQ(list({3}), "CV 3");
  EXPECT_EQ(list({3, 4}), "CV 3 und 4");
  EXPECT_EQ(list({3, 67, 68, 69, 1024}), "CV 3, 67 bis 69 und 257 (2)");
}

// ---- The question about the maker -------------------------------------------------------------

TEST_F(UnprovedOnTams, TheMakerQuestionSaysWhatOkTakesOverAndTheEndWhatWasRead) {
  settings.manufacturerCheckNow = true;
  decoder().store(8, 131);
  decoder().store(7, 5);
  describe("Fahrwerk/FW-28.dec", "[FW-28]\nCV_33=Licht,0-15,7,5");
  openEco(kPlain);
  markRow(33);
  prompt.answers = {Answer::Ok};
  read();
  EXPECT_EQ(prompt.shown, QStringList({"Abweichender Decoderhersteller (Fahrwerk)!"}));
  EXPECT_EQ(prompt.below,
            QStringList({"OK übernimmt diesen Hersteller und seinen ersten Decodertyp mit dessen "
                         "Vorgabewerten. Die angekreuzten CVs werden dann nicht gelesen."}));
  EXPECT_EQ(sent(), QStringList({"xPTRB 8", "xPTRB 7"}));
  EXPECT_EQ(control("lblReport").caption,
            "Hersteller und Decodertyp sind übernommen, mit den Vorgabewerten des Typs. Gelesen "
            "wurde nichts außer CV 7 und 8.");
}

}  // namespace
}  // namespace lokari
