// The communication test of the Z21.
//
// "04 00 10 00" asks for the serial number: 08 00 10 00 and four bytes, low byte first. "07 00 40
// 00 F1 0A FB" asks for the firmware: 09 00 40 00 F3 0A, the two parts of the version, a checksum.
//
// Where messages follow the maker's documents, three more are asked behind them: "04 00 1A 00" the
// hardware and firmware, 0C 00 1A 00 and four bytes each, low byte first; "04 00 18 00" whether a
// z21start is locked, 05 00 18 00 and 1 for yes; "07 00 40 00 21 24 05" the status, 08 00 40 00
// 62 22, its bits, a checksum.
#pragma once

#include <QByteArray>

#include <memory>

#include "station/station_inquiry.h"

namespace lokari {

/// The line of an answer to either question; empty when it is too short.
QString z21SerialNumberLine(const QByteArray& message);
QString z21FirmwareLine(const QByteArray& message);
QString z21HardwareLine(const QByteArray& message);
QString z21LockLine(const QByteArray& message);
QString z21StatusLine(const QByteArray& message);

std::unique_ptr<StationInquiry> makeZ21Inquiry(StationLink& link, Settings& settings);

}  // namespace lokari
