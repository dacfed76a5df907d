// lokari-cli export: the vehicles into a file of another program.
#pragma once

#include "cli/context.h"

namespace lokari {

class Call;

/// `export csv FILE`: the vehicles by the template of the settings.
ExitStatus exportCsvFile(const Call& call, CliContext& context);

/// `export rzk FILE`
ExitStatus exportRzk(const Call& call, CliContext& context);

}  // namespace lokari
