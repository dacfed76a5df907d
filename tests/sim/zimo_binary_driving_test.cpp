// The simulated MX1 with the binary protocol, driving and switching.
#include "sim/zimo_binary_frames.h"
#include "station_fixture.h"

namespace lokari::sim {
namespace {

class ZimoDrivingTest : public StationFixture {
 protected:
  ZimoDrivingTest() : StationFixture(u"MX1BIN") {}

  /// Command byte and data of the answer to a payload.
  QByteArray tell(const char* payload) {
    // What the station reads has the form of its own answers, but for the header.
    const QByteArray body = QByteArray("\x05\x10", 2) + QByteArray::fromHex(payload);
    QByteArray framed("\x01\x01");
    for (const char byte : body + QByteArray(1, static_cast<char>(zimoChecksum(body)))) {
      const bool special = byte == 0x01 || byte == 0x10 || byte == 0x17;
      if (special) framed += '\x10';
      framed += static_cast<char>(special ? byte ^ 0x20 : byte);
    }
    const std::deque<ZimoFrame> frames = ZimoFrameReader().feed(replyTo(framed + '\x17'));
    if (frames.size() != 1) return "not one frame";
    QByteArray answer = frames.front().payload;
    return answer.remove(1, 1).toHex(' ').toUpper();  // the sequence byte of the request
  }
};

TEST_F(ZimoDrivingTest, TellsAVehicleAtRest) {
  EXPECT_EQ(tell("08 00 03"), "08 00 00 03 00 0C 00 00");
  EXPECT_EQ(tell("08 00 7F"), "08 00 00 7F 00 0C 00 00");
}

TEST_F(ZimoDrivingTest, ALongAddressIsMarkedAndTakenWithAndWithoutMarks) {
  EXPECT_EQ(tell("08 03 E8"), "08 00 C3 E8 00 0C 00 00");
  EXPECT_EQ(tell("08 00 80"), "08 00 C0 80 00 0C 00 00");
  EXPECT_EQ(tell("03 83 E8 2A 0C 01 00"), "03 00");
  EXPECT_EQ(layout.drive(1000).speed, 42);
  EXPECT_EQ(tell("03 03 E8 2B 0C 01 00"), "03 00");
  EXPECT_EQ(layout.drive(1000).speed, 43);
}

TEST_F(ZimoDrivingTest, DrivesAVehicle) {
  EXPECT_EQ(tell("03 00 03 07 B8 81 03"), "03 00");
  EXPECT_EQ(
      layout.drive(3),
      (DriveState{.speed = 7, .steps = 28, .backward = true, .manual = true, .functions = 0x703}));
  EXPECT_EQ(tell("08 00 03"), "08 00 00 03 07 B8 81 03");
}

TEST_F(ZimoDrivingTest, AShortDrivingCommandLeavesF9ToF12) {
  tell("03 00 03 00 0C 00 03");
  tell("03 00 03 10 0C 01");
  EXPECT_EQ(layout.drive(3).functions, 0x602U);
}

TEST_F(ZimoDrivingTest, StopsAndGoes) {
  EXPECT_EQ(tell("02 00"), "02 00");
  EXPECT_FALSE(layout.trackPower());
  EXPECT_EQ(tell("02 02"), "02 00");
  EXPECT_TRUE(layout.trackPower());
}

TEST_F(ZimoDrivingTest, TellsAndSwitchesAFunctionUnit) {
  EXPECT_EQ(tell("09 01 2C"), "09 00 01 2C 00 55");
  EXPECT_EQ(tell("07 01 2C 0F"), "07 00");
  EXPECT_TRUE(layout.output(1200));
  EXPECT_EQ(tell("09 01 2C"), "09 00 01 2C 00 95");
  EXPECT_EQ(tell("07 01 2C 07"), "07 03");
}

TEST_F(ZimoDrivingTest, ABusyStationSaysSoAndDoesNothing) {
  for (const char* payload :
       {"02 00", "03 00 03 07 B8 81 03", "07 00 05 09", "08 00 03", "09 00 05"}) {
    faults.add({.kind = FaultKind::Busy});
    EXPECT_EQ(tell(payload), QByteArray(payload).left(2) + " 04") << payload;
  }
  EXPECT_TRUE(layout.trackPower());
  EXPECT_EQ(layout.drive(3).speed, 0);
  EXPECT_FALSE(layout.output(17));
}

TEST_F(ZimoDrivingTest, RefusesALengthThatItDoesNotKnow) {
  for (const char* payload : {"02 05", "03 00 03 07 0C", "03 00 03 07 0C 00 00 00", "07 00 05",
                              "08 00", "09 00", "09 00 05 00"}) {
    EXPECT_EQ(tell(payload), QByteArray(payload).left(2) + " 03") << payload;
  }
}

}  // namespace
}  // namespace lokari::sim
