// The question ahead of what switches a stopped layout on.
#pragma once

#include <memory>
#include <optional>

#include "base/station_kind.h"
#include "link/comm_job.h"
#include "link/track_stop.h"

namespace lokari {

class StationLink;

/// The user's leave to go on, for as long as the use lasts; it may be empty inside, since most uses
/// need none.
using SwitchOnLeave = std::shared_ptr<TrackStop::Agreement>;

/// Whether `use` is asked about now.
bool asksToSwitchOn(StationLink& link, StationUse use);

/// Asks while this program holds the layout stopped and `use` switches it on; without a question
/// the leave is given. Nothing when the user does not want it.
std::optional<SwitchOnLeave> askToSwitchOn(StationLink& link, StationUse use);
/// The same for a job of the progress dialog.
std::optional<SwitchOnLeave> askToSwitchOn(StationLink& link, CommJob job);

}  // namespace lokari
