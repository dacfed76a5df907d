#include "cab/ibx_form.h"

#include <array>

#include "link/station_link.h"

namespace lokari {
namespace {

constexpr std::array kToldFunctions{ibx::kF1ToF7};
constexpr std::array kMakersFunctions{ibx::kF1ToF8, ibx::kF9ToF16, ibx::kF17ToF28};

constexpr IbxForm kTold{.functions = kToldFunctions,
                        .hasEmergencySpeed = false,
                        .switchesOff = false,
                        .outputReplySize = ibx::kOutputReplySize};
/// Colours come with a byte of reservations behind them.
constexpr IbxForm kMakers{.functions = kMakersFunctions,
                          .hasEmergencySpeed = true,
                          .switchesOff = true,
                          .outputReplySize = ibx::kOutputReplySize + 1};

}  // namespace

const IbxForm& ibxForm(const StationLink& link) {
  return link.settings().makerForm ? kMakers : kTold;
}

}  // namespace lokari
