// `vsbSpeed`, the large speed bar of a cab: 0 at the bottom, 127 at the top.
#pragma once

#include <QSlider>

namespace lokari {

class SpeedBar final : public QSlider {
  Q_OBJECT

 public:
  explicit SpeedBar(QWidget* parent);

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;
  /// The grip follows the mouse where it was taken; a press beside it takes it there at once.
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;

 private:
  double centreOf(int value) const;
  int valueAt(double y) const;
  QRectF trough() const;
  QRectF grip() const;
  void paintScale(QPainter& painter) const;

  double taken_ = 0;  // from the grip's centre down to where the mouse holds it
};

}  // namespace lokari
