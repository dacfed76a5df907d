// The driving and switching payloads of the Zimo binary protocol. Positions count from 1.
//
//   02 00, 02 02                             track power off, on
//   03 high low speed flags F1-8 [F9-12]     drives a vehicle
//   07 high low value                        switches an output of a function unit
//   08 high low                              asks for a vehicle's state
//   08 00 high low speed flags F1-8 [F9-12]  the answer; a long address may carry C0 in its high
//                                            byte, and goes out again with 80 there
//   09 high low                              asks for a function unit's outputs
//   09 00 high low .. outputs                the answer
//
// A question is answered with its first byte and 04 while the station is busy.
#pragma once

#include <QByteArray>

#include <optional>

#include "cab/cab_protocol.h"

namespace lokari::zbincab {

/// Positions of what a driving command's patches change.
enum class Field { Speed = 4, Flags = 5, Functions1To8 = 6, Functions9To12 = 7 };

QByteArray askState(int address);
QByteArray askOutputs(int unit);
QByteArray trackPower(bool on);

/// What an answer to a question says.
enum class Verdict {
  Good,   ///< it begins with the question's first byte and 00, is long enough and names the same
          ///< address
  Busy,   ///< it begins with the question's first byte and 04
  Other,  ///< anything else, nothing at all included
};

/// `least` is the number of bytes that a good answer has.
Verdict judge(const QByteArray& question, const QByteArray& answer, int least);

/// Bytes that a good answer to askState() and to askOutputs() has at least.
inline constexpr int kLeastState = 7;
inline constexpr int kLeastOutputs = 6;

/// What is kept before the station has told a vehicle's state. It drives nothing: it asks.
QByteArray defaultCommand(int address);

struct VehicleState {
  int speed = 0;  ///< in the vehicle's own steps
  int flags = 0;  ///< see zimo_flags.h
  FunctionMask functions = 0;
  QByteArray command;  ///< the driving command that repeats this state
};

/// Takes a good answer apart. `functionCount` is 8 or 12: how far the command reaches.
VehicleState parseState(const QByteArray& answer, int functionCount);

/// Changes a byte of a driving command; nothing where the command ends before it.
void setField(QByteArray& command, Field field, int value);
/// Sets or clears the bits of `bits` in a field; nothing where the command ends before it.
void setBits(QByteArray& command, Field field, int bits, bool set);

struct OutputsState {
  quint8 mask = 0;     ///< two bits per output
  QByteArray command;  ///< the switching command, but for its value
};

/// Takes a good answer apart.
OutputsState parseOutputs(const QByteArray& answer);

/// The whole switching command; `n` is 0 to 3.
QByteArray switchCommand(const QByteArray& command, int n, bool on);

}  // namespace lokari::zbincab
