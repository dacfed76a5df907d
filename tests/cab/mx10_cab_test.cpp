// Cabs and panels on an MX10: literal messages.
#include "cab/cab_line.h"
#include "cab/mx10.h"
#include "cab/mx10_codec.h"
#include "link/mx10_fixture.h"

namespace lokari {
namespace {

class Mx10CabTest : public test::Mx10Fixture {
 protected:
  Mx10CabTest() { state.address = 1000; }

  void SetUp() override { openSession(false); }

  void expectReading(const Data& functions, const Data& speed, const Data& manual) {
    expect(0x020C86C2, {0xE8, 0x03}).answer(0x020FC0A1, functions);
    expect(0x020886C2, {0xE8, 0x03}).answer(0x020BC0A1, speed);
    expect(0x021486C2, {0xE8, 0x03, 0x01, 0x00}).answer(0x0217C0A1, manual);
  }

  CabLine cabs{link};
  CabState state;
  std::unique_ptr<CabProtocol> cab = makeMx10Cab(cabs, state, {});
};

TEST_F(Mx10CabTest, ReadsFunctionsSpeedAndManual) {
  expectReading({0xE8, 0x03, 0x81, 0x01, 0x02, 0x10}, {0xE8, 0x03, 0x08, 0x2A, 0x55},
                {0xE8, 0x03, 0x01, 0x00, 0x01});
  EXPECT_EQ(cab->readState(), FunctionMask{1U | 1U << 7 | 1U << 8 | 1U << 17 | 1U << 28});
  EXPECT_EQ(state.speed, 65) << "520 / 8";
  EXPECT_TRUE(state.backward) << "the bit of value 8";
  EXPECT_TRUE(state.manual);
  EXPECT_EQ(state.canFlags, 0x2A);
  EXPECT_EQ(state.canFuncs, 0x55);
  EXPECT_FALSE(state.canBusy);
}

TEST_F(Mx10CabTest, ASpeedOfAllBitsIsTheHighest) {
  expectReading({0xE8, 0x03, 0, 0, 0, 0}, {0xE8, 0x03, 0xFF, 0x03, 0x00},
                {0xE8, 0x03, 0x01, 0x00, 0x00});
  EXPECT_TRUE(cab->readState());
  EXPECT_FALSE(state.backward);
  EXPECT_FALSE(state.manual);
  EXPECT_EQ(state.speed, 127) << "1023 / 8";
}

TEST_F(Mx10CabTest, EachMissingAnswerFailsTheReading) {
  expect(0x020C86C2, {0xE8, 0x03});
  EXPECT_EQ(cab->readState(), std::nullopt);
  expect(0x020C86C2, {0xE8, 0x03}).answer(0x020FC0A1, {0xE8, 0x03, 0, 0, 0, 0});
  expect(0x020886C2, {0xE8, 0x03});
  EXPECT_EQ(cab->readState(), std::nullopt);
  expect(0x020C86C2, {0xE8, 0x03}).answer(0x020FC0A1, {0xE8, 0x03, 0, 0, 0, 0});
  expect(0x020886C2, {0xE8, 0x03}).answer(0x020BC0A1, {0xE8, 0x03, 1, 0, 0});
  expect(0x021486C2, {0xE8, 0x03, 0x01, 0x00});
  EXPECT_EQ(cab->readState(), std::nullopt);
  EXPECT_FALSE(state.canBusy);
  EXPECT_EQ(state.speed, 0) << "half a state is none";
}

TEST_F(Mx10CabTest, AnAnswerThatIsTooShortFailsTheReading) {
  expect(0x020C86C2, {0xE8, 0x03}).answer(0x020FC0A1, {0xE8, 0x03});
  EXPECT_EQ(cab->readState(), std::nullopt);
}

TEST_F(Mx10CabTest, ABusThatTakesNothingFailsTheReadingAtOnce) {
  can.writeResult = 5;
  expect(0x020C86C2, {0xE8, 0x03});
  EXPECT_LE(timeOf([&] { EXPECT_EQ(cab->readState(), std::nullopt); }), 100);
}

TEST_F(Mx10CabTest, OldMessagesAreDroppedAheadOfAReading) {
  can.arrive(message(0x020FC0A1, {0xE8, 0x03, 0xFF, 0xFF, 0xFF, 0xFF}));
  expectReading({0xE8, 0x03, 0, 0, 0, 0}, {0xE8, 0x03, 0, 0, 0}, {0xE8, 0x03, 1, 0, 0});
  EXPECT_EQ(cab->readState(), FunctionMask{0});
}

TEST_F(Mx10CabTest, EitherDirectionBitIsBackward) {
  for (const int flags : {0x04, 0x08, 0x0C}) {
    expectReading({0xE8, 0x03, 0, 0, 0, 0}, {0xE8, 0x03, 0x08, flags, 0}, {0xE8, 0x03, 1, 0, 0});
    EXPECT_TRUE(cab->readState());
    EXPECT_TRUE(state.backward) << flags;
  }
  expectReading({0xE8, 0x03, 0, 0, 0, 0}, {0xE8, 0x03, 0x08, 0x30, 0}, {0xE8, 0x03, 1, 0, 0});
  EXPECT_TRUE(cab->readState());
  EXPECT_FALSE(state.backward) << "east and west are no directions of the vehicle";
}

TEST_F(Mx10CabTest, WhatIsToldOfAnotherVehicleIsNoAnswer) {
  expect(0x020C86C2, {0xE8, 0x03})
      .answer(0x020FC0A1, {0x03, 0x00, 0xFF, 0xFF, 0xFF, 0xFF}, 5)
      .answer(0x020FC0A1, {0xE8, 0x03, 0x01, 0, 0, 0}, 300);
  expect(0x020886C2, {0xE8, 0x03})
      .answer(0x020BC0A1, {0x03, 0x00, 0xFF, 0x0F, 0}, 5)
      .answer(0x020BC0A1, {0xE8, 0x03, 0x08, 0x00, 0}, 300);
  expect(0x021486C2, {0xE8, 0x03, 1, 0})
      .answer(0x0217C0A1, {0x03, 0x00, 1, 0, 1}, 5)
      .answer(0x0217C0A1, {0xE8, 0x03, 1, 0, 0}, 300);
  EXPECT_EQ(cab->readState(), FunctionMask{1});
  EXPECT_EQ(state.speed, 1);
  EXPECT_FALSE(state.backward);
  EXPECT_FALSE(state.manual);
}

TEST_F(Mx10CabTest, SendsTheSpeedTimesEight) {
  struct Row {
    int speed;
    bool backward;
    int flagsBefore, low, flags;
  };
  const std::vector<Row> rows{
      {0, false, 0x00, 0x00, 0x00},   {1, false, 0x00, 0x08, 0x00},  {31, false, 0x00, 0xF8, 0x00},
      {32, false, 0x00, 0x00, 0x01},  {100, true, 0x00, 0x20, 0x07}, {126, false, 0x00, 0xF0, 0x03},
      {127, false, 0x00, 0xF0, 0x03}, {64, false, 0xFF, 0x00, 0xFA}, {64, true, 0xF8, 0x00, 0xFE},
  };
  for (const Row& row : rows) {
    state.speed = row.speed;
    state.backward = row.backward;
    state.canFlags = static_cast<quint8>(row.flagsBefore);
    state.canFuncs = 0x55;
    expect(0x020986C2, {0xE8, 0x03, row.low, row.flags, 0x55, 0x00});
    cab->sendSpeed();
    EXPECT_EQ(state.canFlags, row.flags);
  }
}

TEST_F(Mx10CabTest, EveryPositionOfTheBarComesBackAsItWentOut) {
  for (int speed = 0; speed < 127; ++speed) {
    EXPECT_EQ(mx10::speedValue(speed) / 8, speed);
  }
  EXPECT_EQ(mx10::speedValue(127), 1008);
}

TEST_F(Mx10CabTest, TheDirectionMessageHasTheSpeedUnscaled) {
  state.speed = 100;
  state.canFlags = 0x03;
  state.backward = true;
  expect(0x020986C2, {0xE8, 0x03, 100, 0x07, 0x00, 0x00});
  cab->sendDirection();
  state.backward = false;
  expect(0x020986C2, {0xE8, 0x03, 100, 0x03, 0x00, 0x00});
  cab->sendDirection();
}

TEST_F(Mx10CabTest, SwitchesFunctionsManualAndTheTrack) {
  state.funcOn[28] = true;
  expect(0x021186C2, {0xE8, 0x03, 28, 0x00, 0x01, 0x00});
  cab->sendFunction(28);
  expect(0x021186C2, {0xE8, 0x03, 0, 0x00, 0x00, 0x00});
  cab->sendFunction(0);
  state.manual = true;
  expect(0x021586C2, {0xE8, 0x03, 0x01, 0x00, 0x01, 0x00});
  cab->sendManual();
  state.manual = false;
  expect(0x021586C2, {0xE8, 0x03, 0x01, 0x00, 0x00, 0x00});
  cab->sendManual();
  state.stopped = true;
  expect(0x000186C2, {0x00, 0x00, 0x03, 0x02});
  cab->sendStopped();
  state.stopped = false;
  expect(0x000186C2, {0x00, 0x00, 0x03, 0x01});
  cab->sendStopped();
}

TEST_F(Mx10CabTest, TheTimerKeepsTheVehicleAwake) {
  expect(0x024186C2, {0xE8, 0x03, 0x01, 0x00});
  EXPECT_EQ(timeOf([&] { cab->tick(); }), 100);
}

TEST_F(Mx10CabTest, TheTimerKeepsSilentWhileAHandlerTalks) {
  state.canBusy = true;
  cab->tick();
}

TEST_F(Mx10CabTest, AStopGoesOutAtOnceInsideAReadingAndLeavesItsAnswer) {
  expect(0x020C86C2, {0xE8, 0x03}).answer(0x020FC0A1, {0xE8, 0x03, 1, 0, 0, 0}, 300);
  expect(0x000186C2, {0x00, 0x00, 0x03, 0x02});
  expect(0x020886C2, {0xE8, 0x03}).answer(0x020BC0A1, {0xE8, 0x03, 0, 0, 0});
  expect(0x021486C2, {0xE8, 0x03, 0x01, 0x00}).answer(0x0217C0A1, {0xE8, 0x03, 1, 0, 0});
  clock.schedule(250, [&] {
    state.stopped = true;
    EXPECT_EQ(timeOf([&] { cabs.urgent([&] { cab->sendStopped(); }); }), 0);
  });
  std::optional<FunctionMask> mask;
  cabs.exchange(cab.get(), 0, [&] { mask = cab->readState(); });
  EXPECT_EQ(mask, FunctionMask{1});
}

class Mx10PanelTest : public Mx10CabTest {
 protected:
  Mx10PanelTest() { unit.address = 300; }

