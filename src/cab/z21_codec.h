// Messages between a cab or panel and a Z21; link/z21_codec.h has the wire form.
//
//   E4 code high low value   drive: code 13, 12, 10 for 128, 28 and other steps; value is the step,
//                            plus 80 for forward
//   E4 F8 high low n         function n off, 40 + n on
//   80                       stop all vehicles
//   21 81                    track power on
//   E3 F0 high low           ask for a vehicle; answer EF high low steps speed functions
//   43 high low              ask for an output; answer 43 high low state
//   53 high low value        switch an output: A8 on, A9 off
//
// A vehicle's high address byte carries C0 from address 128 on. An output's address counts from 0.
#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

#include "cab/cab_protocol.h"

namespace lokari::z21 {

/// Texts for Z21Protocol::z21Send(), checksum included. `value` is the station's step, 0 to 127.
QString driveText(int address, int steps, int value, bool backward);
/// `n` is 0 to 28.
QString functionText(int address, int n, bool on);
QString stopText(bool stopped);
QString vehicleQuestion(int address);
QString outputQuestion(int output);
QString outputText(int output, bool on);

/// How the answers start.
QByteArray vehicleHead();
QByteArray outputHead();

/// Bytes of the answers, checksum included, that must have come before one is looked at.
inline constexpr int kVehicleLength = 15;
inline constexpr int kOutputLength = 9;

struct VehicleState {
  int address = 0;  ///< without the mark of long addresses
  int steps = 128;  ///< 14, 28 or 128
  int value = 0;    ///< the station's step, 0 to 127
  bool backward = false;
  FunctionMask functions = 0;
};

/// Nothing for a message shorter than kVehicleLength.
std::optional<VehicleState> vehicleState(const QByteArray& message);

/// True when the output is off; nothing for a message shorter than kOutputLength.
std::optional<bool> outputIsOff(const QByteArray& message);

}  // namespace lokari::z21
