// The program's two forms of messages with stations in their makers' form, in virtual time: CVs,
// vehicles and outputs on the Intellibox, the Tams MC and the MX1 with the binary protocol.
#include <gtest/gtest.h>

#include "cab/cab_line.h"
#include "cab/cab_table.h"
#include "link/station_link.h"
#include "sim/decoder_file.h"
#include "sim/station_table.h"
#include "support/memory_can.h"
#include "support/memory_socket.h"
#include "support/scripted_prompt.h"
#include "support/sim_line.h"

namespace lokari {
namespace {

using Row = std::tuple<StationKind, bool>;

class MakersSession : public ::testing::TestWithParam<Row> {
 protected:
  MakersSession() {
    EXPECT_EQ(sim::readDecoders(sim::builtInDecoders(), layout), "");
    layout.onChange = [this](const QString& told) { news << told; };
    settings.baseUnit = std::get<0>(GetParam());
    settings.makerForm = std::get<1>(GetParam());
    settings.timeoutVal = 2;
    settings.delayFlag = false;
    const QStringView name(stationKind(settings.baseUnit).name);
    station = sim::stationByName(name)->makeMakers({clock, layout, faults, 20}, {});
    line = std::make_unique<test::SimLine>(clock, *station);
    link = std::make_unique<StationLink>(settings, clock, prompt, Transports{*line, socket, can});
    EXPECT_EQ(link->initComm(true, true, true), "");
    link->commJob = CommJob::WriteProgTrack;
    state.address = 64;
    unit.address = 13;
    cabs = std::make_unique<CabLine>(*link);
    cab = makeCabProtocol(settings.station().family, *cabs, state, {});
    panel = makePanelProtocol(settings.station().family, *cabs, unit);
  }

  bool isMakers() const { return settings.makerForm; }
  bool read() {
    bool told = false;
    cabs->exchange(this, 0, [&] { told = cab->readState().has_value(); });
    return told;
  }
  void send(const std::function<void()>& run) {
    cabs->exchange(this, 1, run);
    clock.advance(100);
  }

