// A strict script of a serial conversation: expect these bytes, answer those.
//
//   line.expect("xPTRB 29\r").answer("6]\r");
//
// Bytes that the script does not expect next fail the test, and so does a script that is not played
// to its end. Several writes may make up one expectation; one write never spans two.
#pragma once

#include <deque>

#include "support/memory_line.h"

namespace lokari::test {

class ScriptedLine final : public MemoryLine {
 public:
  using MemoryLine::MemoryLine;
  ~ScriptedLine() override;

  ScriptedLine& expect(const QByteArray& data);
  /// Answers the expectation before it, `delay` after its last byte. Several answers follow each
  /// other by their delays.
  ScriptedLine& answer(const QByteArray& data, Millis delay = 10);
  /// Does something when the expectation before it is complete, such as cancelling.
  ScriptedLine& then(std::function<void()> action, Millis delay = 0);

  /// True when everything expected has come.
  bool played() const { return steps_.empty(); }

 protected:
  void onWrite(const QByteArray& data) override;

 private:
  struct Action {
    Millis delay;
    std::function<void()> run;
  };
  struct Step {
    QByteArray expected;
    std::deque<Action> actions;
  };

  std::deque<Step> steps_;
  QByteArray got_;  ///< of the first step
};

}  // namespace lokari::test
