// A program of the printing system, run beside the window: its server may be silent for minutes.
#pragma once

#include <QProcess>
#include <QStringList>

#include <functional>
#include <memory>

#include "base/clock.h"

namespace lokari {

class PrintCommand {
 public:
  enum class Outcome {
    Done,     ///< it ended by itself, with 0
    Refused,  ///< it ended by itself, with another number
    Missing,  ///< there is no such program
    Silent,   ///< it did not come to its end in time and was ended
  };

  /// Which language the program answers in.
  enum class Words { OfUser, Plain };

  /// Starts the program. `ended` is called once, from the event loop. A command that goes before
  /// ends its program, and calls nothing. `clock` must outlive it.
  PrintCommand(const QString& program, const QStringList& arguments, Words words, Clock& clock,
               std::function<void()> ended);
  ~PrintCommand();
  PrintCommand(const PrintCommand&) = delete;
  PrintCommand& operator=(const PrintCommand&) = delete;

  bool hasEnded() const { return ended_; }
  // Only of a command that has ended.
  Outcome outcome() const { return outcome_; }
  QString output() const { return output_; }
  QString errors() const { return errors_; }

 private:
  void end(Outcome outcome);
  void stop();

  QProcess process_;
  std::function<void()> tell_;
  std::unique_ptr<Clock::Alarm> limit_;
  std::unique_ptr<Clock::Alarm> telling_;
  Clock& clock_;
  bool ended_ = false;
  Outcome outcome_ = Outcome::Silent;
  QString output_;
  QString errors_;
};

}  // namespace lokari
