// Cabs and panels on a Z21: literal datagrams, then sessions with the simulated station.
#include "cab/cab_line.h"
#include "cab/z21.h"
#include "link/z21_fixture.h"

namespace lokari {
namespace {

QByteArray hexBytes(const char* text) {
  return QByteArray::fromHex(text);
}

/// Vehicle 3: 128 steps, step 64 forward, F0, F1, F5, F13 and F28.
constexpr char kVehicle3[] = "15 00 40 00 EF 00 03 04 C0 11 01 01 80 00 00 00 00 00 00 00 00";
constexpr char kAsk3[] = "09 00 40 00 E3 F0 00 03 2E";

class Z21CabTest : public test::Z21Fixture {
 protected:
  Z21CabTest() { state.address = 3; }

  void SetUp() override { openSession(false); }
  void TearDown() override {
    ASSERT_TRUE(socket.played());
    socket.expect(logOff);
    z21.FinishComm();
  }

  /// One command is followed by a reading.
  void expectCommand(const char* command) {
    socket.expect(hexBytes(command));
    socket.expect(hexBytes(kAsk3)).answer(hexBytes(kVehicle3));
  }

  CabLine line{z21};
  CabState state;
  std::vector<FunctionMask> told;
  Z21Cab cab{line, state, {.stateArrived = [this](FunctionMask mask) { told.push_back(mask); }}};
};

TEST_F(Z21CabTest, ReadsTheVehiclesState) {
  socket.expect(hexBytes(kAsk3)).answer(hexBytes(kVehicle3));
  const auto mask = cab.readState();
  EXPECT_EQ(mask, FunctionMask{1U | 1U << 1 | 1U << 5 | 1U << 13 | 1U << 28});
  EXPECT_EQ(state.steps, 128);
  EXPECT_EQ(state.speed, 64);
  EXPECT_FALSE(state.backward);
  EXPECT_TRUE(told.empty());
}

TEST_F(Z21CabTest, AsksForALongAddressWithItsMark) {
  state.address = 1000;
  socket.expect(hexBytes("09 00 40 00 E3 F0 C3 E8 20"))
      .answer(hexBytes("15 00 40 00 EF C3 E8 02 07 00 00 00 00 00 00 00 00 00 00 00 00"));
  EXPECT_EQ(cab.readState(), FunctionMask{0});
  EXPECT_EQ(state.steps, 28);
  EXPECT_EQ(state.speed, 32);
  EXPECT_TRUE(state.backward);
}

TEST_F(Z21CabTest, ASilentStationFailsTheReadingAfterTheTimeOut) {
  socket.expect(hexBytes(kAsk3));
  state.speed = 17;
  const Millis time = timeOf([&] { EXPECT_EQ(cab.readState(), std::nullopt); });
  EXPECT_GE(time, 2000);
  EXPECT_LE(time, 3200);
  EXPECT_EQ(state.speed, 17);
}

TEST_F(Z21CabTest, AnAnswerThatIsCutShortFailsTheReading) {
  socket.expect(hexBytes(kAsk3)).answer(hexBytes("15 00 40 00 EF 00 03 04 C0 11 01"));
  EXPECT_EQ(cab.readState(), std::nullopt);
}

TEST_F(Z21CabTest, AnAnswerForAnotherVehicleFailsTheReading) {
  socket.expect(hexBytes(kAsk3))
      .answer(hexBytes("15 00 40 00 EF 00 04 04 C0 11 01 01 80 00 00 00 00 00 00 00 00"));
  EXPECT_EQ(cab.readState(), std::nullopt);
  EXPECT_EQ(state.speed, 0);
}

TEST_F(Z21CabTest, WhatCameUnaskedIsNotTakenForTheAnswer) {
  udp.arrive(hexBytes("15 00 40 00 EF 00 03 04 81 00 00 00 00 00 00 00 00 00 00 00 00"));
  udp.arrive(hexBytes("07 00 40 00 61 01 60"));
  socket.expect(hexBytes(kAsk3)).answer(hexBytes(kVehicle3));
  EXPECT_TRUE(cab.readState());
  EXPECT_EQ(state.speed, 64);
}

TEST_F(Z21CabTest, SendsTheSpeedWithTheDirection) {
  struct Row {
    int steps, speed;
    bool backward;
    const char* bytes;
  };
  const std::vector<Row> rows{
      {128, 64, false, "0A 00 40 00 E4 13 00 03 C0 76"},
      {128, 64, true, "0A 00 40 00 E4 13 00 03 40 01"},
      {128, 127, false, "0A 00 40 00 E4 13 00 03 FE 06"},
  };
  for (const Row& row : rows) {
    state.steps = row.steps;
    state.speed = row.speed;
    state.backward = row.backward;
    expectCommand(row.bytes);
    cab.sendSpeed();
  }
  EXPECT_EQ(told.size(), rows.size());
}

TEST_F(Z21CabTest, TheStepCodeIsThatOfTheVehicle) {
  EXPECT_EQ(z21::driveText(1000, 28, 14, false), "0A 00 40 00 E4 12 C3 E8 8E 77 ");
  EXPECT_EQ(z21::driveText(127, 14, 7, true), "0A 00 40 00 E4 10 00 7F 07 73 ");
  EXPECT_EQ(z21::driveText(128, 128, 0, false), "0A 00 40 00 E4 13 C0 80 80 75 ");
}

TEST_F(Z21CabTest, TheArrowsSendSpeedAndDirection) {
  state.speed = 64;
  state.backward = true;
  expectCommand("0A 00 40 00 E4 13 00 03 40 01");
  cab.sendDirection();
  EXPECT_FALSE(state.backward) << "the station's word counts";
}

TEST_F(Z21CabTest, SwitchesFunctions) {
  state.funcOn[0] = true;
  expectCommand("0A 00 40 00 E4 F8 00 03 40 7D");
  cab.sendFunction(0);
  state.funcOn[0] = false;
  expectCommand("0A 00 40 00 E4 F8 00 03 00 79");
  cab.sendFunction(0);
  state.funcOn[28] = false;
  expectCommand("0A 00 40 00 E4 F8 00 03 1C 0B");
  cab.sendFunction(28);
  EXPECT_EQ(z21::functionText(1000, 28, true), "0A 00 40 00 E4 F8 C3 E8 5C 01 ");
}

TEST_F(Z21CabTest, StopsAndGoes) {
  state.stopped = true;
  expectCommand("06 00 40 00 80 0A");
  cab.sendStopped();
  state.stopped = false;
  expectCommand("07 00 40 00 21 81 29");
  cab.sendStopped();
}

TEST_F(Z21CabTest, WithoutSpeedAFunctionOutsideZeroTo28IsStopOrGo) {
  state.stopped = true;
  expectCommand("06 00 40 00 80 0A");
  cab.sendZ21(3, -1, 29, false);
  expectCommand("06 00 40 00 80 0A");
  cab.sendZ21(3, -1, -1, false);
}

TEST_F(Z21CabTest, APollTellsWhatHasChanged) {
  socket.expect(hexBytes(kAsk3)).answer(hexBytes(kVehicle3));
  cab.tick();
  EXPECT_EQ(told, (std::vector<FunctionMask>{1U | 1U << 1 | 1U << 5 | 1U << 13 | 1U << 28}));
  EXPECT_EQ(state.speed, 64);
}

TEST_F(Z21CabTest, ALostReplyTurnsEveryLampOffUntilTheNextGoodOne) {
  socket.expect(hexBytes(kAsk3));
  const Millis time = timeOf([&] { cab.tick(); });
  EXPECT_EQ(told, std::vector<FunctionMask>{0});
  EXPECT_LE(time, 500) << "the next poll is due";
}

TEST_F(Z21CabTest, AReplyForAnotherVehicleChangesNothing) {
  socket.expect(hexBytes(kAsk3))
      .answer(hexBytes("15 00 40 00 EF 00 04 04 C0 11 01 01 80 00 00 00 00 00 00 00 00"));
  cab.tick();
  EXPECT_TRUE(told.empty());
  EXPECT_EQ(state.speed, 0);
}

TEST_F(Z21CabTest, APollGivesWayToACommandAtOnce) {
  int other = 0;
  Millis sentAt = 0;
  socket.expect(hexBytes(kAsk3));
  clock.schedule(30, [&] { line.exchange(&other, 0, [&] { sentAt = clock.now(); }); });
  const Millis start = clock.now();
  line.background(&cab, [&] { cab.tick(); });
  EXPECT_EQ(sentAt - start, 30);
  EXPECT_TRUE(told.empty()) << "nothing is known yet";
}

TEST_F(Z21CabTest, ALostReplyDoesNotHoldUpTheNextCommand) {
  int other = 0;
  Millis sentAt = 0;
  state.speed = 64;
  socket.expect(hexBytes("0A 00 40 00 E4 13 00 03 C0 76"));
  socket.expect(hexBytes(kAsk3));
  clock.schedule(400, [&] { line.exchange(&other, 0, [&] { sentAt = clock.now(); }); });
  const Millis start = clock.now();
  line.exchange(&cab, 0, [&] { cab.sendSpeed(); });
  EXPECT_EQ(sentAt - start, 400);
}

TEST_F(Z21CabTest, AStopGetsInsideAReadingThatWaits) {
  state.stopped = true;
  socket.expect(hexBytes(kAsk3)).answer(hexBytes(kVehicle3), 500);
  socket.expect(hexBytes("06 00 40 00 80 0A"));
  clock.schedule(250, [&] { line.urgent([&] { cab.sendStopped(); }); });
  std::optional<FunctionMask> mask;
  line.exchange(&cab, 0, [&] { mask = cab.readState(); });
  EXPECT_TRUE(mask) << "the reading still gets its answer";
}

class Z21PanelTest : public Z21CabTest {
 protected:
  Z21PanelTest() { unit.address = 5; }

