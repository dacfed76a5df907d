// The link against the simulated Lenz interfaces.
#include "link/link_error.h"
#include "session_fixture.h"
#include "sim/lenz_station.h"

namespace lokari {
namespace {

class LenzSession : public test::SerialSession, public ::testing::WithParamInterface<StationKind> {
 protected:
  LenzSession() : SerialSession(GetParam()) {
    // The fixture's session is open already; the stations do not care.
    settings.lenzV36 = true;
  }

  const sim::LenzStation& lenz() { return dynamic_cast<sim::LenzStation&>(*station); }
};

std::string kindName(const ::testing::TestParamInfo<StationKind>& kind) {
  return QString::fromUtf16(stationKind(kind.param).name).toStdString();
}

INSTANTIATE_TEST_SUITE_P(All, LenzSession,
                         ::testing::Values(StationKind::Li100, StationKind::Li100V3,
                                           StationKind::LiUsb),
                         kindName);

/// The later generations, which write on the main track.
class LenzMainSession : public LenzSession {};

INSTANTIATE_TEST_SUITE_P(Later, LenzMainSession,
                         ::testing::Values(StationKind::Li100V3, StationKind::LiUsb), kindName);

TEST_P(LenzSession, WritesAndReadsEveryValueAndResumesOperationEveryTime) {
  for (int value = 0; value < 256; ++value) {
    ASSERT_EQ(write(5, value), value);
    ASSERT_FALSE(lenz().inServiceMode());
    ASSERT_EQ(read(5), value);
    ASSERT_FALSE(lenz().inServiceMode());
  }
}

TEST_P(LenzSession, WithProtocol36ReachesTheFirstAndTheLastCv) {
  layout.onProgrammingTrack()->present = {{1, 1024}};
  for (const int cv : {1, 29, 255, 256, 257, 512, 1024}) {
    EXPECT_EQ(write(cv, 77), 77) << cv;
    EXPECT_EQ(layout.onProgrammingTrack()->stored(cv), 77) << cv;
    EXPECT_EQ(read(cv), 77) << cv;
  }
}

TEST_P(LenzSession, WithoutProtocol36Reads256AndWrites255) {
  settings.lenzV36 = false;
  layout.onProgrammingTrack()->store(256, 12);
  for (const int cv : {1, 29, 255}) {
    EXPECT_EQ(write(cv, 77), 77) << cv;
    EXPECT_EQ(read(cv), 77) << cv;
  }
  EXPECT_EQ(write(256, 77), 0);
  EXPECT_EQ(read(256), 12);
  for (const int cv : {257, 512, 1024}) {
    EXPECT_EQ(write(cv, 77), 0) << cv;
    EXPECT_EQ(read(cv), -1003) << cv;
    EXPECT_EQ(layout.onProgrammingTrack()->stored(cv), 0) << cv;
  }
}

TEST_P(LenzSession, SpeaksPagedModeToo) {
  layout.onProgrammingTrack()->methods = {sim::Method::Paged};
  link->progMode = 1;
  EXPECT_EQ(link->WriteCV(5, 9, 3, 1), 9);
  EXPECT_EQ(read(5), 9);
  link->progMode = 0;
  EXPECT_EQ(read(5), -1019);
}

TEST_P(LenzSession, AValueThatDoesNotStickComesBack) {
  layout.onProgrammingTrack()->sticky = {5};
  const int held = layout.onProgrammingTrack()->stored(5);
  EXPECT_EQ(write(5, held + 1), held);
}

TEST_P(LenzSession, EveryFaultOfTheTrackEndsInItsCodeAndTheNextReadGoesAhead) {
  // Each repeat of a read is programmed anew, so a failure must last to show.
  const QList<std::pair<const char*, int>> rows{
      {"busy", 97}, {"noack:4", -1019}, {"nodecoder:4", -1019}, {"shortcircuit:4", -1018}};
  for (const auto& [text, result] : rows) {
    fault(text);
    EXPECT_EQ(read(8), result) << text;
    EXPECT_EQ(read(29), 14) << text;
    EXPECT_FALSE(lenz().inServiceMode()) << text;
  }
}

TEST_P(LenzSession, APassingFailureOfTheTrackIsReadOver) {
  fault("noack");
  EXPECT_EQ(read(8), 97);
}

TEST_P(LenzSession, AWriteFailsWithCodesOfItsOwnAndABusyTrackTwiceIsMinus1007) {
  const QList<std::pair<const char*, int>> rows{{"noack", -19},        {"nodecoder", -19},
                                                {"shortcircuit", -18}, {"busy", 6},
                                                {"busy:2", -1007},     {"wrongvalue", 7}};
  for (const auto& [text, result] : rows) {
    fault(text);
    EXPECT_EQ(write(5, 6), result) << text;
    EXPECT_EQ(read(29), 14) << text;
    EXPECT_FALSE(lenz().inServiceMode()) << text;
  }
}

TEST_P(LenzSession, LostAndCutConfirmationsAreMadeGoodByTheSecondChance) {
  for (const char* text : {"silence", "short:1:2", "late:1:2500"}) {
    fault(text);
    EXPECT_EQ(read(8), 97) << text;
    EXPECT_EQ(read(29), 14) << text;
  }
}

TEST_P(LenzSession, LostLateAndSplitResultsAreAskedForAgain) {
  for (const char* text : {"silence@1", "garbage@1", "late:1:1500@1", "split@1", "split:3:5"}) {
    fault(text);
    EXPECT_EQ(read(8), 97) << text;
    EXPECT_EQ(read(29), 14) << text;
    EXPECT_FALSE(lenz().inServiceMode()) << text;
  }
}

TEST_P(LenzSession, ASilentStationIsNoReplyAndTheNextReadGoesAhead) {
  fault("silence:4");
  EXPECT_EQ(read(8), -1001);
  EXPECT_EQ(read(29), 14);
}

TEST_P(LenzSession, ACancelledReadLeavesNormalOperation) {
  clock.schedule(100, [&] { link->cancelRequested = true; });
  EXPECT_EQ(read(8), -1002);
  link->endcomm(true, true);
  EXPECT_FALSE(lenz().inServiceMode());
  EXPECT_EQ(link->commUseCount, 0);
}

TEST_P(LenzSession, AStationThatFallsSilentInAWriteIsLeftByACancel) {
  // The confirmations pass; one message of the first generation, two of the later ones.
  fault(GetParam() == StationKind::Li100 ? "silence:immer@1" : "silence:immer@2");
  clock.schedule(60'000, [&] { link->cancelRequested = true; });
  EXPECT_EQ(write(5, 6), -1002);
  link->endcomm(true, true);
  EXPECT_EQ(link->commUseCount, 0);
}

TEST_P(LenzSession, AStationThatIsPulledOutInABatchEndsItAndTheSessionCloses) {
  fault("unplugged@4");
  EXPECT_EQ(read(1), 3);
  EXPECT_THROW(
      {
        read(8);
        read(29);
      },
      LinkError);
  EXPECT_NO_THROW(link->endcomm(true, true));
  EXPECT_EQ(link->commUseCount, 0);
}

TEST_P(LenzMainSession, WritesOnTheMainTrackByAddress) {
  link->commJob = CommJob::WriteMain;
  link->pomAddr = 3;
  EXPECT_EQ(write(5, 99, 3), 99);
  EXPECT_EQ(layout.onMainTrack(3)->stored(5), 99);
  link->pomAddr = 1000;
  for (const int cv : {1, 255, 257, 511, 1023}) {
    EXPECT_EQ(write(cv, 99, 1000), 99) << cv;
    EXPECT_EQ(layout.onMainTrack(1000)->stored(cv), 99) << cv;
  }
  for (const int cv : {256, 512, 1024}) {
    EXPECT_EQ(write(cv, 99, 1000), -1003) << cv;
    EXPECT_EQ(layout.onMainTrack(1000)->stored(cv), 0) << cv;
  }
  EXPECT_FALSE(lenz().inServiceMode());
}

TEST_P(LenzMainSession, AMainTrackWriteMeetsSilenceAndGarbage) {
  link->commJob = CommJob::WriteMain;
  link->pomAddr = 3;
  fault("silence");
  EXPECT_EQ(write(5, 99), -1001);
  fault("garbage");
  EXPECT_EQ(write(5, 99), -1003);
  fault("split");
  EXPECT_EQ(write(5, 99), 99);
}

}  // namespace
}  // namespace lokari
