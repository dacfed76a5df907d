#include "sim/zimo_binary_station.h"

#include "station_fixture.h"

namespace lokari::sim {
namespace {

QByteArray fromHex(const char* text) {
  return QByteArray::fromHex(text);
}

const char* const kLogOn = "0101 1021 1030 11 04 1021 B8 17";
const char* const kRead29 = "0101 02 1030 13 80 00 00 1D AC 17";

class Mx1BinStationTest : public StationFixture {
 protected:
  explicit Mx1BinStationTest(QStringView name = u"MX1BIN") : StationFixture(name) {}

  QByteArray reply(const char* frame) { return replyTo(fromHex(frame)); }
  const ZimoBinaryStation& zimo() { return dynamic_cast<ZimoBinaryStation&>(*station); }
};

class Mx1UlfStationTest : public Mx1BinStationTest {
 protected:
  Mx1UlfStationTest() : Mx1BinStationTest(u"MX1ULF") {}
};

TEST_F(Mx1BinStationTest, AnswersTheGreetingAndTheFarewell) {
  EXPECT_EQ(reply("0101 00 1030 00 3E 17"), fromHex("0101 00 50 00 00 00 11 17"));
  EXPECT_EQ(reply(kLogOn), fromHex("0101 1021 50 11 1021 00 F9 17"));
  EXPECT_TRUE(zimo().loggedOn());
  EXPECT_EQ(reply("0101 02 1030 11 04 00 A8 17"), fromHex("0101 02 50 11 02 00 E2 17"));
  EXPECT_FALSE(zimo().loggedOn());
}

TEST_F(Mx1BinStationTest, AnswersAReadWithAConfirmationAndAResult) {
  EXPECT_EQ(reply(kRead29), fromHex("0101 00 50 13 02 00 2E 17"
                                    "0101 1021 1030 13 02 80 00 00 1D 0E 39 17"));
  ASSERT_EQ(answers.size(), 2);
  EXPECT_EQ(answers[1].at - answers[0].at, 230);
  EXPECT_EQ(zimo().unacknowledged(), 1);
  EXPECT_EQ(reply("0101 03 50 13 1021 00 35 17"), "");
  EXPECT_EQ(zimo().unacknowledged(), 0);
}

TEST_F(Mx1BinStationTest, WritesOnTheProgrammingTrack) {
  reply("0101 02 1030 13 80 00 00 1D 06 D1 17");
  EXPECT_EQ(layout.onProgrammingTrack()->stored(29), 6);
}

TEST_F(Mx1BinStationTest, WritesOnTheMainTrackWithAConfirmationOnly) {
  EXPECT_EQ(reply("0101 02 1030 13 83 E8 00 1D 06 CA 17"), fromHex("0101 00 50 13 02 00 2E 17"));
  EXPECT_EQ(layout.onMainTrack(1000), nullptr);  // CV 29 = 6 switches to the short address
}

TEST_F(Mx1BinStationTest, AFailureIsAShortResult) {
  faults.add({.kind = FaultKind::NoDecoder});
  EXPECT_EQ(reply(kRead29), fromHex("0101 00 50 13 02 00 2E 17"
                                    "0101 1021 1030 13 02 80 00 02 8B 17"));
}

TEST_F(Mx1BinStationTest, IsBusyWhileTheTrackIs) {
  station->receive(fromHex(kRead29));
  station->receive(fromHex("0101 03 1030 13 80 00 00 1D 91 17"));
  clock.advance(1000);
  ASSERT_EQ(answers.size(), 3);
  EXPECT_EQ(answers[2].data, fromHex("0101 02 50 13 03 04 08 17"));
}

TEST_F(Mx1BinStationTest, RefusesACommandThatItDoesNotKnow) {
  EXPECT_EQ(reply("0101 05 1030 1037 15 17"), fromHex("0101 00 50 1037 05 03 3C 17"));
}

TEST_F(Mx1BinStationTest, DropsAFrameWithAWrongChecksum) {
  EXPECT_EQ(reply("0101 02 1030 13 80 00 00 1D AD 17"), "");
  EXPECT_NE(reply(kRead29), "");
}

TEST_F(Mx1BinStationTest, FindsAFrameBehindNoiseAndBehindABrokenOne) {
  EXPECT_NE(replyTo(fromHex("AA 17 01 BB 01") + fromHex(kRead29)), "");
  EXPECT_NE(replyTo(fromHex("0101 02 1030 13 80") + fromHex(kRead29)), "");
  EXPECT_NE(replyTo(fromHex("0101") + QByteArray(1000, '\x55') + fromHex(kRead29)), "");
}

TEST_F(Mx1BinStationTest, TakesAFrameByteByByte) {
  for (const char byte : fromHex(kRead29)) station->receive(QByteArray(1, byte));
  clock.advance(1000);
  EXPECT_EQ(answers.size(), 2);
}

TEST_F(Mx1UlfStationTest, AnswersWithTheLongHeader) {
  EXPECT_EQ(reply("0101 00 1030 00 3E 17").left(8), fromHex("0101 00 D0 00 00 00 00"));
  EXPECT_EQ(reply("0101 00 1030 00 3E 17").size(), 12);
}

}  // namespace
}  // namespace lokari::sim
