// What a write asks before it opens the line.
#include "bench_fixture.h"

namespace lokari {
namespace {

const char* const kSome =
    "[X]\nSPEEDTABLE=N\nCV_3=Zeit\nCV_33=Licht,0-255,0,3\n"
    "CV_40=Zaehler,0-255,256,3\nCV_41=Fehler,0-255,256,3\n";

class WriteQuestions : public BenchFixture {};

TEST_F(WriteQuestions, ReadOnlyCvsThatTheHeaderTickedAreNamedAndAbbruchSendsNothing) {
  openEco(kSome);
  bench->gridHeaderClicked(GridColumn::Write);
  write();
  ASSERT_EQ(prompt.asked.size(), 1);
  EXPECT_EQ(prompt.asked[0].more,
            "CV 40 und 41: nur lesbar, wie die Beschreibung des Decodertyps sagt.");
  EXPECT_EQ(prompt.asked[0].answers.at(prompt.asked[0].safe), "Abbruch");
  EXPECT_EQ(line.opens, 0);
  EXPECT_EQ(view.hides, 1);
  EXPECT_EQ(bench->jobEnd, JobEnd::Stopped);
}

TEST_F(WriteQuestions, TheyAreLeftOutOrWrittenAsTheUserAnswers) {
  openEco(kSome);
  bench->gridHeaderClicked(GridColumn::Write);
  prompt.choices = {1, 0};
  write();
  EXPECT_EQ(sent(), QStringList({"xPTWD 3, 0", "xPTWD 33, 0"}));
  EXPECT_EQ(view.percents.last(), 0) << "the bar ran to its end and went back";
  EXPECT_EQ(view.percents.at(view.percents.size() - 2), 100);
  write();
  EXPECT_EQ(sent(), QStringList({"xPTWD 3, 0", "xPTWD 33, 0", "xPTWD 40, 0", "xPTWD 41, 0"}));
}

TEST_F(WriteQuestions, WithNothingElseToWriteNoLineIsOpened) {
  openEco(kSome);
  bench->gridClicked(bench->grid().rowOf(CvIndex(33)), GridColumn::Write);
  bench->gridHeaderClicked(GridColumn::Write);
  bench->checkBoxToggled(QStringLiteral("chkWrt_3"), false);
  prompt.choices = {1};
  write();
  EXPECT_EQ(line.opens, 0);
}

TEST_F(WriteQuestions, WhatBoxesAndCellsCanTickIsNotAskedAbout) {
  openEco(kSome);
  bench->buttonClicked(QStringLiteral("cmdWriteAll"));
  bench->checkBoxToggled(QStringLiteral("chkDcAdrWrite"), false);
  write();
  EXPECT_TRUE(prompt.asked.isEmpty());
  EXPECT_FALSE(sent().isEmpty());
}

// ---- The main track ---------------------------------------------------------------------------

class WriteQuestionsMain : public WriteQuestions {
 protected:
  void openAt64() {
    openEco("[X]\nPROGMAIN=J\nCV_3=Zeit\n", "64");
    prompt.shown.clear();
  }
  void type(const char* address) {
    bench->fieldEdited(QStringLiteral("dc_adr"), QString::fromUtf8(address));
  }
};

TEST_F(WriteQuestionsMain, ANewAddressReachesAnotherVehicleAndIsAskedAbout) {
  openAt64();
  type("60");
  check("chkDcAdrWrite");
  runJob(CommJob::WriteMain);
  EXPECT_EQ(prompt.shown,
            QStringList({"Das Fahrzeug mit der Adresse 60 würde beschrieben, nicht das mit der "
                         "Adresse 64!"}));
  EXPECT_EQ(line.opens, 0) << "the safe answer sends nothing";
  EXPECT_NE(control("dc_adr").colour, TextColour::Blue);
  prompt.answers = {Answer::Ok};
  runJob(CommJob::WriteMain);
  EXPECT_EQ(sent().first(), "xPD 60, 1, 60");
  // What was written there makes it no vehicle of this window.
  const auto asked = prompt.shown.size();
  check("chkWrt_3");
  runJob(CommJob::WriteMain);
  EXPECT_EQ(prompt.shown.mid(asked), QStringList{prompt.shown.first()});
}

TEST_F(WriteQuestionsMain, TheAddressOfTheWindowIsNotAskedAbout) {
  openAt64();
  check("chkWrt_3");
  runJob(CommJob::WriteMain);
  EXPECT_TRUE(prompt.shown.isEmpty());
  EXPECT_EQ(sent(), QStringList({"xPD 64, 3, 0"}));
}

TEST_F(WriteQuestionsMain, AnAddressThatWasReadIsTheWindows) {
  openAt64();
  check("chkDcAdrRead");
  prompt.answers = {Answer::Ok};
  read();
  ASSERT_EQ(text("dc_adr"), "3");
  prompt.shown.clear();
  check("chkWrt_3");
  runJob(CommJob::WriteMain);
  EXPECT_TRUE(prompt.shown.isEmpty());
  EXPECT_EQ(sent(), QStringList({"xPD 3, 3, 0"}));
}

class WriteQuestionsMx1 : public BenchFixture {
 protected:
  WriteQuestionsMx1() : BenchFixture(StationKind::Mx1) {}
};

TEST_F(WriteQuestionsMx1, ACvThatTheStationCannotWriteIsNamedAsWell) {
  openEco("[X]\nSPEEDTABLE=N\nCV_33=Licht,0-255,0,3\nCV_300=Weit,0-255,0,3\n");
  bench->gridHeaderClicked(GridColumn::Write);
  write();
  ASSERT_EQ(prompt.asked.size(), 1);
  EXPECT_EQ(prompt.asked[0].more, "CV 300: mit dieser Zentrale nicht zu schreiben.");
  EXPECT_EQ(line.opens, 0);
}

}  // namespace
}  // namespace lokari
