// The link against the simulated station, both in virtual time: two codecs written apart must
// agree, and every fault must end in its code.
#include <gtest/gtest.h>

#include "link/link_error.h"
#include "link/station_link.h"
#include "sim/decoder_file.h"
#include "sim/station_table.h"
#include "support/memory_can.h"
#include "support/memory_socket.h"
#include "support/scripted_prompt.h"
#include "support/sim_line.h"

namespace lokari {
namespace {

class TamsSession : public ::testing::Test {
 protected:
  TamsSession() {
    settings.baseUnit = StationKind::TamsMc;
    settings.timeoutVal = 2;
    settings.delayFlag = false;
    EXPECT_EQ(sim::readDecoders(sim::builtInDecoders(), layout), "");
    EXPECT_EQ(link.initComm(true, true, true), "");
    link.commJob = CommJob::WriteProgTrack;
  }

  void fault(const char* text) { faults.add(*sim::faultFromText(QString::fromLatin1(text))); }

  test::VirtualClock clock;
  sim::Layout layout;
  sim::FaultPlan faults;
  std::unique_ptr<sim::Station> station =
      sim::stationByName(u"TAMSMC")->make({clock, layout, faults, 20});
  Settings settings;
  test::ScriptedPrompt prompt;
  test::SimLine line{clock, *station};
  test::MemorySocket socket{clock};
  test::MemoryCan can;
  StationLink link{settings, clock, prompt, {line, socket, can}};
};

TEST_F(TamsSession, WritesAndReadsEveryValue) {
  for (int value = 0; value < 256; ++value) {
    ASSERT_EQ(link.WriteCV(5, value, 3, 0), value);
    ASSERT_EQ(link.ReadCV(5, 3), value);
  }
}

TEST_F(TamsSession, ReachesTheFirstAndTheLastCv) {
  layout.onProgrammingTrack()->present = {{1, 1024}};
  for (const int cv : {1, 29, 255, 256, 257, 512, 1024}) {
    EXPECT_EQ(link.WriteCV(cv, 77, 3, 0), 77) << cv;
    EXPECT_EQ(link.ReadCV(cv, 3), 77) << cv;
  }
}

TEST_F(TamsSession, SpeaksEveryProgrammingMode) {
  layout.onProgrammingTrack()->store(5, 1);
  layout.onProgrammingTrack()->store(29, 2);
  EXPECT_EQ(link.ReadCV(5, 3), 1);
  link.progMode = 1;
  EXPECT_EQ(link.ReadCV(5, 3), 1);
  EXPECT_EQ(link.WriteCV(5, 9, 3, 0), 9);
  link.progMode = 2;
  EXPECT_EQ(link.ReadCV(5, 3), 2);
  EXPECT_EQ(link.WriteCV(5, 4, 3, 0), 4);
  EXPECT_EQ(layout.onProgrammingTrack()->stored(29), 4);
}

TEST_F(TamsSession, WritesOnTheMainTrack) {
  link.commJob = CommJob::WriteMain;
  EXPECT_EQ(link.WriteCV(5, 99, 1000, 0), 99);
  EXPECT_EQ(layout.onMainTrack(1000)->stored(5), 99);
  EXPECT_NE(layout.onProgrammingTrack()->stored(5), 99);
}

TEST_F(TamsSession, EveryFaultEndsInItsCodeAndTheNextReadGoesAhead) {
  const QList<std::pair<const char*, int>> rows{
      {"silence", -1001},   {"garbage", -1003},      {"short:1:2", -1001},    {"split", 97},
      {"late:1:3500", 97},  {"late:1:9000", 97},     {"late:1:11000", -1001}, {"noack", -1021},
      {"nodecoder", -1021}, {"shortcircuit", -1003}, {"busy", -1003},         {"wrongvalue", 98},
  };
  for (const auto& [text, result] : rows) {
    fault(text);
    EXPECT_EQ(link.ReadCV(8, 3), result) << text;
    EXPECT_EQ(link.ReadCV(29, 3), 14) << text;
  }
}

TEST_F(TamsSession, AStationThatIsPulledOutInABatchEndsItAndTheSessionCloses) {
  fault("unplugged@2");
  EXPECT_EQ(link.ReadCV(1, 3), 3);
  EXPECT_EQ(link.ReadCV(8, 3), 97);
  EXPECT_THROW(link.ReadCV(29, 3), LinkError);
  EXPECT_NO_THROW(link.endcomm(true, true));
  EXPECT_EQ(link.commUseCount, 0);
}

}  // namespace
}  // namespace lokari
