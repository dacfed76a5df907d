#include "cab/lenz_coding.h"

#include <array>

#include "base/settings.h"
#include "cab/dcc_speed.h"
#include "cab/function_bits.h"
#include "cab/lenz_codec.h"
#include "cab/unit_addresses.h"

namespace lokari::lenz {
namespace {

constexpr std::array kGroupsAsAlways{FunctionGroup{0, 4, 0x20}, FunctionGroup{5, 7, 0x21}};
constexpr std::array kGroupsAsDocumented{FunctionGroup{0, 4, 0x20}, FunctionGroup{5, 8, 0x21},
                                         FunctionGroup{9, 12, 0x22}, FunctionGroup{13, 20, 0x23},
                                         FunctionGroup{21, 28, 0x28}};

constexpr Coding kAsAlways{speedBits, barPositionOf, kGroupsAsAlways, 7, false, 0};
constexpr Coding kAsDocumented{dccSpeedBits, dccBarPosition, kGroupsAsDocumented,
                               12,           true,           kCoilPulse};

}  // namespace

const Coding& coding(const Settings& settings) {
  return settings.makerForm ? kAsDocumented : kAsAlways;
}

int groupByte(const CabState& state, const FunctionGroup& group) {
  constexpr int kLight = 0x10;
  if (group.first > 0) return functionBits(state, group.first, group.last);
  return (state.funcOn[0] ? kLight : 0) + functionBits(state, 1, group.last);
}

}  // namespace lokari::lenz
