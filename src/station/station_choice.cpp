#include "station/station_choice.h"

namespace lokari {
namespace {

/// Behind the last row when there is none. An index, since the sanitizers do not let the address of
/// a row be compared at compile time.
constexpr size_t find(const StationChoice& choice) {
  size_t index = 0;
  while (index < kStationChoices.size() && kStationChoices[index].choice != choice) ++index;
  return index;
}

constexpr bool everyKindHasItsRow() {
  for (const StationKindRow& kind : kStationKinds) {
    if (find({kind.kind, false}) == kStationChoices.size()) return false;
  }
  return true;
}
static_assert(everyKindHasItsRow());

}  // namespace

const StationChoiceRow& stationChoice(StationKind kind, bool lenzV36) {
  const size_t own = find({kind, lenzV36});
  return kStationChoices[own < kStationChoices.size() ? own : find({kind, false})];
}

}  // namespace lokari
