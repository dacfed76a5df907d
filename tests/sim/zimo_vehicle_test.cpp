#include "sim/zimo_vehicle.h"

#include <gtest/gtest.h>

namespace lokari::sim {
namespace {

TEST(ZimoVehicle, EachFlagAndFunctionHasItsBit) {
  const ZimoVehicle vehicle = zimoVehicleFrom(
      {.speed = 7, .steps = 28, .backward = true, .manual = true, .functions = 0x1103});
  EXPECT_EQ(vehicle.speed, 7);
  EXPECT_EQ(vehicle.flags, 0x80 | 0x20 | 0x10 | 0x08);
  EXPECT_EQ(vehicle.low, 0x81);
  EXPECT_EQ(vehicle.high, 0x08);
}

TEST(ZimoVehicle, WhatIsDrivenIsWhatIsTold) {
  for (const int steps : {14, 28, 128}) {
    for (int speed = 0; speed <= steps; ++speed) {
      const DriveState state{.speed = speed,
                             .steps = steps,
                             .backward = speed % 2 == 1,
                             .manual = speed % 3 == 0,
                             .functions = static_cast<quint32>(speed * 77) & 0x1FFFU};
      EXPECT_EQ(driveStateFrom(zimoVehicleFrom(state)), state);
    }
  }
}

TEST(ZimoVehicle, FlagsWithoutAStepModeMean128AndASpeedBeyondTheStepsIsCut) {
  EXPECT_EQ(driveStateFrom({.speed = 200, .flags = 0x00}).steps, 128);
  EXPECT_EQ(driveStateFrom({.speed = 200, .flags = 0x00}).speed, 128);
  EXPECT_EQ(driveStateFrom({.speed = 20, .flags = 0x04}).speed, 14);
}

TEST(ZimoVehicle, AnOutputIsAPairOfBits) {
  Layout layout;
  EXPECT_EQ(zimoOutputs(layout, 5), 0x55);
  EXPECT_TRUE(switchZimoOutput(layout, 5, 0x09));
  EXPECT_TRUE(switchZimoOutput(layout, 5, 0x0F));
  EXPECT_TRUE(layout.output(17));
  EXPECT_TRUE(layout.output(20));
  EXPECT_EQ(zimoOutputs(layout, 5), 0x96);
  EXPECT_TRUE(switchZimoOutput(layout, 5, 0x08));
  EXPECT_EQ(zimoOutputs(layout, 5), 0x95);
  EXPECT_EQ(zimoOutputs(layout, 4), 0x55);
}

TEST(ZimoVehicle, OtherValuesSwitchNothing) {
  Layout layout;
  for (const int value : {0, 7, 16, 255}) EXPECT_FALSE(switchZimoOutput(layout, 5, value));
  EXPECT_EQ(zimoOutputs(layout, 5), 0x55);
}

}  // namespace
}  // namespace lokari::sim
