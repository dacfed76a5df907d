// The workbench at a simulated station, with what the tests of a stop do and look at.
#pragma once

#include <QLabel>

#include "simulated_desk.h"

namespace lokari::test {

class StopDesk : public SimulatedDesk {
 protected:
  explicit StopDesk(StationKind kind) : SimulatedDesk(kind) {}

  QString noticeOf(int address) {
    auto* label = control<QLabel>(cabWindow(address), "labNotice");
    return label != nullptr && label->isVisible() ? label->text() : QString();
  }
  QString word() { return wordOfStop(cabWindow(3)); }
  void click(const char* name) {
    QTest::mouseClick(control<QWidget>(cabWindow(3), name), Qt::LeftButton);
  }
  void key(Qt::Key which) { QTest::keyClick(control<QWidget>(cabWindow(3), "vsbSpeed"), which); }
  void fault(const char* text) { faults.add(*sim::faultFromText(QString::fromLatin1(text))); }
  /// Runs `look` so many milliseconds from now, also inside what a handler waits for.
  void in(Millis moment, std::function<void()> look) {
    clock().schedule(moment, [this, look = std::move(look)] {
      ++looks;
      look();
    });
  }

  static QString unconfirmed() {
    return QStringLiteral("Die Zentrale hat „Halt“ nicht bestätigt!");
  }

  int looks = 0;
};

}  // namespace lokari::test
