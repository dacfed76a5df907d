// The lines by which an MX1 with the text protocol drives and switches; mx1_text_lines.h has the
// others. Numbers are upper-case hexadecimal of two digits; zimo_vehicle.h has the bytes.
//
//   AFN number                         ask for a vehicle: AFN number speed flags low high 00, and
//                                      on the new generation high once more
//   FN number speed flags low [high]   drive a vehicle; without the last byte F9 to F12 stay
//   SS, SE                             track power off, on
//   AWN low [80]                       ask for a function unit: AWN low, 80 or 00, its outputs
//   MN low value                       switch an output
//
// A number below 80 is a vehicle's address, from 80 on the index of a long one. The station tells
// what an index stands for before it answers, and when it drives: E index high low 00. A unit has
// nine bits: the highest goes as 80 in the byte behind the lower eight.
#pragma once

#include <QByteArray>

#include <optional>

#include "sim/zimo_vehicle.h"

namespace lokari::sim {

struct Mx1Driving {
  enum class Kind { AskVehicle, Drive, Stop, Go, AskUnit, Switch };
  Kind kind = Kind::Stop;
  int number = 0;  ///< of a vehicle: its address or index
  ZimoVehicle vehicle = {};
  bool hasHigh = false;  ///< `vehicle.high` was told
  int unit = 0;          ///< 0 to 511
  int value = 0;         ///< of a switch, without the unit's ninth bit
};

/// A line without its carriage return; nothing for one that neither drives nor switches.
std::optional<Mx1Driving> mx1DrivingFrom(const QByteArray& line);

QByteArray mx1VehicleReply(int number, const ZimoVehicle& vehicle, bool newGeneration);
QByteArray mx1IndexNotice(int index, int address);
QByteArray mx1UnitReply(int unit, int outputs);
/// What the station says to a switch that it refuses.
QByteArray mx1SwitchRefusal();

}  // namespace lokari::sim
