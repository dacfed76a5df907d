#include "station/inquiry_table.h"

#include <array>

#include "station/intellibox.h"
#include "station/lenz.h"
#include "station/lidp.h"
#include "station/mx10.h"
#include "station/mx1_text.h"
#include "station/tams.h"
#include "station/z21.h"
#include "station/zimo_binary.h"

namespace lokari {
namespace {

struct InquiryRow {
  ProtocolFamily family;
  std::unique_ptr<StationInquiry> (*make)(StationLink& link, Settings& settings);
};

/// In the order of the families.
constexpr std::array kInquiries{
    InquiryRow{ProtocolFamily::Mx1Text, makeMx1TextInquiry},
    InquiryRow{ProtocolFamily::ZimoBinary, makeZimoBinaryInquiry},
    InquiryRow{ProtocolFamily::Lenz, makeLenzInquiry},
    InquiryRow{ProtocolFamily::LiDp, makeLidpInquiry},
    InquiryRow{ProtocolFamily::Intellibox, makeIntelliboxInquiry},
    InquiryRow{ProtocolFamily::Tams, makeTamsInquiry},
    InquiryRow{ProtocolFamily::Z21, makeZ21Inquiry},
    InquiryRow{ProtocolFamily::Mx10, makeMx10Inquiry},
};

constexpr size_t indexOf(ProtocolFamily family) {
  return static_cast<size_t>(family);
}

constexpr bool everyKindHasItsRow() {
  for (const StationKindRow& kind : kStationKinds) {
    const size_t index = indexOf(kind.family);
    if (index >= kInquiries.size() || kInquiries[index].family != kind.family) return false;
  }
  return true;
}
static_assert(everyKindHasItsRow());

}  // namespace

std::unique_ptr<StationInquiry> makeInquiry(ProtocolFamily family, StationLink& link,
                                            Settings& settings) {
  return kInquiries[indexOf(family)].make(link, settings);
}

}  // namespace lokari
