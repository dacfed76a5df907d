// How far a firmware transfer is: the block in hand, how many there are, and the time left.
#pragma once

#include <QString>

#include <vector>

#include "base/clock.h"
#include "station/firmware.h"

namespace lokari {

class TransferProgress {
 public:
  /// Time counts from here. `clock` must outlive it.
  TransferProgress(const Firmware& firmware, const Clock& clock);

  /// The block that ends below `address` goes out, for the first time or once more.
  void blockSent(int address);

  /// The share of the file's data that lies below `address`, in whole per cent. The data of a file
  /// need not begin at address 0 nor be without gaps, so this may go beyond 100.
  int percentAt(int address) const;

  /// German, such as "Block 12 von 345, noch etwa 20 Sekunden"; without a time as long as there
  /// is nothing to judge by.
  QString text() const;

 private:
  /// Seconds, or below 0 while it cannot be told.
  qint64 secondsLeft() const;

  const Clock& clock_;
  const Millis start_;
  const int firmBlocks_;
  std::vector<int> ordinals_;  // by block number: blocks to be sent up to and including it
  int ordinal_ = 0;            // of the block in hand, from 1
  int sent_ = 0;               // repeats included
};

}  // namespace lokari
