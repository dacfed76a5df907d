// Keeps messages whole: some go out byte by byte, with events between the bytes.
#pragma once

#include <deque>
#include <functional>

namespace lokari {

class MessageGate {
 public:
  /// Runs `write`, which puts one message on the wire. What came to betweenMessages() meanwhile
  /// runs right behind it, also behind a `write` that throws; such actions must not throw.
  void sendWhole(const std::function<void()>& write);
  /// Runs `action` now, or behind the message that is going out.
  void betweenMessages(std::function<void()> action);

 private:
  void runWaiting();

  bool sending_ = false;
  std::deque<std::function<void()>> waiting_;
};

}  // namespace lokari
