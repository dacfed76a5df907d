// Driving and switching on the simulated Lenz interfaces.
#include "sim/lenz_station.h"
#include "station_fixture.h"

namespace lokari::sim {
namespace {

class LenzDrivingFixture : public StationFixture {
 protected:
  explicit LenzDrivingFixture(QStringView name) : StationFixture(name) {}

  static QByteArray fromHex(const char* text) { return QByteArray::fromHex(text); }
  QByteArray reply(const char* message) { return replyTo(fromHex(message)); }
};

class FirstLenzDriving : public LenzDrivingFixture {
 protected:
  FirstLenzDriving() : LenzDrivingFixture(u"LI100") {}
};

class LaterLenzDriving : public LenzDrivingFixture {
 protected:
  LaterLenzDriving() : LenzDrivingFixture(u"LI100V3") {}
};

class UsbLenzDriving : public LenzDrivingFixture {
 protected:
  UsbLenzDriving() : LenzDrivingFixture(u"LIUSB") {}
};

TEST_F(FirstLenzDriving, DrivesByOneByteOfAddressIn28Steps) {
  EXPECT_EQ(reply("B3 03 63 0A D9"), fromHex("01 04 05").repeated(5));
  EXPECT_EQ(layout.drive(3), (DriveState{.speed = 3, .steps = 28, .functions = 0b1'0101}));
  EXPECT_EQ(reply("A2 03 00 A1"), fromHex("84 03 63 0A 00 EE").repeated(5));
  reply("B3 03 12 00 A2");
  EXPECT_EQ(layout.drive(3), (DriveState{.speed = 2, .steps = 28, .backward = true}));
  EXPECT_EQ(reply("A2 03 00 A1"), fromHex("84 03 12 00 00 95").repeated(5));
}

TEST_F(FirstLenzDriving, TellsAVehicleOfMoreStepsInIts28) {
  layout.setDrive(3, {.speed = 64, .steps = 128});
  EXPECT_EQ(reply("A2 03 00 A1"), fromHex("84 03 58 00 00 DF").repeated(5));
}

TEST_F(FirstLenzDriving, KnowsNothingOfTheLaterMessages) {
  EXPECT_EQ(reply("E3 00 00 03 E0"), fromHex("61 82 E3").repeated(5));
  EXPECT_EQ(reply("E4 13 00 03 A6 52"), fromHex("61 82 E3").repeated(5));
}

TEST_F(LaterLenzDriving, DrivesAndTellsTheState) {
  EXPECT_EQ(reply("E4 13 00 03 A6 52"), fromHex("01 04 05"));
  EXPECT_EQ(layout.drive(3), (DriveState{.speed = 37, .steps = 128}));
  EXPECT_EQ(reply("E3 00 00 03 E0"), fromHex("E4 04 A6 00 00 46"));
  EXPECT_EQ(reply("E4 20 00 03 14 D3"), fromHex("01 04 05"));
  EXPECT_EQ(reply("E4 21 00 03 05 C3"), fromHex("01 04 05"));
  EXPECT_EQ(layout.drive(3).functions, 0b1010'1001U) << "F0 F3 F5 F7";
  EXPECT_EQ(reply("E3 00 00 03 E0"), fromHex("E4 04 A6 14 05 57"));
  EXPECT_EQ(reply("E4 12 00 03 92 67"), fromHex("01 04 05"));
  EXPECT_EQ(layout.drive(3).speed, 2);
  EXPECT_EQ(layout.drive(3).steps, 28);
}

TEST_F(LaterLenzDriving, ALongAddressIsAnotherVehicle) {
  reply("E4 13 C3 E8 A6 7A");
  EXPECT_EQ(layout.drive(1000).speed, 37);
  EXPECT_EQ(layout.drive(3), DriveState{});
}

TEST_F(LaterLenzDriving, EveryStepOfEveryModeIsToldAsItIsDriven) {
  const QList<std::pair<int, int>> codes{{14, 0x10}, {27, 0x11}, {28, 0x12}, {128, 0x13}};
  for (const auto& [steps, code] : codes) {
    for (int speed = 0; speed <= std::min(steps, 126); ++speed) {
      const DriveState state{.speed = speed, .steps = steps};
      layout.setDrive(3, state);
      const QByteArray told = reply("E3 00 00 03 E0");
      layout.setDrive(3, {});
      QByteArray order = fromHex("E4 00 00 03");
      order[1] = static_cast<char>(code);
      replyTo(lenzClosed(order + told[2]));
      EXPECT_EQ(layout.drive(3), state) << speed << " of " << steps;
    }
  }
}

TEST_F(LaterLenzDriving, AnEmergencyStopIsSpeedNothing) {
  for (const char* message :
       {"E4 13 00 03 81 75", "E4 12 00 03 81 74", "E4 12 00 03 91 64", "E4 10 00 03 81 76"}) {
    layout.setDrive(3, {.speed = 5});
    reply(message);
    EXPECT_EQ(layout.drive(3).speed, 0) << message;
  }
}

TEST_F(LaterLenzDriving, KnowsNothingOfTheFirstMessagesAndOfUnknownCodes) {
  EXPECT_EQ(reply("A2 03 00 A1"), fromHex("61 82 E3"));
  EXPECT_EQ(reply("E4 14 00 03 00 F3"), fromHex("61 82 E3"));
  EXPECT_EQ(reply("E3 01 00 03 E1"), fromHex("61 82 E3"));
  EXPECT_EQ(reply("42 03 00 41"), fromHex("61 82 E3"));
}

TEST_F(LaterLenzDriving, StopsEveryVehicleUntilNormalOperation) {
  EXPECT_EQ(reply("80 80"), fromHex("01 04 05 81 00 81"));
  EXPECT_TRUE(layout.stopped());
  layout.setTrackPower(false);
  reply("21 81 A0");
  EXPECT_FALSE(layout.stopped());
  EXPECT_TRUE(layout.trackPower());
}

TEST_F(LaterLenzDriving, SwitchesAndTellsFourOutputsInTwoHalves) {
  EXPECT_EQ(reply("52 03 89 D8"), fromHex("01 04 05"));
  EXPECT_TRUE(layout.output(13));
  EXPECT_EQ(reply("42 03 80 C1"), fromHex("42 03 06 47"));
  EXPECT_EQ(reply("42 03 81 C0"), fromHex("42 03 15 54"));
  reply("52 03 8F DE");
  EXPECT_EQ(reply("42 03 81 C0"), fromHex("42 03 19 58"));
  EXPECT_TRUE(layout.output(16));
  reply("52 03 88 D9");
  EXPECT_FALSE(layout.output(13));
  reply("52 03 81 D0");
  EXPECT_FALSE(layout.output(13)) << "the output is let go, not switched";
}

TEST_F(UsbLenzDriving, PutsTwoBytesAheadOfEachMessage) {
  EXPECT_EQ(reply("FF FE E4 13 00 03 A6 52"), fromHex("FF FE 01 04 05"));
  EXPECT_EQ(reply("FF FE E3 00 00 03 E0"), fromHex("FF FE E4 04 A6 00 00 46"));
  EXPECT_EQ(reply("FF FE 80 80"), fromHex("FF FE 01 04 05 FF FE 81 00 81"));
}

}  // namespace
}  // namespace lokari::sim
