#include "base/signal_watch.h"

#include <gtest/gtest.h>

#include <csignal>

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

}  // namespace
}  // namespace lokari
