// The questions of a station's state that an Intellibox and a Tams MC share: one byte behind the
// letter "x".
//
//   A0    versions. Intellibox: 02 and the SPU's, 02 and the KPU's (low byte first), 01 PPU, 01
//         LIPU, 01 DNG, 05 and the serial number, 00. Tams MC: 04, three digits and a letter of the
//         version, serial number, 00.
//   A2    state: 08 power on, 04 overheated, 10 halt, 40 track voltage of scale N
#pragma once

#include "sim/layout.h"

namespace lokari::sim {

inline constexpr int kAskVersions = 0xA0;
inline constexpr int kAskIbxState = 0xA2;

/// The answer to A2. An overloaded track counts as overheated.
int ibxState(const Layout& layout);

}  // namespace lokari::sim
