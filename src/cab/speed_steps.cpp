#include "cab/speed_steps.h"

#include <algorithm>

#include "cab/cab_state.h"

namespace lokari {

int barPosition(int value, int steps) {
  // Int(128 * value / steps + 0.999) in whole numbers.
  const int position = (128000 * value + 999 * steps) / (1000 * steps);
  return std::min(position, CabState::kHighestSpeed);
}

int stationSteps(int speed, int steps) {
  return steps * speed / 128;
}

int cutStationSteps(int speed, int steps) {
  return std::min(stationSteps(speed, steps), 126);
}

}  // namespace lokari
