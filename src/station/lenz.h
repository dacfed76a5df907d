// The communication test of the Lenz interfaces.
//
// 21 21 00 asks for the version. The answer is 62 21 and the version, or from protocol 3 on 63 21,
// the version and the command station; its halves are the version's digits. On USB it goes behind
// FF FE. So it tells which of the interfaces is connected, whichever was chosen.
//
// 21 24 05 asks for the state: 62 22 and 08 programming mode, 04 automatic start, 02 emergency off,
// 01 emergency stop.
#pragma once

#include <QByteArray>

#include <memory>

#include "station/station_inquiry.h"

namespace lokari {

/// What the answer to the first question says. With `usb` its first two bytes are dropped; FF FE is
/// dropped in any case. Not understood when it begins with neither head.
StationReport lenzVersionReport(const QByteArray& reply, bool usb);

/// The lines of the answer to the second question, without FF FE; none for any other message.
QStringList lenzStateLines(const QByteArray& message);

std::unique_ptr<StationInquiry> makeLenzInquiry(StationLink& link, Settings& settings);

}  // namespace lokari
