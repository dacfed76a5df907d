// lokari-cli drive.
#pragma once

#include "cli/context.h"

namespace lokari {

class Call;

/// Drives one vehicle and prints its state afterwards. A stop goes out before anything is read, and
/// whatever the reading gives.
ExitStatus drive(const Call& call, CliContext& context);

}  // namespace lokari
