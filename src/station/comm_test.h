// The communication test: is the configured station there, and what is it?
#pragma once

#include <QStringList>

#include <optional>

#include "station/station_choice.h"

namespace lokari {

class StationLink;
struct Settings;

/// What the user gets to read where CommTestResult::wantsMakerForm is set.
inline constexpr char16_t kMakerFormAdvice[] =
    u"Mit Nachrichten nach den Unterlagen ihres Herstellers kann diese Zentrale mehr.";

struct CommTestResult {
  enum class Outcome {
    NoSession,      ///< the link could not be opened
    NoAnswer,       ///< nothing, or too little, came; or the line was lost
    NotUnderstood,  ///< something answered, but not as the configured station does
    Answered,
  };

  Outcome outcome = Outcome::NoSession;
  bool cancelled = false;
  /// What the user gets to read at the end: facts about the station, or what is wrong and where to
  /// look.
  QStringList lines;
  /// The station wants its messages as its maker's documents have them, and gets others.
  bool wantsMakerForm = false;
  /// The Lenz interface that is really connected; also when it is the configured one.
  std::optional<StationChoice> connected;
};

/// Job 1 of the progress dialog. Opens a session, asks, shows the answer in the link's view, closes
/// the session. `settings` are those of the link: the Lenz interface that turns out to be connected
/// becomes its `baseUnit`, which the caller keeps or takes back.
CommTestResult TestComm(StationLink& link, Settings& settings);

}  // namespace lokari
