// What is sent ahead of a message that waits: the orders to stop and to go.
#include "link/track_stop.h"
#include "link/zimo_binary.h"
#include "support/link_fixture.h"

namespace lokari {
namespace {

QByteArray fromHex(const char* text) {
  return QByteArray::fromHex(text);
}

const char* const kDrive = "03 00 03 10 20 00 00";
const char* const kStop = "02 00";
const char* const kGo = "02 02";
const char* const kPowerDone = "0101 08 50 02 00 00 C5 17";
const char* const kPowerBusy = "0101 08 50 02 00 04 C5 17";
const char* const kDriveDone = "0101 07 50 03 00 00 C5 17";

class ZimoSendAheadTest : public test::LinkFixture {
 protected:
  ZimoSendAheadTest() : LinkFixture(StationKind::Mx1Bin) { line.open({}); }

  ZimoBinaryFraming& shared() {
    return dynamic_cast<ZimoBinaryProtocol&>(link.protocol()).framing();
  }
  test::ScriptedLine& expectStop(int seq) {
    static const char* const frames[] = {
        "0101 00 1030 02 00 30 17", "0101 1021 1030 02 00 BF 17", "0101 02 1030 02 00 37 17",
        "0101 03 1030 02 00 B8 17", "0101 04 1030 02 00 3E 17",
    };
    return line.expect(fromHex(frames[seq]));
  }
  void stop() { shared().zbinSendAhead(fromHex(kStop)); }
  void go() { shared().zbinSendAhead(fromHex(kGo)); }

  LayoutOrder& order() { return link.trackStop().order(); }
  /// stop(), whose answer is awaited.
  void orderStop() {
    order().await(
        {.stops = true, .failed = [this](LayoutOrder::Outcome) { ++failures; }, .held = {}});
    order().noteSent();
    stop();
  }

