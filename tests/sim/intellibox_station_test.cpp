#include "sim/intellibox_station.h"

#include "station_fixture.h"

namespace lokari::sim {
namespace {

class IntelliboxStationTest : public StationFixture {
 protected:
  IntelliboxStationTest() : StationFixture(u"IBX") {}

  static QByteArray fromHex(const char* text) { return QByteArray::fromHex(text); }
  QByteArray reply(const char* message) { return replyTo(fromHex(message)); }
  const IntelliboxStation& box() { return dynamic_cast<IntelliboxStation&>(*station); }
};

TEST_F(IntelliboxStationTest, AReadIsAcceptedAndItsEventHasTheValue) {
  EXPECT_EQ(reply("78 F2 1D 00"), fromHex("00"));
  EXPECT_TRUE(box().programming());
  EXPECT_EQ(reply("78 CE"), fromHex("02 00 0E"));
  EXPECT_EQ(reply("78 E2"), fromHex("00"));
  EXPECT_FALSE(box().programming());
}

TEST_F(IntelliboxStationTest, AWriteHasAnEventWithoutAValue) {
  EXPECT_EQ(reply("78 F1 1D 00 06"), fromHex("00"));
  EXPECT_EQ(reply("78 CE"), fromHex("01 00"));
  EXPECT_EQ(layout.onProgrammingTrack()->stored(29), 6);
}

TEST_F(IntelliboxStationTest, KnowsEveryMethod) {
  Decoder& decoder = *layout.onProgrammingTrack();
  decoder.methods = {Method::Paged};
  reply("78 EF 05 00 07");
  reply("78 EE 05 00");
  EXPECT_EQ(reply("78 CE"), fromHex("02 00 07"));
  decoder.methods = {Method::Register};
  reply("78 ED 05 00 09");
  EXPECT_EQ(decoder.stored(29), 9) << "register 5 is CV 29";
  reply("78 EC 05 00");
  EXPECT_EQ(reply("78 CE"), fromHex("02 00 09"));
}

TEST_F(IntelliboxStationTest, TheCvsNumberHasTwoBytes) {
  Decoder& decoder = *layout.onProgrammingTrack();
  decoder.present = {{1, 1024}};
  reply("78 F1 00 04 06");
  EXPECT_EQ(decoder.stored(1024), 6);
}

TEST_F(IntelliboxStationTest, ThereIsNoEventBeforeTheTrackIsDoneOrWithoutAnAccess) {
  EXPECT_EQ(reply("78 CE"), fromHex("F5"));
  station->receive(fromHex("78 F2 1D 00 78 CE"));
  clock.advance(100);
  EXPECT_EQ(answers.last().data, fromHex("F5"));
  clock.advance(200);
  EXPECT_EQ(reply("78 CE"), fromHex("02 00 0E"));
}

TEST_F(IntelliboxStationTest, FailuresAreStatusBytes) {
  const QList<std::pair<FaultKind, const char*>> rows{{FaultKind::NoAck, "01 FE"},
                                                      {FaultKind::ShortCircuit, "01 FD"},
                                                      {FaultKind::NoDecoder, "01 FC"}};
  for (const auto& [kind, event] : rows) {
    faults.add({.kind = kind});
    EXPECT_EQ(reply("78 F2 1D 00"), fromHex("00"));
    EXPECT_EQ(reply("78 CE"), fromHex(event)) << event;
  }
}

TEST_F(IntelliboxStationTest, ABusyTrackRefusesTheCommand) {
  faults.add({.kind = FaultKind::Busy});
  EXPECT_EQ(reply("78 F2 1D 00"), fromHex("06"));
  EXPECT_EQ(reply("78 CE"), fromHex("F5"));
}

TEST_F(IntelliboxStationTest, WritesOnTheMainTrack) {
  EXPECT_EQ(reply("78 DE E8 03 05 00 63"), fromHex("00"));
  EXPECT_EQ(layout.onMainTrack(1000)->stored(5), 99);
  EXPECT_FALSE(box().programming());
}

TEST_F(IntelliboxStationTest, AnUnknownCommandIsRefusedAndNoiseIsDropped) {
  EXPECT_EQ(reply("78 11"), fromHex("02"));
  EXPECT_EQ(reply("AA BB 78 E2"), fromHex("00"));
}

TEST_F(IntelliboxStationTest, AValueMayBeTheLetter) {
  reply("78 F1 05 00 78");
  EXPECT_EQ(layout.onProgrammingTrack()->stored(5), 0x78);
}

TEST_F(IntelliboxStationTest, ASecondsPauseEndsACommandThatIsCut) {
  EXPECT_EQ(reply("78 F2 1D"), "");
  EXPECT_EQ(reply("78 E2"), fromHex("00"));
}

}  // namespace
}  // namespace lokari::sim
