// Functions as the bits of a message.
#pragma once

#include "cab/cab_state.h"

namespace lokari {

/// Functions `first` to `last`, at most eight: bit 0 is `first`.
inline int functionBits(const CabState& state, int first, int last) {
  int bits = 0;
  for (int n = first; n <= last; ++n) {
    if (state.funcOn.at(n)) bits |= 1 << (n - first);
  }
  return bits;
}

/// `byte` with the bit of value `bit` set or cleared.
inline char withBit(char byte, int bit, bool set) {
  return static_cast<char>(set ? byte | bit : byte & (255 - bit));
}

}  // namespace lokari
