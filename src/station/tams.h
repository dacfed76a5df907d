// The communication test of the Tams MC.
//
// Byte A0 asks for the version. The reply has 10 bytes at least, counted from 1: 2 3 4 the digits
// of the version, 5 a letter behind them when it is above 28; the four bytes before the last one
// are the serial number. ibx_state.h has the question for the power.
#pragma once

#include <QByteArray>

#include <memory>

#include "station/station_inquiry.h"

namespace lokari {

/// The lines that a reply is long enough for.
QStringList tamsLines(const QByteArray& reply);

std::unique_ptr<StationInquiry> makeTamsInquiry(StationLink& link, Settings& settings);

}  // namespace lokari
