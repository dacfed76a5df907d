// The answers of every station: their queue and the faults of the wire and the track.
#include "sim/station.h"

#include "station_fixture.h"

namespace lokari::sim {
namespace {

/// Answers what it is told to.
class Parrot final : public Station {
 public:
  using Station::readOnMainTrack;
  using Station::readOnProgrammingTrack;
  using Station::Station;
  using Station::writeOnMainTrack;
  using Station::writeOnProgrammingTrack;

  QByteArray unasked() const override { return "News"; }
  void receive(const QByteArray& data) override { answer(data); }
};

class StationTest : public ::testing::Test {
 protected:
  StationTest() {
    EXPECT_EQ(readDecoders(builtInDecoders(), layout), "");
    station.onAnswer = [this](const QByteArray& data) {
      times.append(clock.now());
      answers.append(data);
    };
    station.onUnplug = [this] { unplugged = true; };
  }

  test::VirtualClock clock;
  Layout layout;
  FaultPlan faults;
  Parrot station{{clock, layout, faults, 20}};
  QList<QByteArray> answers;
  QList<Millis> times;
  bool unplugged = false;
};

TEST_F(StationTest, AnswersFromItsQueueAfterItsDelay) {
  station.receive("eins");
  EXPECT_TRUE(answers.isEmpty());
  clock.advance(1000);
  EXPECT_EQ(answers, QList<QByteArray>{"eins"});
  EXPECT_EQ(times, QList<Millis>{20});
}

TEST_F(StationTest, SilenceSwallowsAnAnswer) {
  faults.add({.kind = FaultKind::Silence});
  station.receive("eins");
  station.receive("zwei");
  clock.advance(1000);
  EXPECT_EQ(answers, QList<QByteArray>{"zwei"});
}

TEST_F(StationTest, ALateAnswerKeepsItsPlace) {
  faults.add({.kind = FaultKind::Late, .amount = 700});
  station.receive("eins");
  station.receive("zwei");
  clock.advance(1000);
  EXPECT_EQ(answers, (QList<QByteArray>{"eins", "zwei"}));
  EXPECT_EQ(times, (QList<Millis>{720, 720}));
}

TEST_F(StationTest, GarbageHasTheLengthOfTheAnswer) {
  faults.add({.kind = FaultKind::Garbage});
  station.receive("0123456789");
  clock.advance(1000);
  ASSERT_EQ(answers.size(), 1);
  EXPECT_EQ(answers[0].size(), 10);
  EXPECT_NE(answers[0], "0123456789");
}

TEST_F(StationTest, AShortAnswerIsCut) {
  faults.add({.kind = FaultKind::Short});
  faults.add({.kind = FaultKind::Short, .amount = 1});
  station.receive("1234");
  station.receive("1234");
  clock.advance(1000);
  EXPECT_EQ(answers, (QList<QByteArray>{"12", "1"}));
}

TEST_F(StationTest, OneBitOfAnAnswerComesWrong) {
  faults.add({.kind = FaultKind::Flip, .amount = 9});
  faults.add({.kind = FaultKind::Flip, .amount = 999});
  station.receive("abc");
  station.receive("abc");
  clock.advance(1000);
  EXPECT_EQ(answers, (QList<QByteArray>{"a`c", "abc"}));
}

TEST_F(StationTest, AMessageThatNobodyAskedForStandsAheadOfAnAnswerInItOrBehindIt) {
  for (const int place : {0, 1, 2}) faults.add({.kind = FaultKind::Stray, .amount = place});
  for (int i = 0; i < 3; ++i) station.receive("1234");
  clock.advance(1000);
  EXPECT_EQ(answers, (QList<QByteArray>{"News", "1234", "12News34", "1234", "News"}));
}

TEST_F(StationTest, ASplitAnswerComesByteByByte) {
  faults.add({.kind = FaultKind::Split, .amount = 50});
  station.receive("abc");
  clock.advance(1000);
  EXPECT_EQ(answers, (QList<QByteArray>{"a", "b", "c"}));
  EXPECT_EQ(times, (QList<Millis>{20, 70, 120}));
}

TEST_F(StationTest, AnUnpluggedStationGoesInsteadOfAnswering) {
  faults.add({.kind = FaultKind::Unplugged, .skip = 1});
  station.receive("eins");
  clock.advance(1000);
  EXPECT_FALSE(unplugged);
  station.receive("zwei");
  clock.advance(1000);
  EXPECT_TRUE(unplugged);
  EXPECT_EQ(answers, QList<QByteArray>{"eins"});
}

TEST_F(StationTest, AStationThatIsGoneSendsNothingMore) {
  auto other = std::make_unique<Parrot>(Surroundings{clock, layout, faults, 20});
  other->onAnswer = [this](const QByteArray& data) { answers.append(data); };
  other->receive("eins");
  other.reset();
  clock.advance(1000);
  EXPECT_TRUE(answers.isEmpty());
}

TEST_F(StationTest, TheTrackFailsAsToldAndThenRecovers) {
  faults.add({.kind = FaultKind::Busy, .count = 2});
  faults.add({.kind = FaultKind::NoAck});
  EXPECT_EQ(station.readOnProgrammingTrack(1, Method::Direct).answer, TrackAnswer::Busy);
  EXPECT_EQ(station.writeOnProgrammingTrack(1, 5, Method::Direct).answer, TrackAnswer::Busy);
  EXPECT_EQ(station.readOnMainTrack(1000, 1).answer, TrackAnswer::NoAck);
  EXPECT_EQ(station.readOnProgrammingTrack(1, Method::Direct).value, 3);
}

TEST_F(StationTest, AWrongValueIsReadBack) {
  faults.add({.kind = FaultKind::WrongValue, .count = 2});
  EXPECT_EQ(station.readOnProgrammingTrack(1, Method::Direct).value, 4);
  EXPECT_EQ(station.writeOnProgrammingTrack(2, 255, Method::Direct).value, 0);
  EXPECT_EQ(station.readOnProgrammingTrack(2, Method::Direct).value, 255);
}

TEST_F(StationTest, AWriteThatDoesNotStickReportsWhatTheDecoderHolds) {
  layout.onProgrammingTrack()->sticky = {57};
  const TrackResult result = station.writeOnProgrammingTrack(57, 9, Method::Direct);
  EXPECT_EQ(result.answer, TrackAnswer::Value);
  EXPECT_EQ(result.value, 0);
}

TEST_F(StationTest, TheMainTrackReachesVehiclesByAddress) {
  EXPECT_EQ(station.readOnMainTrack(1000, 8).value, 145);
  EXPECT_EQ(station.readOnMainTrack(77, 8).answer, TrackAnswer::NoDecoder);
  EXPECT_EQ(station.writeOnMainTrack(1000, 5, 9).value, 9);
  EXPECT_EQ(layout.onMainTrack(1000)->stored(5), 9);
}

TEST(StationTable, NamesAreFoundWithoutRegardToCase) {
  ASSERT_NE(stationByName(u"tamsmc"), nullptr);
  EXPECT_EQ(stationByName(u"tamsmc")->wire, Wire::Serial);
  EXPECT_EQ(stationByName(u"nix"), nullptr);
}

}  // namespace
}  // namespace lokari::sim
