// Cabs and panels on the three Lenz interfaces. lenz_codec.h has the messages.
//
// Nothing but a question is waited for: confirmations of driving commands and of a stop stay in the
// input and are dropped by the next message. So a stop inside a question needs no care but that its
// confirmation is passed over; LayoutOrder hears it all the same.
#pragma once

#include <memory>

#include "cab/cab_protocol.h"
#include "cab/panel_protocol.h"

namespace lokari {

std::unique_ptr<CabProtocol> makeLenzCab(CabLine& line, CabState& state, CabHooks hooks);
std::unique_ptr<PanelProtocol> makeLenzPanel(CabLine& line, PanelState& state);

}  // namespace lokari
