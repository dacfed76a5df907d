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
  explicit SignalWatch(std::function<void()> action);
  ~SignalWatch();
  SignalWatch(const SignalWatch&) = delete;
  SignalWatch& operator=(const SignalWatch&) = delete;

 private:
  std::function<void()> action_;
  std::unique_ptr<QSocketNotifier> notifier_;
};

}  // namespace lokari
