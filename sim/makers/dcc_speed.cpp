#include "sim/makers/dcc_speed.h"

#include <algorithm>

namespace lokari::sim::makers {
namespace {

constexpr int kForward = 0x80;
constexpr int kLowestBit = 0x10;
constexpr int kEmergencyStop = 1;

/// Ahead of step 1 the codes have two values, where the lowest bit stands apart four.
constexpr int kAheadOfFirst = 1;
constexpr int kAheadOfFirstPair = 3;

struct Coding {
  int steps;
  int last;  ///< step
  int mask;
  bool lowestBitApart;
};
constexpr Coding kCodings[] = {
    {14, 14, 0x0F, false}, {27, 27, 0x0F, true}, {28, 28, 0x0F, true}, {128, 126, 0x7F, false}};

const Coding& codingOf(int steps) {
  const auto* const found = std::find_if(std::begin(kCodings), std::end(kCodings),
                                         [steps](const Coding& c) { return c.steps == steps; });
  return found == std::end(kCodings) ? kCodings[3] : *found;
}

}  // namespace

DccSpeed dccSpeed(int byte, int steps) {
  const Coding& coding = codingOf(steps);
  DccSpeed speed{.backward = (byte & kForward) == 0};
  const int value = byte & coding.mask;
  speed.emergencyStop = value == kEmergencyStop;
  if (value <= kEmergencyStop) return speed;
  const int lowest = (byte & kLowestBit) != 0 ? 1 : 0;
  const int step =
      coding.lowestBitApart ? value * 2 + lowest - kAheadOfFirstPair : value - kAheadOfFirst;
  speed.step = std::min(step, coding.last);
  return speed;
}

int dccSpeedByte(const DriveState& state) {
  const Coding& coding = codingOf(state.steps);
  const int direction = state.backward ? 0 : kForward;
  if (state.speed <= 0) return direction;
  const int step = std::min(state.speed, coding.last);
  if (!coding.lowestBitApart) return direction | (step + kAheadOfFirst);
  const int code = step + kAheadOfFirstPair;
  return direction | code >> 1 | ((code & 1) != 0 ? kLowestBit : 0);
}

}  // namespace lokari::sim::makers
