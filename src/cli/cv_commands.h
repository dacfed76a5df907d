// `cv read` and `cv write`: single CVs, without a record.
#pragma once

#include <QStringList>

#include "cli/cli.h"

namespace lokari {

/// Prints "CV⇥value" or "CV⇥code⇥text" for each CV in its order.
ExitStatus cvRead(const QStringList& arguments, CliContext& context);

/// The same for each CV=VALUE. A value that the decoder did not take counts as a failure: the line
/// is "CV⇥value⇥text" with the value that it holds.
ExitStatus cvWrite(const QStringList& arguments, CliContext& context);

}  // namespace lokari
