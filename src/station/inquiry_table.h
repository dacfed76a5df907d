// Which inquiry serves which family of stations.
#pragma once

#include <memory>

#include "base/station_kind.h"

namespace lokari {

class StationInquiry;
class StationLink;
struct Settings;

std::unique_ptr<StationInquiry> makeInquiry(ProtocolFamily family, StationLink& link,
                                            Settings& settings);

}  // namespace lokari
