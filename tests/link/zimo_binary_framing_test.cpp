// Sending and receiving frames of the Zimo binary protocol.
#include "base/bytes.h"
#include "link/link_error.h"
#include "link/zimo_binary.h"
#include "support/link_fixture.h"

namespace lokari {
namespace {

QByteArray fromHex(const char* text) {
  return QByteArray::fromHex(text);
}

class ZimoFramingTest : public test::LinkFixture {
 protected:
  ZimoFramingTest() : LinkFixture(StationKind::Mx1Bin) {
    line.open({});
    // Bytes wait from the start, so that no time passes before the first ones.
  }

  QByteArray receive(const char* waiting) {
    line.arrive(fromHex(waiting));
    return framing.zbinReceive();
  }

  ZimoBinaryFraming framing{link};
};

// -- zbinSend

TEST_F(ZimoFramingTest, CountsItsFrames) {
  line.expect(fromHex("0101 00 1030 00 3E 17")).expect(fromHex("0101 1021 1030 00 95 17"));
  framing.zbinSend(fromHex("00"), false);
  framing.zbinSend(fromHex("00"), false);
  EXPECT_EQ(framing.zbinSeq, 2);
}

TEST_F(ZimoFramingTest, SequenceNumber255SendsAndBecomesZero) {
  framing.zbinSeq = 255;
  line.expect(fromHex("0101 FF 1030 00 EC 17"));
  framing.zbinSend(fromHex("00"), false);
  EXPECT_EQ(framing.zbinSeq, 0);
}

TEST_F(ZimoFramingTest, AClosedPortSendsNothingAndKeepsTheSequenceNumber) {
  line.close();
  framing.zbinSeq = 255;
  framing.zbinSend(fromHex("00"), false);
  EXPECT_EQ(framing.zbinSeq, 255);
  EXPECT_TRUE(line.writes.isEmpty());
}

TEST_F(ZimoFramingTest, AFrameIsOneWrite) {
  line.expect(fromHex("0101 00 50 13 07 00 D1 17"));
  framing.zbinSend(fromHex("13 07 00"), true);
  EXPECT_EQ(line.writes.size(), 1);
}

// -- zbinReceive

TEST_F(ZimoFramingTest, TakesAWholeFrame) {
  EXPECT_EQ(receive("0101 07 50 13 02 00 C5 17"), fromHex("13 00"));
  EXPECT_EQ(framing.zbinRxSeq, 7);
  EXPECT_EQ(clock.now(), 0);
}

TEST_F(ZimoFramingTest, LeavesWhatFollowsTheFrame) {
  EXPECT_EQ(receive("0101 07 50 13 02 00 C5 17 0101 08"), fromHex("13 00"));
  EXPECT_EQ(line.read(), fromHex("0101 08"));
}

TEST_F(ZimoFramingTest, TakesTwoFramesOneAfterTheOther) {
  EXPECT_EQ(receive("0101 07 50 13 02 00 C5 17 0101 08 50 11 02 00 C5 17"), fromHex("13 00"));
  EXPECT_EQ(framing.zbinReceive(), fromHex("11 00"));
  EXPECT_EQ(framing.zbinRxSeq, 8);
}

TEST_F(ZimoFramingTest, NoiseBeforeTheStartInsideTheFirstFiveBytesIsSkipped) {
  EXPECT_EQ(receive("AA 0101 07 50 13 02 00 C5 17"), fromHex("13 00"));
  EXPECT_EQ(receive("AA BB 0101 07 50 13 02 00 C5 17"), fromHex("13 00"));
  EXPECT_EQ(receive("AA 01 BB 0101 07 50 13 02 00 C5 17"), fromHex("13 00"));
}

TEST_F(ZimoFramingTest, AStartPairBeyondTheFirstFiveBytesIsNotFoundAndTheRestStaysWaiting) {
  EXPECT_EQ(receive("AA BB CC DD 01 01 07 50 13 02 00 C5 17"), QByteArray());
  EXPECT_EQ(line.read(), fromHex("01 07 50 13 02 00 C5 17"));
}

TEST_F(ZimoFramingTest, FiveBytesWithoutAStartAreNoReply) {
  EXPECT_EQ(receive("AA BB CC DD EE FF 17"), QByteArray());
  EXPECT_EQ(line.read(), fromHex("FF 17"));
}

TEST_F(ZimoFramingTest, AnEndInsideTheFirstFiveBytesThatIsNotTheLastIsNoFrame) {
  EXPECT_EQ(receive("0101 17 AA BB 07 17"), QByteArray());
  EXPECT_EQ(line.read(), fromHex("07 17"));
}

TEST_F(ZimoFramingTest, AFrameThatIsAllInTheFirstFiveBytesIsTooShort) {
  EXPECT_EQ(receive("0101 07 50 17"), QByteArray());
  EXPECT_EQ(framing.zbinRxSeq, 7);
}

TEST_F(ZimoFramingTest, WaitsThirtySecondsForTheFirstFiveBytes) {
  EXPECT_EQ(timeOf([&] { EXPECT_EQ(framing.zbinReceive(), QByteArray()); }), 31000);
}

TEST_F(ZimoFramingTest, FewerThanFiveBytesAreNotTaken) {
  EXPECT_EQ(timeOf([&] { EXPECT_EQ(receive("0101 07 50"), QByteArray()); }), 31000);
  EXPECT_EQ(line.read(), fromHex("0101 07 50"));
}

TEST_F(ZimoFramingTest, WaitsTheUsualTimeForEachLaterByte) {
  EXPECT_EQ(timeOf([&] { EXPECT_EQ(receive("0101 07 50 13"), QByteArray()); }), 3000);
  clock.schedule(2500, [&] { line.arrive(fromHex("02")); });
  clock.schedule(5000, [&] { line.arrive(fromHex("00 C5 17")); });
  EXPECT_EQ(receive("0101 07 50 13"), fromHex("13 00"));
}

TEST_F(ZimoFramingTest, AReplyMayArriveByteByByte) {
  Millis at = 0;
  for (const char byte : fromHex("0101 07 D0 13 02 AA 00 06 C5 C6 17")) {
    clock.schedule(at += 700, [this, byte] { line.arrive(QByteArray(1, byte)); });
  }
  EXPECT_EQ(framing.zbinReceive(), fromHex("13 00 06"));
}

TEST_F(ZimoFramingTest, AReplyCutAtEveryByteIsEmpty) {
  const QByteArray whole = fromHex("0101 07 50 13 02 00 1037 17");
  for (qsizetype size = 0; size < whole.size(); ++size) {
    line.arrive(whole.left(size));
    EXPECT_EQ(framing.zbinReceive(), QByteArray()) << size;
    line.read();
    EXPECT_EQ(receive("0101 07 50 13 02 00 C5 17"), fromHex("13 00")) << size;
  }
}

TEST_F(ZimoFramingTest, ACancelEndsTheWaitForTheFirstBytes) {
  clock.schedule(400, [&] { link.cancelRequested = true; });
  EXPECT_EQ(timeOf([&] { EXPECT_EQ(framing.zbinReceive(), QByteArray()); }), 400);
}

TEST_F(ZimoFramingTest, ACancelEndsTheWaitForLaterBytes) {
  clock.schedule(400, [&] { link.cancelRequested = true; });
  EXPECT_EQ(timeOf([&] { EXPECT_EQ(receive("0101 07 50 13"), QByteArray()); }), 400);
}

TEST_F(ZimoFramingTest, AfterACancelAFrameThatWaitsIsNotTakenApart) {
  link.cancelRequested = true;
  EXPECT_EQ(receive("0101 07 50 13 02 00 C5 17"), QByteArray());
  EXPECT_EQ(framing.zbinRxSeq, -1);
}

TEST_F(ZimoFramingTest, NoiseWithoutAnEndIsGivenUp) {
  line.arrive(fromHex("0101") + QByteArray(100000, '\x55'));
  EXPECT_EQ(framing.zbinReceive(), QByteArray());
  EXPECT_GT(line.read().size(), 90000);
}

TEST_F(ZimoFramingTest, APortThatFailsInsideAFrameGivesAnEmptyReply) {
  clock.schedule(400, [&] { line.vanish(); });
  EXPECT_EQ(receive("0101 07 50 13"), QByteArray());
  EXPECT_EQ(framing.zbinReceive(), QByteArray());
}

// -- zbinSendMsg

const char* const kDrive = "03 00 03 10 20 00 00";
const char* const kDriveFrame0 = "0101 00 1030 03 00 03 1030 20 00 00 5B 17";

class ZimoSendMsgTest : public ZimoFramingTest {
 protected:
  /// The drive message goes out with this sequence number, 0 to 15 but 1.
  test::ScriptedLine& expectDrive(int seq) {
    static const char* const frames[] = {
        kDriveFrame0,
        "0101 1021 1030 03 00 03 1030 20 00 00 FF 17",
        "0101 02 1030 03 00 03 1030 20 00 00 0A 17",
        "0101 03 1030 03 00 03 1030 20 00 00 AE 17",
        "0101 04 1030 03 00 03 1030 20 00 00 F9 17",
    };
    return line.expect(fromHex(frames[seq]));
  }

