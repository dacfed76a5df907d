#include "cab/cab_table.h"

#include <array>

#include "cab/intellibox.h"
#include "cab/lenz.h"
#include "cab/mx10.h"
#include "cab/mx1_text.h"
#include "cab/z21.h"
#include "cab/zimo_binary.h"

namespace lokari {
namespace {

struct CabRow {
  ProtocolFamily family;
  std::unique_ptr<CabProtocol> (*makeCab)(CabLine&, CabState&, CabHooks);
  std::unique_ptr<PanelProtocol> (*makePanel)(CabLine&, PanelState&);
};

/// In the order of the families.
constexpr std::array kCabs{
    CabRow{ProtocolFamily::Mx1Text, makeMx1TextCab, makeMx1TextPanel},
    CabRow{ProtocolFamily::ZimoBinary, makeZimoBinaryCab, makeZimoBinaryPanel},
    CabRow{ProtocolFamily::Lenz, makeLenzCab, makeLenzPanel},
    CabRow{ProtocolFamily::LiDp, nullptr, nullptr},
    CabRow{ProtocolFamily::Intellibox, makeIntelliboxCab, makeIntelliboxPanel},
    CabRow{ProtocolFamily::Tams, makeIntelliboxCab, makeIntelliboxPanel},
    CabRow{ProtocolFamily::Z21, makeZ21Cab, makeZ21Panel},
    CabRow{ProtocolFamily::Mx10, makeMx10Cab, makeMx10Panel},
};

constexpr size_t indexOf(ProtocolFamily family) {
  return static_cast<size_t>(family);
}

constexpr bool everyKindHasItsRow() {
  for (const StationKindRow& kind : kStationKinds) {
    const size_t index = indexOf(kind.family);
    if (index >= kCabs.size() || kCabs[index].family != kind.family) return false;
  }
  return true;
}
static_assert(everyKindHasItsRow());

}  // namespace

std::unique_ptr<CabProtocol> makeCabProtocol(ProtocolFamily family, CabLine& line, CabState& state,
                                             CabHooks hooks) {
  const CabRow& row = kCabs[indexOf(family)];
  return row.makeCab == nullptr ? nullptr : row.makeCab(line, state, std::move(hooks));
}

std::unique_ptr<PanelProtocol> makePanelProtocol(ProtocolFamily family, CabLine& line,
                                                 PanelState& state) {
  const CabRow& row = kCabs[indexOf(family)];
  return row.makePanel == nullptr ? nullptr : row.makePanel(line, state);
}

}  // namespace lokari
