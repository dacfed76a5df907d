#include "cab/intellibox_codec.h"

#include <gtest/gtest.h>

#include <array>

namespace lokari::ibx {
namespace {

QByteArray fromHex(const char* text) {
  return QByteArray::fromHex(text);
}

TEST(IntelliboxCabCodec, AnAddressIsItsTwoBytes) {
  EXPECT_EQ(drive(3), fromHex("80 03 00"));
  EXPECT_EQ(drive(127), fromHex("80 7F 00"));
  EXPECT_EQ(drive(128), fromHex("80 80 00"));
  EXPECT_EQ(drive(1000), fromHex("80 E8 03"));
  EXPECT_EQ(drive(10239), fromHex("80 FF 27"));
  EXPECT_FALSE(drive(10240));
  EXPECT_FALSE(drive(-1));
  EXPECT_EQ(askDrive(1000), fromHex("84 E8 03"));
  EXPECT_EQ(askFunctions(1000), fromHex("8C E8 03"));
  EXPECT_EQ(switchFunctions(1000, 0x41), fromHex("88 E8 03 41"));
}

TEST(IntelliboxCabCodec, TheFlagsTellDirectionAndLight) {
  EXPECT_EQ(driveFlags(true, false), 64);
  EXPECT_EQ(driveFlags(false, false), 96);
  EXPECT_EQ(driveFlags(true, true), 80);
  EXPECT_EQ(driveFlags(false, true), 112);
}

TEST(IntelliboxCabCodec, StopAndGoAreOneByte) {
  EXPECT_EQ(stop(), fromHex("A5"));
  EXPECT_EQ(go(), fromHex("A7"));
}

TEST(IntelliboxCabCodec, AVehiclesSpeedIsTakenAsItIs) {
  for (int speed = 0; speed <= 127; ++speed) {
    const auto reply = driveReply(fromHex("00") + static_cast<char>(speed) + fromHex("20 00"));
    ASSERT_TRUE(reply);
    EXPECT_EQ(reply->speed, speed);
  }
  EXPECT_EQ(driveReply(fromHex("00 FF 20 00"))->speed, 127);
}

TEST(IntelliboxCabCodec, AVehiclesFlagsTellDirectionLightAndF1ToF4) {
  const auto forward = driveReply(fromHex("00 25 35 1B"));
  ASSERT_TRUE(forward);
  EXPECT_FALSE(forward->backward);
  EXPECT_EQ(forward->functions, 0b0'1011U) << "F0 F1 F3";
  const auto backward = driveReply(fromHex("00 25 CA 00"));
  ASSERT_TRUE(backward);
  EXPECT_TRUE(backward->backward);
  EXPECT_EQ(backward->functions, 0b1'0100U) << "F2 F4";
}

TEST(IntelliboxCabCodec, ARefusedOrShortReplyIsNothing) {
  for (const char* reply : {"", "00", "00 25 35", "01 25 35 00", "02"}) {
    EXPECT_FALSE(driveReply(fromHex(reply))) << reply;
  }
  for (const char* reply : {"", "00", "02", "0A 05"}) {
    EXPECT_FALSE(functionReply(fromHex(reply))) << reply;
    EXPECT_FALSE(outputReply(fromHex(reply), 3)) << reply;
  }
}

TEST(IntelliboxCabCodec, FunctionsAreSevenBits) {
  EXPECT_EQ(functionReply(fromHex("00 05")), 0b1010U) << "F1 F3";
  EXPECT_EQ(functionReply(fromHex("00 FF")), 0b1111'1110U);
}

TEST(IntelliboxCabCodec, TwoUnitsShareAGroupOfOutputs) {
  const std::array<std::pair<int, const char*>, 6> rows{
      {{1, "95 01"}, {2, "95 01"}, {3, "95 02"}, {4, "95 02"}, {509, "95 FF"}, {510, "95 FF"}}};
  for (const auto& [address, message] : rows) {
    EXPECT_EQ(askOutputs(address), fromHex(message)) << address;
  }
  EXPECT_FALSE(askOutputs(511));
  EXPECT_FALSE(askOutputs(0));
}

TEST(IntelliboxCabCodec, AnOddUnitHasTheLowNibbleAnEvenOneTheHigh) {
  EXPECT_EQ(outputReply(fromHex("00 A6"), 3), 0x69) << "off, on, on, off";
  EXPECT_EQ(outputReply(fromHex("00 A6"), 4), 0x99) << "off, on, off, on";
  EXPECT_EQ(outputReply(fromHex("00 0F"), 3), 0xAA);
  EXPECT_EQ(outputReply(fromHex("00 0F"), 4), 0x55);
}

TEST(IntelliboxCabCodec, OutputsAreSwitchedByTheirNumber) {
  EXPECT_EQ(switchOutput(3), fromHex("90 09 00"));
  EXPECT_EQ(switchOutput(3, 0, true), fromHex("90 09 C0"));
  EXPECT_EQ(switchOutput(3, 2, true), fromHex("90 0B C0"));
  EXPECT_EQ(switchOutput(3, 2, false), fromHex("90 0B 40"));
  EXPECT_EQ(switchOutput(64, 3, true), fromHex("90 00 C1"));
  EXPECT_EQ(switchOutput(100, 0, true), fromHex("90 8D C1"));
  EXPECT_EQ(switchOutput(100, 0, false), fromHex("90 8D 41"));
  EXPECT_EQ(switchOutput(510, 3, true), fromHex("90 F8 C7"));
}

}  // namespace
}  // namespace lokari::ibx
