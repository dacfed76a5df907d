// Cabs with their windows on a real port.
#pragma once

#include "base/ui/pictures.h"
#include "base/ui/window_scale.h"
#include "cab/cab_fleet.h"
#include "cab/cab_line.h"
#include "cab/cab_table.h"
#include "cab/ui/frm_cab.h"
#include "real_station.h"
#include "support/places.h"

namespace lokari {

/// Cabs with their windows on a station of one kind.
class Cabs {
 public:
  Cabs(StationKind kind, int timeoutSeconds) : station(stationKind(kind), timeoutSeconds) {}
  ~Cabs() {
    fleet.closeAll();
    station.clock().waitUntil([this] { return !shared.isBusy(); }, deadline());
    station.clock().pump();
  }
  Cabs(const Cabs&) = delete;
  Cabs& operator=(const Cabs&) = delete;

  /// Null when the vehicle's state could not be read.
  FrmCab* open(int address) {
    if (station.link().settings().station().cab.linkStaysOpen) station.open(false);
    if (!station.fault().isEmpty()) return nullptr;
    fleet.OpenCab(address, false);
    station.clock().waitUntil(
        [this, address] { return last != nullptr && last->isVisible() && fleet.isOpen(address); },
        deadline());
    return station.prompt().shown.isEmpty() ? last : nullptr;
  }

  Millis deadline() {
    constexpr Millis kPatience = 2000;
    return station.clock().now() + kPatience;
  }

  RealStation station;
  CabLine shared{station.link()};
  VehicleRecords records{nullptr, station.prompt()};
  WindowScale scale{QString()};
  const Pictures pictures{places::data()};
  FrmCab* last = nullptr;
  CabFleet fleet{{shared, station.prompt(), records, {}, makeCabProtocol},
                 [this](const std::shared_ptr<Cab>& cab) {
                   auto window = std::make_unique<FrmCab>(cab, pictures, scale);
                   last = window.get();
                   return window;
                 }};
};

}  // namespace lokari
