// Messages that have come in and wait to be read.
#pragma once

#include <deque>

#include "link/can_code.h"
#include "link/can_driver.h"

namespace lokari {

/// Holds the last 1000 messages: an open session may leave a talking bus unread for hours.
class CanQueue {
 public:
  void put(const CanMessage& message) {
    if (waiting_.size() == kMost) waiting_.pop_front();
    waiting_.push_back(message);
  }

  /// 0, or can_code::kNoMessage.
  int take(CanMessage& message) {
    if (waiting_.empty()) return can_code::kNoMessage;
    message = waiting_.front();
    waiting_.pop_front();
    return 0;
  }

  void clear() { waiting_.clear(); }

 private:
  static constexpr size_t kMost = 1000;

  std::deque<CanMessage> waiting_;
};

}  // namespace lokari
