// What differs in the messages of cabs and panels to a Lenz interface: as it always was, and as its
// maker's documents have it (setting `MakerForm`).
//
// As always F5 to F7 go out alone, and an output gets one message. As documented the byte of that
// group carries F8 as well, and the groups above follow:
//
//   E4 22 ah al g       F9 to F12
//   E4 23 ah al g       F13 to F20, from station 3.6 on
//   E4 28 ah al g       F21 to F28, from station 3.6 on
//   E3 09 ah al         asks for F13 to F28: E3 52 and their two bytes; an older station refuses it
//
// and an output's coil has power from 52 grp 88 + ... to 52 grp 80 + ..., since it burns when it
// keeps it.
#pragma once

#include <span>

#include "base/clock.h"

namespace lokari {

struct CabState;
struct Settings;

namespace lenz {

struct FunctionGroup {
  int first;
  int last;
  int code;
};

struct Coding {
  int (*speedBits)(int position, int steps);
  int (*barPosition)(int bits, int steps);
  std::span<const FunctionGroup> groups;
  int toldFunctions;        ///< the highest that a vehicle's state tells
  bool asksUpperFunctions;  ///< F13 to F28
  Millis pulse;             ///< an output is switched off behind it; 0 for never
};

const Coding& coding(const Settings& settings);

/// The byte of a group: its lowest function in bit 0; that of F0 to F4 has F1 in bit 0 and F0 in
/// bit 4.
int groupByte(const CabState& state, const FunctionGroup& group);

}  // namespace lenz
}  // namespace lokari
