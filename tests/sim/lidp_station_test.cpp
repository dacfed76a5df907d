#include "sim/lidp_station.h"

#include "station_fixture.h"

namespace lokari::sim {
namespace {

class LidpStationTest : public StationFixture {
 protected:
  LidpStationTest() : StationFixture(u"LIDP") {}
};

TEST_F(LidpStationTest, ReadsAndWrites) {
  EXPECT_EQ(replyTo("0B001C\r"), "0EOK\r\n");
  EXPECT_EQ(replyTo("0A001CA6\r"), "A6OK\r\n");
  EXPECT_EQ(layout.onProgrammingTrack()->stored(29), 0xA6);
}

TEST_F(LidpStationTest, EndsTheSession) {
  EXPECT_EQ(replyTo("01\r"), "OK\r\n");
}

TEST_F(LidpStationTest, FailuresHaveTheirTexts) {
  const QList<std::pair<FaultKind, const char*>> rows{{FaultKind::NoAck, "X2\r\n"},
                                                      {FaultKind::NoDecoder, "X2\r\n"},
                                                      {FaultKind::ShortCircuit, "X3\r\n"},
                                                      {FaultKind::Busy, "X4\r\n"}};
  for (const auto& [kind, text] : rows) {
    faults.add({.kind = kind});
    EXPECT_EQ(replyTo("0B001C\r"), text);
  }
}

TEST_F(LidpStationTest, WhatItDoesNotUnderstandIsX1) {
  for (const char* line :
       {"\r", "0B1C\r", "0B001Cx\r", "0B001c\r", "0A001C\r", "0C001C\r", "QN\r"}) {
    EXPECT_EQ(replyTo(line), "X1\r\n") << line;
  }
}

TEST_F(LidpStationTest, NoiseWithoutAnEndIsForgotten) {
  EXPECT_EQ(replyTo(QByteArray(100, '@')), "");
  EXPECT_EQ(replyTo("0B001C\r"), "0EOK\r\n");
}

TEST_F(LidpStationTest, TakesALineByteByByte) {
  for (const char c : QByteArray("0B001C\r")) station->receive(QByteArray(1, c));
  clock.advance(1000);
  EXPECT_EQ(answers.size(), 1);
}

}  // namespace
}  // namespace lokari::sim
