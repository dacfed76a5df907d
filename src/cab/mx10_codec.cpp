#include "cab/mx10_codec.h"

#include <algorithm>
#include <array>

#include "link/mx10.h"
#include "link/mx10_codec.h"

namespace lokari::mx10 {
namespace {

constexpr int kBackwardSent = 4;
/// Asked for, or on the track: stations tell the one or the other.
constexpr int kBackwardRead = 0x0C;
constexpr int kSpeedBits = 3;

int low(int address) {
  return address & 0xFF;
}

int high(int address) {
  return address >> 8 & 0xFF;
}

int flag(bool on) {
  return on ? 1 : 0;
}

/// The data of the last answer when it has at least `count` bytes.
class Answer {
 public:
  Answer(const Mx10Protocol& station, int count)
      : enough_(station.getData(data_.data()) >= count) {}

  bool isWhole() const { return enough_; }
  quint8 at(size_t index) const { return data_[index]; }

 private:
  std::array<quint8, 18> data_{};
  bool enough_;
};

}  // namespace

CanMessage functionsQuestion(int address) {
  return message(0x020C86C2, {low(address), high(address)});
}

CanMessage speedQuestion(int address) {
  return message(0x020886C2, {low(address), high(address)});
}

CanMessage manualQuestion(int address) {
  return message(0x021486C2, {low(address), high(address), 1, 0});
}

CanMessage keepAlive(int address) {
  return message(0x024186C2, {low(address), high(address), 1, 0});
}

CanMessage drive(int address, int speedLow, quint8 flags, quint8 funcs) {
  return message(0x020986C2, {low(address), high(address), speedLow, flags, funcs, 0});
}

CanMessage function(int address, int n, bool on) {
  return message(0x021186C2, {low(address), high(address), n, 0, flag(on), 0});
}

CanMessage manual(int address, bool on) {
  return message(0x021586C2, {low(address), high(address), 1, 0, flag(on), 0});
}

CanMessage track(bool stopped) {
  return message(0x000186C2, {0, 0, 3, stopped ? 2 : 1});
}

CanMessage outputsQuestion(int address) {
  return message(0x010886C2, {low(address), high(address)});
}

CanMessage output(int address, int n, bool on) {
  return message(0x011186C2, {low(address), high(address), n, flag(on)});
}

int speedValue(int barPosition) {
  return std::min(barPosition * 8, kHighestValue);
}

quint8 speedFlags(quint8 flags, int value, bool backward) {
  return directionFlags(static_cast<quint8>((flags & 0xF8) | value / 256), backward);
}

quint8 directionFlags(quint8 flags, bool backward) {
  return static_cast<quint8>(backward ? flags | kBackwardSent : flags & ~kBackwardSent);
}

std::optional<FunctionMask> functionsIn(const Mx10Protocol& station) {
  const Answer answer(station, 3);
  if (!answer.isWhole()) return {};
  FunctionMask mask = 0;
  for (size_t i = 0; i < 4; ++i) mask |= FunctionMask{answer.at(2 + i)} << (8 * i);
  return mask;
}

std::optional<VehicleSpeed> speedIn(const Mx10Protocol& station) {
  const Answer answer(station, 4);
  if (!answer.isWhole()) return {};
  VehicleSpeed speed;
  speed.flags = answer.at(3);
  speed.funcs = answer.at(4);
  speed.backward = (speed.flags & kBackwardRead) != 0;
  const int value = answer.at(2) + 256 * (speed.flags & kSpeedBits);
  speed.barPosition = std::min(value / 8, CabState::kHighestSpeed);
  return speed;
}

std::optional<bool> manualIn(const Mx10Protocol& station) {
  const Answer answer(station, 5);
  if (!answer.isWhole()) return {};
  return (answer.at(4) & 1) != 0;
}

std::optional<quint8> outputsIn(const Mx10Protocol& station) {
  const Answer answer(station, 5);
  if (!answer.isWhole()) return {};
  return static_cast<quint8>(answer.at(4) & 0x55);
}

}  // namespace lokari::mx10
