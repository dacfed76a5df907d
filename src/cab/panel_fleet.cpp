#include "cab/panel_fleet.h"

#include "base/prompt.h"
#include "cab/cab_line.h"
#include "link/station_link.h"

namespace lokari {

PanelFleet::PanelFleet(PanelParts parts, WindowFactory makeWindow)
    : parts_(std::move(parts)), makeWindow_(std::move(makeWindow)), slots_(parts_.line, kPanels) {}

bool PanelFleet::OpenPanel(int address, const QString& shortName) {
  if (!parts_.line.link().settings().station().cab.available()) {
    parts_.prompt.message(QStringLiteral("Fahrregler für diese Digitalzentrale nicht verfügbar!"));
    return false;
  }
  const auto result = slots_.open(address, [&]() -> SlotTable::Opened {
    auto panel = std::make_shared<Panel>(parts_, address, shortName);
    return {panel, makeWindow_(panel)};
  });
  if (result == SlotTable::Result::Full) {
    parts_.prompt.message(QStringLiteral("Keine weiteren Schaltfenster möglich!"), Icon::None);
  }
  return result == SlotTable::Result::Made;
}

}  // namespace lokari
