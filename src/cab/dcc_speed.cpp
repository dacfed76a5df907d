#include "cab/dcc_speed.h"

#include <algorithm>

#include "cab/cab_state.h"

namespace lokari {
namespace {

constexpr int kLowestBit = 0x10;

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
  return found == std::end(kCodings) ? *std::prev(std::end(kCodings)) : *found;
}

/// Ahead of step 1 there are two values, and four where the lowest bit stands apart.
int aheadOfFirst(const Coding& coding) {
  return coding.lowestBitApart ? 3 : 1;
}

}  // namespace

int dccSpeedBits(int position, int steps) {
  const Coding& coding = codingOf(steps);
  constexpr int kHighest = CabState::kHighestSpeed;
  const int step = std::clamp((position * coding.last + kHighest - 1) / kHighest, 0, coding.last);
  if (step == 0) return 0;
  const int code = step + aheadOfFirst(coding);
  if (!coding.lowestBitApart) return code;
  return code >> 1 | ((code & 1) != 0 ? kLowestBit : 0);
}

int dccBarPosition(int bits, int steps) {
  const Coding& coding = codingOf(steps);
  constexpr int kEmergencyStop = 1;
  const int value = bits & coding.mask;
  if (value <= kEmergencyStop) return 0;
  const int lowest = (bits & kLowestBit) != 0 ? 1 : 0;
  const int code = coding.lowestBitApart ? 2 * value + lowest : value;
  const int step = std::min(code - aheadOfFirst(coding), coding.last);
  return step * CabState::kHighestSpeed / coding.last;
}

}  // namespace lokari
