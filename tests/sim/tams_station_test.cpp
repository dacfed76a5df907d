#include "sim/tams_station.h"

#include "station_fixture.h"

namespace lokari::sim {
namespace {

class TamsStationTest : public StationFixture {
 protected:
  TamsStationTest() : StationFixture(u"TAMSMC") {}
};

TEST_F(TamsStationTest, ReadsOnTheProgrammingTrack) {
  EXPECT_EQ(replyTo("xPTRB 8\r"), "97]\r");
  EXPECT_EQ(replyTo("xPTRP 29\r"), "14]\r");
  EXPECT_EQ(replyTo("xPTRR 1\r"), "3]\r");
  EXPECT_EQ(replyTo("xPTRR 5\r"), "14]\r");
}

TEST_F(TamsStationTest, ReadsThroughTheIndexRegisters) {
  EXPECT_EQ(replyTo("xPTWD 31, 16\r"), "Ok]\r");
  EXPECT_EQ(replyTo("xPTWD 32, 1\r"), "Ok]\r");
  EXPECT_EQ(replyTo("xPTRB 258\r"), "22]\r");
}

TEST_F(TamsStationTest, WritesOnTheProgrammingTrack) {
  EXPECT_EQ(replyTo("xPTWD 5, 200\r"), "Ok]\r");
  EXPECT_EQ(replyTo("xPTRB 5\r"), "200]\r");
  EXPECT_EQ(replyTo("xPTWR 2, 7\r"), "Ok]\r");
  EXPECT_EQ(replyTo("xPTWP 3, 8\r"), "Ok]\r");
  EXPECT_EQ(layout.onProgrammingTrack()->stored(2), 7);
  EXPECT_EQ(layout.onProgrammingTrack()->stored(3), 8);
}

TEST_F(TamsStationTest, WritesOnTheMainTrackByAddress) {
  EXPECT_EQ(replyTo("xPD 1000, 5, 99\r"), "Ok]\r");
  EXPECT_EQ(layout.onMainTrack(1000)->stored(5), 99);
  EXPECT_EQ(replyTo("xPD 77, 5, 99\r"), "Ok]\r");
}

TEST_F(TamsStationTest, TellsTheReasonOfAFailure) {
  EXPECT_EQ(replyTo("xPTRB 700\r"), "No ack]\r");
  EXPECT_EQ(replyTo("xPTWD 8, 1\r"), "No ack]\r");
  faults.add({.kind = FaultKind::ShortCircuit});
  EXPECT_EQ(replyTo("xPTRB 1\r"), "Error]\r");
  faults.add({.kind = FaultKind::NoDecoder});
  EXPECT_EQ(replyTo("xPTRB 1\r"), "No ack]\r");
  EXPECT_EQ(replyTo("xPTRB 1\r"), "3]\r");
}

TEST_F(TamsStationTest, AnEmptyProgrammingTrackGivesNoAcknowledge) {
  Layout empty;
  TamsStation alone({clock, empty, faults, 20});
  QByteArray reply;
  alone.onAnswer = [&](const QByteArray& data) { reply += data; };
  alone.receive("xPTRB 1\r");
  clock.advance(100);
  EXPECT_EQ(reply, "No ack]\r");
}

TEST_F(TamsStationTest, RefusesWhatItDoesNotUnderstand) {
  for (const char* command : {"x\r", "xPTR\r", "xPTRX 1\r", "xPTRB\r", "xPTRB 0\r", "xPTRB 1025\r",
                              "xPTRB 1, 2\r", "xPTRB a\r", "xPTWD 1, 256\r", "xPTWD 1, -1\r",
                              "xPTWD 1\r", "xPD 3, 1\r", "xPD 3, 0, 1\r", "hallo\r", "\r"}) {
    EXPECT_EQ(replyTo(command), "Error]\r") << command;
  }
}

TEST_F(TamsStationTest, TakesACommandInPieces) {
  EXPECT_EQ(replyTo("xPT"), "");
  EXPECT_EQ(replyTo("RB 8"), "");
  EXPECT_EQ(replyTo("\r"), "97]\r");
}

TEST_F(TamsStationTest, TakesTwoCommandsAtOnce) {
  EXPECT_EQ(replyTo("xPTRB 8\rxPTRB 1\r"), "97]\r3]\r");
}

}  // namespace
}  // namespace lokari::sim
