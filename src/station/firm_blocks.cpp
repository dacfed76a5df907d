#include "station/firm_blocks.h"

#include "base/clock.h"
#include "link/comm_view.h"
#include "link/station_link.h"
#include "station/raw_port.h"

namespace lokari {
namespace {

constexpr int kMostSilentBlocks = 20;
constexpr int kReplyTries = 32;
constexpr int kReplyPauseMs = 20;
/// Foreign bytes between two looks at the user's wishes: a station that pours them out without a
/// pause must not lock the user out.
constexpr int kForeignBytesPerPump = 100;
/// The bar moves with every page of the memory.
constexpr int kPageSize = 256;

}  // namespace

FirmBlocks::FirmBlocks(StationLink& link, RawPort& port, CommView& view, const Firmware& firmware)
    : link_(link),
      port_(port),
      view_(view),
      firmware_(firmware),
      progress_(firmware, link.clock()) {}

FirmEnd FirmBlocks::send() {
  int address = 0;
  int errors = 0;
  while (address < firmSize) {
    if (firmBlockErased(firmware_.firmImage, address)) {
      address += kFirmBlockData;
      continue;
    }
    const int bank = firmBank(address);
    sendBlock(address);
    address += kFirmBlockData;
    progress_.blockSent(address);
    view_.setDetail(progress_.text());
    const int percent = progress_.percentAt(address);
    if (address % kPageSize == 0 && percent < 100) view_.setProgress(percent);
    link_.clock().pump();
    if (link_.cancelRequested) return FirmEnd::Cancelled;

    const FirmReply reply = awaitReply();
    errors = reply == FirmReply::None ? errors + 1 : 0;
    if (reply == FirmReply::None) unanswered_.insert(address - kFirmBlockData);
    if (reply == FirmReply::Next) unanswered_.erase(address - kFirmBlockData);
    if (errors == kMostSilentBlocks) return FirmEnd::Failed;
    if (reply == FirmReply::SameBank) address = bank * kFirmBankSize;
    if (reply == FirmReply::SameBlock) address -= kFirmBlockData;
  }
  return unanswered_.empty() ? FirmEnd::Complete : FirmEnd::Unconfirmed;
}

void FirmBlocks::sendBlock(int address) {
  port_.FlushComm(CommQueue::Transmit);
  port_.FlushComm(CommQueue::Receive);
  port_.WriteComm(firmBlock(firmware_.firmImage, address));
}

FirmReply FirmBlocks::awaitReply() {
  int foreign = 0;
  for (int tries = 0; tries < kReplyTries;) {
    const QByteArray byte = port_.ReadComm(1);
    if (byte.isEmpty()) {
      link_.DelayMsec(kReplyPauseMs);
      ++tries;
      continue;
    }
    const FirmReply reply = firmReplyFrom(byte.front());
    if (reply != FirmReply::None) return reply;
    if (++foreign % kForeignBytesPerPump == 0) {
      link_.clock().pump();
      if (link_.cancelRequested) return FirmReply::None;
    }
  }
  return FirmReply::None;
}

}  // namespace lokari
