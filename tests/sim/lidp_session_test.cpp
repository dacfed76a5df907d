// The link against the simulated Lenz decoder programmer.
#include "link/link_error.h"
#include "session_fixture.h"

namespace lokari {
namespace {

class LidpSession : public test::SerialSession {
 protected:
  LidpSession() : SerialSession(StationKind::LiDp) {}
};

TEST_F(LidpSession, WritesAndReadsEveryValue) {
  for (int value = 0; value < 256; ++value) {
    ASSERT_EQ(write(5, value), value);
    ASSERT_EQ(read(5), value);
  }
}

TEST_F(LidpSession, ReachesTheFirstAndTheLastCv) {
  layout.onProgrammingTrack()->present = {{1, 1024}};
  for (const int cv : {1, 29, 255, 256, 257, 512, 1024}) {
    EXPECT_EQ(write(cv, 77), 77) << cv;
    EXPECT_EQ(read(cv), 77) << cv;
    EXPECT_EQ(layout.onProgrammingTrack()->stored(cv), 77) << cv;
  }
}

TEST_F(LidpSession, AMainTrackWriteGoesToTheProgrammingTrack) {
  link->commJob = CommJob::WriteMain;
  EXPECT_EQ(write(5, 99, 1000), 99);
  EXPECT_EQ(layout.onProgrammingTrack()->stored(5), 99);
  EXPECT_NE(layout.onMainTrack(1000)->stored(5), 99);
}

TEST_F(LidpSession, EveryFaultEndsInItsCodeAndTheNextReadGoesAhead) {
  const QList<std::pair<const char*, int>> rows{
      {"silence", 97},      {"silence:2", -1001},    {"garbage", -1002},  {"short:1:3", 97},
      {"short:2:3", -1001}, {"split", 97},           {"late:1:2500", 97}, {"noack", -1021},
      {"nodecoder", -1021}, {"shortcircuit", -1002}, {"busy", -1002},     {"wrongvalue", 98},
  };
  for (const auto& [text, result] : rows) {
    fault(text);
    EXPECT_EQ(read(8), result) << text;
    EXPECT_EQ(read(29), 14) << text;
  }
}

TEST_F(LidpSession, AStationThatIsPulledOutInABatchEndsItAndTheSessionCloses) {
  fault("unplugged@2");
  EXPECT_EQ(read(1), 3);
  EXPECT_EQ(read(8), 97);
  EXPECT_THROW(read(29), LinkError);
  EXPECT_NO_THROW(link->endcomm(true, true));
  EXPECT_EQ(link->commUseCount, 0);
}

}  // namespace
}  // namespace lokari
