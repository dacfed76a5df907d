// Sessions with the MX1 and MX1ULF in binary and their CVs. The station's checksums in these
// scripts are arbitrary: nobody tests them.
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
const char* const kDone = "0101 05 50 11 00 00 C5 17";

const char* const kRead29 = "0101 02 1030 13 80 00 00 1D AC 17";
const char* const kRead29Again = "0101 03 1030 13 80 00 00 1D 91 17";
const char* const kWrite29 = "0101 02 1030 13 80 00 00 1D 06 D1 17";
const char* const kWrite29Again = "0101 03 1030 13 80 00 00 1D 06 92 17";

const char* const kAccepted = "0101 07 50 13 02 00 C5 17";
const char* const kBusy = "0101 07 50 13 02 04 C5 17";
const char* const kRefused = "0101 07 50 13 02 05 C5 17";
/// CV 29 is 6; sequence byte 8.
const char* const kResult = "0101 08 1030 13 02 80 00 00 1D 06 C5 17";
const char* const kFailure = "0101 08 1030 13 02 80 00 03 C5 17";
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
    expect(kHello).answer(fromHex("0101 04 50 00 00 00 C5 17"));
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
  expect(kHello).answer(fromHex("0101 04 50 00 00 04 C5 17"));
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
  };
  const Case cases[] = {
      {1, "0101 02 1030 13 80 00 00 1021 92 17"},   {255, "0101 02 1030 13 80 00 00 FF F9 17"},
      {256, "0101 02 1030 13 80 00 1021 00 08 17"}, {257, "0101 02 1030 13 80 00 1021 1021 56 17"},
      {512, "0101 02 1030 13 80 00 02 00 5D 17"},   {1024, "0101 02 1030 13 80 00 04 00 F7 17"},
  };
  auto& framing = dynamic_cast<ZimoBinaryProtocol&>(link.protocol()).framing();
  for (const Case& one : cases) {
    framing.zbinSeq = 2;
    answerWithResult(expect(one.frame));
    expect(kAck3);
    EXPECT_EQ(link.ReadCV(one.cv, 3), 6) << one.cv;
  }
}

TEST_F(ZimoBinaryTest, AReadEndsWithItsResultAndAcknowledgesItsSequenceByte) {
  expect(kRead29)
      .answer(fromHex(kAccepted))
      .answer(fromHex("0101 1037 1030 13 02 80 00 00 1D 1037 C5 17"), 400);
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

TEST_F(ZimoBinaryTest, WaitingInputIsNotDroppedBeforeTheFirstAttempt) {
  line.arrive(fromHex(kRefused));
  expect(kRead29);
  EXPECT_EQ(link.ReadCV(29, 3), -1035);
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
  expect(kRead29).answer(fromHex("0101 07 50 13 02 C5 17"));
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
  expect(kRead29).answer(fromHex("0101 07 50 11 02 04 C5 17"));
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
  expect(kRead29Again).answer(fromHex("0101 07 50 11 02 00 C5 17"));
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
      .answer(fromHex("0101 08 1030 0A 02 80 00 00 1D 06 C5 17"), 400);
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
      .answer(fromHex("0101 08 1030 13 02 80 00 00 1D 02 C5 17"), 400);
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
