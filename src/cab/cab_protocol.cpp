#include "cab/cab_protocol.h"

#include "cab/cab_line.h"
#include "cab/panel_protocol.h"
#include "link/link_error.h"
#include "link/station_link.h"
#include "link/track_stop.h"

namespace lokari {

StationLink& CabProtocol::link() const {
  return line_.link();
}

void CabProtocol::order(const std::function<void()>& send, GoesOut when,
                        std::function<void()> listen) const {
  LayoutOrder& layout = link().trackStop().order();
  const bool stopped = state_.stopped;
  // By value: the cab may have gone by then.
  layout.await({.stops = stopped,
                .failed =
                    [told = hooks_.stopFailed, stopped](LayoutOrder::Outcome outcome) {
                      const bool refused = outcome == LayoutOrder::Outcome::Refused;
                      if (told) told(stopped, refused ? StopFault::Refused : StopFault::Silent);
                    },
                .held =
                    [told = hooks_.stopHeld, stopped] {
                      if (told) told(stopped);
                    },
                .listen = std::move(listen)});
  if (when == GoesOut::AtOnce) layout.noteSent();
  try {
    send();
  } catch (const LinkError&) {
    layout.drop();
    throw;
  }
}

StationLink& PanelProtocol::link() const {
  return line_.link();
}

}  // namespace lokari
