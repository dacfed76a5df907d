// Messages of the MX10's bus in the two forms that the station speaks.
//
// Identifier (four bytes): group, command x 4 + mode, sender's node. Modes: 0 question, 1 command,
// 2 event, 3 answer.
//
//   key    5A 32, number of data bytes, identifier, data, two check bytes, 32 5A
//   IP     number of data bytes (16 bit, low byte first), 00 00, identifier, data
//
// The key's wake-up is 5A 32 32 5A, which it repeats.
#pragma once

#include <QByteArray>
#include <QList>

#include <optional>

namespace lokari::sim {

struct BusMessage {
  int group = 0;
  int command = 0;
  int mode = 0;
  int node = 0;
  QByteArray data;
};

QByteArray keyFrame(const BusMessage& message);
QByteArray keyWakeUp();
QByteArray ipDatagram(const BusMessage& message);

/// Nothing for a datagram whose size is not that of its data.
std::optional<BusMessage> fromIpDatagram(const QByteArray& datagram);

/// Takes the key's bytes apart, in whatever portions they come.
class KeyReader {
 public:
  struct Item {
    bool wakeUp = false;
    BusMessage message;  ///< when it is no wake-up
  };

  QList<Item> feed(const QByteArray& data);

 private:
  bool takeOne(QList<Item>& items);

  QByteArray input_;
};

}  // namespace lokari::sim
