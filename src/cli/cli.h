// lokari-cli without its process: the frame around the commands.
//
//   lokari-cli [--settings STEM] [--trace [FILE]] COMMAND [arguments] [--yes]
//
// Behind --trace a word is the FILE unless a command begins with it.
//
// Ctrl-C raises the Interrupt, which cancels what the link does. Nothing that a command opens takes
// that back.
#pragma once

#include <QStringList>

#include "cli/context.h"

namespace lokari {

/// What the process gives.
struct CliWorld {
  QString appPath;
  Clock& clock;
  Transports transports;
  Console& console;
  Interrupt& interrupt;
  QString programs{};  ///< the folder of this program and of those that belong to it
};

/// `arguments` without the program's name.
ExitStatus runCli(const QStringList& arguments, const CliWorld& world);

}  // namespace lokari
