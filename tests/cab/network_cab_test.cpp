// Cabs and panels on the simulated stations of the network and the CAN bus.
#include "cab/cab_line.h"
#include "cab/cab_table.h"
#include "sim/network_session_fixture.h"

namespace lokari {
namespace {

class NetworkCab : public test::NetworkSession, public ::testing::WithParamInterface<StationKind> {
 protected:
  NetworkCab() : NetworkSession(GetParam()) {
    state.address = 1000;
    unit.address = 5;
    open(false);
  }
  ~NetworkCab() override { link->FinishComm(); }

  const sim::DriveState& driven() const { return layout.drive(1000); }
  ProtocolFamily family() const { return settings.station().family; }

  CabLine cabs{*link};
  CabState state;
  PanelState unit;
  std::vector<FunctionMask> told;
  std::unique_ptr<CabProtocol> cab = makeCabProtocol(
      family(), cabs, state, {.stateArrived = [this](FunctionMask mask) { told.push_back(mask); }});
  std::unique_ptr<PanelProtocol> panel = makePanelProtocol(family(), cabs, unit);
};

INSTANTIATE_TEST_SUITE_P(All, NetworkCab,
                         ::testing::Values(StationKind::Z21Ip, StationKind::Mx10,
                                           StationKind::Mx10Ip));

TEST_P(NetworkCab, AVehicleAtRestIsRead) {
  EXPECT_EQ(cab->readState(), FunctionMask{0});
  EXPECT_EQ(state.speed, 0);
  EXPECT_FALSE(state.backward);
}

TEST_P(NetworkCab, WhatIsDrivenIsReadBack) {
  state.speed = 64;
  state.backward = true;
  cab->sendSpeed();
  EXPECT_TRUE(driven().backward);
  EXPECT_EQ(128 * driven().speed / driven().steps, 64);
  for (const int n : {0, 1, 4, 5, 12, 13, 21, 28}) {
    state.funcOn[static_cast<size_t>(n)] = true;
    cab->sendFunction(n);
  }
  const FunctionMask on =
      1U | 1U << 1 | 1U << 4 | 1U << 5 | 1U << 12 | 1U << 13 | 1U << 21 | 1U << 28;
  EXPECT_EQ(driven().functions, on);
  state.speed = 0;
  state.backward = false;
  EXPECT_EQ(cab->readState(), on);
  EXPECT_EQ(state.speed, 64);
  EXPECT_TRUE(state.backward);
  state.funcOn[5] = false;
  cab->sendFunction(5);
  EXPECT_EQ(driven().functions, on & ~(1U << 5));
}

TEST_P(NetworkCab, EveryPositionOfTheBarComesBack) {
  for (int speed = 0; speed <= 127; ++speed) {
    state.speed = speed;
    cab->sendSpeed();
    ASSERT_TRUE(cab->readState());
    EXPECT_EQ(state.speed, std::min(speed, 126)) << speed;
  }
}

TEST_P(NetworkCab, TheTrackIsStoppedAndGoesOn) {
  state.stopped = true;
  cab->sendStopped();
  EXPECT_FALSE(layout.trackPower());
  state.stopped = false;
  cab->sendStopped();
  EXPECT_TRUE(layout.trackPower());
}

TEST_P(NetworkCab, ASilentStationFailsTheReadingAndTheNextOneGoesAhead) {
  for (const char* text : {"silence", "short"}) {
    fault(text);
    EXPECT_EQ(cab->readState(), std::nullopt) << text;
    EXPECT_EQ(cab->readState(), FunctionMask{0}) << text;
  }
}

TEST_P(NetworkCab, OutputsAreSwitchedAndReadBack) {
  EXPECT_EQ(panel->readState(), quint8{0b01010101});
  unit.outOn[1] = true;
  panel->sendOutput(1);
  unit.outOn[3] = true;
  panel->sendOutput(3);
  EXPECT_EQ(panel->readState(), quint8{0b00010001});
  unit.outOn[3] = false;
  panel->sendOutput(3);
  EXPECT_EQ(panel->readState(), quint8{0b01010001});
}

TEST_P(NetworkCab, ASilentStationFailsTheReadingOfOutputs) {
  fault("silence");
  EXPECT_EQ(panel->readState(), std::nullopt);
  EXPECT_EQ(panel->readState(), quint8{0b01010101});
}

class Mx10Manual : public NetworkCab {};

INSTANTIATE_TEST_SUITE_P(Both, Mx10Manual,
                         ::testing::Values(StationKind::Mx10, StationKind::Mx10Ip));

TEST_P(Mx10Manual, IsSwitchedAndReadBack) {
  state.manual = true;
  cab->sendManual();
  EXPECT_TRUE(driven().manual);
  state.manual = false;
  ASSERT_TRUE(cab->readState());
  EXPECT_TRUE(state.manual);
}

}  // namespace
}  // namespace lokari
