#include "cab/cab_line.h"

#include <QScopedValueRollback>

#include <algorithm>

#include "link/link_error.h"
#include "link/station_link.h"
#include "link/station_protocol.h"
#include "link/track_stop.h"

namespace lokari {

CabLine::CabLine(StationLink& link) : link_(link) {
  link_.onStepAside = [this] { return stepAside(); };
  link_.onSessionTried = [this](bool opened) {
    if (opened) noteBack();
    runHeldBack(opened ? QString() : link_.openFailureReason());
  };
}

CabLine::~CabLine() {
  // What is told and listened to belongs to it.
  link_.trackStop().order().drop();
  link_.onStepAside = nullptr;
  link_.onSessionTried = nullptr;
}

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

void CabLine::exchangeNext(const void* owner, int what, std::function<void()> run) {
  std::erase_if(waiting_,
                [&](const Waiting& each) { return each.owner == owner && each.what == what; });
  waiting_.push_front({owner, what, std::move(run)});
  runWaiting();
}

void CabLine::alone(const void* owner, int what, std::function<void()> run) {
  exchange(owner, what, [this, job = std::move(run)] {
    const QScopedValueRollback mine(alone_, true);
    job();
  });
}

/// The job's frame waits for its window below everything that runs meanwhile, so that the line is
/// free again whenever it goes on.
class CabLine::Aside {
 public:
  explicit Aside(CabLine& line) : line_(line) {
    line_.alone_ = false;
    line_.depth_ = 0;
  }
  ~Aside() {
    line_.alone_ = true;
    line_.depth_ = 1;
  }
  Aside(const Aside&) = delete;
  Aside& operator=(const Aside&) = delete;

 private:
  CabLine& line_;
};

std::shared_ptr<void> CabLine::stepAside() {
  // Inside somebody else's exchange the line is not the job's to give.
  if (!alone_ || depth_ != 1) return nullptr;
  // Without sessions nobody needs it, and a test may have borrowed another station's settings.
  if (link_.commUseCount == 0) return nullptr;
  auto aside = std::make_shared<Aside>(*this);
  wakeAside_ = link_.clock().after(0, [this] { runWaiting(); });
  return aside;
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

bool CabLine::isOpening() const {
  return restoring_ || link_.isOpening();
}

void CabLine::urgent(std::function<void()> run, const QString& order) {
  if (gone_ && isOpening()) {
    // There is no line yet; it goes out first when there is one.
    heldBack_.push_back({std::move(run), order});
    emit goneChanged();
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
  link_.lineLost = true;
  goneReason_ = reason;
  emit goneChanged();
}

void CabLine::noteBack() {
  if (!gone_) return;
  gone_ = false;
  link_.lineLost = false;
  goneReason_.clear();
  emit goneChanged();
}

void CabLine::restore() {
  if (!gone_ || isOpening()) return;
  // What has failed just now is not tried again for each that waited.
  if (!failure_.isEmpty()) throw LinkError(failure_);
  QString failure;
  {
    const QScopedValueRollback restoring(restoring_, true);
    failure = link_.reopen();
  }
  if (failure.isEmpty()) noteBack();
  runHeldBack(failure);
  if (!failure.isEmpty()) throw LinkError(failure);
}

void CabLine::runHeldBack(const QString& failure) {
  if (heldBack_.empty()) return;
  const QScopedValueRollback known(failure_, failure);
  while (!heldBack_.empty()) {
    const HeldBack next = std::move(heldBack_.front());
    heldBack_.pop_front();
    // They meet a line that is still gone themselves, and tell it.
    urgent(next.run, next.order);
  }
  emit goneChanged();
}

void CabLine::forget(const void* owner) {
  const auto isOwners = [owner](const Waiting& each) { return each.owner == owner; };
  std::erase_if(waiting_, isOwners);
  std::erase_if(background_, isOwners);
}

}  // namespace lokari
