#include "decoder/speed_picture.h"

#include <cmath>

namespace lokari {
namespace {

bool within(double a, double b) {
  return std::abs(a - b) <= SpeedPicture::kReach;
}

}  // namespace

std::vector<QPointF> SpeedPicture::positions() const {
  std::vector<QPointF> positions;
  for (const SpeedPoint& point : table_.points()) {
    positions.emplace_back(area.left + point.step * area.width, (1 - point.speed) * area.height);
  }
  return positions;
}

int SpeedPicture::pointAt(QPointF mouse) const {
  int found = 0;
  int number = 0;
  for (const QPointF& at : positions()) {
    ++number;
    if (within(mouse.x(), at.x()) && within(mouse.y(), at.y()) && at.x() >= 1) found = number;
  }
  return found;
}

int SpeedPicture::pointAt(double x) const {
  int found = 0;
  int number = 0;
  for (const QPointF& at : positions()) {
    ++number;
    if (within(x, at.x())) found = number;
  }
  return found;
}

int SpeedPicture::nearestTo(double x) const {
  int nearest = 1;
  const std::vector<QPointF> at = positions();
  for (int number = 2; number <= static_cast<int>(at.size()); ++number) {
    const auto distance = [&at, x](int point) {
      return std::abs(at[static_cast<size_t>(point - 1)].x() - x);
    };
    if (distance(number) < distance(nearest)) nearest = number;
  }
  return nearest;
}

double SpeedPicture::shareAt(double y) const {
  return area.height > 0 ? (area.height - y) / area.height : 0;
}

void SpeedPicture::press(QPointF mouse) {
  const int point = pointAt(mouse);
  dragPoint_ = point > 0 && table_.movable(point) ? point : 0;
}

void SpeedPicture::drag(QPointF mouse) {
  // The view may have changed under the held button, and the number of points with it.
  if (dragPoint_ > table_.pointCount()) dragPoint_ = 0;
  if (dragPoint_ == 0) return;
  if (table_.view() == SpeedView::Table) {
    if (const int point = pointAt(mouse.x()); point > 0) dragPoint_ = point;
  }
  if (!table_.moveTo(dragPoint_, shareAt(mouse.y()))) release();
}

}  // namespace lokari
