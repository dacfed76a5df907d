#include "sim/mx1_text_station.h"

#include "station_fixture.h"

namespace lokari::sim {
namespace {

class Mx1TextStationTest : public StationFixture {
 protected:
  Mx1TextStationTest() : StationFixture(u"MX1") {}
};

TEST_F(Mx1TextStationTest, SaysNothingToTheSessionsCommands) {
  EXPECT_EQ(replyTo("\r"), "");
  EXPECT_EQ(replyTo("REN\r"), "");
  EXPECT_EQ(replyTo("RE\r"), "");
}

TEST_F(Mx1TextStationTest, ReadsOnTheProgrammingTrack) {
  EXPECT_EQ(replyTo("QN08\r"), "QN000861\r");
  EXPECT_EQ(replyTo("QN1D\r"), "QN001D0E\r");
}

TEST_F(Mx1TextStationTest, TakesLongerCvNumbers) {
  layout.onProgrammingTrack()->present = {{1, 1024}};
  layout.onProgrammingTrack()->store(256, 7);
  layout.onProgrammingTrack()->store(1024, 9);
  EXPECT_EQ(replyTo("QN100\r"), "QN000007\r");
  EXPECT_EQ(replyTo("QN400\r"), "QN000009\r");
  EXPECT_EQ(replyTo("RN4000A\r"), "QN00000A\r");
}

TEST_F(Mx1TextStationTest, WritesOnTheProgrammingTrackAndTellsWhatTheDecoderHolds) {
  EXPECT_EQ(replyTo("RN05C8\r"), "QN0005C8\r");
  layout.onProgrammingTrack()->sticky = {5};
  EXPECT_EQ(replyTo("RN0507\r"), "QN0005C8\r");
}

TEST_F(Mx1TextStationTest, TellsTheReasonOfAFailure) {
  EXPECT_EQ(replyTo("RN0801\r"), "QN010800\r");
  EXPECT_EQ(replyTo("QN2BC\r"), "QN01BC00\r");
  faults.add({.kind = FaultKind::NoDecoder});
  EXPECT_EQ(replyTo("QN08\r"), "QN020800\r");
  faults.add({.kind = FaultKind::ShortCircuit});
  EXPECT_EQ(replyTo("QN08\r"), "QN030800\r");
  faults.add({.kind = FaultKind::Busy});
  EXPECT_EQ(replyTo("QN08\r"), "QN040800\r");
}

TEST_F(Mx1TextStationTest, WritesOnTheMainTrackToAShortAddressWithoutAReply) {
  EXPECT_EQ(replyTo("L031403EC0409\r"), "");
  EXPECT_EQ(layout.onMainTrack(3)->stored(5), 9);
}

TEST_F(Mx1TextStationTest, KnowsALongAddressByTheIndexThatItGave) {
  EXPECT_EQ(replyTo("E03E8\r"), "E8003E8\r");
  EXPECT_EQ(replyTo("E03E8\r"), "E8003E8\r");
  EXPECT_EQ(replyTo("L8015C3E8EC0409\r"), "");
  EXPECT_EQ(layout.onMainTrack(1000)->stored(5), 9);
}

TEST_F(Mx1TextStationTest, HasNoIndexForAnAddressThatNobodyHas) {
  EXPECT_EQ(replyTo("E07D1\r"), "E0007D1\r");
}

TEST_F(Mx1TextStationTest, RefusesALongAddressUnderAnotherIndex) {
  EXPECT_EQ(replyTo("L8115C3E8EC0409\r"), "??\r");
  EXPECT_NE(layout.onMainTrack(1000)->stored(5), 9);
}

TEST_F(Mx1TextStationTest, RefusesAMainTrackAddressThatIsLocked) {
  faults.add({.kind = FaultKind::Busy});
  EXPECT_EQ(replyTo("L031403EC0409\r"), "??\r");
}

TEST_F(Mx1TextStationTest, RefusesWhatItDoesNotUnderstand) {
  for (const char* line : {"QN\r", "QN1\r", "qn08\r", "QNXX\r", "RN05\r", "RN\r", "L\r", "L0314\r",
                           "L031404EC0409\r", "L031503E8EC0409\r", "L031403ED0409\r",
                           "L031403EC04\r", "E\r", "E03E\r", "E03E80\r", "R\r", "hallo\r"}) {
    EXPECT_EQ(replyTo(line), "??\r") << line;
  }
}

TEST_F(Mx1TextStationTest, TakesACommandInPiecesAndTwoAtOnce) {
  EXPECT_EQ(replyTo("Q"), "");
  EXPECT_EQ(replyTo("N0"), "");
  EXPECT_EQ(replyTo("8\rQN1D\r"), "QN000861\rQN001D0E\r");
}

TEST_F(Mx1TextStationTest, ForgetsNoiseWithoutAnEnd) {
  EXPECT_EQ(replyTo(QByteArray(1000, 'x')), "");
  EXPECT_EQ(replyTo("QN08\r"), "QN000861\r");
}

}  // namespace
}  // namespace lokari::sim
