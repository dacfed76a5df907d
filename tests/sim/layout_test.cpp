#include "sim/layout.h"

#include <gtest/gtest.h>

namespace lokari::sim {
namespace {

TEST(SimLayout, EmptyTracksAnswerWithNobody) {
  Layout layout;
  EXPECT_EQ(layout.onProgrammingTrack(), nullptr);
  EXPECT_EQ(layout.onMainTrack(3), nullptr);
}

TEST(SimLayout, AVehicleOnTheSidingIsOnBothTracks) {
  Layout layout;
  layout.add({}).decoder.setAddress(3);
  EXPECT_EQ(layout.onProgrammingTrack(), layout.onMainTrack(3));
  EXPECT_NE(layout.onMainTrack(3), nullptr);
}

TEST(SimLayout, AReprogrammedVehicleAnswersToItsNewAddress) {
  Layout layout;
  layout.add({}).decoder.setAddress(3);
  layout.onProgrammingTrack()->write(1, 5);
  EXPECT_EQ(layout.onMainTrack(3), nullptr);
  EXPECT_NE(layout.onMainTrack(5), nullptr);
}

}  // namespace
}  // namespace lokari::sim
