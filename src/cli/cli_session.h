// A session of a command: opened with its checks, and closed with its farewell on every road.
#pragma once

#include "cli/context.h"

namespace lokari {

class CliSession {
 public:
  /// Opens the session for a job; the link shows itself on the console.
  CliSession(CliContext& context, CommJob job, bool progOn);
  /// close()
  ~CliSession();
  CliSession(const CliSession&) = delete;
  CliSession& operator=(const CliSession&) = delete;

  /// False when the station could not be reached, the reason has been told, or when the user has
  /// given up before. failure() is the command's status then.
  bool isOpen() const { return open_; }
  ExitStatus failure() const;
  /// Says goodbye, also after a cancel or a failure. Gives what the station refused as late as
  /// that, which the user has been told.
  QString close();

 private:
  CliContext& context_;
  bool progOn_;
  bool open_ = false;
};

}  // namespace lokari
