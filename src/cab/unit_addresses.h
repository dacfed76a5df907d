// Which addresses the four outputs of a function unit have, and how long a coil behind them has
// power. The one place that knows it.
//
// Unit D has the addresses (D - 1) x 4 + 1 to (D - 1) x 4 + 4, on every station: 13 has 49 to 52.
// Some stations are told an output's address, some the unit's place among all units, some the
// unit's number itself.
#pragma once

#include "base/clock.h"

namespace lokari {

inline constexpr int kUnitOutputs = 4;

/// How long a turnout's coil has power where it is switched off again: it burns when it keeps it.
inline constexpr Millis kCoilPulse = 250;

/// Units beyond it have addresses that no decoder can have.
inline constexpr int kLastUnit = 512;

/// Address of output `n`, 0 to 3, counted from 1.
constexpr int unitOutput(int unit, int n) {
  return (unit - 1) * kUnitOutputs + 1 + n;
}

/// The unit's place among all units, counted from 0.
constexpr int unitPlace(int unit) {
  return unit - 1;
}

/// Where a unit has the address of its first output, unlike on all other stations: 13 has 13 to 16.
constexpr int unitOutputFromNumber(int unit, int n) {
  return unit + n;
}

}  // namespace lokari
