#include "sim/makers/z21_state.h"

#include "base/bytes.h"
#include "sim/makers/dcc_speed.h"
#include "sim/makers/xbus.h"

namespace lokari::sim::makers {
namespace {

/// Of a state's record: length, header, checksum.
constexpr int kAroundState = 5;
constexpr int kFirstLongAddress = 128;
constexpr int kLongAddress = 0xC0;

struct Steps {
  int steps;
  int ordered;  ///< second byte of a driving message
  int told;     ///< in a vehicle's state
};
constexpr Steps kSteps[] = {{14, 0x10, 0}, {28, 0x12, 2}, {128, 0x13, 4}};

constexpr int kOneFunction = 0xF8;

bool takeOneFunction(DriveState& state, int what, int lastFunction) {
  const int function = what & 0x3F;
  if (function > lastFunction) return false;
  const quint32 bit = 1U << function;
  switch (what >> 6) {
    case 0:
      state.functions &= ~bit;
      return true;
    case 1:
      state.functions |= bit;
      return true;
    case 2:
      state.functions ^= bit;
      return true;
    default:
      return false;
  }
}

}  // namespace

QByteArray z21VehicleState(int address, const DriveState& state, int size) {
  const int mark = address >= kFirstLongAddress ? kLongAddress : 0;
  int steps = kSteps[2].told;
  for (const Steps& each : kSteps) {
    if (each.steps == state.steps) steps = each.told;
  }
  const QByteArray data =
      bytes({0xEF, mark | address >> 8, address & 0xFF, steps, dccSpeedByte(state),
             groupBits(state.functions, 0x20),
             groupBits(state.functions, 0x21) | groupBits(state.functions, 0x22) << 4,
             groupBits(state.functions, 0x23), groupBits(state.functions, 0x28),
             groupBits(state.functions, 0x29)});
  const qsizetype wanted = size - kAroundState;
  return data.left(wanted).leftJustified(wanted, '\0');
}

std::optional<Z21Drive> z21Drive(const QByteArray& message, int lastFunction,
                                 const Layout& layout) {
  if (message.size() != 5) return {};
  const int what = byteAt(message, 1);
  const int value = byteAt(message, 4);
  Z21Drive drive{.address = xBusAddress(message, 2)};
  drive.state = layout.drive(drive.address);
  for (const Steps& each : kSteps) {
    if (each.ordered != what) continue;
    const DccSpeed speed = dccSpeed(value, each.steps);
    drive.state.steps = each.steps;
    drive.state.speed = speed.step;
    drive.state.backward = speed.backward;
    drive.emergencyStop = speed.emergencyStop;
    return drive;
  }
  if (what == kOneFunction) {
    if (!takeOneFunction(drive.state, value, lastFunction)) return {};
    return drive;
  }
  const FunctionGroup* group = functionGroup(what);
  if (group == nullptr || group->first > lastFunction) return {};
  drive.state.functions = withGroup(drive.state.functions, *group, value);
  return drive;
}

}  // namespace lokari::sim::makers
