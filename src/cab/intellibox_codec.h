// Driving and switching commands of the Intellibox and the Tams MC, and their replies. Pure bytes,
// no I/O. A command is given without the letter "x" that goes ahead of it; an address is its low
// byte and its high byte.
//
//   80 lo hi speed flags   speed 0 to 127; flags 40 backward, 60 forward, and 10 for the light
//   88 lo hi mask          F1 to F7 in bits 0 to 6, by the makers' documents F8 in bit 7
//   89 lo hi mask          F9 to F16, where the station has it
//   8A lo hi mask mask     F17 to F24, F25 to F28, where the station has it
//   84 lo hi               asks for speed and direction: 00 speed flags, and one byte more; flags
//                          20 forward, 10 light, F1 to F4 in the low four bits
//   8C, 8D, 8E lo hi       ask for the functions: 00 and the masks of 88, 89, 8A
//   A5, A7                 stop, go
//   90 lo fl               switches output fl and 7, lo: fl has 40 added, and 80 for on; without
//                          40 its coil is switched off again
//   95 group               asks for eight outputs: 00 outputs, bit set for on
//
// All but the questions are answered by one byte, and so is a question that is refused:
// link/p50x_codes.h. A question about a vehicle that has no slot is answered 0A: it stands.
#pragma once

#include <QByteArray>

#include <optional>

#include "cab/cab_protocol.h"

namespace lokari::ibx {

/// 80 lo hi, to which speed and flags are added. Nothing for a number that is no address: below 0
/// or above 10239.
std::optional<QByteArray> drive(int address);
/// The flags of a driving command.
int driveFlags(bool backward, bool light);

/// Functions that go out in one command and are told in one reply, eight in a byte.
struct FunctionRange {
  int command;
  int question;
  int first;
  int last;
  bool keepsRest = false;  ///< what the last byte has behind them stays as the station told it

  int byteCount() const { return (last - first) / 8 + 1; }
  int replySize() const { return 1 + byteCount(); }
};
inline constexpr FunctionRange kF1ToF7{0x88, 0x8C, 1, 7};
inline constexpr FunctionRange kF1ToF8{0x88, 0x8C, 1, 8};
inline constexpr FunctionRange kF9ToF16{0x89, 0x8D, 9, 16};
inline constexpr FunctionRange kF17ToF28{0x8A, 0x8E, 17, 28, true};

/// `mask` has the range's first function in bit 0.
QByteArray switchFunctions(int address, int mask, const FunctionRange& range = kF1ToF7);
QByteArray stop();
QByteArray go();

QByteArray askDrive(int address);
inline constexpr int kDriveReplySize = 4;
struct DriveReply {
  int speed = 0;  ///< as the station has it, cut to 127
  bool backward = false;
  FunctionMask functions = 0;  ///< F0 to F4
};
/// Nothing for a reply that is refused or short; a vehicle without a slot stands, forward, all off.
std::optional<DriveReply> driveReply(const QByteArray& reply);

QByteArray askFunctions(int address, const FunctionRange& range = kF1ToF7);
/// The range's functions.
std::optional<FunctionMask> functionReply(const QByteArray& reply,
                                          const FunctionRange& range = kF1ToF7);
/// What a sound reply has behind the range's functions, to be added to switchFunctions()'s mask.
int restOf(const QByteArray& reply, const FunctionRange& range);

/// Asks for the eight outputs that unit `address` shares with its neighbour. Nothing for an address
/// outside 1 to 510, whose group has no byte.
std::optional<QByteArray> askOutputs(int address);
inline constexpr int kOutputReplySize = 2;
/// Two bits for each of the unit's four outputs, the lower one set for off, the upper one for on.
std::optional<quint8> outputReply(const QByteArray& reply, int address);
/// 90 lo fl of the unit's output 0, without on or off.
QByteArray switchOutput(int address);
/// The same for output `n`, 0 to 3.
QByteArray switchOutput(int address, int n, bool on);
/// Ends the pulse that switchOutput() has begun.
QByteArray endPulse(int address, int n, bool on);

}  // namespace lokari::ibx
