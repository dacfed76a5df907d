#include "cab/layout_stop.h"

#include "base/prompt.h"
#include "cab/cab_line.h"
#include "link/link_error.h"
#include "link/station_link.h"
#include "link/track_stop.h"

namespace lokari {

LayoutStop::LayoutStop(CabLine& line, CabProtocolFactory makeProtocol)
    : line_(line), makeProtocol_(std::move(makeProtocol)) {
  state_.stopped = true;
}

LayoutStop::~LayoutStop() = default;

// From the event loop: the station's answer is taken in the middle of an exchange.
void LayoutStop::noteFailed(StopFault fault) {
  StationLink& link = line_.link();
  link.trackStop().noteFailed(true, fault == StopFault::Silent);
  const QString what =
      fault == StopFault::Refused ? QStringLiteral("abgelehnt") : QStringLiteral("nicht bestätigt");
  tell_ = link.clock().after(0, [&link, what] {
    link.prompt().message(QStringLiteral("Die Zentrale hat „Halt“ %1!").arg(what), Icon::Warning,
                          QStringLiteral("Bitte die Anlage an der Zentrale anhalten."));
  });
}

void LayoutStop::noteHeld() {
  TrackStop& layout = line_.link().trackStop();
  layout.noteTaken(true);
  layout.showToAll();
}

TrackStop::Outcome LayoutStop::send() {
  StationLink& link = line_.link();
  const StationKindRow& kind = link.settings().station();
  if (kind_ != &kind) {
    kind_ = &kind;
    protocol_ = makeProtocol_(kind.family, line_, state_,
                              {.stopFailed = [this](bool, StopFault fault) { noteFailed(fault); },
                               .stopHeld = [this](bool) { noteHeld(); }});
  }
  const auto outcome = std::make_shared<Outcome>(Outcome::Waiting);
  const auto waits = std::make_shared<bool>(false);
  line_.urgent(
      [this, outcome, waits] {
        *outcome = sendNow();
        if (*waits) line_.link().trackStop().noteBehind(*outcome == Outcome::Sent);
      },
      QStringLiteral("Halt"));
  *waits = *outcome == Outcome::Waiting;
  return *outcome;
}

TrackStop::Outcome LayoutStop::sendNow() {
  TrackStop& layout = line_.link().trackStop();
  try {
    line_.restore();
    layout.noteOrdered(true);
    layout.showToAll();
    protocol_->sendStopped();
    line_.noteBack();
  } catch (const LinkError& error) {
    layout.noteFailed(true, false);
    line_.noteGone(error.message());
    return Outcome::NotSent;
  }
  return Outcome::Sent;
}

}  // namespace lokari