  PanelState unit;
  std::unique_ptr<PanelProtocol> panel = makeZ21Panel(line, unit);
};

TEST_F(Z21PanelTest, ReadsFourOutputs) {
  socket.expect(hexBytes("08 00 40 00 43 00 04 0F")).answer(hexBytes("09 00 40 00 43 00 04 02 45"));
  socket.expect(hexBytes("08 00 40 00 43 00 05 0E")).answer(hexBytes("09 00 40 00 43 00 05 01 47"));
  socket.expect(hexBytes("08 00 40 00 43 00 06 0D")).answer(hexBytes("09 00 40 00 43 00 06 00 45"));
  socket.expect(hexBytes("08 00 40 00 43 00 07 0C")).answer(hexBytes("09 00 40 00 43 00 07 02 46"));
  EXPECT_EQ(panel->readState(), quint8{0b01000001});
}

TEST_F(Z21PanelTest, AnOutputWithoutAnAnswerFailsTheReading) {
  socket.expect(hexBytes("08 00 40 00 43 00 04 0F")).answer(hexBytes("09 00 40 00 43 00 04 02 45"));
  socket.expect(hexBytes("08 00 40 00 43 00 05 0E"));
  EXPECT_EQ(panel->readState(), std::nullopt);
}

TEST_F(Z21PanelTest, OnIs168AndOffIs169) {
  unit.outOn[0] = true;
  socket.expect(hexBytes("09 00 40 00 53 00 04 A8 56"));
  panel->sendOutput(0);
  unit.outOn[2] = false;
  socket.expect(hexBytes("09 00 40 00 53 00 06 A9 55"));
  panel->sendOutput(2);
}

TEST_F(Z21PanelTest, AUnitWithoutAddressesIsNeitherReadNorSwitched) {
  const auto before = socket.sent.size();
  settings.makerForm = true;
  unit.address = 513;
  EXPECT_EQ(panel->readState(), std::nullopt);
  panel->sendOutput(0);
  EXPECT_EQ(socket.sent.size(), before);
}

TEST_F(Z21PanelTest, AddressesHaveTwoBytes) {
  unit.address = 300;
  unit.outOn[0] = true;
  socket.expect(hexBytes("09 00 40 00 53 01 2B A8 23"));
  panel->sendOutput(0);
  EXPECT_EQ(z21::outputQuestion(299), "08 00 40 00 43 01 2B 7A ");
}

}  // namespace
}  // namespace lokari
