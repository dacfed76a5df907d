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

  /// The vehicle's speed as the label shows it. Keys, wheel and pages start from there, since the
  /// station may have told another speed than the bar was left at.
  void startFrom(int speed) { start_ = speed; }

 protected:
  void paintEvent(QPaintEvent* event) override;
  /// The label follows the bar.
  void sliderChange(SliderChange change) override;
  void keyPressEvent(QKeyEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;
  /// The grip follows the mouse where it was taken; a press beside it moves it by a page, never to
  /// the mouse: a slip must not send a vehicle off at full speed.
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;

 private:
  /// Brings a bar that has parted from the label back to it, which sends nothing. False when they
  /// had not parted.
  bool meetLabel();
  double centreOf(int value) const;
  int valueAt(double y) const;
  QRectF trough() const;
  QRectF grip() const;
  void paintScale(QPainter& painter) const;

  int start_ = 0;
  double taken_ = 0;  // from the grip's centre down to where the mouse holds it
};

}  // namespace lokari
