#include "cab/cab_line.h"

#include <QScopedValueRollback>

#include <algorithm>

#include "link/link_error.h"
#include "link/station_link.h"
#include "link/station_protocol.h"

namespace lokari {

void CabLine::put(Queue& queue, Waiting next) {
  const auto same = std::find_if(queue.begin(), queue.end(), [&](const Waiting& each) {
    return each.owner == next.owner && each.what == next.what;
  });
  if (same != queue.end()) {
    same->run = std::move(next.run);
  } else {
    queue.push_back(std::move(next));
  }
}

void CabLine::run(const std::function<void()>& exchange) {
  const QScopedValueRollback busy(depth_, 1);
  exchange();
}

void CabLine::exchange(const void* owner, int what, std::function<void()> run) {
  put(waiting_, {owner, what, std::move(run)});
  runWaiting();
}

void CabLine::background(const void* owner, std::function<void()> run) {
  put(background_, {owner, 0, std::move(run)});
  if (wake_) return;
  runBackground();
}

void CabLine::runWaiting() {
  while (!isBusy() && !waiting_.empty()) {
    const auto next = std::move(waiting_.front().run);
    waiting_.pop_front();
    run(next);
  }
  wakeBackground();
}

// Each one from the event loop: with more polls than the line has room for, a loop in the place
// where the first of them ended would never return.
void CabLine::wakeBackground() {
  if (isBusy() || background_.empty() || wake_) return;
  wake_ = link_.clock().after(0, [this] {
    wake_.reset();
    runBackground();
  });
}

void CabLine::runBackground() {
  if (isBusy() || background_.empty()) return;
  const auto next = std::move(background_.front().run);
  background_.pop_front();
  run(next);
  runWaiting();
}

void CabLine::urgent(std::function<void()> run) {
  if (restoring_) {
    // There is no line yet; it goes out first when there is one.
    behindRestore_.push_back(std::move(run));
    return;
  }
  link_.protocol().gate().betweenMessages([this, action = std::move(run)] {
    {
      const QScopedValueRollback busy(depth_, depth_ + 1);
      action();
    }
    runWaiting();
  });
}

void CabLine::send(const std::function<void()>& write) {
  link_.protocol().gate().sendWhole(write);
}

void CabLine::noteGone(const QString& reason) {
  if (gone_ && reason == goneReason_) return;
  gone_ = true;
  goneReason_ = reason;
  emit goneChanged();
}

void CabLine::noteBack() {
  if (!gone_) return;
  gone_ = false;
  goneReason_.clear();
  emit goneChanged();
}

void CabLine::restore() {
  if (!gone_ || restoring_) return;
  QString failure;
  {
    const QScopedValueRollback restoring(restoring_, true);
    failure = link_.reopen();
  }
  if (failure.isEmpty()) noteBack();
  // They meet a line that is still gone themselves, and tell it.
  while (!behindRestore_.empty()) {
    const auto next = std::move(behindRestore_.front());
    behindRestore_.pop_front();
    urgent(next);
  }
  if (!failure.isEmpty()) throw LinkError(failure);
}

void CabLine::forget(const void* owner) {
  const auto isOwners = [owner](const Waiting& each) { return each.owner == owner; };
  std::erase_if(waiting_, isOwners);
  std::erase_if(background_, isOwners);
}

}  // namespace lokari
