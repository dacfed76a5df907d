// The question ahead of leaving vehicles that move.
#pragma once

#include <QStringList>

namespace lokari {

class Prompt;

enum class Leaving {
  LetRun,     ///< nothing is sent
  StopThese,  ///< each of them to speed 0
  SwitchOff,  ///< the stop of the whole layout
};

/// Asks what becomes of the vehicles that move, by the titles of their cabs. Letting them run is
/// what a closed box means.
Leaving askHowToLeave(Prompt& prompt, const QStringList& titles);

}  // namespace lokari
