// Where the command line writes.
#pragma once

#include <QString>

namespace lokari {

class Console {
 public:
  virtual ~Console() = default;
  /// A line of results, for standard output; fields are separated by tabs.
  virtual void result(const QString& line) = 0;
  /// A line for the person, for standard error.
  virtual void message(const QString& line) = 0;
};

}  // namespace lokari
