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
  const Raised<int> busy(depth_, 1, 0);
  exchange();
}

void CabLine::exchange(const void* owner, int what, std::function<void()> run) {
  put(waiting_, {owner, what, std::move(run)});
  runWaiting();
}

void CabLine::background(const void* owner, std::function<void()> run) {
  put(background_, {owner, 0, std::move(run)});
  runWaiting();
}

void CabLine::runWaiting() {
  while (!isBusy() && !(waiting_.empty() && background_.empty())) {
    Queue& queue = waiting_.empty() ? background_ : waiting_;
    const auto next = std::move(queue.front().run);
    queue.pop_front();
    run(next);
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
  const auto isOwners = [owner](const Waiting& each) { return each.owner == owner; };
  std::erase_if(waiting_, isOwners);
  std::erase_if(background_, isOwners);
}

}  // namespace lokari
