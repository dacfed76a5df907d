// The turnouts of a station: what was commanded last, and which of the two coils still has power.
#pragma once

#include <map>
#include <optional>
#include <set>
#include <utility>

#include "sim/layout.h"

namespace lokari::sim::makers {

class Accessories {
 public:
  explicit Accessories(Layout& layout) : layout_(layout) {}

  /// Turnouts count from 1, their outputs are 0 and 1. An output that is switched on stays so
  /// until it is switched off; both are reported, because a coil that is left on burns.
  void set(int turnout, int output, bool on);

  /// The output commanded last, or nothing when the turnout was never switched.
  std::optional<int> lastOutput(int turnout) const;
  bool isOn(int turnout, int output) const { return on_.count({turnout, output}) > 0; }

 private:
  Layout& layout_;
  std::map<int, int> last_;
  std::set<std::pair<int, int>> on_;
};

/// Reports that a vehicle was told to stop at once.
void reportEmergencyStop(const Layout& layout, int address);

}  // namespace lokari::sim::makers
