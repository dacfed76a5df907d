// The frames of the Zimo binary protocol and the CV messages in them. Pure bytes, no I/O.
//
// On the wire: 01 01, the body, 17. The body is a sequence byte, a type byte, the payload and a
// checksum byte; in it each byte 01, 10 or 17 goes out as 10 followed by the byte XOR 20.
#pragma once

#include <QByteArray>

#include <optional>

namespace lokari::zbin {

/// The byte that closes a frame and stands nowhere else in one.
inline constexpr char kEnd = 0x17;
/// Bytes of the longest body on the wire, its closing 17 included: 256 bytes, each escaped. More
/// without a 17 is noise.
inline constexpr qsizetype kLongestBody = 2 * 256 + 1;
/// Bytes that are read at once before the search for a frame's start.
inline constexpr int kHead = 5;

/// Checksum of a byte string of at most 255 bytes: CRC-8 with the reflected polynomial 8C and an
/// initial value of FF. An empty string gives FF.
quint8 calcCRC8(const QByteArray& data);

/// A body on the wire without its escapes.
QByteArray unescape(const QByteArray& body);

/// A whole frame. `seq` is 0 to 255; `answer` marks it as the answer to a frame of the station.
QByteArray frame(int seq, const QByteArray& payload, bool answer);

/// The index behind the first two adjacent 01 bytes of `head`, or nothing.
std::optional<qsizetype> bodyStart(const QByteArray& head);

/// A received frame without its wrapping.
struct Reply {
  int seq = -1;       ///< the station's sequence byte; -1 when the frame is empty
  QByteArray text;    ///< command byte and data; empty when the frame is too short
  bool sound = true;  ///< false when the checksum says that a byte came wrong
  int kind = -1;      ///< type byte without the bit of the longer header
  int answered = -1;  ///< sequence byte of the frame that it answers, in the kinds below
};

/// Kinds of the makers' documents: nobody asked for it; data of its own, such as a CV; the
/// confirmation of a command.
inline constexpr int kUnasked = 0x00;
inline constexpr int kData = 0x20;
inline constexpr int kConfirmation = 0x40;

/// Takes apart what stands behind a frame's start, its closing 17 included. A wrong checksum is
/// told and no more; the two bytes of one behind a header of 5 bytes follow no known rule, so that
/// such a frame counts as sound.
///
/// Layout without the escape: sequence byte; type byte, whose bit 7 means a header of 5 bytes
/// instead of 4; command byte; the header's rest, dropped; data; then 2 bytes (3 with the header of
/// 5), which are cut off.
Reply takeApart(const QByteArray& body);

/// Payloads. `cv` counts from 1, `value` is 0 to 255.
QByteArray readCv(int cv);
QByteArray writeCv(int cv, int value);
/// Nothing for a number that is no address, 1 to 10239: with 0 the message would name the
/// programming track and write to the decoder there.
std::optional<QByteArray> writeCvMain(int address, int cv, int value);
/// Tells the station that its result with the sequence byte `seq` has arrived.
QByteArray acknowledge(int seq);
/// The same of a frame with command byte `message` that nobody asked for.
QByteArray acknowledgeUnasked(int message, int seq);
/// The greeting's two payloads and the farewell.
QByteArray hello();
QByteArray logOn();
QByteArray logOff();

/// What the first reply to a CV message says.
enum class Verdict {
  TooShort,  ///< fewer than 2 bytes
  Accepted,  ///< begins 13 00; on the programming track the result follows in a second frame
  Busy,      ///< the second byte is 04
  Refused,   ///< anything else: refusal()
};
Verdict judge(const QByteArray& reply);

/// -1030 minus the second byte of a refusal.
int refusal(const QByteArray& reply);

/// The second reply of an access on the programming track.
struct Result {
  bool ours = false;  ///< it begins with 13 and wants to be acknowledged
  int code = 0;       ///< the CV's value, or -1100 minus the station's error byte, or -1003
};
Result result(const QByteArray& reply);

/// Whether a reply belongs to an earlier access and not to that of `cv`: the result of another CV,
/// or a confirmation where the result is awaited.
bool isOfEarlierAccess(const QByteArray& reply, int cv);

/// What a reply says about a message that is sent until it is confirmed.
enum class Confirmation {
  Done,  ///< it begins with the message's first byte and 00 or 34, or with 02
  Busy,  ///< it begins with the message's first byte and 04
  None,  ///< anything else, nothing at all included
};
Confirmation confirmation(const QByteArray& message, const QByteArray& reply);

}  // namespace lokari::zbin
