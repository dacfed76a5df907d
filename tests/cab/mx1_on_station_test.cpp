// Cabs and panels on the simulated MX1 in its four kinds: two codecs written apart must agree, and
// every fault must end as it should.
#include "cab/cab_line.h"
#include "cab/cab_table.h"
#include "link/link_error.h"
#include "link/station_protocol.h"
#include "sim/session_fixture.h"

namespace lokari {
namespace {

class Mx1Cab : public test::SerialSession, public ::testing::WithParamInterface<StationKind> {
 protected:
  Mx1Cab() : SerialSession(GetParam()) {
    link->commJob = CommJob::None;
    unit.address = 5;
  }

  ProtocolFamily family() const { return settings.station().family; }

  std::optional<FunctionMask> read(int address) {
    state.address = address;
    return cab->readState();
  }

  CabLine cabs{*link};
  CabState state;
  PanelState unit;
  std::unique_ptr<CabProtocol> cab = makeCabProtocol(family(), cabs, state, CabHooks{});
  std::unique_ptr<PanelProtocol> panel = makePanelProtocol(family(), cabs, unit);
};

INSTANTIATE_TEST_SUITE_P(All, Mx1Cab,
                         ::testing::Values(StationKind::Mx1, StationKind::Mx1V25,
                                           StationKind::Mx1Bin, StationKind::Mx1Ulf));

TEST_P(Mx1Cab, AVehicleAtRestIsRead) {
  for (const int address : {3, 1000}) {
    EXPECT_EQ(read(address), 0U) << address;
    EXPECT_EQ(state.steps, 128);
    EXPECT_EQ(state.speed, 0);
  }
}

TEST_P(Mx1Cab, EveryPositionOfTheBarComesBackInEveryStepMode) {
  for (const int address : {3, 1000}) {
    for (const int steps : {14, 28, 128}) {
      layout.setDrive(address, {.steps = steps});
      ASSERT_TRUE(read(address));
      for (int speed = 0; speed <= 127; ++speed) {
        state.speed = speed;
        cab->sendSpeed();
        const int step = std::min(steps * speed / 128, 126);
        ASSERT_EQ(layout.drive(address).speed, step);
        ASSERT_TRUE(read(address));
        ASSERT_EQ(state.speed, (128 * step + steps - 1) / steps) << speed << " of " << steps;
      }
    }
  }
}

TEST_P(Mx1Cab, DirectionManualAndFunctionsReachTheVehicle) {
  for (const int address : {3, 1000}) {
    ASSERT_TRUE(read(address));
    state.backward = true;
    cab->sendDirection();
    state.manual = true;
    cab->sendManual();
    for (int n = 0; n <= 12; ++n) {
      state.funcOn[static_cast<size_t>(n)] = true;
      cab->sendFunction(n);
      EXPECT_EQ(layout.drive(address).functions, (1U << (n + 1)) - 1U);
    }
    EXPECT_TRUE(layout.drive(address).backward);
    EXPECT_TRUE(layout.drive(address).manual);
    for (int n = 0; n <= 12; ++n) {
      state.funcOn[static_cast<size_t>(n)] = false;
      cab->sendFunction(n);
    }
    EXPECT_EQ(layout.drive(address).functions, 0U);
  }
  EXPECT_EQ(prompt.beeps, 0);
}

TEST_P(Mx1Cab, WhatAnotherThrottleDidIsRead) {
  layout.setDrive(1000, {.speed = 64, .backward = true, .manual = true, .functions = 0x1001});
  const bool tellsF12 = GetParam() != StationKind::Mx1;
  EXPECT_EQ(read(1000), tellsF12 ? 0x1001U : 0x001U);
  EXPECT_EQ(state.speed, 64);
  EXPECT_TRUE(state.backward);
  EXPECT_TRUE(state.manual);
}

TEST_P(Mx1Cab, StopAndGoReachTheTrack) {
  ASSERT_TRUE(read(1000));
  state.stopped = true;
  cabs.urgent([&] { cab->sendStopped(); });
  EXPECT_FALSE(layout.trackPower());
  state.stopped = false;
  cabs.urgent([&] { cab->sendStopped(); });
  EXPECT_TRUE(layout.trackPower());
}

TEST_P(Mx1Cab, AStopGetsThroughASilentReadingWithinATenthOfASecond) {
  fault("silence:immer");
  const Millis pressed = clock.now() + 1000;
  Millis stopped = 0;
  layout.onChange = [&](const QString&) { stopped = clock.now(); };
  clock.schedule(1000, [&] { cabs.urgent([&] { state.stopped = true, cab->sendStopped(); }); });
  cabs.exchange(this, 0, [&] { EXPECT_EQ(read(3), std::nullopt); });
  EXPECT_FALSE(layout.trackPower());
  EXPECT_LE(stopped - pressed, 100);
}

TEST_P(Mx1Cab, OutputsAreReadAndSwitched) {
  for (const int address : {5, 300}) {
    unit.address = address;
    EXPECT_EQ(panel->readState(), 0x55);
    const int first = 4 * (address - 1) + 1;
    for (int n = 0; n < 4; ++n) {
      for (const bool on : {true, false, true}) {
        unit.outOn[static_cast<size_t>(n)] = on;
        panel->sendOutput(n);
        EXPECT_EQ(layout.output(first + n), on) << n;
      }
    }
    EXPECT_EQ(panel->readState(), 0xAA);
  }
}

TEST_P(Mx1Cab, AFailedReadingIsMadeGoodByTheNextOne) {
  for (const char* text : {"silence", "busy", "short"}) {
    fault(text);
    if (!read(3)) {
      link->protocol().dropInput();
      EXPECT_EQ(read(3), 0U) << text;
    }
    fault(text);
    if (!panel->readState()) {
      link->protocol().dropInput();
      EXPECT_EQ(panel->readState(), 0x55) << text;
    }
  }
}

TEST_P(Mx1Cab, ASplitOrLateAnswerIsReadToItsEnd) {
  for (const char* text : {"split", "late:1:1500"}) {
    for (const int address : {3, 1000}) {
      fault(text);
      EXPECT_EQ(read(address), 0U) << text << address;
    }
    fault(text);
    EXPECT_EQ(panel->readState(), 0x55) << text;
  }
}

TEST_P(Mx1Cab, AnAnswerThatNeverComesFailsTheReading) {
  fault("silence:immer");
  EXPECT_EQ(read(3), std::nullopt);
  EXPECT_EQ(panel->readState(), std::nullopt);
}

TEST_P(Mx1Cab, NonsenseForEverFailsTheReading) {
  fault("garbage:immer");
  EXPECT_EQ(read(3), std::nullopt);
  EXPECT_EQ(panel->readState(), std::nullopt);
}

TEST_P(Mx1Cab, AStationThatIsPulledOutIsToldAndTheSessionCloses) {
  fault("unplugged");
  EXPECT_THROW(read(3), LinkError);
  EXPECT_THROW(read(1000), LinkError);
  EXPECT_THROW(panel->readState(), LinkError);
  EXPECT_THROW(cab->sendStopped(), LinkError);
  link->endcomm(false, false);
  EXPECT_EQ(link->commUseCount, 0);
}

}  // namespace
}  // namespace lokari
