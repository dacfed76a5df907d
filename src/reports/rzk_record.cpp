#include "reports/rzk_record.h"

#include <QtEndian>

#include "base/text_file.h"

namespace lokari {
namespace {

constexpr qsizetype kShortName = 6;
constexpr qsizetype kLongName = 40;
constexpr qsizetype kAddressAt = 50;
constexpr char kMagic[] = "RZKV51";

QByteArray word(qint16 value) {
  QByteArray bytes(2, '\0');
  qToLittleEndian(value, bytes.data());
  return bytes;
}

/// The text cut to `size` characters, a byte 0, and blanks up to `size` + 1.
QByteArray place(const QString& text, qsizetype size) {
  return (encodeWindows1252(text).left(size) + '\0').leftJustified(size + 1, ' ');
}

}  // namespace

QByteArray rzkHead() {
  return rzkRecord({.shortName = QString::fromLatin1(kMagic), .longName = {}});
}

QByteArray rzkRecord(const RzkVehicle& vehicle) {
  return place(vehicle.shortName, kShortName) + word(vehicle.group) +
         place(vehicle.longName, kLongName) + word(vehicle.address);
}

bool isRzkHead(const QByteArray& record) {
  return record.size() == kRzkRecordSize && record.startsWith(kMagic);
}

qint16 rzkAddress(const QByteArray& record) {
  return qFromLittleEndian<qint16>(record.constData() + kAddressAt);
}

}  // namespace lokari
