// The link against the simulated Z21.
#include "link/link_error.h"
#include "network_session_fixture.h"
#include "sim/z21_station.h"

namespace lokari {
namespace {

class Z21OnSimulator : public test::NetworkSession {
 protected:
  Z21OnSimulator() : NetworkSession(StationKind::Z21Ip) {}

  const sim::Z21Station& z21() { return dynamic_cast<sim::Z21Station&>(*station); }
};

TEST_F(Z21OnSimulator, LogsOnAndOff) {
  open(true);
  EXPECT_TRUE(z21().inUse());
  link->endcomm(true, true);
  EXPECT_FALSE(z21().inUse());
  EXPECT_EQ(link->commUseCount, 0);
}

TEST_F(Z21OnSimulator, WritesAndReadsEveryValue) {
  open(true);
  for (int value = 0; value < 256; ++value) {
    ASSERT_EQ(write(5, value), value);
    ASSERT_EQ(read(5), value);
  }
}

TEST_F(Z21OnSimulator, ReachesTheFirstAndTheLastCv) {
  layout.onProgrammingTrack()->present = {{1, 1024}};
  open(true);
  for (const int cv : {1, 29, 255, 256, 257, 512, 1024}) {
    EXPECT_EQ(write(cv, 77), 77) << cv;
    EXPECT_EQ(read(cv), 77) << cv;
    EXPECT_EQ(layout.onProgrammingTrack()->stored(cv), 77) << cv;
  }
}

TEST_F(Z21OnSimulator, ReadsAndWritesVehiclesOnTheMainTrack) {
  open(false);
  for (const int cv : {3, 255, 256, 257, 512, 1024}) {
    EXPECT_EQ(write(cv, 99, 1000), 99) << cv;
    EXPECT_EQ(layout.onMainTrack(1000)->stored(cv), 99) << cv;
    EXPECT_EQ(read(cv, 1000), 99) << cv;
  }
  EXPECT_EQ(read(8, 3), 97);
}

TEST_F(Z21OnSimulator, AValueThatDoesNotStickComesBack) {
  layout.onProgrammingTrack()->sticky = {5};
  const int held = layout.onProgrammingTrack()->stored(5);
  open(true);
  EXPECT_EQ(write(5, held + 1), held);
}

TEST_F(Z21OnSimulator, EveryFaultEndsInItsCodeAndTheNextReadGoesAhead) {
  open(true);
  const QList<std::pair<const char*, int>> rows{
      {"silence", 97},      {"silence:2", -1003}, {"garbage", 97},      {"garbage:2", -1003},
      {"short:2", -1003},   {"split:2", -1003},   {"late:1:3500", 97},  {"late:1:50000", 97},
      {"late:1:70000", 97}, {"noack", -1021},     {"nodecoder", -1021}, {"shortcircuit", -1018},
      {"busy", -1021},      {"wrongvalue", 98},
  };
  for (const auto& [text, result] : rows) {
    fault(text);
    EXPECT_EQ(read(8), result) << text;
    EXPECT_EQ(read(29), 14) << text;
  }
}

TEST_F(Z21OnSimulator, AStationThatStartsAnewInBetweenGoesOn) {
  open(true);
  fault("unplugged");
  EXPECT_EQ(read(8), -1003);
  dynamic_cast<test::SimSocket&>(*socket).plugIn();
  EXPECT_EQ(read(8), 97);
}

TEST_F(Z21OnSimulator, AStationThatIsGoneIsLeftWithoutHanging) {
  open(true);
  fault("unplugged");
  EXPECT_EQ(read(8), -1003);
  link->endcomm(true, true);
  EXPECT_EQ(link->commUseCount, 0);
  EXPECT_EQ(link->initComm(true, true, true),
            QStringLiteral("Kann Kommunikationsschnittstelle nicht öffnen (1)!"));
  link->FinishComm();
  EXPECT_EQ(link->commUseCount, 0);
}

}  // namespace
}  // namespace lokari
