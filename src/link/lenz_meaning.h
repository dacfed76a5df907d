// What a whole message of a Lenz interface is to whoever has sent a command, as the maker's
// documents tell it: confirmations and broadcasts come in any order, on USB behind either head.
#pragma once

#include <QByteArray>

#include <optional>

namespace lokari::lenz {

enum class Meaning {
  HandedOver,   ///< 01 04: the command went to the station
  ServiceMode,  ///< 61 02, told to everybody: the programming track is in use
  Result,       ///< 63 and one of 10, 14, 15, 16, 17
  Ready,        ///< 61 11: the programming track has done its work
  Busy,         ///< 61 1F, 61 80, 61 81, 01 0A: the same once more, a little later
  Report,       ///< any other 61
  Fault,        ///< any other 01: the interface could not hand the command over
  Passing,      ///< told to everybody, or to whom it may concern: no answer
  Other,        ///< any other answer
};
Meaning meaningOf(const QByteArray& message);

/// Whether a message may begin with that byte.
bool isHeader(int byte);
/// Bytes of the message that begins with that header, its check byte included.
qsizetype sizeBehind(int header);

/// Whether a whole message with a right check byte stands at the beginning.
bool beginsWithMessage(const QByteArray& input, bool usb);
/// Whether a confirmation or the service mode stands among the whole messages of `input`: the
/// command is at work.
bool tellsTaken(QByteArray input, bool usb);

/// Without the confirmations and broadcasts at its beginning. They answer what was sent before,
/// above all a stop, or are told to everybody, and reply to no question. `usb`: each message
/// stands behind FF FE or FF FD, and so does what is left. `answer` is what the reply itself may
/// be.
QByteArray withoutNews(QByteArray input, bool usb, std::optional<Meaning> answer = {});

/// The station's version, two digits, in the answer to the question for it.
std::optional<int> stationVersion(const QByteArray& message);

}  // namespace lokari::lenz
