// All open switch panels.
#pragma once

#include "cab/panel.h"
#include "cab/slot_table.h"

namespace lokari {

class PanelFleet {
 public:
  static constexpr int kPanels = 16;

  /// Makes the window of a panel; it keeps the panel for as long as it lives.
  using WindowFactory = std::function<std::unique_ptr<SlotWindow>(std::shared_ptr<Panel>)>;

  PanelFleet(PanelParts parts, WindowFactory makeWindow);

  /// A panel for the function unit of an address: the open one comes up, or a new one is made and
  /// shown. The user is told when the station has none or there is no slot.
  void OpenPanel(int address, const QString& shortName);

  /// The panel in a slot, 1 to 16, null for an empty one.
  Panel* panelForms(int slot) const { return static_cast<Panel*>(slots_.form(slot)); }
  int panelCount() const { return slots_.count(); }
  int panelLoadIndex() const { return slots_.loadIndex(); }

  void closeAll() { slots_.closeAll(); }

 private:
  PanelParts parts_;
  WindowFactory makeWindow_;
  SlotTable slots_;
};

}  // namespace lokari
