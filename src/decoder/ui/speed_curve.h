// `picSpeedTable`: the decoder's speed curve, and how mouse and keyboard move its points.
#pragma once

#include <QWidget>

#include <optional>

#include "decoder/speed_picture.h"
#include "decoder/speed_table.h"

namespace lokari {

class DecoderBench;

/// Left and Right, Home and End choose a point, Up and Down move it by one, the page keys by ten.
class SpeedCurve final : public QWidget {
  Q_OBJECT

 public:
  /// `bench` must outlive the picture.
  SpeedCurve(DecoderBench& bench, QWidget* parent);

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override;

  /// Where a point stands, from 1, in pixels of the widget.
  QPointF positionOf(int point) const;
  /// The point that the keys move.
  int selectedPoint() const;
  /// What the picture tells about the point that is meant and the value under the mouse.
  QString note() const;
  const SpeedTable& table() const { return table_; }

 signals:
  /// What is shown changed, perhaps the view or the CVs that it stands for.
  void shown();

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void changeEvent(QEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void leaveEvent(QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;

 private:
  QRectF area() const;
  void placeArea();
  QPointF toTwips(QPointF mouse) const;
  void drag(QPointF mouse);
  /// The points that a move passes over, each as if the mouse had been told of there.
  void sweep(QPointF from, QPointF to);
  void select(int point);
  void selectMovable(int from, int direction);
  bool chooseByKey(int key);
  bool moveByKey(int key);
  void showChange();

  SpeedTable table_;
  SpeedPicture picture_{table_};
  int selected_ = 1;
  std::optional<QPointF> mouse_;  // within the area
  QPointF dragged_;               // where the mouse was while a point was being dragged
};

}  // namespace lokari
