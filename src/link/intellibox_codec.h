// Binary commands of the Intellibox and its replies. Pure bytes, no I/O.
//
// A command is given without the letter "x" that goes ahead of it. The reply to a command is one
// byte, 0 when it has been accepted. The reply to the question for the programming event is F5
// while there is none, else a length byte and that many bytes: a status byte and, for status 0,
// the data, the CV's value first.
#pragma once

#include <QByteArray>

#include <optional>

namespace lokari::ibx {

/// First byte of a reply that tells that the event is not there yet.
inline constexpr int kNoEvent = 0xF5;

/// Reads a CV. `mode` is 1 paged, 2 register, any other value direct. A register command carries
/// the low byte of the CV's number only.
QByteArray readCv(int cv, int mode);
bool readsDirect(int mode);
/// Reads a CV direct by its byte, where readCv() reads bit by bit.
QByteArray readCvByByte(int cv);
/// Writes one, 0 to 255; as readCv().
QByteArray writeCv(int cv, int value, int mode);
/// Writes a CV on the main track. Below 128 `pomAddr` is the address that goes out, from there on
/// `address`. Nothing for a number that is no address.
std::optional<QByteArray> writeCvMain(int pomAddr, int address, int cv, int value);
/// Asks whether the station programs.
QByteArray askProgramming();
/// Asks for the programming event.
QByteArray askEvent();
/// Ends the programming.
QByteArray endProgramming();

/// `reply` without its zeros when nothing else came but more than one of them: a line that is held
/// down gives them without end.
QByteArray unlessHeldDown(const QByteArray& reply);

/// True for a reply that begins with a code of a command that was taken.
bool isAccepted(const QByteArray& reply);

/// An event reply without the late answers to commands in front of it: no event has a length of 0.
/// A single 0 stays as it is.
QByteArray eventWithin(const QByteArray& reply);

/// How many bytes an event reply still lacks, by its length byte.
qsizetype missing(const QByteArray& event);

/// What an event of 2 bytes or more says, its length byte's worth of it, about a read: the value or
/// a negative code.
int readResult(const QByteArray& event);
/// The decoder cannot be read bit by bit.
bool bitsFailed(const QByteArray& event);
/// The same about a write of `value`.
int writeResult(const QByteArray& event, int value);

}  // namespace lokari::ibx
