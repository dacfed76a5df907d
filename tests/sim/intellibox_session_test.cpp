// The link against the simulated Intellibox.
#include "link/link_error.h"
#include "session_fixture.h"
#include "sim/intellibox_station.h"

namespace lokari {
namespace {

class IntelliboxSession : public test::SerialSession {
 protected:
  IntelliboxSession() : SerialSession(StationKind::Ibx) {}

  const sim::IntelliboxStation& box() { return dynamic_cast<sim::IntelliboxStation&>(*station); }
};

TEST_F(IntelliboxSession, WritesAndReadsEveryValueAndEndsTheProgrammingEveryTime) {
  for (int value = 0; value < 256; ++value) {
    ASSERT_EQ(write(5, value), value);
    ASSERT_FALSE(box().programming());
    ASSERT_EQ(read(5), value);
    ASSERT_FALSE(box().programming());
  }
}

TEST_F(IntelliboxSession, ReachesTheFirstAndTheLastCv) {
  layout.onProgrammingTrack()->present = {{1, 1024}};
  for (const int cv : {1, 29, 255, 256, 257, 512, 1024}) {
    EXPECT_EQ(write(cv, 77), 77) << cv;
    EXPECT_EQ(read(cv), 77) << cv;
    EXPECT_EQ(layout.onProgrammingTrack()->stored(cv), 77) << cv;
  }
}

TEST_F(IntelliboxSession, SpeaksEveryProgrammingMode) {
  sim::Decoder& decoder = *layout.onProgrammingTrack();
  decoder.methods = {sim::Method::Paged};
  link->progMode = 1;
  EXPECT_EQ(link->WriteCV(5, 9, 3, 1), 9);
  EXPECT_EQ(read(5), 9);
  decoder.methods = {sim::Method::Register};
  link->progMode = 2;
  EXPECT_EQ(link->WriteCV(5, 4, 3, 2), 4);
  EXPECT_EQ(read(5), 4);
  EXPECT_EQ(decoder.stored(29), 4);
  link->progMode = 0;
  EXPECT_EQ(read(5), -1021);
}

TEST_F(IntelliboxSession, WritesOnTheMainTrackByAddress) {
  link->commJob = CommJob::WriteMain;
  link->pomAddr = 3;
  EXPECT_EQ(write(5, 99, 3), 99);
  EXPECT_EQ(layout.onMainTrack(3)->stored(5), 99);
  link->pomAddr = 1000;
  for (const int cv : {1, 255, 256, 257, 512, 1024}) {
    EXPECT_EQ(write(cv, 99, 1000), 99) << cv;
    EXPECT_EQ(layout.onMainTrack(1000)->stored(cv), 99) << cv;
  }
}

TEST_F(IntelliboxSession, EveryFaultEndsInItsCodeAndTheNextReadGoesAhead) {
  const QList<std::pair<const char*, int>> rows{
      // on the track
      {"noack", -1021},
      {"nodecoder", -1019},
      {"shortcircuit", -1018},
      {"wrongvalue", 98},
      {"busy", 97},
      {"busy:3", -1020},
      // of the command's reply
      {"silence", 97},
      {"silence:3", -1020},
      {"garbage", 97},
      {"late:1:1500", 97},
      {"split:3", 97},
      // of the event
      {"silence@1", 97},
      {"silence:2@1", -1001},
      {"short@1", 97},
      {"garbage@1", 97},
  };
  for (const auto& [text, result] : rows) {
    fault(text);
    EXPECT_EQ(read(8), result) << text;
    EXPECT_EQ(read(29), 14) << text;
    EXPECT_FALSE(box().programming()) << text;
  }
}

TEST_F(IntelliboxSession, AWriteIsTriedOnceMore) {
  fault("busy");
  EXPECT_EQ(write(5, 6), -1020);
  EXPECT_EQ(layout.onProgrammingTrack()->stored(5), 6) << "the second command is accepted";
  fault("noack");
  EXPECT_EQ(write(5, 7), -1021);
  EXPECT_EQ(write(5, 7), 7);
}

TEST_F(IntelliboxSession, ACancelledReadEndsTheProgramming) {
  clock.schedule(2000, [&] { link->cancelRequested = true; });
  EXPECT_EQ(read(8), -1002);
  link->endcomm(true, true);
  EXPECT_FALSE(box().programming());
  EXPECT_EQ(link->commUseCount, 0);
}

TEST_F(IntelliboxSession, AStationThatIsPulledOutInABatchEndsItAndTheSessionCloses) {
  fault("unplugged@4");
  EXPECT_EQ(read(1), 3);
  EXPECT_THROW(read(8), LinkError);
  EXPECT_NO_THROW(link->endcomm(true, true));
  EXPECT_EQ(link->commUseCount, 0);
}

}  // namespace
}  // namespace lokari
