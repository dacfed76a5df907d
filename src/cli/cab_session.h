// The station's session of a command that drives or switches.
#pragma once

#include "cab/cab_line.h"
#include "cli/cli.h"

namespace lokari {

class CabSession {
 public:
  /// Opens the session. Ctrl-C becomes `cancelRequested`.
  explicit CabSession(CliContext& context);
  ~CabSession();
  CabSession(const CabSession&) = delete;
  CabSession& operator=(const CabSession&) = delete;

  /// False when the station could not be reached; the reason has been told.
  bool isOpen() const { return open_; }
  CabLine& line() { return line_; }
  /// The exit status behind the commands, which tell no failure themselves; the user is told here.
  ExitStatus status() const;
  /// Somebody else gives the session back.
  void handOver() { open_ = false; }

 private:
  CliContext& context_;
  CabLine line_;
  bool open_ = false;
};

/// Refuses, as a wrong call, a station kind without cabs; `job` is what it cannot do.
void checkHasCabs(const CliContext& context, const QString& job);

/// "N=on" or "N=off", N from `first` to `last`.
struct SwitchArgument {
  int number = 0;
  bool on = false;
};
SwitchArgument switchArgument(const QString& text, int first, int last, const QString& what);

/// "ein" or "aus".
QString onOff(bool on);

}  // namespace lokari
