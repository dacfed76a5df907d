// lokari-cli switch.
#pragma once

#include "cli/context.h"

namespace lokari {

class Call;

/// Sends what was asked for, also where the station says that it is so already or says nothing, and
/// prints the outputs afterwards.
ExitStatus switchOutputs(const Call& call, CliContext& context);

}  // namespace lokari
