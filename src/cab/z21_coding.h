// What stands for a vehicle's speed and for an output's state in the messages to a Z21: as it
// always was, and as the documents of its maker have it (setting `MakerForm`).
//
// As always the speed is the plain value of speed_steps.h, and an output gets one message. As
// documented the speed is that of DCC, see dcc_speed.h, and an output's coil has power from one
// message to the next, since it burns when it keeps it.
#pragma once

#include <span>

#include "base/clock.h"

namespace lokari {

struct Settings;

namespace z21 {

/// One of the messages that switch an output.
struct OutputMessage {
  int on;        ///< the value that switches it on
  int off;       ///< and off
  Millis pause;  ///< behind it
};

struct Coding {
  /// Steps of a vehicle by their code in its state.
  int (*steps)(int code);
  /// What stands for the bar's position, 0 to 127. Never the emergency stop where there is one.
  int (*value)(int position, int steps);
  /// The bar's position for what stands for the speed; value() of it is the same again.
  int (*position)(int value, int steps);
  std::span<const OutputMessage> outputMessages;
  /// Address of a function unit's output, 0 to 3, counted from 1.
  int (*output)(int unit, int n);
  int lastUnit;
};

const Coding& coding(const Settings& settings);

}  // namespace z21
}  // namespace lokari
