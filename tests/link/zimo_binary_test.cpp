// Sessions with the MX1 and MX1ULF in binary and their CVs.
#include "link/zimo_binary.h"

#include "link/link_error.h"
#include "support/link_fixture.h"

namespace lokari {
namespace {

QByteArray fromHex(const char* text) {
  return QByteArray::fromHex(text);
}

const char* const kHello = "0101 00 1030 00 3E 17";
const char* const kLogOn = "0101 1021 1030 11 04 1021 B8 17";
const char* const kDone = "0101 05 50 11 00 00 22 17";

const char* const kRead29 = "0101 02 1030 13 80 00 00 1D AC 17";
const char* const kRead29Again = "0101 03 1030 13 80 00 00 1D 91 17";
const char* const kWrite29 = "0101 02 1030 13 80 00 00 1D 06 D1 17";
const char* const kWrite29Again = "0101 03 1030 13 80 00 00 1D 06 92 17";

const char* const kAccepted = "0101 07 50 13 02 00 7F 17";
const char* const kBusy = "0101 07 50 13 02 04 1E 17";
const char* const kRefused = "0101 07 50 13 02 05 40 17";
/// CV 29 is 6; sequence byte 8.
const char* const kResult = "0101 08 1030 13 02 80 00 00 1D 06 02 17";
const char* const kFailure = "0101 08 1030 13 02 80 00 03 19 17";
/// CV 28 is 7.
const char* const kOtherResult = "0101 09 1030 13 02 80 00 00 1C 07 3C 17";
/// A vehicle and an output were switched elsewhere.
const char* const kVehicleNews = "0101 09 00 FF 00 00 03 1030 08 00 00 B7 17";
const char* const kOutputNews = "0101 09 00 FE 00 00 00 1021 02 AD 17";
/// The acknowledgement of sequence byte 8.
const char* const kAck3 = "0101 03 50 13 08 00 87 17";
const char* const kAck4 = "0101 04 50 13 08 00 D6 17";

const QString kNoOrWrong = QStringLiteral("Keine / falsche Antwort vom Basisgerät!");

class ZimoBinaryTest : public test::LinkFixture {
 protected:
  explicit ZimoBinaryTest(StationKind kind = StationKind::Mx1Bin) : LinkFixture(kind) {}

  void SetUp() override {
    greeting();
    link.commJob = CommJob::ReadProgTrack;
    ASSERT_EQ(link.initComm(true, true, true), "");
    clock.advance(2000 - clock.now());  // time-outs count whole seconds
  }

  void greeting() {
    expect(kHello).answer(fromHex("0101 04 50 00 00 00 0E 17"));
    expect(kLogOn).answer(fromHex(kDone));
  }

