#include "sim/faults.h"

#include <gtest/gtest.h>

namespace lokari::sim {
namespace {

TEST(SimFaults, AreReadFromText) {
  const auto fault = faultFromText(QStringLiteral("late:2:1500@3"));
  ASSERT_TRUE(fault);
  EXPECT_EQ(fault->kind, FaultKind::Late);
  EXPECT_EQ(fault->count, 2);
  EXPECT_EQ(fault->amount, 1500);
  EXPECT_EQ(fault->skip, 3);
}

TEST(SimFaults, StrikeOnceUnlessToldOtherwise) {
  const auto fault = faultFromText(QStringLiteral("noack"));
  ASSERT_TRUE(fault);
  EXPECT_EQ(fault->count, 1);
  EXPECT_FALSE(fault->amount);
  EXPECT_EQ(faultFromText(QStringLiteral("noack:immer"))->count, Fault::kAlways);
}

TEST(SimFaults, EveryKindHasItsName) {
  for (const char* name :
       {"silence", "late", "garbage", "short", "flip", "stray", "split", "unplugged", "busy",
        "shortcircuit", "nodecoder", "noack", "wrongvalue"}) {
    EXPECT_TRUE(faultFromText(QString::fromLatin1(name))) << name;
  }
}

TEST(SimFaults, ATextThatIsNoneIsRefused) {
  for (const char* text : {"", "laut", "late:x", "late:1:2:3", "late@", "late@1@2", "late:-1"}) {
    EXPECT_FALSE(faultFromText(QString::fromLatin1(text))) << text;
  }
}

TEST(SimFaults, AreUsedUp) {
  FaultPlan plan;
  plan.add({.kind = FaultKind::Busy, .count = 2});
  EXPECT_TRUE(plan.strike(FaultKind::Busy));
  EXPECT_FALSE(plan.strike(FaultKind::NoAck));
  EXPECT_TRUE(plan.strike(FaultKind::Busy));
  EXPECT_FALSE(plan.strike(FaultKind::Busy));
}

TEST(SimFaults, LetTheirFirstOccasionsPass) {
  FaultPlan plan;
  plan.add({.kind = FaultKind::Unplugged, .skip = 2});
  EXPECT_FALSE(plan.strike(FaultKind::Unplugged));
  EXPECT_FALSE(plan.strike(FaultKind::Unplugged));
  EXPECT_TRUE(plan.strike(FaultKind::Unplugged));
}

TEST(SimFaults, MayLastForEver) {
  FaultPlan plan;
  plan.add({.kind = FaultKind::NoAck, .count = Fault::kAlways});
  for (int i = 0; i < 100; ++i) EXPECT_TRUE(plan.strike(FaultKind::NoAck));
}

}  // namespace
}  // namespace lokari::sim
