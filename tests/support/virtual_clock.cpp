#include "support/virtual_clock.h"

#include <QCoreApplication>

#include <stdexcept>

namespace lokari::test {

class VirtualClock::VirtualAlarm final : public Clock::Alarm {
 public:
  VirtualAlarm(std::weak_ptr<std::map<Key, std::function<void()>>> events, Key key)
      : events_(std::move(events)), key_(key) {}
  ~VirtualAlarm() override {
    if (const auto events = events_.lock()) events->erase(key_);
  }
  VirtualAlarm(const VirtualAlarm&) = delete;
  VirtualAlarm& operator=(const VirtualAlarm&) = delete;

 private:
  std::weak_ptr<std::map<Key, std::function<void()>>> events_;
  Key key_;
};

QDateTime VirtualClock::localTime() const {
  return QDateTime(QDate(2026, 11, 21), QTime(10, 0)).addMSecs(now_);
}

VirtualClock::Key VirtualClock::add(Millis delay, std::function<void()> action) {
  const Key key{now_ + std::max<Millis>(delay, 0), ++made_};
  events_->emplace(key, std::move(action));
  return key;
}

std::unique_ptr<Clock::Alarm> VirtualClock::after(Millis delay, std::function<void()> action) {
  return std::make_unique<VirtualAlarm>(events_, add(delay, std::move(action)));
}

void VirtualClock::schedule(Millis delay, std::function<void()> action) {
  add(delay, std::move(action));
}

bool VirtualClock::runNext(Millis latest) {
  if (events_->empty() || events_->begin()->first.at > latest) return false;
  const auto first = events_->begin();
  now_ = std::max(now_, first->first.at);
  const auto action = std::move(first->second);
  events_->erase(first);
  action();
  return true;
}

void VirtualClock::pump() {
  while (runNext(now_)) {
  }
  QCoreApplication::processEvents();
}

bool VirtualClock::waitUntil(const std::function<bool()>& done, Millis deadline) {
  QCoreApplication::processEvents();
  while (!done()) {
    if (now_ >= deadline) return false;
    if (!runNext(deadline)) {
      if (deadline == kNever) throw std::logic_error("waiting for ever with nothing scheduled");
      now_ = deadline;
    }
    QCoreApplication::processEvents();
  }
  return true;
}

void VirtualClock::advance(Millis span) {
  const Millis end = now_ + span;
  while (runNext(end)) QCoreApplication::processEvents();
  now_ = end;
  QCoreApplication::processEvents();
}

}  // namespace lokari::test
