// Standard output and standard error, in UTF-8.
#pragma once

#include "cli/console.h"

namespace lokari {

class StandardConsole final : public Console {
 public:
  void result(const QString& line) override;
  void message(const QString& line) override;
};

}  // namespace lokari
