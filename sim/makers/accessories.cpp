#include "sim/makers/accessories.h"

namespace lokari::sim::makers {

void Accessories::set(int turnout, int output, bool on) {
  if (on) {
    last_[turnout] = output;
    layout_.setOutput(turnout, output == 1);
  }
  const bool changed = on ? on_.insert({turnout, output}).second : on_.erase({turnout, output}) > 0;
  if (!changed || !layout_.onChange) return;
  layout_.onChange(QStringLiteral("Weiche %1: Spule %2 %3")
                       .arg(turnout)
                       .arg(output)
                       .arg(on ? QStringLiteral("ein") : QStringLiteral("aus")));
}

std::optional<int> Accessories::lastOutput(int turnout) const {
  const auto found = last_.find(turnout);
  if (found == last_.end()) return {};
  return found->second;
}

void reportEmergencyStop(const Layout& layout, int address) {
  if (layout.onChange) layout.onChange(QStringLiteral("Fahrzeug %1: Nothalt").arg(address));
}

}  // namespace lokari::sim::makers
