// What a command of lokari-cli works with, and how it ends.
#pragma once

#include <QString>

#include "base/app_paths.h"
#include "base/settings.h"
#include "cli/console_prompt.h"
#include "cli/interrupt.h"
#include "cli/results.h"
#include "link/station_link.h"

namespace lokari {

class Console;

enum class ExitStatus {
  Done = 0,
  Failed = 1,     ///< something failed
  WrongCall = 2,  ///< wrong call, or no session: nothing was done
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
  QString programs{};  ///< the folder of this program and of those that belong to it
};

}  // namespace lokari
