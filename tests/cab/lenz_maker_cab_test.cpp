// Cabs and panels on the Lenz interfaces in the form of their maker's documents.
#include "cab_fixture.h"
#include "lenz_pieces.h"

namespace lokari {
namespace {

class LenzMaker : public test::CabFixture, public ::testing::WithParamInterface<StationKind> {
 protected:
  LenzMaker() : CabFixture(GetParam()) {
    settings.makerForm = true;
    cab = makeCabProtocol(ProtocolFamily::Lenz, cabLine, state, {});
    panel = makePanelProtocol(ProtocolFamily::Lenz, cabLine, panelState);
    panelState.address = 4;
  }

  QByteArray wire(const char* text) const {
    return (GetParam() == StationKind::LiUsb ? fromHex("FF FE") : QByteArray()) + fromHex(text);
  }
  void expect(const char* text) { line.expect(wire(text)); }
  void expect(const char* text, const char* answer) {
    line.expect(wire(text)).answer(wire(answer));
  }

  void load(const char* vehicle = "E4 04 80 11 89 F8", const char* upper = "E3 52 01 80 30") {
    expect("E3 00 00 03 E0", vehicle);
    expect("E3 09 00 03 E9", upper);
    const auto mask = read();
    ASSERT_TRUE(mask);
    for (int n = 0; n <= CabState::kHighestFunction; ++n) {
      state.funcOn.at(n) = (*mask >> n & 1U) != 0;
    }
  }
};

INSTANTIATE_TEST_SUITE_P(Kinds, LenzMaker,
                         ::testing::Values(StationKind::Li100, StationKind::Li100V3,
                                           StationKind::LiUsb),
                         [](const auto& kind) {
                           return QString::fromUtf16(stationKind(kind.param).name).toStdString();
                         });

TEST_P(LenzMaker, ReadsAllFunctions) {
  expect("E3 00 00 03 E0", "E4 04 80 11 89 F8");
  expect("E3 09 00 03 E9", "E3 52 01 80 30");
  EXPECT_EQ(read(), 1U | 1U << 1 | 1U << 5 | 1U << 8 | 1U << 12 | 1U << 13 | 1U << 28);
  EXPECT_EQ(state.funcCount, 28);
}

TEST_P(LenzMaker, AStationWithoutTheUpperFunctionsOffersThoseUpToF12) {
  for (const char* refusal : {"61 82 E3", "61 82"}) {
    expect("E3 00 00 03 E0", "E4 04 80 11 89 F8");
    expect("E3 09 00 03 E9", refusal);
    EXPECT_EQ(read(), 1U | 1U << 1 | 1U << 5 | 1U << 8 | 1U << 12);
    EXPECT_EQ(state.funcCount, 12);
  }
  const auto before = line.writes.size();
  function(13, true);
  EXPECT_EQ(line.writes.size(), before);
}

TEST_P(LenzMaker, F8StaysWhenF5ToF7AreSent) {
  load();
  expect("E4 21 00 03 0B CD");
  function(6, true);
  expect("E4 21 00 03 0A CC");
  function(5, false);
  expect("E4 21 00 03 02 C4");
  function(8, false);
}

TEST_P(LenzMaker, TheUpperFunctionsGoOutInTheirGroups) {
  load("E4 04 80 00 00 60", "E3 52 00 00 B1");
  const std::tuple<int, const char*> rows[] = {{4, "E4 20 00 03 08 CF"},  {9, "E4 22 00 03 01 C4"},
                                               {12, "E4 22 00 03 08 CD"}, {13, "E4 23 00 03 01 C5"},
                                               {20, "E4 23 00 03 80 44"}, {21, "E4 28 00 03 01 CE"},
                                               {28, "E4 28 00 03 80 4F"}};
  for (const auto& [n, message] : rows) {
    expect(message);
    function(n, true);
    state.funcOn.at(n) = false;
  }
}

TEST_P(LenzMaker, TheSpeedIsThatOfDcc) {
  load();
  const std::tuple<int, int, const char*> rows[] = {
      {14, 1, "E4 10 00 03 82 75"},   {14, 127, "E4 10 00 03 8F 78"},
      {27, 127, "E4 11 00 03 8F 79"}, {28, 1, "E4 12 00 03 82 77"},
      {28, 127, "E4 12 00 03 9F 6A"}, {128, 1, "E4 13 00 03 82 76"},
      {128, 127, "E4 13 00 03 FF 0B"}};
  for (const auto& [steps, position, message] : rows) {
    state.steps = steps;
    expect(message);
    speed(position);
  }
}

TEST_P(LenzMaker, TheSpeedThatIsToldIsTheBarsPosition) {
  load("E4 02 9F 00 00 79");
  EXPECT_EQ(state.steps, 28);
  EXPECT_EQ(state.speed, 127);
  load("E4 02 81 00 00 67");
  EXPECT_EQ(state.speed, 0) << "an emergency stop";
}

TEST_P(LenzMaker, TheUpperFunctionsCutAnywhereArePutTogether) {
  test::forEachCut(
      wire("E3 52 01 80 30"), [&](const QByteArray& head, const QByteArray& rest, Millis pause) {
        expect("E3 00 00 03 E0", "E4 04 80 00 00 60");
        line.expect(wire("E3 09 00 03 E9")).answer(head).answer(rest, pause);
        EXPECT_EQ(read(), 1U << 13 | 1U << 28) << "behind " << head.size() << ", " << pause;
      });
}

// -- accessories

TEST_P(LenzMaker, AnOutputIsSwitchedOffBehindItsPulse) {
  expect("52 03 89 D8");
  expect("52 03 81 D0");
  output(0, true);
  ASSERT_EQ(line.writes.size(), 2);
  EXPECT_GE(line.writes[1].at - line.writes[0].at, 250);
  EXPECT_LE(line.writes[1].at - line.writes[0].at, 350);
  expect("52 03 8E DF");
  expect("52 03 86 D7");
  output(3, false);
}

TEST_P(LenzMaker, AStopGetsInsideAPulse) {
  const Millis pressed = clock.now() + 150;
  clock.schedule(150, [this] { stop(true); });
  expect("52 03 89 D8");
  expect("80 80");
  expect("52 03 81 D0");
  output(0, true);
  ASSERT_EQ(line.writes.size(), 3);
  EXPECT_LE(line.writes[1].at - pressed, 100);
}

TEST_P(LenzMaker, AnAccessoryIsSwitchedOffAlsoBehindACancel) {
  clock.schedule(100, [this] { link.cancelRequested = true; });
  expect("52 03 89 D8");
  expect("52 03 81 D0");
  output(0, true);
}

}  // namespace
}  // namespace lokari
