// lokari-cli switch.
#pragma once

#include <QStringList>

#include "cli/cli.h"

namespace lokari {

/// ADDRESS N=on|off...
ExitStatus switchOutputs(const QStringList& arguments, CliContext& context);

}  // namespace lokari
