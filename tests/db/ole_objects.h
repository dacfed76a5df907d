// Objects as Access stores them in a column.
#pragma once

#include <QByteArray>

namespace lokari::test {

inline QByteArray number(quint32 value, int bytes = 4) {
  QByteArray data;
  for (int i = 0; i < bytes; ++i) data.append(static_cast<char>(value >> (8 * i)));
  return data;
}

inline QByteArray counted(const QByteArray& data) {
  return number(static_cast<quint32>(data.size())) + data;
}

/// The wrapper of Access around an object: 20 bytes, the names, the object.
inline QByteArray wrapped(const QByteArray& objectClass, const QByteArray& data, quint32 kind = 2) {
  const QByteArray names("Bitmap Image\0Paint.Picture\0", 27);
  QByteArray head = QByteArray("\x15\x1C", 2) + number(20 + 27, 2) + number(2) + number(13, 2) +
                    number(14, 2) + number(20, 2) + number(33, 2) + number(0xFFFFFFFF);
  return head + names + number(0x0501) + number(kind) + counted(objectClass + '\0') + counted("") +
         counted("") + counted(data) + QByteArray("\1\5\0\0\0\0\0\0", 8);
}

/// A file in the data of the packager.
inline QByteArray packaged(const QByteArray& file) {
  return number(2, 2) + QByteArray("lok.jpg\0C:\\BILDER\\lok.jpg\0", 26) + number(0x00030000) +
         counted(QByteArray("C:\\TEMP\\lok.jpg\0", 16)) + counted(file);
}

}  // namespace lokari::test
