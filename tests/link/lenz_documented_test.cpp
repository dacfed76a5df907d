// What a Lenz interface does by its maker's documents, met by the messages as they always were: the
// result is asked for ahead of a failure, and what is told to everybody is no answer.
#include "lenz_fixture.h"

namespace lokari {
namespace {

class Li100Documented : public test::LenzFixture {
 protected:
  Li100Documented() : LenzFixture(StationKind::Li100) {}
};

class LiUsbDocumented : public test::LenzFixture {
 protected:
  LiUsbDocumented() : LenzFixture(StationKind::LiUsb) {}
};

class Li100V3Documented : public test::Li100V3Fixture {};

/// A write asks so often before it gives up.
constexpr int kWriteQuestions = 32;

// -- one message for a confirmation

TEST_F(Li100V3Documented, AReadThatIsConfirmedByTheServiceModeAloneHasItsResult) {
  expect(kRead29, kInServiceMode);
  expect(kResume, "61 01 60");
  expect(kRead29, kInServiceMode);
  expect(kAsk, kResult);
  expect(kResume, "61 01 60");
  EXPECT_EQ(read29(), 6);
  EXPECT_TRUE(view.statuses.isEmpty()) << "nothing has failed";
}

TEST_F(LiUsbDocumented, AReadThatIsConfirmedByABroadcastHasItsResult) {
  expect("FF FE 22 15 01 36", "FF FD 61 02 63");
  expect("FF FE 21 81 A0", "FF FD 61 01 60");
  expect("FF FE 22 15 01 36", "FF FD 61 02 63");
  expect("FF FE 21 10 31", "FF FE 63 14 01 05 73");
  expect("FF FE 21 81 A0", "FF FD 61 01 60");
  EXPECT_EQ(link.ReadCV(1, 3), 5);
}

TEST_F(Li100Documented, AStationThatSaysItOnceHasItsResult) {
  expect("22 15 1D 2A", "61 02 63");
  expect("21 81 A0", "61 01 60");
  expect("22 15 1D 2A", "61 02 63");
  expect("21 10 31", "63 14 1D 06 6C");
  expect("21 81 A0", "61 01 60");
  EXPECT_EQ(link.ReadCV(29, 3), 6);
}

TEST_F(Li100V3Documented, AResultThatTakesAMinuteIsWaitedForAndNothingIsSentMeanwhile) {
  expect(kRead29, kInServiceMode);
  expect(kResume, "61 01 60");
  expect(kRead29, kInServiceMode);
  expect(kAsk).answer(fromHex(kResult), 60'000);
  expect(kResume, "61 01 60");
  EXPECT_EQ(read29(), 6);
}

TEST_F(Li100V3Documented, ACancelEndsThatWaitAtOnce) {
  expect(kRead29, kInServiceMode);
  expect(kResume, "61 01 60");
  expect(kRead29, kInServiceMode);
  Millis cancelledAt = 0;
  expectAnd(
      kAsk,
      [&] {
        link.cancelRequested = true;
        cancelledAt = clock.now();
      },
      20'000);
  expectAnd(
      kResume, [&] { EXPECT_LE(clock.now() - cancelledAt, 100); }, 0);
  expectTimes(4, kResume);
  EXPECT_EQ(read29(), -1002);
}

TEST_F(Li100V3Documented, AReportThatAnswersTheQuestionIsTheResult) {
  expect(kRead29, kInServiceMode);
  expect(kResume, "61 01 60");
  expect(kRead29, kInServiceMode);
  expect(kAsk, "61 13 72");
  expect(kResume, "61 01 60");
  EXPECT_EQ(read29(), -1019);
}

TEST_F(Li100V3Documented, AnInterfaceThatCannotAskIsNoReply) {
  expect(kRead29, kInServiceMode);
  expect(kResume, "61 01 60");
  expect(kRead29, kInServiceMode);
  expect(kAsk, "01 02 03");
  expect(kResume, "61 01 60");
  EXPECT_EQ(read29(), -1001);
}

TEST_F(Li100V3Documented, ConfirmationAndServiceModeComeInAnyOrderAndInPieces) {
  for (const char* reply : {"01 04 05 61 02 63", "61 02 63 01 04 05"}) {
    const QByteArray whole = fromHex(reply);
    for (qsizetype cut = 1; cut < whole.size(); ++cut) {
      for (const Millis pause : {Millis{0}, Millis{150}, Millis{1500}}) {
        expect(kRead29).answer(whole.left(cut)).answer(whole.mid(cut), pause);
        expect(kAsk, kResult);
        expectEpilogue();
        EXPECT_EQ(read29(), 6) << reply << " cut at " << cut << ", " << pause << " ms";
      }
    }
  }
}

// -- writes

TEST_F(Li100V3Documented, AWriteThatEntersTheServiceModeTwiceHasItsResult) {
  link.commJob = CommJob::WriteProgTrack;
  expect(kWrite29, "01 04 05 61 02 63");
  expectRepeat(kWrite29).answer(fromHex("01 04 05 61 02 63"));
  expect(kAsk, kResult);
  expectEpilogue();
  EXPECT_EQ(write(29, 6), 6);
}

TEST_F(Li100V3Documented, AWriteWithoutAValueIsReadBack) {
  link.commJob = CommJob::WriteProgTrack;
  expect(kWrite29, kWriteDone);
  for (int i = 0; i < kWriteQuestions; ++i) expect(kAsk, "61 11 70");
  expect(kRead29, "01 04 05");
  expect(kAsk, kResult);
  expectEpilogue();
  EXPECT_EQ(write(29, 6), 6);
}

TEST_F(Li100V3Documented, WhatIsReadBackIsTheResultOfTheWrite) {
  link.commJob = CommJob::WriteProgTrack;
  expect(kWrite29, kWriteDone);
  for (int i = 0; i < kWriteQuestions; ++i) expect(kAsk, "61 11 70");
  expect(kRead29, "61 02 63");
  expect(kAsk, "63 14 1D 02 68");
  expectEpilogue();
  EXPECT_EQ(write(29, 6), 2) << "the decoder has kept the old value";
}

// -- busy, and what is told to everybody

TEST_F(Li100V3Documented, AStationThatIsBusyToTheLastIsAskedAsTheDocumentsHaveIt) {
  expect(kRead29, kReadBegun);
  for (int attempt = 0; attempt < 3; ++attempt) {
    expect(kAsk, "61 1F 7E");
    expect(kAsk, "61 81 E0");
    expectRepeat(kRead29).answer(fromHex(kReadBegun));
  }
  // The seventh question is the last by the count.
  expect(kAsk, "61 1F 7E");
  for (int i = 0; i < 12; ++i) expect(kAsk, i % 2 == 0 ? "61 1F 7E" : "61 81 E0");
  expect(kAsk, kResult);
  expectEpilogue();
  EXPECT_EQ(read29(), 6);
}

TEST_F(Li100V3Documented, AWriteToAStationThatStaysBusyHasAnEnd) {
  link.commJob = CommJob::WriteProgTrack;
  expect(kWrite29, kWriteDone);
  for (int i = 0; i < kWriteQuestions; ++i) expect(kAsk, "61 1F 7E");
  // 90 seconds more, half a second apart.
  for (int i = 0; i < 161; ++i) expect(kAsk, "61 1F 7E");
  expectEpilogue();
  EXPECT_EQ(write(29, 6), -31);
}

TEST_F(Li100V3Documented, ACancelEndsTheQuestionsToABusyStation) {
  expect(kRead29, kReadBegun);
  expect(kAsk, "61 1F 7E");
  expect(kAsk).answer(fromHex("61 1F 7E")).then([&] { link.cancelRequested = true; }, 100);
  expectTimes(5, kResume);
  EXPECT_EQ(read29(), -1002);
}

TEST_F(LiUsbDocumented, NewsAheadOfAResultIsNoAnswer) {
  for (const char* news : {"FF FD 61 00 61", "FF FE 61 01 60", "FF FD 81 00 81",
                           "FF FD 42 03 06 47", "FF FD 44 03 06 04 09 4C", "FF FE 01 05 04",
                           "FF FE 01 07 06", "FF FD E3 40 00 03 A0", "FF FE 01 04 05"}) {
    expect("FF FE 22 15 01 36", "FF FE 01 04 05 FF FE 61 02 63");
    expect("FF FE 21 10 31").answer(fromHex(news)).answer(fromHex("FF FE 63 14 01 05 73"), 900);
    expect("FF FE 21 81 A0", "FF FE 01 04 05 FF FE 61 01 60");
    EXPECT_EQ(link.ReadCV(1, 3), 5) << news;
  }
}

TEST_F(LiUsbDocumented, NewsAheadOfAMainTrackReplyIsNoAnswer) {
  for (const char* news : {"FF FD 61 01 60", "FF FE 61 00 61", "FF FD 81 00 81"}) {
    expect("FF FE E6 30 00 03 EC 1C 06 23").answer(fromHex(news)).answer(fromHex("FF FE 01 04 05"));
    EXPECT_EQ(writeMain(29, 6, 3), 6) << news;
    link.commJob = CommJob::ReadProgTrack;
  }
}

}  // namespace
}  // namespace lokari
