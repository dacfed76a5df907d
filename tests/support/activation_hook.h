// Runs a script inside a modal window.
#pragma once

#include <QEvent>
#include <QObject>

#include <functional>
#include <utility>

namespace lokari::test {

/// Runs something when a window first comes to the front.
class ActivationHook final : public QObject {
 public:
  explicit ActivationHook(std::function<void()> action) : action_(std::move(action)) {}

  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() == QEvent::WindowActivate && action_) {
      QMetaObject::invokeMethod(watched, std::exchange(action_, nullptr), Qt::QueuedConnection);
    }
    return false;
  }

 private:
  std::function<void()> action_;
};

}  // namespace lokari::test
