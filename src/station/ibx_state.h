// The question for the power that an Intellibox and a Tams MC share: byte A2. The answer is one
// byte: 08 power on, 04 overheating, 10 halt, 40 the track voltage of scale N; with 80 another one
// follows.
#pragma once

#include <QString>

#include "station/p50x_versions.h"

namespace lokari {

class StationLink;

/// The line that the byte (0 to 255) makes.
QString ibxStateLine(int state);

/// Asks and gives the line; empty when nothing answers.
QString askIbxState(StationLink& link);

/// The report with that line behind it, where it has any.
StationReport withIbxState(StationLink& link, StationReport report);

/// What waits is no whole list of versions of the configured station, `expected`: who else answers.
/// A station that does not know the question has a state all the same.
StationReport reportOtherP50x(StationLink& link, P50xModel expected);

}  // namespace lokari
