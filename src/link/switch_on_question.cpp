#include "link/switch_on_question.h"

#include "base/prompt.h"
#include "link/station_link.h"

namespace lokari {
namespace {

QString nameOf(StationUse use) {
  switch (use) {
    case StationUse::Cab:
      return QStringLiteral("Das Öffnen eines Fahrpults");
    case StationUse::Panel:
      return QStringLiteral("Das Öffnen eines Schaltpults");
    case StationUse::Test:
      return QStringLiteral("Der Verbindungstest");
    case StationUse::CvJob:
      break;
  }
  return QStringLiteral("Das Lesen oder Schreiben von CVs");
}

/// A firmware transfer ends with a station that starts anew; it has a question of its own.
std::optional<StationUse> useOf(CommJob job) {
  switch (job) {
    case CommJob::TestComm:
      return StationUse::Test;
    case CommJob::ReadProgTrack:
    case CommJob::WriteProgTrack:
    case CommJob::WriteMain:
    case CommJob::ReadMain:
      return StationUse::CvJob;
    case CommJob::None:
    case CommJob::SendFirm:
    case CommJob::ProgressOnly:
      break;
  }
  return std::nullopt;
}

}  // namespace

bool asksToSwitchOn(StationLink& link, StationUse use) {
  const bool sessionOpen = link.commUseCount > 0;
  return link.trackStop().mayStand() && switchesOn(link.settings().station(), use, sessionOpen);
}

std::optional<SwitchOnLeave> askToSwitchOn(StationLink& link, StationUse use) {
  if (!asksToSwitchOn(link, use)) return SwitchOnLeave();
  const int answer = link.prompt().choose(
      {.text = QStringLiteral("Die Anlage ist angehalten. %1 schaltet sie wieder ein.")
                   .arg(nameOf(use)),
       .more = QStringLiteral("Alle Fahrzeuge fahren dann mit ihrer Geschwindigkeit weiter."),
       .answers = {QStringLiteral("&Einschalten"), QStringLiteral("Abbruch")},
       .safe = 1,
       .icon = Icon::Warning});
  if (answer != 0) return std::nullopt;
  return std::make_shared<TrackStop::Agreement>(link.trackStop());
}

std::optional<SwitchOnLeave> askToSwitchOn(StationLink& link, CommJob job) {
  const auto use = useOf(job);
  return use ? askToSwitchOn(link, *use) : SwitchOnLeave();
}

}  // namespace lokari
