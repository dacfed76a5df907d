#include "base/station_kind.h"

namespace lokari {

const StationKindRow& stationKind(StationKind kind, bool makerForm) {
  const auto& kinds = makerForm ? kMakerKinds : kStationKinds;
  return kinds[static_cast<size_t>(static_cast<int>(kind) - 1)];
}

bool switchesOn(const StationKindRow& kind, StationUse use, bool sessionOpen) {
  const SwitchesOn& row = kind.switchesOn;
  if (row.opening && !sessionOpen) return true;
  switch (use) {
    case StationUse::Cab:
      return row.cab;
    case StationUse::Test:
      return row.test;
    case StationUse::CvJob:
      return row.cvJob;
    case StationUse::Panel:
      break;
  }
  return false;
}

const StationKindRow* stationKindByName(QStringView name) {
  for (const StationKindRow& row : kStationKinds) {
    if (name.compare(QStringView(row.name), Qt::CaseInsensitive) == 0) return &row;
  }
  return nullptr;
}

QStringList stationNames() {
  QStringList names;
  for (const StationKindRow& row : kStationKinds) names << QString::fromUtf16(row.name);
  return names;
}

}  // namespace lokari
