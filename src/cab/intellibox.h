// Cabs and panels on the Intellibox and on the Tams MC, which speak the same driving commands.
// intellibox_codec.h has them.
#pragma once

#include <memory>

#include "cab/cab_protocol.h"
#include "cab/panel_protocol.h"

namespace lokari {

std::unique_ptr<CabProtocol> makeIntelliboxCab(CabLine& line, CabState& state, CabHooks hooks);
std::unique_ptr<PanelProtocol> makeIntelliboxPanel(CabLine& line, PanelState& state);

}  // namespace lokari
