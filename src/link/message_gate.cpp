#include "link/message_gate.h"

#include <utility>

namespace lokari {

void MessageGate::sendWhole(const std::function<void()>& write) {
  if (sending_) {
    write();
    return;
  }
  sending_ = true;
  try {
    write();
  } catch (...) {
    // What waits meets the broken line itself, and can tell that it did not get out.
    runWaiting();
    throw;
  }
  runWaiting();
}

void MessageGate::runWaiting() {
  sending_ = false;
  while (!sending_ && !waiting_.empty()) {
    const auto next = std::move(waiting_.front());
    waiting_.pop_front();
    next();
  }
}

void MessageGate::betweenMessages(std::function<void()> action) {
  if (sending_) {
    waiting_.push_back(std::move(action));
  } else {
    action();
  }
}

}  // namespace lokari
