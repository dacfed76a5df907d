#include "link/can_key_codec.h"

#include "base/bytes.h"

namespace lokari::can_key {
namespace {

constexpr quint8 kLongIdentifier = 2;
constexpr quint32 kHighestIdentifier = 0x1FFFFFFF;
constexpr qsizetype kIdentifierSize = 4;
constexpr qsizetype kFrameHead = 3;  // 5A 32, size
constexpr qsizetype kFrameTail = 4;  // 00 00, 32 5A
constexpr qsizetype kDatagramHead = 4;

QByteArray frameStart() {
  return bytes({0x5A, 0x32});
}

QByteArray frameEnd() {
  return bytes({0x32, 0x5A});
}

/// Identifier and data.
QByteArray body(const CanMessage& message) {
  QByteArray made;
  for (int shift = 24; shift >= 0; shift -= 8) {
    appendByte(made, static_cast<int>(message.ID >> shift & 0xFF));
  }
  for (size_t i = 0; i < message.LEN; ++i) appendByte(made, message.DATA[i]);
  return made;
}

/// The message of an identifier and data; nothing when the identifier has more than 29 bits or
/// there are more data bytes than a message holds.
std::optional<CanMessage> fromBody(const QByteArray& body) {
  const qsizetype size = body.size() - kIdentifierSize;
  if (size < 0 || size > kMostData) return std::nullopt;
  CanMessage message;
  message.MSGTYPE = kLongIdentifier;
  for (qsizetype i = 0; i < kIdentifierSize; ++i) {
    message.ID = message.ID << 8 | static_cast<quint32>(byteAt(body, i));
  }
  if (message.ID > kHighestIdentifier) return std::nullopt;
  for (qsizetype i = 0; i < size; ++i) {
    message.DATA[message.LEN++] = static_cast<quint8>(byteAt(body, kIdentifierSize + i));
  }
  return message;
}

}  // namespace

QByteArray opening() {
  return frameStart() + frameEnd();
}

std::optional<QByteArray> frame(const CanMessage& message) {
  if (message.LEN > kMostData) return std::nullopt;
  return frameStart() + bytes({message.LEN}) + body(message) + bytes({0x00, 0x00}) + frameEnd();
}

std::optional<QByteArray> datagram(const CanMessage& message) {
  if (message.LEN > kMostData) return std::nullopt;
  return bytes({message.LEN, 0x00, 0x00, 0x00}) + body(message);
}

std::optional<CanMessage> fromDatagram(const QByteArray& datagram) {
  const qsizetype size = datagram.size() - kDatagramHead - kIdentifierSize;
  if (size < 0 || !datagram.startsWith(bytes({static_cast<int>(size & 0xFF),
                                              static_cast<int>(size >> 8 & 0xFF), 0x00, 0x00}))) {
    return std::nullopt;
  }
  return fromBody(datagram.mid(kDatagramHead));
}

std::optional<CanMessage> FrameReader::next() {
  for (;;) {
    const qsizetype start = waiting_.indexOf(frameStart());
    if (start < 0) {
      // Its last byte may be the first one of a frame's start.
      const bool halfStart = waiting_.endsWith(frameStart().left(1));
      waiting_ = halfStart ? frameStart().left(1) : QByteArray();
      return std::nullopt;
    }
    waiting_.remove(0, start);

    const int size = byteAt(waiting_, 2);
    if (size < 0) return std::nullopt;
    const qsizetype bodySize = kIdentifierSize + size;
    const qsizetype whole = kFrameHead + bodySize + kFrameTail;
    // A size that no message has would make a wait for bytes that never come.
    if (size <= kMostData) {
      if (waiting_.size() < whole) return std::nullopt;
      const auto message = fromBody(waiting_.mid(kFrameHead, bodySize));
      if (message && waiting_.mid(whole - 2, 2) == frameEnd()) {
        waiting_.remove(0, whole);
        return message;
      }
    }
    waiting_.remove(0, 1);
  }
}

}  // namespace lokari::can_key
