// `check`: what is wrong with the database and the description files.
#pragma once

#include "cli/context.h"

namespace lokari {

class Call;

/// Prints "file⇥line⇥fault" for each fault; the line is 0 for the file as a whole. Failed when
/// there is one.
ExitStatus check(const Call& call, CliContext& context);

}  // namespace lokari
