// The MX1's line protocol: what is sent and how a reply reads.
//
// A command is ASCII text with one carriage return behind it. Numbers are upper-case hexadecimal
// with two digits at least; a larger number makes its field longer, nothing is ever cut.
#pragma once

#include <QByteArray>

#include <optional>

namespace lokari::mx1 {

/// Characters of a reply to readCommand() and writeCommand().
inline constexpr int kReplyLength = 9;
/// A reply has room to tell this many CVs apart.
inline constexpr int kNamedCvs = 256;
/// Characters of a reply to askIndexCommand().
inline constexpr int kIndexReplyLength = 8;
/// Addresses, and indices of addresses, from here on are long ones.
inline constexpr int kFirstLongAddress = 128;

/// A carriage return alone: wakes the station after the port has opened.
QByteArray wakeUp();

/// Reads a CV on the programming track. `cv` counts from 1.
QByteArray readCommand(int cv);

/// Writes a CV on the programming track. `cv` counts from 1, `value` is 0 to 255.
QByteArray writeCommand(int cv, int value);

/// Writes a CV on the main track. `index` is the number under which the station knows the vehicle:
/// below 128 its short address, from 128 on the index of its long one; then `address` goes along.
QByteArray writeMainCommand(int index, int address, int cv, int value);

/// Asks for the index of a long address.
QByteArray askIndexCommand(int address);

/// The two commands that leave programming, one second apart.
QByteArray leaveFirst();
QByteArray leaveSecond();

/// What a reply to a CV command says.
struct Reply {
  enum class Kind {
    NotAReply,  ///< it does not begin with "QN"
    Value,      ///< status "00": `number` is the CV's value, or nothing when its digits are none
    Status,     ///< any other status: `number` is it, or nothing when its digits are none
  };
  Kind kind = Kind::NotAReply;
  std::optional<int> number;
  /// The fifth and sixth character: a station that fills them names the CV here, modulo 256.
  std::optional<int> named;
};

/// Takes a reply apart: "QN", two digits of status, two characters not used, two digits of the
/// value, one character not used. Text behind it is not looked at.
Reply parseReply(const QByteArray& reply);

/// Where a whole reply to a CV command begins, at a line's beginning from `from` on; -1 for none.
qsizetype findReply(const QByteArray& text, qsizetype from = 0);

/// The index in a reply to askIndexCommand(): 128 to 255, or nothing. The reply must have exactly 8
/// characters, of which the second and third are the index.
std::optional<int> parseIndex(const QByteArray& reply);

/// The address that a reply of 8 characters names in its fourth to seventh, if they are a number.
std::optional<int> indexAddress(const QByteArray& reply);

/// What the lines of a text refuse.
struct Refusals {
  bool address = false;    ///< "??": the address of a main-track write
  bool switching = false;  ///< "???": the switching of an output
};
Refusals refusalsIn(const QByteArray& text);

}  // namespace lokari::mx1
