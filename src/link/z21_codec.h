// Messages of the Z21: composed as hexadecimal text, taken apart as bytes.
//
// A message is its length (2 bytes, low byte first), its kind (2 bytes), data and, for kind 40 00,
// a checksum. A datagram may hold several messages.
#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

namespace lokari::z21 {

inline constexpr char16_t kPowerOn[] = u"07 00 40 00 21 81 A0";
inline constexpr char16_t kAskSerialNumber[] = u"04 00 10 00";
inline constexpr char16_t kLogOff[] = u"04 00 30 00";

// In use where messages follow the maker's documents.
inline constexpr char16_t kPowerOff[] = u"07 00 40 00 21 80 A1";
/// Wants broadcasts: power, stop, programming, short circuit, outputs, vehicles asked for.
inline constexpr char16_t kSubscribe[] = u"08 00 50 00 01 00 00 00";
inline constexpr char16_t kAskStatus[] = u"07 00 40 00 21 24 05";
inline constexpr char16_t kAskHardware[] = u"04 00 1A 00";
inline constexpr char16_t kAskLock[] = u"04 00 18 00";

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

/// A whole message of kind 40 00 with the exclusive or of its bytes behind the kind as checksum;
/// any other one as it is.
QByteArray withByteChecksum(QByteArray message);

/// The address of a vehicle with the mark of long ones, from 128 on.
int markedAddress(int address);

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

/// Whether a message is one that is awaited as `wanted`, its head. It may be longer than the head's
/// length byte says; a vehicle's state may have any length that stations give it, 14 to 21 bytes,
/// and its address comes with or without the mark of long ones. Messages of kind 40 00 whose head
/// ends with the kind have no other name than their length.
bool answers(const QByteArray& wanted, const QByteArray& message);

/// Bits of the station's status.
enum StatusBit : int { kStopped = 0x01, kOff = 0x02, kShortCircuit = 0x04, kProgramming = 0x20 };

/// The status in its answer, 62 22, or in the system's state; nothing for any other message.
std::optional<int> statusBits(const QByteArray& message);

/// Whether a message is news of the track for everybody: off, on, programming mode, short circuit,
/// all stopped. It answers nothing and may come at any time.
bool isTrackNews(const QByteArray& message);

/// Whether a message says that the layout stands: track power off, a short circuit, or all vehicles
/// stopped; or that it goes on. News or status.
bool tellsOff(const QByteArray& message);
/// Of such a message: whether the track has no power.
bool tellsNoPower(const QByteArray& message);
bool tellsOn(const QByteArray& message);
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

/// Whether a refusal ends the operation that waits for a CV result. News of the track may come at
/// any time, with the result still ahead.
bool endsCvOperation(const QByteArray& message);

/// Takes messages off a datagram one by one, never reading beyond it.
class DatagramReader {
 public:
  explicit DatagramReader(QByteArray datagram) : rest_(std::move(datagram)) {}

  /// The next message, or nothing at the end: also when the length is 0 or says more than there is,
  /// which leaves no way to find the next message.
  std::optional<QByteArray> next();

 private:
  QByteArray rest_;
};

}  // namespace lokari::z21
