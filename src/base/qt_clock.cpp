#include "base/qt_clock.h"

#include <QCoreApplication>
#include <QTimer>

#include <algorithm>

namespace lokari {
namespace {

constexpr Millis kLongestSleep = 50;

class QtAlarm final : public Clock::Alarm {
 public:
  QtAlarm(Millis delay, std::function<void()> action) : action_(std::move(action)) {
    timer_.setSingleShot(true);
    timer_.setTimerType(Qt::PreciseTimer);
    // A copy: the action may destroy this alarm.
    QObject::connect(&timer_, &QTimer::timeout, &timer_, [this] {
      const auto run = action_;
      run();
    });
    timer_.start(static_cast<int>(std::clamp<Millis>(delay, 0, std::numeric_limits<int>::max())));
  }

 private:
  QTimer timer_;
  std::function<void()> action_;
};

}  // namespace

QtClock::QtClock() {
  started_.start();
}

Millis QtClock::now() const {
  return started_.elapsed();
}

QDateTime QtClock::localTime() const {
  return QDateTime::currentDateTime();
}

bool QtClock::waitUntil(const std::function<bool()>& done, Millis deadline) {
  if (done()) return true;
  QTimer wake;
  wake.setTimerType(Qt::PreciseTimer);
  wake.setSingleShot(true);
  while (now() < deadline) {
    wake.start(static_cast<int>(std::min(deadline - now(), kLongestSleep)));
    QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    if (done()) return true;
  }
  return false;
}

void QtClock::pump() {
  QCoreApplication::processEvents();
}

std::unique_ptr<Clock::Alarm> QtClock::after(Millis delay, std::function<void()> action) {
  return std::make_unique<QtAlarm>(delay, std::move(action));
}

}  // namespace lokari
