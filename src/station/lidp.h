// The communication test of the Lenz decoder programmer: "01" and a carriage return, answered "OK",
// or "X3" for overcurrent.
#pragma once

#include <QByteArray>

#include <memory>

#include "station/station_inquiry.h"

namespace lokari {

/// What a reply says; its first two characters count.
StationReport lidpReport(const QByteArray& reply);

std::unique_ptr<StationInquiry> makeLidpInquiry(StationLink& link, Settings& settings);

}  // namespace lokari
