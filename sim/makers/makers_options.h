// How a station in its maker's form is set up, within what the documents allow.
#pragma once

#include "base/clock.h"

namespace lokari::sim {

struct MakersOptions {
  /// Z21: broadcasts and CV results only to clients with flag 1. Else the client that asked gets
  /// what its own command brings about, whatever its flags.
  bool subscribersOnly = false;
  int stateSize = 15;        ///< Z21: bytes of a vehicle's state, 14 to 21
  int broadcastsInARow = 1;  ///< XpressNet: 1 to 3
  Millis accessTime = 250;   ///< of one CV

  bool operator==(const MakersOptions&) const = default;
};

}  // namespace lokari::sim
