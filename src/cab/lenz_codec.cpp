#include "cab/lenz_codec.h"

#include <algorithm>
#include <array>

#include "base/bytes.h"
#include "cab/speed_steps.h"
#include "cab/unit_addresses.h"
#include "link/lenz_codec.h"

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

constexpr int kOutputs = 0x42;
constexpr int kSwitch = 0x52;

bool hasFullSteps(int steps) {
  return steps == 14 || steps == 128;
}

template <class Heads>
bool isState(const QByteArray& reply, const Heads& heads) {
  if (reply.size() < kVehicleStateSize) return false;
  return std::find(heads.begin(), heads.end(), byteAt(reply, 0)) != heads.end();
}

FunctionMask functionsOf(const QByteArray& state) {
  const int low = byteAt(state, 3);
  FunctionMask functions = (low & kLight) != 0 ? 1 : 0;
  functions |= static_cast<FunctionMask>(low & 0x0F) << 1U;
  functions |= static_cast<FunctionMask>(byteAt(state, 4) & 0x07) << 5U;
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
                     .backward = (d & kForwardOfByte) == 0,
                     .functions = functionsOf(reply)};
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
  constexpr std::array kHeads{0x84, 0xA4, 0xE4, 0xE5};
  if (!isState(reply, kHeads)) return std::nullopt;
  const int steps = stepsOf(byteAt(reply, 1));
  const int d = byteAt(reply, 2);
  return VehicleState{.steps = steps,
                      .speed = barPositionOf(d, steps),
                      .backward = (d & kForward) == 0,
                      .functions = functionsOf(reply)};
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
  return byteAt(reply, 2);
}

QByteArray switchOutput(int address) {
  return bytes({kSwitch, unitPlace(address), 0x80});
}

int outputByte(int n, bool on) {
  return 0x88 + 2 * n + (on ? 1 : 0);
}

bool isDoubtful(const QByteArray& reply, int size) {
  constexpr std::array kStates{0x84, 0xA4, 0xE4, 0xE5, kOutputs};
  if (std::find(kStates.begin(), kStates.end(), byteAt(reply, 0)) == kStates.end()) return false;
  return !isSound(reply) && reply.left(size) != withCheck(reply.left(size - 1));
}

QByteArray withoutNews(QByteArray input, bool usb) {
  const QByteArray head = usb ? bytes({0xFF, 0xFE}) : QByteArray();
  const std::array news{head + bytes({0x01, 0x04, 0x05}), head + bytes({0x61, 0x00, 0x61}),
                        head + bytes({0x61, 0x01, 0x60}), head + bytes({0x81, 0x00, 0x81})};
  const auto begins = [&input](const QByteArray& message) { return input.startsWith(message); };
  for (auto it = news.begin(); it != news.end();) {
    it = std::find_if(news.begin(), news.end(), begins);
    if (it != news.end()) input.remove(0, it->size());
  }
  return input;
}

}  // namespace lokari::lenz
