#include "link/mx10_codec.h"

#include <algorithm>
#include <array>

#include "base/bytes.h"

namespace lokari::mx10 {
namespace {

constexpr quint8 kLongIdentifier = 2;
/// Address and CV stand from the first to before the second.
constexpr size_t kAddressIndex = 2;
constexpr size_t kNamesEnd = 6;
constexpr size_t kValueIndex = 8;

constexpr quint32 kLogOn = 0x0A2986C2;
constexpr quint32 kTrackMode = 0x060186C2;
constexpr quint32 kReadCv = 0x162186C2;
constexpr quint32 kWriteCv = 0x162586C2;

bool fits(int number, int highest) {
  return number >= 0 && number <= highest;
}

}  // namespace

CanMessage message(quint32 id, std::initializer_list<int> data) {
  CanMessage made;
  made.ID = id;
  made.MSGTYPE = kLongIdentifier;
  for (const int value : data) made.DATA[made.LEN++] = static_cast<quint8>(value);
  return made;
}

CanMessage logOn() {
  return message(kLogOn, {0x86, 0xC2, 0x01, 0x00, 0x21, 0x00, 0x00, 0x00});
}

CanMessage toProgrammingTrack(qint16 nid) {
  return message(kTrackMode, {byteSecond(nid), byteLow(nid), 0x01, 0x04});
}

CanMessage toNormal(qint16 nid) {
  return message(kTrackMode, {byteSecond(nid), byteLow(nid), 0x01, 0x00});
}

std::optional<CanMessage> readCv(qint16 nid, int address, int cv) {
  if (!fits(address, 0xFFFF) || !fits(cv, 0xFFFF)) return std::nullopt;
  return message(kReadCv, {byteSecond(nid), byteLow(nid), byteLow(address), byteSecond(address),
                           byteLow(cv), byteSecond(cv), 0x00, 0x00});
}

std::optional<CanMessage> writeCv(qint16 nid, int address, int cv, int value) {
  if (!fits(address, 0xFFFF) || !fits(cv, 0xFFFF) || !fits(value, 0xFF)) return std::nullopt;
  return message(kWriteCv, {byteSecond(nid), byteLow(nid), byteLow(address), byteSecond(address),
                            byteLow(cv), byteSecond(cv), 0x00, 0x00, value});
}

bool answers(quint32 id, qint32 want) {
  const qint64 ahead = qint64(id >> 16) - qint64(static_cast<quint32>(want) >> 16);
  return ahead >= 1 && ahead <= 3;
}

bool answersCv(const CanMessage& message, const CanMessage& question, qint16 nid) {
  if (wordLow(static_cast<qint32>(message.ID)) != nid) return false;
  for (size_t i = kAddressIndex; i < std::min<size_t>(message.LEN, kNamesEnd); ++i) {
    if (message.DATA[i] != question.DATA[i]) return false;
  }
  return true;
}

bool answersVehicle(const CanMessage& message, const CanMessage& question) {
  constexpr size_t kAddressSize = 2;
  for (size_t i = 0; i < std::min<size_t>(message.LEN, kAddressSize); ++i) {
    if (message.DATA[i] != question.DATA[i]) return false;
  }
  return true;
}

std::optional<bool> trackPower(const CanMessage& message) {
  constexpr quint32 kEvent = 2;
  constexpr quint32 kAnswer = 3;
  constexpr int kPowerOf = 3;  // the kind of state, behind the node
  constexpr int kNormal = 1;
  constexpr std::array kStanding{2, 3, 4, 0x0A};  // stopped in two ways, off, overcurrent
  const quint32 group = message.ID >> 16;
  if ((group != kEvent && group != kAnswer) || message.LEN < 4) return std::nullopt;
  if (message.DATA[2] != kPowerOf) return std::nullopt;
  const int state = message.DATA[3];
  if (state == kNormal) return true;
  const bool stands = std::find(kStanding.begin(), kStanding.end(), state) != kStanding.end();
  return stands ? std::optional(false) : std::nullopt;
}

quint32 serialNumber(const CanMessage& announcement) {
  quint32 number = 0;
  for (size_t i = 0; i < 4; ++i) number = number << 8 | announcement.DATA[i];
  return number;
}

std::optional<int> cvValue(const CanMessage& answer) {
  if (answer.LEN <= kValueIndex) return std::nullopt;
  return answer.DATA[kValueIndex];
}

}  // namespace lokari::mx10
