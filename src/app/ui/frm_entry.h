// The splash.
#pragma once

#include <QWidget>

#include <memory>

#include "base/clock.h"

namespace lokari {

class Pictures;

/// Stands in front of the main window for the first seconds and holds nothing up. A click on it
/// closes it at once.
class FrmEntry final : public QWidget {
 public:
  static constexpr Millis kShown = 5000;

  FrmEntry(QWidget* mainWindow, const Pictures& pictures, Clock& clock);

  /// Its centre onto the main window's.
  void centre();

 protected:
  void paintEvent(QPaintEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void closeEvent(QCloseEvent* event) override;

 private:
  std::unique_ptr<Clock::Alarm> timEntry_;
};

}  // namespace lokari
