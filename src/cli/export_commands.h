// lokari-cli export: the vehicles into a file of another program.
#pragma once

#include "cli/cli.h"

namespace lokari {

/// `export csv FILE`: the vehicles by the template of the settings.
ExitStatus exportCsvFile(const QStringList& arguments, CliContext& context);

/// `export rzk FILE`
ExitStatus exportRzk(const QStringList& arguments, CliContext& context);

}  // namespace lokari
