// The driving and switching lines of the MX1's text protocol. Numbers are upper-case hexadecimal
// of two digits; every line ends with a carriage return.
//
//   AFN address                              asks for a vehicle's state
//   AFN address speed flags F1-8 ...         the answer, 16 characters; a station of the newer
//                                            generation adds the digits of F9-12 at its end
//   FN address speed flags F1-8 [F9-12]      drives a vehicle; no answer
//   SS, SE                                   track power off, on
//   AWN address [80]                         asks for a function unit's outputs
//   AWN address .. outputs                   the answer, 10 characters
//   MN address value                         switches an output; "???" refuses it
//
// A vehicle with a long address goes by the index that the station has given it; then the station
// puts a line of 10 characters, which begins with "E", in front of its answer and sends one for
// each driving command. A function unit above 255 goes by its address's low byte, with the ninth
// bit, 80, in the byte behind it.
#pragma once

#include <QByteArray>

#include <optional>

#include "cab/cab_protocol.h"

namespace lokari::mx1cab {

/// Characters of the line about an address index.
inline constexpr int kIndexLineLength = 10;
/// The answer of a newer station is longer by that many.
inline constexpr int kExtraDigits = 2;
/// Characters of the answer to askOutputs().
inline constexpr int kOutputsLength = 10;
/// The highest function unit that nine bits can name.
inline constexpr int kHighestUnit = 511;

/// Where the fields of a driving command stand; positions count from 1.
enum class Field { Speed = 5, Flags = 7, Functions1To8 = 9, Functions9To12 = 11 };

/// What is sent before the station has told more: 14 steps, standing, all off. `number` is the
/// vehicle's address or index, 0 to 255.
QByteArray defaultCommand(int number);

QByteArray askState(int number);

/// Characters of the answer to askState(), or kExtraDigits more.
int stateLength(bool indexed);

/// What distinguishes the answers and commands of the stations.
struct StateForm {
  bool tellsF9To12;     ///< the answer's last digits are F9 to F12
  bool commandsF9To12;  ///< a driving command has a field for them
};

struct VehicleState {
  int speed = 0;  ///< in the vehicle's own steps
  int flags = 0;  ///< see zimo_flags.h
  FunctionMask functions = 0;
  QByteArray command;  ///< the driving command that repeats this state
};

/// Takes an answer to askState(number) apart. Nothing when it is too short, has no digits where
/// digits belong, or tells of another vehicle.
std::optional<VehicleState> parseState(const QByteArray& answer, int number, StateForm form);

/// Puts two digits into a driving command. A field that the command does not have stays away: its
/// carriage return and its length are kept.
void setField(QByteArray& command, Field field, int value);

/// Sets or clears the bits of `bits` in a field; nothing where setField() would do nothing.
void setBits(QByteArray& command, Field field, int bits, bool set);

QByteArray trackPower(bool on);

/// `unit` is 0 to kHighestUnit.
QByteArray askOutputs(int unit);
/// The switching command, whose value is set by setOutput().
QByteArray switchCommand(int unit);
/// Patches a switching command: `n` is 0 to 3.
void setOutput(QByteArray& command, int unit, int n, bool on);

/// The outputs in an answer to askOutputs(), two bits each; nothing when there are no digits.
std::optional<quint8> parseOutputs(const QByteArray& answer);

}  // namespace lokari::mx1cab
