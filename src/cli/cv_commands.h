// `cv read` and `cv write`: single CVs, without a record.
#pragma once

#include "cli/context.h"

namespace lokari {

class Call;

/// Prints "CV⇥value" or "CV⇥code⇥text" for each CV in its order.
ExitStatus cvRead(const Call& call, CliContext& context);

/// The same for each CV=VALUE. A value that the decoder did not take counts as a failure: the line
/// is "CV⇥value⇥text" with the value that it holds. Lines of the main track come last, since some
/// stations refuse a write only at their farewell.
ExitStatus cvWrite(const Call& call, CliContext& context);

}  // namespace lokari
