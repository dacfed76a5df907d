#include "link/protocol_table.h"

#include <array>

#include "link/intellibox.h"
#include "link/lenz.h"
#include "link/lidp.h"
#include "link/mx10.h"
#include "link/mx1_text.h"
#include "link/station_protocol.h"
#include "link/tams.h"
#include "link/z21.h"
#include "link/zimo_binary.h"

namespace lokari {
namespace {

struct ProtocolRow {
  ProtocolFamily family;
  std::unique_ptr<StationProtocol> (*make)(StationLink& link);
};

/// In the order of the families.
constexpr std::array kProtocols{
    ProtocolRow{ProtocolFamily::Mx1Text, makeMx1TextProtocol},
    ProtocolRow{ProtocolFamily::ZimoBinary, makeZimoBinaryProtocol},
    ProtocolRow{ProtocolFamily::Lenz, makeLenzProtocol},
    ProtocolRow{ProtocolFamily::LiDp, makeLidpProtocol},
    ProtocolRow{ProtocolFamily::Intellibox, makeIntelliboxProtocol},
    ProtocolRow{ProtocolFamily::Tams, makeTamsProtocol},
    ProtocolRow{ProtocolFamily::Z21, makeZ21Protocol},
    ProtocolRow{ProtocolFamily::Mx10, makeMx10Protocol},
};

constexpr size_t indexOf(ProtocolFamily family) {
  return static_cast<size_t>(family);
}

constexpr bool everyKindHasItsRow() {
  for (const StationKindRow& kind : kStationKinds) {
    const size_t index = indexOf(kind.family);
    if (index >= kProtocols.size() || kProtocols[index].family != kind.family) return false;
  }
  return true;
}
static_assert(everyKindHasItsRow());

}  // namespace

std::unique_ptr<StationProtocol> makeProtocol(ProtocolFamily family, StationLink& link) {
  return kProtocols[indexOf(family)].make(link);
}

}  // namespace lokari
