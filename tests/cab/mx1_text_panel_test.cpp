// A switch panel on the MX1 with the text protocol.
#include "cab/cab_line.h"
#include "cab/cab_table.h"
#include "link/link_error.h"
#include "support/link_fixture.h"

namespace lokari {
namespace {

class Mx1TextPanelTest : public test::LinkFixture,
                         public ::testing::WithParamInterface<StationKind> {
 protected:
  Mx1TextPanelTest() : LinkFixture(GetParam()) {
    line.open({});
    state.address = 5;
  }

  void loadUnit5() {
    line.expect("AWN05\r").answer("AWN0500A6\r");
    ASSERT_EQ(panel->readState(), 0xA6);
  }
  void turn(int n, bool on) {
    state.outOn.at(static_cast<size_t>(n)) = on;
    panel->sendOutput(n);
  }

  CabLine cabLine{link};
  PanelState state;
  std::unique_ptr<PanelProtocol> panel = makePanelProtocol(ProtocolFamily::Mx1Text, cabLine, state);
};

INSTANTIATE_TEST_SUITE_P(Both, Mx1TextPanelTest,
                         ::testing::Values(StationKind::Mx1, StationKind::Mx1V25));

TEST_P(Mx1TextPanelTest, ReadsTheOutputsFromTheDigitsAtPosition8) {
  loadUnit5();
  EXPECT_EQ(state.panelCmd, "MN0500\r");
}

TEST_P(Mx1TextPanelTest, AUnitAbove255HasItsNinthBitBehindItsLowByte) {
  state.address = 256;
  line.expect("AWN0080\r").answer("AWN008055\r");
  EXPECT_EQ(panel->readState(), 0x55);
  EXPECT_EQ(state.panelCmd, "MN0080\r");
  state.address = 511;
  line.expect("AWNFF80\r").answer("AWNFF80AA\r");
  EXPECT_EQ(panel->readState(), 0xAA);
  state.address = 255;
  line.expect("AWNFF\r").answer("AWNFF00AA\r");
  EXPECT_EQ(panel->readState(), 0xAA);
}

TEST_P(Mx1TextPanelTest, AUnitThatNineBitsCannotNameIsNeitherReadNorSwitched) {
  for (const int unit : {512, 600, 10239, -1}) {
    state.address = unit;
    EXPECT_EQ(panel->readState(), std::nullopt);
    turn(0, true);
  }
  EXPECT_TRUE(line.writes.isEmpty());
}

TEST_P(Mx1TextPanelTest, SilenceShortAndNonsenseAreFailedReadings) {
  for (const char* answer : {"", "AWN0500A", "AWN05\r", "??\r", "AWN0500xx\r", "??????????"}) {
    line.expect("AWN05\r").answer(answer);
    EXPECT_EQ(panel->readState(), std::nullopt) << answer;
    EXPECT_EQ(state.panelCmd, "MN0500\r") << answer;
  }
}

TEST_P(Mx1TextPanelTest, ACancelledWaitIsAFailedReadingAndAVanishedPortIsTold) {
  line.expect("AWN05\r").then([&] { link.cancelRequested = true; }, 100);
  EXPECT_EQ(timeOf([&] { EXPECT_EQ(panel->readState(), std::nullopt); }), 100);
  link.cancelRequested = false;
  line.expect("AWN05\r").then([&] { line.vanish(); }, 100);
  EXPECT_THROW(panel->readState(), LinkError);
  EXPECT_THROW(turn(0, true), LinkError);
}

TEST_P(Mx1TextPanelTest, SwitchesEachOutputOnAndOff) {
  const char* const on[] = {"MN0509\r", "MN050B\r", "MN050D\r", "MN050F\r"};
  const char* const off[] = {"MN0508\r", "MN050A\r", "MN050C\r", "MN050E\r"};
  loadUnit5();
  for (int n = 0; n < 4; ++n) {
    line.expect(on[n]);
    turn(n, true);
    line.expect(off[n]);
    turn(n, false);
  }
}

TEST_P(Mx1TextPanelTest, AnAddressOf256OrMoreAdds128ToTheSwitchingValue) {
  state.address = 300;
  line.expect("AWN2C80\r").answer("AWN2C80AA\r");
  panel->readState();
  line.expect("MN2C8F\r");
  turn(3, true);
  line.expect("MN2C88\r");
  turn(0, false);
}

TEST_P(Mx1TextPanelTest, ARefusedCommandIsSentOnceMoreBeforeTheNextOne) {
  loadUnit5();
  line.expect("MN0509\r").answer("???\r");
  turn(0, true);
  clock.advance(100);
  line.expect("MN0509\r").expect("MN050B\r");
  turn(1, true);
  EXPECT_EQ(line.inBufferCount(), 0);
}

TEST_P(Mx1TextPanelTest, WhatWaitsBeforeTheQuestionIsNoAnswerToIt) {
  for (const char* stray : {"AWN0700FF\r", "FN03281C\r", "x"}) {
    line.arrive(stray);
    line.expect("AWN05\r").answer("AWN0500A6\r");
    EXPECT_EQ(panel->readState(), 0xA6) << stray;
  }
}

TEST_P(Mx1TextPanelTest, ARefusalThatWaitsBeforeTheQuestionStillRepeatsItsCommand) {
  loadUnit5();
  line.expect("MN0509\r").answer("???\r");
  turn(0, true);
  clock.advance(100);
  line.expect("AWN05\r").answer("AWN0500A6\r");
  EXPECT_EQ(panel->readState(), 0xA6);
  line.expect("MN0500\r").expect("MN050B\r");
  turn(1, true);
}

TEST_P(Mx1TextPanelTest, OtherWaitingInputIsReadAndNothingIsRepeated) {
  loadUnit5();
  line.arrive("??\r");
  line.expect("MN0509\r");
  turn(0, true);
  EXPECT_EQ(line.inBufferCount(), 0);
}

}  // namespace
}  // namespace lokari
