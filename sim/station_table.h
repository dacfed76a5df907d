// The simulated stations by the names of their kinds.
#pragma once

#include <QStringView>

#include <memory>
#include <span>

#include "sim/makers/makers_options.h"
#include "sim/station.h"

namespace lokari::sim {

/// What a station is reached through.
enum class Wire { Serial, Udp };

struct StationRow {
  const char16_t* name;  ///< as in the setting `BaseUnit`
  Wire wire;
  quint16 udpPort;  ///< 0 on a serial line
  std::unique_ptr<Station> (*make)(const Surroundings& surroundings);
  bool takesFirmware = false;
  /// The same kind as its maker's documents describe it; nullptr where none tell enough.
  std::unique_ptr<Station> (*makeMakers)(const Surroundings& surroundings,
                                         const MakersOptions& options) = nullptr;
};

std::span<const StationRow> stationTable();

/// The row of a name, without regard to case, or nullptr.
const StationRow* stationByName(QStringView name);

}  // namespace lokari::sim