  test::ScriptedLine& expect(const char* frame) { return line.expect(fromHex(frame)); }
  /// The two frames of a successful access.
  void answerWithResult(test::ScriptedLine& script) {
    script.answer(fromHex(kAccepted)).answer(fromHex(kResult), 400);
  }
  int write(int cv, int value, int address = 3) { return link.WriteCV(cv, value, address, 0); }
};

class ZimoBinaryKinds : public ZimoBinaryTest, public ::testing::WithParamInterface<StationKind> {
 protected:
  ZimoBinaryKinds() : ZimoBinaryTest(GetParam()) {}
};

INSTANTIATE_TEST_SUITE_P(Both, ZimoBinaryKinds,
                         ::testing::Values(StationKind::Mx1Bin, StationKind::Mx1Ulf));

// -- session

TEST_P(ZimoBinaryKinds, OpenAt9600WithHandshakingAndGreet) {
  EXPECT_EQ(line.opened.baudrate, 9600);
  EXPECT_EQ(line.opened.handshaking, Handshaking::RequestToSend);
  EXPECT_EQ(line.sent(), fromHex(kHello) + fromHex(kLogOn));
  EXPECT_EQ(line.writes[1].at, 10);
}

TEST_P(ZimoBinaryKinds, ReadAndWriteAlike) {
  answerWithResult(expect(kRead29));
  expect(kAck3);
  EXPECT_EQ(link.ReadCV(29, 3), 6);
  link.commJob = CommJob::WriteProgTrack;
  answerWithResult(expect("0101 04 1030 13 80 00 00 1D 06 42 17"));
  expect("0101 05 50 13 08 00 1B 17");
  EXPECT_EQ(write(29, 6), 6);
  expect("0101 06 1030 11 04 00 B7 17").answer(fromHex(kDone));
  link.endcomm(true, true);
  EXPECT_FALSE(line.isOpen());
}

TEST_F(ZimoBinaryTest, ASilentStationStillOpensAfterBothGreetings) {
  link.FinishComm();
  expect(kHello);
  expect(kLogOn);
  EXPECT_EQ(timeOf([&] { EXPECT_EQ(link.initComm(true, true, true), ""); }), 31000 + 31000 + 1000);
}

TEST_F(ZimoBinaryTest, TheGreetingsRepliesAreNotJudged) {
  link.FinishComm();
  expect(kHello).answer(fromHex("0101 04 50 00 00 04 6F 17"));
  expect(kLogOn).answer(fromHex("AA BB CC DD EE FF"));
  EXPECT_EQ(link.initComm(true, true, true), "");
  EXPECT_EQ(link.getBufferCount(), 0);
}

TEST_F(ZimoBinaryTest, EverySessionCountsItsFramesFromZero) {
  EXPECT_EQ(link.initComm(true, false, false), "");
  EXPECT_EQ(line.opens, 1);
  answerWithResult(expect("0101 00 1030 13 80 00 00 1D D6 17"));
  expect("0101 1021 50 13 08 00 04 17");
  EXPECT_EQ(link.ReadCV(29, 3), 6);
}

TEST_F(ZimoBinaryTest, TheFarewellGoesOutAfterEveryJob) {
  link.commJob = CommJob::WriteMain;
  expect("0101 02 1030 11 04 00 A8 17").answer(fromHex(kDone));
  link.endcomm(false, false);
  EXPECT_EQ(line.writes.last().at, 2000 + 1000);
  EXPECT_FALSE(line.isOpen());
}

TEST_F(ZimoBinaryTest, TheFarewellDoesNotWaitAfterACancel) {
  link.cancelRequested = true;
  expect("0101 02 1030 11 04 00 A8 17");
  EXPECT_EQ(timeOf([&] { link.endcomm(true, true); }), 1000);
}

TEST_F(ZimoBinaryTest, AnAddressHasNoIndex) {
  EXPECT_EQ(link.getAddrIndex(1000), 1000);
  EXPECT_EQ(line.writes.size(), 2);
}

// -- reading

TEST_F(ZimoBinaryTest, ReadsEveryCvNumberWithTwoBytes) {
  struct Case {
    int cv;
    const char* frame;
    const char* result;
  };
  const Case cases[] = {
      {1, "0101 02 1030 13 80 00 00 1021 92 17", "0101 08 1030 13 02 80 00 00 1021 06 A3 17"},
      {255, "0101 02 1030 13 80 00 00 FF F9 17", "0101 08 1030 13 02 80 00 00 FF 06 E6 17"},
      {256, "0101 02 1030 13 80 00 1021 00 08 17", "0101 08 1030 13 02 80 00 1021 00 06 CC 17"},
      {257, "0101 02 1030 13 80 00 1021 1021 56 17", "0101 08 1030 13 02 80 00 1021 1021 06 08 17"},
      {512, "0101 02 1030 13 80 00 02 00 5D 17", "0101 08 1030 13 02 80 00 02 00 06 28 17"},
      {1024, "0101 02 1030 13 80 00 04 00 F7 17", "0101 08 1030 13 02 80 00 04 00 06 F9 17"},
  };
  auto& framing = dynamic_cast<ZimoBinaryProtocol&>(link.protocol()).framing();
  for (const Case& one : cases) {
    framing.zbinSeq = 2;
    expect(one.frame).answer(fromHex(kAccepted)).answer(fromHex(one.result), 400);
    expect(kAck3);
    EXPECT_EQ(link.ReadCV(one.cv, 3), 6) << one.cv;
  }
}

TEST_F(ZimoBinaryTest, AReadEndsWithItsResultAndAcknowledgesItsSequenceByte) {
  expect(kRead29)
      .answer(fromHex(kAccepted))
      .answer(fromHex("0101 1037 1030 13 02 80 00 00 1D 1037 71 17"), 400);
  expect("0101 03 50 13 1037 00 73 17");
  EXPECT_EQ(timeOf([&] { EXPECT_EQ(link.ReadCV(29, 3), 0x17); }), 410);
  EXPECT_TRUE(view.statuses.isEmpty());
}

TEST_F(ZimoBinaryTest, TheResultMayComeWithTheConfirmation) {
  expect(kRead29).answer(fromHex(kAccepted) + fromHex(kResult));
  expect(kAck3);
  EXPECT_EQ(link.ReadCV(29, 3), 6);
}

TEST_F(ZimoBinaryTest, FramesWithTheLongHeaderAreReadAlike) {
  expect(kRead29)
      .answer(fromHex("0101 07 D0 13 02 AA 00 C5 C6 17"))
      .answer(fromHex("0101 08 90 13 02 AA 80 00 00 1D 06 C5 C6 17"), 400);
  expect(kAck3);
  EXPECT_EQ(link.ReadCV(29, 3), 6);
}

TEST_F(ZimoBinaryTest, TheResultMayTakeThirtySeconds) {
  expect(kRead29).answer(fromHex(kAccepted)).answer(fromHex(kResult), 29000);
  expect(kAck3);
  EXPECT_EQ(link.ReadCV(29, 3), 6);
}

TEST_F(ZimoBinaryTest, TheSlowOptionAddsExactlyOneSecond) {
  settings.delayFlag = true;
  answerWithResult(expect(kRead29));
  expect(kAck3);
  EXPECT_EQ(timeOf([&] { link.ReadCV(29, 3); }), 1410);
}

TEST_F(ZimoBinaryTest, WhatWaitsBeforeTheQuestionIsNotTakenForItsAnswer) {
  line.arrive(fromHex(kRefused));
  answerWithResult(expect(kRead29));
  expect(kAck3);
  EXPECT_EQ(link.ReadCV(29, 3), 6);
}

TEST_P(ZimoBinaryKinds, TheResultOfAnotherCvIsPassedOver) {
  expect(kRead29)
      .answer(fromHex(kAccepted))
      .answer(fromHex(kOtherResult), 200)
      .answer(fromHex(kResult), 200);
  expect(kAck3);
  EXPECT_EQ(link.ReadCV(29, 3), 6);
}

TEST_F(ZimoBinaryTest, OnlyTheResultOfAnotherCvIsAWrongReplyAfterTheToldTime) {
  expect(kRead29).answer(fromHex(kAccepted)).answer(fromHex(kOtherResult), 20'000);
  EXPECT_EQ(timeOf([&] { EXPECT_EQ(link.ReadCV(29, 3), -1003); }), 31'000);
  EXPECT_EQ(line.writes.size(), 3) << "it is not acknowledged";
}

TEST_F(ZimoBinaryTest, NewsOfVehiclesAndOutputsPassForNoAnswerWhereverTheyStand) {
  expect(kRead29)
      .answer(fromHex(kVehicleNews))
      .answer(fromHex(kAccepted))
      .answer(fromHex(kOutputNews))
      .answer(fromHex(kResult), 400)
      .answer(fromHex(kVehicleNews), 0);
  expect(kAck3);
  EXPECT_EQ(link.ReadCV(29, 3), 6);
  clock.advance(100);
  answerWithResult(expect("0101 04 1030 13 80 00 00 1D 22 17"));
  expect("0101 05 50 13 08 00 1B 17");
  EXPECT_EQ(link.ReadCV(29, 3), 6);
}

TEST_F(ZimoBinaryTest, TheAnswerToAStopInBetweenIsNotTakenForTheCvs) {
  auto& framing = dynamic_cast<ZimoBinaryProtocol&>(link.protocol()).framing();
  expect(kRead29).then([&] { framing.zbinSendAhead(fromHex("02 00")); }, 5);
  expect("0101 03 1030 02 00 B8 17")
      .answer(fromHex("0101 08 50 02 00 00 60 17"))
      .answer(fromHex(kAccepted))
      .answer(fromHex(kResult), 400);
  expect("0101 04 50 13 08 00 D6 17");
  EXPECT_EQ(link.ReadCV(29, 3), 6);
  EXPECT_EQ(timeOf([&] { framing.zbinSettle(); }), 0) << "it is confirmed";
}

// -- checksums

TEST_F(ZimoBinaryTest, AResultWithAWrongChecksumIsAskedForOnceMoreAndOnlyTwoEqualOnesAreBelieved) {
  struct Row {
    const char* first;
    const char* second;
    int result;
  };
  const char* const kBroken7 = "0101 08 1030 13 02 80 00 00 1D 07 C5 17";
  const char* const kBroken6 = "0101 08 1030 13 02 80 00 00 1D 06 C5 17";
  const Row rows[] = {{kBroken6, kResult, 6},
                      {kBroken6, kBroken6, 6},
                      {kBroken7, kResult, -1003},
                      {kBroken6, kBroken7, -1003},
                      {kBroken6, kFailure, -1003}};
  auto& framing = dynamic_cast<ZimoBinaryProtocol&>(link.protocol()).framing();
  for (const Row& row : rows) {
    framing.zbinSeq = 2;
    expect(kRead29).answer(fromHex(kAccepted)).answer(fromHex(row.first), 400);
    expect(kAck3);
    expect("0101 04 1030 13 80 00 00 1D 22 17")
        .answer(fromHex(kAccepted))
        .answer(fromHex(row.second), 400);
    expect("0101 05 50 13 08 00 1B 17");
    EXPECT_EQ(link.ReadCV(29, 3), row.result) << row.first << row.second;
  }
}

TEST_F(ZimoBinaryTest, AWriteWhoseResultHasAWrongChecksumIsWrittenOnceMore) {
  link.commJob = CommJob::WriteProgTrack;
  expect(kWrite29)
      .answer(fromHex(kAccepted))
      .answer(fromHex("0101 08 1030 13 02 80 00 00 1D 06 C5 17"), 400);
  expect(kAck3);
  expect("0101 04 1030 13 80 00 00 1D 06 42 17")
      .answer(fromHex(kAccepted))
      .answer(fromHex("0101 08 1030 13 02 80 00 00 1D 02 C5 17"), 400);
  expect("0101 05 50 13 08 00 1B 17");
  EXPECT_EQ(write(29, 6), -1003);
}

TEST_F(ZimoBinaryTest, AMainTrackWriteIsDoneWhenASoundConfirmationOrASecondOneSaysSo) {
  link.commJob = CommJob::WriteMain;
  expect("0101 02 1030 13 80 03 00 1D 06 59 17").answer(fromHex("0101 07 50 13 02 00 C5 17"));
  expect("0101 03 1030 13 80 03 00 1D 06 1A 17").answer(fromHex(kAccepted));
  EXPECT_EQ(write(29, 6, 3), 6);
  expect("0101 04 1030 13 80 03 00 1D 06 CA 17").answer(fromHex("0101 07 50 13 02 00 C5 17"));
  expect("0101 05 1030 13 80 03 00 1D 06 89 17").answer(fromHex(kRefused));
  EXPECT_EQ(write(29, 6, 3), -1003);
}

TEST_F(ZimoBinaryTest, TheSecondChanceSendsTheSameWithTheNextSequenceByte) {
  expect(kRead29).answer(fromHex("0101 07"));
  answerWithResult(expect(kRead29Again));
  expect(kAck4);
  // A wait of 3 s; 10 ms; a pause of 1 s in which the result arrives too.
  EXPECT_EQ(timeOf([&] { EXPECT_EQ(link.ReadCV(29, 3), 6); }), 3000 + 10 + 1000);
}

TEST_F(ZimoBinaryTest, SilenceIsNoReply) {
  expect(kRead29);
  expect(kRead29Again);
  EXPECT_EQ(timeOf([&] { EXPECT_EQ(link.ReadCV(29, 3), -1001); }), 3000 + 3000 + 1000 + 31000);
  EXPECT_EQ(view.statuses, QStringList{kNoOrWrong});
}

TEST_F(ZimoBinaryTest, AReplyOfOneByteIsNoReply) {
  expect(kRead29).answer(fromHex("0101 07 50 13 02 13 17"));
  EXPECT_EQ(link.ReadCV(29, 3), -1001);
}

TEST_F(ZimoBinaryTest, ACancelInTheFirstWaitEndsTheReadAtOnce) {
  expect(kRead29).then([&] { link.cancelRequested = true; }, 500);
  EXPECT_EQ(timeOf([&] { EXPECT_EQ(link.ReadCV(29, 3), -1002); }), 500);
}

TEST_F(ZimoBinaryTest, ACancelInTheSecondWaitIsACancelToo) {
  expect(kRead29);
  expect(kRead29Again).then([&] { link.cancelRequested = true; }, 500);
  EXPECT_EQ(link.ReadCV(29, 3), -1002);
}

TEST_F(ZimoBinaryTest, ACancelWhileTheResultIsAwaitedIsACancelToo) {
  expect(kRead29).answer(fromHex(kAccepted)).then([&] { link.cancelRequested = true; }, 5000);
  EXPECT_EQ(timeOf([&] { EXPECT_EQ(link.ReadCV(29, 3), -1002); }), 5010);
}

TEST_F(ZimoBinaryTest, ABusyStationIsAskedAgainUntilItIsReady) {
  expect(kRead29).answer(fromHex(kBusy));
  expect(kRead29Again).answer(fromHex(kBusy));
  expect("0101 04 1030 13 80 00 00 1D 22 17").answer(fromHex(kBusy));
  answerWithResult(expect("0101 05 1030 13 80 00 00 1D 1F 17"));
  expect("0101 06 50 13 08 00 55 17");
  EXPECT_EQ(timeOf([&] { EXPECT_EQ(link.ReadCV(29, 3), 6); }), 10 + 3 * 1010);
}

TEST_F(ZimoBinaryTest, ABusyReplyOfAnotherCommandCountsAsBusy) {
  expect(kRead29).answer(fromHex("0101 07 50 11 02 04 51 17"));
  answerWithResult(expect(kRead29Again));
  expect(kAck4);
  EXPECT_EQ(link.ReadCV(29, 3), 6);
}

TEST_F(ZimoBinaryTest, ACancelEndsTheRepeatsOfABusyStation) {
  expect(kRead29).answer(fromHex(kBusy));
  expect(kRead29Again).answer(fromHex(kBusy)).then([&] { link.cancelRequested = true; }, 200);
  EXPECT_EQ(link.ReadCV(29, 3), -1002);
}

TEST_F(ZimoBinaryTest, ARefusalIsMinus1030MinusItsByteAndIsNotAcknowledged) {
  expect(kRead29).answer(fromHex(kRefused));
  EXPECT_EQ(link.ReadCV(29, 3), -1035);
  expect(kRead29Again).answer(fromHex("0101 07 50 11 02 00 30 17"));
  EXPECT_EQ(link.ReadCV(29, 3), -1030);
}

TEST_F(ZimoBinaryTest, AShortResultIsMinus1100MinusItsByteAndIsAcknowledged) {
  expect(kRead29).answer(fromHex(kAccepted)).answer(fromHex(kFailure), 400);
  expect(kAck3);
  EXPECT_EQ(link.ReadCV(29, 3), -1103);
}

TEST_F(ZimoBinaryTest, AResultOfAnotherCommandIsAWrongReplyAndIsNotAcknowledged) {
  expect(kRead29)
      .answer(fromHex(kAccepted))
      .answer(fromHex("0101 08 1030 0A 02 80 00 00 1D 06 35 17"), 400);
  EXPECT_EQ(link.ReadCV(29, 3), -1003);
  EXPECT_EQ(line.writes.size(), 3);
}

TEST_F(ZimoBinaryTest, AResultThatNeverComesIsAWrongReply) {
  expect(kRead29).answer(fromHex(kAccepted));
  EXPECT_EQ(link.ReadCV(29, 3), -1003);
}

TEST_F(ZimoBinaryTest, AConfirmationCutAtEveryByteIsNoReplyAndTheNextReadGoesOn) {
  auto& framing = dynamic_cast<ZimoBinaryProtocol&>(link.protocol()).framing();
  const QByteArray whole = fromHex(kAccepted);
  for (qsizetype size = 0; size < whole.size(); ++size) {
    framing.zbinSeq = 2;
    expect(kRead29).answer(whole.left(size));
    // From five bytes on the frame's own wait is over; what is missing is awaited inside it.
    if (size < 5) expect(kRead29Again).answer(whole.left(size));
    EXPECT_EQ(link.ReadCV(29, 3), -1001) << size;
    line.read();
    framing.zbinSeq = 2;
    answerWithResult(expect(kRead29));
    expect(kAck3);
    EXPECT_EQ(link.ReadCV(29, 3), 6) << size;
  }
}

TEST_F(ZimoBinaryTest, AResultCutAtEveryByteIsAWrongReply) {
  auto& framing = dynamic_cast<ZimoBinaryProtocol&>(link.protocol()).framing();
  const QByteArray whole = fromHex(kResult);
  for (qsizetype size = 0; size < whole.size(); ++size) {
    framing.zbinSeq = 2;
    expect(kRead29).answer(fromHex(kAccepted)).answer(whole.left(size), 400);
    EXPECT_EQ(link.ReadCV(29, 3), -1003) << size;
    line.read();
  }
}

TEST_F(ZimoBinaryTest, NoiseAroundTheFramesWithinReachDoesNoHarm) {
  expect(kRead29)
      .answer(fromHex("AA BB") + fromHex(kAccepted))
      .answer(fromHex("EE") + fromHex(kResult) + fromHex("AA"), 400);
  expect(kAck3);
  EXPECT_EQ(link.ReadCV(29, 3), 6);
}

TEST_F(ZimoBinaryTest, NoiseThatHidesTheStartIsNoReply) {
  expect(kRead29).answer(fromHex("AA BB CC DD EE") + fromHex(kAccepted));
  EXPECT_EQ(link.ReadCV(29, 3), -1001);
}

TEST_F(ZimoBinaryTest, AVanishedPortEndsTheReadAndTheSessionCloses) {
  expect(kRead29).then([&] { line.vanish(); }, 200);
  EXPECT_THROW(link.ReadCV(29, 3), LinkError);
  link.endcomm(true, true);
  EXPECT_EQ(link.commUseCount, 0);
}

TEST_F(ZimoBinaryTest, APortThatVanishesBeforeTheResultEndsTheRead) {
  expect(kRead29).answer(fromHex(kAccepted)).then([&] { line.vanish(); }, 200);
  EXPECT_EQ(link.ReadCV(29, 3), -1003);
  EXPECT_THROW(link.ReadCV(29, 3), LinkError);
}

// -- writing

TEST_F(ZimoBinaryTest, AWriteOnTheProgrammingTrackGivesTheStationsValue) {
  link.commJob = CommJob::WriteProgTrack;
  expect(kWrite29)
      .answer(fromHex(kAccepted))
      .answer(fromHex("0101 08 1030 13 02 80 00 00 1D 02 63 17"), 400);
  expect(kAck3);
  EXPECT_EQ(write(29, 6), 2);
}

TEST_F(ZimoBinaryTest, AWriteOnTheProgrammingTrackFailsLikeARead) {
  link.commJob = CommJob::WriteProgTrack;
  expect(kWrite29).answer(fromHex(kAccepted)).answer(fromHex(kFailure), 400);
  expect(kAck3);
  EXPECT_EQ(write(29, 6), -1103);
  expect("0101 04 1030 13 80 00 00 1D 06 42 17").answer(fromHex(kRefused));
  EXPECT_EQ(write(29, 6), -1035);
}

TEST_F(ZimoBinaryTest, AWriteHasItsSecondChanceAndRepeatsWhenBusy) {
  link.commJob = CommJob::WriteProgTrack;
  expect(kWrite29);
  expect(kWrite29Again).answer(fromHex(kBusy));
  answerWithResult(expect("0101 04 1030 13 80 00 00 1D 06 42 17"));
  expect("0101 05 50 13 08 00 1B 17");
  EXPECT_EQ(write(29, 6), 6);
}

TEST_F(ZimoBinaryTest, AMainTrackWriteEndsWithItsConfirmation) {
  link.commJob = CommJob::WriteMain;
  expect("0101 02 1030 13 80 03 00 1D 06 59 17").answer(fromHex(kAccepted));
  EXPECT_EQ(timeOf([&] { EXPECT_EQ(write(29, 6, 3), 6); }), 10);
  expect("0101 03 1030 13 83 E8 00 1D 06 89 17").answer(fromHex(kAccepted));
  EXPECT_EQ(write(29, 6, 1000), 6);
}

TEST_F(ZimoBinaryTest, AMainTrackWriteMayBeRefusedOrMetBySilence) {
  link.commJob = CommJob::WriteMain;
  expect("0101 02 1030 13 80 03 00 1D 06 59 17").answer(fromHex(kRefused));
  EXPECT_EQ(write(29, 6, 3), -1035);
  expect("0101 03 1030 13 83 E8 00 1D 06 89 17");
  expect("0101 04 1030 13 83 E8 00 1D 06 59 17");
  EXPECT_EQ(write(29, 6, 1000), -1001);
}

TEST_F(ZimoBinaryTest, AMainTrackWriteToAddress0NeverReachesTheProgrammingTrack) {
  link.commJob = CommJob::WriteMain;
  EXPECT_EQ(timeOf([&] { EXPECT_EQ(write(29, 6, 0), -1003); }), 0);
  EXPECT_EQ(line.writes.size(), 2) << "only the greeting";
}

TEST_F(ZimoBinaryTest, EveryJobButTheProgrammingTrackWriteGoesToTheMainTrack) {
  link.commJob = CommJob::ReadProgTrack;
  expect("0101 02 1030 13 80 03 00 1F 1021 4B 17").answer(fromHex(kAccepted));
  EXPECT_EQ(write(31, 1, 3), 1);
}

}  // namespace
}  // namespace lokari
