// Cabs and panels on a Z21 that is spoken to as its maker's documents have it: literal datagrams.
#include "cab/cab_line.h"
#include "cab/z21.h"
#include "cab/z21_coding.h"
#include "link/z21_fixture.h"

namespace lokari {
namespace {

QByteArray hexBytes(const char* text) {
  return QByteArray::fromHex(text);
}

constexpr char kAsk3[] = "09 00 40 00 E3 F0 00 03 10";
/// Vehicle 3: 128 steps, step 63 forward, F0, F1, F5, F13 and F28.
constexpr char kVehicle3[] = "0F 00 40 00 EF 00 03 04 C0 11 01 01 80 00 B9";

// ---- The coding of speeds -----------------------------------------------------------------------

class Z21Coding : public ::testing::Test {
 protected:
  static const z21::Coding& documented() {
    Settings settings;
    settings.makerForm = true;
    return z21::coding(settings);
  }
};

TEST_F(Z21Coding, TheEndsOfTheBarAreStopAndTheLastStep) {
  const z21::Coding& coding = documented();
  EXPECT_EQ(coding.value(0, 14), 0);
  EXPECT_EQ(coding.value(127, 14), 0x0F);
  EXPECT_EQ(coding.value(0, 28), 0);
  EXPECT_EQ(coding.value(127, 28), 0x1F);
  EXPECT_EQ(coding.value(0, 128), 0);
  EXPECT_EQ(coding.value(127, 128), 127) << "step 126";
}

TEST_F(Z21Coding, TwentyEightStepsHaveTheirLowestBitApart) {
  const z21::Coding& coding = documented();
  // The positions at which steps 1, 2, 3 and 28 begin to show.
  EXPECT_EQ(coding.value(coding.position(0x02, 28), 28), 0x02);
  EXPECT_EQ(coding.value(coding.position(0x12, 28), 28), 0x12);
  EXPECT_EQ(coding.value(coding.position(0x03, 28), 28), 0x03);
  EXPECT_EQ(coding.value(coding.position(0x1F, 28), 28), 0x1F);
}

TEST_F(Z21Coding, NoPositionIsTheEmergencyStopAndMoreIsNeverSlower) {
  for (const int steps : {14, 28, 128}) {
    int before = 0;
    for (int position = 1; position <= 127; ++position) {
      const int value = documented().value(position, steps);
      const int stop = steps == 28 ? value & 0x0F : value;
      EXPECT_GT(stop, 1) << steps << ' ' << position;
      const int step = steps == 28 ? (value & 0x0F) * 2 + (value >> 4) : value;
      EXPECT_GE(step, before) << steps << ' ' << position;
      before = step;
    }
  }
}

TEST_F(Z21Coding, EveryValueThatIsReadGoesOutAgainAsItCame) {
  struct Row {
    int steps, first, last;
  };
  for (const Row& row : {Row{14, 2, 15}, Row{128, 2, 127}}) {
    for (int value = row.first; value <= row.last; ++value) {
      const int position = documented().position(value, row.steps);
      EXPECT_GT(position, 0);
      EXPECT_LE(position, 127);
      EXPECT_EQ(documented().value(position, row.steps), value) << row.steps;
    }
  }
  for (int step = 1; step <= 28; ++step) {
    const int value = (step + 3) / 2 + ((step + 3) % 2 != 0 ? 0x10 : 0);
    EXPECT_EQ(documented().value(documented().position(value, 28), 28), value) << step;
  }
  for (const int steps : {14, 28, 128}) {
    EXPECT_EQ(documented().position(0, steps), 0);
    EXPECT_EQ(documented().position(1, steps), 0) << "the emergency stop stands";
  }
  EXPECT_EQ(documented().position(0x11, 28), 0);
}

TEST_F(Z21Coding, TheCodeOfTheStepsIsTheDocumentedOne) {
  EXPECT_EQ(documented().steps(0), 14);
  EXPECT_EQ(documented().steps(2), 28);
  EXPECT_EQ(documented().steps(4), 128);
}

// ---- Cabs ---------------------------------------------------------------------------------------

class Z21MakerCab : public test::Z21Fixture {
 protected:
  Z21MakerCab() {
    settings.makerForm = true;
    state.address = 3;
  }

  void SetUp() override {
    socket.expect(askSerialNumber).answer(serialNumber);
    socket.expect(hexBytes("08 00 50 00 01 00 00 00"));
    socket.expect(hexBytes("07 00 40 00 21 24 05")).answer(hexBytes("08 00 40 00 62 22 00 40"));
    ASSERT_EQ(z21.initComm(true, true, false), QString());
  }
  void TearDown() override {
    ASSERT_TRUE(socket.played());
    socket.expect(logOff);
    z21.FinishComm();
  }

  void expectCommand(const char* command) {
    socket.expect(hexBytes(command));
    socket.expect(hexBytes(kAsk3)).answer(hexBytes(kVehicle3));
  }

