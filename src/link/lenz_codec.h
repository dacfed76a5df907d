// Messages of the Lenz interfaces. Pure bytes, no I/O.
//
// A message is a header, data bytes and a check byte that is the XOR of all the others. The low
// four bits of the header count the data bytes.
#pragma once

#include <QByteArray>

#include <optional>

namespace lokari::lenz {

/// `msg` with its check byte behind it.
QByteArray withCheck(QByteArray msg);

/// 21 81 A0: back to normal operation.
QByteArray resume();
/// 21 21 00: asks for the station's version.
QByteArray askStationVersion();
/// 21 10 31: asks for the result of the service mode.
QByteArray requestResult();

/// Reads a CV in the service mode. `mode` 1 is paged, any other value direct; direct, a station
/// with protocol 3.6 takes CVs 1 to 1024. All else takes CVs 1 to 256. Nothing for a CV that the
/// message cannot name.
std::optional<QByteArray> readCv(int cv, int mode, bool lenzV36);
/// Writes one, 0 to 255. As readCv(), but without protocol 3.6 and in paged mode CV 255 is the
/// last.
std::optional<QByteArray> writeCv(int cv, int value, int mode, bool lenzV36);
/// Writes a CV on the main track. Below 100 `pomAddr` is the address that goes out, from there on
/// `address`. Nothing for a CV that is a multiple of 256 or above 1024, and for a number that is
/// no address.
std::optional<QByteArray> writeCvMain(int pomAddr, int address, int cv, int value);

/// Writes CV 256 where the byte 00 stands for it: paged, and direct before protocol 3.6.
QByteArray writeBlockEnd(int value, int mode);
/// Reads a register, 1 to 8, or writes it. CV 29 is register 5. Nothing for any other CV.
std::optional<QByteArray> readRegister(int cv);
std::optional<QByteArray> writeRegister(int cv, int value);

struct Message {
  QByteArray bytes;
  bool unasked = false;  ///< it is marked as one that answers nothing; known on USB only
};
/// Takes the first whole message with a right check byte off `input`, with all that stands ahead of
/// it; nothing when there is none yet, and then the beginning of one may be left. `usb`: messages
/// stand behind FF FE, unasked ones behind FF FD, which are not given.
std::optional<Message> takeMessage(QByteArray& input, bool usb);

/// What a message says about the layout and about what was sent.
enum class News {
  None,      ///< nothing of either, as every other message does that may come unasked
  Off,       ///< 61 00, 81 00: power off, all vehicles stopped; told to everybody
  On,        ///< 61 01
  Accepted,  ///< 01 04
  Refused,   ///< another 01, and 61 80, 81, 82
  Answer,    ///< any other answer to what was sent
};
News newsIn(const Message& message);
/// Off and On: whoever was meant, they are true.
bool isOfLayout(News news);

/// How many bytes a message at the beginning of `reply` still lacks; 0 for a whole one, and for
/// a header that is none of 01, 61 and 63.
qsizetype missing(const QByteArray& reply);

/// The first service-mode result in a reply of more than 5 bytes, one with a right check byte
/// rather than one without; other replies unchanged.
QByteArray resultWithin(const QByteArray& reply);
/// The first 61 02 and the byte behind it in a reply of more than 3 bytes; other replies unchanged.
QByteArray serviceModeWithin(const QByteArray& reply);

/// The CV's value when the reply begins with a service-mode result: 63, one of 10, 14, 15, 16 and
/// 17, the CV's number, the value.
std::optional<int> resultValue(const QByteArray& reply);
/// The CV that the result names, modulo 256; nothing for one that may name a register instead.
std::optional<int> resultCv(const QByteArray& reply);
/// Whether the message at the beginning of the reply is whole and its check byte right.
bool isSound(const QByteArray& reply);
/// The code of a station report: the second byte of a reply that begins with 61.
std::optional<int> report(const QByteArray& reply);
/// Whether a whole reply says that the station has done nothing of what it was told: it came wrong,
/// the station is busy, or does not know it.
bool isRefusal(const QByteArray& reply);
/// The result of a write that ends with this reply and no value: minus the code of a report, else
/// kWrongReply. Code 0 counts as none, since minus 0 would be a value.
int writeFailure(const QByteArray& reply);
/// True for 61 02 63: service mode entered, no result yet.
bool isServiceMode(const QByteArray& reply);
/// True when the reply begins with 01 04 05: message accepted.
bool isAccepted(const QByteArray& reply);
/// True when 61 01 stands anywhere in the reply: normal operation resumed.
bool tellsResumed(const QByteArray& reply);

}  // namespace lokari::lenz
