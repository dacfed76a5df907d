// Standard output and standard error, in UTF-8.
#pragma once

#include <functional>

#include "cli/console.h"

namespace lokari {

class StandardConsole final : public Console {
 public:
  /// `onLost` is called once when a result cannot be written: a full disk, a reader that has gone.
  explicit StandardConsole(std::function<void()> onLost) : onLost_(std::move(onLost)) {}

  void result(const QString& line) override;
  void message(const QString& line) override;

  /// Whether every result has been written.
  bool complete() const { return complete_; }

 private:
  std::function<void()> onLost_;
  bool complete_ = true;
};

}  // namespace lokari
