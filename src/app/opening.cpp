#include "app/opening.h"

#include "cab/slot_unit.h"
#include "link/station_link.h"

namespace lokari {

void Opening::show(const WaitWindowFactory& makeWindow, const QString& text) {
  window_ = makeWindow(text, [weak = weak_from_this()] {
    if (const auto self = weak.lock()) self->giveUp();
  });
}

void Opening::follow(SlotUnit& unit) {
  unit_ = &unit;
  const auto self = shared_from_this();
  // The connections go with the unit, and with them what was asked for.
  QObject::connect(&unit, &SlotUnit::answered, &unit, [self] { self->end(); });
  QObject::connect(&unit, &SlotUnit::loaded, &unit, [self] { self->leave.reset(); });
  QObject::connect(&unit, &SlotUnit::leaving, &unit, [self] {
    self->end();
    self->leave.reset();
  });
}

void Opening::giveUp() {
  givenUp_ = true;
  end();
  if (unit_ && !unit_->isLoading()) {
    unit_->unload();
  } else if (begun_) {
    link_.cancelRequested = true;
  }
}

}  // namespace lokari
