// Cabs on the Lenz interfaces, by script.
#include "cab_fixture.h"
#include "link/link_error.h"

namespace lokari {
namespace {

class LenzCab : public test::CabFixture {
 protected:
  explicit LenzCab(StationKind kind) : CabFixture(kind), usb_(kind == StationKind::LiUsb) {}

  /// A message as it goes over the line.
  QByteArray wire(const char* text) const {
    return (usb_ ? fromHex("FF FE") : QByteArray()) + fromHex(text);
  }
  void expect(const char* text) { line.expect(wire(text)); }
  void answer(const char* text, Millis delay = 10) { line.answer(wire(text), delay); }

 private:
  bool usb_;
};

class FirstLenzCab : public LenzCab {
 protected:
  FirstLenzCab() : LenzCab(StationKind::Li100) {}

  void load() {
    expect("A2 03 00 A1");
    answer("84 03 63 0A 02 EC");
    ASSERT_EQ(read(), 0b0101'0101U);
    for (const int n : {0, 2, 4}) state.funcOn.at(n) = true;
  }
};

class LaterLenzCab : public LenzCab, public ::testing::WithParamInterface<StationKind> {
 protected:
  LaterLenzCab() : LenzCab(GetParam()) {}

  void load(const char* reply = "E4 04 A5 13 05 53") {
    expect("E3 00 00 03 E0");
    answer(reply);
    ASSERT_TRUE(read());
  }
};

INSTANTIATE_TEST_SUITE_P(Kinds, LaterLenzCab,
                         ::testing::Values(StationKind::Li100V3, StationKind::LiUsb),
                         [](const auto& kind) {
                           return QString::fromUtf16(stationKind(kind.param).name).toStdString();
                         });

// -- the first generation

TEST_F(FirstLenzCab, ReadsTheStateAndKeepsItAsTheTemplate) {
  load();
  EXPECT_EQ(state.steps, 28);
  EXPECT_EQ(state.speed, 14);
  EXPECT_FALSE(state.backward);
  EXPECT_EQ(state.locoCmd, fromHex("B3 03 63 0A"));
}

TEST_F(FirstLenzCab, EveryCommandPatchesTheTemplate) {
  load();
  expect("B3 03 62 0A D8");
  speed(5);
  expect("B3 03 72 0A C8");
  speed(10);
  expect("B3 03 32 0A 88");
  direction(true);
  expect("B3 03 72 0A C8");
  direction(false);
  expect("B3 03 52 0A E8");
  function(0, false);
  expect("B3 03 52 0B E9");
  function(1, true);
  expect("B3 03 52 03 E1");
  function(4, false);
  expect("B3 03 72 03 C1");
  function(0, true);
}

TEST_F(FirstLenzCab, TheHighestSpeedLeavesDirectionAndLightAlone) {
  load();
  expect("B3 03 6F 0A D5");
  speed(127);
  expect("B3 03 60 0A DA");
  speed(0);
}

TEST_F(FirstLenzCab, AFunctionAboveF4GoesNowhere) {
  load();
  function(5, true);
  function(28, true);
}

TEST_F(FirstLenzCab, StopsAndGoes) {
  expect("80 80");
  stop(true);
  expect("21 81 A0");
  stop(false);
}

TEST_F(FirstLenzCab, AFailedReadingLeavesATemplateOfNothing) {
  expect("A2 03 00 A1");
  EXPECT_FALSE(read());
  EXPECT_EQ(state.locoCmd, fromHex("B3 03 00 00"));
  EXPECT_EQ(state.steps, 28);
}

TEST_F(FirstLenzCab, AfterAFailedReadingTheVehicleRunsAsTheArrowShows) {
  expect("A2 03 00 A1");
  EXPECT_FALSE(read());
  EXPECT_FALSE(state.backward);
  expect("B3 03 40 01 F1");
  function(1, true);
  expect("B3 03 42 01 F3");
  speed(5);
  expect("B3 03 02 01 B3");
  direction(true);
  expect("B3 03 12 01 A3");
  speed(10);
}

TEST_F(FirstLenzCab, AnotherVehiclesStateIsNotTaken) {
  expect("A2 03 00 A1");
  answer("84 04 63 0A 02 EB");
  EXPECT_FALSE(read());
  EXPECT_EQ(state.locoCmd, fromHex("B3 03 00 00"));
}

TEST_F(FirstLenzCab, AnAddressOfMoreThanAByteIsNeverSent) {
  state.address = 256;
  EXPECT_FALSE(read());
  speed(5);
  direction(true);
  function(0, true);
  EXPECT_TRUE(line.writes.isEmpty());
}

TEST_F(FirstLenzCab, ARepeatedReplyIsTakenOnceAndItsRestDropped) {
  expect("A2 03 00 A1");
  line.answer(fromHex("84 03 63 0A 02 EC").repeated(5));
  EXPECT_TRUE(read());
  expect("A2 03 00 A1");
  answer("84 03 43 0A 02 CC");
  EXPECT_EQ(read(), 0b0101'0100U);
}

// -- the later ones

TEST_P(LaterLenzCab, ReadsTheState) {
  expect("E3 00 00 03 E0");
  answer("E4 04 A5 13 05 53");
  EXPECT_EQ(read(), 0b1010'0111U);
  EXPECT_EQ(state.steps, 128);
  EXPECT_EQ(state.speed, 36);
  EXPECT_FALSE(state.backward);
  EXPECT_EQ(state.locoCmd, fromHex("E4 12 00 03 00"));
}

TEST_P(LaterLenzCab, ALongAddressHasItsMark) {
  state.address = 1000;
  expect("E3 00 C3 E8 C8");
  answer("E4 04 00 00 00 E0");
  EXPECT_EQ(read(), 0U);
  EXPECT_TRUE(state.backward);
  state.backward = false;
  expect("E4 13 C3 E8 A6 7A");
  speed(37);
}

TEST_P(LaterLenzCab, SpeedAndDirectionGoOutInOneMessageOfTheVehiclesSteps) {
  load();
  expect("E4 13 00 03 A6 52");
  speed(37);
  expect("E4 13 00 03 26 D2");
  direction(true);
  expect("E4 13 00 03 A6 52");
  direction(false);
  expect("E4 13 00 03 FF 0B");
  speed(127);
  state.steps = 28;
  expect("E4 12 00 03 82 77");
  speed(5);
  expect("E4 12 00 03 92 67");
  speed(10);
  state.steps = 27;
  expect("E4 11 00 03 9E 68");
  speed(127);
  state.steps = 14;
  expect("E4 10 00 03 8E 79");
  speed(127);
  expect("E4 10 00 03 80 77");
  speed(0);
}

TEST_P(LaterLenzCab, FunctionsGoOutInTwoGroups) {
  load();
  expect("E4 20 00 03 10 D7");
  function(0, true);
  expect("E4 20 00 03 14 D3");
  function(3, true);
  expect("E4 20 00 03 1C DB");
  function(4, true);
  expect("E4 20 00 03 0C CB");
  function(0, false);
  expect("E4 21 00 03 02 C4");
  function(6, true);
  expect("E4 21 00 03 03 C5");
  function(5, true);
  expect("E4 21 00 03 07 C1");
  function(7, true);
  expect("E4 21 00 03 05 C3");
  function(6, false);
}

TEST_P(LaterLenzCab, AFunctionAboveF7GoesNowhere) {
  load();
  const auto before = line.writes.size();
  function(8, true);
  function(28, true);
  EXPECT_EQ(line.writes.size(), before);
}

TEST_P(LaterLenzCab, StopsAndGoes) {
  expect("80 80");
  stop(true);
  expect("21 81 A0");
  stop(false);
}

TEST_P(LaterLenzCab, EveryHeadOfAStateIsTaken) {
  for (const char* reply : {"84 04 A5 13 05 33", "A4 04 A5 13 05 13", "E5 04 A5 13 05 52"}) {
    expect("E3 00 00 03 E0");
    answer(reply);
    EXPECT_TRUE(read()) << reply;
  }
}

TEST_P(LaterLenzCab, AReplyWithAnotherHeadIsAFailure) {
  expect("E3 00 00 03 E0");
  answer("E3 40 00 03 12 B2");
  EXPECT_FALSE(read());
  EXPECT_EQ(state.locoCmd, fromHex("E4 12 00 03 00")) << "the cab can drive all the same";
}

TEST_P(LaterLenzCab, AReplyThatCameWrongIsAskedForOnceMoreAndTheSameMustComeTwice) {
  expect("E3 00 00 03 E0");
  answer("E4 04 80 02 00 60");
  expect("E3 00 00 03 E0");
  answer("E4 04 80 00 00 60");
  EXPECT_FALSE(read()) << "nobody knows which of them is right";
  expect("E3 00 00 03 E0");
  answer("E4 04 80 02 00 60");
  expect("E3 00 00 03 E0");
  answer("E4 04 80 02 00 60");
  EXPECT_EQ(read(), 0b100U);
}

TEST_P(LaterLenzCab, SilenceAShortReplyAndARefusalFailAfterTheTimeOut) {
  expect("E3 00 00 03 E0");
  EXPECT_FALSE(read());
  expect("E3 00 00 03 E0");
  answer("E4 04 A5");
  EXPECT_FALSE(read());
  expect("E3 00 00 03 E0");
  answer("61 82 E3");
  EXPECT_LE(timeOf([this] { EXPECT_FALSE(read()); }), 3200);
}

TEST_P(LaterLenzCab, AReplyInPiecesIsWaitedFor) {
  expect("E3 00 00 03 E0");
  const QByteArray reply = wire("E4 04 A5 13 05 53");
  for (const char byte : reply) line.answer(QByteArray(1, byte), 100);
  EXPECT_EQ(read(), 0b1010'0111U);
}

TEST_P(LaterLenzCab, TheConfirmationOfAnEarlierCommandIsNotTakenForTheReply) {
  expect("E3 00 00 03 E0");
  line.answer(wire("01 04 05") + wire("61 01 60") + wire("E4 04 A5 13 05 53").left(3));
  line.answer(wire("E4 04 A5 13 05 53").mid(3), 300);
  EXPECT_EQ(read(), 0b1010'0111U);
}

TEST_P(LaterLenzCab, AStationThatTellsNewsForEverDoesNotHoldTheCab) {
  expect("E3 00 00 03 E0");
  for (int i = 0; i < 200; ++i) answer("61 01 60", 100);
  EXPECT_LE(timeOf([this] { EXPECT_FALSE(read()); }), 10'000);
}

TEST_P(LaterLenzCab, InputThatWaitsIsDroppedBeforeTheQuestion) {
  line.arrive(wire("E4 04 80 00 00 60"));
  load();
  EXPECT_EQ(state.speed, 36);
}

TEST_P(LaterLenzCab, ACancelEndsTheReadingAsAFailure) {
  expect("E3 00 00 03 E0");
  line.then([this] { link.cancelRequested = true; }, 300);
  EXPECT_LE(timeOf([this] { EXPECT_FALSE(read()); }), 600);
}

TEST_P(LaterLenzCab, AVanishedDeviceIsToldByEveryOperation) {
  expect("E3 00 00 03 E0");
  line.then([this] { line.vanish(); }, 300);
  EXPECT_THROW(read(), LinkError);
  EXPECT_THROW(speed(5), LinkError);
  EXPECT_THROW(function(0, true), LinkError);
  EXPECT_THROW(stop(true), LinkError);
  EXPECT_FALSE(cabLine.isBusy());
}

TEST_P(LaterLenzCab, AnAddressThatIsNoneIsNeverSent) {
  state.address = 10240;
  EXPECT_FALSE(read());
  speed(5);
  function(6, true);
  EXPECT_TRUE(line.writes.isEmpty());
}

TEST_P(LaterLenzCab, ACabWhoseStateWasNeverReadDrivesAllTheSame) {
  expect("E4 13 00 03 A6 52");
  speed(37);
}

TEST_P(LaterLenzCab, AStopInsideAQuestionThatIsNotAnsweredGoesOutWithin100Ms) {
  const Millis pressed = clock.now() + 500;
  clock.schedule(500, [this] { stop(true); });
  expect("E3 00 00 03 E0");
  expect("80 80");
  EXPECT_FALSE(read());
  ASSERT_EQ(line.writes.size(), 2);
  EXPECT_LE(line.writes[1].at - pressed, 100);
}

TEST_P(LaterLenzCab, AStopGoesOutWithin100MsAlsoWhileAMessageWaitsForTheLine) {
  const Millis pressed = clock.now() + 1;
  clock.schedule(1, [this] { stop(true); });
  // Where the station is asked for the line, the stop takes the turn of the message that asks.
  const bool takesTheTurn = GetParam() == StationKind::Li100V3;
  if (takesTheTurn) expect("80 80");
  expect("E3 00 00 03 E0");
  line.answer(wire("E4 04 A5 13 05 53"), 200);
  if (!takesTheTurn) expect("80 80");
  EXPECT_EQ(read(), 0b1010'0111U);
  EXPECT_LE(line.writes[takesTheTurn ? 0 : 1].at - pressed, 100);
}

TEST_P(LaterLenzCab, AMessageThatGaveItsTurnToAStopAsksForTheLineAnew) {
  const bool asks = GetParam() == StationKind::Li100V3;
  line.rtsChanges.clear();
  clock.schedule(1, [this] { stop(true); });
  if (asks) expect("80 80");
  expect("E3 00 00 03 E0");
  line.answer(wire("E4 04 A5 13 05 53"), 200);
  if (!asks) expect("80 80");
  EXPECT_TRUE(read());
  EXPECT_EQ(line.rtsChanges, asks ? (QList<bool>{false, true, false, true}) : QList<bool>{});
}

TEST_P(LaterLenzCab, AStopInsideAQuestionLeavesItsReplyWhole) {
  expect("E3 00 00 03 E0");
  line.answer(wire("E4 04 A5 13 05 53").left(4), 100);
  line.then([this] { stop(true); }, 20);
  expect("80 80");
  line.answer(wire("E4 04 A5 13 05 53").mid(4) + wire("01 04 05") + wire("81 00 81"), 50);
  EXPECT_EQ(read(), 0b1010'0111U);
}

TEST_P(LaterLenzCab, AStopsConfirmationAheadOfTheReplyIsPassedOver) {
  expect("E3 00 00 03 E0");
  line.then([this] { stop(true); }, 20);
  expect("80 80");
  line.answer(wire("01 04 05") + wire("81 00 81"), 20);
  line.answer(wire("E4 04 A5 13 05 53"), 200);
  EXPECT_EQ(read(), 0b1010'0111U);
}

}  // namespace
}  // namespace lokari
