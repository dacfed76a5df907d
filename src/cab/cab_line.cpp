#include "cab/cab_line.h"

#include <algorithm>

namespace lokari {
namespace {

/// Raises a value for a scope, whatever ends it.
template <class T>
class Raised {
 public:
  Raised(T& value, T raised, T before) : value_(value), before_(before) { value_ = raised; }
  ~Raised() { value_ = before_; }
  Raised(const Raised&) = delete;
  Raised& operator=(const Raised&) = delete;

 private:
  T& value_;
  T before_;
};

}  // namespace

void CabLine::exchange(const void* owner, int what, std::function<void()> run) {
  if (isBusy()) {
    const auto same = std::find_if(waiting_.begin(), waiting_.end(), [&](const Waiting& each) {
      return each.owner == owner && each.what == what;
    });
    if (same != waiting_.end()) {
      same->run = std::move(run);
    } else {
      waiting_.push_back({owner, what, std::move(run)});
    }
    return;
  }
  {
    const Raised<int> busy(depth_, 1, 0);
    run();
  }
  runWaiting();
}

void CabLine::runWaiting() {
  while (!isBusy() && !waiting_.empty()) {
    const auto next = std::move(waiting_.front().run);
    waiting_.pop_front();
    const Raised<int> busy(depth_, 1, 0);
    next();
  }
}

void CabLine::urgent(std::function<void()> run) {
  if (sending_) {
    urgent_.push_back(std::move(run));
    return;
  }
  {
    const Raised<int> busy(depth_, depth_ + 1, depth_);
    run();
  }
  runWaiting();
}

void CabLine::send(const std::function<void()>& write) {
  {
    const Raised<bool> sending(sending_, true, sending_);
    write();
  }
  while (!sending_ && !urgent_.empty()) {
    const auto next = std::move(urgent_.front());
    urgent_.pop_front();
    urgent(next);
  }
}

void CabLine::forget(const void* owner) {
  std::erase_if(waiting_, [owner](const Waiting& each) { return each.owner == owner; });
}

}  // namespace lokari
