// The speed byte of DCC, as on the track and in the messages of Z21 and XpressNet.
//
//   14 steps       R000VVVV   0 stop, 1 emergency stop, 2 to 15 are steps 1 to 14
//   28 steps       R00vVVVV   VVVV 0 stop, 1 emergency stop; v is the lowest bit: step n is n + 3,
//                             VVVV its upper bits, v its lowest
//   27 steps       the same, up to step 27
//   128 steps      RVVVVVVV   0 stop, 1 emergency stop, 2 to 127 are steps 1 to 126
//
// R is 1 for forward.
#pragma once

#include "sim/layout.h"

namespace lokari::sim::makers {

struct DccSpeed {
  int step = 0;
  bool backward = false;
  bool emergencyStop = false;

  bool operator==(const DccSpeed&) const = default;
};

/// `steps` is 14, 27, 28 or 128.
DccSpeed dccSpeed(int byte, int steps);

/// The byte of a vehicle's speed; steps of a vehicle that has more than there are count as the
/// last.
int dccSpeedByte(const DriveState& state);

}  // namespace lokari::sim::makers
