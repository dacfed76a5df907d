#include "sim/lenz_driving.h"

#include <algorithm>
#include <array>

#include "base/bytes.h"
#include "sim/lenz_messages.h"

namespace lokari::sim {
namespace {

constexpr int kSecondOfPair = 0x10;
constexpr int kForwardFirst = 0x40;
constexpr int kLightFirst = 0x20;
constexpr int kForward = 0x80;
constexpr int kLight = 0x10;
constexpr int kFirstSteps = 28;

struct Steps {
  int steps;
  int told;     ///< low bits of a state's mode
  int ordered;  ///< low bits of a driving message's code
};
constexpr std::array kSteps{Steps{14, 0, 0}, Steps{27, 1, 1}, Steps{28, 2, 2}, Steps{128, 4, 3}};

bool sharesNumbers(int steps) {
  return steps == 27 || steps == 28;
}

int speedOf(int bits, int steps) {
  if (!sharesNumbers(steps)) return std::max((bits & (steps == 14 ? 0x0F : 0x7F)) - 1, 0);
  const int number = bits & 0x0F;
  if (number < 2) return 0;
  return 2 * number - 3 + ((bits & kSecondOfPair) != 0 ? 1 : 0);
}

int bitsOf(int speed, int steps) {
  if (speed == 0) return 0;
  if (!sharesNumbers(steps)) return speed + 1;
  return (speed + 3) / 2 + (speed % 2 == 0 ? kSecondOfPair : 0);
}

quint32 replaced(quint32 functions, int first, quint32 mask, int bits) {
  return (functions & ~(mask << first)) | (static_cast<quint32>(bits) & mask) << first;
}

int bitsFrom(quint32 functions, int first, quint32 mask) {
  return static_cast<int>(functions >> first & mask);
}

int addressOf(int high, int low) {
  return (high & 0x3F) * 256 + low;
}

}  // namespace

LenzDriving::Answers LenzDriving::obey(const QByteArray& message) {
  const std::vector<QByteArray> accepted{lenzAccepted()};
  const int group = byteAt(message, 1);
  const int last = byteAt(message, 2);
  switch (byteAt(message, 0)) {
    case 0x80: {
      layout_.setStopped(true);
      const QByteArray everybody = lenzClosed(bytes({0x81, 0x00}));
      if (firstGeneration_) return std::vector{everybody};
      return std::vector{lenzAccepted(), everybody};
    }
    case 0x42:
      if ((last & 0xFE) != 0x80) return {};
      return std::vector{outputs(group, last & 1)};
    case 0x52:
      if ((last & 0x88) == 0x88) {
        layout_.setOutput(group * 4 + (last >> 1 & 3) + 1, (last & 1) != 0);
      }
      return accepted;
    default:
      return firstGeneration_ ? obeyFirst(message) : obeyLater(message);
  }
}

LenzDriving::Answers LenzDriving::obeyFirst(const QByteArray& message) {
  const int address = byteAt(message, 1);
  DriveState state = layout_.drive(address);
  if (byteAt(message, 0) == 0xA2) {
    const int speed = state.speed * kFirstSteps / state.steps;
    const int d = bitsOf(speed, kFirstSteps) | (state.backward ? 0 : kForwardFirst) |
                  ((state.functions & 1U) != 0 ? kLightFirst : 0);
    return std::vector{lenzClosed(bytes(
        {0x84, address, d, bitsFrom(state.functions, 1, 15), bitsFrom(state.functions, 5, 7)}))};
  }
  if (byteAt(message, 0) != 0xB3) return {};
  const int d = byteAt(message, 2);
  state.steps = kFirstSteps;
  state.speed = speedOf(d, kFirstSteps);
  state.backward = (d & kForwardFirst) == 0;
  state.functions = replaced(state.functions, 0, 1, (d & kLightFirst) != 0 ? 1 : 0);
  state.functions = replaced(state.functions, 1, 15, byteAt(message, 3));
  layout_.setDrive(address, state);
  return std::vector{lenzAccepted()};
}

LenzDriving::Answers LenzDriving::obeyLater(const QByteArray& message) {
  if (byteAt(message, 0) == 0xE3 && byteAt(message, 1) == 0) {
    const DriveState& state = layout_.drive(addressOf(byteAt(message, 2), byteAt(message, 3)));
    const auto* const mode = std::find_if(
        kSteps.begin(), kSteps.end(), [&](const Steps& each) { return each.steps == state.steps; });
    if (mode == kSteps.end()) return {};
    const int f = bitsFrom(state.functions, 1, 15) | ((state.functions & 1U) != 0 ? kLight : 0);
    return std::vector{lenzClosed(
        bytes({0xE4, mode->told, bitsOf(state.speed, state.steps) | (state.backward ? 0 : kForward),
               f, bitsFrom(state.functions, 5, 7)}))};
  }
  if (byteAt(message, 0) != 0xE4 || !drive(message)) return {};
  return std::vector{lenzAccepted()};
}

bool LenzDriving::drive(const QByteArray& message) {
  const int code = byteAt(message, 1);
  const int address = addressOf(byteAt(message, 2), byteAt(message, 3));
  const int value = byteAt(message, 4);
  DriveState state = layout_.drive(address);
  const auto* const steps = std::find_if(
      kSteps.begin(), kSteps.end(), [&](const Steps& each) { return code == 0x10 + each.ordered; });
  if (steps != kSteps.end()) {
    state.steps = steps->steps;
    state.speed = speedOf(value, state.steps);
    state.backward = (value & kForward) == 0;
  } else if (code == 0x20) {
    state.functions = replaced(state.functions, 0, 1, (value & kLight) != 0 ? 1 : 0);
    state.functions = replaced(state.functions, 1, 15, value);
  } else if (code == 0x21) {
    state.functions = replaced(state.functions, 5, 7, value);
  } else {
    return false;
  }
  layout_.setDrive(address, state);
  return true;
}

QByteArray LenzDriving::outputs(int group, int half) const {
  const int first = group * 4 + 2 * half + 1;
  const int s = (layout_.output(first) ? 2 : 1) + 4 * (layout_.output(first + 1) ? 2 : 1);
  // The second half is marked.
  return lenzClosed(bytes({0x42, group, s + 0x10 * half}));
}

}  // namespace lokari::sim
