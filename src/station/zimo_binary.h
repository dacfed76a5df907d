// The communication test of the Zimo binary protocol.
//
// 0D 00 asks who the station is. The reply, bytes counted from 1: 4 the model, 9 10 14 the
// software's version, 11 12 13 its date, 17 18 the boot ROM's version, 21 to 24 the serial number,
// high byte first, of an MXULF. 02 03 asks for the track: the reply's last byte is 80 DCC, 40
// Motorola data format, 01 broadcast stop, 02 track voltage on, 04 overcurrent.
#pragma once

#include <QByteArray>

#include <memory>

#include "station/station_inquiry.h"

namespace lokari {

/// The lines that a reply to the first question is long enough for.
QStringList zimoBinaryModelLines(const QByteArray& reply);
/// The lines of the makers' documents: the last byte is 01 stopped, 02 without track voltage.
QStringList zimoDocumentedTrackLines(const QByteArray& reply);
/// The lines of a reply to the second one; none when it holds no more than its command byte.
QStringList zimoBinaryTrackLines(const QByteArray& reply);

std::unique_ptr<StationInquiry> makeZimoBinaryInquiry(StationLink& link, Settings& settings);

}  // namespace lokari
