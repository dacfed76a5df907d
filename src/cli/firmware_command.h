// `firmware FILE`: new firmware for the station.
#pragma once

#include "cli/context.h"

namespace lokari {

class Call;

/// Progress goes to the messages, the closing text is the result. A station kind without a boot
/// loader is a wrong call; a file that fails a check, or that nobody confirms, sends nothing.
ExitStatus firmware(const Call& call, CliContext& context);

}  // namespace lokari
