#include "sim/lenz_station.h"

#include "station_fixture.h"

namespace lokari::sim {
namespace {

class LenzStationFixture : public StationFixture {
 protected:
  explicit LenzStationFixture(QStringView name) : StationFixture(name) {}

  static QByteArray fromHex(const char* text) { return QByteArray::fromHex(text); }
  QByteArray reply(const char* message) { return replyTo(fromHex(message)); }
  const LenzStation& lenz() { return dynamic_cast<LenzStation&>(*station); }
};

class Li100StationTest : public LenzStationFixture {
 protected:
  Li100StationTest() : LenzStationFixture(u"LI100") {}
};

class Li100V3StationTest : public LenzStationFixture {
 protected:
  Li100V3StationTest() : LenzStationFixture(u"LI100V3") {}
};

class LiUsbStationTest : public LenzStationFixture {
 protected:
  LiUsbStationTest() : LenzStationFixture(u"LIUSB") {}
};

TEST_F(Li100StationTest, SaysEverythingFiveTimes) {
  EXPECT_EQ(reply("22 15 1D 2A"), fromHex("61 02 63").repeated(5));
  EXPECT_EQ(reply("21 10 31"), fromHex("63 14 1D 0E 64").repeated(5));
  EXPECT_EQ(reply("21 81 A0"), fromHex("61 01 60").repeated(5));
  EXPECT_EQ(reply("23 16 1D 06 2E"), fromHex("01 04 05").repeated(5));
}

TEST_F(Li100V3StationTest, AReadIsConfirmedAndGivesItsResultWhenAsked) {
  EXPECT_EQ(reply("22 15 1D 2A"), fromHex("01 04 05 61 02 63"));
  EXPECT_TRUE(lenz().inServiceMode());
  EXPECT_EQ(reply("21 10 31"), fromHex("63 14 1D 0E 64"));
  EXPECT_EQ(reply("21 81 A0"), fromHex("01 04 05 61 01 60 61 01 60"));
  EXPECT_FALSE(lenz().inServiceMode());
}

TEST_F(Li100V3StationTest, WhileTheTrackWorksThereIsNoResult) {
  station->receive(fromHex("22 15 1D 2A"));
  clock.advance(50);
  answers.clear();
  station->receive(fromHex("21 10 31"));
  clock.advance(50);
  ASSERT_EQ(answers.size(), 1);
  EXPECT_EQ(answers[0].data, fromHex("61 02 63"));
}

TEST_F(Li100V3StationTest, AWriteIsConfirmedTwice) {
  EXPECT_EQ(reply("23 16 1D 06 2E"), fromHex("01 04 05 01 04 05"));
  EXPECT_EQ(layout.onProgrammingTrack()->stored(29), 6);
  EXPECT_EQ(reply("21 10 31"), fromHex("63 14 1D 06 6C"));
}

TEST_F(Li100V3StationTest, ABusyTrackAnnouncesTheServiceModeAndDoesNotWrite) {
  faults.add({.kind = FaultKind::Busy});
  EXPECT_EQ(reply("23 16 1D 06 2E"), fromHex("01 04 05 61 02 63"));
  EXPECT_EQ(layout.onProgrammingTrack()->stored(29), 14);
}

TEST_F(Li100V3StationTest, FailuresAreReports) {
  faults.add({.kind = FaultKind::ShortCircuit});
  reply("22 15 1D 2A");
  EXPECT_EQ(reply("21 10 31"), fromHex("61 12 73"));
  faults.add({.kind = FaultKind::NoDecoder});
  reply("22 15 1D 2A");
  EXPECT_EQ(reply("21 10 31"), fromHex("61 13 72"));
  faults.add({.kind = FaultKind::NoAck});
  reply("22 15 1D 2A");
  EXPECT_EQ(reply("21 10 31"), fromHex("61 13 72"));
}

TEST_F(Li100V3StationTest, WritesOnTheMainTrackWithOneConfirmation) {
  EXPECT_EQ(reply("E6 30 C3 E8 EC 04 63 76"), fromHex("01 04 05"));
  EXPECT_EQ(layout.onMainTrack(1000)->stored(5), 99);
  EXPECT_FALSE(lenz().inServiceMode());
}

TEST_F(Li100V3StationTest, RefusesAWrongCheckByteAndAnUnknownCommand) {
  EXPECT_EQ(reply("22 15 1D 2B"), fromHex("61 80 E1"));
  EXPECT_EQ(reply("21 7F 5E"), fromHex("61 82 E3"));
  EXPECT_EQ(reply("21 10 31"), fromHex("61 82 E3")) << "there is no result in normal operation";
}

TEST_F(LiUsbStationTest, PutsTwoBytesAheadOfEachMessage) {
  EXPECT_EQ(reply("FF FE 22 15 1D 2A"), fromHex("FF FE 01 04 05 FF FE 61 02 63"));
  EXPECT_EQ(reply("FF FE 21 10 31"), fromHex("FF FE 63 14 1D 0E 64"));
  EXPECT_EQ(reply("21 10 31"), "");
}

}  // namespace
}  // namespace lokari::sim
