#include "decoder/speed_axis.h"

#include <algorithm>
#include <array>

#include "decoder/speed_table.h"

namespace lokari {
namespace {

/// Intervals that an axis has at most: more labels would run into each other.
constexpr int kMostIntervals = 7;
constexpr std::array kRoundSteps{1, 2, 5, 10, 20, 25, 50};

int roundStep(int highest) {
  const auto* step = std::find_if(kRoundSteps.begin(), kRoundSteps.end(), [highest](int candidate) {
    return highest <= kMostIntervals * candidate;
  });
  return step == kRoundSteps.end() ? kRoundSteps.back() : *step;
}

std::vector<AxisTick> numbers(int highest, const QString& label) {
  std::vector<AxisTick> ticks;
  const int step = roundStep(highest);
  // The top has its own mark, and the last round value makes room for it.
  for (int value = 0; 2 * (highest - value) > step; value += step) {
    ticks.push_back({static_cast<double>(value) / highest, label.arg(value)});
  }
  ticks.push_back({1.0, label.arg(highest)});
  return ticks;
}

}  // namespace

std::vector<AxisTick> valueTicks(const SpeedTable& table) {
  for (int point = 2; point <= table.pointCount(); ++point) {
    if (table.highest(point) != table.highest(1)) return numbers(100, QStringLiteral("%1 %"));
  }
  return numbers(table.highest(1), QStringLiteral("%1"));
}

std::vector<AxisTick> stepTicks(const SpeedTable& table) {
  std::vector<AxisTick> ticks;
  if (table.view() == SpeedView::ThreePoints) {
    for (const SpeedPoint& point : table.points()) {
      ticks.push_back({point.step, QStringLiteral("CV %1").arg(point.cv.value())});
    }
    return ticks;
  }
  const int steps = table.pointCount();
  const int stride = (steps + kMostIntervals - 1) / kMostIntervals;
  for (int step = 0; step <= steps; step += stride) {
    ticks.push_back({static_cast<double>(step) / steps, QString::number(step)});
  }
  return ticks;
}

}  // namespace lokari
