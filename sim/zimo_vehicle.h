// A vehicle and a function unit in the bytes of the two Zimo protocols.
//
//   speed    0 to the number of steps
//   flags    10 the light, 20 backward, 80 by hand; 0C its steps: 04 for 14, 08 for 28, 0C for 128
//   low      F1 in bit 0 to F8 in bit 7
//   high     F9 in bit 0 to F12 in bit 3
//
// A unit of four outputs has two bits for each, from output 1 in bits 0 and 1 on: 1 is off, 2 is
// on. It is switched by 8, plus twice the output counted from 0, plus 1 for on.
#pragma once

#include "sim/layout.h"

namespace lokari::sim {

struct ZimoVehicle {
  int speed = 0;
  int flags = 0;
  int low = 0;
  int high = 0;
};

ZimoVehicle zimoVehicleFrom(const DriveState& state);
DriveState driveStateFrom(const ZimoVehicle& vehicle);

/// `unit` counts from 1.
int zimoOutputs(const Layout& layout, int unit);
/// False for a value that switches nothing.
bool switchZimoOutput(Layout& layout, int unit, int value);

}  // namespace lokari::sim
