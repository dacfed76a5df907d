// The sentence under a message about a lost link.
#pragma once

#include <QString>

namespace lokari {

struct Settings;

/// Names the cable or the network address of the configured station; one German sentence.
QString whereToLook(const Settings& settings);

}  // namespace lokari
