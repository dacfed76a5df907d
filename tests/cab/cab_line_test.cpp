#include "cab/cab_line.h"

#include <gtest/gtest.h>

#include <string>

#include "link/station_link.h"
#include "support/memory_can.h"
#include "support/memory_line.h"
#include "support/memory_socket.h"
#include "support/scripted_prompt.h"
#include "support/virtual_clock.h"

namespace lokari {
namespace {

class CabLineTest : public ::testing::Test {
 protected:
  std::function<void()> note(const std::string& text) {
    return [this, text] { log += text + ' '; };
  }

  test::VirtualClock clock;
  Settings settings;
  test::ScriptedPrompt prompt;
  test::MemoryLine serial{clock};
  test::MemorySocket socket{clock};
  test::MemoryCan can;
  StationLink link{settings, clock, prompt, Transports{serial, socket, can}};
  CabLine line{link};
  std::string log;
  int one = 0;
  int two = 0;
};

TEST_F(CabLineTest, AnExchangeOnAnIdleLineRunsAtOnce) {
  line.exchange(&one, 1, note("a"));
  EXPECT_EQ(log, "a ");
  EXPECT_FALSE(line.isBusy());
}

TEST_F(CabLineTest, AnExchangeInsideAnotherRunsAfterIt) {
  line.exchange(&one, 1, [this] {
    line.exchange(&two, 1, note("inner"));
    EXPECT_TRUE(line.isBusy());
    log += "outer ";
  });
  EXPECT_EQ(log, "outer inner ");
  EXPECT_FALSE(line.isBusy());
}

TEST_F(CabLineTest, ANewerExchangeOfTheSameNamesTakesThePlaceOfTheOneThatWaits) {
  line.exchange(&one, 1, [this] {
    line.exchange(&one, 1, note("old"));
    line.exchange(&one, 2, note("other"));
    line.exchange(&two, 1, note("neighbour"));
    line.exchange(&one, 1, note("new"));
  });
  EXPECT_EQ(log, "new other neighbour ");
}

TEST_F(CabLineTest, AnUrgentMessageGetsInsideAnExchangeThatWaits) {
  line.exchange(&one, 1, [this] {
    line.urgent(note("stop"));
    log += "outer ";
  });
  EXPECT_EQ(log, "stop outer ");
}

TEST_F(CabLineTest, AnUrgentMessageWaitsForTheEndOfTheMessageThatGoesOut) {
  line.exchange(&one, 1, [this] {
    line.send([this] {
      log += "first ";
      line.urgent(note("stop"));
      log += "last ";
    });
    log += "wait ";
  });
  EXPECT_EQ(log, "first last stop wait ");
}

TEST_F(CabLineTest, WhatWaitsForACabThatGoesIsForgotten) {
  line.exchange(&one, 1, [this] {
    line.exchange(&one, 2, note("gone"));
    line.exchange(&two, 2, note("stays"));
    line.forget(&one);
  });
  EXPECT_EQ(log, "stays ");
}

TEST_F(CabLineTest, PollsTakeTurnsAfterTheCommandsThatWait) {
  line.exchange(&one, 1, [this] {
    line.background(&two, note("poll2"));
    line.background(&one, note("poll1"));
    line.background(&two, note("poll2"));
    EXPECT_FALSE(line.commandWaits());
    line.exchange(&two, 1, note("command"));
    EXPECT_TRUE(line.commandWaits());
  });
  EXPECT_EQ(log, "command ");
  clock.pump();
  EXPECT_EQ(log, "command poll2 poll1 ");
}

TEST_F(CabLineTest, AnUrgentMessageKnowsWhetherAnExchangeWaitsAroundIt) {
  line.urgent([this] { EXPECT_FALSE(line.isNested()); });
  line.exchange(&one, 1, [this] {
    EXPECT_FALSE(line.isNested());
    line.urgent([this] { EXPECT_TRUE(line.isNested()); });
    EXPECT_FALSE(line.isNested());
  });
}

TEST_F(CabLineTest, AnExchangeThatThrowsLeavesTheLineIdle) {
  EXPECT_THROW(line.exchange(&one, 1, [] { throw std::runtime_error("gone"); }),
               std::runtime_error);
  EXPECT_FALSE(line.isBusy());
}

}  // namespace
}  // namespace lokari
