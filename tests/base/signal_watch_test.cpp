#include "base/signal_watch.h"

#include <gtest/gtest.h>

#include <csignal>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

#include "base/qt_clock.h"

namespace lokari {
namespace {

TEST(SignalWatch, BringsEachSignalIntoTheEventLoop) {
  QtClock clock;
  int calls = 0;
  const SignalWatch watch([&] { ++calls; });
  for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
    const int before = calls;
    std::raise(signal);
    EXPECT_EQ(calls, before) << "called from inside the signal";
    EXPECT_TRUE(clock.waitUntil([&] { return calls > before; }, clock.now() + 20000));
  }
}

TEST(SignalWatch, MayBeFollowedByAnother) {
  QtClock clock;
  {
    const SignalWatch first([] {});
  }
  bool called = false;
  const SignalWatch second([&] { called = true; });
  std::raise(SIGINT);
  EXPECT_TRUE(clock.waitUntil([&] { return called; }, clock.now() + 20000));
}

/// What becomes of a program that never comes to its event loop, behind these signals.
int endOf(unsigned patience, const std::vector<int>& raised) {
  const pid_t child = ::fork();
  if (child == 0) {
    const SignalWatch watch([] {}, patience);
    for (const int signal : raised) std::raise(signal);
    for (;;) ::pause();
  }
  int state = 0;
  EXPECT_EQ(::waitpid(child, &state, 0), child);
  return WIFSIGNALED(state) ? WTERMSIG(state) : 0;
}

TEST(SignalWatch, ASignalThatNobodyHearsEndsTheProcessAllTheSame) {
  EXPECT_EQ(endOf(1, {SIGTERM}), SIGTERM);
}

TEST(SignalWatch, ASecondSignalDoesNotWait) {
  EXPECT_EQ(endOf(1000000, {SIGINT, SIGTERM}), SIGINT);
}

TEST(SignalWatch, WhatWasHeardEndsNothing) {
  QtClock clock;
  int calls = 0;
  const SignalWatch watch([&] { ++calls; }, 1000000);
  for (int each = 1; each <= 3; ++each) {
    std::raise(SIGINT);
    EXPECT_TRUE(clock.waitUntil([&] { return calls == each; }, clock.now() + 20000));
  }
  EXPECT_EQ(::alarm(0), 0U) << "no alarm is left";
}

}  // namespace
}  // namespace lokari
