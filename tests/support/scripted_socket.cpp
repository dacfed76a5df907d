#include "support/scripted_socket.h"

#include <gtest/gtest.h>

#include "base/bytes.h"

namespace lokari::test {

ScriptedSocket::~ScriptedSocket() {
  for (const Step& step : steps_) {
    ADD_FAILURE() << "never sent: " << hexDump(step.expected).toStdString();
  }
}

ScriptedSocket& ScriptedSocket::expect(const QByteArray& datagram) {
  steps_.push_back({datagram, {}});
  return *this;
}

ScriptedSocket& ScriptedSocket::answer(const QByteArray& datagram, Millis delay) {
  return then([this, datagram] { arrive(datagram); }, delay);
}

ScriptedSocket& ScriptedSocket::then(std::function<void()> action, Millis delay) {
  steps_.back().actions.push_back({delay, std::move(action)});
  return *this;
}

void ScriptedSocket::onSend(const QByteArray& datagram) {
  if (steps_.empty() || steps_.front().expected != datagram) {
    ADD_FAILURE() << "sent: " << hexDump(datagram).toStdString() << "\nexpected: "
                  << (steps_.empty() ? std::string("nothing")
                                     : hexDump(steps_.front().expected).toStdString());
    return;
  }
  const Step step = std::move(steps_.front());
  steps_.pop_front();
  for (const Action& action : step.actions) time_.schedule(action.delay, action.run);
}

}  // namespace lokari::test
