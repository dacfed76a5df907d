#include "link/message_gate.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

namespace lokari {
namespace {

TEST(MessageGateTest, WhatIsWantedBetweenMessagesRunsNowOrBehindTheOneThatGoesOut) {
  MessageGate gate;
  std::string log;
  gate.betweenMessages([&] { log += "now "; });
  gate.sendWhole([&] {
    log += "first ";
    gate.betweenMessages([&] { log += "behind "; });
    gate.sendWhole([&] { log += "part "; });
    log += "last ";
  });
  EXPECT_EQ(log, "now first part last behind ");
}

TEST(MessageGateTest, WhatWaitedForAMessageThatFailedRunsAllTheSame) {
  MessageGate gate;
  std::string log;
  EXPECT_THROW(gate.sendWhole([&] {
    gate.betweenMessages([&] { log += "behind "; });
    throw std::runtime_error("gone");
  }),
               std::runtime_error);
  gate.sendWhole([&] { log += "next "; });
  EXPECT_EQ(log, "behind next ");
}

}  // namespace
}  // namespace lokari
