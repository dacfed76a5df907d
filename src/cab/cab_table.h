// Which protocol serves the cabs and panels of which family of stations.
#pragma once

#include <memory>

#include "base/station_kind.h"
#include "cab/cab_protocol.h"
#include "cab/panel_protocol.h"

namespace lokari {

/// Null for a family without cabs.
std::unique_ptr<CabProtocol> makeCabProtocol(ProtocolFamily family, CabLine& line, CabState& state,
                                             CabHooks hooks);
/// Null for a family without panels.
std::unique_ptr<PanelProtocol> makePanelProtocol(ProtocolFamily family, CabLine& line,
                                                 PanelState& state);

}  // namespace lokari
