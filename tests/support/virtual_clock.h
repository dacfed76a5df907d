// Virtual time: it stands still until somebody waits, and then jumps to the next scheduled event.
#pragma once

#include <map>

#include "base/clock.h"

namespace lokari::test {

class VirtualClock final : public Clock {
 public:
  Millis now() const override { return now_; }
  QDateTime localTime() const override;

  /// Waiting without a deadline while nothing is scheduled would never end; it throws
  /// std::logic_error, so that the test fails instead of hanging.
  bool waitUntil(const std::function<bool()>& done, Millis deadline) override;
  void pump() override;
  std::unique_ptr<Alarm> after(Millis delay, std::function<void()> action) override;

  /// Like after(), for actions that nobody cancels, such as a key press in the middle of a wait.
  void schedule(Millis delay, std::function<void()> action);

  /// Lets time pass: everything due within `span` runs.
  void advance(Millis span);

 private:
  struct Key {
    Millis at;
    quint64 order;  // events of one moment run in the order of their making
    bool operator<(const Key& other) const {
      return at != other.at ? at < other.at : order < other.order;
    }
  };
  class VirtualAlarm;

  Key add(Millis delay, std::function<void()> action);
  bool runNext(Millis latest);

  Millis now_ = 0;
  quint64 made_ = 0;
  std::shared_ptr<std::map<Key, std::function<void()>>> events_ =
      std::make_shared<std::map<Key, std::function<void()>>>();
};

}  // namespace lokari::test
