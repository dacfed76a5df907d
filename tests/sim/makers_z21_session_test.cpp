// The link, a cab, a panel and the communication test on a Z21 in its maker's form.
#include "cab/cab_line.h"
#include "cab/cab_table.h"
#include "link/track_stop.h"
#include "network_session_fixture.h"
#include "sim/makers/z21_station.h"
#include "station/comm_test.h"

namespace lokari {
namespace {

using Options = sim::MakersOptions;

class OnMakersZ21 : public test::NetworkSession {
 protected:
  explicit OnMakersZ21(const Options& options = {}) : NetworkSession(StationKind::Z21Ip, options) {
    settings.makerForm = true;
    layout.onChange = [this](const QString& each) { news << each; };
    state.address = 1000;
    unit.address = 13;
  }

  const sim::makers::Z21Station& z21() {
    return dynamic_cast<const sim::makers::Z21Station&>(*station);
  }
  const sim::DriveState& driven() const { return layout.drive(1000); }

  QStringList news;
  CabLine cabs{*link};
  CabState state;
  PanelState unit;
  std::unique_ptr<CabProtocol> cab =
      makeCabProtocol(ProtocolFamily::Z21, cabs, state, {.stateArrived = [](FunctionMask) {}});
  std::unique_ptr<PanelProtocol> panel = makePanelProtocol(ProtocolFamily::Z21, cabs, unit);
};

struct Setup {
  const char* name;
  Options options;
};
void PrintTo(const Setup& setup, std::ostream* out) {
  *out << setup.name;
}

Options subscribers(bool bundled, int stateSize) {
  Options options;
  options.subscribersOnly = true;
  options.bundled = bundled;
  options.stateSize = stateSize;
  return options;
}

class EveryMakersZ21 : public OnMakersZ21, public ::testing::WithParamInterface<Setup> {
 protected:
  EveryMakersZ21() : OnMakersZ21(GetParam().options) {}
};

INSTANTIATE_TEST_SUITE_P(All, EveryMakersZ21,
                         ::testing::Values(Setup{"AnyClient", {}},
                                           Setup{"Subscribers", subscribers(false, 15)},
                                           Setup{"Bundled", subscribers(true, 15)},
                                           Setup{"ShortStates", subscribers(false, 14)},
                                           Setup{"LongStates", subscribers(false, 21)}),
                         [](const auto& setup) { return std::string(setup.param.name); });

TEST_P(EveryMakersZ21, ItsProgrammingTrackIsReadAndWrittenAndLeftOn) {
  open(true);
  EXPECT_EQ(read(8), 97);
  EXPECT_EQ(read(29), 14);
  EXPECT_EQ(write(3, 77), 77);
  EXPECT_EQ(layout.onProgrammingTrack()->stored(3), 77);
  EXPECT_EQ(read(1024), -1021);
  fault("shortcircuit");
  EXPECT_EQ(read(8), -1018);
  EXPECT_EQ(read(8), 97);
  EXPECT_TRUE(z21().inProgrammingMode());
  link->commJob = CommJob::ReadProgTrack;
  link->endcomm(true, true);
  EXPECT_FALSE(z21().inProgrammingMode());
  EXPECT_TRUE(layout.trackPower());
  EXPECT_FALSE(z21().clients().knows(0));
}

TEST_P(EveryMakersZ21, ATrackThatWasOffIsOffBehindProgrammingAndAllTheWay) {
  layout.setTrackPower(false);
  news.clear();
  open(true);
  EXPECT_TRUE(link->trackStop().isHeld());
  EXPECT_EQ(read(8), 97);
  link->commJob = CommJob::ReadProgTrack;
  link->endcomm(true, true);
  EXPECT_FALSE(layout.trackPower());
  EXPECT_EQ(news, QStringList()) << "it was never on";
}

TEST_P(EveryMakersZ21, AStoppedLayoutIsNotSetGoingByProgramming) {
  layout.setStopped(true);
  open(true);
  EXPECT_EQ(read(8), 97);
  link->commJob = CommJob::ReadProgTrack;
  link->endcomm(true, true);
  EXPECT_TRUE(layout.stopped());
}

TEST_P(EveryMakersZ21, ItsMainTrackIsReadAndWritten) {
  open(false);
  EXPECT_EQ(read(8, 1000), 145);
  EXPECT_EQ(write(3, 99, 1000), 99);
  EXPECT_EQ(read(3, 1000), 99);
  EXPECT_EQ(read(8, 99), -1021) << "nobody there";
  EXPECT_FALSE(z21().inProgrammingMode());
}

TEST_P(EveryMakersZ21, AVehicleRunsWithEachNumberOfStepsAndIsReadBack) {
  open(false);
  for (const int steps : {14, 28, 128}) {
    state.steps = steps;
    for (int position = 0; position <= 127; ++position) {
      state.speed = position;
      ASSERT_TRUE(cab->sendSpeed());
      EXPECT_EQ(driven().steps, steps);
      const int driving = driven().speed;
      EXPECT_EQ(driving == 0, position == 0);
      // What is read back is the same step again.
      ASSERT_TRUE(cab->readState());
      EXPECT_EQ(state.steps, steps);
      cab->sendSpeed();
      EXPECT_EQ(driven().speed, driving) << position;
    }
    EXPECT_EQ(driven().speed, steps == 128 ? 126 : steps) << "the bar's end";
  }
  EXPECT_EQ(news.filter(QStringLiteral("Nothalt")), QStringList());
}

TEST_P(EveryMakersZ21, FunctionsAndDirectionAreReadBack) {
  open(false);
  FunctionMask on = 0;
  for (int n = 0; n <= 28; ++n) {
    state.funcOn[static_cast<size_t>(n)] = true;
    cab->sendFunction(n);
    on |= FunctionMask{1} << n;
    EXPECT_EQ(cab->readState(), on);
  }
  state.backward = true;
  cab->sendDirection();
  EXPECT_TRUE(driven().backward);
  EXPECT_EQ(driven().functions, on);
}

TEST_P(EveryMakersZ21, AStopIsConfirmedAndLeavesTheVoltageOn) {
  open(false);
  for (const bool stopped : {true, false}) {
    state.stopped = stopped;
    cab->sendStopped();
    link->trackStop().order().settle();
    EXPECT_EQ(link->trackStop().order().outcome(), LayoutOrder::Outcome::Confirmed);
    EXPECT_EQ(layout.stopped(), stopped);
    EXPECT_TRUE(layout.trackPower());
  }
}

TEST_P(EveryMakersZ21, AStopIsConfirmedToAClientThatWasSilentForAnHour) {
  open(false);
  clock.advance(3'600'000);
  EXPECT_FALSE(z21().clients().knows(0));
  state.stopped = true;
  cab->sendStopped();
  link->trackStop().order().settle();
  EXPECT_EQ(link->trackStop().order().outcome(), LayoutOrder::Outcome::Confirmed);
}

TEST_P(EveryMakersZ21, OutputsAreSwitchedAndNoCoilKeepsItsPower) {
  open(false);
  EXPECT_EQ(panel->readState(), quint8{0});
  EXPECT_EQ(unit.neverSwitched, (std::array<bool, 4>{true, true, true, true}));
  unit.outOn = {true, false, true, false, false};
  for (int n = 0; n < 4; ++n) {
    panel->sendOutput(n);
    for (const int output : {0, 1}) EXPECT_FALSE(z21().accessories().isOn(49 + n, output)) << n;
  }
  EXPECT_EQ(panel->readState(), quint8{0b01000100});
  EXPECT_EQ(unit.neverSwitched, (std::array<bool, 4>{}));
  EXPECT_EQ(z21().accessories().lastOutput(49), 0);
  EXPECT_EQ(z21().accessories().lastOutput(50), 1);
  EXPECT_EQ(news.filter(QStringLiteral("Weiche 50")),
            (QStringList{"Weiche 50: Spule 1 ein", "Weiche 50: Spule 1 aus"}));
}

TEST_P(EveryMakersZ21, TheTestNamesIt) {
  link->commJob = CommJob::TestComm;
  const CommTestResult result = TestComm(*link, settings);
  EXPECT_EQ(result.outcome, CommTestResult::Outcome::Answered);
  const bool old = GetParam().options.stateSize == 14;
  const QString version = old ? QStringLiteral("1.41") : QStringLiteral("1.43");
  EXPECT_EQ(result.lines, (QStringList{"Roco Z21 Ser. Nr. 123456", "Firmware Vers. " + version,
                                       "Gerät: Z21, Version " + version, "Gleisspannung ein"}));
  EXPECT_FALSE(result.wantsMakerForm);
}

// ---- As always, on such a station ---------------------------------------------------------------

class AsAlwaysOnMakersZ21 : public OnMakersZ21 {
 protected:
  AsAlwaysOnMakersZ21() { settings.makerForm = false; }

  CommTestResult test() {
    link->commJob = CommJob::TestComm;
    return TestComm(*link, settings);
  }
  const QStringList lines{"Roco Z21 Ser. Nr. 123456", "Firmware Vers. 1.43"};
};

TEST_F(AsAlwaysOnMakersZ21, TheTestOffersTheOtherForm) {
  const CommTestResult result = test();
  EXPECT_EQ(result.lines, lines);
  EXPECT_TRUE(result.wantsMakerForm);
}

/// A station as this program knows it.
class AsAlwaysOnZ21 : public test::NetworkSession {
 protected:
  AsAlwaysOnZ21() : NetworkSession(StationKind::Z21Ip) {}
};

TEST_F(AsAlwaysOnZ21, ALostAnswerIsNoReasonForTheOtherForm) {
  for (const char* each : {"silence:1@2", "silence:1@3"}) {
    fault(each);
    link->commJob = CommJob::TestComm;
    EXPECT_FALSE(TestComm(*link, settings).wantsMakerForm) << each;
  }
}

}  // namespace
}  // namespace lokari
