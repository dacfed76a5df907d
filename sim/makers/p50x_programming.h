// The programming commands of the P50Xb protocol. c is a CV's number, low byte first.
//
//   EC c, ED c v     read, write a register, 1 to 8       EE c, EF c v   paged
//   F0 c, F2 c       read, direct by byte, by bits        F1 c v         write, direct
//   F3 c bit v       write one bit, direct
//   DE a c v         write on the main track              DA a c         read there, newer stations
//
// They are answered 00 started, 02 bad parameter or 80 busy. Then CE is answered F5 until there is
// a result, and that once: its length, then 00 and the value, 00 for a write, FE no acknowledge, FD
// short circuit or FC no decoder.
#pragma once

#include <QByteArray>

#include <optional>

#include "sim/station.h"

namespace lokari::sim::makers {

struct P50xAccess {
  bool main = false;
  bool write = false;
  Method method = Method::Direct;
  int address = 0;  ///< main track
  int cv = 0;
  int value = 0;
  std::optional<int> bit = {};  ///< of the CV that is written

  /// A CV or register that exists.
  bool isGood() const;
};

/// Bytes of a programming command by its first one, which is counted; 0 for none.
qsizetype p50xAccessSize(int operation);

/// The access in a whole command.
P50xAccess p50xAccess(const QByteArray& command);

QByteArray p50xResult(const P50xAccess& access, const TrackResult& result);

}  // namespace lokari::sim::makers
