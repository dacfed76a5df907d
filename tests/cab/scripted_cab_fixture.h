// Cabs and panels on a scripted station: a protocol that writes down what it is asked to do,
// windows that write down what becomes of them, virtual time.
#pragma once

#include <gtest/gtest.h>

#include <deque>

#include "cab/cab_fleet.h"
#include "cab/cab_line.h"
#include "cab/panel_fleet.h"
#include "link/link_error.h"
#include "link/station_link.h"
#include "support/fake_slot_window.h"
#include "support/memory_can.h"
#include "support/memory_line.h"
#include "support/memory_socket.h"
#include "support/scripted_prompt.h"
#include "support/virtual_clock.h"

namespace lokari::test {

/// What the protocols of one test share.
struct FakeStation {
  QStringList log;  ///< what the cabs asked for, in order
  /// The next answers to readings; beyond them the last one. An empty one is a failed reading.
  std::deque<std::optional<FunctionMask>> answers{FunctionMask{0}};
  CabState told;                ///< state that comes with a good answer
  Millis wait = 0;              ///< every operation but the stop takes so long
  bool vanished = false;        ///< every operation finds the device gone
  bool takesSpeed = true;       ///< speeds are confirmed
  std::function<void()> midst;  ///< runs in the middle of the next operation

  template <class Answer>
  std::optional<Answer> answer() {
    const auto next = answers.front();
    if (answers.size() > 1) answers.pop_front();
    return next ? std::optional<Answer>(static_cast<Answer>(*next)) : std::nullopt;
  }

  /// One operation: told, and then waited for.
  void operate(StationLink& link, const QString& what) {
    log << what;
    if (vanished) throw LinkError(QStringLiteral("weg"));
    if (const auto run = std::exchange(midst, nullptr)) run();
    if (wait > 0) link.DelayMsec(static_cast<int>(wait));
  }
};

class FakeCab final : public CabProtocol {
 public:
  FakeCab(FakeStation& station, CabLine& line, CabState& state, CabHooks hooks)
      : CabProtocol(line, state, std::move(hooks)), station_(station) {}

  std::optional<FunctionMask> readState() override {
    operate(QStringLiteral("read"));
    const auto mask = station_.answer<FunctionMask>();
    if (mask) take();
    return mask;
  }
  bool sendSpeed() override {
    operate(QStringLiteral("speed %1").arg(state().speed));
    return station_.takesSpeed;
  }
  void sendDirection() override {
    operate(state().backward ? QStringLiteral("backward") : QStringLiteral("forward"));
  }
  void sendFunction(int n) override {
    operate(QStringLiteral("F%1 %2").arg(n).arg(state().funcOn[static_cast<size_t>(n)] ? 1 : 0));
  }
  void sendManual() override { operate(QStringLiteral("manual %1").arg(state().manual ? 1 : 0)); }
  void sendStopped() override {
    line().send([this] {
      station_.log << QStringLiteral("%1 %2").arg(
          state().stopped ? QStringLiteral("stop") : QStringLiteral("go"),
          QString::number(link().clock().now()));
    });
  }
  void tick() override {
    operate(QStringLiteral("tick"));
    if (const auto mask = station_.answer<FunctionMask>()) {
      take();
      hooks().stateArrived(*mask);
    }
  }

 private:
  void operate(const QString& what) {
    station_.operate(link(), QStringLiteral("%1: %2").arg(state().address).arg(what));
  }
  void take() {
    state().speed = station_.told.speed;
    state().steps = station_.told.steps;
    state().backward = station_.told.backward;
    state().manual = station_.told.manual;
  }

  FakeStation& station_;
};

class FakePanel final : public PanelProtocol {
 public:
  FakePanel(FakeStation& station, CabLine& line, PanelState& state)
      : PanelProtocol(line, state), station_(station) {}

  std::optional<quint8> readState() override {
    operate(QStringLiteral("read"));
    return station_.answer<quint8>();
  }
  void sendOutput(int n) override {
    operate(QStringLiteral("output %1 %2").arg(n).arg(state().outOn[static_cast<size_t>(n)]));
  }

 private:
  void operate(const QString& what) {
    station_.operate(link(), QStringLiteral("%1: %2").arg(state().address).arg(what));
  }

  FakeStation& station_;
};

class CabFixture : public ::testing::Test {
 protected:
  explicit CabFixture(StationKind kind = StationKind::Mx1) {
    settings.baseUnit = kind;
    settings.comPort = 3;
    settings.timeoutVal = 2;
    settings.delayFlag = false;
  }

  CabParts cabParts() {
    return {line, prompt, records, QString(),
            [this](ProtocolFamily, CabLine& its, CabState& state, CabHooks hooks) {
              return std::make_unique<FakeCab>(station, its, state, std::move(hooks));
            }};
  }
  PanelParts panelParts() {
    return {line, prompt, [this](ProtocolFamily, CabLine& its, PanelState& state) {
              return std::make_unique<FakePanel>(station, its, state);
            }};
  }

  /// A loaded cab without a window.
  std::shared_ptr<Cab> loadedCab(int address = 3) {
    auto cab = std::make_shared<Cab>(cabParts(), address, false);
    bool flag = false;
    line.exchange(cab.get(), 0, [&] { cab->load(flag); });
    station.log.clear();
    return cab;
  }

  VirtualClock clock;
  Settings settings;
  ScriptedPrompt prompt;
  MemoryLine serial{clock};
  MemorySocket socket{clock};
  MemoryCan can;
  StationLink link{settings, clock, prompt, {serial, socket, can}};
  CabLine line{link};
  VehicleRecords records{nullptr, prompt};
  FakeStation station;
  WindowLog windows;
};

}  // namespace lokari::test
