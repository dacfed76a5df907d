#include "sim/station_table.h"

#include <array>

#include "sim/intellibox_station.h"
#include "sim/lenz_station.h"
#include "sim/lidp_station.h"
#include "sim/makers/mx1_station.h"
#include "sim/makers/p50x_station.h"
#include "sim/makers/xpressnet_station.h"
#include "sim/makers/z21_station.h"
#include "sim/mx10_station.h"
#include "sim/mx1_text_station.h"
#include "sim/tams_station.h"
#include "sim/z21_station.h"
#include "sim/zimo_binary_station.h"

namespace lokari::sim {
namespace {

template <class Kind>
std::unique_ptr<Station> make(const Surroundings& surroundings) {
  return std::make_unique<Kind>(surroundings);
}

template <class Kind>
std::unique_ptr<Station> makeMakers(const Surroundings& surroundings,
                                    const MakersOptions& options) {
  return std::make_unique<Kind>(surroundings, options);
}

constexpr std::array kStations{
    StationRow{u"IBX", Wire::Serial, 0, make<IntelliboxStation>, false,
               makeMakers<makers::IntelliboxStation>},
    StationRow{u"LI100", Wire::Serial, 0, make<Li100Station>, false,
               makeMakers<makers::Li100Station>},
    StationRow{u"LI100V3", Wire::Serial, 0, make<Li100V3Station>, false,
               makeMakers<makers::Li100V3Station>},
    StationRow{u"LIDP", Wire::Serial, 0, make<LidpStation>},
    StationRow{u"LIUSB", Wire::Serial, 0, make<LiUsbStation>, false,
               makeMakers<makers::LiUsbStation>},
    StationRow{u"MX1", Wire::Serial, 0, make<Mx1Station>, true},
    StationRow{u"MX10", Wire::Serial, 0, make<Mx10KeyStation>},
    StationRow{u"MX10IP", Wire::Udp, 14520, make<Mx10IpStation>},
    StationRow{u"MX1BIN", Wire::Serial, 0, make<Mx1BinStation>, false,
               makeMakers<makers::Mx1Station>},
    StationRow{u"MX1ULF", Wire::Serial, 0, make<Mx1UlfStation>},
    StationRow{u"MX1V25", Wire::Serial, 0, make<Mx1V25Station>, true},
    StationRow{u"TAMSMC", Wire::Serial, 0, make<TamsStation>, false,
               makeMakers<makers::TamsStation>},
    StationRow{u"Z21IP", Wire::Udp, 21105, make<Z21Station>, false, makeMakers<makers::Z21Station>},
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
