#include "cab/cab_fleet.h"

#include "base/prompt.h"
#include "cab/cab_line.h"
#include "link/station_link.h"

namespace lokari {

CabFleet::CabFleet(CabParts parts, WindowFactory makeWindow)
    : parts_(std::move(parts)), makeWindow_(std::move(makeWindow)), slots_(parts_.line, kCabs) {}

bool CabFleet::OpenCab(int address, bool noRecord) {
  return OpenCab(address,
                 noRecord ? std::nullopt : std::optional<CabRecord>(parts_.records.onShow()));
}

bool CabFleet::OpenCab(int address, const std::optional<CabRecord>& record) {
  if (!parts_.line.link().settings().station().cab.available()) {
    parts_.prompt.message(QStringLiteral("Fahrregler für diese Digitalzentrale nicht verfügbar!"));
    return false;
  }
  const auto result = slots_.open(address, [&]() -> SlotTable::Opened {
    auto cab = std::make_shared<Cab>(parts_, address, record);
    return {cab, makeWindow_(cab)};
  });
  if (result == SlotTable::Result::Full) {
    parts_.prompt.message(QStringLiteral("Keine weiteren Fahrfenster möglich!"), Icon::None);
  }
  return result == SlotTable::Result::Made;
}

}  // namespace lokari
