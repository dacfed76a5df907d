// Driving and switching messages of the Lenz interfaces, as the station obeys them. lenz_messages.h
// has the form of a message.
//
// The first generation knows one byte of address and 28 steps:
//
//   A2 adr 00        84 adr d f g
//   B3 adr d f       drives; d is 40 forward, 20 light, five bits of speed; f is F1 to F4
//
// The later ones:
//
//   E3 00 ah al      E4 m d f g; m is the steps: 0 14, 1 27, 2 28, 4 128
//   E4 1m ah al d    drives; m is 0, 1, 2, 3; d is 80 forward and the speed
//   E4 20 ah al f    f is 10 light, F1 to F4 in the low four bits
//   E4 21 ah al g    g is F5 to F7 in the low three bits
//
// The speed is 0 standing, 1 emergency stop, then the steps; with 27 and 28 of them two share a
// number, the second one with 10 added. All of them:
//
//   80               stops every vehicle; 81 00 tells everybody
//   42 grp 80, 81    42 grp s: two bits for each of two outputs, 1 off, 2 on; 81 is the second half
//   52 grp 8x        switches: 08 must be set, two bits of output, 01 for on
#pragma once

#include <QByteArray>

#include <optional>
#include <vector>

#include "sim/layout.h"

namespace lokari::sim {

class LenzDriving {
 public:
  /// `layout` must outlive it.
  LenzDriving(Layout& layout, bool firstGeneration)
      : layout_(layout), firstGeneration_(firstGeneration) {}

  /// What a whole message with a good check byte is answered with; nothing when it is none of
  /// these.
  std::optional<std::vector<QByteArray>> obey(const QByteArray& message);

 private:
  using Answers = std::optional<std::vector<QByteArray>>;

  Answers obeyFirst(const QByteArray& message);
  Answers obeyLater(const QByteArray& message);
  bool drive(const QByteArray& message);
  QByteArray outputs(int group, int half) const;

  Layout& layout_;
  bool firstGeneration_;
};

}  // namespace lokari::sim
