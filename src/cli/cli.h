// lokari-cli without its process: the frame around the commands.
//
//   lokari-cli [--settings STEM] COMMAND [arguments] [--yes]
//
// Ctrl-C raises the Interrupt, which cancels what the link does. Nothing that a command opens takes
// that back.
#pragma once

#include <QStringList>

#include <functional>

#include "base/app_paths.h"
#include "base/settings.h"
#include "cli/console_prompt.h"
#include "cli/results.h"
#include "link/station_link.h"

namespace lokari {

class Console;

enum class ExitStatus {
  Done = 0,
  Failed = 1,     ///< something failed
  WrongCall = 2,  ///< wrong call, or no session: nothing was done
};

/// Ctrl-C.
struct Interrupt {
  bool raised = false;
  std::function<void()> action;  ///< what it does now; may be empty

  void raise() {
    raised = true;
    if (action) action();
  }
};

/// What the process gives.
struct CliWorld {
  QString appPath;
  Clock& clock;
  Transports transports;
  Console& console;
  Interrupt& interrupt;
  QString programs{};  ///< the folder of this program and of those that belong to it
};

/// What a command works with.
struct CliContext {
  const AppPaths& paths;
  Settings& settings;
  Clock& clock;
  ConsolePrompt& prompt;
  Console& console;
  Results results;
  StationLink& link;
  Interrupt& interrupt;
  QString programs{};  ///< as in CliWorld
};

/// `arguments` without the program's name.
ExitStatus runCli(const QStringList& arguments, const CliWorld& world);

}  // namespace lokari
