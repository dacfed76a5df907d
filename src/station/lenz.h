// The communication test of the Lenz interfaces.
//
// 21 21 00 asks for the version. The answer is 62 21 and the version, or from protocol 3 on 63 21,
// the version and the command station; its halves are the version's digits. On USB it goes behind
// FF FE. So it tells which of the interfaces is connected, whichever was chosen.
//
// 21 24 05 asks for the state: 62 22 and 08 programming mode, 04 automatic start, 02 emergency off,
// 01 emergency stop.
//
// In the form of the documents F0 F0 asks for the interface's version behind it.
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

/// What the documents tell beyond: the station's name, from the answer to the first question, and
/// the interface's version (F0: 02, the version, a code). Both without FF FE.
QStringList lenzDocumentedLines(const QByteArray& version, const QByteArray& interface);

std::unique_ptr<StationInquiry> makeLenzInquiry(StationLink& link, Settings& settings);

}  // namespace lokari
