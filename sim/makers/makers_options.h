// How a station in its maker's form is set up, within what the documents allow.
#pragma once

#include "base/clock.h"

namespace lokari::sim {

/// Where an XpressNet interface confirms a command that a broadcast answers.
enum class Confirmation { None, Ahead, Behind };

struct MakersOptions {
  // Z21
  /// Broadcasts and CV results only to clients with flag 1. Else the client that asked gets what
  /// its own command brings about, whatever its flags.
  bool subscribersOnly = false;
  /// Everything that one datagram brings about goes into one datagram to each client.
  bool bundled = false;
  int stateSize = 15;  ///< bytes of a vehicle's state, 14 to 21

  // XpressNet
  int broadcastsInARow = 1;  ///< 1 to 3
  Confirmation confirmation = Confirmation::None;
  int stationVersion = 0;  ///< 30 or 36, hexadecimal; 0 is the interface's own

  // Intellibox and Tams
  bool fewVersions = false;  ///< as other stations with this protocol: 6 bytes

  Millis accessTime = 250;  ///< of one CV

  bool operator==(const MakersOptions&) const = default;
};

}  // namespace lokari::sim
