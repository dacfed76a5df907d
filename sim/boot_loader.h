// The boot loader of an MX1: takes new firmware block by block.
//
//   to the boot loader                                     its answer
//   "Download", carriage return                            "Download..."
//   "!", bank, address high, address low, 16 bytes, sum    "?" the next one, please
//                                                          "E" wrong sum or place, once more
//                                                          "b" bank lost, from its beginning
//   "..."                                                  none; back to normal operation
//
// The sum is that of everything between "!" and itself, modulo 256. The bank is 0 or 1, the high
// part of the address 0 to 127. A block that stops in the middle is forgotten after half a second.
#pragma once

#include <QByteArray>

#include "base/clock.h"
#include "sim/faults.h"

namespace lokari::sim {

class BootLoader {
 public:
  /// `faults` must outlive it: BlockError and BankLost strike once per good block.
  explicit BootLoader(FaultPlan& faults) : faults_(faults) {}

  /// Erases the image and waits for blocks. Gives what the boot loader says.
  QByteArray start();
  bool isActive() const { return active_; }

  /// Takes a byte that arrives at a moment. Gives the answer that it completes, or nothing.
  QByteArray feed(char byte, Millis now);

  /// The memory, 65536 bytes; 255 where nothing came.
  const QByteArray& image() const { return image_; }

 private:
  QByteArray feedText(char byte);
  QByteArray takeBlock();

  FaultPlan& faults_;
  bool active_ = false;
  QByteArray image_ = QByteArray(65536, '\xFF');
  QByteArray block_;  ///< what has come of it, "!" included
  QByteArray text_;   ///< what has come between blocks
  Millis lastByteAt_ = 0;
};

}  // namespace lokari::sim
