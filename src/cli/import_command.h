// `import access`: a database of Access comes into one of this program.
#pragma once

#include "cli/context.h"

namespace lokari {

class Call;

/// A current database is taken over into a new one beside it, one of format V2 into the database of
/// the settings. Prints the closing report. Failed when something of it did not go over.
ExitStatus importAccess(const Call& call, CliContext& context);

}  // namespace lokari
