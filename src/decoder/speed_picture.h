// `picSpeedTable` without a window: where the points of the curve stand, which of them the mouse
// holds, and what a move of the mouse does.
#pragma once

#include <QPointF>

#include <vector>

#include "decoder/speed_table.h"

namespace lokari {

/// Where the curve lies in the picture, in twips. `left` is where step 0 stands. The vertical
/// position of the mouse is counted from the upper edge of the scale, downwards, so that it is
/// `height` where the value is 0.
struct CurveArea {
  double left = 0;
  double width = 0;
  double height = 0;
};

class SpeedPicture {
 public:
  /// How far from a point, in each direction, the mouse still meets it: twips.
  static constexpr double kReach = 40;

  /// `table` must outlive the picture.
  explicit SpeedPicture(SpeedTable& table) : table_(table) {}

  /// To be set before the first press, and whenever the picture changes its size.
  CurveArea area;

  /// Positions of the points in use, the first at 0.
  std::vector<QPointF> positions() const;
  /// The point under the mouse, or 0. Where points overlap it is the last one.
  int pointAt(QPointF mouse) const;
  /// The same by the horizontal position alone.
  int pointAt(double x) const;
  /// The point nearest to a horizontal position.
  int nearestTo(double x) const;
  /// The share of the scale at a vertical position: 0 at its foot, 1 at its top, beyond them
  /// outside of it.
  double shareAt(double y) const;

  /// The button goes down: takes the point under the mouse, if it can be moved.
  void press(QPointF mouse);
  /// The mouse moves. With a point in hand it gives it the value under the mouse; in the table view
  /// the point above or below the mouse becomes the one in hand, so that the user paints the curve.
  /// A refused value ends the dragging.
  void drag(QPointF mouse);
  void release() { dragPoint_ = 0; }

  /// The point in hand, 0 for none.
  int dragPoint() const { return dragPoint_; }

 private:
  SpeedTable& table_;
  int dragPoint_ = 0;
};

}  // namespace lokari
