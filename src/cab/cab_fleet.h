// All open cabs.
#pragma once

#include "cab/cab.h"
#include "cab/slot_table.h"

namespace lokari {

class CabFleet {
 public:
  static constexpr int kCabs = 32;

  /// Makes the window of a cab; it keeps the cab for as long as it lives.
  using WindowFactory = std::function<std::unique_ptr<SlotWindow>(std::shared_ptr<Cab>)>;

  CabFleet(CabParts parts, WindowFactory makeWindow);

  /// A cab for an address: the open one comes up, or a new one is made and shown. `noRecord`: not
  /// for the record on show. False when no new cab was made; the user has been told when there is
  /// none.
  bool OpenCab(int address, bool noRecord);
  /// The same for a record that was on show when the cab was asked for; nothing for `noRecord`.
  bool OpenCab(int address, const std::optional<CabRecord>& record);

  /// The cab in a slot, 1 to 32, null for an empty one.
  Cab* cabForms(int slot) const { return static_cast<Cab*>(slots_.form(slot)); }
  /// The open cab of an address, null for none.
  Cab* cabFor(int address) const {
    return isOpen(address) ? cabForms(slots_.slotOf(address)) : nullptr;
  }
  bool isOpen(int address) const { return slots_.slotOf(address) > 0; }
  int cabCount() const { return slots_.count(); }
  int cabLoadIndex() const { return slots_.loadIndex(); }

  void closeAll() { slots_.closeAll(); }

 private:
  CabParts parts_;
  WindowFactory makeWindow_;
  SlotTable slots_;
};

}  // namespace lokari
