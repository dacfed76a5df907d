// Messages of a Z21, as the station sees them.
//
// A datagram holds one or more messages: length of the whole message (16 bit, low byte first), kind
// (16 bit, low byte first), data. Messages of kind 0040 carry commands; their last byte is a
// checksum, the exclusive or of the bytes from the command on. The program's CV commands carry
// another one: the exclusive or of the characters of the message's text, "09 00 40 00 23 11 00 00".
#pragma once

#include <QByteArray>
#include <QList>

#include <optional>

namespace lokari::sim {

struct Z21Message {
  int kind = 0;
  QByteArray data;  ///< of kind 0040 without the checksum
};

inline constexpr int kZ21SerialNumber = 0x10;
inline constexpr int kZ21LogOff = 0x30;
inline constexpr int kZ21Command = 0x40;

/// The messages of a datagram, up to the first one that is broken: its length below 4 or beyond
/// the datagram, or a wrong checksum.
QList<Z21Message> splitZ21Datagram(const QByteArray& datagram);

/// A message to the program; commands get their checksum.
QByteArray z21Bytes(const Z21Message& message);

/// A CV command. CVs count from 1.
struct Z21CvCommand {
  bool main = false;
  bool write = false;
  int address = 0;  ///< main track only
  int cv = 0;
  int value = 0;
};

/// A driving command. Steps are 14, 28 or 128.
struct Z21DriveCommand {
  int address = 0;
  int steps = 128;
  int speed = 0;
  bool backward = false;
};

struct Z21FunctionCommand {
  int address = 0;
  int function = 0;
  bool on = false;
};

/// The command in the data of a command message, or nothing.
std::optional<Z21DriveCommand> z21DriveCommand(const QByteArray& data);
std::optional<Z21FunctionCommand> z21FunctionCommand(const QByteArray& data);

/// The address of a vehicle in two bytes, high byte first, the mark of long ones left out.
int z21VehicleAddress(const QByteArray& data, qsizetype at);

/// The CV command in the data of a command message, or nothing.
std::optional<Z21CvCommand> z21CvCommand(const QByteArray& data);

}  // namespace lokari::sim
