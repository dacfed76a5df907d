#include "link/lenz.h"

#include "link/lenz_cv.h"
#include "link/station_link.h"

namespace lokari {
namespace {

constexpr int kFarewellPasses = 2;
constexpr int kFarewellTries = 5;

}  // namespace

std::unique_ptr<CvExchange> LenzProtocol::readCv(const CvRequest& request) {
  return lenzReadCv(link(), framing_, request);
}

std::unique_ptr<CvExchange> LenzProtocol::writeCv(const CvRequest& request) {
  return lenzWriteCv(link(), framing_, request);
}

/// Insists on normal operation: a station left in the service mode keeps the tracks dead.
void LenzProtocol::sayGoodbye(bool) {
  if (link().commJob == CommJob::WriteMain) return;
  for (int pass = 0; pass < kFarewellPasses; ++pass) {
    dropInput();
    for (int tries = 0; tries < kFarewellTries; ++tries) {
      if (framing_.resume(framing_.type().farewellWant) || link().isFarewellHurried()) return;
      link().Delay(1);
    }
  }
}

std::unique_ptr<StationProtocol> makeLenzProtocol(StationLink& link) {
  return std::make_unique<LenzProtocol>(link, link.settings().baseUnit);
}

}  // namespace lokari
