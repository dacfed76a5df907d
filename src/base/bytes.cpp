#include "base/bytes.h"

#include <QString>

namespace lokari {

QByteArray bytes(std::initializer_list<int> values) {
  QByteArray data;
  data.reserve(static_cast<qsizetype>(values.size()));
  for (const int value : values) appendByte(data, value);
  return data;
}

int byteAt(const QByteArray& data, qsizetype index) {
  if (index < 0 || index >= data.size()) return -1;
  return static_cast<unsigned char>(data[index]);
}

void appendByte(QByteArray& data, int value) {
  Q_ASSERT(value >= 0 && value <= 255);
  data.append(static_cast<char>(value));
}

QString hexDump(const QByteArray& data) {
  return QString::fromLatin1(data.toHex(' ')).toUpper();
}

quint8 byteLow(qint32 n) {
  return static_cast<quint8>(static_cast<quint32>(n) & 0xFFU);
}

quint8 byteSecond(qint32 n) {
  return static_cast<quint8>((static_cast<quint32>(n) >> 8U) & 0xFFU);
}

qint16 wordLow(qint32 n) {
  return static_cast<qint16>(static_cast<quint32>(n) & 0xFFFFU);
}

qint16 wordHigh(qint32 n) {
  return static_cast<qint16>((static_cast<quint32>(n) >> 16U) & 0xFFFFU);
}

}  // namespace lokari
