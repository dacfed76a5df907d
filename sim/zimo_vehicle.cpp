#include "sim/zimo_vehicle.h"

#include <algorithm>

namespace lokari::sim {
namespace {

constexpr int kLightFlag = 0x10;
constexpr int kBackwardFlag = 0x20;
constexpr int kByHandFlag = 0x80;
constexpr int kStepFlags = 0x0C;

struct StepMode {
  int flags;
  int steps;
};
constexpr StepMode kStepModes[] = {{0x04, 14}, {0x08, 28}, {0x0C, 128}};

constexpr int kOutputsOfUnit = 4;
constexpr int kFirstSwitchValue = 8;

int numberOfOutput(int unit, int output) {
  return kOutputsOfUnit * (unit - 1) + output + 1;
}

}  // namespace

ZimoVehicle zimoVehicleFrom(const DriveState& state) {
  ZimoVehicle vehicle{.speed = state.speed};
  for (const StepMode& mode : kStepModes) {
    if (mode.steps == state.steps) vehicle.flags = mode.flags;
  }
  if ((state.functions & 1U) != 0) vehicle.flags |= kLightFlag;
  if (state.backward) vehicle.flags |= kBackwardFlag;
  if (state.manual) vehicle.flags |= kByHandFlag;
  vehicle.low = static_cast<int>(state.functions >> 1 & 0xFF);
  vehicle.high = static_cast<int>(state.functions >> 9 & 0x0F);
  return vehicle;
}

DriveState driveStateFrom(const ZimoVehicle& vehicle) {
  DriveState state;
  for (const StepMode& mode : kStepModes) {
    if (mode.flags == (vehicle.flags & kStepFlags)) state.steps = mode.steps;
  }
  state.speed = std::min(vehicle.speed, state.steps);
  state.backward = (vehicle.flags & kBackwardFlag) != 0;
  state.manual = (vehicle.flags & kByHandFlag) != 0;
  state.functions = static_cast<quint32>(vehicle.high & 0x0F) << 9 |
                    static_cast<quint32>(vehicle.low & 0xFF) << 1 |
                    ((vehicle.flags & kLightFlag) != 0 ? 1U : 0U);
  return state;
}

int zimoOutputs(const Layout& layout, int unit) {
  int pairs = 0;
  for (int output = 0; output < kOutputsOfUnit; ++output) {
    pairs |= (layout.output(numberOfOutput(unit, output)) ? 2 : 1) << 2 * output;
  }
  return pairs;
}

bool switchZimoOutput(Layout& layout, int unit, int value) {
  const int place = value - kFirstSwitchValue;
  if (place < 0 || place >= 2 * kOutputsOfUnit) return false;
  layout.setOutput(numberOfOutput(unit, place / 2), place % 2 == 1);
  return true;
}

}  // namespace lokari::sim
