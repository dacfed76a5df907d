// Opening and closing sessions with the Lenz interfaces.
#include "lenz_fixture.h"
#include "link/link_error.h"

namespace lokari {
namespace {

struct Row {
  StationKind kind;
  int baudrate;
};

class LenzSessionKinds : public test::LenzFixture, public ::testing::WithParamInterface<Row> {
 protected:
  LenzSessionKinds() : LenzFixture(GetParam().kind) {}
};

INSTANTIATE_TEST_SUITE_P(All, LenzSessionKinds,
                         ::testing::Values(Row{StationKind::Li100, 9600},
                                           Row{StationKind::Li100V3, 9600},
                                           Row{StationKind::LiUsb, 57600}));

TEST_P(LenzSessionKinds, OpenWithHandshakingAndSayNothing) {
  EXPECT_EQ(line.opened.baudrate, GetParam().baudrate);
  EXPECT_EQ(line.opened.handshaking, Handshaking::RequestToSend);
  EXPECT_EQ(line.sent(), "");
}

TEST_P(LenzSessionKinds, AfterAMainTrackWriteThereIsNoFarewell) {
  link.commJob = CommJob::WriteMain;
  link.endcomm(true, false);
  EXPECT_EQ(line.sent(), "");
  EXPECT_FALSE(line.isOpen());
}

TEST_P(LenzSessionKinds, AnAddressHasNoIndex) {
  EXPECT_EQ(link.getAddrIndex(1000), 1000);
  EXPECT_EQ(line.sent(), "");
}

class Li100Session : public test::LenzFixture {
 protected:
  Li100Session() : LenzFixture(StationKind::Li100) {}
};

class Li100V3Session : public test::Li100V3Fixture {};

class LiUsbSession : public test::LenzFixture {
 protected:
  LiUsbSession() : LenzFixture(StationKind::LiUsb) {}
};

TEST_F(Li100Session, TheFarewellWaitsForFifteenBytes) {
  expect("21 81 A0", "61 01 60 61 01 60 61 01 60 61 01 60 61 01 60");
  // The first second of every farewell, the pulse, the answer.
  EXPECT_EQ(timeOf([&] { link.endcomm(true, true); }), 1000 + 50 + 10);
  EXPECT_FALSE(line.isOpen());
}

TEST_F(Li100V3Session, TheFarewellWaitsForNineBytes) {
  expect(kResume, "01 04 05 61 01 60 61 01 60");
  EXPECT_EQ(timeOf([&] { link.endcomm(true, true); }), 1000 + 50 + 10);
}

TEST_F(Li100V3Session, FewerBytesThatTellTheResumptionAreEnoughInTheEnd) {
  expect(kResume, kResumed);
  link.endcomm(true, true);
  EXPECT_EQ(line.writes.size(), 1);
}

TEST_F(Li100V3Session, TheFarewellFollowsEveryOtherJobToo) {
  link.commJob = CommJob::TestComm;
  expect(kResume, kResumed);
  link.endcomm(false, false);
}

TEST_F(Li100V3Session, AnyOtherReplyIsAskedAgainASecondLater) {
  expect(kResume, "61 02 63 61 02 63 61 02 63");
  expect(kResume, kResumed);
  link.endcomm(true, true);
  ASSERT_EQ(line.writes.size(), 2);
  EXPECT_EQ(line.writes[1].at - line.writes[0].at, 10 + 1000 + 50);
}

TEST_F(Li100V3Session, WithinAPassWhatIsWaitingIsKept) {
  expect(kResume, "61 01", 10);
  expect(kResume, "60", 10);
  link.endcomm(true, true);
  EXPECT_EQ(line.writes.size(), 2);
}

TEST_F(Li100V3Session, ThePassBeginsWithDroppedInput) {
  line.arrive(fromHex("61 01 60 61 01 60 61 01 60"));
  expect(kResume, "61 82 E3");
  expect(kResume, kResumed);
  link.endcomm(true, true);
  EXPECT_EQ(line.writes.size(), 2);
}

TEST_F(Li100V3Session, TheSecondPassDropsWhatTheFirstLeft) {
  // Two bytes that never grow to three within a pass.
  expect(kResume, "61 01");
  expectTimes(4, kResume);
  expect(kResume, "60");
  expect(kResume, kResumed);
  link.endcomm(true, true);
  EXPECT_EQ(line.writes.size(), 7);
}

TEST_F(Li100V3Session, ASilentStationIsAskedTwiceFiveTimesAndTheSessionCloses) {
  expectTimes(10, kResume);
  // Each try waits until more than 2 whole seconds have passed, and a second more.
  EXPECT_EQ(timeOf([&] { link.endcomm(true, true); }), 1000 + 10 * (3000 + 1000));
  EXPECT_FALSE(line.isOpen());
  EXPECT_EQ(link.commUseCount, 0);
}

TEST_F(Li100V3Session, AfterACancelTheFarewellDoesNotWaitForTheReplyButTakesIt) {
  link.cancelRequested = true;
  expect(kResume, kResumed);
  expect(kResume);
  link.endcomm(true, true);
  EXPECT_EQ(line.writes.size(), 2);
  EXPECT_FALSE(line.isOpen());
}

TEST_F(Li100V3Session, AVanishedPortStillClosesTheSession) {
  expect(kResume).then([&] { line.vanish(); }, 100);
  EXPECT_NO_THROW(link.endcomm(true, true));
  EXPECT_EQ(link.commUseCount, 0);
}

TEST_F(LiUsbSession, TheFarewellGoesBehindTwoBytesAndLosesTwoOfTheReply) {
  expect("FF FE 21 81 A0", "FF FE 01 04 05 FF FE 61 01 60");
  EXPECT_EQ(timeOf([&] { link.endcomm(true, true); }), 1000 + 10);
}

TEST_F(LiUsbSession, ThreeBytesThatBeginWithTheResumptionAreNotEnough) {
  expect("FF FE 21 81 A0", "61 01 60");
  expect("FF FE 21 81 A0", "FF FE 61 01 60");
  link.endcomm(true, true);
  EXPECT_EQ(line.writes.size(), 2);
}

TEST_F(Li100V3Session, AFarewellToASilentStationIsShownAndHurriedByASecondAbbruch) {
  expect(kResume);
  bool shown = false;
  clock.schedule(2500, [&] {
    shown = view.farewell;
    link.hurryFarewell();
  });
  const Millis took = timeOf([&] { link.endcomm(true, true); });
  EXPECT_TRUE(shown);
  EXPECT_FALSE(view.farewell);
  EXPECT_LT(took, 2600);
  EXPECT_FALSE(line.isOpen());
}

TEST_F(Li100V3Session, AFarewellHurriedFromItsStartStillSendsItsMessageOnce) {
  expect(kResume);
  clock.schedule(10, [&] { link.hurryFarewell(); });
  EXPECT_LT(timeOf([&] { link.endcomm(true, true); }), 500);
  EXPECT_EQ(line.sent(), fromHex(kResume));
}

}  // namespace
}  // namespace lokari
