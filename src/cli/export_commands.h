// lokari-cli export: the vehicles into a file of another program.
#pragma once

#include "cli/cli.h"

namespace lokari {

/// `export rzk FILE`
ExitStatus exportRzk(const QStringList& arguments, CliContext& context);

}  // namespace lokari
