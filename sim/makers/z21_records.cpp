#include "sim/makers/z21_records.h"

#include "base/bytes.h"
#include "sim/makers/xbus.h"

namespace lokari::sim::makers {
namespace {

constexpr qsizetype kHead = 4;

int wordAt(const QByteArray& data, qsizetype at) {
  return byteAt(data, at) + 256 * byteAt(data, at + 1);
}

QByteArray word(int value) {
  return bytes({value & 0xFF, value >> 8 & 0xFF});
}

}  // namespace

QList<Z21Record> z21Records(const QByteArray& datagram) {
  QList<Z21Record> records;
  qsizetype at = 0;
  while (datagram.size() - at >= kHead) {
    const int length = wordAt(datagram, at);
    if (length < kHead || length > datagram.size() - at) break;
    Z21Record record{wordAt(datagram, at + 2), datagram.mid(at + kHead, length - kHead)};
    at += length;
    if (record.header == kXBusHeader) {
      if (!endsInItsXor(record.data)) continue;
      record.data.chop(1);
    }
    records.append(record);
  }
  return records;
}

QByteArray z21Bytes(const Z21Record& record) {
  const QByteArray data = record.header == kXBusHeader ? withXor(record.data) : record.data;
  return word(static_cast<int>(kHead + data.size())) + word(record.header) + data;
}

}  // namespace lokari::sim::makers
