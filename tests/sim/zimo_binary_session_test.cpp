// The link against the simulated MX1 and MX1ULF with the binary protocol.
#include "link/link_error.h"
#include "session_fixture.h"
#include "sim/zimo_binary_station.h"

namespace lokari {
namespace {

class ZimoBinarySession : public test::SerialSession,
                          public ::testing::WithParamInterface<StationKind> {
 protected:
  ZimoBinarySession() : SerialSession(GetParam()) {}

  const sim::ZimoBinaryStation& zimo() { return dynamic_cast<sim::ZimoBinaryStation&>(*station); }
};

INSTANTIATE_TEST_SUITE_P(Both, ZimoBinarySession,
                         ::testing::Values(StationKind::Mx1Bin, StationKind::Mx1Ulf));

TEST_P(ZimoBinarySession, LogsOnAndOff) {
  EXPECT_TRUE(zimo().loggedOn());
  link->endcomm(true, true);
  EXPECT_FALSE(zimo().loggedOn());
}

TEST_P(ZimoBinarySession, WritesAndReadsEveryValueAndAcknowledgesEveryResult) {
  for (int value = 0; value < 256; ++value) {
    ASSERT_EQ(write(5, value), value);
    ASSERT_EQ(read(5), value);
    ASSERT_EQ(zimo().unacknowledged(), 0);
  }
}

TEST_P(ZimoBinarySession, ReachesTheFirstAndTheLastCv) {
  layout.onProgrammingTrack()->present = {{1, 1024}};
  for (const int cv : {1, 29, 255, 256, 257, 512, 1024}) {
    EXPECT_EQ(write(cv, 77), 77) << cv;
    EXPECT_EQ(read(cv), 77) << cv;
    EXPECT_EQ(layout.onProgrammingTrack()->stored(cv), 77) << cv;
  }
}

TEST_P(ZimoBinarySession, AValueThatDoesNotStickComesBack) {
  layout.onProgrammingTrack()->sticky = {5};
  const int held = layout.onProgrammingTrack()->stored(5);
  EXPECT_EQ(write(5, held + 1), held);
}

TEST_P(ZimoBinarySession, WritesOnTheMainTrackByAddress) {
  link->commJob = CommJob::WriteMain;
  EXPECT_EQ(write(5, 99, 3), 99);
  EXPECT_EQ(layout.onMainTrack(3)->stored(5), 99);
  for (const int cv : {1, 255, 256, 257, 512, 1024}) {
    EXPECT_EQ(write(cv, 99, 1000), 99);
    EXPECT_EQ(layout.onMainTrack(1000)->stored(cv), 99) << cv;
  }
}

TEST_P(ZimoBinarySession, EveryFaultOfTheTrackEndsInItsCodeAndTheNextReadGoesAhead) {
  const QList<std::pair<const char*, int>> rows{
      {"busy", 97},         {"busy:3", 97},          {"noack", -1101},
      {"nodecoder", -1102}, {"shortcircuit", -1103}, {"wrongvalue", 98},
  };
  for (const auto& [text, result] : rows) {
    fault(text);
    EXPECT_EQ(read(8), result) << text;
    EXPECT_EQ(read(29), 14) << text;
    EXPECT_EQ(zimo().unacknowledged(), 0) << text;
  }
}

TEST_P(ZimoBinarySession, LateAndSplitAnswersAreReadToTheirEnd) {
  for (const char* text : {"split", "split:2:400", "late:1:1500", "late:1:1500@1"}) {
    fault(text);
    EXPECT_EQ(read(8), 97) << text;
    EXPECT_EQ(read(29), 14) << text;
  }
}

TEST_P(ZimoBinarySession, BothAnswersLostAreMadeGoodByTheSecondChance) {
  fault("silence:2");
  EXPECT_EQ(read(8), 97);
}

TEST_P(ZimoBinarySession, SilenceIsNoReplyAndTheNextReadGoesAhead) {
  fault("silence:4");
  EXPECT_EQ(read(8), -1001);
  EXPECT_EQ(read(29), 14);
}

TEST_P(ZimoBinarySession, AResultInPlaceOfALostConfirmationIsARefusal) {
  fault("silence");
  EXPECT_EQ(read(8), -1030 - 0x80);
  EXPECT_EQ(read(29), 14);
}

TEST_P(ZimoBinarySession, AConfirmationOfGarbageIsNoReply) {
  fault("garbage");
  EXPECT_EQ(read(8), -1001);
  link->endcomm(true, true);
  EXPECT_EQ(link->commUseCount, 0);
}

TEST_P(ZimoBinarySession, ALostOrCutResultIsAWrongReply) {
  fault("silence@1");
  EXPECT_EQ(read(8), -1003);
  EXPECT_EQ(read(29), 14);
  fault("short@1");
  EXPECT_EQ(read(8), -1003);
  EXPECT_EQ(read(29), 14);
}

TEST_P(ZimoBinarySession, AStationThatIsPulledOutInABatchEndsItAndTheSessionCloses) {
  fault("unplugged@4");
  EXPECT_EQ(read(1), 3);
  EXPECT_EQ(read(8), 97);
  EXPECT_THROW(read(29), LinkError);
  EXPECT_NO_THROW(link->endcomm(true, true));
  EXPECT_EQ(link->commUseCount, 0);
}

}  // namespace
}  // namespace lokari