  void sendDrive() { framing.zbinSendMsg(fromHex(kDrive)); }
};

TEST_F(ZimoSendMsgTest, IsDoneWithTheFirstConfirmation) {
  expectDrive(0).answer(fromHex("0101 07 50 03 00 00 C5 17"), 50);
  EXPECT_EQ(timeOf([&] { sendDrive(); }), 50);
  EXPECT_EQ(prompt.beeps, 0);
}

TEST_F(ZimoSendMsgTest, IsDoneWithStatus34AndWithAnyReplyThatBeginsWith02) {
  expectDrive(0).answer(fromHex("0101 07 50 03 00 34 C5 17"));
  sendDrive();
  expectDrive(1).answer(fromHex("0101 07 50 02 00 C5 17"));
  sendDrive();
  EXPECT_EQ(prompt.beeps, 0);
}

TEST_F(ZimoSendMsgTest, RepeatsATenthOfASecondAfterBusy) {
  expectDrive(0).answer(fromHex("0101 07 50 03 00 04 C5 17"));
  expectDrive(1).answer(fromHex("0101 07 50 03 00 00 C5 17"));
  EXPECT_EQ(timeOf([&] { sendDrive(); }), 10 + 100 + 10);
  EXPECT_EQ(prompt.beeps, 0);
}

TEST_F(ZimoSendMsgTest, RepeatsHalfASecondAfterAnythingElseAndDropsTheInput) {
  expectDrive(0).answer(fromHex("0101 07 50 03 00 05 C5 17 0101 AA"));
  expectDrive(1).answer(fromHex("0101 07 50 03 00 00 C5 17"));
  EXPECT_EQ(timeOf([&] { sendDrive(); }), 10 + 500 + 10);
  EXPECT_EQ(prompt.beeps, 0);
}

TEST_F(ZimoSendMsgTest, BeepsOnceAfterFiveFailedTries) {
  for (int seq = 0; seq < 5; ++seq) {
    expectDrive(seq).answer(
        fromHex(seq % 2 == 0 ? "0101 07 50 03 00 04 C5 17" : "0101 07 50 03 00 05 C5 17"));
  }
  sendDrive();
  EXPECT_EQ(prompt.beeps, 1);
  EXPECT_EQ(framing.zbinSeq, 5);
}

TEST_F(ZimoSendMsgTest, SilenceIsAFailedTryOfThirtySeconds) {
  expectDrive(0);
  expectDrive(1).answer(fromHex("0101 07 50 03 00 00 C5 17"));
  EXPECT_EQ(timeOf([&] { sendDrive(); }), 31000 + 500 + 10);
}

TEST_F(ZimoSendMsgTest, OnAClosedPortItStopsWithoutABeep) {
  line.close();
  EXPECT_EQ(timeOf([&] { sendDrive(); }), 0);
  EXPECT_EQ(prompt.beeps, 0);
}

TEST_F(ZimoSendMsgTest, AVanishedPortStopsTheTriesWithoutABeep) {
  expectDrive(0).then([&] { line.vanish(); }, 100);
  sendDrive();
  EXPECT_EQ(prompt.beeps, 0);
}

}  // namespace
}  // namespace lokari
