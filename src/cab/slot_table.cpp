#include "cab/slot_table.h"

#include <algorithm>
#include <cmath>

#include "cab/cab_line.h"
#include "link/station_link.h"

namespace lokari {
namespace {

constexpr int kLoad = 0;

}  // namespace

SlotTable::SlotTable(CabLine& line, int limit)
    : line_(line), limit_(limit), slots_(static_cast<size_t>(limit) + 1) {}

SlotTable::~SlotTable() = default;

SlotUnit* SlotTable::form(int slot) const {
  return slots_.at(static_cast<size_t>(slot)).unit.get();
}

int SlotTable::slotOf(int address) const {
  for (int slot = 1; slot <= count_; ++slot) {
    if (form(slot) != nullptr && form(slot)->address() == address) return slot;
  }
  return 0;
}

int SlotTable::freeSlot() const {
  for (int slot = 1; slot <= count_; ++slot) {
    if (form(slot) == nullptr) return slot;
  }
  return count_ < limit_ ? count_ + 1 : 0;
}

SlotTable::Result SlotTable::open(int address, const std::function<Opened()>& make) {
  if (const int open = slotOf(address); open > 0) {
    // One that still loads shows itself when it has finished.
    if (slots_[static_cast<size_t>(open)].scaled) bringUp(open);
    return Result::Reused;
  }
  const int slot = freeSlot();
  if (slot == 0) return Result::Full;
  count_ = std::max(count_, slot);
  loadIndex_ = slot;
  Opened opened = make();
  Slot& place = slots_[static_cast<size_t>(slot)];
  place = {.unit = opened.unit, .window = std::move(opened.window)};
  opened.unit->onUnload = [this, slot] { empty(slot); };
  opened.unit->onGone = [this, unit = opened.unit.get()] { noteGone(unit); };
  load(slot);
  loadIndex_ = kNoSlot;
  return Result::Made;
}

void SlotTable::load(int slot) {
  Slot& place = slots_[static_cast<size_t>(slot)];
  line_.alone(place.unit.get(), kLoad, [this, slot, &place, unit = place.unit] {
    if (unit->isUnloading()) return;
    unit->load(place.loadFlag);
    if (!unit->isUnloading()) bringUp(slot);
  });
}

void SlotTable::bringUp(int slot) {
  Slot& place = slots_[static_cast<size_t>(slot)];
  SlotWindow& window = *place.window;
  window.setTag(slot);
  if (!std::exchange(place.scaled, true)) window.ResizeWindow();
  const QPoint there = window.designPlace() + QPoint(kSlotShift, kSlotShift) * (slot - 1);
  const QPointF scale = window.mainScale();
  window.moveTo({static_cast<int>(std::lround(there.x() * scale.x())),
                 static_cast<int>(std::lround(there.y() * scale.y()))});
  window.bringUp();
}

void SlotTable::empty(int slot) {
  Slot left = std::exchange(slots_[static_cast<size_t>(slot)], {});
  left.window->putAway();
  leaving_.push_back({left.unit.get(), std::move(left.window)});
}

void SlotTable::noteGone(const SlotUnit* unit) {
  for (Leaving& each : leaving_) each.gone = each.gone || each.unit == unit;
  // Its window's own handler may still be on the stack.
  sweep_ = line_.link().clock().after(
      0, [this] { std::erase_if(leaving_, [](const Leaving& each) { return each.gone; }); });
}

void SlotTable::closeAll() {
  for (int slot = 1; slot <= count_; ++slot) {
    if (SlotUnit* unit = form(slot)) unit->unload();
  }
}

}  // namespace lokari
