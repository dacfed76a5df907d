#include "cab/z21_coding.h"

#include <array>

#include "base/settings.h"
#include "cab/dcc_speed.h"
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

/// Until another output may be switched.
constexpr Millis kBehindPulse = 100;
constexpr std::array kPulseMessages{OutputMessage{0x88, 0x89, kCoilPulse},
                                    OutputMessage{0x80, 0x81, kBehindPulse}};

int documentedSteps(int code) {
  if (code == 0) return kOf14;
  return code == 2 ? kOf28 : kOf128;
}

constexpr Coding kAsAlways{plainSteps,  cutStationSteps,      barPosition,
                           kOneMessage, unitOutputFromNumber, kNoLastUnit};
constexpr Coding kAsDocumented{documentedSteps, dccSpeedBits, dccBarPosition,
                               kPulseMessages,  unitOutput,   kLastUnit};

}  // namespace

const Coding& coding(const Settings& settings) {
  return settings.makerForm ? kAsDocumented : kAsAlways;
}

}  // namespace lokari::z21
