// The CAN key's two wire forms.
//
// Serial: 5A 32, number of data bytes (8 bit), the identifier's four bytes, high byte first, the
// data, two bytes 00 00, 32 5A. The key is opened with 5A 32 32 5A, and may say the same.
//
// UDP: number of data bytes (16 bit, low byte first), two bytes 00 00, the identifier's four bytes,
// high byte first, the data. One datagram is one message.
//
// Messages are those with a 29-bit identifier and up to 16 data bytes; others are no messages for
// this program and are skipped.
#pragma once

#include <QByteArray>

#include <optional>

#include "link/can_driver.h"

namespace lokari::can_key {

/// Most data bytes of a message.
inline constexpr int kMostData = 16;

/// 5A 32 32 5A.
QByteArray opening();
/// Nothing for a message with more than kMostData bytes.
std::optional<QByteArray> frame(const CanMessage& message);
std::optional<QByteArray> datagram(const CanMessage& message);

/// The message of a datagram, or nothing when its sizes contradict each other.
std::optional<CanMessage> fromDatagram(const QByteArray& datagram);

/// Takes messages off the serial stream, whatever pieces it comes in. Bytes that belong to no frame
/// are skipped.
class FrameReader {
 public:
  void feed(const QByteArray& data) { waiting_ += data; }
  /// The next whole message; nothing when more bytes are needed.
  std::optional<CanMessage> next();
  void clear() { waiting_.clear(); }

 private:
  QByteArray waiting_;
};

}  // namespace lokari::can_key
