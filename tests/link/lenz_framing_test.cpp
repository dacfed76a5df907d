// How messages reach a Lenz interface and how its replies are taken.
#include "link/lenz_framing.h"

#include "lenz_fixture.h"
#include "link/lenz.h"
#include "link/link_error.h"

namespace lokari {
namespace {

const char* const kVersion = "21 21 00";

class LenzFramingTest : public test::LenzFixture {
 protected:
  explicit LenzFramingTest(StationKind kind = StationKind::Li100V3) : LenzFixture(kind) {}

  LenzFraming& framing() { return dynamic_cast<LenzProtocol&>(link.protocol()).framing(); }
  Millis sentAt() const { return line.writes.last().at; }
};

class UsbFramingTest : public LenzFramingTest {
 protected:
  UsbFramingTest() : LenzFramingTest(StationKind::LiUsb) {}
};

class PlainFramingTest : public LenzFramingTest, public ::testing::WithParamInterface<StationKind> {
 protected:
  PlainFramingTest() : LenzFramingTest(GetParam()) {}
};

INSTANTIATE_TEST_SUITE_P(Both, PlainFramingTest,
                         ::testing::Values(StationKind::Li100, StationKind::Li100V3));

TEST_P(PlainFramingTest, AMessageGoesOutBehindAPulseOfTheRequestLine) {
  expect(kVersion);
  framing().lnzSend(fromHex(kVersion));
  EXPECT_EQ(line.rtsChanges, (QList<bool>{false, true}));
  EXPECT_EQ(sentAt(), 2050);
}

TEST_P(PlainFramingTest, AStationThatHoldsItsLineIsWaitedFor) {
  line.cts = false;
  clock.schedule(700, [&] { line.cts = true; });
  expect(kVersion);
  framing().lnzSend(fromHex(kVersion));
  EXPECT_EQ(sentAt(), 2700);
}

TEST_P(PlainFramingTest, AfterTheTimeoutTheMessageGoesOutAllTheSame) {
  line.cts = false;
  expect(kVersion);
  framing().lnzSend(fromHex(kVersion));
  // From 2 s on while fewer than 2 whole seconds have passed.
  EXPECT_EQ(sentAt(), 4000);
}

TEST_P(PlainFramingTest, ACancelEndsTheWaitForTheLineAndTheMessageStillGoesOut) {
  line.cts = false;
  cancelAt(300);
  expect(kVersion);
  framing().lnzSend(fromHex(kVersion));
  EXPECT_EQ(sentAt(), 2300);
}

TEST_P(PlainFramingTest, AHaltBehindALosThatStillAsksForTheLineGoesOutAloneAndTheLosNotAtAll) {
  line.cts = false;
  clock.schedule(300, [this] { framing().lnzSend(fromHex("21 80 A1")); });
  clock.schedule(700, [this] { line.cts = true; });
  expect("21 80 A1");
  framing().lnzSend(fromHex("21 81 A0"));
  EXPECT_EQ(sentAt(), 2700);
  EXPECT_EQ(line.sent(), fromHex("21 80 A1"));
}

TEST_P(PlainFramingTest, AMessageToAVehicleIsNotReplacedByAHalt) {
  line.cts = false;
  clock.schedule(300, [this] { framing().lnzSend(fromHex("21 80 A1")); });
  clock.schedule(700, [this] { line.cts = true; });
  expect("21 80 A1");
  expect("E4 13 00 03 80 74");
  framing().lnzSend(fromHex("E4 13 00 03 80 74"));
  EXPECT_TRUE(line.played());
}

TEST_P(PlainFramingTest, OfTwoOrdersBehindAMessageThatAsksForTheLineOnlyTheNewerOneGoesOut) {
  line.cts = false;
  const auto order = [this](const char* text) { framing().lnzSend(fromHex(text), [] {}); };
  clock.schedule(300, [&] { order("21 81 A0"); });
  clock.schedule(400, [&] { order("80 80"); });
  clock.schedule(700, [this] { line.cts = true; });
  expect("80 80");
  expect("E4 13 00 03 80 74");
  framing().lnzSend(fromHex("E4 13 00 03 80 74"));
  EXPECT_TRUE(line.played());
}

TEST_P(PlainFramingTest, RepliesAreTakenAsTheyAre) {
  line.arrive(fromHex("FF FE 61 01 60"));
  EXPECT_EQ(framing().takeReply(), fromHex("FF FE 61 01 60"));
}

TEST_F(UsbFramingTest, AMessageGoesOutAtOnceBehindTwoBytes) {
  line.cts = false;
  expect("FF FE 21 21 00");
  framing().lnzSend(fromHex(kVersion));
  EXPECT_TRUE(line.rtsChanges.isEmpty());
  EXPECT_EQ(sentAt(), 2000);
}

TEST_F(UsbFramingTest, AReplyOfMoreThanTwoBytesLosesTheFirstTwo) {
  EXPECT_EQ(framing().unwrapped(fromHex("FF FE 63 14 01 05 73")), fromHex("63 14 01 05 73"));
  EXPECT_EQ(framing().unwrapped(fromHex("AA BB 61")), fromHex("61"));
  EXPECT_EQ(framing().unwrapped(fromHex("FF FE")), fromHex("FF FE"));
  EXPECT_EQ(framing().unwrapped({}), "");
}

TEST_F(UsbFramingTest, ACutReplyIsWaitedFor) {
  line.arrive(fromHex("FF FE 61"));
  clock.schedule(900, [&] { line.arrive(fromHex("13 72")); });
  EXPECT_EQ(framing().takeReply(), fromHex("61 13 72"));
  EXPECT_EQ(clock.now(), 2900);
}

TEST_F(LenzFramingTest, AReplyThatStaysCutIsGivenAfterTheTimeout) {
  line.arrive(fromHex("63 14 01"));
  EXPECT_EQ(framing().takeReply(), fromHex("63 14 01"));
  EXPECT_EQ(clock.now(), 5000);
}

TEST_F(LenzFramingTest, NothingWaitingIsNoReply) {
  EXPECT_EQ(framing().takeReply(), "");
  EXPECT_EQ(clock.now(), 2000);
}

TEST_F(LenzFramingTest, ThreeBytesAreEnoughToTellThatOperationIsResumed) {
  expect("21 81 A0", "61 01 60");
  EXPECT_TRUE(framing().resume(6));
  EXPECT_EQ(clock.now(), 5000) << "more is awaited all the same";
  expect("21 81 A0", "61 01");
  EXPECT_FALSE(framing().resume(6));
}

TEST_F(LenzFramingTest, AVanishedPortShows) {
  line.vanish();
  EXPECT_THROW(framing().lnzSend(fromHex(kVersion)), LinkError);
}

TEST(LenzInterface, EachKindHasItsOwn) {
  EXPECT_EQ(lenzInterface(StationKind::Li100).want, 15);
  EXPECT_EQ(lenzInterface(StationKind::Li100).farewellWant, 15);
  for (const StationKind kind : {StationKind::Li100V3, StationKind::LiUsb}) {
    EXPECT_EQ(lenzInterface(kind).want, 6);
    EXPECT_EQ(lenzInterface(kind).farewellWant, 9);
    EXPECT_TRUE(lenzInterface(kind).confirmsMainWrite);
  }
}

}  // namespace
}  // namespace lokari
