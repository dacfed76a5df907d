// Reading and writing CVs by the binary commands, as the makers' documents have it.
#pragma once

#include <memory>
#include <optional>

#include "link/cv_exchange.h"
#include "link/p50x_access.h"

namespace lokari::p50x {

/// Reads by a command of intellibox_codec.h; by `instead` when it reads bit by bit, and the station
/// or the decoder cannot do that.
std::unique_ptr<CvExchange> makeRead(StationLink& link, const CvRequest& request,
                                     const QByteArray& command,
                                     const std::optional<QByteArray>& instead = {});
/// Writes on the track of the link's job, on the programming track by `mode`.
std::unique_ptr<CvExchange> makeWrite(StationLink& link, const CvRequest& request, int mode);

/// The station or the decoder cannot read bit by bit.
bool wantsByte(const P50xOutcome& outcome);

/// The result that a read's outcome has: a value or a code.
int readResult(const P50xOutcome& outcome);
/// The same of a write of `value`.
int writeResult(const P50xOutcome& outcome, int value);

/// Ends the programming and drops what is replied to that.
void endProgramming(StationLink& link);

}  // namespace lokari::p50x
