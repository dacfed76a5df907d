// Records of the vehicle file that a railway control program keeps: 52 bytes each, integers 16 bits
// signed with the low byte first, text in windows-1252.
//
//   offset  size
//      0      7   short name: 6 characters at most, a byte 0, blanks
//      7      2   group
//      9     41   long name: 40 characters at most, a byte 0, blanks
//     50      2   decoder address
//
// The first record is the head: "RZKV51" and a byte 0 as its short name, the rest empty or 0. The
// others are one vehicle each, by ascending address.
#pragma once

#include <QByteArray>
#include <QString>

namespace lokari {

inline constexpr qsizetype kRzkRecordSize = 52;

struct RzkVehicle {
  QString shortName;
  QString longName;
  qint16 group = 0;
  qint16 address = 0;
};

QByteArray rzkHead();
/// Names are cut to their places; a character that the code page lacks becomes "?".
QByteArray rzkRecord(const RzkVehicle& vehicle);

/// Whether a file that begins with `record` is a vehicle file. False for a record that is too
/// short.
bool isRzkHead(const QByteArray& record);
/// The address of a whole record.
qint16 rzkAddress(const QByteArray& record);

}  // namespace lokari
