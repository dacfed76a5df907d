// The floating label that explains a control.
#pragma once

#include <QLabel>

#include <memory>

#include "base/clock.h"

namespace lokari {

/// One per window. The label lies below its control, or above it where it would leave the window,
/// and is moved left where it would pass the right edge. It goes by itself after kShown.
class ToolTip final : public QLabel {
 public:
  static constexpr Millis kShown = 5000;

  ToolTip(QWidget* window, Clock& clock);

  /// Shows `text`, padded by a blank on both sides; an empty text hides the label.
  void showFor(const QWidget* control, const QString& text);

  /// Called when the label goes by itself.
  void hideTip();

 private:
  Clock& clock_;
  std::unique_ptr<Clock::Alarm> timer1_;
};

}  // namespace lokari
