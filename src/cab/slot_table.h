// The slots of open cabs, or of open panels: which is where, and which comes next.
#pragma once

#include <functional>
#include <memory>
#include <vector>

#include "base/clock.h"
#include "cab/slot_unit.h"
#include "cab/slot_window.h"

namespace lokari {

class CabLine;

/// Each window lies so many pixels right of and below the one of the slot before: 300 twips.
inline constexpr int kSlotShift = 20;

class SlotTable {
 public:
  /// `loadIndex` when nothing is being made.
  static constexpr int kNoSlot = 65535;

  struct Opened {
    std::shared_ptr<SlotUnit> unit;
    std::unique_ptr<SlotWindow> window;
  };

  SlotTable(CabLine& line, int limit);
  ~SlotTable();
  SlotTable(const SlotTable&) = delete;
  SlotTable& operator=(const SlotTable&) = delete;

  enum class Result { Reused, Made, Full };

  /// Brings the unit of that address up, or makes one in the first free slot. It loads now, or as
  /// soon as the line is free, and shows itself then.
  Result open(int address, const std::function<Opened()>& make);

  /// The slot of an open unit with that address, 0 without one.
  int slotOf(int address) const;
  /// The unit in a slot, 1 to limit; null for an empty one.
  SlotUnit* form(int slot) const;
  /// Highest slot ever used. It never shrinks.
  int count() const { return count_; }
  /// Slot of the unit that is being made.
  int loadIndex() const { return loadIndex_; }

  /// Unloads all of them in the order of their slots.
  void closeAll();

 private:
  struct Slot {
    std::shared_ptr<SlotUnit> unit;
    std::unique_ptr<SlotWindow> window;
    bool loadFlag = false;
    bool scaled = false;
  };

  /// A unit that is going, until nothing of it stands on the stack.
  struct Leaving {
    SlotUnit* unit;
    std::unique_ptr<SlotWindow> window;
    bool gone = false;
  };

  int freeSlot() const;
  void load(int slot);
  void bringUp(int slot);
  void empty(int slot);
  void noteGone(const SlotUnit* unit);

  CabLine& line_;
  int limit_;
  int count_ = 0;
  int loadIndex_ = kNoSlot;
  std::vector<Slot> slots_;  // index 0 unused
  std::vector<Leaving> leaving_;
  std::unique_ptr<Clock::Alarm> sweep_;
};

}  // namespace lokari
