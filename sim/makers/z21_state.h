// What a Z21 tells of vehicles and of itself, and the commands that drive. Pure bytes, X-Bus
// messages without their checksum.
#pragma once

#include <QByteArray>

#include <optional>

#include "sim/layout.h"

namespace lokari::sim::makers {

/// The vehicle's state, EF address and so on, in a record of `size` bytes, 14 to 21.
QByteArray z21VehicleState(int address, const DriveState& state, int size);

/// An E4 message: who it is for, what it makes of a vehicle's state, and whether it stops it at
/// once.
struct Z21Drive {
  int address = 0;
  DriveState state = {};
  bool emergencyStop = false;
};
/// Nothing for a message that is invalid for a station with functions up to `lastFunction`. What it
/// does not tell stays as `layout` has it.
std::optional<Z21Drive> z21Drive(const QByteArray& message, int lastFunction, const Layout& layout);

}  // namespace lokari::sim::makers
