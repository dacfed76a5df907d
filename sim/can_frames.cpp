#include "sim/can_frames.h"

#include "base/bytes.h"

namespace lokari::sim {
namespace {

constexpr qsizetype kIdentifier = 4;
constexpr qsizetype kMostData = 64;

QByteArray identifierAndData(const BusMessage& message) {
  return bytes({message.group, message.command * 4 + message.mode, message.node >> 8,
                message.node & 0xFF}) +
         message.data;
}

BusMessage parse(const QByteArray& identifierAndData) {
  BusMessage message;
  message.group = byteAt(identifierAndData, 0);
  message.command = byteAt(identifierAndData, 1) / 4;
  message.mode = byteAt(identifierAndData, 1) % 4;
  message.node = byteAt(identifierAndData, 2) * 256 + byteAt(identifierAndData, 3);
  message.data = identifierAndData.mid(kIdentifier);
  return message;
}

}  // namespace

QByteArray keyFrame(const BusMessage& message) {
  return bytes({0x5A, 0x32, static_cast<int>(message.data.size())}) + identifierAndData(message) +
         bytes({0x00, 0x00, 0x32, 0x5A});
}

QByteArray keyWakeUp() {
  return bytes({0x5A, 0x32, 0x32, 0x5A});
}

QByteArray ipDatagram(const BusMessage& message) {
  const int size = static_cast<int>(message.data.size());
  return bytes({size & 0xFF, size >> 8, 0x00, 0x00}) + identifierAndData(message);
}

std::optional<BusMessage> fromIpDatagram(const QByteArray& datagram) {
  constexpr qsizetype kHead = 4;
  if (datagram.size() < kHead + kIdentifier) return {};
  const int size = byteAt(datagram, 1) * 256 + byteAt(datagram, 0);
  if (datagram.size() != kHead + kIdentifier + size) return {};
  return parse(datagram.mid(kHead));
}

QList<KeyReader::Item> KeyReader::feed(const QByteArray& data) {
  input_ += data;
  QList<Item> items;
  while (takeOne(items)) {
  }
  return items;
}

/// True when something was taken or thrown away, false when more bytes are needed.
bool KeyReader::takeOne(QList<Item>& items) {
  if (input_.size() < 4) return false;
  if (input_.startsWith(keyWakeUp())) {
    input_.remove(0, 4);
    items.append(Item{.wakeUp = true, .message = {}});
    return true;
  }
  const int size = byteAt(input_, 2);
  if (!input_.startsWith(bytes({0x5A, 0x32})) || size > kMostData) {
    input_.remove(0, 1);
    return true;
  }
  const qsizetype whole = 3 + kIdentifier + size + 4;
  if (input_.size() < whole) return false;
  if (input_.mid(whole - 2, 2) != bytes({0x32, 0x5A})) {
    input_.remove(0, 1);
    return true;
  }
  items.append(Item{.wakeUp = false, .message = parse(input_.mid(3, kIdentifier + size))});
  input_.remove(0, whole);
  return true;
}

}  // namespace lokari::sim
