// Cabs and switch panels on the MX1 with the text protocol, in both its generations.
#pragma once

#include <memory>

#include "cab/cab_protocol.h"
#include "cab/panel_protocol.h"

namespace lokari {

std::unique_ptr<CabProtocol> makeMx1TextCab(CabLine& line, CabState& state, CabHooks hooks);
std::unique_ptr<PanelProtocol> makeMx1TextPanel(CabLine& line, PanelState& state);

}  // namespace lokari
