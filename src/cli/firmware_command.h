// `firmware FILE`: new firmware for the station.
#pragma once

#include <QStringList>

#include "cli/cli.h"

namespace lokari {

/// Progress goes to the messages, the closing text is the result. A station kind without a boot
/// loader is a wrong call; a file that fails a check, or that nobody confirms, sends nothing.
ExitStatus firmware(const QStringList& arguments, CliContext& context);

}  // namespace lokari
