// Messages between a cab or panel and a Z21; link/z21_codec.h has the wire form.
//
//   E4 code high low value   drive: code 13, 12, 10 for 128, 28 and other steps; value is the step,
//                            plus 80 for forward
//   E4 F8 high low n         function n off, 40 + n on
//   80                       stop all vehicles
//   21 81                    track power on
//   E3 F0 high low           ask for a vehicle; answer EF high low steps speed functions
//   43 high low              ask for an output; answer 43 high low state
//   53 high low value        switch an output: A8 on, A9 off; as documented 88 on, 89 off, then 80
//                            or 81, which takes the power off the coil
//
// A vehicle's high address byte carries C0 from address 128 on. An output's address counts from 0.
#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

#include "cab/cab_protocol.h"

namespace lokari::z21 {

/// Texts for Z21Protocol::z21Send(), checksum included. `value` is what stands for the speed.
QString driveText(int address, int steps, int value, bool backward);
/// `n` is 0 to 28.
QString functionText(int address, int n, bool on);
QString stopText(bool stopped);
QString vehicleQuestion(int address);
QString outputQuestion(int output);
QString outputText(int output, int value);

/// How the answers start.
QByteArray vehicleHead(int address);
QByteArray outputHead(int output);

/// Bytes of the answers, checksum included, that must have come before one is looked at.
inline constexpr int kVehicleLength = 14;
inline constexpr int kOutputLength = 9;

struct VehicleState {
  int address = 0;    ///< without the mark of long addresses
  int stepsCode = 4;  ///< stands for the vehicle's steps
  int value = 0;      ///< stands for the speed, 0 to 127
  bool backward = false;
  FunctionMask functions = 0;
  FunctionMask told = 0;  ///< the functions that the message had room for
};

/// Nothing for any other message, or one shorter than kVehicleLength.
std::optional<VehicleState> vehicleState(const QByteArray& message);

struct OutputState {
  bool off = false;
  bool neverSwitched = false;
};

/// Nothing for a message shorter than kOutputLength.
std::optional<OutputState> outputState(const QByteArray& message);

}  // namespace lokari::z21
