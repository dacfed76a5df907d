#include "sim/z21_station.h"

#include "base/bytes.h"
#include "station_fixture.h"

namespace lokari::sim {
namespace {

class Z21StationTest : public StationFixture {
 protected:
  Z21StationTest() : StationFixture(u"Z21IP") {}

  const QByteArray readCv8 = bytes({0x09, 0x00, 0x40, 0x00, 0x23, 0x11, 0x00, 0x07, 0x2B});
  const QByteArray noAck = bytes({0x07, 0x00, 0x40, 0x00, 0x61, 0x13, 0x72});
};

TEST_F(Z21StationTest, TellsItsSerialNumberAndThatThePowerIsOn) {
  EXPECT_EQ(replyTo(bytes({0x04, 0x00, 0x10, 0x00})),
            bytes({0x08, 0x00, 0x10, 0x00, 0x40, 0xE2, 0x01, 0x00}));
  EXPECT_EQ(replyTo(bytes({0x07, 0x00, 0x40, 0x00, 0x21, 0x81, 0xA0})),
            bytes({0x07, 0x00, 0x40, 0x00, 0x61, 0x01, 0x60}));
}

TEST_F(Z21StationTest, KnowsWhetherAProgramIsThere) {
  auto& z21 = dynamic_cast<Z21Station&>(*station);
  EXPECT_FALSE(z21.inUse());
  replyTo(bytes({0x04, 0x00, 0x10, 0x00}));
  EXPECT_TRUE(z21.inUse());
  EXPECT_EQ(replyTo(bytes({0x04, 0x00, 0x30, 0x00})), QByteArray());
  EXPECT_FALSE(z21.inUse());
}

TEST_F(Z21StationTest, ReadsAndWritesOnTheProgrammingTrack) {
  EXPECT_EQ(replyTo(readCv8), bytes({0x0A, 0x00, 0x40, 0x00, 0x64, 0x14, 0x00, 0x07, 0x61, 0x16}));
  EXPECT_EQ(replyTo(bytes({0x0A, 0x00, 0x40, 0x00, 0x24, 0x12, 0x00, 0x02, 0x4D, 0x02})),
            bytes({0x0A, 0x00, 0x40, 0x00, 0x64, 0x14, 0x00, 0x02, 0x4D, 0x3F}));
  EXPECT_EQ(layout.onProgrammingTrack()->stored(3), 77);
}

TEST_F(Z21StationTest, TellsWhatWentWrong) {
  EXPECT_EQ(replyTo(bytes({0x09, 0x00, 0x40, 0x00, 0x23, 0x11, 0x03, 0xFF, 0x2F})), noAck);
  faults.add({.kind = FaultKind::ShortCircuit});
  EXPECT_EQ(replyTo(readCv8), bytes({0x07, 0x00, 0x40, 0x00, 0x61, 0x12, 0x73}));
  faults.add({.kind = FaultKind::NoDecoder});
  EXPECT_EQ(replyTo(readCv8), noAck);
  faults.add({.kind = FaultKind::Busy});
  EXPECT_EQ(replyTo(readCv8), bytes({0x07, 0x00, 0x40, 0x00, 0x61, 0x82, 0xE3}));
}

TEST_F(Z21StationTest, ReadsOnTheMainTrackByAddress) {
  EXPECT_EQ(
      replyTo(bytes({0x0C, 0x00, 0x40, 0x00, 0xE6, 0x30, 0x03, 0xE8, 0xE4, 0x07, 0x00, 0x0F})),
      bytes({0x0A, 0x00, 0x40, 0x00, 0x64, 0x14, 0x00, 0x07, 0x91, 0xE6}));
  EXPECT_EQ(
      replyTo(bytes({0x0C, 0x00, 0x40, 0x00, 0xE6, 0x30, 0x00, 0x63, 0xE4, 0x07, 0x00, 0x56})),
      noAck);
}

TEST_F(Z21StationTest, WritesOnTheMainTrackWithoutAnAnswer) {
  EXPECT_EQ(
      replyTo(bytes({0x0C, 0x00, 0x40, 0x00, 0xE6, 0x30, 0x03, 0xE8, 0xEC, 0x02, 0x4D, 0x9E})),
      QByteArray());
  EXPECT_EQ(layout.onMainTrack(1000)->stored(3), 77);
}

TEST_F(Z21StationTest, DoesNotKnowOtherCommands) {
  EXPECT_EQ(replyTo(bytes({0x06, 0x00, 0x40, 0x00, 0x99, 0x99})),
            bytes({0x07, 0x00, 0x40, 0x00, 0x61, 0x82, 0xE3}));
}

TEST_F(Z21StationTest, IsSilentOnNoise) {
  EXPECT_EQ(replyTo(bytes({0xFF, 0xFF, 0x40, 0x00})), QByteArray());
  EXPECT_EQ(replyTo({}), QByteArray());
}

TEST_F(Z21StationTest, DrivesAVehicleAndTellsItsState) {
  EXPECT_EQ(replyTo(QByteArray::fromHex("0A 00 40 00 E4 12 C3 E8 8E 77")), QByteArray());
  EXPECT_EQ(replyTo(QByteArray::fromHex("0A 00 40 00 E4 F8 C3 E8 5C 01")), QByteArray());
  EXPECT_EQ(layout.drive(1000), (DriveState{.speed = 14, .steps = 28, .functions = 1U << 28}));
  const QByteArray told = replyTo(QByteArray::fromHex("09 00 40 00 E3 F0 C3 E8 20"));
  EXPECT_EQ(told.toHex(' ').toUpper(),
            "15 00 40 00 EF C3 E8 02 8E 00 00 00 80 00 00 00 00 00 00 00 C8");
}

TEST_F(Z21StationTest, StopsTheTrackAndGoesOn) {
  EXPECT_EQ(replyTo(QByteArray::fromHex("06 00 40 00 80 0A")),
            QByteArray::fromHex("07 00 40 00 81 00 81"));
  EXPECT_FALSE(layout.trackPower());
  replyTo(QByteArray::fromHex("07 00 40 00 21 81 29"));
  EXPECT_TRUE(layout.trackPower());
}

TEST_F(Z21StationTest, SwitchesOutputs) {
  EXPECT_EQ(replyTo(QByteArray::fromHex("08 00 40 00 43 00 04 0F")),
            QByteArray::fromHex("09 00 40 00 43 00 04 02 45"));
  EXPECT_EQ(replyTo(QByteArray::fromHex("09 00 40 00 53 00 04 A8 56")),
            QByteArray::fromHex("09 00 40 00 43 00 04 01 46"));
  EXPECT_TRUE(layout.output(5));
  replyTo(QByteArray::fromHex("09 00 40 00 53 00 04 A9 57"));
  EXPECT_FALSE(layout.output(5));
}

}  // namespace
}  // namespace lokari::sim
