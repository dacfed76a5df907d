// The communication test of the MX1 with the text protocol.
//
// "Z" and a carriage return ask for the state; the reply is a letter, two hexadecimal digits and a
// carriage return. Bits of the number: 80 new generation, 40 Zimo, 20 DCC, 10 Motorola data format,
// 01 broadcast stop, 02 track voltage on, 04 overcurrent.
#pragma once

#include <QByteArray>

#include <memory>

#include "station/station_inquiry.h"

namespace lokari {

/// What a reply says; not understood when its digits are none.
StationReport mx1TextReport(const QByteArray& reply);

std::unique_ptr<StationInquiry> makeMx1TextInquiry(StationLink& link, Settings& settings);

}  // namespace lokari
