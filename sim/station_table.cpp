#include "sim/station_table.h"

#include <array>

#include "sim/mx1_text_station.h"
#include "sim/tams_station.h"
#include "sim/zimo_binary_station.h"

namespace lokari::sim {
namespace {

template <class Kind>
std::unique_ptr<Station> make(const Surroundings& surroundings) {
  return std::make_unique<Kind>(surroundings);
}

constexpr std::array kStations{
    StationRow{u"MX1", Wire::Serial, 0, make<Mx1TextStation>},
    StationRow{u"MX1BIN", Wire::Serial, 0, make<Mx1BinStation>},
    StationRow{u"MX1ULF", Wire::Serial, 0, make<Mx1UlfStation>},
    StationRow{u"MX1V25", Wire::Serial, 0, make<Mx1TextStation>},
    StationRow{u"TAMSMC", Wire::Serial, 0, make<TamsStation>},
};

}  // namespace

std::span<const StationRow> stationTable() {
  return kStations;
}

const StationRow* stationByName(QStringView name) {
  for (const StationRow& row : kStations) {
    if (name.compare(QStringView(row.name), Qt::CaseInsensitive) == 0) return &row;
  }
  return nullptr;
}

}  // namespace lokari::sim
