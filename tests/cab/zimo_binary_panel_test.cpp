// A switch panel on the MX1 and the MX1ULF with the Zimo binary protocol.
#include "cab/cab_line.h"
#include "cab/cab_table.h"
#include "link/link_error.h"
#include "zimo_script.h"

namespace lokari {
namespace {

using test::fromHex;

class ZimoBinaryPanelTest : public test::ZimoScript,
                            public ::testing::WithParamInterface<StationKind> {
 protected:
  ZimoBinaryPanelTest() : ZimoScript(GetParam()) { state.address = 5; }

  void turn(int n, bool on) {
    state.outOn.at(static_cast<size_t>(n)) = on;
    panel->sendOutput(n);
  }

  CabLine cabLine{link};
  PanelState state;
  std::unique_ptr<PanelProtocol> panel =
      makePanelProtocol(ProtocolFamily::ZimoBinary, cabLine, state);
};

INSTANTIATE_TEST_SUITE_P(Both, ZimoBinaryPanelTest,
                         ::testing::Values(StationKind::Mx1Bin, StationKind::Mx1Ulf));

TEST_P(ZimoBinaryPanelTest, ReadsTheOutputsWithoutAnyOpening) {
  line.expect(fromHex("0101 00 1030 09 00 05 40 17"))
      .answer(fromHex("0101 07 50 09 00 00 00 05 00 A6 C5 17"));
  EXPECT_EQ(panel->readState(), 0xA6);
  EXPECT_EQ(state.panelCmd, fromHex("07 00 05"));
  EXPECT_EQ(line.writes.size(), 1);
}

TEST_P(ZimoBinaryPanelTest, WhatWaitsBeforeAQuestionOrACommandIsNoAnswerToIt) {
  line.arrive(reply("09 00 00 05 00 FF"));
  expectPayload("09 00 05").answer(reply("09 00 00 05 00 A6"));
  EXPECT_EQ(panel->readState(), 0xA6);
  line.arrive(reply("07 00"));
  expectPayload("07 00 05 09").answer(reply("07 04"));
  expectPayload("07 00 05 09").answer(reply("07 00"));
  turn(0, true);
  EXPECT_EQ(prompt.beeps, 0);
}

TEST_P(ZimoBinaryPanelTest, ALongAddressFillsBothBytes) {
  state.address = 300;
  expectPayload("09 01 2C").answer(reply("09 00 01 2C 00 55"));
  EXPECT_EQ(panel->readState(), 0x55);
  EXPECT_EQ(state.panelCmd, fromHex("07 01 2C"));
}

TEST_P(ZimoBinaryPanelTest, FiveBusyAnswersAreAFailedReading) {
  for (int i = 0; i < 5; ++i) expectPayload("09 00 05").answer(reply("09 04"));
  EXPECT_EQ(timeOf([&] { EXPECT_EQ(panel->readState(), std::nullopt); }), 550);
  EXPECT_EQ(state.panelCmd, "");
}

TEST_P(ZimoBinaryPanelTest, OtherAnswersAreAskedAgainTwentyTimesAtMost) {
  expectPayload("09 00 05").answer(reply("09 00 00 05 00"));
  expectPayload("09 00 05").answer(reply("08 00 00 05 00 A6"));
  expectPayload("09 00 05").answer(reply("09 00 00 05 00 A6"));
  EXPECT_EQ(panel->readState(), 0xA6);
  for (int i = 0; i < 20; ++i) expectPayload("09 00 05").answer(reply("09 03"));
  EXPECT_EQ(panel->readState(), std::nullopt);
}

TEST_P(ZimoBinaryPanelTest, SilenceIsAFailedReadingAndAVanishedPortIsTold) {
  expectPayload("09 00 05");
  EXPECT_EQ(timeOf([&] { EXPECT_EQ(panel->readState(), std::nullopt); }), 31000);
  expectPayload("09 00 05").then([&] { line.vanish(); }, 100);
  EXPECT_THROW(panel->readState(), LinkError);
  EXPECT_EQ(prompt.beeps, 0);
}

TEST_P(ZimoBinaryPanelTest, SwitchesEachOutputOnAndOff) {
  const char* const on[] = {"07 00 05 09", "07 00 05 0B", "07 00 05 0D", "07 00 05 0F"};
  const char* const off[] = {"07 00 05 08", "07 00 05 0A", "07 00 05 0C", "07 00 05 0E"};
  expectPayload("09 00 05").answer(reply("09 00 00 05 00 55"));
  panel->readState();
  for (int n = 0; n < 4; ++n) {
    expectPayload(on[n]).answer(reply("07 00"));
    turn(n, true);
    expectPayload(off[n]).answer(reply("07 00"));
    turn(n, false);
  }
}

TEST_P(ZimoBinaryPanelTest, ASwitchIsRepeatedUntilItIsConfirmed) {
  expectPayload("09 00 05").answer(reply("09 00 00 05 00 55"));
  panel->readState();
  expectPayload("07 00 05 09").answer(reply("07 04"));
  expectPayload("07 00 05 09").answer(reply("07 00"));
  turn(0, true);
  for (int i = 0; i < 5; ++i) expectPayload("07 00 05 08").answer(reply("07 03"));
  turn(0, false);
  EXPECT_EQ(prompt.beeps, 1);
}

TEST_P(ZimoBinaryPanelTest, WithoutAStateThereIsNoCommandAndNothingIsSent) {
  turn(0, true);
  EXPECT_TRUE(line.writes.isEmpty());
}

}  // namespace
}  // namespace lokari
