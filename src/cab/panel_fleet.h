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
  /// shown. False when no new panel was made; the user is told when the station has none or there
  /// is no slot.
  bool OpenPanel(int address, const QString& shortName);

  /// The panel in a slot, 1 to 16, null for an empty one.
  Panel* panelForms(int slot) const { return static_cast<Panel*>(slots_.form(slot)); }
  /// The open panel of an address, null for none.
  Panel* panelFor(int address) const {
    return isOpen(address) ? panelForms(slots_.slotOf(address)) : nullptr;
  }
  bool isOpen(int address) const { return slots_.slotOf(address) > 0; }
  int panelCount() const { return slots_.count(); }
  int panelLoadIndex() const { return slots_.loadIndex(); }

  void closeAll() { slots_.closeAll(); }

 private:
  PanelParts parts_;
  WindowFactory makeWindow_;
  SlotTable slots_;
};

}  // namespace lokari
