#include <gtest/gtest.h>

#include "sim/makers/dcc_speed.h"

namespace lokari::sim::makers {
namespace {

TEST(MakersDccSpeed, TwentyEightStepsHaveTheirLowestBitApart) {
  const QList<std::pair<int, int>> steps{{0x02, 1}, {0x12, 2}, {0x03, 3}, {0x1F, 28}};
  for (const auto& [byte, step] : steps) {
    EXPECT_EQ(dccSpeed(0x80 | byte, 28), (DccSpeed{.step = step})) << byte;
    EXPECT_EQ(dccSpeedByte({.speed = step, .steps = 28}), 0x80 | byte) << step;
  }
  for (int step = 1; step <= 28; ++step) {
    EXPECT_EQ(dccSpeed(dccSpeedByte({.speed = step, .steps = 28}), 28).step, step);
  }
}

TEST(MakersDccSpeed, TwentySevenStepsEndAt0F) {
  EXPECT_EQ(dccSpeed(0x8F, 27), (DccSpeed{.step = 27}));
  EXPECT_EQ(dccSpeedByte({.speed = 27, .steps = 27}), 0x8F);
  EXPECT_EQ(dccSpeedByte({.speed = 1, .steps = 27}), 0x82);
}

TEST(MakersDccSpeed, FourteenAndAHundredAndTwentyEightStepsBeginAtTwo) {
  EXPECT_EQ(dccSpeed(0x02, 14), (DccSpeed{.step = 1, .backward = true}));
  EXPECT_EQ(dccSpeed(0x8F, 14), (DccSpeed{.step = 14}));
  EXPECT_EQ(dccSpeed(0x82, 128), (DccSpeed{.step = 1}));
  EXPECT_EQ(dccSpeed(0x7F, 128), (DccSpeed{.step = 126, .backward = true}));
  EXPECT_EQ(dccSpeedByte({.speed = 126, .steps = 128}), 0xFF);
  EXPECT_EQ(dccSpeedByte({.speed = 14, .steps = 14, .backward = true}), 0x0F);
}

TEST(MakersDccSpeed, OneIsTheEmergencyStopAndNoughtIsNot) {
  for (const int steps : {14, 27, 28, 128}) {
    EXPECT_EQ(dccSpeed(0x81, steps), (DccSpeed{.emergencyStop = true})) << steps;
    EXPECT_EQ(dccSpeed(0x80, steps), DccSpeed()) << steps;
    EXPECT_EQ(dccSpeedByte({.steps = steps}), 0x80) << steps;
  }
}

}  // namespace
}  // namespace lokari::sim::makers
