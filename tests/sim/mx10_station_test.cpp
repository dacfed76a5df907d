#include "sim/mx10_station.h"

#include "base/bytes.h"
#include "station_fixture.h"

namespace lokari::sim {
namespace {

class Mx10IpStationTest : public StationFixture {
 protected:
  Mx10IpStationTest() : StationFixture(u"MX10IP") {}

  /// What comes within half a second; the next announcement is further off.
  QList<QByteArray> answersTo(const QByteArray& datagram, Millis within = 500) {
    answers.clear();
    station->receive(datagram);
    clock.advance(within);
    QList<QByteArray> all;
    for (const Answer& answer : answers) all.append(answer.data);
    return all;
  }

  Mx10Station& mx10() { return dynamic_cast<Mx10Station&>(*station); }

  void open() {
    answersTo(opening, 600);
    answers.clear();
  }

  const QByteArray opening = bytes({0x00, 0x00, 0x00, 0x00, 0x0A, 0x19, 0x86, 0xC2});
  const QByteArray closing = bytes({0x00, 0x00, 0x00, 0x00, 0x0A, 0x1D, 0x86, 0xC2});
  const QByteArray announcement = bytes({0x08, 0x00, 0x00, 0x00, 0x0A, 0x02, 0xC0, 0xA1, 0x80, 0x01,
                                         0x23, 0x45, 0x00, 0x00, 0x00, 0x00});
  const QByteArray toProgrammingTrack =
      bytes({0x04, 0x00, 0x00, 0x00, 0x06, 0x01, 0x86, 0xC2, 0xC0, 0xA1, 0x01, 0x04});
  const QByteArray toNormal =
      bytes({0x04, 0x00, 0x00, 0x00, 0x06, 0x01, 0x86, 0xC2, 0xC0, 0xA1, 0x01, 0x00});
  /// CV 8 of the vehicle with address 1000.
  const QByteArray readCv8 = bytes({0x08, 0x00, 0x00, 0x00, 0x16, 0x21, 0x86, 0xC2, 0xC0, 0xA1,
                                    0xE8, 0x03, 0x08, 0x00, 0x00, 0x00});
};

TEST_F(Mx10IpStationTest, AnnouncesItselfFromOpeningToClosing) {
  EXPECT_EQ(answersTo(opening, 2'900), QList({announcement, announcement, announcement}));
  EXPECT_TRUE(mx10().isOpen());
  EXPECT_EQ(answersTo(closing, 10'000), QList<QByteArray>());
  EXPECT_FALSE(mx10().isOpen());
}

TEST_F(Mx10IpStationTest, ASecondOpeningDoesNotDoubleTheAnnouncing) {
  open();
  EXPECT_EQ(answersTo(opening, 2'000).size(), 2);
  answersTo(closing, 10);
  EXPECT_EQ(answersTo(opening, 900), QList({announcement}));
}

TEST_F(Mx10IpStationTest, ForgetsAProgramThatIsSilentFor30Seconds) {
  open();
  clock.advance(29'000);
  EXPECT_TRUE(mx10().isOpen());
  station->receive(opening);
  clock.advance(29'000);
  EXPECT_TRUE(mx10().isOpen());
  clock.advance(2'000);
  EXPECT_FALSE(mx10().isOpen());
  EXPECT_EQ(answersTo(readCv8), QList<QByteArray>());
}

TEST_F(Mx10IpStationTest, SwitchesItsProgrammingTrack) {
  open();
  EXPECT_EQ(
      answersTo(toProgrammingTrack, 100),
      QList({bytes({0x04, 0x00, 0x00, 0x00, 0x16, 0x03, 0xC0, 0xA1, 0xC0, 0xA1, 0x01, 0x04})}));
  EXPECT_TRUE(mx10().programmingTrack());
  answersTo(toNormal, 100);
  EXPECT_FALSE(mx10().programmingTrack());
}

TEST_F(Mx10IpStationTest, ReadsTheVehicleOrTheProgrammingTrack) {
  open();
  EXPECT_EQ(answersTo(readCv8, 300),
            QList({bytes({0x09, 0x00, 0x00, 0x00, 0x16, 0x23, 0xC0, 0xA1, 0xC0, 0xA1, 0xE8, 0x03,
                          0x08, 0x00, 0x00, 0x00, 0x91})}));
  open();
  answersTo(toProgrammingTrack, 10);
  EXPECT_EQ(answersTo(readCv8, 300).last().back(), '\x61');
}

TEST_F(Mx10IpStationTest, WritesTheVehicleOrTheProgrammingTrack) {
  open();
  const QByteArray write3 = bytes({0x09, 0x00, 0x00, 0x00, 0x16, 0x25, 0x86, 0xC2, 0xC0, 0xA1, 0xE8,
                                   0x03, 0x03, 0x00, 0x00, 0x00, 0x4D});
  EXPECT_EQ(answersTo(write3, 300),
            QList({bytes({0x09, 0x00, 0x00, 0x00, 0x16, 0x27, 0xC0, 0xA1, 0xC0, 0xA1, 0xE8, 0x03,
                          0x03, 0x00, 0x00, 0x00, 0x4D})}));
  EXPECT_EQ(layout.onMainTrack(1000)->stored(3), 77);
  EXPECT_NE(layout.onProgrammingTrack()->stored(3), 77);
  answersTo(toProgrammingTrack, 10);
  answersTo(write3, 300);
  EXPECT_EQ(layout.onProgrammingTrack()->stored(3), 77);
}

TEST_F(Mx10IpStationTest, IsSilentWhereThereIsNoValue) {
  open();
  faults.add({.kind = FaultKind::NoAck});
  EXPECT_EQ(answersTo(readCv8, 300), QList<QByteArray>());
}

TEST_F(Mx10IpStationTest, DoesNotObeyMessagesToAnotherNode) {
  open();
  answersTo(bytes({0x04, 0x00, 0x00, 0x00, 0x06, 0x01, 0x86, 0xC2, 0xC0, 0xA2, 0x01, 0x04}), 100);
  EXPECT_FALSE(mx10().programmingTrack());
}

TEST_F(Mx10IpStationTest, DrivesAVehicleAndTellsItsState) {
  open();
  EXPECT_EQ(answersTo(QByteArray::fromHex("06 00 00 00 02 09 86 C2 E8 03 20 07 00 00"), 50),
            QList({QByteArray::fromHex("06 00 00 00 02 0B C0 A1 E8 03 20 07 00 00")}));
  answersTo(QByteArray::fromHex("06 00 00 00 02 11 86 C2 E8 03 11 00 01 00"), 50);
  answersTo(QByteArray::fromHex("06 00 00 00 02 15 86 C2 E8 03 01 00 01 00"), 50);
  EXPECT_EQ(
      layout.drive(1000),
      (DriveState{
          .speed = 800, .steps = 1024, .backward = true, .manual = true, .functions = 1U << 17}));
  EXPECT_EQ(answersTo(QByteArray::fromHex("02 00 00 00 02 08 86 C2 E8 03"), 50),
            QList({QByteArray::fromHex("06 00 00 00 02 0B C0 A1 E8 03 20 0F 00 00")}));
  EXPECT_EQ(answersTo(QByteArray::fromHex("02 00 00 00 02 0C 86 C2 E8 03"), 50),
            QList({QByteArray::fromHex("06 00 00 00 02 0F C0 A1 E8 03 00 00 02 00")}));
  EXPECT_EQ(answersTo(QByteArray::fromHex("04 00 00 00 02 14 86 C2 E8 03 01 00"), 50),
            QList({QByteArray::fromHex("06 00 00 00 02 17 C0 A1 E8 03 01 00 01 00")}));
}

TEST_F(Mx10IpStationTest, StopsTheTrackAndSwitchesOutputs) {
  open();
  answersTo(QByteArray::fromHex("04 00 00 00 00 01 86 C2 00 00 03 02"), 50);
  EXPECT_FALSE(layout.trackPower());
  answersTo(QByteArray::fromHex("04 00 00 00 00 01 86 C2 00 00 03 01"), 50);
  EXPECT_TRUE(layout.trackPower());
  answersTo(QByteArray::fromHex("04 00 00 00 01 11 86 C2 05 00 02 01"), 50);
  EXPECT_TRUE(layout.output(19));
  EXPECT_EQ(answersTo(QByteArray::fromHex("02 00 00 00 01 08 86 C2 05 00"), 50),
            QList({QByteArray::fromHex("06 00 00 00 01 0B C0 A1 05 00 00 00 45 00")}));
}

class Mx10KeyStationTest : public StationFixture {
 protected:
  Mx10KeyStationTest() : StationFixture(u"MX10") {}
};

TEST_F(Mx10KeyStationTest, AnswersTheWakeUpAndAnnouncesItself) {
  station->receive(bytes({0x5A, 0x32, 0x32, 0x5A}));
  EXPECT_TRUE(answers.isEmpty());
  clock.advance(900);
  ASSERT_EQ(answers.size(), 2);
  EXPECT_EQ(answers[0].data, bytes({0x5A, 0x32, 0x32, 0x5A}));
  EXPECT_EQ(answers[1].data, bytes({0x5A, 0x32, 0x08, 0x0A, 0x02, 0xC0, 0xA1, 0x80, 0x01, 0x23,
                                    0x45, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x32, 0x5A}));
}

TEST_F(Mx10KeyStationTest, ReadsFromTheLine) {
  station->receive(bytes({0x5A, 0x32, 0x08, 0x16, 0x21, 0x86, 0xC2, 0xC0, 0xA1, 0xE8, 0x03, 0x08,
                          0x00, 0x00, 0x00, 0x00, 0x00, 0x32}));
  station->receive(bytes({0x5A}));
  clock.advance(300);
  ASSERT_EQ(answers.size(), 1);
  EXPECT_EQ(answers[0].data, bytes({0x5A, 0x32, 0x09, 0x16, 0x23, 0xC0, 0xA1, 0xC0, 0xA1, 0xE8,
                                    0x03, 0x08, 0x00, 0x00, 0x00, 0x91, 0x00, 0x00, 0x32, 0x5A}));
}

}  // namespace
}  // namespace lokari::sim
