// Windows of cabs and panels that write down what becomes of them.
#pragma once

#include <QStringList>

#include <memory>

#include "cab/slot_unit.h"
#include "cab/slot_window.h"

namespace lokari::test {

/// Windows of a test, one list for all.
struct WindowLog {
  QStringList log;
  QPoint design{100, 60};
  QPointF scale{1, 1};
  int alive = 0;
};

class FakeWindow final : public SlotWindow {
 public:
  FakeWindow(WindowLog& log, std::shared_ptr<SlotUnit> unit) : log_(log), unit_(std::move(unit)) {
    ++log_.alive;
  }
  ~FakeWindow() override { --log_.alive; }
  FakeWindow(const FakeWindow&) = delete;
  FakeWindow& operator=(const FakeWindow&) = delete;

  void setTag(int slot) override { note(QStringLiteral("tag %1").arg(slot)); }
  QPoint designPlace() const override { return log_.design; }
  void moveTo(QPoint place) override {
    note(QStringLiteral("at %1,%2").arg(place.x()).arg(place.y()));
  }
  QPointF mainScale() const override { return log_.scale; }
  void ResizeWindow() override { note(QStringLiteral("scaled")); }
  void bringUp() override { note(QStringLiteral("up")); }
  void putAway() override { note(QStringLiteral("away")); }

 private:
  void note(const QString& what) {
    log_.log << QStringLiteral("%1: %2").arg(unit_->address()).arg(what);
  }

  WindowLog& log_;
  std::shared_ptr<SlotUnit> unit_;
};

}  // namespace lokari::test
