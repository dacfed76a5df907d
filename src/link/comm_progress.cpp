#include "link/comm_progress.h"

#include <utility>

#include "link/comm_view.h"
#include "link/station_link.h"

namespace lokari {
namespace {

/// Faster than this nobody reads.
constexpr Millis kShowEvery = 40;

}  // namespace

void CommProgress::setStatus(const QString& text) {
  status_ = text;
  statusNew_ = true;
  spokenSinceCancel_ = cancelled_ || link_.cancelRequested;
  showIfDue();
}

void CommProgress::setPercent(double percent) {
  percent_ = percent;
  percentNew_ = true;
  showIfDue();
}

bool CommProgress::cancelled() {
  // Once asked to stop the work comes to its end, in peace.
  if (cancelled_) return true;
  link_.clock().pump();
  cancelled_ = link_.cancelRequested;
  return cancelled_;
}

void CommProgress::showIfDue() {
  if (shownAt_ && link_.clock().now() - *shownAt_ < kShowEvery) return;
  showLast();
  shownAt_ = link_.clock().now();
}

void CommProgress::showLast() {
  if (std::exchange(statusNew_, false)) view_.setStatus(status_);
  if (std::exchange(percentNew_, false)) view_.setProgress(percent_);
}

}  // namespace lokari
