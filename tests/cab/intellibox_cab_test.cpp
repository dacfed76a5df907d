// Cabs on the Intellibox and the Tams MC, by script.
#include "cab_fixture.h"
#include "link/link_error.h"
#include "link/station_protocol.h"

namespace lokari {
namespace {

class IntelliboxCab : public test::CabFixture, public ::testing::WithParamInterface<StationKind> {
 protected:
  IntelliboxCab() : CabFixture(GetParam()) {}

  /// A command behind its letter.
  test::ScriptedLine& expect(const char* text) { return line.expect("x" + fromHex(text)); }
  test::ScriptedLine& accepted(const char* text) { return expect(text).answer(fromHex("00")); }

  void expectReading() {
    expect("84 03 00").answer(fromHex("00 25 35 1B"));
    expect("8C 03 00").answer(fromHex("00 C2"));
  }
};

INSTANTIATE_TEST_SUITE_P(Kinds, IntelliboxCab,
                         ::testing::Values(StationKind::Ibx, StationKind::TamsMc),
                         [](const auto& kind) {
                           return QString::fromUtf16(stationKind(kind.param).name).toStdString();
                         });

TEST_P(IntelliboxCab, ReadsSpeedAndThenFunctions) {
  expectReading();
  EXPECT_EQ(read(), 0b1000'0101U) << "F0 of the first reply, F2 and F7 of the second";
  EXPECT_EQ(state.speed, 37);
  EXPECT_EQ(state.steps, 128);
  EXPECT_FALSE(state.backward);
  EXPECT_EQ(state.locoCmd, fromHex("80 03 00"));
}

TEST_P(IntelliboxCab, SpeedDirectionAndLightGoOutInOneCommand) {
  accepted("80 03 00 25 60");
  speed(37);
  accepted("80 03 00 25 40");
  direction(true);
  accepted("80 03 00 25 50");
  function(0, true);
  accepted("80 03 00 25 70");
  direction(false);
  accepted("80 03 00 7F 70");
  speed(127);
  accepted("80 03 00 00 60");
  state.funcOn[0] = false;
  speed(0);
  EXPECT_EQ(prompt.beeps, 0);
}

TEST_P(IntelliboxCab, F1ToF7GoOutTogether) {
  accepted("88 03 00 01");
  function(1, true);
  accepted("88 03 00 41");
  function(7, true);
  accepted("88 03 00 40");
  function(1, false);
  function(8, true);
  function(28, true);
  EXPECT_EQ(prompt.beeps, 0);
}

TEST_P(IntelliboxCab, ALongAddressIsItsTwoBytes) {
  state.address = 1000;
  accepted("80 E8 03 25 60");
  speed(37);
  accepted("88 E8 03 02");
  function(2, true);
}

TEST_P(IntelliboxCab, StopsAndGoes) {
  accepted("A5");
  stop(true);
  accepted("A7");
  stop(false);
  EXPECT_EQ(prompt.beeps, 0);
  EXPECT_TRUE(cabLine.repliesOwed.empty());
}

TEST_P(IntelliboxCab, ARefusalBeeps) {
  expect("80 03 00 25 60").answer(fromHex("06"));
  speed(37);
  EXPECT_EQ(prompt.beeps, 1);
  expect("88 03 00 01").answer(fromHex("02"));
  function(1, true);
  EXPECT_EQ(prompt.beeps, 2);
  expect("A5").answer(fromHex("FF"));
  stop(true);
  EXPECT_EQ(prompt.beeps, 3);
}

TEST_P(IntelliboxCab, AVehicleWithoutASlotStandsForwardWithAllOff) {
  state.speed = 20;
  state.backward = true;
  expect("84 03 00").answer(fromHex("0A"));
  expect("8C 03 00").answer(fromHex("0A"));
  EXPECT_EQ(read(), FunctionMask{0});
  EXPECT_EQ(state.speed, 0);
  EXPECT_FALSE(state.backward);
  EXPECT_EQ(prompt.beeps, 0);
}

TEST_P(IntelliboxCab, CodesFrom40To42AreTaken) {
  for (const char* code : {"40", "41", "42"}) {
    expect("80 03 00 25 60").answer(fromHex(code));
    speed(37);
    expect("88 03 00 01").answer(fromHex(code));
    function(1, true);
    expect("A5").answer(fromHex(code));
    stop(true);
  }
  EXPECT_EQ(prompt.beeps, 0);
}

TEST_P(IntelliboxCab, ALayoutThatStandsIsToldWithTheCommand) {
  std::vector<LayoutStands> told;
  cab = makeCabProtocol(stationKind(GetParam()).family, cabLine, state,
                        {.layoutTold = [&](LayoutStands stands) { told.push_back(stands); }});
  for (const char* code : {"41", "42", "40", "06", "00"}) {
    expect("80 03 00 25 60").answer(fromHex(code));
    speed(37);
  }
  EXPECT_EQ(told, (std::vector{LayoutStands::Halted, LayoutStands::WithoutPower, LayoutStands::No,
                               LayoutStands::No}))
      << "a refusal tells nothing of it";
}

TEST_P(IntelliboxCab, AGoThatLeavesTheTrackWithoutPowerDoesNotHold) {
  std::vector<std::pair<bool, StopFault>> failed;
  cab = makeCabProtocol(
      stationKind(GetParam()).family, cabLine, state,
      {.stopFailed = [&](bool stopped, StopFault fault) { failed.emplace_back(stopped, fault); }});
  expect("A5").answer(fromHex("42"));
  stop(true);
  expect("A7").answer(fromHex("42"));
  stop(false);
  expect("A7").answer(fromHex("40"));
  stop(false);
  EXPECT_EQ(failed, (std::vector{std::pair(false, StopFault::Refused)}));
}

TEST_P(IntelliboxCab, AFullQueueIsAskedAgainUntilItHasRoom) {
  for (const char* code : {"08", "09", "07"}) {
    expect("80 03 00 25 60").answer(fromHex(code));
    expect("80 03 00 25 60").answer(fromHex(code));
    accepted("80 03 00 25 60");
    speed(37);
  }
  expect("84 03 00").answer(fromHex("08"));
  expectReading();
  EXPECT_TRUE(read());
  EXPECT_EQ(prompt.beeps, 0);
}

TEST_P(IntelliboxCab, AQueueThatStaysFullBeepsOnceAndNotForever) {
  for (int i = 0; i < 11; ++i) expect("80 03 00 25 60").answer(fromHex("08"));
  speed(37);
  EXPECT_EQ(prompt.beeps, 1);
}

TEST_P(IntelliboxCab, AStopGetsThroughWhileTheQueueIsFull) {
  expect("80 03 00 25 60").answer(fromHex("08")).then([this] { stop(true); }, 100);
  accepted("A5");
  accepted("80 03 00 25 60");
  const Millis pressed = clock.now() + 160;
  speed(37);
  EXPECT_LE(line.writes[6].at - pressed, 100);
  EXPECT_EQ(prompt.beeps, 0);
  EXPECT_TRUE(cabLine.repliesOwed.empty());
}

TEST_P(IntelliboxCab, ACommandThatNobodyAnswersBeeps) {
  expect("80 03 00 25 60");
  EXPECT_LE(timeOf([this] { speed(37); }), 3100);
  EXPECT_EQ(prompt.beeps, 1);
}

TEST_P(IntelliboxCab, AStopThatNobodyAnswersBeepsOnce) {
  expect("A5");
  EXPECT_LE(timeOf([this] { stop(true); }), 3100);
  EXPECT_EQ(prompt.beeps, 1);
  EXPECT_TRUE(cabLine.repliesOwed.empty());
  expect("A7").then([this] { line.vanish(); }, 300);
  EXPECT_THROW(stop(false), LinkError);
  EXPECT_EQ(prompt.beeps, 2);
  EXPECT_THROW(stop(true), LinkError) << "there is no line any more";
  EXPECT_TRUE(cabLine.repliesOwed.empty());
}

TEST_P(IntelliboxCab, AStopThatNobodyAnswersInsideAQuestionBeepsBehindIt) {
  expect("84 03 00").then([this] { stop(true); }, 20);
  expect("A5").answer(fromHex("00 25 35 1B"), 20);
  expect("8C 03 00").answer(fromHex("00 C2"));
  EXPECT_TRUE(read());
  EXPECT_EQ(prompt.beeps, 1);
}

TEST_P(IntelliboxCab, ALateReplyIsNotTakenForTheNextOne) {
  expect("80 03 00 25 60").answer(fromHex("06"), 4000);
  speed(37);
  clock.advance(5000);
  accepted("80 03 00 26 60");
  speed(38);
  EXPECT_EQ(prompt.beeps, 1);
}

TEST_P(IntelliboxCab, ARepliesRestIsWaitedFor) {
  expect("84 03 00")
      .answer(fromHex("00"), 100)
      .answer(fromHex("25 35"), 900)
      .answer(fromHex("1B"), 500);
  expect("8C 03 00").answer(fromHex("00"), 100).answer(fromHex("C2"), 900);
  EXPECT_EQ(read(), 0b1000'0101U);
}

TEST_P(IntelliboxCab, SilenceARefusalAndAShortReplyAreFailures) {
  expect("84 03 00");
  EXPECT_FALSE(read());
  expect("84 03 00").answer(fromHex("0E"));
  EXPECT_LE(timeOf([this] { EXPECT_FALSE(read()); }), 100) << "nothing more is waited for";
  expect("84 03 00").answer(fromHex("00 25 35"));
  EXPECT_FALSE(read());
  expect("84 03 00").answer(fromHex("00 25 35 1B"));
  expect("8C 03 00");
  EXPECT_FALSE(read());
  expect("84 03 00").answer(fromHex("00 25 35 1B"));
  expect("8C 03 00").answer(fromHex("01"));
  EXPECT_FALSE(read());
  expect("84 03 00").answer(fromHex("00 25 35 1B"));
  expect("8C 03 00").answer(fromHex("00"));
  EXPECT_FALSE(read());
  EXPECT_EQ(state.speed, 0) << "half a state is none";
  EXPECT_EQ(prompt.beeps, 0);
}

TEST_P(IntelliboxCab, GarbageIsAFailure) {
  expect("84 03 00").answer(fromHex("A5 5A 3F 00"));
  EXPECT_FALSE(read());
  expectReading();
  EXPECT_TRUE(read()) << "its rest does not meet the next question";
}

TEST_P(IntelliboxCab, ACancelEndsTheReadingAsAFailure) {
  expect("84 03 00").then([this] { link.cancelRequested = true; }, 300);
  EXPECT_LE(timeOf([this] { EXPECT_FALSE(read()); }), 500);
}

TEST_P(IntelliboxCab, AVanishedDeviceIsToldByEveryOperation) {
  expect("84 03 00").then([this] { line.vanish(); }, 300);
  EXPECT_THROW(read(), LinkError);
  EXPECT_THROW(speed(5), LinkError);
  EXPECT_THROW(stop(true), LinkError);
  EXPECT_FALSE(cabLine.isBusy());
  EXPECT_TRUE(cabLine.repliesOwed.empty());
}

TEST_P(IntelliboxCab, AnAddressThatIsNoneIsNeverSent) {
  state.address = 10240;
  EXPECT_FALSE(read());
  speed(5);
  direction(true);
  function(1, true);
  EXPECT_TRUE(line.writes.isEmpty());
}

TEST_P(IntelliboxCab, AStopInsideAQuestionThatIsNotAnsweredGoesOutWithin100Ms) {
  const Millis pressed = clock.now() + 500;
  clock.schedule(500, [this] { stop(true); });
  expect("84 03 00");
  expect("A5");
  EXPECT_FALSE(read());
  EXPECT_EQ(line.writes.last().data, fromHex("A5"));
  EXPECT_LE(line.writes.last().at - pressed, 100);
  EXPECT_TRUE(cabLine.repliesOwed.empty());
}

TEST_P(IntelliboxCab, AStopWhileACommandGoesOutFollowsItWithin100Ms) {
  const Millis pressed = clock.now() + 5;
  clock.schedule(5, [this] { stop(true); });
  accepted("80 03 00 25 60");
  accepted("A5");
  speed(37);
  EXPECT_LE(line.writes.last().at - pressed, 100);
  EXPECT_EQ(prompt.beeps, 0);
}

TEST_P(IntelliboxCab, AStopInsideAQuestionLeavesBothReplies) {
  expect("84 03 00").then([this] { stop(true); }, 20);
  expect("A5").answer(fromHex("00 25"), 20).answer(fromHex("35 1B"), 20).answer(fromHex("00"), 20);
  expect("8C 03 00").answer(fromHex("00 C2"));
  EXPECT_EQ(read(), 0b1000'0101U);
  EXPECT_EQ(state.speed, 37);
  EXPECT_EQ(prompt.beeps, 0);
}

TEST_P(IntelliboxCab, AStopsReplyThatComesAtOnceWithTheQuestionsIsLeft) {
  expect("84 03 00").then([this] { stop(true); }, 20);
  expect("A5").answer(fromHex("00 25 35 1B 00"), 20);
  expect("8C 03 00").answer(fromHex("00 C2"));
  EXPECT_EQ(read(), 0b1000'0101U);
}

TEST_P(IntelliboxCab, AStopThatIsRefusedInsideAQuestionBeepsBehindIt) {
  expect("84 03 00").then([this] { stop(true); }, 20);
  expect("A5").answer(fromHex("00 25 35 1B 06"), 20);
  expect("8C 03 00").answer(fromHex("00 C2"));
  EXPECT_EQ(read(), 0b1000'0101U);
  EXPECT_EQ(prompt.beeps, 1);
}

TEST_P(IntelliboxCab, StopAndGoInsideOneAnotherBothGoOutAndAreBothAnswered) {
  expect("A5").then([this] { stop(false); }, 20);
  expect("A7").answer(fromHex("00 00"), 20);
  stop(true);
  EXPECT_EQ(prompt.beeps, 0);
  EXPECT_TRUE(cabLine.repliesOwed.empty());
  accepted("80 03 00 25 60");
  speed(37);
  EXPECT_EQ(prompt.beeps, 0);
}

TEST_P(IntelliboxCab, AStopInsideAJobIsConfirmedBehindIt) {
  expect("A5").answer(fromHex("00"), 5);
  cabLine.exchange(this, 0, [this] {
    link.runningJob = CommJob::ReadProgTrack;
    stop(true);
    // The job takes the reply for its own.
    link.WaitForData(1);
    EXPECT_EQ(line.read(), fromHex("00"));
    link.runningJob = CommJob::None;
    link.cancelRequested = true;
    accepted("A5");
  });
  EXPECT_TRUE(cabLine.repliesOwed.empty());
  EXPECT_EQ(prompt.beeps, 0);
  expect("A5").answer(fromHex("00"), 5);
  cabLine.exchange(this, 0, [this] {
    link.runningJob = CommJob::ReadProgTrack;
    stop(true);
    link.WaitForData(1);
    link.protocol().dropInput();
    link.runningJob = CommJob::None;
    expect("A5").answer(fromHex("06"));
  });
  EXPECT_EQ(prompt.beeps, 1) << "refused";
}

TEST_P(IntelliboxCab, AStopWhileASpeedIsOnTheWireGoesOutOnceAndItsReplyIsTakenBehind) {
  state.speed = 37;
  accepted("80 03 00 25 60");
  expect("A5").answer(fromHex("00"), 50);
  cabLine.exchange(this, 0, [this] {
    cab->sendSpeed();
    stop(true);
  });
  EXPECT_EQ(line.inBufferCount(), 0);
  EXPECT_EQ(prompt.beeps, 0);
}

TEST_P(IntelliboxCab, AStopOfAnotherCabLeavesTheReplyToThisOne) {
  CabState otherState;
  otherState.address = 4;
  otherState.stopped = true;
  const auto other =
      makeCabProtocol(stationKind(GetParam()).family, cabLine, otherState, CabHooks{});
  expect("84 03 00").then([&] { cabLine.urgent([&] { other->sendStopped(); }); }, 20);
  expect("A5").answer(fromHex("00 25 35 1B 00"), 20);
  expect("8C 03 00").answer(fromHex("00 C2"));
  EXPECT_EQ(read(), 0b1000'0101U);
}

}  // namespace
}  // namespace lokari
