#include <gtest/gtest.h>

#include "base/qt_clock.h"
#include "support/virtual_clock.h"

namespace lokari {
namespace {

TEST(VirtualClock, JumpsToTheDeadlineWhenNothingHappens) {
  test::VirtualClock clock;
  EXPECT_FALSE(clock.waitUntil([] { return false; }, 60'000));
  EXPECT_EQ(clock.now(), 60'000);
}

TEST(VirtualClock, EndsAWaitAtTheEventThatFulfilsIt) {
  test::VirtualClock clock;
  bool there = false;
  clock.schedule(250, [&] { there = true; });
  EXPECT_TRUE(clock.waitUntil([&] { return there; }, 1000));
  EXPECT_EQ(clock.now(), 250);
}

TEST(VirtualClock, RunsEventsOfOneMomentInTheirOrder) {
  test::VirtualClock clock;
  QString order;
  clock.schedule(5, [&] { order += u'a'; });
  clock.schedule(5, [&] { order += u'b'; });
  clock.schedule(1, [&] { order += u'c'; });
  clock.advance(5);
  EXPECT_EQ(order, QStringLiteral("cab"));
}

TEST(VirtualClock, AnAlarmThatIsGoneDoesNotRing) {
  test::VirtualClock clock;
  bool rang = false;
  {
    const auto alarm = clock.after(5, [&] { rang = true; });
  }
  clock.advance(10);
  EXPECT_FALSE(rang);
}

TEST(VirtualClock, RefusesToWaitForEver) {
  test::VirtualClock clock;
  EXPECT_THROW(clock.waitUntil([] { return false; }, Clock::kNever), std::logic_error);
}

TEST(QtClock, WakesOnTheAlarmBeforeTheDeadline) {
  QtClock clock;
  bool rang = false;
  const auto alarm = clock.after(1, [&] { rang = true; });
  EXPECT_TRUE(clock.waitUntil([&] { return rang; }, clock.now() + 60'000));
}

TEST(QtClock, NoticesAStateThatChangesWithoutAnEvent) {
  QtClock clock;
  int asked = 0;
  EXPECT_TRUE(clock.waitUntil([&] { return ++asked == 3; }, clock.now() + 60'000));
}

TEST(QtClock, GivesUpAtTheDeadline) {
  QtClock clock;
  const Millis deadline = clock.now() + 5;
  EXPECT_FALSE(clock.waitUntil([] { return false; }, deadline));
  EXPECT_GE(clock.now(), deadline);
}

}  // namespace
}  // namespace lokari
