// Panels on the Intellibox and the Tams MC, by script.
#include "cab_fixture.h"
#include "link/link_error.h"

namespace lokari {
namespace {

class IntelliboxPanel : public test::CabFixture, public ::testing::WithParamInterface<StationKind> {
 protected:
  IntelliboxPanel() : CabFixture(GetParam()) {}

  test::ScriptedLine& expect(const char* text) { return line.expect("x" + fromHex(text)); }
};

INSTANTIATE_TEST_SUITE_P(Kinds, IntelliboxPanel,
                         ::testing::Values(StationKind::Ibx, StationKind::TamsMc),
                         [](const auto& kind) {
                           return QString::fromUtf16(stationKind(kind.param).name).toStdString();
                         });

TEST_P(IntelliboxPanel, ReadsItsNibbleOfTheGroup) {
  expect("95 02").answer(fromHex("00 A6"));
  EXPECT_EQ(readPanel(), 0x69);
  EXPECT_EQ(panelState.panelCmd, fromHex("90 09 00"));
  panelState.address = 4;
  expect("95 02").answer(fromHex("00 A6"));
  EXPECT_EQ(readPanel(), 0x99);
}

TEST_P(IntelliboxPanel, SwitchesEachOutput) {
  const QList<std::pair<const char*, const char*>> rows{{"90 09 40", "90 09 C0"},
                                                        {"90 0A 40", "90 0A C0"},
                                                        {"90 0B 40", "90 0B C0"},
                                                        {"90 0C 40", "90 0C C0"}};
  for (int n = 0; n < rows.size(); ++n) {
    expect(rows[n].second).answer(fromHex("00"));
    output(n, true);
    expect(rows[n].first).answer(fromHex("00"));
    output(n, false);
  }
  EXPECT_EQ(prompt.beeps, 0);
}

TEST_P(IntelliboxPanel, ARefusalBeepsAndSilenceDoesNot) {
  expect("90 09 C0").answer(fromHex("0D"));
  output(0, true);
  EXPECT_EQ(prompt.beeps, 1);
  expect("90 09 40");
  output(0, false);
  EXPECT_EQ(prompt.beeps, 1);
}

TEST_P(IntelliboxPanel, WhatIsTakenWithoutPowerOnTheTrackBeeps) {
  expect("90 09 C0").answer(fromHex("42"));
  output(0, true);
  EXPECT_EQ(prompt.beeps, 1);
}

TEST_P(IntelliboxPanel, TheByteOfReservationsAnswersNoStop) {
  expect("95 02").answer(fromHex("00 A6 00"));
  EXPECT_EQ(readPanel(), 0x69);
  expect("A5").answer(fromHex("06"));
  stop(true);
  EXPECT_EQ(prompt.beeps, 1) << "the stop was refused";
}

TEST_P(IntelliboxPanel, ARepliesRestIsWaitedFor) {
  expect("95 02").answer(fromHex("00")).answer(fromHex("A6"), 900);
  EXPECT_EQ(readPanel(), 0x69);
}

TEST_P(IntelliboxPanel, SilenceARefusalAndAShortReplyAreFailures) {
  expect("95 02");
  EXPECT_FALSE(readPanel());
  expect("95 02").answer(fromHex("01 A6"));
  EXPECT_FALSE(readPanel());
  expect("95 02").answer(fromHex("00"));
  EXPECT_FALSE(readPanel());
  EXPECT_EQ(panelState.panelCmd, fromHex("90 09 00"));
}

TEST_P(IntelliboxPanel, InputThatWaitsIsDropped) {
  line.arrive(fromHex("06 06"));
  expect("90 09 C0").answer(fromHex("00"));
  output(0, true);
  EXPECT_EQ(prompt.beeps, 0);
}

TEST_P(IntelliboxPanel, AVanishedDeviceIsToldByEveryOperation) {
  expect("95 02").then([this] { line.vanish(); }, 300);
  EXPECT_THROW(readPanel(), LinkError);
  EXPECT_THROW(output(0, true), LinkError);
  EXPECT_EQ(prompt.beeps, 0);
}

TEST_P(IntelliboxPanel, AStopInsideAPanelsQuestionLeavesBothReplies) {
  expect("95 02").then([this] { stop(true); }, 20);
  expect("A5").answer(fromHex("00 A6 00"), 20);
  EXPECT_EQ(readPanel(), 0x69);
  EXPECT_TRUE(cabLine.repliesOwed.empty());
}

TEST_P(IntelliboxPanel, AnAddressWithoutAGroupIsNeverSent) {
  for (const int address : {0, 511, 10239}) {
    panelState.address = address;
    EXPECT_FALSE(readPanel()) << address;
    output(0, true);
  }
  EXPECT_TRUE(line.writes.isEmpty());
}

}  // namespace
}  // namespace lokari
