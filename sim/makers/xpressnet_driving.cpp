#include "sim/makers/xpressnet_driving.h"

#include <array>

#include "base/bytes.h"
#include "sim/makers/dcc_speed.h"
#include "sim/makers/xbus.h"

namespace lokari::sim::makers {
namespace {

struct Steps {
  int steps;
  int ordered;
  int told;
};
constexpr Steps kSteps[] = {{14, 0x10, 0}, {27, 0x11, 1}, {28, 0x12, 2}, {128, 0x13, 4}};

/// A code of "what is momentary" is that of the group and this.
constexpr int kMomentary = 4;

QByteArray done() {
  return {};
}

/// F0 to F12 in two bytes.
QByteArray lowerFunctions(quint32 functions) {
  return bytes(
      {groupBits(functions, 0x20), groupBits(functions, 0x21) | groupBits(functions, 0x22) << 4});
}

}  // namespace

std::optional<QByteArray> XpressNetDriving::obey(const QByteArray& message) {
  static constexpr std::array kRows{
      Row{0x42, kAny, kXpressNet30, &XpressNetDriving::tellAccessories},
      Row{0x52, kAny, kXpressNet30, &XpressNetDriving::switchAccessory},
      Row{0x92, kAny, kXpressNet30, &XpressNetDriving::stopOne},
      Row{0xE3, 0x00, kXpressNet30, &XpressNetDriving::tellVehicle},
      Row{0xE3, 0x07, kXpressNet30, &XpressNetDriving::tellMomentary},
      Row{0xE3, 0x09, kXpressNet36, &XpressNetDriving::tellUpperFunctions},
      Row{0xE4, 0x10, kXpressNet30, &XpressNetDriving::drive},
      Row{0xE4, 0x11, kXpressNet30, &XpressNetDriving::drive},
      Row{0xE4, 0x12, kXpressNet30, &XpressNetDriving::drive},
      Row{0xE4, 0x13, kXpressNet30, &XpressNetDriving::drive},
      Row{0xE4, 0x20, kXpressNet30, &XpressNetDriving::switchFunctions},
      Row{0xE4, 0x21, kXpressNet30, &XpressNetDriving::switchFunctions},
      Row{0xE4, 0x22, kXpressNet30, &XpressNetDriving::switchFunctions},
      Row{0xE4, 0x23, kXpressNet36, &XpressNetDriving::switchFunctions},
      Row{0xE4, 0x28, kXpressNet36, &XpressNetDriving::switchFunctions},
      Row{0xE4, 0x24, kXpressNet30, &XpressNetDriving::setMomentary},
      Row{0xE4, 0x25, kXpressNet30, &XpressNetDriving::setMomentary},
      Row{0xE4, 0x26, kXpressNet30, &XpressNetDriving::setMomentary},
      Row{0xE4, 0x27, kXpressNet36, &XpressNetDriving::setMomentary},
      Row{0xE4, 0x2C, kXpressNet36, &XpressNetDriving::setMomentary},
  };
  for (const Row& row : kRows) {
    if (row.header != byteAt(message, 0) || row.version > version_) continue;
    if (row.second == kAny || row.second == byteAt(message, 1)) return (this->*row.obey)(message);
  }
  return {};
}

XpressNetDriving::Answer XpressNetDriving::tellVehicle(const QByteArray& message) {
  const DriveState& state = layout_.drive(xBusAddress(message, 2));
  int steps = 0;
  for (const Steps& each : kSteps) {
    if (each.steps == state.steps) steps = each.told;
  }
  return bytes({0xE4, steps, dccSpeedByte(state)}) + lowerFunctions(state.functions);
}

XpressNetDriving::Answer XpressNetDriving::tellMomentary(const QByteArray& message) {
  return bytes({0xE3, 0x50}) + lowerFunctions(momentary_[xBusAddress(message, 2)]);
}

XpressNetDriving::Answer XpressNetDriving::tellUpperFunctions(const QByteArray& message) {
  const quint32 functions = layout_.drive(xBusAddress(message, 2)).functions;
  return bytes({0xE3, 0x52, groupBits(functions, 0x23), groupBits(functions, 0x28)});
}

XpressNetDriving::Answer XpressNetDriving::drive(const QByteArray& message) {
  const int address = xBusAddress(message, 2);
  DriveState state = layout_.drive(address);
  for (const Steps& each : kSteps) {
    if (each.ordered == byteAt(message, 1)) state.steps = each.steps;
  }
  const DccSpeed speed = dccSpeed(byteAt(message, 4), state.steps);
  state.speed = speed.step;
  state.backward = speed.backward;
  layout_.setDrive(address, state);
  if (speed.emergencyStop) reportEmergencyStop(layout_, address);
  return done();
}

XpressNetDriving::Answer XpressNetDriving::switchFunctions(const QByteArray& message) {
  const int address = xBusAddress(message, 2);
  DriveState state = layout_.drive(address);
  state.functions =
      withGroup(state.functions, *functionGroup(byteAt(message, 1)), byteAt(message, 4));
  layout_.setDrive(address, state);
  return done();
}

XpressNetDriving::Answer XpressNetDriving::setMomentary(const QByteArray& message) {
  quint32& functions = momentary_[xBusAddress(message, 2)];
  functions =
      withGroup(functions, *functionGroup(byteAt(message, 1) - kMomentary), byteAt(message, 4));
  return done();
}

XpressNetDriving::Answer XpressNetDriving::stopOne(const QByteArray& message) {
  const int address = xBusAddress(message, 1);
  DriveState state = layout_.drive(address);
  state.speed = 0;
  layout_.setDrive(address, state);
  reportEmergencyStop(layout_, address);
  return done();
}

XpressNetDriving::Answer XpressNetDriving::tellAccessories(const QByteArray& message) {
  constexpr int kUpper = 0x10;
  const int group = byteAt(message, 1);
  const int half = byteAt(message, 2) & 1;
  int state = half != 0 ? kUpper : 0;
  for (int i = 0; i < 2; ++i) {
    const std::optional<int> output = accessories_.lastOutput(group * 4 + half * 2 + i + 1);
    if (output) state |= (*output + 1) << 2 * i;
  }
  return bytes({0x42, group, state});
}

XpressNetDriving::Answer XpressNetDriving::switchAccessory(const QByteArray& message) {
  const int what = byteAt(message, 2);
  accessories_.set(byteAt(message, 1) * 4 + (what >> 1 & 3) + 1, what & 1, (what & 0x08) != 0);
  return done();
}

}  // namespace lokari::sim::makers
