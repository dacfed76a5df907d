// Long work on the command line: each tenth of the way is a message, the last words are results.
#pragma once

#include "base/progress.h"

namespace lokari {

struct CliContext;

/// Ctrl-C asks the work to stop. `context` must outlive the result.
RunWithProgress consoleProgress(CliContext& context);

}  // namespace lokari
