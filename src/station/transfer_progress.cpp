#include "station/transfer_progress.h"

#include "station/firm_block.h"

namespace lokari {
namespace {

/// Blocks after which their pace is known well enough.
constexpr int kBlocksToJudge = 8;
/// Shown seconds are multiples of it.
constexpr int kSecondsStep = 5;

QString roughTime(qint64 seconds) {
  const qint64 shown = (seconds + kSecondsStep - 1) / kSecondsStep * kSecondsStep;
  if (shown < 60) return QStringLiteral("%1 Sekunden").arg(shown);
  const qint64 minutes = (shown + 59) / 60;
  return minutes == 1 ? QStringLiteral("1 Minute") : QStringLiteral("%1 Minuten").arg(minutes);
}

}  // namespace

TransferProgress::TransferProgress(const Firmware& firmware, const Clock& clock)
    : clock_(clock), start_(clock.now()), firmBlocks_(firmware.firmBlocks) {
  ordinals_.reserve(firmSize / kFirmBlockData);
  int count = 0;
  for (int address = 0; address < firmSize; address += kFirmBlockData) {
    if (!firmBlockErased(firmware.firmImage, address)) ++count;
    ordinals_.push_back(count);
  }
}

void TransferProgress::blockSent(int address) {
  ordinal_ = ordinals_[static_cast<size_t>(address / kFirmBlockData) - 1];
  ++sent_;
}

int TransferProgress::percentAt(int address) const {
  return static_cast<int>(100.0 * address / firmBlocks_ / kFirmBlockData);
}

qint64 TransferProgress::secondsLeft() const {
  // The block in hand has gone out but is not answered.
  const int answered = sent_ - 1;
  if (answered < kBlocksToJudge) return -1;
  const Millis left = (clock_.now() - start_) * (ordinals_.back() - ordinal_ + 1) / answered;
  return (left + 999) / 1000;
}

QString TransferProgress::text() const {
  const QString block = QStringLiteral("Block %1 von %2").arg(ordinal_).arg(ordinals_.back());
  const qint64 seconds = secondsLeft();
  return seconds < 0 ? block : block + QStringLiteral(", noch etwa ") + roughTime(seconds);
}

}  // namespace lokari
