#include "station/station_choice.h"

namespace lokari {
namespace {

constexpr const StationChoiceRow* find(const StationChoice& choice) {
  for (const StationChoiceRow& row : kStationChoices) {
    if (row.choice == choice) return &row;
  }
  return nullptr;
}

constexpr bool everyKindHasItsRow() {
  for (const StationKindRow& kind : kStationKinds) {
    if (find({kind.kind, false}) == nullptr) return false;
  }
  return true;
}
static_assert(everyKindHasItsRow());

}  // namespace

const StationChoiceRow& stationChoice(StationKind kind, bool lenzV36) {
  if (const StationChoiceRow* row = find({kind, lenzV36})) return *row;
  if (const StationChoiceRow* row = find({kind, false})) return *row;
  Q_UNREACHABLE();
}

}  // namespace lokari