  PanelState unit;
  std::unique_ptr<PanelProtocol> panel = makeMx10Panel(cabs, unit);
};

TEST_F(Mx10PanelTest, ReadsTheOutputsThatAreOff) {
  expect(0x010886C2, {0x2C, 0x01}).answer(0x010BC0A1, {0x2C, 0x01, 0, 0, 0xEB, 0});
  EXPECT_EQ(panel->readState(), quint8{0x41});
}

TEST_F(Mx10PanelTest, SilenceAShortAnswerAndABusThatTakesNothingFailTheReading) {
  expect(0x010886C2, {0x2C, 0x01});
  EXPECT_EQ(panel->readState(), std::nullopt);
  expect(0x010886C2, {0x2C, 0x01}).answer(0x010BC0A1, {0x2C, 0x01, 0, 0});
  EXPECT_EQ(panel->readState(), std::nullopt);
  can.writeResult = 1;
  expect(0x010886C2, {0x2C, 0x01});
  EXPECT_EQ(panel->readState(), std::nullopt);
}

TEST_F(Mx10PanelTest, SwitchesAnOutput) {
  unit.outOn[2] = true;
  expect(0x011186C2, {0x2C, 0x01, 2, 1});
  panel->sendOutput(2);
  unit.outOn[2] = false;
  expect(0x011186C2, {0x2C, 0x01, 2, 0});
  panel->sendOutput(2);
}

}  // namespace
}  // namespace lokari
