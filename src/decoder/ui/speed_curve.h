// `picSpeedTable`: the decoder's speed curve, drawn from the working set.
#pragma once

#include <QList>
#include <QPointF>
#include <QWidget>

#include "decoder/bench_controls.h"

namespace lokari {

class DecoderBench;

class SpeedCurve final : public QWidget {
  Q_OBJECT

 public:
  SpeedCurve(DecoderBench& bench, QWidget* parent);

  QSize sizeHint() const override { return {320, 220}; }

  /// A point of the curve: step and speed, each as a share of the picture, 0 to 1.
  struct Point {
    double step;
    double speed;
    TextColour colour;
  };

  /// Start, middle and top of CV 2, 6 and 5, or, when the user's table is in use, its points.
  QList<Point> points() const;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  bool tableInUse() const;
  QList<Point> threePoints() const;
  QList<Point> tablePoints() const;

  DecoderBench& bench_;
};

}  // namespace lokari
