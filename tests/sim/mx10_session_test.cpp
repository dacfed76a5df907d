// The link against the simulated MX10, behind its key and on the network.
#include "base/bytes.h"
#include "link/link_error.h"
#include "network_session_fixture.h"
#include "sim/mx10_station.h"

namespace lokari {
namespace {

class Mx10OnSimulator : public test::NetworkSession,
                        public ::testing::WithParamInterface<StationKind> {
 protected:
  Mx10OnSimulator() : NetworkSession(GetParam()) {}

  const sim::Mx10Station& mx10() { return dynamic_cast<sim::Mx10Station&>(*station); }
};

INSTANTIATE_TEST_SUITE_P(Both, Mx10OnSimulator,
                         ::testing::Values(StationKind::Mx10, StationKind::Mx10Ip));

TEST_P(Mx10OnSimulator, SwitchesTheProgrammingTrackOnAndOff) {
  open(true);
  EXPECT_TRUE(mx10().programmingTrack());
  link->endcomm(true, true);
  EXPECT_FALSE(mx10().programmingTrack());
  EXPECT_EQ(link->commUseCount, 0);
  open(false);
  EXPECT_FALSE(mx10().programmingTrack());
}

TEST_P(Mx10OnSimulator, WritesAndReadsEveryValue) {
  open(true);
  for (int value = 0; value < 256; ++value) {
    ASSERT_EQ(write(5, value), value);
    ASSERT_EQ(read(5), value);
  }
}

TEST_P(Mx10OnSimulator, ReachesTheFirstAndTheLastCv) {
  layout.onProgrammingTrack()->present = {{1, 1024}};
  open(true);
  for (const int cv : {1, 29, 255, 256, 257, 512, 1024}) {
    EXPECT_EQ(write(cv, 77), 77) << cv;
    EXPECT_EQ(read(cv), 77) << cv;
    EXPECT_EQ(layout.onProgrammingTrack()->stored(cv), 77) << cv;
  }
}

TEST_P(Mx10OnSimulator, ReadsAndWritesVehiclesOnTheMainTrack) {
  open(false);
  for (const int cv : {3, 255, 256, 257, 512, 1024}) {
    EXPECT_EQ(write(cv, 99, 1000), 99) << cv;
    EXPECT_EQ(layout.onMainTrack(1000)->stored(cv), 99) << cv;
    EXPECT_EQ(read(cv, 1000), 99) << cv;
  }
  EXPECT_EQ(read(8, 3), 97);
}

TEST_P(Mx10OnSimulator, FaultsOfTheTrackAreNoReplyAndTheNextReadGoesAhead) {
  open(true);
  for (const char* text : {"noack:2", "nodecoder:2", "shortcircuit:2", "busy:2"}) {
    fault(text);
    EXPECT_EQ(read(8), -1001) << text;
    EXPECT_EQ(read(29), 14) << text;
  }
  fault("wrongvalue");
  EXPECT_EQ(read(8), 98);
}

TEST_P(Mx10OnSimulator, LostOrBrokenAnswersAreMadeGoodByTheSecondChance) {
  open(true);
  for (const char* text : {"silence", "garbage", "short", "late:1:1500", "noack"}) {
    fault(text);
    EXPECT_EQ(read(8), 97) << text;
    EXPECT_EQ(read(29), 14) << text;
  }
  fault("silence:2");
  EXPECT_EQ(read(8), -1001);
}

TEST_P(Mx10OnSimulator, AStationThatDoesNotAnswerTheFarewellIsLeftWithoutHanging) {
  open(true);
  fault("silence:immer");
  link->endcomm(true, true);
  EXPECT_EQ(link->commUseCount, 0);
  EXPECT_FALSE(mx10().programmingTrack());
}

TEST_P(Mx10OnSimulator, ARefusedProgrammingTrackEndsTheSession) {
  fault("silence:immer");
  const QString text = link->initComm(true, true, true);
  EXPECT_EQ(text, QStringLiteral("Kann Kommunikationsschnittstelle nicht öffnen (1922)!"));
  EXPECT_EQ(link->commUseCount, 0);
}

class Mx10KeyOnSimulator : public test::NetworkSession {
 protected:
  Mx10KeyOnSimulator() : NetworkSession(StationKind::Mx10) {}
};

TEST_F(Mx10KeyOnSimulator, OpensItsPortWithoutHandshakingAt512000Baud) {
  settings.comPort = 4;
  open(false);
  EXPECT_EQ(line->opened.comPort, 4);
  EXPECT_EQ(line->opened.baudrate, 512000);
  EXPECT_EQ(line->opened.handshaking, Handshaking::None);
  link->FinishComm();
  EXPECT_FALSE(line->isOpen());
}

TEST_F(Mx10KeyOnSimulator, TheSettingOverridesTheRate) {
  settings.baudrate = 115200;
  open(false);
  EXPECT_EQ(line->opened.baudrate, 115200);
}

TEST_F(Mx10KeyOnSimulator, AnAnswerInPiecesIsPutTogether) {
  open(true);
  fault("split:2");
  EXPECT_EQ(read(8), 97);
  EXPECT_EQ(read(29), 14);
}

TEST_F(Mx10KeyOnSimulator, AKeyThatIsNotThereIsToldByItsCode) {
  line->failsToOpen = true;
  EXPECT_EQ(link->initComm(true, true, true),
            QStringLiteral("Kann Kommunikationsschnittstelle nicht öffnen (256)!"));
}

TEST_F(Mx10KeyOnSimulator, APulledKeyEndsTheJobAndTheSessionCloses) {
  open(true);
  fault("unplugged@1");
  EXPECT_EQ(read(1), 3);
  EXPECT_THROW(read(8), LinkError);
  EXPECT_NO_THROW(link->endcomm(true, true));
  EXPECT_EQ(link->commUseCount, 0);
}

class Mx10IpOnSimulator : public test::NetworkSession {
 protected:
  Mx10IpOnSimulator() : NetworkSession(StationKind::Mx10Ip) {}

