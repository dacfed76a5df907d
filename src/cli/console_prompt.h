// Boxes on the command line: texts go to the console, questions are answered by `--yes` or else
// with the safe answer.
#pragma once

#include "base/prompt.h"

namespace lokari {

class Clock;
class Console;
struct Interrupt;

class ConsolePrompt final : public Prompt {
 public:
  /// All of them must outlive it.
  ConsolePrompt(Console& console, bool yes, Clock& clock, const Interrupt& interrupt)
      : console_(console), yes_(yes), clock_(clock), interrupt_(interrupt) {}

  using Prompt::ask;
  Answer ask(const Box& box) override;
  int choose(const Choice& choice) override;
  /// Asks for half a minute: a command that nobody watches must end. Ctrl-C ends it at once.
  bool waitUntil(const QString& text, const std::function<bool()>& done) override;
  /// There is nobody to choose a file: cancelled.
  QString openFile(const FileQuestion& question) override;
  QString saveFile(const FileQuestion& question) override;
  /// Nothing sounds, but a job that gives no other sign of a refusal can ask for it.
  void beep() override { ++beeps_; }
  int beeps() const { return beeps_; }

 private:
  Console& console_;
  bool yes_;
  Clock& clock_;
  const Interrupt& interrupt_;
  int beeps_ = 0;
};

}  // namespace lokari
