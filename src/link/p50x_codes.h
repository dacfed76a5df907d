// What the one byte says that an Intellibox or a Tams MC replies to a command. 0 is taken; from 40
// on the command was taken too, and the code warns.
#pragma once

namespace lokari::p50x {

inline constexpr int kDone = 0x00;
inline constexpr int kNoSlot = 0x0A;
inline constexpr int kNearlyFull = 0x40;
inline constexpr int kInHalt = 0x41;
inline constexpr int kWithoutPower = 0x42;
/// Programming: another access is in hand, and nothing was begun.
inline constexpr int kBusy = 0x80;

constexpr bool isTaken(int code) {
  return code == kDone || (code >= kNearlyFull && code <= kWithoutPower);
}

/// The queue of vehicles or of turnouts is full: nothing was done, and later it may be. 07 is the
/// turnouts' one in old texts.
constexpr bool isQueueFull(int code) {
  return code >= 0x07 && code <= 0x09;
}

/// Nothing was begun, and later it may be.
constexpr bool isBusy(int code) {
  return code == kBusy || isQueueFull(code);
}

/// The station has no such command.
constexpr bool isUnknown(int code) {
  return code == 0x01 || code == 0x3F;
}

}  // namespace lokari::p50x
