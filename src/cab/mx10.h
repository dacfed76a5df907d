// Cabs and panels on an MX10.
#pragma once

#include <memory>

#include "cab/cab_protocol.h"
#include "cab/panel_protocol.h"

namespace lokari {

std::unique_ptr<CabProtocol> makeMx10Cab(CabLine& line, CabState& state, CabHooks hooks);
std::unique_ptr<PanelProtocol> makeMx10Panel(CabLine& line, PanelState& state);

}  // namespace lokari
