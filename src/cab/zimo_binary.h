// Cabs and switch panels on the MX1 and the MX1ULF with the Zimo binary protocol.
#pragma once

#include <memory>

#include "cab/cab_protocol.h"
#include "cab/panel_protocol.h"

namespace lokari {

std::unique_ptr<CabProtocol> makeZimoBinaryCab(CabLine& line, CabState& state, CabHooks hooks);
std::unique_ptr<PanelProtocol> makeZimoBinaryPanel(CabLine& line, PanelState& state);

}  // namespace lokari
