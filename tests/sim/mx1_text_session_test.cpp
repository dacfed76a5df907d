// The link against the simulated MX1 with the text protocol.
#include "link/link_error.h"
#include "session_fixture.h"

namespace lokari {
namespace {

class Mx1TextSession : public test::SerialSession,
                       public ::testing::WithParamInterface<StationKind> {
 protected:
  Mx1TextSession() : SerialSession(GetParam()) {}
};

INSTANTIATE_TEST_SUITE_P(Both, Mx1TextSession,
                         ::testing::Values(StationKind::Mx1, StationKind::Mx1V25));

TEST_P(Mx1TextSession, WritesAndReadsEveryValue) {
  for (int value = 0; value < 256; ++value) {
    ASSERT_EQ(write(5, value), value);
    ASSERT_EQ(read(5), value);
  }
}

TEST_P(Mx1TextSession, ReachesTheFirstAndTheLastCv) {
  layout.onProgrammingTrack()->present = {{1, 1024}};
  for (const int cv : {1, 29, 255, 256, 257, 512, 1024}) {
    EXPECT_EQ(write(cv, 77), 77) << cv;
    EXPECT_EQ(read(cv), 77) << cv;
    EXPECT_EQ(layout.onProgrammingTrack()->stored(cv), 77) << cv;
  }
}

TEST_P(Mx1TextSession, AValueThatDoesNotStickComesBack) {
  layout.onProgrammingTrack()->sticky = {5};
  const int held = layout.onProgrammingTrack()->stored(5);
  EXPECT_EQ(write(5, held + 1), held);
}

TEST_P(Mx1TextSession, WritesOnTheMainTrackToAShortAddress) {
  link->commJob = CommJob::WriteMain;
  link->pomAddr = link->getAddrIndex(3);
  EXPECT_EQ(write(5, 99, 3), 99);
  EXPECT_EQ(layout.onMainTrack(3)->stored(5), 99);
}

TEST_P(Mx1TextSession, WritesOnTheMainTrackToALongAddress) {
  link->commJob = CommJob::WriteMain;
  link->pomAddr = link->getAddrIndex(1000);
  EXPECT_EQ(link->pomAddr, 128);
  for (const int cv : {1, 29, 255, 256, 257, 512, 1024}) {
    if (cv == 29) continue;  // it holds the kind of address
    EXPECT_EQ(write(cv, 99, 1000), 99);
    EXPECT_EQ(layout.onMainTrack(1000)->stored(cv), 99) << cv;
  }
  link->endcomm(true, false);
  EXPECT_TRUE(prompt.shown.isEmpty());
}

TEST_P(Mx1TextSession, AnAddressThatNobodyHasIsNotAvailable) {
  EXPECT_EQ(link->getAddrIndex(2001), -1);
}

TEST_P(Mx1TextSession, ALockedAddressIsToldAtTheEnd) {
  link->commJob = CommJob::WriteMain;
  link->pomAddr = 3;
  fault("busy");
  EXPECT_EQ(write(5, 99, 3), 99);
  link->endcomm(true, false);
  EXPECT_EQ(prompt.shown,
            QStringList{QStringLiteral("Adresse gesperrt - Programmierung nicht möglich!")});
}

TEST_P(Mx1TextSession, EveryFaultOfAReadEndsInItsCodeAndTheNextReadGoesAhead) {
  const QList<std::pair<const char*, int>> rows{
      {"silence", 97},    {"silence:2", -1001}, {"garbage", -1003},     {"short", 97},
      {"short:2", -1001}, {"split", 97},        {"late:1:1500", 97},    {"noack", 97},
      {"noack:2", -1},    {"nodecoder:2", -2},  {"shortcircuit:2", -3}, {"busy:2", -4},
      {"wrongvalue", 98},
  };
  for (const auto& [text, result] : rows) {
    fault(text);
    EXPECT_EQ(read(8), result) << text;
    EXPECT_EQ(read(29), 14) << text;
  }
}

TEST_P(Mx1TextSession, AFailedWriteIsNotRepeated) {
  const QList<std::pair<const char*, int>> rows{
      {"noack", -1}, {"nodecoder", -2}, {"shortcircuit", -3}, {"busy", -4}};
  for (const auto& [text, result] : rows) {
    fault(text);
    const qsizetype before = line->writes.size();
    EXPECT_EQ(write(5, 9), result) << text;
    EXPECT_EQ(line->writes.size(), before + 1) << text;
    EXPECT_EQ(write(5, 9), 9) << text;
  }
}

TEST_P(Mx1TextSession, AReplyToAnOlderQuestionIsNoReply) {
  fault("late:1:9000");
  EXPECT_EQ(read(8), -1001);
  clock.advance(10000);
  EXPECT_EQ(read(29), 14);
  link->endcomm(true, true);
  EXPECT_EQ(link->commUseCount, 0);
}

TEST_P(Mx1TextSession, AStationThatIsPulledOutInABatchEndsItAndTheSessionCloses) {
  fault("unplugged@2");
  EXPECT_EQ(read(1), 3);
  EXPECT_EQ(read(8), 97);
  EXPECT_THROW(read(29), LinkError);
  EXPECT_NO_THROW(link->endcomm(true, true));
  EXPECT_EQ(link->commUseCount, 0);
}

}  // namespace
}  // namespace lokari
