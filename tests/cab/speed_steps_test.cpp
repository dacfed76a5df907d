#include "cab/speed_steps.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

namespace lokari {
namespace {

TEST(SpeedSteps, AStationValueBecomesABarPosition) {
  EXPECT_EQ(barPosition(0, 128), 0);
  EXPECT_EQ(barPosition(1, 128), 1);
  EXPECT_EQ(barPosition(126, 128), 126);
  EXPECT_EQ(barPosition(127, 128), 127);
  EXPECT_EQ(barPosition(1, 28), 5);
  EXPECT_EQ(barPosition(7, 28), 32);
  EXPECT_EQ(barPosition(27, 28), 124);
  EXPECT_EQ(barPosition(28, 28), 127);
  EXPECT_EQ(barPosition(1, 27), 5);
  EXPECT_EQ(barPosition(27, 27), 127);
  EXPECT_EQ(barPosition(1, 14), 10);
  EXPECT_EQ(barPosition(7, 14), 64);
  EXPECT_EQ(barPosition(14, 14), 127);
}

TEST(SpeedSteps, TheFractionIsRaisedByJustBelowOne) {
  for (const int steps : {14, 27, 28, 128}) {
    for (int value = 0; value <= 255; ++value) {
      const int told = std::min(127, static_cast<int>(std::floor(128.0 * value / steps + 0.999)));
      EXPECT_EQ(barPosition(value, steps), told) << value << " of " << steps;
    }
  }
}

TEST(SpeedSteps, ABarPositionBecomesAStationValue) {
  EXPECT_EQ(stationSteps(0, 128), 0);
  EXPECT_EQ(stationSteps(127, 128), 127);
  EXPECT_EQ(stationSteps(127, 28), 27);
  EXPECT_EQ(stationSteps(64, 28), 14);
  EXPECT_EQ(stationSteps(4, 28), 0);
  EXPECT_EQ(stationSteps(5, 28), 1);
  EXPECT_EQ(stationSteps(127, 27), 26);
  EXPECT_EQ(stationSteps(127, 14), 13);
}

TEST(SpeedSteps, EveryBarPositionIsRoundedDown) {
  for (const int steps : {14, 27, 28, 128}) {
    for (int speed = 0; speed <= 127; ++speed) {
      const int told = static_cast<int>(std::floor(steps * (speed / 128.0)));
      EXPECT_EQ(stationSteps(speed, steps), told) << speed << " with " << steps;
      EXPECT_EQ(cutStationSteps(speed, steps), std::min(told, 126)) << speed << " with " << steps;
    }
  }
}

TEST(SpeedSteps, TheHighestSpeedIsCutTo126) {
  EXPECT_EQ(cutStationSteps(127, 128), 126);
  EXPECT_EQ(cutStationSteps(126, 128), 126);
  EXPECT_EQ(cutStationSteps(125, 128), 125);
}

}  // namespace
}  // namespace lokari
