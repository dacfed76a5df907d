#include "support/memory_can.h"

namespace lokari::test {

int MemoryCan::open(const CanOpenCall& call) {
  openCalls.append(call);
  isOpen = openResult == 0;
  return openResult;
}

int MemoryCan::close() {
  ++closeCalls;
  isOpen = false;
  waiting_.clear();
  return 0;
}

int MemoryCan::write(const CanMessage& message) {
  if (!isOpen) return 1;
  sent.append(message);
  if (onWrite) onWrite(message);
  return writeResult;
}

int MemoryCan::read(CanMessage& message) {
  if (waiting_.empty()) return 1;
  message = waiting_.front();
  waiting_.pop_front();
  return 0;
}

}  // namespace lokari::test
