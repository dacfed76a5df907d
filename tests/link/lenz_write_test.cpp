// Writing a CV through the Lenz interfaces, step by step.
#include "lenz_fixture.h"
#include "link/link_error.h"

namespace lokari {
namespace {

class Li100Write : public test::LenzFixture {
 protected:
  Li100Write() : LenzFixture(StationKind::Li100) { link.commJob = CommJob::WriteProgTrack; }
};

class LiUsbWrite : public test::LenzFixture {
 protected:
  LiUsbWrite() : LenzFixture(StationKind::LiUsb) { link.commJob = CommJob::WriteProgTrack; }
};

class Li100V3Write : public test::Li100V3Fixture {
 protected:
  Li100V3Write() { link.commJob = CommJob::WriteProgTrack; }

  /// A write of 6 to CV 29 up to the first question for its result.
  test::ScriptedLine& expectWriteAndAsk() {
    expect(kWrite29, kWriteDone);
    return expect(kAsk);
  }
};

// -- on the programming track

TEST_F(Li100V3Write, AWriteAsksForItsResultAndResumesOperation) {
  expectWriteAndAsk().answer(fromHex(kResult), 10);
  expectEpilogue();
  EXPECT_EQ(timeOf([&] { EXPECT_EQ(write(29, 6), 6); }), 3 * 60);
}

TEST_F(Li100V3Write, TheResultIsTheStationsValue) {
  expectWriteAndAsk().answer(fromHex("63 14 1D 02 68"));
  expectEpilogue();
  EXPECT_EQ(write(29, 6), 2);
}

TEST_F(Li100Write, TheFirstGenerationSaysEverythingSeveralTimes) {
  expect("23 16 1D 06 2E", "01 04 05 01 04 05 01 04 05 01 04 05 01 04 05");
  expect("21 10 31", "63 14 1D 06 6C 63 14 1D 06 6C");
  expect("21 81 A0", "61 01 60 61 01 60 61 01 60 61 01 60 61 01 60");
  EXPECT_EQ(timeOf([&] { EXPECT_EQ(write(29, 6), 6); }), 3 * 60);
}

TEST_F(LiUsbWrite, MessagesAndRepliesHaveTwoMoreBytes) {
  expect("FF FE 23 16 1D 06 2E", "FF FE 01 04 05 FF FE 01 04 05");
  expect("FF FE 21 10 31", "FF FE 63 14 1D 06 6C");
  expect("FF FE 21 81 A0", "FF FE 01 04 05 FF FE 61 01 60");
  EXPECT_EQ(timeOf([&] { EXPECT_EQ(write(29, 6), 6); }), 3 * 10);
}

TEST_F(Li100V3Write, PagedByTheArgumentAndNotByTheProgrammingMode) {
  settings.lenzV36 = true;
  link.progMode = 0;
  expect("23 17 1D 06 2F", kWriteDone);
  expect(kAsk, "63 10 1D 06 68");
  expectEpilogue();
  EXPECT_EQ(write(29, 6, 1), 6);
}

TEST_F(Li100V3Write, DirectWithProtocol36) {
  settings.lenzV36 = true;
  link.progMode = 1;
  expect("23 1C 00 06 39", kWriteDone);
  expect(kAsk, "63 14 00 06 71");
  expectEpilogue();
  EXPECT_EQ(write(1024, 6, 0), 6);
}

TEST_F(Li100V3Write, ACvFrom256OnWithoutProtocol36SendsNothingAndGives0) {
  for (const int cv : {256, 257, 1024}) {
    EXPECT_EQ(timeOf([&] { EXPECT_EQ(write(cv, 6, 0), 0); }), 0) << cv;
    EXPECT_EQ(write(cv, 6, 1), 0) << cv;
  }
  EXPECT_EQ(line.sent(), "");
}

TEST_F(Li100V3Write, APagedWriteOfACvThatIsNoByteSendsNothingAndFails) {
  settings.lenzV36 = true;
  EXPECT_EQ(write(257, 6, 1), -1003);
  EXPECT_EQ(line.sent(), "");
}

TEST_F(Li100V3Write, TheSecondChanceResumesOperationAndWritesAgain) {
  expect(kWrite29, "01 04 05");
  expectRepeat(kWrite29).answer(fromHex(kWriteDone));
  expect(kAsk, kResult);
  expectEpilogue();
  EXPECT_EQ(timeOf([&] { EXPECT_EQ(write(29, 6), 6); }), 3000 + 1000 + 60 + 60 + 1000 + 60 + 60);
}

TEST_F(Li100V3Write, SilenceIsNoReplyAndStillGetsItsEpilogue) {
  expect(kWrite29);
  expect(kResume);
  expect(kWrite29);
  expectTimes(5, kResume);
  EXPECT_EQ(write(29, 6), -1001);
  EXPECT_EQ(view.statuses, QStringList{kNoOrWrong});
}

TEST_F(Li100V3Write, TheServiceModeInsteadOfAWriteWritesOnceMore) {
  expect(kWrite29, "01 04 05 61 02 63");
  expectRepeat(kWrite29).answer(fromHex(kWriteDone));
  expect(kAsk, kResult);
  expectEpilogue();
  EXPECT_EQ(timeOf([&] { EXPECT_EQ(write(29, 6), 6); }), 60 + 1000 + 1000 + 60 + 60 + 1000 + 120);
}

TEST_F(Li100V3Write, TheServiceModeTwiceWithoutAResultResumesOperationAndIsMinus1007) {
  expect(kWrite29, "61 02 63 61 02 63");
  expectRepeat(kWrite29).answer(fromHex("01 04 05 61 02 63"));
  expect(kAsk);
  expect(kResume);
  expectEpilogue();
  EXPECT_EQ(write(29, 6), -1007);
}

TEST_F(Li100V3Write, AnotherByteBehind6102IsNotTheServiceMode) {
  expect(kWrite29, "01 04 05 61 02 62");
  expect(kAsk, kResult);
  expectEpilogue();
  EXPECT_EQ(write(29, 6), 6);
}

TEST_F(Li100V3Write, FewerThanThreeBytesAreDroppedAndDoNotCount) {
  expect(kWrite29, kWriteDone);
  // Kept, they would make a result of the next reply.
  for (int i = 0; i < 50; ++i) expect(kAsk, "63 14");
  expect(kAsk, kResult);
  expectEpilogue();
  EXPECT_EQ(write(29, 6), 6);
}

TEST_F(Li100V3Write, OnlyACancelEndsTheQuestionsToASilentStation) {
  expect(kWrite29, kWriteDone);
  expectTimes(200, kAsk);
  expectAnd(
      kAsk, [&] { link.cancelRequested = true; }, 500);
  expectTimes(5, kResume);
  EXPECT_EQ(write(29, 6), -1002);
}

TEST_F(Li100V3Write, AReportIsAskedOver32TimesAndIsMinusItsCode) {
  const QList<std::pair<const char*, int>> rows{
      {"61 12 73", -18}, {"61 13 72", -19}, {"61 82 E3", -130}, {"61 02 63", -2}};
  for (const auto& [report, result] : rows) {
    expect(kWrite29, kWriteDone);
    for (int count = 0; count < 32; ++count) expect(kAsk, report);
    expectEpilogue();
    EXPECT_EQ(write(29, 6), result) << report;
  }
}

TEST_F(Li100V3Write, AnUnknownReplyIsAWrongReplyWithoutAnotherWrite) {
  expect(kWrite29, kWriteDone);
  for (int count = 0; count < 32; ++count) expect(kAsk, "AA BB CC");
  expectEpilogue();
  EXPECT_EQ(write(29, 6), -1003);
}

TEST_F(Li100V3Write, WhatComesALittleLaterReplacesTheReply) {
  expectWriteAndAsk().answer(fromHex(kInServiceMode), 10).answer(fromHex(kResult), 60);
  expectEpilogue();
  EXPECT_EQ(timeOf([&] { EXPECT_EQ(write(29, 6), 6); }), 60 + 60 + 100 + 60);
}

TEST_F(Li100V3Write, NoiseAheadOfAResultIsSearchedThrough) {
  expectWriteAndAsk().answer(fromHex("AA BB 63 14 1D 06 6C"));
  expectEpilogue();
  EXPECT_EQ(write(29, 6), 6);
}

TEST_F(Li100V3Write, ACancelInTheFirstWaitSkipsTheEvaluationAndRunsTheEpilogue) {
  expectAnd(
      kWrite29, [&] { link.cancelRequested = true; }, 500);
  expectTimes(5, kResume);
  EXPECT_EQ(write(29, 6), -1002);
}

TEST_F(Li100V3Write, ACancelBeforeTheRepeatWritesNothingMore) {
  expect(kWrite29, kReadBegun);
  cancelAt(900);
  expectTimes(5, kResume);
  EXPECT_EQ(write(29, 6), -1002);
}

TEST_F(Li100V3Write, ACancelInTheSecondChancesPauseWritesNothingMore) {
  expect(kWrite29);
  cancelAt(3500);
  expectTimes(5, kResume);
  EXPECT_EQ(write(29, 6), -1002);
}

TEST_F(Li100V3Write, AVanishedPortEndsTheWriteAndTheSessionCloses) {
  expect(kWrite29, kWriteDone);
  expectAnd(
      kAsk, [&] { line.vanish(); }, 200);
  EXPECT_THROW(write(29, 6), LinkError);
  link.endcomm(true, true);
  EXPECT_EQ(link.commUseCount, 0);
}

TEST_F(Li100V3Write, AResultThatCameWrongIsAskedForOnceMoreAndNotWrittenAgain) {
  expectWriteAndAsk().answer(fromHex("63 14 1D 06 68"));
  expect(kAsk, "63 14 1D 02 68");
  expectEpilogue();
  EXPECT_EQ(write(29, 6), -1003);
  expectWriteAndAsk().answer(fromHex("63 14 1D 06 68"));
  expect(kAsk, kResult);
  expectEpilogue();
  EXPECT_EQ(write(29, 6), 6);
}

// -- on the main track

TEST_F(Li100V3Write, AMainTrackWriteEndsWithTheReplyToIt) {
  expect("E6 30 00 03 EC 1C 06 23", "01 04 05");
  EXPECT_EQ(timeOf([&] { EXPECT_EQ(writeMain(29, 6, 3), 6); }), 60);
  expect("E6 30 C3 E8 EC 1C 06 0B", "01 04 05");
  EXPECT_EQ(writeMain(29, 6, 1000), 6);
}

TEST_F(LiUsbWrite, AMainTrackWriteEndsWithTheReplyToItToo) {
  expect("FF FE E6 30 00 03 EC 1C 06 23", "FF FE 01 04 05");
  EXPECT_EQ(timeOf([&] { EXPECT_EQ(writeMain(29, 6, 3), 6); }), 10);
}

TEST_F(LiUsbWrite, AMainTrackReplyThatComesByteByByteIsPutTogether) {
  auto& script = expect("FF FE E6 30 00 03 EC 1C 06 23");
  for (const char byte : fromHex("FF FE 01 04 05")) script.answer(QByteArray(1, byte), 20);
  EXPECT_EQ(writeMain(29, 6, 3), 6);
}

TEST_F(Li100V3Write, AMainTrackReplyThatCameWrongIsAWrongReply) {
  for (const char* reply : {"01 04 07", "01 04 04"}) {
    expect("E6 30 00 03 EC 1C 06 23", reply);
    EXPECT_EQ(writeMain(29, 6, 3), -1003) << reply;
  }
}

TEST_F(LiUsbWrite, AMainTrackReplyThatStaysCutIsNoReply) {
  for (const char* cut : {"", "FF", "FF FE", "FF FE 01", "FF FE 01 04"}) {
    expect("FF FE E6 30 00 03 EC 1C 06 23", cut);
    EXPECT_EQ(writeMain(29, 6, 3), -1001) << cut;
  }
}

TEST_F(Li100V3Write, AMainTrackReportIsMinusItsCode) {
  expect("E6 30 00 03 EC 1C 06 23", "61 82 E3");
  EXPECT_EQ(writeMain(29, 6, 3), -130);
}

TEST_F(Li100V3Write, AnyOtherMainTrackReplyIsAWrongReply) {
  expect("E6 30 00 03 EC 1C 06 23", "01 03 02");
  EXPECT_EQ(writeMain(29, 6, 3), -1003);
}

TEST_F(Li100V3Write, AMainTrackWriteHasNoSecondChance) {
  expect("E6 30 00 03 EC 1C 06 23", "01 04");
  EXPECT_EQ(timeOf([&] { EXPECT_EQ(writeMain(29, 6, 3), -1001); }), 3000);
  EXPECT_EQ(view.statuses, QStringList{kNoOrWrong});
}

TEST_F(Li100V3Write, ACancelledMainTrackWriteIsACancel) {
  expectAnd(
      "E6 30 00 03 EC 1C 06 23", [&] { link.cancelRequested = true; }, 500);
  EXPECT_EQ(timeOf([&] { EXPECT_EQ(writeMain(29, 6, 3), -1002); }), 550);
}

TEST_F(Li100V3Write, AMainTrackWriteOfAMultipleOf256SendsNothingAndFails) {
  settings.lenzV36 = true;
  for (const int cv : {256, 512, 768, 1024}) {
    EXPECT_EQ(timeOf([&] { EXPECT_EQ(writeMain(cv, 6, 3), -1003); }), 0) << cv;
  }
  EXPECT_EQ(line.sent(), "");
}

TEST_F(Li100V3Write, AMainTrackWriteNeedsNoProtocol36ForHigherCvs) {
  expect("E6 30 00 03 ED 00 06 3E", "01 04 05");
  EXPECT_EQ(writeMain(257, 6, 3), 6);
}

TEST_F(Li100Write, TheFirstGenerationsMainTrackWriteIsAskedForItsResultLikeAnyOther) {
  expect("E6 30 00 03 EC 1C 06 23", "01 04 05");
  expect("21 10 31", "63 14 1D 06 6C");
  expect("21 81 A0", "61 01 60 61 01 60 61 01 60 61 01 60 61 01 60");
  EXPECT_EQ(writeMain(29, 6, 3), 6);
  EXPECT_EQ(writeMain(256, 6, 3), -1003);
}

}  // namespace
}  // namespace lokari
