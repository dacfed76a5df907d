// One access to a CV by the binary commands of an Intellibox or a Tams MC, from its command to its
// result, as the makers' documents have it.
//
// A command is replied to with 00, begun, with 80, another one is in hand, or with a code of
// p50x_codes.h. Then CE is asked until the reply is not the single byte F5, nothing yet: a length
// and that many bytes.
#pragma once

#include <QByteArray>

namespace lokari {

class StationLink;

struct P50xOutcome {
  enum class Kind {
    Event,     ///< `event` is what CE gave, with its length; it may be cut
    Unknown,   ///< the station has no such command
    Refused,   ///< the station has not begun it
    Silent,    ///< nobody knows whether it was begun
    NoResult,  ///< it was begun, and its result did not come
    Text,      ///< `event` is the beginning of a text: the late reply to a text command
    Cancelled,
  };
  Kind kind = Kind::Silent;
  QByteArray event = {};
  int sendings = 0;  ///< of the command
};

/// Asks whether the station programs by binary commands: Event when it does. The question has no
/// arguments that could be left over in a station that does not know it.
P50xOutcome p50xProbe(StationLink& link);

/// Sends `command` (see intellibox_codec.h), once more only while the station is busy, and awaits
/// its result. The line is left as it is: ibx::endProgramming() has to follow.
P50xOutcome p50xAccess(StationLink& link, const QByteArray& command);

}  // namespace lokari