  QByteArray lastSent() const { return socket->sent.last(); }

  const QByteArray opening = bytes({0x00, 0x00, 0x00, 0x00, 0x0A, 0x19, 0x86, 0xC2});
  const QByteArray closing = bytes({0x00, 0x00, 0x00, 0x00, 0x0A, 0x1D, 0x86, 0xC2});
};

TEST_F(Mx10IpOnSimulator, UsesTheStationsPortsAndAddress) {
  settings.ipAddr = QStringLiteral("192.168.000.111");
  open(false);
  EXPECT_EQ(socket->openedHost, QStringLiteral("192.168.0.111"));
  EXPECT_EQ(socket->openedRemotePort, 14520);
  EXPECT_EQ(socket->openedLocalPort, 14521);
  EXPECT_EQ(socket->sent.first(), opening);
}

TEST_F(Mx10IpOnSimulator, SomethingGoesOutAtLeastEvery30Seconds) {
  open(false);
  const auto& station10 = dynamic_cast<sim::Mx10Station&>(*station);
  for (int minute = 0; minute < 60; ++minute) {
    const qsizetype before = socket->sent.size();
    clock.advance(30'000);
    EXPECT_GT(socket->sent.size(), before);
    EXPECT_EQ(lastSent(), opening);
    clock.advance(30'000);
    EXPECT_TRUE(station10.isOpen());
  }
  EXPECT_EQ(read(8), 97);
}

TEST_F(Mx10IpOnSimulator, NothingGoesOutOnceClosed) {
  open(false);
  link->FinishComm();
  EXPECT_EQ(lastSent(), closing);
  EXPECT_FALSE(dynamic_cast<sim::Mx10Station&>(*station).isOpen());
  const qsizetype before = socket->sent.size();
  clock.advance(120'000);
  EXPECT_EQ(socket->sent.size(), before);
}

TEST_F(Mx10IpOnSimulator, WithoutAnAddressNothingIsOpened) {
  settings.ipAddr = QStringLiteral("000.000.000.000");
  EXPECT_EQ(link->initComm(true, true, true),
            QStringLiteral("Kann Kommunikationsschnittstelle nicht öffnen (257)!"));
  EXPECT_TRUE(socket->sent.isEmpty());
  EXPECT_EQ(link->openFailureReason(),
            QStringLiteral("In den Optionen steht \"000.000.000.000\", das ist keine IP-Adresse!"));
}

TEST_F(Mx10IpOnSimulator, WhatKeepsTheSessionShutIsTold) {
  socket->stateAfterOpen = 0;
  socket->faultAfterOpen = QStringLiteral("Der UDP-Port 14521 ist belegt!");
  EXPECT_NE(link->initComm(true, true, true), QString());
  EXPECT_EQ(link->openFailureReason(), socket->faultAfterOpen);
}

TEST_F(Mx10IpOnSimulator, AClosedPortEndsTheOpeningAtOnceAndIsTold) {
  dynamic_cast<test::SimSocket&>(*socket).unplug();
  clock.schedule(50, [&] { socket->refuse(); });
  const Millis start = clock.now();
  EXPECT_EQ(link->initComm(true, true, true),
            QStringLiteral("Kann Kommunikationsschnittstelle nicht öffnen (1901)!"));
  EXPECT_LE(clock.now() - start, 1100) << "the second of the farewell";
  EXPECT_EQ(
      link->openFailureReason(),
      QStringLiteral("Unter der Adresse 127.000.000.001 gibt es ein Gerät, aber keinen MX10!"));
}

TEST_F(Mx10IpOnSimulator, AClosedPortEndsAReadAtOnceWithTheToldCode) {
  open(false);
  dynamic_cast<test::SimSocket&>(*socket).unplug();
  clock.schedule(210, [&] { socket->refuse(); });
  const Millis start = clock.now();
  EXPECT_EQ(read(8), -1001);
  EXPECT_EQ(clock.now() - start, 210);
}

TEST_F(Mx10KeyOnSimulator, APortThatDoesNotOpenIsToldWithItsReason) {
  line->failsToOpen = true;
  EXPECT_EQ(link->initComm(true, true, true),
            QStringLiteral("Kann Kommunikationsschnittstelle nicht öffnen (256)!"));
  EXPECT_EQ(link->openFailureReason(), "Kein Gerät!");
}

TEST_F(Mx10IpOnSimulator, ASocketThatDoesNotOpenIsToldByItsCode) {
  socket->stateAfterOpen = 0;
  EXPECT_EQ(link->initComm(true, true, true),
            QStringLiteral("Kann Kommunikationsschnittstelle nicht öffnen (256)!"));
}

TEST_F(Mx10IpOnSimulator, AStationThatStartsAnewInBetweenGoesOn) {
  open(false);
  fault("unplugged");
  EXPECT_EQ(read(8), -1001);
  dynamic_cast<test::SimSocket&>(*socket).plugIn();
  EXPECT_EQ(read(8), 97);
}

TEST_F(Mx10IpOnSimulator, AChangeOfTheStationKindSaysGoodbye) {
  open(false);
  open(false);
  settings.baseUnit = StationKind::Z21Ip;
  link->initComm(true, true, false);
  EXPECT_TRUE(socket->sent.contains(closing));
}

}  // namespace
}  // namespace lokari
