// The reply to the question for the versions, byte A0, that all stations of the P50X protocol have:
// entries, each behind its length, closed by 00. Which entries there are tells the stations apart.
#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

#include <optional>

#include "station/station_inquiry.h"

namespace lokari {

enum class P50xModel {
  None,  ///< no whole list
  Intellibox,
  Tams,
  Other,
};

P50xModel p50xModel(const QByteArray& reply);

/// What is told of a list that is not the configured station's, `expected`: who has sent it, and
/// its versions. Nothing when there is no whole list.
StationReport p50xReport(const QByteArray& reply, P50xModel expected);

}  // namespace lokari
