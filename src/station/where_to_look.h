// The sentence under a message about a lost link.
#pragma once

#include <QString>

namespace lokari {

struct Settings;

/// Names the cable or the network address of the configured station; one German sentence.
QString whereToLook(const Settings& settings);

/// The same where something answers that is not the configured station: the cable is not at fault.
QString whatAnswersOtherwise(const Settings& settings);

}  // namespace lokari
