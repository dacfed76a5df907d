// The flag byte that both Zimo protocols keep with a vehicle.
#pragma once

#include <QtGlobal>

namespace lokari::zimo {

inline constexpr int kLight = 16;     ///< F0
inline constexpr int kBackward = 32;  ///< direction
inline constexpr int kManual = 128;   ///< out of the station's automatic control

/// Bits of the other functions' bytes and their place among the functions.
inline constexpr int kFirstOfLowByte = 1;   ///< bit 0 of the one is F1, bit 7 F8
inline constexpr int kFirstOfHighByte = 9;  ///< bit 0 of the other is F9, bit 3 F12
inline constexpr int kLastOfHighByte = 15;  ///< the highest function that a command could carry

/// Functions that every state tells, as the bits of functionMask().
inline constexpr quint32 kUpToF8 = 0x1FF;

/// Speed steps of a vehicle: bits 2 and 3 of its flag byte, 128 where they name none.
constexpr int stepsOf(int flags) {
  switch (flags & 12) {
    case 4:
      return 14;
    case 8:
      return 28;
    default:
      return 128;
  }
}

/// The functions in three bytes of a state; bit n of the result is Fn. Of `high` only F9 to F12
/// count.
constexpr quint32 functionMask(int flags, int low, int high) {
  return ((flags & kLight) != 0 ? 1U : 0U) | static_cast<quint32>(low & 0xFF) << 1 |
         static_cast<quint32>(high & 0x0F) << 9;
}

/// The value that switches output `n`, 0 to 3, of a function unit.
constexpr int switchValue(int n, bool on) {
  return 2 * n + 8 + (on ? 1 : 0);
}

}  // namespace lokari::zimo
