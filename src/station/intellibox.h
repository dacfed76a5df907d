// The communication test of the Intellibox.
//
// Byte A0 asks for the versions. The reply is 19 bytes, counted from 1: 2 3 SPU and 5 6 KPU, low
// byte first, 8 PPU, 10 LIPU, 12 DNG, 14 to 18 the serial number; the others count the bytes behind
// them. ibx_state.h has the question for the power.
#pragma once

#include <QByteArray>

#include <memory>

#include "station/station_inquiry.h"

namespace lokari {

/// The lines that a reply is long enough for.
QStringList intelliboxLines(const QByteArray& reply);

std::unique_ptr<StationInquiry> makeIntelliboxInquiry(StationLink& link, Settings& settings);

}  // namespace lokari
