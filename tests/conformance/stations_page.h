// The page of stations: what is proved for every kind, from running it.
#pragma once

#include <QString>

namespace lokari::conformance {

/// The whole page, as Markdown. Runs every operation on every pairing.
QString stationsPage();

}  // namespace lokari::conformance
