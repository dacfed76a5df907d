#include "cab/lenz_codec.h"

#include <gtest/gtest.h>

#include <array>

#include "link/lenz_meaning.h"

namespace lokari::lenz {
namespace {

QByteArray fromHex(const char* text) {
  return QByteArray::fromHex(text);
}

// The speed bits of the steps in their order.
constexpr std::array kBits14{0x00, 0x02, 0x03, 0x04, 0x05, 0x06, 0x07,
                             0x08, 0x09, 0x0A, 0x0B, 0x0C, 0x0D, 0x0E};
constexpr std::array kBits28{0x00, 0x02, 0x12, 0x03, 0x13, 0x04, 0x14, 0x05, 0x15, 0x06,
                             0x16, 0x07, 0x17, 0x08, 0x18, 0x09, 0x19, 0x0A, 0x1A, 0x0B,
                             0x1B, 0x0C, 0x1C, 0x0D, 0x1D, 0x0E, 0x1E, 0x0F};

TEST(LenzCabCodec, EveryPositionOfTheBarHasItsBitsWith14Steps) {
  for (int position = 0; position <= 127; ++position) {
    EXPECT_EQ(speedBits(position, 14), kBits14.at(14 * position / 128)) << position;
  }
  EXPECT_EQ(speedBits(9, 14), 0x00);
  EXPECT_EQ(speedBits(10, 14), 0x02);
  EXPECT_EQ(speedBits(127, 14), 0x0E);
}

TEST(LenzCabCodec, EveryPositionOfTheBarHasItsBitsWith27And28Steps) {
  for (int position = 0; position <= 127; ++position) {
    EXPECT_EQ(speedBits(position, 28), kBits28.at(28 * position / 128)) << position;
    EXPECT_EQ(speedBits(position, 27), kBits28.at(27 * position / 128)) << position;
  }
  EXPECT_EQ(speedBits(127, 28), 0x0F);
  EXPECT_EQ(speedBits(127, 27), 0x1E);
}

TEST(LenzCabCodec, TheFirstOf28StepsGoesOutAs2AndTheSecondAs18) {
  EXPECT_EQ(speedBits(4, 28), 0);
  EXPECT_EQ(speedBits(5, 28), 2);
  EXPECT_EQ(speedBits(10, 28), 18);
}

TEST(LenzCabCodec, EveryPositionOfTheBarHasItsBitsWith128Steps) {
  EXPECT_EQ(speedBits(0, 128), 0);
  for (int position = 1; position <= 126; ++position) {
    EXPECT_EQ(speedBits(position, 128), position + 1);
  }
  EXPECT_EQ(speedBits(127, 128), 127) << "128 has no seven bits";
}

TEST(LenzCabCodec, BitsOfASpeedBecomeThePositionOfTheBar) {
  constexpr std::array kOf14{0, 10, 19, 28, 37, 46, 55, 64, 74, 83, 92, 101, 110, 119, 127};
  constexpr std::array kOf27{0,  5,  10, 15, 19, 24, 29, 34,  38,  43,  48,  53,  57,  62,
                             67, 72, 76, 81, 86, 91, 95, 100, 105, 110, 114, 119, 124, 127};
  constexpr std::array kOf28{0,  5,  10, 14, 19, 23, 28, 32,  37,  42,  46,  51,  55,  60, 64,
                             69, 74, 78, 83, 87, 92, 96, 101, 106, 110, 115, 119, 124, 127};
  for (size_t step = 1; step < kOf14.size(); ++step) {
    EXPECT_EQ(barPositionOf(static_cast<int>(step) + 1, 14), kOf14.at(step)) << step;
  }
  for (size_t step = 0; step < kBits28.size(); ++step) {
    EXPECT_EQ(barPositionOf(kBits28.at(step), 28), kOf28.at(step)) << step;
    EXPECT_EQ(barPositionOf(kBits28.at(step), 27), kOf27.at(step)) << step;
  }
  EXPECT_EQ(barPositionOf(0x1F, 28), 127);
  for (int bits = 1; bits <= 127; ++bits) EXPECT_EQ(barPositionOf(bits, 128), bits - 1);
}

TEST(LenzCabCodec, AnEmergencyStopReadsAsStandingStill) {
  for (const int steps : {14, 27, 28, 128}) EXPECT_EQ(barPositionOf(1, steps), 0) << steps;
  EXPECT_EQ(barPositionOf(0x11, 28), 0);
  EXPECT_EQ(barPositionOf(0x10, 28), 0);
}

TEST(LenzCabCodec, DirectionAndLightDoNotDisturbTheSpeed) {
  EXPECT_EQ(barPositionOf(0x80 | 0x25, 128), 36);
  EXPECT_EQ(barPositionOf(0x80 | 0x12, 28), 10);
  EXPECT_EQ(barPositionOf(0x60 | 0x03, 28), 14);
  EXPECT_EQ(barPositionOf(0xF0 | 0x05, 14), 37);
}

TEST(LenzCabCodec, APositionReadBackAndSentAgainIsTheSameSpeed) {
  for (const int steps : {14, 27, 28, 128}) {
    for (int position = 0; position <= 127; ++position) {
      const int bits = speedBits(position, steps);
      EXPECT_EQ(speedBits(barPositionOf(bits, steps), steps), bits) << position << " of " << steps;
    }
  }
}

TEST(LenzCabCodec, AsksForAVehicleByTwoBytesFromAddress100On) {
  EXPECT_EQ(askVehicle(3), fromHex("E3 00 00 03"));
  EXPECT_EQ(askVehicle(99), fromHex("E3 00 00 63"));
  EXPECT_EQ(askVehicle(100), fromHex("E3 00 C0 64"));
  EXPECT_EQ(askVehicle(1000), fromHex("E3 00 C3 E8"));
  EXPECT_EQ(askVehicle(10239), fromHex("E3 00 E7 FF"));
  EXPECT_FALSE(askVehicle(10240));
  EXPECT_FALSE(askVehicle(-1));
}

TEST(LenzCabCodec, TheFirstGenerationHasOneByteForTheAddress) {
  EXPECT_EQ(askVehicleByte(3), fromHex("A2 03 00"));
  EXPECT_EQ(askVehicleByte(255), fromHex("A2 FF 00"));
  EXPECT_FALSE(askVehicleByte(256));
  EXPECT_FALSE(askVehicleByte(-1));
}

TEST(LenzCabCodec, TheTemplatesOfAVehicle) {
  EXPECT_EQ(driveByte(3), fromHex("B3 03 00 00"));
  EXPECT_EQ(drive(3), fromHex("E4 12 00 03 00"));
  EXPECT_EQ(drive(1000), fromHex("E4 12 C3 E8 00"));
  EXPECT_EQ(driveByteOf(fromHex("84 03 63 0A 02 EC")), fromHex("B3 03 63 0A"));
}

TEST(LenzCabCodec, AVehiclesStateIsDecodedUnderEachHead) {
  for (const char* reply : {"E4 04 A5 13 05 53", "E5 04 A5 13 05 52", "84 04 A5 13 05 33",
                            "A4 04 A5 13 05 13", "E5 04 A5 13 05 11 43"}) {
    const auto state = vehicleState(fromHex(reply));
    ASSERT_TRUE(state) << reply;
    EXPECT_EQ(state->steps, 128);
    EXPECT_EQ(state->speed, 36);
    EXPECT_FALSE(state->backward);
    EXPECT_EQ(state->functions, 0b1010'0111U) << "F0 F1 F2 F5 F7";
  }
}

TEST(LenzCabCodec, TheModeOfAStateTellsTheSteps) {
  const std::array<std::pair<const char*, int>, 8> rows{
      {{"E4 00 00 00 00 E4", 14},
       {"E4 01 00 00 00 E5", 27},
       {"E4 02 00 00 00 E6", 28},
       {"E4 03 00 00 00 E7", 128},
       {"E4 04 00 00 00 E0", 128},
       {"E4 07 00 00 00 E3", 128},
       {"E4 0A 00 00 00 EE", 28},  // somebody else drives it
       {"E4 08 00 00 00 EC", 14}}};
  for (const auto& [reply, steps] : rows) {
    EXPECT_EQ(vehicleState(fromHex(reply))->steps, steps) << reply;
    EXPECT_TRUE(vehicleState(fromHex(reply))->backward) << reply;
  }
}

TEST(LenzCabCodec, AStateThatIsShortOrNoneIsNothing) {
  for (const char* reply : {"", "E4", "E4 04 A5 13 05", "E3 04 A5 13 05 54", "61 82 E3",
                            "63 14 1D 0E 64 00", "A5 5A 3F 00 FE 01"}) {
    EXPECT_FALSE(vehicleState(fromHex(reply))) << reply;
  }
}

TEST(LenzCabCodec, TheFirstGenerationsStateHasTheLightBesideTheSpeed) {
  const auto state = vehicleByteState(fromHex("84 03 63 0A 02 EC"), 3);
  ASSERT_TRUE(state);
  EXPECT_EQ(state->steps, 28);
  EXPECT_EQ(state->speed, 14) << "the third step";
  EXPECT_FALSE(state->backward);
  EXPECT_EQ(state->functions, 0b0101'0101U) << "F0 F2 F4 F6";
  EXPECT_TRUE(vehicleByteState(fromHex("A4 03 03 10 00 B4"), 3)->backward);
  EXPECT_EQ(vehicleByteState(fromHex("A4 03 03 10 00 B4"), 3)->functions, 1U);
}

TEST(LenzCabCodec, TheFirstGenerationKnowsTwoHeadsAndTheVehiclesOwnAddress) {
  for (const char* reply :
       {"E4 03 63 0A 02 8C", "E5 03 63 0A 02 8D", "84 04 63 0A 02 EB", "84 03 63 0A 02", ""}) {
    EXPECT_FALSE(vehicleByteState(fromHex(reply), 3)) << reply;
  }
}

TEST(LenzCabCodec, TheStepCodesAre10To13) {
  EXPECT_EQ(stepCode(14), 0x10);
  EXPECT_EQ(stepCode(27), 0x11);
  EXPECT_EQ(stepCode(28), 0x12);
  EXPECT_EQ(stepCode(128), 0x13);
}

TEST(LenzCabCodec, OutputsAreAskedAndSwitchedByTheirGroup) {
  EXPECT_EQ(askOutputs(4, 0), fromHex("42 03 80"));
  EXPECT_EQ(askOutputs(4, 1), fromHex("42 03 81"));
  EXPECT_EQ(askOutputs(256, 0), fromHex("42 FF 80"));
  EXPECT_FALSE(askOutputs(257, 0));
  EXPECT_FALSE(askOutputs(0, 0));
  EXPECT_EQ(switchOutput(4), fromHex("52 03 80"));
  EXPECT_EQ(outputByte(0, false), 0x88);
  EXPECT_EQ(outputByte(0, true), 0x89);
  EXPECT_EQ(outputByte(3, false), 0x8E);
  EXPECT_EQ(outputByte(3, true), 0x8F);
  EXPECT_EQ(outputState(fromHex("42 03 06 47")), 6);
  EXPECT_FALSE(outputState(fromHex("42 03 06")));
  EXPECT_FALSE(outputState(fromHex("61 82 E3 00")));
}

TEST(LenzCabCodec, ConfirmationsAndNewsAheadOfAReplyArePassedOver) {
  EXPECT_EQ(withoutNews(fromHex("01 04 05 61 00 61 61 01 60 81 00 81 E4 04"), false),
            fromHex("E4 04"));
  EXPECT_EQ(withoutNews(fromHex("61 82 E3"), false), fromHex("61 82 E3"));
  EXPECT_EQ(withoutNews(fromHex("01 04 04 E4"), false), fromHex("01 04 04 E4"));
  EXPECT_EQ(withoutNews(fromHex("61 00"), false), fromHex("61 00"));
  EXPECT_EQ(withoutNews({}, false), QByteArray());
  EXPECT_EQ(withoutNews(fromHex("FF FE 01 04 05 FF FE E4 04"), true), fromHex("FF FE E4 04"));
  EXPECT_EQ(withoutNews(fromHex("01 04 05 FF FE E4"), true), fromHex("01 04 05 FF FE E4"));
}

}  // namespace
}  // namespace lokari::lenz
