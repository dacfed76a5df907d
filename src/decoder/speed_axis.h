// The marks on the two axes of the speed curve.
#pragma once

#include <QString>

#include <vector>

namespace lokari {

class SpeedTable;

/// `share` is 0 where the axis begins and 1 where it ends.
struct AxisTick {
  double share = 0;
  QString label;
};

/// Round values from 0 up, at most seven, and the top of the scale as the last one. In the view of
/// three points, whose CVs may reach differently far, shares of the way in percent.
std::vector<AxisTick> valueTicks(const SpeedTable& table);

/// Every second, third or fourth step from 0 to the last; or the CVs of the three points.
std::vector<AxisTick> stepTicks(const SpeedTable& table);

}  // namespace lokari
