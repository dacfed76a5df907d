// A cab on the MX1 with the text protocol: what it asks, what it makes of the answer, what it
// sends.
#include "cab/cab_line.h"
#include "cab/cab_table.h"
#include "link/link_error.h"
#include "support/link_fixture.h"

namespace lokari {
namespace {

class Mx1TextCabTest : public test::LinkFixture {
 protected:
  explicit Mx1TextCabTest(StationKind kind = StationKind::Mx1) : LinkFixture(kind) {
    line.open({});
    state.address = 3;
  }

  std::optional<FunctionMask> readState() { return cab->readState(); }

  /// Vehicle 3 with 128 steps at step 40 forward and F0, F1 and F3 on.
  void loadVehicle3() {
    line.expect("AFN03\r").answer("AFN03281C050000\r");
    ASSERT_EQ(readState(), 0x0BU);
  }
  /// Vehicle 1000 by index 129.
  void loadVehicle1000() {
    state.address = 1000;
    line.expect("E03E8\r").answer("E8103E8\r");
    line.expect("AFN81\r").answer("E8103E800\rAFN81000C000000\r");
    ASSERT_EQ(readState(), 0U);
  }

  CabLine cabLine{link};
  CabState state;
  std::unique_ptr<CabProtocol> cab =
      makeCabProtocol(ProtocolFamily::Mx1Text, cabLine, state, CabHooks{});
};

class Mx1V25CabTest : public Mx1TextCabTest {
 protected:
  Mx1V25CabTest() : Mx1TextCabTest(StationKind::Mx1V25) {}
};

// -- reading

TEST_F(Mx1TextCabTest, ReadsSpeedStepsDirectionManualAndFunctions) {
  line.expect("AFN03\r").answer("AFN0307B8810000\r");
  EXPECT_EQ(readState(), 0x103U);  // F0, F1, F8
  EXPECT_EQ(state.steps, 28);
  EXPECT_EQ(state.speed, 32);
  EXPECT_TRUE(state.backward);
  EXPECT_TRUE(state.manual);
  EXPECT_FALSE(state.addrIndexed);
  EXPECT_EQ(state.locoCmd, "FN0307B88100\r");
}

TEST_F(Mx1TextCabTest, WhatWaitsBeforeTheQuestionIsNoAnswerToIt) {
  for (const char* stray : {"AFN07111C050000\r", "AFN03111C050000\r", "??\r", "x"}) {
    line.arrive(stray);
    line.expect("AFN03\r").answer("AFN03281C050000\r");
    EXPECT_EQ(readState(), 0x0BU) << stray;
    EXPECT_EQ(state.speed, 40) << stray;
  }
}

TEST_F(Mx1TextCabTest, WhatWaitsBeforeACommandIsNotTakenForItsIndex) {
  loadVehicle1000();
  line.arrive("E8103E8");
  line.expect(state.locoCmd).answer("E8103E800\r");
  cab->sendDirection();
  EXPECT_EQ(line.inBufferCount(), 0);
}

TEST_F(Mx1TextCabTest, TheStepsAreThoseOfTheFlagByteAnd128Otherwise) {
  const QList<std::pair<const char*, int>> rows{{"04", 14}, {"08", 28}, {"0C", 128}, {"00", 128}};
  for (const auto& [flags, steps] : rows) {
    line.expect("AFN03\r").answer(QByteArray("AFN0300") + flags + "000000\r");
    EXPECT_TRUE(readState().has_value());
    EXPECT_EQ(state.steps, steps) << flags;
  }
}

TEST_F(Mx1TextCabTest, AHighAddressBelow128HasTwoDigitsOfItsOwn) {
  state.address = 127;
  line.expect("AFN7F\r").answer("AFN7F000C000000\r");
  EXPECT_TRUE(readState().has_value());
  EXPECT_EQ(line.writes.size(), 1);
}

TEST_F(Mx1TextCabTest, TheOlderStationTellsNothingOfF9AndAbove) {
  line.expect("AFN03\r").answer("AFN03000C000F000F\r");
  EXPECT_EQ(readState(), 0U);
}

TEST_F(Mx1V25CabTest, TheNewerStationTellsF9ToF12AtTheEndOfALongerAnswer) {
  line.expect("AFN03\r").answer("AFN03000C010F0005\r");
  EXPECT_EQ(readState(), 0xA02U);  // F1, F9, F11
  EXPECT_EQ(state.locoCmd, "FN03000C010F\r");
}

TEST_F(Mx1V25CabTest, AnAnswerOfTheUsualLengthWillDoForTheNewerStation) {
  line.expect("AFN03\r").answer("AFN03000C010F00\r");
  EXPECT_EQ(readState(), 2U);
}

TEST_F(Mx1V25CabTest, ALongerAnswerMayArriveByteByByte) {
  line.expect("AFN03\r");
  for (const char c : QByteArray("AFN03000C010F0005\r")) line.answer(QByteArray(1, c), 4);
  EXPECT_EQ(readState(), 0xA02U);
  EXPECT_EQ(line.inBufferCount(), 0);
}

TEST_F(Mx1TextCabTest, WithEightFunctionsTheOlderStationsCommandEndsBehindF8) {
  settings.zimoFunctionCount = 8;
  line.expect("AFN03\r").answer("AFN03281C050000\r");
  EXPECT_EQ(readState(), 0x0BU);
  EXPECT_EQ(state.locoCmd, "FN03281C05\r");
}

TEST_F(Mx1V25CabTest, WithEightFunctionsTheNewerStationsCommandStaysLong) {
  settings.zimoFunctionCount = 8;
  line.expect("AFN03\r").answer("AFN03281C050000\r");
  EXPECT_TRUE(readState().has_value());
  EXPECT_EQ(state.locoCmd, "FN03281C0500\r");
}

TEST_F(Mx1TextCabTest, AnAddressAbove127GoesByItsIndex) {
  loadVehicle1000();
  EXPECT_TRUE(state.addrIndexed);
  EXPECT_EQ(state.locoCmd, "FN81000C0000\r");
  EXPECT_EQ(line.inBufferCount(), 0);
}

TEST_F(Mx1V25CabTest, AnIndexedAnswerOf28CharactersKeepsItsLast18) {
  state.address = 1000;
  line.expect("E03E8\r").answer("E8103E8\r");
  line.expect("AFN81\r").answer("E8103E800\rAFN810A0C00000003\r");
  EXPECT_EQ(readState(), 0x600U);
  EXPECT_EQ(state.speed, 10);
}

TEST_F(Mx1TextCabTest, AnIndexedAnswerWithoutTheIndexLineIsTooShort) {
  state.address = 1000;
  line.expect("E03E8\r").answer("E8103E8\r");
  line.expect("AFN81\r").answer("AFN81000C000000\r");
  EXPECT_EQ(readState(), std::nullopt);
}

TEST_F(Mx1TextCabTest, WithoutAnIndexNothingIsReadAndNothingIsDriven) {
  state.address = 1000;
  line.expect("E03E8\r").answer("E0003E8\r");
  EXPECT_EQ(readState(), std::nullopt);
  cab->sendSpeed();
  cab->sendFunction(0);
  EXPECT_EQ(line.writes.size(), 1);
}

// -- failed readings

TEST_F(Mx1TextCabTest, SilenceIsAFailedReadingAndLeavesTheDefaultCommand) {
  line.expect("AFN03\r");
  EXPECT_EQ(timeOf([&] { EXPECT_EQ(readState(), std::nullopt); }), 3000);
  EXPECT_EQ(state.locoCmd, "FN03000400\r");
  EXPECT_EQ(state.steps, 14);
  EXPECT_EQ(state.speed, 0);
}

TEST_F(Mx1TextCabTest, AnyOtherLengthIsAFailedReading) {
  const QByteArray whole("AFN03281C0500000000\r");
  for (qsizetype size = 0; size <= whole.size(); ++size) {
    line.expect("AFN03\r").answer(whole.left(size));
    EXPECT_EQ(readState().has_value(), size == 16 || size == 18) << size;
    EXPECT_EQ(line.inBufferCount(), 0) << size;
  }
}

TEST_F(Mx1TextCabTest, NoDigitsWhereDigitsBelongIsAFailedReading) {
  for (const char* answer : {"AFN03xx1C050000\r", "AFN0328xx050000\r", "AFN03281Cxx0000\r",
                             "E23456789ABCDE\r\r", "????????????????"}) {
    line.expect("AFN03\r").answer(answer);
    EXPECT_EQ(readState(), std::nullopt) << answer;
    EXPECT_EQ(state.locoCmd, "FN03000400\r") << answer;
  }
}

TEST_F(Mx1TextCabTest, ALateAnswerForAnotherVehicleIsAFailedReading) {
  line.expect("AFN03\r").answer("AFN05281C050000\r");
  EXPECT_EQ(readState(), std::nullopt);
  EXPECT_EQ(state.locoCmd, "FN03000400\r");
}

TEST_F(Mx1TextCabTest, ACancelledWaitIsAFailedReading) {
  line.expect("AFN03\r").then([&] { link.cancelRequested = true; }, 100);
  EXPECT_EQ(timeOf([&] { EXPECT_EQ(readState(), std::nullopt); }), 100);
}

TEST_F(Mx1TextCabTest, AVanishedPortIsToldByTheReadingAndByEverySend) {
  line.expect("AFN03\r").then([&] { line.vanish(); }, 100);
  EXPECT_THROW(readState(), LinkError);
  EXPECT_THROW(cab->sendSpeed(), LinkError);
  EXPECT_THROW(cab->sendStopped(), LinkError);
}

// -- sending

TEST_F(Mx1TextCabTest, SpeedIsPatchedAndSentInTheVehiclesSteps) {
  loadVehicle3();
  for (int speed = 0; speed <= 127; ++speed) {
    state.speed = speed;
    const int step = speed == 127 ? 126 : speed;
    line.expect("FN03" + QByteArray::number(step, 16).toUpper().rightJustified(2, '0') +
                "1C0500\r");
    cab->sendSpeed();
  }
}

TEST_F(Mx1TextCabTest, SpeedInOtherStepModesIsRoundedDown) {
  line.expect("AFN03\r").answer("AFN030008000000\r");
  readState();
  state.speed = 127;
  line.expect("FN031B080000\r");
  cab->sendSpeed();
  line.expect("AFN03\r").answer("AFN030004000000\r");
  readState();
  state.speed = 64;
  line.expect(
      "FN030704"
      "0000\r");
  cab->sendSpeed();
}

TEST_F(Mx1TextCabTest, DirectionManualAndLightAreBitsOfTheFlags) {
  loadVehicle3();
  state.backward = true;
  line.expect("FN03283C0500\r");
  cab->sendDirection();
  state.manual = true;
  line.expect("FN0328BC0500\r");
  cab->sendManual();
  state.funcOn[0] = false;
  line.expect("FN0328AC0500\r");
  cab->sendFunction(0);
  state.backward = false;
  line.expect("FN03288C0500\r");
  cab->sendDirection();
  state.manual = false;
  line.expect("FN03280C0500\r");
  cab->sendManual();
  state.funcOn[0] = true;
  line.expect("FN03281C0500\r");
  cab->sendFunction(0);
}

TEST_F(Mx1TextCabTest, EachFunctionIsItsOwnBit) {
  const char* const on[] = {"0100", "0200", "0400", "0800", "1000", "2000",
                            "4000", "8000", "0001", "0002", "0004", "0008"};
  line.expect("AFN03\r").answer("AFN03000C000000\r");
  readState();
  for (int n = 1; n <= 12; ++n) {
    state.funcOn[static_cast<size_t>(n)] = true;
    line.expect(QByteArray("FN03000C") + on[n - 1] + "\r");
    cab->sendFunction(n);
    state.funcOn[static_cast<size_t>(n)] = false;
    line.expect("FN03000C0000\r");
    cab->sendFunction(n);
  }
}

TEST_F(Mx1TextCabTest, FunctionsBeyondTheCommandSendNothing) {
  loadVehicle3();
  for (int n = 16; n <= 28; ++n) cab->sendFunction(n);
  EXPECT_EQ(line.writes.size(), 1);
}

TEST_F(Mx1TextCabTest, WithEightFunctionsAPatchOfF9GoesNowhere) {
  settings.zimoFunctionCount = 8;
  loadVehicle3();
  state.funcOn[9] = true;
  line.expect("FN03281C05\r");
  cab->sendFunction(9);
  EXPECT_EQ(state.locoCmd, "FN03281C05\r");
}

TEST_F(Mx1TextCabTest, TheDefaultCommandDrivesInFourteenSteps) {
  line.expect("AFN03\r");
  readState();
  state.speed = 127;
  line.expect("FN030D0400\r");
  cab->sendSpeed();
  state.funcOn[9] = true;
  line.expect("FN030D0400\r");
  cab->sendFunction(9);
}

TEST_F(Mx1TextCabTest, AShortAddressAwaitsNoAnswer) {
  loadVehicle3();
  line.expect("FN03281C0500\r");
  EXPECT_EQ(timeOf([&] {
              state.speed = 40;
              EXPECT_TRUE(cab->sendSpeed());
            }),
            0);
}

TEST_F(Mx1TextCabTest, AnIndexedVehiclesTenCharactersAreReadAndDropped) {
  loadVehicle1000();
  state.speed = 10;
  line.expect("FN810A0C0000\r").answer("E8103E800\r", 60);
  EXPECT_EQ(timeOf([&] { EXPECT_TRUE(cab->sendSpeed()); }), 60);
  EXPECT_EQ(line.inBufferCount(), 0);
  line.expect("FN810A0C0000\r");
  EXPECT_GT(timeOf([&] { EXPECT_FALSE(cab->sendSpeed()); }), 2000);
}

TEST_F(Mx1TextCabTest, StopAndGoAreLinesOfTheirOwn) {
  state.stopped = true;
  line.expect("SS\r");
  cab->sendStopped();
  state.stopped = false;
  line.expect("SE\r");
  cab->sendStopped();
  EXPECT_EQ(clock.now(), 0);
}

TEST_F(Mx1TextCabTest, AStopDuringASilentReadingIsOnTheWireAtOnceAndTheReadingGoesOn) {
  line.expect("AFN03\r");
  line.expect("SS\r").answer("AFN03281C050000\r", 900);
  clock.schedule(500, [&] {
    cabLine.urgent([&] {
      state.stopped = true;
      cab->sendStopped();
    });
  });
  cabLine.exchange(this, 0, [&] { EXPECT_EQ(readState(), 0x0BU); });
  EXPECT_EQ(line.writes.at(1).at, 500);
  EXPECT_EQ(clock.now(), 1400);
}

TEST_F(Mx1TextCabTest, AStopDuringTheWaitForAnIndexLineLeavesItToTheSpeed) {
  loadVehicle1000();
  const Millis start = clock.now();
  line.expect("FN81000C0000\r");
  line.expect("SS\r").answer("E8103E800\r", 100);
  clock.schedule(50, [&] { cabLine.urgent([&] { state.stopped = true, cab->sendStopped(); }); });
  cabLine.exchange(this, 0, [&] { cab->sendSpeed(); });
  EXPECT_EQ(line.writes.back().at, start + 50);
  EXPECT_EQ(clock.now(), start + 150);
  EXPECT_EQ(line.inBufferCount(), 0);
}

}  // namespace
}  // namespace lokari
