// A session of a command: opened with its checks, and closed with its farewell on every road.
#pragma once

#include "cli/cli.h"

namespace lokari {

class CliSession {
 public:
  /// Opens the session for a job. Ctrl-C becomes `cancelRequested`, the link shows itself on the
  /// console.
  CliSession(CliContext& context, CommJob job, bool progOn);
  /// Says goodbye, also after a cancel or a failure.
  ~CliSession();
  CliSession(const CliSession&) = delete;
  CliSession& operator=(const CliSession&) = delete;

  /// False when the station could not be reached; the reason has been told.
  bool isOpen() const { return open_; }

 private:
  CliContext& context_;
  bool progOn_;
  bool open_ = false;
};

}  // namespace lokari
