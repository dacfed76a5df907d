#include "link/z21_codec.h"

#include <algorithm>
#include <iterator>

#include "base/bytes.h"
#include "base/numbers.h"
#include "link/cv_result.h"

namespace lokari::z21 {
namespace {

constexpr qsizetype kHead = 4;
constexpr int kXBus = 0x40;
constexpr int kVehicle = 0xEF;
constexpr int kShortestVehicle = 14;
/// Of a vehicle's high address byte; the rest marks long ones.
constexpr int kAddressBits = 0x3F;
constexpr int kShortCircuitByte = 0x12;
constexpr int kLastMainCv = 1024;
constexpr int kLastProgCv = 0x10000;
/// First byte of the CV number on the main track: command and the number's two highest bits.
constexpr int kMainRead = 0xE4;
constexpr int kMainWrite = 0xEC;

bool within(int number, int lowest, int highest) {
  return number >= lowest && number <= highest;
}

QString twoDigits(int number) {
  return hexPadded(number);
}

/// High and low byte, a blank between.
QString twoBytes(int number) {
  return twoDigits(byteSecond(number)) + u' ' + twoDigits(byteLow(number));
}

/// News of the track, fifth and sixth byte of a state message.
struct News {
  int fifth;
  int sixth;
};
constexpr News kOn{0x61, 0x01};
constexpr News kProgrammingMode{0x61, 0x02};
constexpr News kAllStopped{0x81, 0x00};
constexpr News kStandstill[] = {{0x61, 0x00}, {0x61, 0x08}, kAllStopped};

bool isNews(const QByteArray& message, const News& news) {
  return message.startsWith(stateHead()) && byteAt(message, 4) == news.fifth &&
         byteAt(message, 5) == news.sixth;
}

bool isOffNews(const QByteArray& message) {
  return std::any_of(std::begin(kStandstill), std::end(kStandstill),
                     [&message](const News& news) { return isNews(message, news); });
}

QString mainMessage(int address, int command, int cv, int value) {
  const int index = cv - 1;
  return withChecksum(QStringLiteral("0C 00 40 00 E6 30 ") + twoBytes(address) + u' ' +
                      twoDigits(command + byteSecond(index)) + u' ' + twoDigits(byteLow(index)) +
                      u' ' + twoDigits(value));
}

}  // namespace

std::optional<QByteArray> toBytes(QStringView text) {
  QByteArray data;
  qsizetype position = 0;
  while (position < text.size()) {
    if (text[position] == u' ') {
      ++position;
      continue;
    }
    const auto value = parseHex(text.mid(position, 2));
    if (!value || data.size() == kMostBytes) return std::nullopt;
    appendByte(data, static_cast<int>(*value));
    position += 2;
  }
  return data;
}

QString z21XOR(QStringView text) {
  int sum = 0;
  for (const QChar c : text) sum ^= c.unicode();
  return twoDigits(sum & 0xFF) + u' ';
}

QString withChecksum(const QString& text) {
  return text + u' ' + z21XOR(text);
}

int markedAddress(int address) {
  constexpr int kLongAddress = 128;
  constexpr int kLongMark = 0xC000;
  return address >= kLongAddress ? address + kLongMark : address;
}

QByteArray withByteChecksum(QByteArray message) {
  if (message.size() <= kHead + 1 || byteAt(message, 2) != kXBus || byteAt(message, 3) != 0) {
    return message;
  }
  message.chop(1);
  int sum = 0;
  for (qsizetype i = kHead; i < message.size(); ++i) sum ^= byteAt(message, i);
  appendByte(message, sum);
  return message;
}

std::optional<QString> readOnProgTrack(int cv) {
  if (!within(cv, 1, kLastProgCv)) return std::nullopt;
  return withChecksum(QStringLiteral("09 00 40 00 23 11 ") + twoBytes(cv - 1));
}

std::optional<QString> readOnMain(int address, int cv) {
  if (!within(cv, 1, kLastMainCv) || !within(address, 0, 0xFFFF)) return std::nullopt;
  return mainMessage(address, kMainRead, cv, 0);
}

std::optional<QString> writeOnProgTrack(int cv, int value) {
  if (!within(cv, 1, kLastProgCv) || !within(value, 0, 0xFF)) return std::nullopt;
  return withChecksum(QStringLiteral("0A 00 40 00 24 12 ") + twoBytes(cv - 1) + u' ' +
                      twoDigits(value));
}

std::optional<QString> writeOnMain(int address, int cv, int value) {
  if (!within(cv, 1, kLastMainCv) || !within(address, 0, 0xFFFF) || !within(value, 0, 0xFF)) {
    return std::nullopt;
  }
  return mainMessage(address, kMainWrite, cv, value);
}

QByteArray cvResultHead() {
  return bytes({0x0A, 0x00, 0x40, 0x00, 0x64, 0x14});
}

QByteArray cvResultHead(int cv) {
  return cvResultHead() + bytes({byteSecond(cv - 1), byteLow(cv - 1)});
}

QByteArray stateHead() {
  return bytes({0x07, 0x00, 0x40, 0x00});
}

QByteArray powerOnHead() {
  return stateHead() + bytes({0x61, 0x01});
}

bool answers(const QByteArray& wanted, const QByteArray& message) {
  const bool vehicle = byteAt(wanted, kHead) == kVehicle;
  if (message.startsWith(wanted) && !vehicle) return true;
  if (wanted.size() < kHead || wanted == stateHead()) return false;
  const qsizetype least = vehicle ? kShortestVehicle : byteAt(wanted, 0);
  if (message.size() < least) return false;
  for (qsizetype i = 2; i < wanted.size(); ++i) {
    const int mask = vehicle && i == kHead + 1 ? kAddressBits : 0xFF;
    if ((byteAt(message, i) & mask) != (byteAt(wanted, i) & mask)) return false;
  }
  return true;
}

std::optional<int> statusBits(const QByteArray& message) {
  constexpr int kPlaceInSystem = 16;
  if (message.startsWith(bytes({0x08, 0x00, 0x40, 0x00, 0x62, 0x22}))) return byteAt(message, 6);
  if (message.startsWith(bytes({0x14, 0x00, 0x84, 0x00}))) return byteAt(message, kPlaceInSystem);
  return std::nullopt;
}

bool isTrackNews(const QByteArray& message) {
  return isNews(message, kOn) || isNews(message, kProgrammingMode) || isOffNews(message);
}

bool tellsOff(const QByteArray& message) {
  const auto status = statusBits(message);
  return isOffNews(message) || (status && (*status & (kStopped | kOff | kShortCircuit)) != 0);
}

bool tellsNoPower(const QByteArray& message) {
  if (const auto status = statusBits(message)) return (*status & (kOff | kShortCircuit)) != 0;
  return isOffNews(message) && !isNews(message, kAllStopped);
}

bool tellsOn(const QByteArray& message) {
  return isNews(message, kOn) || statusBits(message) == 0;
}

bool tellsUnknown(const QByteArray& message) {
  return message.startsWith(bytes({0x07, 0x00, 0x40, 0x00, 0x61, 0x82}));
}

std::optional<int> cvResultValue(const QByteArray& message) {
  const int value = byteAt(message, 8);
  if (!answers(cvResultHead(), message) || value < 0) return std::nullopt;
  return value;
}

Checksums checksumsOf(const QByteArray& message) {
  if (message.size() <= kHead) return {};
  int sum = 0;
  for (const char byte : message.mid(kHead)) sum ^= static_cast<quint8>(byte);
  const QString text = QString::fromLatin1(message.chopped(1).toHex(' ').toUpper());
  return {.ofBytes = sum == 0,
          .ofText = z21XOR(text).trimmed() == twoDigits(static_cast<quint8>(message.back()))};
}

std::optional<int> refusalCode(const QByteArray& message) {
  if (message.size() < 7 || !message.startsWith(stateHead() + bytes({0x61}))) return std::nullopt;
  return byteAt(message, 5) == kShortCircuitByte ? cv_result::kShortCircuit : cv_result::kNoAck;
}

bool endsCvOperation(const QByteArray& message) {
  return refusalCode(message) && !isTrackNews(message);
}

std::optional<QByteArray> DatagramReader::next() {
  const int length = rest_.size() < 2 ? 0 : byteAt(rest_, 0) + 256 * byteAt(rest_, 1);
  if (length < 1 || length > rest_.size()) return std::nullopt;
  const QByteArray message = rest_.left(length);
  rest_.remove(0, length);
  return message;
}

}  // namespace lokari::z21
