// Vehicles and turnouts of the P50Xb protocol. Addresses are low byte first; replies begin with a
// code: 00 done, 08 and 09 queue of vehicles or turnouts full, 02 bad parameter, 06 power is off,
// 0A vehicle in no slot, 0C address not legal, 41 and 42 taken, but in halt, power off.
//
//   80 aL aH speed f    f: 80 take F1 to F4, 20 forward, 10 F0, 08 F4 ... 01 F1; speed 0 stop, 1
//                       emergency stop, 2 slowest, 127 fastest
//   84 aL aH            00 speed f real
//   85 aL aH            00 format steps FF FF
//   88 aL aH b          F1 to F8              8C aL aH   00 b
//   89 aL aH b          F9 to F16             8D aL aH   00 b      newer stations
//   8A aL aH b c        F17 to F24, F25 up    8E aL aH   00 b c    newer stations
//   90 nL h             turnout; h: 80 green, 40 on, 10 don't switch, 07 high bits of the number
//   94 nL nH            00 and 04 green, 01 DCC
//   95 g                00 colours of eight turnouts, 1 is green, and 00
#pragma once

#include <QByteArray>

#include <set>

#include "sim/makers/accessories.h"

namespace lokari::sim::makers {

inline constexpr int kP50xDone = 0x00;
inline constexpr int kP50xUnknown = 0x01;
inline constexpr int kP50xBadParameter = 0x02;
inline constexpr int kP50xPowerOff = 0x06;

class P50xDriving {
 public:
  /// `dccFormat` is what this station calls DCC.
  P50xDriving(Layout& layout, int dccFormat)
      : layout_(layout), accessories_(layout), dccFormat_(dccFormat) {}

  QByteArray drive(const QByteArray& command);
  QByteArray tellVehicle(const QByteArray& command);
  QByteArray tellConfiguration(const QByteArray& command);
  QByteArray switchFunctions(const QByteArray& command);
  QByteArray tellFunctions(const QByteArray& command);
  QByteArray switchTurnout(const QByteArray& command);
  QByteArray tellTurnout(const QByteArray& command);
  QByteArray tellTurnouts(const QByteArray& command);

  const Accessories& accessories() const { return accessories_; }

 private:
  bool isInSlot(int address) const { return slots_.count(address) > 0; }
  /// Gives a vehicle its slot; the code that this is answered.
  int take(int address);
  bool isGreen(int turnout) const { return accessories_.lastOutput(turnout) == 1; }

  Layout& layout_;
  Accessories accessories_;
  int dccFormat_;
  std::set<int> slots_;  ///< vehicles that were driven or whose functions were switched
};

}  // namespace lokari::sim::makers
