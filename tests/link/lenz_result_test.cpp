// How a read through the Lenz interfaces asks for its result until it has it.
#include "lenz_fixture.h"

namespace lokari {
namespace {

class Li100V3Result : public test::Li100V3Fixture {};

TEST_F(Li100V3Result, AnyTypeOfResultGivesItsFourthByte) {
  for (const char* result :
       {"63 10 1D 06 68", "63 14 1D 06 6C", "63 15 1D 06 6D", "63 16 1D 06 6E", "63 17 1D 06 6F"}) {
    expectReadAndAsk().answer(fromHex(result));
    expectEpilogue();
    EXPECT_EQ(read29(), 6) << result;
  }
}

TEST_F(Li100V3Result, ACutResultIsWaitedFor) {
  expectReadAndAsk().answer(fromHex("63 14 1D"), 10).answer(fromHex("06 6C"), 1500);
  expectEpilogue();
  EXPECT_EQ(timeOf([&] { EXPECT_EQ(read29(), 6); }), 60 + 50 + 10 + 1500 + 60);
}

TEST_F(Li100V3Result, AResultWithoutItsCheckByteIsAskedForOnceMore) {
  expectReadAndAsk().answer(fromHex("63 14 1D 06"));
  expect(kAsk, kResult);
  expectEpilogue();
  EXPECT_EQ(read29(), 6);
}

TEST_F(Li100V3Result, AResultThatCameWrongIsAskedForOnceMoreAndOnlyTwoEqualOnesAreBelieved) {
  struct Row {
    const char* first;
    const char* second;
    int result;
  };
  const Row rows[] = {
      {"63 14 1D 07 6C", kResult, -1003},      {"63 14 1D 06 6D", kResult, 6},
      {"63 14 1D 06 6D", "63 14 1D 06 6D", 6}, {"63 14 1D 06 6D", "63 14 1D 07 6C", -1003},
      {"63 14 1D 06 6D", "61 13 72", -1003},   {"63 14 1D 06 6D", "", -1003}};
  for (const Row& row : rows) {
    expectReadAndAsk().answer(fromHex(row.first));
    expect(kAsk, row.second);
    expectEpilogue();
    EXPECT_EQ(read29(), row.result) << row.first << " and " << row.second;
  }
}

TEST_F(Li100V3Result, AResultThatNamesAnotherCvIsAskedForOnceMoreAndNeverBelieved) {
  struct Row {
    const char* first;
    const char* second;
    int result;
  };
  const Row rows[] = {{"63 14 08 61 1E", kResult, 6},
                      {"63 14 61 01 60", kResult, 6},
                      {"63 14 08 61 1E", "63 14 08 61 1E", -1003},
                      {"63 14 08 61 1E", "63 14 1D 06 6D", -1003},
                      {"63 14 1D 06 6D", "63 14 08 06 79", -1003},
                      {"63 14 08 61 1E", "61 13 72", -1003},
                      {"63 14 08 61 1E", "", -1003}};
  for (const Row& row : rows) {
    expectReadAndAsk().answer(fromHex(row.first));
    expect(kAsk, row.second);
    expectEpilogue();
    EXPECT_EQ(read29(), row.result) << row.first << " and " << row.second;
  }
}

TEST_F(Li100V3Result, AResultThatNamesNoCvIsBelieved) {
  expectReadAndAsk().answer(fromHex("63 14 00 06 71"));
  expectEpilogue();
  EXPECT_EQ(read29(), 6);
}

TEST_F(Li100V3Result, ACancelInPlaceOfTheSecondResultIsACancel) {
  expectReadAndAsk().answer(fromHex("63 14 1D 06 6D"));
  expectAnd(
      kAsk, [&] { link.cancelRequested = true; }, 500);
  expectTimes(5, kResume);
  EXPECT_EQ(read29(), -1002);
}

TEST_F(Li100V3Result, OfSeveralResultsOneWithARightCheckByteCounts) {
  expectReadAndAsk().answer(fromHex("63 14 1D 07 6C 63 14 1D 06 6C"));
  expectEpilogue();
  EXPECT_EQ(read29(), 6);
}

TEST_F(Li100V3Result, TheLateResultOfTheCvBeforeIsNone) {
  expect("22 15 01 36", kReadBegun);
  expect(kAsk);
  expect(kAsk, "63 14 01 03 75");
  expectEpilogue();
  EXPECT_EQ(link.ReadCV(1, 3), 3);
  expectReadAndAsk().answer(fromHex("63 14 01 03 75")).answer(fromHex(kResult), 60);
  expectEpilogue();
  EXPECT_EQ(read29(), 6);
}

TEST_F(Li100V3Result, AResultOfARegisterMayNameAnyNumber) {
  expect("22 15 05 32", kReadBegun);
  expect(kAsk);
  expect(kAsk, "63 14 05 03 71");
  expectEpilogue();
  EXPECT_EQ(link.ReadCV(5, 3), 3);
  expectReadAndAsk().answer(fromHex("63 10 05 06 70"));
  expectEpilogue();
  EXPECT_EQ(read29(), 6);
}

TEST_F(Li100V3Result, NoiseAheadOfAResultIsSearchedThroughInMoreThanFiveBytes) {
  expectReadAndAsk().answer(fromHex("AA 63 14 1D 06 6C"));
  expectEpilogue();
  EXPECT_EQ(read29(), 6);
}

TEST_F(Li100V3Result, NoiseInFewerBytesIsAskedOver) {
  expectReadAndAsk().answer(fromHex("AA 63 14 1D 06"));
  expect(kAsk, kResult);
  expectEpilogue();
  EXPECT_EQ(timeOf([&] { EXPECT_EQ(read29(), 6); }), 2 * 60 + 100 + 2 * 60);
}

TEST_F(Li100V3Result, OfTwoResultsAtOnceTheFirstCountsAndBothAreGone) {
  expectReadAndAsk().answer(fromHex("63 14 1D 06 6C 63 14 1D 07 6D"));
  expectEpilogue();
  EXPECT_EQ(read29(), 6);
  EXPECT_EQ(link.getBufferCount(), 0);
}

TEST_F(Li100V3Result, WhatComesALittleLaterReplacesTheReply) {
  expectReadAndAsk().answer(fromHex(kInServiceMode), 10).answer(fromHex(kResult), 60);
  expectEpilogue();
  EXPECT_EQ(timeOf([&] { EXPECT_EQ(read29(), 6); }), 60 + 60 + 100 + 60);
}

TEST_F(Li100V3Result, NoResultYetReadsAgainOnOddCountsAndAsksOnOnEvenOnes) {
  expectReadAndAsk().answer(fromHex(kInServiceMode));  // count 2
  expect(kAsk, kInServiceMode);                        // count 3
  expectRepeat(kRead29).answer(fromHex(kReadBegun));
  expect(kAsk, kInServiceMode);  // count 4
  expect(kAsk, kResult);
  expectEpilogue();
  EXPECT_EQ(read29(), 6);
}

TEST_F(Li100V3Result, TheCountRunsOnOverTheRepeatsAndEnds) {
  expect(kRead29, kReadBegun);
  for (int count = 1; count < 7; count += 2) {
    expect(kAsk, kInServiceMode);
    expect(kAsk, kInServiceMode);
    expectRepeat(kRead29).answer(fromHex(kReadBegun));
  }
  expect(kAsk, kInServiceMode);  // the seventh question is the last
  expectEpilogue();
  EXPECT_EQ(read29(), -1002) << "61 02: -1000 - 2";
}

TEST_F(Li100V3Result, FewerThanThreeBytesOnlyCount) {
  expectReadAndAsk().answer(fromHex("61 13"));  // stays waiting
  expect(kAsk, "72");                           // count 2: 61 13 72, which counts again
  expectRepeat(kRead29).answer(fromHex(kReadBegun));
  expect(kAsk, kResult);
  expectEpilogue();
  EXPECT_EQ(read29(), 6);
}

TEST_F(Li100V3Result, ASilentResultIsAskedForSevenTimesThenReadOnceMoreAndIsAWrongReply) {
  expect(kRead29, kReadBegun);
  expectTimes(7, kAsk);
  // The reply is still the confirmation, which is unknown as a result.
  expectRepeat(kRead29).answer(fromHex(kReadBegun));
  expectEpilogue();
  EXPECT_EQ(read29(), -1003);
}

TEST_F(Li100V3Result, AResultInTheLastConfirmationIsTaken) {
  expect(kRead29, kReadBegun);
  expectTimes(7, kAsk);
  expectRepeat(kRead29).answer(fromHex("63 14 1D 06 6C 00"));
  expectEpilogue();
  EXPECT_EQ(read29(), 6);
}

TEST_F(Li100V3Result, AnUnknownReplyToTheLastIsAWrongReply) {
  expect(kRead29, kReadBegun);
  for (int count = 1; count < 7; count += 2) {
    expect(kAsk, "AA BB CC");
    expect(kAsk, "AA BB CC");
    expectRepeat(kRead29).answer(fromHex(kReadBegun));
  }
  expect(kAsk, "AA BB CC");
  expectRepeat(kRead29).answer(fromHex(kReadBegun));
  expectEpilogue();
  EXPECT_EQ(read29(), -1003);
}

TEST_F(Li100V3Result, AReportToTheLastIsMinus1000MinusItsCode) {
  const QList<std::pair<const char*, int>> rows{
      {"61 12 73", -1018}, {"61 13 72", -1019}, {"61 82 E3", -1130}, {"61 FF 9E", -1255}};
  for (const auto& [report, result] : rows) {
    expect(kRead29, kReadBegun);
    for (int count = 1; count < 7; count += 2) {
      expect(kAsk, report);
      expect(kAsk, report);
      expectRepeat(kRead29).answer(fromHex(kReadBegun));
    }
    expect(kAsk, report);
    expectEpilogue();
    EXPECT_EQ(read29(), result) << report;
  }
}

TEST_F(Li100V3Result, AResultCutAtEveryByteIsReadAgainOrAskedFor) {
  struct Row {
    const char* cut;
    const char* next;  ///< the reply to the next question
    bool readsAgain;
  };
  // Fewer than three bytes stay ahead of the next reply.
  const Row rows[] = {{"", kResult, false},
                      {"63", "AA AA", true},
                      {"63 14", "AA", true},
                      {"63 14 1D", kResult, false}};
  for (const Row& row : rows) {
    expectReadAndAsk().answer(fromHex(row.cut));
    expect(kAsk, row.next);
    if (row.readsAgain) {
      expectRepeat(kRead29).answer(fromHex(kReadBegun));
      expect(kAsk, kResult);
    }
    expectEpilogue();
    EXPECT_EQ(read29(), 6) << row.cut;
  }
}

}  // namespace
}  // namespace lokari
