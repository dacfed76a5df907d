// A cab on the MX1 and the MX1ULF with the Zimo binary protocol.
#include "cab/cab_line.h"
#include "cab/cab_table.h"
#include "link/link_error.h"
#include "zimo_script.h"

namespace lokari {
namespace {

using test::fromHex;

class Mx1BinCabTest : public test::ZimoScript {
 protected:
  explicit Mx1BinCabTest(StationKind kind = StationKind::Mx1Bin) : ZimoScript(kind) {
    state.address = 3;
  }

  std::optional<FunctionMask> readState() { return cab->readState(); }

  /// Vehicle 3 with 128 steps at step 40 forward and F0, F1, F3 and F9 on.
  void loadVehicle3() {
    expectPayload("08 00 03").answer(reply("08 00 00 03 28 1C 05 01"));
    ASSERT_EQ(readState(), 0x20BU);
  }
  /// The confirmed send of a driving command.
  void expectDrive(const char* payload) { expectPayload(payload).answer(reply("03 00")); }

  CabLine cabLine{link};
  CabState state;
  std::unique_ptr<CabProtocol> cab =
      makeCabProtocol(ProtocolFamily::ZimoBinary, cabLine, state, CabHooks{});
};

class Mx1UlfCabTest : public Mx1BinCabTest {
 protected:
  Mx1UlfCabTest() : Mx1BinCabTest(StationKind::Mx1Ulf) {}
};

// -- reading

TEST_F(Mx1BinCabTest, TheQuestionAndTheDriveAreFramed) {
  line.expect(fromHex("0101 00 1030 08 00 03 36 17"))
      .answer(fromHex("0101 07 50 08 00 00 00 03 28 1C 05 1021 C5 17"));
  EXPECT_EQ(readState(), 0x20BU);
  state.speed = 127;
  line.expect(fromHex("0101 1021 1030 03 00 03 7E 1C 05 1021 BE 17")).answer(reply("03 00"));
  cab->sendSpeed();
}

TEST_F(Mx1BinCabTest, ReadsSpeedStepsDirectionManualAndFunctions) {
  expectPayload("08 00 03").answer(reply("08 00 00 03 07 B8 81 0F"));
  EXPECT_EQ(readState(), 0x1F03U);  // F0, F1, F8, F9 to F12
  EXPECT_EQ(state.steps, 28);
  EXPECT_EQ(state.speed, 32);
  EXPECT_TRUE(state.backward);
  EXPECT_TRUE(state.manual);
  EXPECT_EQ(state.locoCmd, fromHex("03 00 03 07 B8 81 0F"));
}

TEST_F(Mx1BinCabTest, WhatWaitsBeforeAQuestionOrACommandIsNoAnswerToIt) {
  line.arrive(reply("08 00 00 03 7E 1C 05 01"));
  loadVehicle3();
  EXPECT_EQ(state.speed, 40);
  line.arrive(reply("03 00"));
  state.speed = 127;
  expectPayload("03 00 03 7E 1C 05 01").answer(reply("03 04"));
  expectPayload("03 00 03 7E 1C 05 01").answer(reply("03 00"));
  cab->sendSpeed();
  EXPECT_EQ(prompt.beeps, 0);
}

TEST_F(Mx1BinCabTest, OnlyFourBitsOfTheLastByteAreFunctions) {
  expectPayload("08 00 03").answer(reply("08 00 00 03 00 0C 00 F8"));
  EXPECT_EQ(readState(), 0x1000U);
}

TEST_F(Mx1BinCabTest, AnAnswerOfSevenBytesTellsNothingOfF9AndAbove) {
  expectPayload("08 00 03").answer(reply("08 00 00 03 28 1C 05"));
  EXPECT_EQ(readState(), 0x0BU);
  EXPECT_EQ(state.locoCmd, fromHex("03 00 03 28 1C 05"));
  state.funcOn[9] = true;
  expectDrive("03 00 03 28 1C 05");
  cab->sendFunction(9);
}

TEST_F(Mx1BinCabTest, WithEightFunctionsTheCommandEndsBehindF8AndAPatchOfF9GoesNowhere) {
  settings.zimoFunctionCount = 8;
  loadVehicle3();
  EXPECT_EQ(state.locoCmd, fromHex("03 00 03 28 1C 05"));
  state.funcOn[9] = true;
  expectDrive("03 00 03 28 1C 05");
  cab->sendFunction(9);
}

TEST_F(Mx1BinCabTest, AMarkedLongAddressGoesOutWith80InItsHighByte) {
  state.address = 1000;
  expectPayload("08 03 E8").answer(reply("08 00 C3 E8 00 0C 00 00"));
  EXPECT_EQ(readState(), 0U);
  EXPECT_EQ(state.locoCmd, fromHex("03 83 E8 00 0C 00 00"));
}

TEST_F(Mx1BinCabTest, AnUnmarkedLongAddressStaysAsItIs) {
  state.address = 1000;
  expectPayload("08 03 E8").answer(reply("08 00 03 E8 00 0C 00 00"));
  EXPECT_EQ(readState(), 0U);
  EXPECT_EQ(state.locoCmd, fromHex("03 03 E8 00 0C 00 00"));
}

TEST_F(Mx1BinCabTest, BusyAnswersAreAskedAgainATenthOfASecondLater) {
  for (int i = 0; i < 4; ++i) expectPayload("08 00 03").answer(reply("08 04"));
  expectPayload("08 00 03").answer(reply("08 00 00 03 28 1C 05 01"));
  EXPECT_EQ(timeOf([&] { EXPECT_EQ(readState(), 0x20BU); }), 4 * 110 + 10);
}

TEST_F(Mx1BinCabTest, FiveBusyAnswersAreAFailedReadingThatDrivesNothing) {
  for (int i = 0; i < 5; ++i) expectPayload("08 00 03").answer(reply("08 04"));
  EXPECT_EQ(readState(), std::nullopt);
  EXPECT_EQ(state.locoCmd, fromHex("08 00 03 00 00 00 00"));
}

TEST_F(Mx1BinCabTest, OtherAnswersDoNotCountAsBusyOnesAndDropTheInput) {
  for (int i = 0; i < 4; ++i) expectPayload("08 00 03").answer(reply("08 04"));
  for (const char* other : {"08 00 00 03 28 1C", "02 00", "08 05", "08 00 00 05 28 1C 05 01"}) {
    expectPayload("08 00 03").answer(reply(other) + "noise");
  }
  expectPayload("08 00 03").answer(reply("08 00 00 03 28 1C 05 01"));
  EXPECT_EQ(timeOf([&] { EXPECT_EQ(readState(), 0x20BU); }), 4 * 110 + 4 * 510 + 10);
}

TEST_F(Mx1BinCabTest, NonsenseForEverEndsAfterTwentyExchanges) {
  for (int i = 0; i < 20; ++i) expectPayload("08 00 03").answer(fromHex("A5 5A 3F 00 FE 17 2A"));
  EXPECT_EQ(readState(), std::nullopt);
  EXPECT_EQ(line.writes.size(), 20);
}

TEST_F(Mx1BinCabTest, BusyAndOtherAnswersTogetherEndAfterTwentyExchanges) {
  for (int i = 0; i < 20; ++i)
    expectPayload("08 00 03").answer(reply(i % 5 == 4 ? "08 04" : "07 00"));
  EXPECT_EQ(readState(), std::nullopt);
  EXPECT_EQ(line.writes.size(), 20);
}

TEST_F(Mx1BinCabTest, SilenceEndsTheReadingAtOnce) {
  expectPayload("08 00 03");
  EXPECT_EQ(timeOf([&] { EXPECT_EQ(readState(), std::nullopt); }), 31000);
}

TEST_F(Mx1BinCabTest, ACancelEndsTheReading) {
  expectPayload("08 00 03").then([&] { link.cancelRequested = true; }, 200);
  EXPECT_EQ(timeOf([&] { EXPECT_EQ(readState(), std::nullopt); }), 700);
}

TEST_F(Mx1BinCabTest, AVanishedPortEndsTheReadingAndEverySendTellsIt) {
  expectPayload("08 00 03").then([&] { line.vanish(); }, 200);
  EXPECT_THROW(readState(), LinkError);
  EXPECT_LT(clock.now(), 2000);
  EXPECT_THROW(cab->sendSpeed(), LinkError);
  state.stopped = true;
  EXPECT_THROW(cab->sendStopped(), LinkError);
  EXPECT_EQ(prompt.beeps, 0);
}

TEST_F(Mx1BinCabTest, AfterTheOptionsNameAnotherFamilyNothingIsSentAnyMore) {
  loadVehicle3();
  settings.baseUnit = StationKind::Ibx;
  cab->sendSpeed();
  cab->sendStopped();
  EXPECT_EQ(readState(), std::nullopt);
  EXPECT_EQ(line.writes.size(), 1);
}

TEST_F(Mx1UlfCabTest, TheReadingOpensWithTrackPowerAndDoesNotJudgeTheAnswer) {
  for (const char* answer : {"02 00", "02 04", "08 05"}) {
    expectPayload("02 02").answer(reply(answer), 50);
    expectPayload("08 00 03").answer(reply("08 00 00 03 28 1C 05 01"));
    EXPECT_EQ(timeOf([&] { EXPECT_EQ(readState(), 0x20BU); }), 110) << answer;
  }
}

TEST_F(Mx1UlfCabTest, ReadingAgainDoesNotUndoAStopThatCameInBetween) {
  expectPayload("02 02").answer(reply("02 00"));
  expectPayload("08 00 03");
  // The reading meets the answer to the stop in place of its own, and both are asked again.
  expectPayload("02 00").answer(reply("02 00"), 100);
  expectPayload("02 00").answer(reply("02 00"), 100);
  for (int i = 0; i < 5; ++i) expectPayload("08 00 03").answer(reply("08 04"));
  expectPayload("08 00 03").answer(reply("08 00 00 03 28 1C 05 01"));
  clock.schedule(5000, [&] { cabLine.urgent([&] { state.stopped = true, cab->sendStopped(); }); });
  cabLine.exchange(this, 0, [&] {
    EXPECT_EQ(readState(), std::nullopt);
    EXPECT_EQ(readState(), 0x20BU);
  });
}

// -- sending

TEST_F(Mx1BinCabTest, SpeedIsPatchedAndSentInTheVehiclesSteps) {
  loadVehicle3();
  for (int speed = 0; speed <= 127; ++speed) {
    state.speed = speed;
    QByteArray payload = fromHex("03 00 03 00 1C 05 01");
    payload[3] = static_cast<char>(speed == 127 ? 126 : speed);
    expectPayload(payload).answer(reply("03 00"));
    cab->sendSpeed();
  }
}

TEST_F(Mx1BinCabTest, DirectionManualAndLightAreBitsOfTheFlags) {
  loadVehicle3();
  state.backward = true;
  expectDrive("03 00 03 28 3C 05 01");
  cab->sendDirection();
  state.manual = true;
  expectDrive("03 00 03 28 BC 05 01");
  cab->sendManual();
  state.funcOn[0] = false;
  expectDrive("03 00 03 28 AC 05 01");
  cab->sendFunction(0);
  state.backward = false;
  expectDrive("03 00 03 28 8C 05 01");
  cab->sendDirection();
  state.manual = false;
  expectDrive("03 00 03 28 0C 05 01");
  cab->sendManual();
  state.funcOn[0] = true;
  expectDrive("03 00 03 28 1C 05 01");
  cab->sendFunction(0);
}

TEST_F(Mx1BinCabTest, EachFunctionIsItsOwnBit) {
  const char* const on[] = {"01 00", "02 00", "04 00", "08 00", "10 00", "20 00",
                            "40 00", "80 00", "00 01", "00 02", "00 04", "00 08"};
  expectPayload("08 00 03").answer(reply("08 00 00 03 00 0C 00 00"));
  readState();
  for (int n = 1; n <= 12; ++n) {
    state.funcOn[static_cast<size_t>(n)] = true;
    expectDrive((std::string("03 00 03 00 0C ") + on[n - 1]).c_str());
    cab->sendFunction(n);
    state.funcOn[static_cast<size_t>(n)] = false;
    expectDrive("03 00 03 00 0C 00 00");
    cab->sendFunction(n);
  }
  for (int n = 16; n <= 28; ++n) cab->sendFunction(n);
}

TEST_F(Mx1BinCabTest, ADriveIsRepeatedUntilItIsConfirmedAndBeepsAfterFiveTries) {
  loadVehicle3();
  for (int i = 0; i < 5; ++i) expectPayload("03 00 03 28 1C 05 01").answer(reply("03 04"));
  cab->sendSpeed();
  EXPECT_EQ(prompt.beeps, 1);
}

TEST_F(Mx1BinCabTest, StopAndGoAreConfirmedLikeADrive) {
  state.stopped = true;
  expectPayload("02 00").answer(reply("02 04"));
  expectPayload("02 00").answer(reply("02 00"));
  cabLine.urgent([&] { cab->sendStopped(); });
  state.stopped = false;
  expectPayload("02 02").answer(reply("02 34"));
  cabLine.urgent([&] { cab->sendStopped(); });
  EXPECT_EQ(line.inBufferCount(), 0);
}

TEST_F(Mx1BinCabTest, AStopDuringASilentSpeedIsOnTheWireAtOnceAndConfirmedAfterIt) {
  loadVehicle3();
  const Millis start = clock.now();
  expectPayload("03 00 03 28 1C 05 01");
  expectPayload("02 00").answer(reply("03 00") + reply("02 00"), 700);
  clock.schedule(500, [&] { cabLine.urgent([&] { state.stopped = true, cab->sendStopped(); }); });
  cabLine.exchange(this, 0, [&] { cab->sendSpeed(); });
  EXPECT_EQ(line.writes.back().at, start + 500);
  EXPECT_EQ(clock.now(), start + 1200);
  EXPECT_EQ(line.inBufferCount(), 0);
  EXPECT_EQ(prompt.beeps, 0);
}

TEST_F(Mx1BinCabTest, AGoThatWaitsIsNotRepeatedAfterAStop) {
  expectPayload("02 02").answer(reply("02 04"), 200);
  expectPayload("02 00").answer(reply("02 00"), 200);
  state.stopped = false;
  clock.schedule(100, [&] { cabLine.urgent([&] { state.stopped = true, cab->sendStopped(); }); });
  cabLine.urgent([&] { cab->sendStopped(); });
  EXPECT_EQ(line.writes.size(), 2);
  EXPECT_EQ(line.inBufferCount(), 0);
}

TEST_F(Mx1BinCabTest, ACabThatIsGoneLeavesTheConfirmationOfItsStopToTheNextMessage) {
  loadVehicle3();
  CabState other = state;
  auto leaving = makeCabProtocol(ProtocolFamily::ZimoBinary, cabLine, other, CabHooks{});
  expectPayload("02 00").answer(reply("02 00"), 50);
  cabLine.exchange(this, 0, [&] {
    other.stopped = true;
    leaving->sendStopped();
    leaving.reset();
  });
  EXPECT_EQ(line.inBufferCount(), 0);
  expectDrive("03 00 03 28 1C 05 01");
  cab->sendSpeed();
  EXPECT_EQ(line.inBufferCount(), 0);
}

}  // namespace
}  // namespace lokari
