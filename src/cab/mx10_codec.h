// Messages between a cab or panel and an MX10; link/mx10_codec.h has the form of identifiers. L and
// H are the address's low and high byte.
//
//   020C86C2  L H                       ask for the functions; answer L H and four bytes, bit 0 of
//                                       the first is the light
//   020886C2  L H                       ask for speed and flags; answer L H speed flags functions
//   021486C2  L H 01 00                 ask for the manual state; answer L H 01 00 state
//   024186C2  L H 01 00                 keep-alive
//   020986C2  L H speed flags funcs 00  drive: ten bits, the high two in the flags
//   021186C2  L H n 00 on 00            function
//   021586C2  L H 01 00 on 00           manual
//   000186C2  00 00 03 mode             track: 02 stop, 01 go
//   010886C2  L H                       ask for outputs; bit 2i of the answer's fifth byte is set
//                                       for output i off
//   011186C2  L H n on                  switch an output
#pragma once

#include <QtGlobal>

#include <optional>

#include "cab/cab_protocol.h"
#include "link/can_driver.h"

namespace lokari {
class Mx10Protocol;
}

namespace lokari::mx10 {

CanMessage functionsQuestion(int address);
CanMessage speedQuestion(int address);
CanMessage manualQuestion(int address);
CanMessage keepAlive(int address);
/// `low` is the low byte of the speed.
CanMessage drive(int address, int low, quint8 flags, quint8 funcs);
CanMessage function(int address, int n, bool on);
CanMessage manual(int address, bool on);
CanMessage track(bool stopped);
CanMessage outputsQuestion(int address);
CanMessage output(int address, int n, bool on);

/// The highest of the 1024 speed values that is sent; the bar's position times 8, cut.
inline constexpr int kHighestValue = 1008;
int speedValue(int barPosition);

/// The flags with the speed's high two bits and the direction put in, the third bit cleared.
quint8 speedFlags(quint8 flags, int value, bool backward);
/// Only the direction put in.
quint8 directionFlags(quint8 flags, bool backward);

struct VehicleSpeed {
  quint8 flags = 0;
  quint8 funcs = 0;
  bool backward = false;  ///< by the bit that is sent, or the one of the track
  int barPosition = 0;    ///< 0 to 127
};

/// The last answer, decoded; nothing when there is none or it is too short to tell.
std::optional<FunctionMask> functionsIn(const Mx10Protocol& station);
std::optional<VehicleSpeed> speedIn(const Mx10Protocol& station);
std::optional<bool> manualIn(const Mx10Protocol& station);
/// Bit 2i for output i that is off.
std::optional<quint8> outputsIn(const Mx10Protocol& station);

}  // namespace lokari::mx10
