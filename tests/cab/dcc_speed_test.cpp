// The speed of DCC, by the bytes of its standard.
#include "cab/dcc_speed.h"

#include <gtest/gtest.h>

#include <set>

namespace lokari {
namespace {

TEST(DccSpeed, TheBarsEndsAreTheFirstAndTheLastStep) {
  struct Row {
    int steps;
    int first;
    int last;
  };
  for (const Row& row :
       {Row{14, 0x02, 0x0F}, Row{27, 0x02, 0x0F}, Row{28, 0x02, 0x1F}, Row{128, 0x02, 0x7F}}) {
    EXPECT_EQ(dccSpeedBits(0, row.steps), 0) << row.steps;
    EXPECT_EQ(dccSpeedBits(1, row.steps), row.first) << row.steps;
    EXPECT_EQ(dccSpeedBits(127, row.steps), row.last) << row.steps;
  }
}

TEST(DccSpeed, OfTwentyEightStepsTheLowestBitStandsApart) {
  constexpr int kBits[] = {0x02, 0x12, 0x03, 0x13, 0x04, 0x14, 0x05, 0x15, 0x06, 0x16,
                           0x07, 0x17, 0x08, 0x18, 0x09, 0x19, 0x0A, 0x1A, 0x0B, 0x1B,
                           0x0C, 0x1C, 0x0D, 0x1D, 0x0E, 0x1E, 0x0F, 0x1F};
  for (int step = 1; step <= 28; ++step) {
    EXPECT_EQ(dccSpeedBits(127 * step / 28, 28), kBits[step - 1]) << step;
  }
}

TEST(DccSpeed, TheBarNeverSendsTheEmergencyStopAndNeverSlowsDownOnItsWayUp) {
  for (const int steps : {14, 27, 28, 128}) {
    std::set<int> seen;
    int before = 0;
    for (int position = 0; position <= 127; ++position) {
      const int bits = dccSpeedBits(position, steps);
      EXPECT_NE(bits & 0x0F, steps == 128 ? 0x100 : 1) << position << " of " << steps;
      EXPECT_NE(bits, 1);
      seen.insert(bits);
      const int back = dccBarPosition(bits, steps);
      EXPECT_GE(back, before) << position << " of " << steps;
      before = back;
    }
    EXPECT_EQ(seen.size(), steps == 128 ? 127U : static_cast<size_t>(steps) + 1);
  }
}

TEST(DccSpeed, WhatAStationTellsIsSentAgainAsItIs) {
  for (const int steps : {14, 27, 28, 128}) {
    for (int position = 0; position <= 127; ++position) {
      const int bits = dccSpeedBits(position, steps);
      EXPECT_EQ(dccSpeedBits(dccBarPosition(bits | 0x80, steps), steps), bits) << steps;
    }
  }
}

TEST(DccSpeed, AnEmergencyStopStandsStill) {
  for (const int steps : {14, 27, 28, 128}) EXPECT_EQ(dccBarPosition(0x81, steps), 0) << steps;
  EXPECT_EQ(dccBarPosition(0x11, 28), 0);
  EXPECT_EQ(dccBarPosition(0x10, 28), 0);
}

}  // namespace
}  // namespace lokari
