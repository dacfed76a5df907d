// Driving and switching on the simulated Intellibox and Tams MC.
#include "station_fixture.h"

namespace lokari::sim {
namespace {

class IbxDriving : public StationFixture, public ::testing::WithParamInterface<const char16_t*> {
 protected:
  IbxDriving() : StationFixture(GetParam()) {}

  /// The answer to a command behind its letter.
  QByteArray reply(const char* command) {
    return replyTo("x" + QByteArray::fromHex(command)).toHex(' ');
  }
};

INSTANTIATE_TEST_SUITE_P(Stations, IbxDriving, ::testing::Values(u"IBX", u"TAMSMC"),
                         [](const auto& name) {
                           return QString::fromUtf16(name.param).toStdString();
                         });

TEST_P(IbxDriving, DrivesAndTellsTheState) {
  EXPECT_EQ(reply("80 03 00 25 70"), "00");
  EXPECT_EQ(layout.drive(3), (DriveState{.speed = 37, .steps = 128, .functions = 1}));
  EXPECT_EQ(reply("84 03 00"), "00 25 30 25");
  EXPECT_EQ(reply("88 03 00 41"), "00");
  EXPECT_EQ(layout.drive(3).functions, 0b1000'0011U) << "F0 F1 F7";
  EXPECT_EQ(reply("8C 03 00"), "00 41");
  EXPECT_EQ(reply("84 03 00"), "00 25 31 25");
  EXPECT_EQ(reply("80 03 00 7F 40"), "00");
  EXPECT_EQ(layout.drive(3),
            (DriveState{.speed = 127, .steps = 128, .backward = true, .functions = 0b1000'0010}));
}

TEST_P(IbxDriving, AnAddressHasTwoBytes) {
  reply("80 E8 03 25 60");
  EXPECT_EQ(layout.drive(1000).speed, 37);
  EXPECT_EQ(reply("84 E8 03"), "00 25 20 25");
  EXPECT_EQ(reply("84 E8 00"), "00 00 20 00");
}

TEST_P(IbxDriving, AValueMayBeTheLetterOrACarriageReturn) {
  EXPECT_EQ(reply("80 78 00 0D 60"), "00");
  EXPECT_EQ(layout.drive(0x78).speed, 13);
  EXPECT_EQ(reply("84 78 00"), "00 0d 20 0d");
}

TEST_P(IbxDriving, SwitchesAndTellsTheOutputsOfAGroup) {
  EXPECT_EQ(reply("90 0B C0"), "00");
  EXPECT_TRUE(layout.output(11));
  EXPECT_EQ(reply("95 02"), "00 04");
  EXPECT_EQ(reply("95 01"), "00 00");
  reply("90 10 C0");
  EXPECT_EQ(reply("95 02"), "00 84");
  reply("90 0B 40");
  EXPECT_EQ(reply("95 02"), "00 80");
  reply("90 0B 80");
  EXPECT_FALSE(layout.output(11)) << "let go, not switched";
  reply("90 8D C1");
  EXPECT_TRUE(layout.output(397));
}

TEST_P(IbxDriving, StopsAndGoes) {
  EXPECT_EQ(reply("A5"), "00");
  EXPECT_TRUE(layout.stopped());
  layout.setTrackPower(false);
  EXPECT_EQ(reply("A7"), "00");
  EXPECT_FALSE(layout.stopped());
  EXPECT_TRUE(layout.trackPower());
}

TEST_P(IbxDriving, TakesACommandByteByByteAndTwoAtOnce) {
  for (const char byte : QByteArray::fromHex("788003002560")) {
    station->receive(QByteArray(1, byte));
    clock.advance(10);
  }
  clock.advance(100);
  EXPECT_EQ(layout.drive(3).speed, 37);
  EXPECT_EQ(reply("84 03 00 78 8C 03 00"), "00 25 20 25 00 00");
}

TEST_P(IbxDriving, ASecondsPauseEndsACommandThatIsCut) {
  EXPECT_EQ(reply("80 03 00"), "");
  EXPECT_EQ(reply("A5"), "00");
  EXPECT_EQ(layout.drive(3), DriveState{});
}

TEST_P(IbxDriving, AnUnknownBinaryCommandIsRefused) {
  EXPECT_EQ(reply("9F"), "02");
  EXPECT_EQ(reply("A5"), "00");
}

TEST(TamsDriving, TextAndBinaryCommandsMayFollowEachOther) {
  test::VirtualClock clock;
  Layout layout;
  FaultPlan faults;
  const auto station = stationByName(u"TAMSMC")->make({clock, layout, faults, 20});
  QByteArray answers;
  station->onAnswer = [&](const QByteArray& data) { answers += data; };
  station->receive("xPTRB 1\r" + QByteArray::fromHex("78A5") + "xPTRB 1\r" +
                   QByteArray::fromHex("788403"));
  station->receive(QByteArray::fromHex("00"));
  clock.advance(1000);
  EXPECT_EQ(answers,
            "No ack]\r" + QByteArray(1, '\0') + "No ack]\r" + QByteArray::fromHex("00002000"));
}

}  // namespace
}  // namespace lokari::sim
