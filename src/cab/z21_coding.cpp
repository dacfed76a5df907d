#include "cab/z21_coding.h"

#include <algorithm>
#include <array>

#include "base/settings.h"
#include "cab/cab_state.h"
#include "cab/speed_steps.h"
#include "cab/unit_addresses.h"

namespace lokari::z21 {
namespace {

constexpr int kOf28 = 28;
constexpr int kOf14 = 14;
constexpr int kOf128 = 128;

// ---- As always ----------------------------------------------------------------------------------

constexpr Millis kShortPause = 100;
constexpr std::array kOneMessage{OutputMessage{0xA8, 0xA9, kShortPause}};

int plainSteps(int code) {
  if (code == 2) return kOf28;
  return code == 1 ? kOf14 : kOf128;
}

constexpr int kNoLastUnit = 0x10000;

// ---- As documented ------------------------------------------------------------------------------

/// How long a coil has power. No record of a unit tells it.
constexpr Millis kPulse = 250;
/// Until another output may be switched.
constexpr Millis kBehindPulse = 100;
constexpr std::array kPulseMessages{OutputMessage{0x88, 0x89, kPulse},
                                    OutputMessage{0x80, 0x81, kBehindPulse}};

constexpr int kEmergencyStop = 1;
constexpr int kLowestBit = 0x10;
constexpr int kUpperBits = 0x0F;
/// Ahead of step 1 there are two values, and four where the lowest bit stands apart.
constexpr int kAheadOfFirst = 1;
constexpr int kAheadOfFirstApart = 3;

int documentedSteps(int code) {
  if (code == 0) return kOf14;
  return code == 2 ? kOf28 : kOf128;
}

int lastStep(int steps) {
  return steps == kOf128 ? 126 : steps;
}

/// Above 0 a bar always moves the vehicle, and at its end it has the last step.
int stepOf(int position, int steps) {
  const int last = lastStep(steps);
  const int highest = CabState::kHighestSpeed;
  return std::clamp((position * last + highest - 1) / highest, 0, last);
}

int dccValue(int position, int steps) {
  const int step = stepOf(position, steps);
  if (step == 0) return 0;
  if (steps != kOf28) return step + kAheadOfFirst;
  const int code = step + kAheadOfFirstApart;
  return code >> 1 | ((code & 1) != 0 ? kLowestBit : 0);
}

int stepOfValue(int value, int steps) {
  if (steps != kOf28) return value <= kEmergencyStop ? 0 : value - kAheadOfFirst;
  const int upper = value & kUpperBits;
  if (upper <= kEmergencyStop) return 0;
  return 2 * upper + ((value & kLowestBit) != 0 ? 1 : 0) - kAheadOfFirstApart;
}

int dccPosition(int value, int steps) {
  const int last = lastStep(steps);
  return std::min(stepOfValue(value, steps), last) * CabState::kHighestSpeed / last;
}

constexpr Coding kAsAlways{plainSteps,  cutStationSteps,      barPosition,
                           kOneMessage, unitOutputFromNumber, kNoLastUnit};
constexpr Coding kAsDocumented{documentedSteps, dccValue,   dccPosition,
                               kPulseMessages,  unitOutput, kLastUnit};

}  // namespace

const Coding& coding(const Settings& settings) {
  return settings.makerForm ? kAsDocumented : kAsAlways;
}

}  // namespace lokari::z21
