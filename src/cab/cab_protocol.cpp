#include "cab/cab_protocol.h"

#include "cab/cab_line.h"
#include "cab/panel_protocol.h"

namespace lokari {

StationLink& CabProtocol::link() const {
  return line_.link();
}

StationLink& PanelProtocol::link() const {
  return line_.link();
}

}  // namespace lokari
