// Driving and switching messages of the Lenz interfaces, and what the station tells of vehicles and
// outputs. Pure bytes, no I/O. link/lenz_codec.h has the form of a message; those here are given
// without the check byte unless told otherwise.
//
// The first generation knows addresses of one byte and 28 speed steps:
//
//   A2 adr 00           asks for a vehicle
//   84|A4 adr d f g     its state: d is 40 forward, 20 light, and the speed; f has 10 for the light
//                       and F1 to F4 in its low four bits, g F5 to F7 in its low three
//   B3 adr d f          drives it
//
// The later ones:
//
//   E3 00 ah al         asks for a vehicle; from address 100 on ah has C0 added
//   84|A4|E4|E5 m d f g its state: the low three bits of m are the steps, 0 for 14, 1 for 27, 2 for
//                       28, any other value 128; d is 80 forward, and the speed; f and g as above
//   E6 m d f g ah al    the same in double heading, with the other vehicle
//   E2 m d              the same of the base of a multi-heading: speed and direction alone
//   E4 1m ah al d       speed and direction; m is 0, 1, 2, 3 for 14, 27, 28, 128 steps
//   E4 20 ah al f       light and F1 to F4
//   E4 21 ah al g       F5 to F7
//
// All of them:
//
//   80                  stops everything
//   21 81               normal operation again
//   42 grp 80|81        asks for two of a group's four outputs
//   42 grp s            their state, two bits each: 1 off, 2 on, 0 not known
//   52 grp 8n           switches output n: 88 + 2n, and 1 more for on
#pragma once

#include <QByteArray>

#include <optional>

#include "cab/cab_protocol.h"

namespace lokari::lenz {

/// The speed bits for a position of the bar, 0 to 127, with 14, 27, 28 or 128 steps: 0 stands, 1
/// is never used (the emergency stop). With 27 and 28 steps the odd ones are 02, 03 and so on, the
/// even ones have 10 added.
int speedBits(int position, int steps);
/// The bar's position for the speed bits in a state's byte d.
int barPositionOf(int d, int steps);

struct VehicleState {
  int steps = 128;  ///< 14, 27, 28 or 128
  int speed = 0;    ///< position of the bar
  int d = 0;        ///< the byte of speed and direction
  bool backward = false;
  FunctionMask functions = 0;  ///< F0 to F12
  bool tellsFunctions = true;
};

/// Bytes of a vehicle's state with its check byte.
inline constexpr int kVehicleStateSize = 6;
/// Bytes of the outputs' state with its check byte.
inline constexpr int kOutputStateSize = 4;

// -- first generation

inline constexpr int kFirstGenerationSteps = 28;

/// Asks for a vehicle. Nothing for an address of more than a byte.
std::optional<QByteArray> askVehicleByte(int address);
/// B3 adr 00 00, for an address of one byte.
QByteArray driveByte(int address);
/// Nothing for a reply that is none, or another vehicle's.
std::optional<VehicleState> vehicleByteState(const QByteArray& reply, int address);
/// B3 adr d f as a reply, which is a state, has them.
QByteArray driveByteOf(const QByteArray& reply);

// -- later generations

/// Asks for a vehicle. Nothing for a number that is no address: below 0 or above 10239.
std::optional<QByteArray> askVehicle(int address);
/// E4 12 ah al 00, for an address.
QByteArray drive(int address);
/// The step code of a driving message, 10 to 13.
int stepCode(int steps);
std::optional<VehicleState> vehicleState(const QByteArray& reply);

/// Asks for F13 to F28 of an address.
QByteArray askUpperFunctions(int address);
inline constexpr int kUpperFunctionsSize = 5;
/// F13 to F28; nothing for another reply.
std::optional<FunctionMask> upperFunctions(const QByteArray& reply);

// -- track and outputs

/// 80 80, with its check byte.
QByteArray stopAll();

/// Asks for outputs 0 and 1 (`half` 0) or 2 and 3 (`half` 1) of unit `address`, which is the group
/// behind that many. Nothing for an address outside 1 to 256.
std::optional<QByteArray> askOutputs(int address, int half);
/// The two bits each of two outputs in byte s, or nothing for another reply.
std::optional<int> outputState(const QByteArray& reply);
/// The group that such a reply names.
int groupOf(const QByteArray& reply);
/// Neither off nor on: never switched.
bool isNeverSwitched(int outputState, int n);
/// 52 grp 80 of a unit that askOutputs() takes.
QByteArray switchOutput(int address);
/// The last byte of it for output `n`, 0 to 3, and the one behind its pulse.
int outputByte(int n, bool on);
int outputOffByte(int n, bool on);

/// Whether a reply, which is awaited as `size` bytes, has come whole: as its head counts, or as so
/// many bytes with their check byte.
bool isWhole(const QByteArray& reply, int size);

/// A reply of at least `size` bytes that tells a state, and whose check byte is not right, neither
/// as its head counts nor as the last of `size` bytes.
bool isDoubtful(const QByteArray& reply, int size);

}  // namespace lokari::lenz
