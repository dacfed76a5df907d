// The commands of lokari-cli: one row and one source each.
#pragma once

#include <optional>
#include <span>

#include "base/station_kind.h"
#include "cli/call.h"
#include "cli/context.h"

namespace lokari {

struct Command {
  const char16_t* words;    ///< "cv read": what calls it
  const char16_t* purpose;  ///< German, for the help
  ArgumentRows arguments;
  bool usesStation;  ///< needs settings that name one
  /// May throw WrongCall, and LinkError, which ends the program with its message and status 1.
  ExitStatus (*run)(const Call& call, CliContext& context);
  /// With what it may switch the layout on; see switchesOn().
  std::optional<StationUse> use = std::nullopt;
};

std::span<const Command> commandTable();

}  // namespace lokari
