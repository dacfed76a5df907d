// Reading a CV through the Lenz interfaces, step by step.
#include "lenz_fixture.h"
#include "link/link_error.h"

namespace lokari {
namespace {

class Li100Read : public test::LenzFixture {
 protected:
  Li100Read() : LenzFixture(StationKind::Li100) {}
};

class LiUsbRead : public test::LenzFixture {
 protected:
  LiUsbRead() : LenzFixture(StationKind::LiUsb) {}
};

class Li100V3Read : public test::Li100V3Fixture {};

// -- the straight road

TEST_F(Li100V3Read, AReadAsksForItsResultAndResumesOperation) {
  expectReadAndAsk().answer(fromHex(kResult), 10);
  expectEpilogue();
  // Three messages, each with its pulse of 50 ms and its answer after 10 ms.
  EXPECT_EQ(timeOf([&] { EXPECT_EQ(read29(), 6); }), 3 * 60);
  EXPECT_TRUE(view.statuses.isEmpty());
}

TEST_F(Li100Read, TheFirstGenerationSaysEverythingSeveralTimes) {
  expect("22 15 1D 2A", "61 02 63 61 02 63 61 02 63 61 02 63 61 02 63");
  expect("21 10 31", "63 14 1D 06 6C 63 14 1D 06 6C");
  expect("21 81 A0", "61 01 60 61 01 60 61 01 60 61 01 60 61 01 60");
  EXPECT_EQ(timeOf([&] { EXPECT_EQ(link.ReadCV(29, 3), 6); }), 3 * 60);
}

TEST_F(LiUsbRead, AReplyLosesItsTwoLeadingBytes) {
  expect("FF FE 22 15 01 36", "FF FE 01 04 05 FF FE 61 02 63");
  expect("FF FE 21 10 31", "FF FE 63 14 01 05 73");
  expect("FF FE 21 81 A0", "FF FE 01 04 05 FF FE 61 01 60");
  EXPECT_EQ(timeOf([&] { EXPECT_EQ(link.ReadCV(1, 3), 5); }), 3 * 10);
}

TEST_F(LiUsbRead, AReplyBehindAnotherOneIsFound) {
  expect("FF FE 22 15 01 36", "FF FE 01 04 05 FF FE 61 02 63");
  expect("FF FE 21 10 31", "FF FE 61 02 63 FF FE 63 14 01 05 73");
  expect("FF FE 21 81 A0", "FF FE 01 04 05 FF FE 61 01 60");
  EXPECT_EQ(link.ReadCV(1, 3), 5);
}

TEST_F(LiUsbRead, AReplyThatComesByteByByteIsPutTogether) {
  expect("FF FE 22 15 01 36", "FF FE 01 04 05 FF FE 61 02 63");
  auto& script = expect("FF FE 21 10 31");
  for (const char byte : fromHex("FF FE 63 14 01 05 73")) script.answer(QByteArray(1, byte), 20);
  expect("FF FE 21 81 A0", "FF FE 01 04 05 FF FE 61 01 60");
  EXPECT_EQ(link.ReadCV(1, 3), 5);
}

TEST_F(LiUsbRead, AReportThatComesByteByByteIsPutTogether) {
  expect("FF FE 22 15 01 36", "FF FE 01 04 05 FF FE 61 02 63");
  for (int count = 1; count < 7; ++count) {
    auto& script = expect("FF FE 21 10 31");
    for (const char byte : fromHex("FF FE 61 12 73")) script.answer(QByteArray(1, byte), 20);
    if (count % 2 == 0) {
      expect("FF FE 21 81 A0", "FF FE 01 04 05 FF FE 61 01 60");
      expect("FF FE 22 15 01 36", "FF FE 01 04 05 FF FE 61 02 63");
    }
  }
  expect("FF FE 21 10 31", "FF FE 61 12 73");
  expect("FF FE 21 81 A0", "FF FE 01 04 05 FF FE 61 01 60");
  EXPECT_EQ(link.ReadCV(1, 3), -1018);
}

TEST_F(Li100V3Read, PagedByTheProgrammingMode) {
  link.progMode = 1;
  settings.lenzV36 = true;
  expect("22 14 1D 2B", kReadBegun);
  expect(kAsk, "63 10 1D 06 68");
  expectEpilogue();
  EXPECT_EQ(read29(), 6);
}

TEST_F(Li100V3Read, DirectWithProtocol36) {
  settings.lenzV36 = true;
  expect("22 18 00 3A", kReadBegun);
  expect(kAsk, "63 14 00 06 71");
  expectEpilogue();
  EXPECT_EQ(link.ReadCV(1024, 3), 6);
}

TEST_F(Li100V3Read, Cv256WithoutProtocol36GoesOutAs0) {
  expect("22 15 00 37", kReadBegun);
  expect(kAsk, "63 14 00 06 71");
  expectEpilogue();
  EXPECT_EQ(link.ReadCV(256, 3), 6);
}

TEST_F(Li100V3Read, ACvAbove256WithoutProtocol36SendsNothing) {
  for (const int cv : {257, 512, 1024}) {
    EXPECT_EQ(timeOf([&] { EXPECT_EQ(link.ReadCV(cv, 3), -1003); }), 0) << cv;
  }
  EXPECT_EQ(line.sent(), "");
}

TEST_F(Li100V3Read, WaitingInputIsDroppedFirst) {
  line.arrive(fromHex("61 12 73 63 14 1D 07 6D"));
  expectReadAndAsk().answer(fromHex(kResult));
  expectEpilogue();
  EXPECT_EQ(read29(), 6);
}

TEST_F(Li100V3Read, TheSlowOptionAddsExactlyOneSecond) {
  settings.delayFlag = true;
  expectReadAndAsk().answer(fromHex(kResult), 10);
  expectEpilogue();
  EXPECT_EQ(timeOf([&] { EXPECT_EQ(read29(), 6); }), 1000 + 3 * 60);
}

// -- the confirmation and the second chance

TEST_F(Li100V3Read, TheSecondChanceResumesOperationAndReadsAgain) {
  expect(kRead29, "01 04 05");
  expectRepeat(kRead29).answer(fromHex(kReadBegun));
  expect(kAsk, kResult);
  expectEpilogue();
  // The wait up to 5 s; a second; resume; read; the pause; question; epilogue.
  EXPECT_EQ(timeOf([&] { EXPECT_EQ(read29(), 6); }), 3000 + 1000 + 60 + 60 + 1000 + 60 + 60);
}

TEST_F(Li100Read, FourteenBytesAreTooFewWithoutAResult) {
  const char* const kCut = "61 02 63 61 02 63 61 02 63 61 02 63 61 02";
  expect("22 15 1D 2A", kCut);
  expect("21 81 A0", "61 01 60");
  expect("22 15 1D 2A", kCut);
  expect("21 10 31");
  expect("21 81 A0", "61 01 60");
  EXPECT_EQ(link.ReadCV(29, 3), -1001);
}

TEST_F(Li100V3Read, SilenceIsNoReplyAndStillGetsItsEpilogue) {
  expect(kRead29);
  expect(kResume);
  expect(kRead29);
  expectTimes(5, kResume);
  EXPECT_EQ(read29(), -1001);
  EXPECT_EQ(view.statuses, QStringList{kNoOrWrong});
}

TEST_F(Li100V3Read, TheConfirmationItselfIsNotJudged) {
  expect(kRead29, "AA BB CC DD EE FF");
  expect(kAsk, kResult);
  expectEpilogue();
  EXPECT_EQ(read29(), 6);
}

TEST_F(Li100V3Read, AConfirmationCutAtEveryByteWithoutAResultIsNoReplyAndTheNextReadGoesOn) {
  constexpr qsizetype kHandedOver = 3;
  const QByteArray whole = fromHex(kReadBegun);
  for (qsizetype size = 0; size < whole.size(); ++size) {
    expect(kRead29).answer(whole.left(size));
    expectRepeat(kRead29).answer(whole.left(size));
    if (size >= kHandedOver) expect(kAsk);
    expectEpilogue();
    EXPECT_EQ(read29(), -1001) << size;
    expectReadAndAsk().answer(fromHex(kResult));
    expectEpilogue();
    EXPECT_EQ(read29(), 6) << size;
  }
}

// -- cancel and failure

TEST_F(Li100V3Read, ACancelInTheFirstWaitSkipsTheEvaluationAndRunsTheEpilogue) {
  expectAnd(
      kRead29, [&] { link.cancelRequested = true; }, 500);
  expectTimes(5, kResume);
  // No wait lasts any more, but the pulses and the seconds between the rounds do.
  EXPECT_EQ(timeOf([&] { EXPECT_EQ(read29(), -1002); }), 50 + 500 + 5 * 1050);
  EXPECT_TRUE(view.statuses.isEmpty());
  EXPECT_TRUE(link.cancelRequested);
}

TEST_F(Li100V3Read, ACancelSkipsEvenAWholeConfirmation) {
  expect(kRead29).then([&] {
    line.arrive(fromHex(kReadBegun));
    link.cancelRequested = true;
  });
  expectTimes(5, kResume);
  EXPECT_EQ(read29(), -1002);
}

TEST_F(Li100V3Read, ACancelBeforeTheRepeatSendsNothingMore) {
  expect(kRead29);
  expectAnd(
      kResume, [&] { link.cancelRequested = true; }, 500);
  expectTimes(5, kResume);
  EXPECT_EQ(read29(), -1002);
}

TEST_F(Li100V3Read, ACancelInTheSecondWaitIsACancelToo) {
  expect(kRead29);
  expectRepeat(kRead29).then([&] { link.cancelRequested = true; }, 500);
  expectTimes(5, kResume);
  EXPECT_EQ(read29(), -1002);
}

TEST_F(Li100V3Read, ACancelEndsTheQuestions) {
  expectReadAndAsk().then([&] { link.cancelRequested = true; }, 500);
  expectTimes(5, kResume);
  EXPECT_EQ(read29(), -1002);
}

TEST_F(Li100V3Read, ACancelInThePauseOfTheResultLoopIsNoReport) {
  expectReadAndAsk().answer(fromHex("61 13 72")).then([&] { link.cancelRequested = true; }, 50);
  expectTimes(5, kResume);
  EXPECT_EQ(read29(), -1002);
}

TEST_F(Li100V3Read, AResultThatIsThereCountsInSpiteOfACancel) {
  expectReadAndAsk().then([&] {
    line.arrive(fromHex(kResult));
    link.cancelRequested = true;
  });
  expectTimes(5, kResume);
  EXPECT_EQ(read29(), 6);
}

TEST_F(Li100V3Read, TheEpilogueEndsWithTheFirstReplyThatTellsTheResumption) {
  expectReadAndAsk().answer(fromHex(kResult));
  expect(kResume, "61 02 63 61 02 63");
  expect(kResume, "61 01");
  expect(kResume, "AA AA AA AA AA 61 01 60");
  // Round one is answered and fails; round two has too few bytes and drops them.
  EXPECT_EQ(timeOf([&] { EXPECT_EQ(read29(), 6); }), 2 * 60 + 60 + 1000 + 2820 + 1000 + 60);
}

TEST_F(Li100V3Read, AStationThatNeverResumesIsLeftAfterFiveRounds) {
  expectReadAndAsk().answer(fromHex(kResult));
  for (int round = 0; round < 5; ++round) expect(kResume, "61 02 63 61 02 63");
  EXPECT_EQ(read29(), 6);
}

TEST_F(Li100V3Read, ALateReplyToAnOlderQuestionDoesNotReachTheNextRead) {
  expectReadAndAsk().answer(fromHex(kResult));
  expectEpilogue();
  EXPECT_EQ(read29(), 6);
  line.arrive(fromHex("63 14 1D 07 6D"));
  expect("22 15 01 36", kReadBegun);
  expect(kAsk, "63 14 01 03 75");
  expectEpilogue();
  EXPECT_EQ(link.ReadCV(1, 3), 3);
}

TEST_F(Li100V3Read, AVanishedPortEndsTheReadAndTheSessionCloses) {
  expectAnd(
      kRead29, [&] { line.vanish(); }, 200);
  EXPECT_THROW(read29(), LinkError);
  link.endcomm(true, true);
  EXPECT_EQ(link.commUseCount, 0);
}

TEST_F(Li100V3Read, AReadClearsTheFailureOfTheCvBefore) {
  link.lastCvFailed = true;
  expectReadAndAsk().answer(fromHex(kResult));
  expectEpilogue();
  read29();
  EXPECT_FALSE(link.lastCvFailed);
}

}  // namespace
}  // namespace lokari
