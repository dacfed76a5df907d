// The station's session of a command that drives or switches, and the order of its messages.
#pragma once

#include <functional>

#include "cab/cab_line.h"
#include "cab/layout_stands.h"
#include "cli/context.h"

namespace lokari {

class CabSession {
 public:
  explicit CabSession(CliContext& context);
  ~CabSession();
  CabSession(const CabSession&) = delete;
  CabSession& operator=(const CabSession&) = delete;

  /// False when the station could not be reached, the reason has been told, or when the user has
  /// given up before. status() is the command's then.
  bool isOpen() const { return open_; }
  CabLine& line() { return line_; }
  /// Reads a state, with one retry as a cab has it, and tells a failure. `read` gives an optional.
  template <class Read>
  auto read(const Read& read) -> decltype(read());
  /// Runs a message and what answers it; false when it was not sent or not confirmed, which is told
  /// once. Nothing runs behind a Ctrl-C.
  bool command(const std::function<void()>& send);
  /// The same for a stop, which goes out behind a Ctrl-C too and waits for the station's word where
  /// it gives one.
  bool stop(const std::function<void()>& send);
  /// The station has not confirmed a stop in time; what is told as due goes on.
  void tellUnconfirmed();

  /// The station has taken a command, and the layout stands all the same.
  void tellStands(LayoutStands stands);

  /// The same for one that the station has refused: the command has failed.
  void tellRefused();

  /// The command has not done what it was asked for; tells why.
  void fail(const QString& text);
  bool hasFailed() const { return failed_; }

  ExitStatus status() const;

 private:
  static constexpr int kReadings = 2;

  bool open();
  void close();
  bool mayRead(int readings);
  void prepareReading();
  void tellNoState();
  void exchange(const std::function<void()>& run);
  bool confirmed(int beepsBefore);
  bool isHeardOf();
  void tellOnce(const QString& fault);
  QString portFault();

  CliContext& context_;
  CabLine line_;
  bool open_ = false;
  bool opened_ = false;  // once at least
  bool failed_ = false;
  bool toldUnsent_ = false;
  LayoutStands toldStands_ = LayoutStands::No;
  QString lost_;  // what the last exchange found of the line
};

/// Refuses, as a wrong call, a station kind without cabs; `job` is what it cannot do.
void checkHasCabs(const CliContext& context, const QString& job);

template <class Read>
auto CabSession::read(const Read& read) -> decltype(read()) {
  decltype(read()) state;
  for (int readings = 0; readings < kReadings && !state && mayRead(readings); ++readings) {
    exchange([&] {
      prepareReading();
      state = read();
    });
  }
  if (!state) tellNoState();
  return state;
}

}  // namespace lokari
