#include "cab/z21_codec.h"

#include "base/bytes.h"
#include "base/numbers.h"
#include "link/z21_codec.h"

namespace lokari::z21 {
namespace {

constexpr int kVehicle = 0xEF;
constexpr int kForward = 128;
constexpr int kFunctionOn = 64;
constexpr int kStateNever = 0;
constexpr int kStateOff = 2;

QString byteText(int value) {
  return hexPadded(value & 0xFF);
}

/// High byte, a blank, low byte.
QString wordText(int value) {
  return byteText(value >> 8) + QLatin1Char(' ') + byteText(value);
}

QString addressText(int address) {
  return wordText(markedAddress(address));
}

int codeOf(int steps) {
  if (steps == 128) return 0x13;
  return steps == 28 ? 0x12 : 0x10;
}

}  // namespace

QString driveText(int address, int steps, int value, bool backward) {
  return withChecksum(QStringLiteral("0A 00 40 00 E4 %1 %2 %3")
                          .arg(byteText(codeOf(steps)), addressText(address),
                               byteText(value + (backward ? 0 : kForward))));
}

QString functionText(int address, int n, bool on) {
  return withChecksum(QStringLiteral("0A 00 40 00 E4 F8 %1 %2")
                          .arg(addressText(address), byteText(n + (on ? kFunctionOn : 0))));
}

QString stopText(bool stopped) {
  return withChecksum(stopped ? QStringLiteral("06 00 40 00 80")
                              : QStringLiteral("07 00 40 00 21 81"));
}

QString vehicleQuestion(int address) {
  return withChecksum(QStringLiteral("09 00 40 00 E3 F0 ") + addressText(address));
}

QString outputQuestion(int output) {
  return withChecksum(QStringLiteral("08 00 40 00 43 ") + wordText(output));
}

QString outputText(int output, int value) {
  return withChecksum(
      QStringLiteral("09 00 40 00 53 %1 %2").arg(wordText(output), byteText(value)));
}

QByteArray vehicleHead(int address) {
  const int marked = markedAddress(address);
  return bytes({21, 0, 64, 0, 239, marked >> 8, marked & 0xFF});
}

QByteArray outputHead(int output) {
  return bytes({9, 0, 64, 0, 67, output >> 8 & 0xFF, output & 0xFF});
}

std::optional<VehicleState> vehicleState(const QByteArray& message) {
  if (message.size() < kVehicleLength || byteAt(message, 4) != kVehicle) return {};
  const auto at = [&](int place) { return static_cast<FunctionMask>(byteAt(message, place - 1)); };
  VehicleState state;
  state.address = static_cast<int>(at(7) + 256 * (at(6) & 63U));
  state.stepsCode = static_cast<int>(at(8) & 7U);
  state.backward = (at(9) & 128U) == 0;
  state.value = static_cast<int>(at(9) & 127U);
  state.functions =
      (at(10) >> 4 & 1U) | (at(10) & 15U) << 1 | at(11) << 5 | at(12) << 13 | at(13) << 21;
  // Behind F28 stands the checksum of a short one, F29 to F31 of the others.
  const bool isShort = message.size() == kVehicleLength;
  if (!isShort) state.functions |= at(14) << 29;
  state.told = isShort ? (FunctionMask{1} << 29) - 1 : ~FunctionMask{0};
  return state;
}

std::optional<OutputState> outputState(const QByteArray& message) {
  if (message.size() < kOutputLength) return {};
  const int state = byteAt(message, 7);
  return OutputState{.off = state == kStateOff, .neverSwitched = state == kStateNever};
}

}  // namespace lokari::z21
