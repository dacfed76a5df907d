#include "link/z21_form.h"

#include "base/settings.h"

namespace lokari {
namespace {

constexpr Z21Form kAsAlways{.checksOfBytes = false,
                            .switchesOnAtLogOn = true,
                            .subscribes = false,
                            .leavesAsFound = false,
                            .asksOtherTrack = true,
                            .repeatsBehindNews = false,
                            .marksMainAddresses = false};
constexpr Z21Form kAsDocumented{.checksOfBytes = true,
                                .switchesOnAtLogOn = false,
                                .subscribes = true,
                                .leavesAsFound = true,
                                .asksOtherTrack = false,
                                .repeatsBehindNews = true,
                                .marksMainAddresses = true};

}  // namespace

const Z21Form& z21Form(const Settings& settings) {
  return settings.makerForm ? kAsDocumented : kAsAlways;
}

}  // namespace lokari
