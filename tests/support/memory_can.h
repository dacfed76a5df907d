// CAN drivers without hardware: messages are put in by hand.
#pragma once

#include <QList>

#include <deque>
#include <functional>
#include <set>

#include "link/can_driver.h"

namespace lokari::test {

class MemoryCan final : public CanDriver {
 public:
  bool isPresent(int driver) const override { return present.count(driver) > 0; }
  int open(const CanOpenCall& call) override;
  int close() override;
  int write(const CanMessage& message) override;
  int read(CanMessage& message) override;

  /// A message arrives, now.
  void arrive(const CanMessage& message) { waiting_.push_back(message); }

  std::set<int> present{1, 2, 3, 4, 5, 6, 7, 8, 9};
  int openResult = 0;   ///< what open() gives
  int writeResult = 0;  ///< what write() gives
  bool isOpen = false;
  QList<CanOpenCall> openCalls;
  int closeCalls = 0;
  QList<CanMessage> sent;                          ///< every message written
  std::function<void(const CanMessage&)> onWrite;  ///< may be empty

 private:
  std::deque<CanMessage> waiting_;
};

}  // namespace lokari::test
