#include "cab/lenz_codec.h"

#include <algorithm>
#include <array>

#include "base/bytes.h"
#include "cab/speed_steps.h"
#include "cab/unit_addresses.h"
#include "link/lenz_codec.h"
#include "link/lenz_meaning.h"

namespace lokari::lenz {
namespace {

constexpr int kForwardOfByte = 0x40;
constexpr int kLightOfByte = 0x20;
constexpr int kForward = 0x80;
constexpr int kLight = 0x10;
constexpr int kHalfStep = 0x10;  ///< with 27 and 28 steps: the even one of a pair

constexpr int kLastByteAddress = 255;
constexpr int kFirstLongAddress = 100;
constexpr int kLongAddressMark = 192;
constexpr int kLastAddress = 10239;
constexpr int kLastUnitInAByte = 256;

/// In the last byte of a state F5 to F12; the first generation has F5 to F7.
constexpr int kAllHigh = 0xFF;
constexpr int kFirstHigh = 0x07;

constexpr int kHeadingBase = 0xE2;
constexpr int kAskUpper = 0x09;
constexpr int kUpperHead = 0xE3;
constexpr int kUpperCode = 0x52;

constexpr int kOutputs = 0x42;
constexpr int kOutputBits = 0x0F;
constexpr int kSwitch = 0x52;
constexpr int kPower = 0x08;

bool hasFullSteps(int steps) {
  return steps == 14 || steps == 128;
}

template <class Heads>
bool isState(const QByteArray& reply, const Heads& heads) {
  if (reply.size() < kVehicleStateSize) return false;
  return std::find(heads.begin(), heads.end(), byteAt(reply, 0)) != heads.end();
}

/// `high` are the bits of the last byte that count.
FunctionMask functionsOf(const QByteArray& state, int high) {
  const int low = byteAt(state, 3);
  FunctionMask functions = (low & kLight) != 0 ? 1 : 0;
  functions |= static_cast<FunctionMask>(low & 0x0F) << 1U;
  functions |= static_cast<FunctionMask>(byteAt(state, 4) & high) << 5U;
  return functions;
}

int stepsOf(int mode) {
  constexpr std::array kSteps{14, 27, 28};
  const size_t code = mode & 0x07;
  return code < kSteps.size() ? kSteps[code] : 128;
}

QByteArray addressed(int head, int code, int address) {
  const int high = address < kFirstLongAddress ? 0 : address / 256 + kLongAddressMark;
  return bytes({head, code, high, address & 255});
}

}  // namespace

int speedBits(int position, int steps) {
  int value = stationSteps(position, steps);
  if (value > 0) {
    if (hasFullSteps(steps)) {
      ++value;
    } else {
      const bool even = value % 2 == 0;
      value = (value + 1) / 2 + 1 + (even ? kHalfStep : 0);
    }
  }
  return std::min(value, steps == 128 ? 127 : 31);
}

int barPositionOf(int d, int steps) {
  int value = d & (steps < 128 ? 0x0F : 0x7F);
  if (hasFullSteps(steps)) {
    value = std::max(value - 1, 0);
  } else {
    if (value > 0) value = 2 * (value - 1);
    if ((d & kHalfStep) == 0) value = std::max(value - 1, 0);
  }
  return barPosition(value, steps);
}

std::optional<QByteArray> askVehicleByte(int address) {
  if (address < 0 || address > kLastByteAddress) return std::nullopt;
  return bytes({0xA2, address, 0});
}

QByteArray driveByte(int address) {
  return bytes({0xB3, address, 0, 0});
}

std::optional<VehicleState> vehicleByteState(const QByteArray& reply, int address) {
  constexpr std::array kHeads{0x84, 0xA4};
  if (!isState(reply, kHeads) || byteAt(reply, 1) != address) return std::nullopt;
  const int d = byteAt(reply, 2);
  VehicleState state{.steps = kFirstGenerationSteps,
                     .speed = barPositionOf(d, kFirstGenerationSteps),
                     .d = d,
                     .backward = (d & kForwardOfByte) == 0,
                     .functions = functionsOf(reply, kFirstHigh)};
  if ((d & kLightOfByte) != 0) state.functions |= 1U;
  return state;
}

QByteArray driveByteOf(const QByteArray& reply) {
  return bytes({0xB3}) + reply.mid(1, 3);
}

std::optional<QByteArray> askVehicle(int address) {
  if (address < 0 || address > kLastAddress) return std::nullopt;
  return addressed(0xE3, 0, address);
}

QByteArray drive(int address) {
  return addressed(0xE4, 0x12, address) + '\0';
}

int stepCode(int steps) {
  constexpr std::array kSteps{14, 27, 28};
  const auto found = std::find(kSteps.begin(), kSteps.end(), steps);
  return 0x10 + static_cast<int>(found - kSteps.begin());
}

std::optional<VehicleState> vehicleState(const QByteArray& reply) {
  constexpr std::array kHeads{0x84, 0xA4, 0xE4, 0xE5, 0xE6};
  const bool base = byteAt(reply, 0) == kHeadingBase && reply.size() >= sizeBehind(kHeadingBase);
  if (!base && !isState(reply, kHeads)) return std::nullopt;
  const int d = byteAt(reply, 2);
  const int steps = stepsOf(byteAt(reply, 1));
  return VehicleState{.steps = steps,
                      .speed = barPositionOf(d, steps),
                      .d = d,
                      .backward = (d & kForward) == 0,
                      .functions = base ? 0 : functionsOf(reply, kAllHigh),
                      .tellsFunctions = !base};
}

QByteArray askUpperFunctions(int address) {
  return addressed(kUpperHead, kAskUpper, address);
}

std::optional<FunctionMask> upperFunctions(const QByteArray& reply) {
  if (reply.size() < kUpperFunctionsSize || byteAt(reply, 0) != kUpperHead ||
      byteAt(reply, 1) != kUpperCode) {
    return std::nullopt;
  }
  constexpr unsigned kFirstUpper = 13;
  const auto bits = static_cast<FunctionMask>(byteAt(reply, 2) | byteAt(reply, 3) << 8);
  return bits << kFirstUpper;
}

QByteArray stopAll() {
  return bytes({0x80, 0x80});
}

std::optional<QByteArray> askOutputs(int address, int half) {
  if (address < 1 || address > kLastUnitInAByte) return std::nullopt;
  return bytes({kOutputs, unitPlace(address), 0x80 + half});
}

std::optional<int> outputState(const QByteArray& reply) {
  if (reply.size() < kOutputStateSize || byteAt(reply, 0) != kOutputs) return std::nullopt;
  return byteAt(reply, 2) & kOutputBits;
}

int groupOf(const QByteArray& reply) {
  return byteAt(reply, 1);
}

bool isNeverSwitched(int outputState, int n) {
  return (outputState >> (2 * n) & 3) == 0;
}

QByteArray switchOutput(int address) {
  return bytes({kSwitch, unitPlace(address), 0x80});
}

int outputByte(int n, bool on) {
  return 0x88 + 2 * n + (on ? 1 : 0);
}

int outputOffByte(int n, bool on) {
  return outputByte(n, on) & ~kPower;
}

bool isWhole(const QByteArray& reply, int size) {
  const bool asAwaited = reply.size() >= size;
  if (asAwaited && reply.left(size) == withCheck(reply.left(size - 1))) return true;
  const int head = byteAt(reply, 0);
  return isHeader(head) ? reply.size() >= sizeBehind(head) : asAwaited;
}

bool isDoubtful(const QByteArray& reply, int size) {
  constexpr std::array kStates{0x84, 0xA4, kHeadingBase, 0xE4, 0xE5, 0xE6, kOutputs};
  const bool upper = byteAt(reply, 0) == kUpperHead && byteAt(reply, 1) == kUpperCode;
  const bool state = std::find(kStates.begin(), kStates.end(), byteAt(reply, 0)) != kStates.end();
  if (!upper && !state) return false;
  return !isSound(reply) && reply.left(size) != withCheck(reply.left(size - 1));
}

}  // namespace lokari::lenz
