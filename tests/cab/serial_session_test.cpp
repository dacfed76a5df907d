// Cabs and panels on the simulated stations of the serial line.
#include "cab/cab_line.h"
#include "cab/cab_table.h"
#include "link/link_error.h"
#include "sim/session_fixture.h"

namespace lokari {
namespace {

class SerialCab : public test::SerialSession, public ::testing::WithParamInterface<StationKind> {
 protected:
  SerialCab() : SerialSession(GetParam()) {
    state.address = 64;
    unit.address = 12;
  }

  std::optional<FunctionMask> read() {
    std::optional<FunctionMask> mask;
    cabs.exchange(this, 0, [&] { mask = cab->readState(); });
    return mask;
  }
  /// Lets what was sent arrive.
  void settle() { clock.advance(100); }
  const sim::DriveState& driven() const { return layout.drive(64); }
  /// The messages of the Lenz interfaces have no room for a 127th step.
  int highestSpeed() const { return settings.station().family == ProtocolFamily::Lenz ? 126 : 127; }
  int funcCount() const { return settings.station().cab.funcCount; }

  CabLine cabs{*link};
  CabState state;
  PanelState unit;
  std::unique_ptr<CabProtocol> cab =
      makeCabProtocol(settings.station().family, cabs, state, CabHooks{});
  std::unique_ptr<PanelProtocol> panel = makePanelProtocol(settings.station().family, cabs, unit);
};

INSTANTIATE_TEST_SUITE_P(Kinds, SerialCab,
                         ::testing::Values(StationKind::Li100, StationKind::Li100V3,
                                           StationKind::LiUsb, StationKind::Ibx,
                                           StationKind::TamsMc),
                         [](const auto& kind) {
                           return QString::fromUtf16(stationKind(kind.param).name).toStdString();
                         });

TEST_P(SerialCab, AVehicleAtRestIsRead) {
  EXPECT_EQ(read(), FunctionMask{0});
  EXPECT_EQ(state.speed, 0);
  EXPECT_FALSE(state.backward);
}

TEST_P(SerialCab, EveryPositionOfTheBarIsDrivenAndReadBack) {
  ASSERT_TRUE(read());
  for (int position = 0; position <= 127; ++position) {
    state.speed = position;
    cab->sendSpeed();
    settle();
    const sim::DriveState sent = driven();
    EXPECT_EQ(sent.speed, std::min(sent.steps * position / 128, highestSpeed()));
    ASSERT_TRUE(read());
    const int back = state.speed;
    EXPECT_LE(back, position);
    cab->sendSpeed();
    settle();
    EXPECT_EQ(driven().speed, sent.speed) << "position " << position << " came back as " << back;
  }
}

TEST_P(SerialCab, DirectionIsDrivenAndReadBack) {
  ASSERT_TRUE(read());
  state.speed = 64;
  cab->sendSpeed();
  for (const bool backward : {true, false}) {
    state.backward = backward;
    cab->sendDirection();
    settle();
    EXPECT_EQ(driven().backward, backward);
    EXPECT_EQ(128 * driven().speed / driven().steps, 64);
    state.backward = !backward;
    ASSERT_TRUE(read());
    EXPECT_EQ(state.backward, backward);
  }
}

TEST_P(SerialCab, EachFunctionIsSwitchedAndReadBackAlone) {
  ASSERT_TRUE(read());
  FunctionMask on = 0;
  for (int n = 0; n <= funcCount(); ++n) {
    state.funcOn.at(n) = true;
    cab->sendFunction(n);
    settle();
    on |= 1U << n;
    EXPECT_EQ(driven().functions, on);
    EXPECT_EQ(read(), on);
  }
  for (int n = 0; n <= funcCount(); ++n) {
    state.funcOn.at(n) = false;
    cab->sendFunction(n);
    settle();
    on &= ~(1U << n);
    EXPECT_EQ(driven().functions, on);
  }
  EXPECT_EQ(read(), FunctionMask{0});
}

TEST_P(SerialCab, AFunctionLeavesSpeedAndDirection) {
  ASSERT_TRUE(read());
  state.speed = 100;
  state.backward = true;
  cab->sendDirection();
  cab->sendSpeed();
  settle();
  const sim::DriveState before = driven();
  EXPECT_TRUE(before.backward);
  EXPECT_GT(before.speed, 0);
  for (const int n : {0, 1, 4}) {
    state.funcOn.at(n) = true;
    cab->sendFunction(n);
  }
  settle();
  EXPECT_EQ(driven().speed, before.speed);
  EXPECT_TRUE(driven().backward);
}

TEST_P(SerialCab, StopsAndGoes) {
  state.stopped = true;
  cabs.urgent([this] { cab->sendStopped(); });
  settle();
  EXPECT_TRUE(layout.stopped());
  state.stopped = false;
  cabs.urgent([this] { cab->sendStopped(); });
  settle();
  EXPECT_FALSE(layout.stopped());
}

TEST_P(SerialCab, AStopGetsThroughWithin100MsAndTheReadingIsGoodWhenever) {
  ASSERT_TRUE(read());
  for (Millis moment = 1; moment < 300; moment += 3) {
    layout.setStopped(false);
    layout.setDrive(64, {.speed = 14, .steps = 28, .functions = 0b10});
    Millis stoppedAt = 0;
    const Millis pressed = clock.now() + moment;
    layout.onChange = [&](const QString&) { stoppedAt = clock.now(); };
    clock.schedule(moment, [this] {
      state.stopped = true;
      cabs.urgent([this] { cab->sendStopped(); });
    });
    EXPECT_EQ(read(), 0b10U) << "stopped after " << moment;
    clock.advance(400);
    EXPECT_TRUE(layout.stopped());
    EXPECT_LE(stoppedAt - pressed, 100) << "stopped after " << moment;
    EXPECT_EQ(prompt.beeps, 0);
    layout.onChange = nullptr;
  }
}

TEST_P(SerialCab, EveryFaultOfTheLineIsAFailureAndTheNextReadingGoesAhead) {
  layout.setDrive(64, {.speed = 14, .steps = 28, .functions = 0b10});
  const QList<std::pair<const char*, bool>> rows{{"silence", false},
                                                 {"garbage", false},
                                                 {"short:1:3", false},
                                                 {"split", true},
                                                 {"late:1:1000", true}};
  for (const auto& [text, good] : rows) {
    fault(text);
    EXPECT_EQ(read().has_value(), good) << text;
    clock.advance(5000);
    EXPECT_EQ(read(), 0b10U) << text;
  }
}

TEST_P(SerialCab, AStationThatIsPulledOutIsToldAndTheSessionCloses) {
  fault("unplugged");
  EXPECT_THROW(read(), LinkError);
  EXPECT_THROW(cab->sendSpeed(), LinkError);
  EXPECT_THROW(panel->sendOutput(0), LinkError);
  EXPECT_THROW(panel->readState(), LinkError);
  link->FinishComm();
  EXPECT_EQ(link->commUseCount, 0);
}

TEST_P(SerialCab, FourOutputsAreSwitchedAndReadBack) {
  EXPECT_EQ(panel->readState().value_or(0) & 0x55, 0x55) << "all off";
  for (int n = 0; n < PanelState::kOutputs; ++n) {
    unit.outOn.at(n) = true;
    panel->sendOutput(n);
    settle();
    EXPECT_TRUE(layout.output(4 * 11 + n + 1));
    EXPECT_EQ(panel->readState().value_or(0) & 0x55, 0x55 & ~(1 << (2 * n))) << n;
    unit.outOn.at(n) = false;
    panel->sendOutput(n);
    settle();
    EXPECT_FALSE(layout.output(4 * 11 + n + 1));
  }
}

TEST_P(SerialCab, NeighbouringUnitsDoNotMix) {
  unit.outOn = {true, true, true, true, false};
  for (int n = 0; n < PanelState::kOutputs; ++n) panel->sendOutput(n);
  settle();
  for (const int address : {11, 13}) {
    unit.address = address;
    EXPECT_EQ(panel->readState().value_or(0) & 0x55, 0x55) << address;
  }
  unit.address = 12;
  EXPECT_EQ(panel->readState().value_or(0xFF) & 0x55, 0);
}

}  // namespace
}  // namespace lokari
