#include "sim/makers/p50x_driving.h"

#include <algorithm>
#include <array>

#include "base/bytes.h"

namespace lokari::sim::makers {
namespace {

constexpr int kNoSlot = 0x0A;
constexpr int kAddressNotLegal = 0x0C;
constexpr int kTakenInHalt = 0x41;
constexpr int kTakenWithoutPower = 0x42;

constexpr int kTakeFunctions = 0x80;
constexpr int kForward = 0x20;
constexpr int kLight = 0x10;

constexpr int kGreen = 0x80;
constexpr int kOn = 0x40;
constexpr int kDontSwitch = 0x10;
constexpr int kGreenTold = 0x04;
constexpr int kDcc = 0x01;

constexpr int kLastAddress = 10239;
constexpr int kLastTurnout = 2040;
constexpr int kFastest = 127;
constexpr int kSteps = 126;
constexpr int kEmergencyStop = 1;

QByteArray code(int value) {
  return bytes({value});
}

int wordAt(const QByteArray& command, qsizetype at) {
  return byteAt(command, at) + 256 * byteAt(command, at + 1);
}

/// The functions in the data bytes of a command.
struct FunctionRange {
  int set;
  int told;
  int first;
  int bytes;
};
constexpr std::array kFunctions{FunctionRange{0x88, 0x8C, 1, 1}, FunctionRange{0x89, 0x8D, 9, 1},
                                FunctionRange{0x8A, 0x8E, 17, 2}};

const FunctionRange& functionsOf(int operation) {
  return *std::find_if(kFunctions.begin(), kFunctions.end(), [operation](const auto& each) {
    return each.set == operation || each.told == operation;
  });
}

int speedOf(const DriveState& state) {
  return state.speed == 0 ? 0 : std::min(state.speed + 1, kFastest);
}

}  // namespace

int P50xDriving::take(int address) {
  if (address < 1 || address > kLastAddress) return kAddressNotLegal;
  slots_.insert(address);
  if (!layout_.trackPower()) return kTakenWithoutPower;
  return layout_.stopped() ? kTakenInHalt : kP50xDone;
}

QByteArray P50xDriving::drive(const QByteArray& command) {
  const int address = wordAt(command, 1);
  const int speed = byteAt(command, 3);
  const int flags = byteAt(command, 4);
  if (speed > kFastest) return code(kP50xBadParameter);
  const int answer = take(address);
  if (answer == kAddressNotLegal) return code(answer);
  DriveState state = layout_.drive(address);
  state.steps = 128;
  state.speed = std::max(speed - kEmergencyStop, 0);
  state.backward = (flags & kForward) == 0;
  state.functions = (state.functions & ~1U) | ((flags & kLight) != 0 ? 1U : 0U);
  if ((flags & kTakeFunctions) != 0) {
    state.functions = (state.functions & ~0x1EU) | static_cast<quint32>(flags & 0x0F) << 1;
  }
  layout_.setDrive(address, state);
  if (speed == kEmergencyStop) reportEmergencyStop(layout_, address);
  return code(answer);
}

QByteArray P50xDriving::tellVehicle(const QByteArray& command) {
  const int address = wordAt(command, 1);
  if (!isInSlot(address)) return code(kNoSlot);
  const DriveState& state = layout_.drive(address);
  const int flags = (state.backward ? 0 : kForward) | ((state.functions & 1U) != 0 ? kLight : 0) |
                    static_cast<int>(state.functions >> 1 & 0x0F);
  return bytes({kP50xDone, speedOf(state), flags, speedOf(state)});
}

QByteArray P50xDriving::tellConfiguration(const QByteArray& command) {
  if (!isInSlot(wordAt(command, 1))) return code(kNoSlot);
  return bytes({kP50xDone, dccFormat_, kSteps, 0xFF, 0xFF});
}

QByteArray P50xDriving::switchFunctions(const QByteArray& command) {
  const FunctionRange& range = functionsOf(byteAt(command, 0));
  const int address = wordAt(command, 1);
  const int answer = take(address);
  if (answer == kAddressNotLegal) return code(answer);
  DriveState state = layout_.drive(address);
  for (int i = 0; i < range.bytes; ++i) {
    const int first = range.first + 8 * i;
    const quint32 mask = 0xFFU << first;
    state.functions =
        (state.functions & ~mask) | (static_cast<quint32>(byteAt(command, 3 + i)) << first & mask);
  }
  layout_.setDrive(address, state);
  return code(answer);
}

QByteArray P50xDriving::tellFunctions(const QByteArray& command) {
  const FunctionRange& range = functionsOf(byteAt(command, 0));
  const int address = wordAt(command, 1);
  if (!isInSlot(address)) return code(kNoSlot);
  QByteArray answer = code(kP50xDone);
  for (int i = 0; i < range.bytes; ++i) {
    const quint32 bits = layout_.drive(address).functions >> (range.first + 8 * i);
    appendByte(answer, static_cast<int>(bits & 0xFF));
  }
  return answer;
}

QByteArray P50xDriving::switchTurnout(const QByteArray& command) {
  const int what = byteAt(command, 2);
  const int number = byteAt(command, 1) + 256 * (what & 0x07);
  if (number < 1 || number > kLastTurnout) return code(kP50xBadParameter);
  if (!layout_.trackPower()) return code(kP50xPowerOff);
  if ((what & kDontSwitch) == 0) {
    accessories_.set(number, (what & kGreen) != 0 ? 1 : 0, (what & kOn) != 0);
  }
  return code(kP50xDone);
}

QByteArray P50xDriving::tellTurnout(const QByteArray& command) {
  const int number = wordAt(command, 1);
  if (number < 1 || number > kLastTurnout) return code(kP50xBadParameter);
  return bytes({kP50xDone, kDcc | (isGreen(number) ? kGreenTold : 0)});
}

QByteArray P50xDriving::tellTurnouts(const QByteArray& command) {
  const int group = byteAt(command, 1);
  if (group < 1 || group > kLastTurnout / 8) return code(kP50xBadParameter);
  int colours = 0;
  for (int i = 0; i < 8; ++i) {
    if (isGreen((group - 1) * 8 + i + 1)) colours |= 1 << i;
  }
  return bytes({kP50xDone, colours, 0});
}

}  // namespace lokari::sim::makers
