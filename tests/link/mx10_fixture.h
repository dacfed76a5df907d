// A StationLink to an MX10 in virtual time on a scripted bus: expect this message, answer those. A
// message that the script does not expect next fails the test, and so does a script that is not
// played to its end.
#pragma once

#include <gtest/gtest.h>

#include <deque>
#include <vector>

#include "link/link_error.h"
#include "link/mx10.h"
#include "support/link_fixture.h"

namespace lokari::test {

class Mx10Fixture : public LinkFixture {
 public:
  /// Answers the message expected last, `delay` after it came. Several answers each count from it.
  Mx10Fixture& answer(quint32 id, const std::vector<int>& data, Millis delay = 10) {
    return then([this, id, data] { can.arrive(message(id, data)); }, delay);
  }
  /// Does something when that message has come.
  Mx10Fixture& then(std::function<void()> action, Millis delay = 0) {
    steps_.back().actions.push_back({delay, std::move(action)});
    return *this;
  }

 protected:
  using Data = std::vector<int>;

  explicit Mx10Fixture(StationKind kind = StationKind::Mx10) : LinkFixture(kind) {
    can.onWrite = [this](const CanMessage& message) { compare(message); };
  }

  ~Mx10Fixture() override {
    for (const Step& step : steps_) ADD_FAILURE() << "never sent: " << std::hex << step.id;
  }

  static CanMessage message(quint32 id, const Data& data) {
    CanMessage made;
    made.ID = id;
    made.MSGTYPE = 2;
    for (const int byte : data) made.DATA[made.LEN++] = static_cast<quint8>(byte);
    return made;
  }

  Mx10Fixture& expect(quint32 id, const Data& data) {
    steps_.push_back({id, data, {}});
    return *this;
  }
  Mx10Protocol& station() { return dynamic_cast<Mx10Protocol&>(link.protocol()); }

  /// The station says that it is there, `delay` from now.
  void announceIn(Millis delay) {
    clock.schedule(delay, [this] {
      can.arrive(message(0x0A02C0A1, {0x80, 0x01, 0x02, 0x03, 0x00, 0x00, 0x00, 0x00}));
    });
  }
  void expectLogOn() { expect(0x0A2986C2, {0x86, 0xC2, 0x01, 0x00, 0x21, 0x00, 0x00, 0x00}); }
  Mx10Fixture& expectProgrammingTrack() { return expect(0x060186C2, {0xC0, 0xA1, 0x01, 0x04}); }
  Mx10Fixture& expectNormal() { return expect(0x060186C2, {0xC0, 0xA1, 0x01, 0x00}); }

  void openSession(bool progOn) {
    announceIn(50);
    expectLogOn();
    if (progOn) expectProgrammingTrack().answer(0x1602C0A1, {0xC0, 0xA1, 0x01, 0x04});
    ASSERT_EQ(link.initComm(true, true, progOn), QString());
  }

 private:
  struct Action {
    Millis delay;
    std::function<void()> run;
  };
  struct Step {
    quint32 id;
    Data data;
    std::vector<Action> actions;
  };

  void compare(const CanMessage& sent) {
    const Data data(sent.DATA.begin(), sent.DATA.begin() + sent.LEN);
    if (steps_.empty() || steps_.front().id != sent.ID || steps_.front().data != data ||
        sent.MSGTYPE != 2) {
      ADD_FAILURE() << "sent: " << std::hex << sent.ID << " " << ::testing::PrintToString(data);
      return;
    }
    const Step step = std::move(steps_.front());
    steps_.pop_front();
    for (const Action& action : step.actions) clock.schedule(action.delay, action.run);
  }

  std::deque<Step> steps_;
};

}  // namespace lokari::test
