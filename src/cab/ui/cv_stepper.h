// `txtCV` and `udCV`: the value of a CV that is stepped while the vehicle runs.
#pragma once

#include <QAbstractSpinBox>

namespace lokari {

/// Each step is written to the decoder at once. So only its arrows and the arrow keys step, one at
/// a time: never the wheel that happens to turn above it, and nothing can be typed.
class CvStepper final : public QAbstractSpinBox {
  Q_OBJECT

 public:
  explicit CvStepper(QWidget* parent);

  void showValue(const QString& text);
  void stepBy(int steps) override;

 signals:
  void steppedUp();
  void steppedDown();

 protected:
  StepEnabled stepEnabled() const override { return StepUpEnabled | StepDownEnabled; }
  void wheelEvent(QWheelEvent* event) override;
};

}  // namespace lokari
