// The main part of a firmware transfer: the blocks of an image, each with its answer.
#pragma once

#include <set>

#include "station/firm_block.h"
#include "station/firmware.h"
#include "station/transfer_progress.h"

namespace lokari {

class CommView;
class RawPort;
class StationLink;

/// How a transfer ended.
enum class FirmEnd {
  Complete,
  Unconfirmed,  ///< all blocks went out, but some were not answered
  NoSession,    ///< the session did not open
  NoAnswer,     ///< no boot loader
  Failed,       ///< too many blocks without an answer, or the device has vanished
  Cancelled,
};

class FirmBlocks {
 public:
  /// All arguments must outlive it. `port` is open, a boot loader waits behind it.
  FirmBlocks(StationLink& link, RawPort& port, CommView& view, const Firmware& firmware);

  /// Sends what is not erased, from address 0 up: Complete, Unconfirmed, Failed or Cancelled. A
  /// block that the boot loader refuses goes out again, without a limit; one that it does not
  /// answer does not, and 20 of them in a row are a failure. A cancel acts behind the block in
  /// hand. A device that vanishes throws LinkError.
  FirmEnd send();

  /// Blocks that went out and were never answered: nobody knows whether the station has them.
  int unanswered() const { return static_cast<int>(unanswered_.size()); }

 private:
  void sendBlock(int address);
  FirmReply awaitReply();

  StationLink& link_;
  RawPort& port_;
  CommView& view_;
  const Firmware& firmware_;
  TransferProgress progress_;
  std::set<int> unanswered_;  // by address
};

}  // namespace lokari
