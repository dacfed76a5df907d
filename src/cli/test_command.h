// `test`: is the configured station there, and what is it?
#pragma once

#include "cli/context.h"

namespace lokari {

class Call;

/// Prints the lines of the communication test; what went wrong is a message. A station that does
/// not answer, or not as the configured one, is a failure.
ExitStatus testStation(const Call& call, CliContext& context);

}  // namespace lokari
