// The communication test of the MX10.
//
// 082086C2 with the station's node, low byte first, 02 and 00 asks for its versions; it goes out
// four times, since the station may still be busy with the log-on. Data of the answer: 4 5 the
// number of the USB or network part, low byte first, 7 6 5 the parts of the software's version.
#pragma once

#include <memory>

#include "link/can_driver.h"
#include "station/station_inquiry.h"

namespace lokari {

/// The question to the station of a node.
CanMessage mx10Question(qint16 nid);

/// The lines that the serial number and an answer give; an answer may be cut. `network` tells the
/// station reached by network from the one on USB.
QStringList mx10Lines(quint32 serialNumber, const CanMessage& answer, bool network);

std::unique_ptr<StationInquiry> makeMx10Inquiry(StationLink& link, Settings& settings);

}  // namespace lokari
