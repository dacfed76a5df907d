// lokari-cli drive.
#pragma once

#include <QStringList>

#include "cli/cli.h"

namespace lokari {

/// ADDRESS [--speed N] [--back] [--function N=on|off]... [--stop]
ExitStatus drive(const QStringList& arguments, CliContext& context);

}  // namespace lokari
