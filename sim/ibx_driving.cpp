#include "sim/ibx_driving.h"

#include <algorithm>
#include <array>

#include "base/bytes.h"

namespace lokari::sim {
namespace {

constexpr int kForward = 0x20;
constexpr int kLight = 0x10;
constexpr int kOutputValid = 0x40;
constexpr int kOutputOn = 0x80;
constexpr quint32 kF1ToF7 = 0xFE;

QByteArray drive(Layout& layout, int address, int speed, int flags) {
  DriveState state = layout.drive(address);
  state.speed = speed & 127;
  state.steps = 128;
  state.backward = (flags & kForward) == 0;
  state.functions = (state.functions & ~1U) | ((flags & kLight) != 0 ? 1U : 0U);
  layout.setDrive(address, state);
  return bytes({0});
}

QByteArray driveState(const Layout& layout, int address) {
  const DriveState& state = layout.drive(address);
  const int speed = std::min(state.speed, 127);
  const int flags = (state.backward ? 0 : kForward) | ((state.functions & 1U) != 0 ? kLight : 0) |
                    static_cast<int>(state.functions >> 1U & 15U);
  return bytes({0, speed, flags, speed});
}

QByteArray switchFunctions(Layout& layout, int address, int mask) {
  DriveState state = layout.drive(address);
  state.functions = (state.functions & ~kF1ToF7) | (static_cast<quint32>(mask) << 1U & kF1ToF7);
  layout.setDrive(address, state);
  return bytes({0});
}

QByteArray functions(const Layout& layout, int address) {
  return bytes({0, static_cast<int>((layout.drive(address).functions & kF1ToF7) >> 1U)});
}

QByteArray switchOutput(Layout& layout, int low, int flags) {
  if ((flags & kOutputValid) != 0) {
    layout.setOutput(low + 256 * (flags & 7), (flags & kOutputOn) != 0);
  }
  return bytes({0});
}

QByteArray outputs(const Layout& layout, int group) {
  int bits = 0;
  for (int i = 0; i < 8; ++i) {
    if (layout.output((group - 1) * 8 + i + 1)) bits |= 1 << i;
  }
  return bytes({0, bits});
}

QByteArray stop(Layout& layout) {
  layout.setStopped(true);
  return bytes({0});
}

QByteArray go(Layout& layout) {
  layout.setStopped(false);
  layout.setTrackPower(true);
  return bytes({0});
}

struct Operation {
  int byte;
  qsizetype size;
};
constexpr std::array kOperations{
    Operation{0x80, 5}, Operation{0x84, 3}, Operation{0x88, 4}, Operation{0x8C, 3},
    Operation{0x90, 3}, Operation{0x95, 2}, Operation{0xA5, 1}, Operation{0xA7, 1},
};

}  // namespace

qsizetype ibxDrivingSize(int operation) {
  for (const Operation& each : kOperations) {
    if (each.byte == operation) return each.size;
  }
  return 0;
}

QByteArray obeyIbxDriving(Layout& layout, const QByteArray& command) {
  const int first = byteAt(command, 1);
  const int address = first + 256 * byteAt(command, 2);
  switch (byteAt(command, 0)) {
    case 0x80:
      return drive(layout, address, byteAt(command, 3), byteAt(command, 4));
    case 0x84:
      return driveState(layout, address);
    case 0x88:
      return switchFunctions(layout, address, byteAt(command, 3));
    case 0x8C:
      return functions(layout, address);
    case 0x90:
      return switchOutput(layout, first, byteAt(command, 2));
    case 0x95:
      return outputs(layout, first);
    case 0xA5:
      return stop(layout);
    case 0xA7:
      return go(layout);
    default:
      Q_UNREACHABLE();
  }
}

}  // namespace lokari::sim