  int failures = 0;
};

TEST_F(ZimoSendAheadTest, GoesOutAtOnceAndIsSettledByItsAnswer) {
  expectStop(0).answer(fromHex(kPowerDone), 50);
  EXPECT_EQ(timeOf([&] { stop(); }), 0);
  EXPECT_EQ(timeOf([&] { shared().zbinSettle(); }), 50);
  EXPECT_EQ(timeOf([&] { shared().zbinSettle(); }), 0);
  EXPECT_EQ(prompt.beeps, 0);
}

TEST_F(ZimoSendAheadTest, LeavesItsAnswerToTheMessageThatWaits) {
  line.expect(fromHex("0101 00 1030 03 00 03 1030 20 00 00 5B 17"));
  expectStop(1);
  clock.schedule(400, [&] { stop(); });
  clock.schedule(500, [&] { line.arrive(fromHex(kDriveDone) + fromHex(kPowerDone)); });
  shared().zbinSendMsg(fromHex(kDrive));
  EXPECT_EQ(clock.now(), 500);
  EXPECT_EQ(line.inBufferCount(), 9);
  shared().zbinSettle();
  EXPECT_EQ(line.inBufferCount(), 0);
  EXPECT_EQ(clock.now(), 500);
}

TEST_F(ZimoSendAheadTest, IsSettledBeforeTheNextMessageGoesOut) {
  expectStop(0).answer(fromHex(kPowerDone), 50);
  line.expect(fromHex("0101 1021 1030 03 00 03 1030 20 00 00 FF 17")).answer(fromHex(kDriveDone));
  stop();
  shared().zbinSendMsg(fromHex(kDrive));
  EXPECT_EQ(line.writes[1].at, 50);
}

TEST_F(ZimoSendAheadTest, IsSettledBeforeAMessageIsRepeated) {
  line.expect(fromHex("0101 00 1030 03 00 03 1030 20 00 00 5B 17"));
  expectStop(1);
  line.expect(fromHex("0101 02 1030 03 00 03 1030 20 00 00 0A 17"))
      .answer(fromHex("0101 07 50 03 00 04 C5 17"));
  line.expect(fromHex("0101 03 1030 03 00 03 1030 20 00 00 AE 17")).answer(fromHex(kDriveDone));
  clock.schedule(400, [&] { stop(); });
  clock.schedule(500,
                 [&] { line.arrive(fromHex("0101 07 50 03 00 04 C5 17") + fromHex(kPowerDone)); });
  shared().zbinSendMsg(fromHex(kDrive));
}

TEST_F(ZimoSendAheadTest, IsRepeatedWhileTheStationIsBusy) {
  expectStop(0).answer(fromHex(kPowerBusy));
  expectStop(1).answer(fromHex(kPowerDone));
  stop();
  EXPECT_EQ(timeOf([&] { shared().zbinSettle(); }), 10 + 100 + 10);
}

TEST_F(ZimoSendAheadTest, BeepsAfterFiveFailedTries) {
  for (int seq = 0; seq < 5; ++seq) expectStop(seq).answer(fromHex(kPowerBusy));
  stop();
  shared().zbinSettle();
  EXPECT_EQ(prompt.beeps, 1);
  shared().zbinSettle();
  EXPECT_EQ(prompt.beeps, 1);
}

TEST_F(ZimoSendAheadTest, AnOrderThatWasRevokedIsNotRepeated) {
  line.expect(fromHex("0101 00 1030 02 02 8C 17")).answer(fromHex(kPowerBusy), 50);
  expectStop(1).answer(fromHex(kPowerBusy), 50);
  expectStop(2).answer(fromHex(kPowerDone), 50);
  go();
  clock.schedule(20, [&] { stop(); });
  shared().zbinSettle();
  EXPECT_EQ(prompt.beeps, 0);
  EXPECT_EQ(shared().zbinAhead, fromHex(kStop));
}

TEST_F(ZimoSendAheadTest, AnAnswerThatWasDroppedWithTheInputIsNotAwaited) {
  expectStop(0).answer(fromHex(kPowerDone), 50);
  stop();
  clock.advance(100);
  link.protocol().dropInput();
  expectStop(1).answer(fromHex(kPowerDone), 50);
  EXPECT_EQ(timeOf([&] { shared().zbinSettle(); }), 50);
}

TEST_F(ZimoSendAheadTest, AClosedPortSettlesEverything) {
  expectStop(0);
  stop();
  line.close();
  EXPECT_EQ(timeOf([&] { shared().zbinSettle(); }), 0);
  stop();
  line.open({});
  EXPECT_EQ(timeOf([&] { shared().zbinSettle(); }), 0);
  EXPECT_EQ(prompt.beeps, 0);
}

TEST_F(ZimoSendAheadTest, ANewSessionRepeatsNothingOfTheOneBefore) {
  expectStop(0);
  stop();
  line.close();
  line.expect(fromHex("0101 00 1030 00 3E 17")).answer(fromHex("0101 07 50 00 02 00 C5 17"));
  line.expect(fromHex("0101 1021 1030 11 04 1021 B8 17"))
      .answer(fromHex("0101 08 50 11 02 00 C5 17"));
  EXPECT_EQ(link.initComm(true, false, false), "");
  shared().zbinSettle();
  EXPECT_EQ(line.writes.size(), 3);
}

TEST_F(ZimoSendAheadTest, TheAnswerToAQuestionForTheTrackConfirmsNoStop) {
  line.expect(fromHex("0101 00 1030 02 03 D2 17"));
  expectStop(1);
  shared().zbinSend(fromHex("02 03"), false);
  orderStop();
  line.arrive(fromHex("0101 08 50 02 00 03 80 C5 17"));
  EXPECT_EQ(order().outcome(), LayoutOrder::Outcome::Awaited);
  line.arrive(fromHex(kPowerDone));
  EXPECT_EQ(order().outcome(), LayoutOrder::Outcome::Confirmed);
}

TEST_F(ZimoSendAheadTest, ALostAnswerOfLongAgoKeepsNoStopFromBeingConfirmed) {
  line.expect(fromHex("0101 00 1030 02 02 8C 17"));
  expectStop(1);
  shared().zbinSend(fromHex(kGo), false);
  clock.advance(31'000);
  orderStop();
  line.arrive(fromHex(kPowerDone));
  EXPECT_EQ(order().outcome(), LayoutOrder::Outcome::Confirmed);
}

TEST_F(ZimoSendAheadTest, AStopThatWasHeardAsConfirmedAndIsNotIsToldAfterAll) {
  for (int seq = 0; seq < 5; ++seq) expectStop(seq).answer(fromHex(kPowerBusy));
  orderStop();
  // The station's own.
  line.arrive(fromHex(kPowerDone));
  shared().zbinReceive();
  EXPECT_EQ(order().outcome(), LayoutOrder::Outcome::Confirmed);
  shared().zbinSettle();
  EXPECT_EQ(order().outcome(), LayoutOrder::Outcome::Silent);
  EXPECT_EQ(failures, 1);
}

TEST_F(ZimoSendAheadTest, SilenceIsToldApartFromNonsense) {
  shared().zbinReceive();
  EXPECT_TRUE(shared().zbinSilent);
  line.arrive(fromHex("AA BB CC DD EE"));
  shared().zbinReceive();
  EXPECT_FALSE(shared().zbinSilent);
}

}  // namespace
}  // namespace lokari
