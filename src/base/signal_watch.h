// Ctrl-C and its relatives, brought into the event loop.
#pragma once

#include <QSocketNotifier>

#include <functional>
#include <memory>

namespace lokari {

/// While it lives, SIGINT, SIGTERM and SIGHUP call `action` from the event loop instead of ending
/// the process. There may be one at a time.
class SignalWatch {
 public:
  /// With `patience`, in seconds, a signal that the event loop has not heard by then ends the
  /// process as if nobody watched, and so does a second one meanwhile. Without, it is waited for.
  explicit SignalWatch(std::function<void()> action, unsigned patience = 0);
  ~SignalWatch();
  SignalWatch(const SignalWatch&) = delete;
  SignalWatch& operator=(const SignalWatch&) = delete;

 private:
  static void heard();

  std::function<void()> action_;
  std::unique_ptr<QSocketNotifier> notifier_;
};

}  // namespace lokari
