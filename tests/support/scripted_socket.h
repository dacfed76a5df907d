// A strict script of a conversation in datagrams: expect this one, answer those.
//
//   socket.expect(bytes({0x04, 0x00, 0x10, 0x00})).answer(bytes({0x08, 0x00, 0x10, 0x00, ...}));
//
// A datagram that the script does not expect next fails the test, and so does a script that is not
// played to its end.
#pragma once

#include <deque>

#include "support/memory_socket.h"

namespace lokari::test {

class ScriptedSocket final : public MemorySocket {
 public:
  explicit ScriptedSocket(VirtualClock& clock) : MemorySocket(clock), time_(clock) {}
  ~ScriptedSocket() override;

  ScriptedSocket& expect(const QByteArray& datagram);
  /// Answers the expectation before it, `delay` after it came. Several answers each count from it.
  ScriptedSocket& answer(const QByteArray& datagram, Millis delay = 10);
  /// Does something when the expectation before it has come, such as cancelling.
  ScriptedSocket& then(std::function<void()> action, Millis delay = 0);

  /// True when everything expected has come.
  bool played() const { return steps_.empty(); }

 protected:
  void onSend(const QByteArray& datagram) override;

 private:
  struct Action {
    Millis delay;
    std::function<void()> run;
  };
  struct Step {
    QByteArray expected;
    std::deque<Action> actions;
  };

  VirtualClock& time_;
  std::deque<Step> steps_;
};

}  // namespace lokari::test
