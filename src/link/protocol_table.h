// Which protocol serves which family of stations.
#pragma once

#include <memory>

#include "base/station_kind.h"

namespace lokari {

class StationLink;
class StationProtocol;

/// A new protocol object for the family.
std::unique_ptr<StationProtocol> makeProtocol(ProtocolFamily family, StationLink& link);

}  // namespace lokari