  test::VirtualClock clock;
  sim::Layout layout;
  sim::FaultPlan faults;
  QStringList news;
  std::unique_ptr<sim::Station> station;
  Settings settings;
  test::ScriptedPrompt prompt;
  std::unique_ptr<test::SimLine> line;
  test::MemorySocket socket{clock};
  test::MemoryCan can;
  std::unique_ptr<StationLink> link;
  CabState state;
  PanelState unit;
  std::unique_ptr<CabLine> cabs;
  std::unique_ptr<CabProtocol> cab;
  std::unique_ptr<PanelProtocol> panel;
};

class P50xMakersSession : public MakersSession {};

std::string nameOf(const ::testing::TestParamInfo<Row>& row) {
  return QString::fromUtf16(stationKind(std::get<0>(row.param)).name).toStdString() +
         (std::get<1>(row.param) ? "AfterTheDocuments" : "AsTold");
}

INSTANTIATE_TEST_SUITE_P(Kinds, MakersSession,
                         ::testing::Combine(::testing::Values(StationKind::Ibx, StationKind::TamsMc,
                                                              StationKind::Mx1Bin),
                                            ::testing::Bool()),
                         nameOf);
INSTANTIATE_TEST_SUITE_P(
    Kinds, P50xMakersSession,
    ::testing::Combine(::testing::Values(StationKind::Ibx, StationKind::TamsMc), ::testing::Bool()),
    nameOf);

TEST_P(MakersSession, CvsAreReadAndWritten) {
  EXPECT_EQ(link->ReadCV(8, 3), 97);
  EXPECT_EQ(link->WriteCV(3, 77, 3, 0), 77);
  EXPECT_EQ(link->ReadCV(3, 3), 77);
  for (int value = 5; value < 9; ++value) EXPECT_EQ(link->WriteCV(4, value, 3, 0), value);
  EXPECT_EQ(link->ReadCV(4, 3), 8);
}

TEST_P(MakersSession, ACvIsWrittenFirst) {
  EXPECT_EQ(link->WriteCV(3, 78, 3, 0), 78);
  EXPECT_EQ(link->ReadCV(3, 3), 78);
}

TEST_P(MakersSession, CvsAreWrittenOnTheMainTrackOneBehindTheOther) {
  // Without the setting a Tams MC that was not read yet cannot be told from one that is not there.
  EXPECT_EQ(link->ReadCV(8, 3), 97);
  link->commJob = CommJob::WriteMain;
  link->pomAddr = link->getAddrIndex(1000);
  for (int value = 20; value < 24; ++value) EXPECT_EQ(link->WriteCV(3, value, 1000, 0), value);
}

TEST_P(MakersSession, AVehicleThatNobodyHasDrivenIsRead) {
  ASSERT_TRUE(read());
  EXPECT_EQ(state.speed, 0);
  EXPECT_FALSE(state.backward);
}

TEST_P(MakersSession, AVehicleIsDrivenAndReadBack) {
  ASSERT_TRUE(read());
  state.speed = 64;
  state.backward = true;
  send([this] { cab->sendSpeed(); });
  send([this] { cab->sendDirection(); });
  for (const int n : {0, 1, 7}) {
    state.funcOn[static_cast<size_t>(n)] = true;
    send([this, n] { cab->sendFunction(n); });
  }
  ASSERT_TRUE(read());
  EXPECT_EQ(state.speed, 64);
  EXPECT_TRUE(state.backward);
  EXPECT_EQ(layout.drive(64).functions, 0b1000'0011U);
  EXPECT_EQ(prompt.beeps, 0);
}

TEST_P(P50xMakersSession, TheFunctionsThatTheStationHasAreSwitched) {
  ASSERT_TRUE(read());
  const bool isTams = settings.baseUnit == StationKind::TamsMc;
  const int there = !isMakers() ? 7 : isTams ? 28 : 8;
  EXPECT_EQ(state.funcCount, there);
  quint32 on = 0;
  for (const int n : {0, 1, 7, 8, 9, 16, 17, 24, 25, 28}) {
    state.funcOn[static_cast<size_t>(n)] = true;
    send([this, n] { cab->sendFunction(n); });
    if (n <= there) on |= 1U << n;
  }
  EXPECT_EQ(layout.drive(64).functions, on);
  EXPECT_EQ(prompt.beeps, 0);
}

TEST_P(P50xMakersSession, TheFirstPositionOfTheBarIsTheEmergencyStopAsToldAlone) {
  ASSERT_TRUE(read());
  state.speed = 1;
  send([this] { cab->sendSpeed(); });
  EXPECT_EQ(news.filter(QStringLiteral("Nothalt")).isEmpty(), isMakers());
  EXPECT_EQ(layout.drive(64).speed > 0, isMakers());
}

TEST_P(MakersSession, AStopAndItsReleaseAreTaken) {
  state.stopped = true;
  cabs->urgent([this] { cab->sendStopped(); });
  clock.advance(1000);
  EXPECT_TRUE(layout.stopped());
  state.stopped = false;
  cabs->urgent([this] { cab->sendStopped(); });
  clock.advance(1000);
  EXPECT_FALSE(layout.stopped());
  EXPECT_EQ(prompt.beeps, 0);
}

// The documents tell no message for outputs on an MX1.
TEST_P(P50xMakersSession, TheOutputsOfAUnitAreSwitchedAndSwitchedOff) {
  std::optional<quint8> mask;
  cabs->exchange(this, 0, [&] { mask = panel->readState(); });
  ASSERT_TRUE(mask);
  news.clear();
  unit.outOn[2] = true;
  send([this] { panel->sendOutput(2); });
  QStringList expected{QStringLiteral("Weiche 51: Spule 1 ein")};
  if (isMakers()) expected << QStringLiteral("Weiche 51: Spule 1 aus");
  EXPECT_EQ(news.filter(QStringLiteral("Spule")), expected);
  EXPECT_EQ(prompt.beeps, 0);
}

}  // namespace
}  // namespace lokari
