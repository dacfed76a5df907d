// The real clock: Qt's event loop. Waiting blocks in the loop and burns no processor.
#pragma once

#include <QElapsedTimer>

#include "base/clock.h"

namespace lokari {

class QtClock final : public Clock {
 public:
  QtClock();

  Millis now() const override;
  QDateTime localTime() const override;
  bool waitUntil(const std::function<bool()>& done, Millis deadline) override;
  void pump() override;
  std::unique_ptr<Alarm> after(Millis delay, std::function<void()> action) override;

 private:
  QElapsedTimer started_;
};

}  // namespace lokari