  CabLine line{z21};
  CabState state;
  std::vector<FunctionMask> told;
  std::vector<LayoutStands> stands;
  Z21Cab cab{line,
             state,
             {.stateArrived = [this](FunctionMask mask) { told.push_back(mask); },
              .layoutTold = [this](LayoutStands each) { stands.push_back(each); }}};
};

TEST_F(Z21MakerCab, ReadsAVehicleInTheDocumentedCoding) {
  socket.expect(hexBytes(kAsk3)).answer(hexBytes(kVehicle3));
  EXPECT_EQ(cab.readState(), FunctionMask{1U | 1U << 1 | 1U << 5 | 1U << 13 | 1U << 28});
  EXPECT_EQ(state.steps, 128);
  EXPECT_EQ(state.speed, 63);
  state.address = 1000;
  socket.expect(hexBytes("09 00 40 00 E3 F0 C3 E8 38"))
      .answer(hexBytes("0E 00 40 00 EF C3 E8 02 9F 10 81 80 01 49"));
  EXPECT_EQ(cab.readState(), FunctionMask{1U | 1U << 5 | 1U << 12 | 1U << 20 | 1U << 21});
  EXPECT_EQ(state.steps, 28);
  EXPECT_EQ(state.speed, 127);
}

TEST_F(Z21MakerCab, DrivesInTheDocumentedCoding) {
  struct Row {
    int steps, speed;
    bool backward;
    const char* bytes;
  };
  const Row rows[] = {
      {128, 0, false, "0A 00 40 00 E4 13 00 03 80 74"},
      {128, 1, false, "0A 00 40 00 E4 13 00 03 82 76"},
      {128, 127, true, "0A 00 40 00 E4 13 00 03 7F 8B"},
      {28, 5, false, "0A 00 40 00 E4 12 00 03 92 67"},
      {28, 98, false, "0A 00 40 00 E4 12 00 03 9C 69"},
      {28, 100, false, "0A 00 40 00 E4 12 00 03 8D 78"},
      {14, 127, false, "0A 00 40 00 E4 10 00 03 8F 78"},
  };
  for (const Row& row : rows) {
    state.steps = row.steps;
    state.speed = row.speed;
    state.backward = row.backward;
    expectCommand(row.bytes);
    cab.sendSpeed();
  }
}

TEST_F(Z21MakerCab, SwitchesStopsAndGoes) {
  state.funcOn[0] = true;
  expectCommand("0A 00 40 00 E4 F8 00 03 40 5F");
  cab.sendFunction(0);
  state.stopped = true;
  expectCommand("06 00 40 00 80 80");
  cab.sendStopped();
  state.stopped = false;
  expectCommand("07 00 40 00 21 81 A0");
  cab.sendStopped();
}

TEST_F(Z21MakerCab, ACommandOnALayoutThatStandsTellsIt) {
  constexpr char kDrive[] = "0A 00 40 00 E4 13 00 03 82 76";
  state.speed = 1;
  const char* const news[] = {"07 00 40 00 61 00 61", "07 00 40 00 81 00 81",
                              "07 00 40 00 61 08 69", "07 00 40 00 61 01 60"};
  for (const char* each : news) {
    udp.arrive(hexBytes(each));
    state.steps = 128;
    state.speed = 1;
    state.backward = false;
    expectCommand(kDrive);
    cab.sendSpeed();
  }
  EXPECT_EQ(stands, (std::vector{LayoutStands::WithoutPower, LayoutStands::Halted,
                                 LayoutStands::WithoutPower, LayoutStands::No}));
}

TEST_F(Z21MakerCab, NewsOfOtherVehiclesBetweenQuestionAndAnswerAreNoAnswer) {
  const QByteArray other = hexBytes("0F 00 40 00 EF 00 04 04 C0 11 00 00 00 00 3E");
  socket.expect(hexBytes(kAsk3))
      .answer(other)
      .answer(other + hexBytes("07 00 40 00 61 02 63"), 20)
      .answer(other + hexBytes(kVehicle3), 200);
  EXPECT_TRUE(cab.readState());
  EXPECT_EQ(state.speed, 63);
}

TEST_F(Z21MakerCab, NewsOfOtherVehiclesAloneTurnNoLampOff) {
  for (int polls = 0; polls < 6; ++polls) {
    socket.expect(hexBytes(kAsk3)).answer(hexBytes("0F 00 40 00 EF 00 04 04 C0 11 00 00 00 00 3E"));
    cab.tick();
  }
  EXPECT_TRUE(told.empty());
}

// ---- States of every length, in both forms ------------------------------------------------------

class Z21StateSize : public Z21MakerCab,
                     public ::testing::WithParamInterface<std::tuple<int, bool>> {
 protected:
  void SetUp() override {
    settings.makerForm = std::get<1>(GetParam());
    if (settings.makerForm) return Z21MakerCab::SetUp();
    openSession(false);
  }

  /// A state of that many bytes: vehicle 3, 128 steps, standing forward, F0, F5, F13, F28.
  static QByteArray stateOf(int size) {
    QByteArray state = hexBytes("15 00 40 00 EF 00 03 04 80 10 01 01 80 00 00 00 00 00 00 00 00");
    state[0] = static_cast<char>(size);
    return state.left(size);
  }

  const QByteArray ask = hexBytes(std::get<1>(GetParam()) ? kAsk3 : "09 00 40 00 E3 F0 00 03 2E");
};

INSTANTIATE_TEST_SUITE_P(All, Z21StateSize,
                         ::testing::Combine(::testing::Range(14, 22), ::testing::Bool()));

TEST_P(Z21StateSize, IsRead) {
  const int size = std::get<0>(GetParam());
  socket.expect(ask).answer(stateOf(size));
  EXPECT_EQ(cab.readState(), FunctionMask{1U | 1U << 5 | 1U << 13 | 1U << 28});
  const FunctionMask upTo28 = (FunctionMask{1} << 29) - 1;
  EXPECT_EQ(cab.toldFunctions(), size == 14 ? upTo28 : ~FunctionMask{0});
}

TEST_P(Z21StateSize, CutAnywhereItIsPassedOverAndTheWholeOneIsRead) {
  const QByteArray whole = stateOf(std::get<0>(GetParam()));
  for (qsizetype cut = 0; cut < whole.size(); ++cut) {
    socket.expect(ask).answer(whole.left(cut)).answer(whole, 150);
    EXPECT_TRUE(cab.readState()) << cut;
  }
}

TEST_P(Z21StateSize, AShorterRecordIsSkippedWithoutTheOneBehindIt) {
  const QByteArray whole = stateOf(std::get<0>(GetParam()));
  for (int size = 5; size < 14; ++size) {
    socket.expect(ask).answer(stateOf(size) + whole);
    EXPECT_TRUE(cab.readState()) << size;
  }
}

// ---- Panels -------------------------------------------------------------------------------------

class Z21MakerPanel : public Z21MakerCab {
 protected:
  Z21MakerPanel() { unit.address = 13; }

