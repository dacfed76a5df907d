// The records of a Z21's datagrams: length (low byte first, counts itself), header (low byte
// first), data. Header 40 carries an X-Bus message, whose last byte is its checksum (xbus.h).
#pragma once

#include <QByteArray>
#include <QList>

namespace lokari::sim::makers {

struct Z21Record {
  int header = 0;
  QByteArray data;  ///< of an X-Bus message without its checksum

  bool operator==(const Z21Record&) const = default;
};

inline constexpr int kXBusHeader = 0x40;

/// The records of a datagram. An X-Bus message whose checksum is wrong is left out; a length that
/// cannot be ends the datagram.
QList<Z21Record> z21Records(const QByteArray& datagram);

QByteArray z21Bytes(const Z21Record& record);

}  // namespace lokari::sim::makers
