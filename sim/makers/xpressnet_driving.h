// Vehicles and accessories on XpressNet. Messages without their checksum; xbus.h has the functions'
// groups.
//
//   E3 00 address     vehicle: E4 i speed f0 f1; i 0, 1, 2, 4 for 14, 27, 28, 128 steps; f0 is
//                     000 F0 F4 F3 F2 F1, f1 F12 to F5
//   E3 07 address     which of F0 to F12 are momentary: E3 50, bits as f0 and f1
//   E3 09 address     F13 to F28: E3 52 and two bytes            from version 3.6
//   E4 10 to 13       drive: address, speed as dcc_speed.h; 14, 27, 28, 128 steps
//   E4 20 to 22       functions; 23 and 28                       from version 3.6
//   E4 24 to 26       the same, what is momentary; 27 and 2C     from version 3.6
//   92 address        stop of one vehicle
//   42 g 80+N         accessories, g their number / 4, N = 1 the upper two: 42 g ITTNZZZZ, Z two
//                     bits each: 00 never switched, 01 last output 0, 10 last output 1
//   52 g 1000DBBd     switches output d of accessory BB, D = 1 on, 0 off
#pragma once

#include <map>
#include <optional>

#include "sim/makers/accessories.h"

namespace lokari::sim::makers {

/// The station's version as it tells it.
inline constexpr int kXpressNet30 = 0x30;
inline constexpr int kXpressNet36 = 0x36;

class XpressNetDriving {
 public:
  XpressNetDriving(Layout& layout, int version)
      : layout_(layout), accessories_(layout), version_(version) {}

  /// Obeys a message: the answer, an empty one for a command that has none, or nothing for a
  /// message that this station does not know.
  std::optional<QByteArray> obey(const QByteArray& message);

  const Accessories& accessories() const { return accessories_; }

 private:
  using Answer = std::optional<QByteArray>;
  struct Row {
    int header;
    int second;  ///< or kAny
    int version;
    Answer (XpressNetDriving::*obey)(const QByteArray& message);
  };
  static constexpr int kAny = -1;

  Answer tellVehicle(const QByteArray& message);
  Answer tellMomentary(const QByteArray& message);
  Answer tellUpperFunctions(const QByteArray& message);
  Answer drive(const QByteArray& message);
  Answer switchFunctions(const QByteArray& message);
  Answer setMomentary(const QByteArray& message);
  Answer stopOne(const QByteArray& message);
  Answer tellAccessories(const QByteArray& message);
  Answer switchAccessory(const QByteArray& message);

  Layout& layout_;
  Accessories accessories_;
  int version_;
  std::map<int, quint32> momentary_;
};

}  // namespace lokari::sim::makers
