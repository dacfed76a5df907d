// What cabs and panels of an Intellibox or a Tams MC say and hear in each form of messages.
#pragma once

#include <span>

#include "cab/intellibox_codec.h"

namespace lokari {

class StationLink;

struct IbxForm {
  /// Lowest first. The first one every station has; a later one may be unknown to it.
  std::span<const ibx::FunctionRange> functions;
  bool hasEmergencySpeed;  ///< speed 1 is the vehicle's emergency stop and no speed
  bool switchesOff;        ///< an output is switched off behind its pulse
  int outputReplySize;

  /// The speed of a position of the bar, and the other way.
  int speedOf(int position) const { return hasEmergencySpeed && position == 1 ? 2 : position; }
  int positionOf(int speed) const { return hasEmergencySpeed && speed == 1 ? 0 : speed; }
};

/// The form of the link's settings.
const IbxForm& ibxForm(const StationLink& link);

}  // namespace lokari
