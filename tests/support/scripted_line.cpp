#include "support/scripted_line.h"

#include <gtest/gtest.h>

namespace lokari::test {

ScriptedLine::~ScriptedLine() {
  for (const Step& step : steps_) {
    ADD_FAILURE() << "never sent: " << step.expected.toPercentEncoding(" ,?").toStdString();
  }
}

ScriptedLine& ScriptedLine::expect(const QByteArray& data) {
  steps_.push_back({data, {}});
  return *this;
}

ScriptedLine& ScriptedLine::answer(const QByteArray& data, Millis delay) {
  return then([this, data] { arrive(data); }, delay);
}

ScriptedLine& ScriptedLine::then(std::function<void()> action, Millis delay) {
  steps_.back().actions.push_back({delay, std::move(action)});
  return *this;
}

void ScriptedLine::onWrite(const QByteArray& data) {
  const QByteArray expected = steps_.empty() ? QByteArray() : steps_.front().expected;
  got_ += data;
  if (got_.isEmpty() || !expected.startsWith(got_)) {
    ADD_FAILURE() << "sent " << got_.toHex(' ').toStdString() << ", expected "
                  << (steps_.empty() ? "nothing" : expected.toHex(' ').toStdString());
    return;
  }
  if (got_ != expected) return;
  got_.clear();
  Millis at = 0;
  for (Action& action : steps_.front().actions) {
    at += action.delay;
    clock().schedule(at, std::move(action.run));
  }
  steps_.pop_front();
}

}  // namespace lokari::test
