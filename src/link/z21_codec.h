// Messages of the Z21: composed as hexadecimal text, taken apart as bytes.
//
// A message is its length (2 bytes, low byte first), its kind (2 bytes), data and, for kind 40 00,
// a checksum. The station is always given a length below 256, and only the first length byte is
// looked at. A datagram may hold several messages.
#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

namespace lokari::z21 {

inline constexpr char16_t kPowerOn[] = u"07 00 40 00 21 81 A0";
inline constexpr char16_t kAskSerialNumber[] = u"04 00 10 00";
inline constexpr char16_t kLogOff[] = u"04 00 30 00";

/// Most bytes of one message to the station.
inline constexpr int kMostBytes = 65;

/// The bytes of a text of hexadecimal pairs, blanks between pairs skipped. Nothing when a pair is
/// not hexadecimal or there are more than kMostBytes.
std::optional<QByteArray> toBytes(QStringView text);

/// The checksum of a composed message: the character codes of its whole text, blanks included,
/// combined by exclusive or, as two upper-case digits and a blank.
QString z21XOR(QStringView text);

/// The text with a blank and its checksum behind it.
QString withChecksum(const QString& text);

/// Texts of the CV messages, checksum included. `cv` is 1 to 1024 on the main track, where the
/// message has ten bits for it, and 1 to 65536 on the programming track; `address` has 16 bits,
/// `value` 8. Nothing for a number that does not fit its place.
std::optional<QString> readOnProgTrack(int cv);
std::optional<QString> readOnMain(int address, int cv);
std::optional<QString> writeOnProgTrack(int cv, int value);
std::optional<QString> writeOnMain(int address, int cv, int value);

/// 0A 00 40 00 64 14: how the result of a CV operation starts.
QByteArray cvResultHead();
/// The same with the number of the CV (1 to 65536) behind it.
QByteArray cvResultHead(int cv);
/// 07 00 40 00: how a message of the station's state starts.
QByteArray stateHead();
/// 07 00 40 00 61 01: the track has power again.
QByteArray powerOnHead();

/// Whether a message says that the layout stands: track power off, or all vehicles stopped.
bool tellsOff(const QByteArray& message);
/// Whether a message says that the station does not know what it was sent.
bool tellsUnknown(const QByteArray& message);

/// The value in a CV result, or nothing when the message is none or too short.
std::optional<int> cvResultValue(const QByteArray& message);

/// Which of the two checksums in use a message of kind 40 00 carries: the exclusive or of the bytes
/// behind the kind, or z21XOR() of its text.
struct Checksums {
  bool ofBytes = false;
  bool ofText = false;
};
Checksums checksumsOf(const QByteArray& message);

/// kShortCircuit or kNoAck for a state message, which is taken as the answer to a CV operation;
/// nothing for any other message.
std::optional<int> refusalCode(const QByteArray& message);

/// Whether a refusal ends the operation that waits for a CV result. The station's news of track
/// power off, on, and programming mode (sixth byte 00, 01, 02) may come at any time, with the
/// result still ahead.
bool endsCvOperation(const QByteArray& message);

/// Takes messages off a datagram one by one, never reading beyond it.
class DatagramReader {
 public:
  explicit DatagramReader(QByteArray datagram) : rest_(std::move(datagram)) {}

  /// The next message, or nothing at the end: also when the length byte is 0 or says more than
  /// there is, which leaves no way to find the next message.
  std::optional<QByteArray> next();

 private:
  QByteArray rest_;
};

}  // namespace lokari::z21
