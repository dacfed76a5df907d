// Time and waiting. Everything that pauses, waits or times out does it through a Clock, so that
// tests run in virtual time.
#pragma once

#include <QDateTime>

#include <functional>
#include <limits>
#include <memory>

namespace lokari {

/// Milliseconds.
using Millis = qint64;

class Clock {
 public:
  /// A pending after(); destroying it cancels the action.
  class Alarm {
   public:
    virtual ~Alarm() = default;
  };

  /// A deadline that never comes.
  static constexpr Millis kNever = std::numeric_limits<Millis>::max();

  virtual ~Clock() = default;

  /// Milliseconds on a clock that only goes forward; its origin is arbitrary.
  virtual Millis now() const = 0;

  /// Whole seconds of now(): time-outs of the link count these.
  qint64 wholeSeconds() const { return now() / 1000; }

  /// The local date and time, for log lines and reports.
  virtual QDateTime localTime() const = 0;

  /// Lets events run until `done` is true or now() reaches `deadline`. Gives the last answer of
  /// `done`. It is asked before the first event, after each one, and at least every 50 ms, since
  /// some states (a modem line, a vanished device) change without an event.
  virtual bool waitUntil(const std::function<bool()>& done, Millis deadline) = 0;

  /// Lets the events that are due run, without waiting.
  virtual void pump() = 0;

  /// Runs `action` once, `delay` from now, from the event loop. The caller keeps the alarm.
  [[nodiscard]] virtual std::unique_ptr<Alarm> after(Millis delay,
                                                     std::function<void()> action) = 0;
};

}  // namespace lokari