  PanelState unit;
  std::unique_ptr<PanelProtocol> panel = makeZ21Panel(line, unit);
};

TEST_F(Z21MakerPanel, ACoilHasPowerForAQuarterOfASecond) {
  Millis on = 0;
  Millis off = 0;
  unit.outOn[0] = true;
  socket.expect(hexBytes("09 00 40 00 53 00 30 88 EB")).then([&] { on = clock.now(); });
  socket.expect(hexBytes("09 00 40 00 53 00 30 80 E3")).then([&] { off = clock.now(); });
  panel->sendOutput(0);
  EXPECT_EQ(off - on, 250);
  EXPECT_GE(clock.now() - off, 50) << "ahead of the next output";
  unit.outOn[3] = false;
  socket.expect(hexBytes("09 00 40 00 53 00 33 89 E9"));
  socket.expect(hexBytes("09 00 40 00 53 00 33 81 E1"));
  panel->sendOutput(3);
}

TEST_F(Z21MakerPanel, OneOutputAtATimeAndEachIsSwitchedOff) {
  unit.outOn[0] = true;
  unit.outOn[1] = true;
  socket.expect(hexBytes("09 00 40 00 53 00 30 88 EB"));
  socket.expect(hexBytes("09 00 40 00 53 00 30 80 E3"));
  socket.expect(hexBytes("09 00 40 00 53 00 31 88 EA"));
  socket.expect(hexBytes("09 00 40 00 53 00 31 80 E2"));
  clock.schedule(100, [&] { line.exchange(&unit, 1, [&] { panel->sendOutput(1); }); });
  line.exchange(&unit, 0, [&] { panel->sendOutput(0); });
}

TEST_F(Z21MakerPanel, AStopGoesOutInTheMidstOfAPulse) {
  const Millis start = clock.now();
  Millis stopped = 0;
  unit.outOn[0] = true;
  state.stopped = true;
  socket.expect(hexBytes("09 00 40 00 53 00 30 88 EB"));
  socket.expect(hexBytes("06 00 40 00 80 80")).then([&] { stopped = clock.now(); });
  socket.expect(hexBytes("09 00 40 00 53 00 30 80 E3"));
  clock.schedule(70, [&] { line.urgent([&] { cab.sendStopped(); }); });
  line.exchange(&unit, 0, [&] { panel->sendOutput(0); });
  EXPECT_EQ(stopped - start, 70);
}

TEST_F(Z21MakerPanel, NewsOfOtherOutputsAreNoAnswerAndWhatWasNeverSwitchedIsKnown) {
  socket.expect(hexBytes("08 00 40 00 43 00 30 73"))
      .answer(hexBytes("09 00 40 00 43 00 0C 02 4D"))
      .answer(hexBytes("09 00 40 00 43 00 30 01 72"), 50);
  socket.expect(hexBytes("08 00 40 00 43 00 31 72")).answer(hexBytes("09 00 40 00 43 00 31 02 70"));
  socket.expect(hexBytes("08 00 40 00 43 00 32 71")).answer(hexBytes("09 00 40 00 43 00 32 00 71"));
  socket.expect(hexBytes("08 00 40 00 43 00 33 70")).answer(hexBytes("09 00 40 00 43 00 33 01 71"));
  EXPECT_EQ(panel->readState(), quint8{0b00000100});
  EXPECT_EQ(unit.neverSwitched, (std::array<bool, 4>{false, false, true, false}));
}

}  // namespace
}  // namespace lokari
