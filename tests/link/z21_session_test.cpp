#include "link/cv_result.h"
#include "link/z21_fixture.h"

namespace lokari {
namespace {

class Z21Session : public test::Z21Fixture {};

TEST_F(Z21Session, LogsOnAtTheStationsPort) {
  openSession(true);
  EXPECT_EQ(udp.openedHost, QStringLiteral("192.168.000.111"));
  EXPECT_EQ(udp.openedRemotePort, 21105);
  EXPECT_EQ(udp.openedLocalPort, 0);
  EXPECT_TRUE(station().z21Connected);
  EXPECT_TRUE(z21.progTrack);
}

TEST_F(Z21Session, PausesBetweenTheMessagesAndAfterTheAnswer) {
  socket.expect(powerOn);
  Millis asked = 0;
  socket.expect(askSerialNumber).then([&] { asked = clock.now(); }).answer(serialNumber);
  EXPECT_EQ(timeOf([&] { EXPECT_EQ(z21.initComm(true, true, false), QString()); }), 1200);
  EXPECT_EQ(asked, 100);
}

TEST_F(Z21Session, ThrowsTheFirstDatagramAwayWhateverItIs) {
  socket.expect(powerOn).answer(shortCircuit);
  socket.expect(askSerialNumber);
  EXPECT_EQ(z21.initComm(true, true, true), QString());
  EXPECT_TRUE(station().z21LastReply.isEmpty());
  EXPECT_EQ(udp.takeDatagram(), QByteArray());
}

TEST_F(Z21Session, ASocketThatDoesNotOpenIsTriedForTwoSeconds) {
  udp.stateAfterOpen = 7;
  QString text;
  EXPECT_EQ(timeOf([&] { text = z21.initComm(true, true, true); }), 2000);
  EXPECT_EQ(text, QStringLiteral("Kann Kommunikationsschnittstelle nicht öffnen (7)!"));
  EXPECT_EQ(z21.commUseCount, 1);
}

TEST_F(Z21Session, ASilentStationFailsWithTheSocketsState) {
  socket.expect(powerOn);
  socket.expect(askSerialNumber);
  QString text;
  EXPECT_EQ(timeOf([&] { text = z21.initComm(true, true, true); }), 1100);
  EXPECT_EQ(text, QStringLiteral("Kann Kommunikationsschnittstelle nicht öffnen (1)!"));
  EXPECT_EQ(z21.commUseCount, 1);
}

TEST_F(Z21Session, IsTriedAnewAfterAFailure) {
  socket.expect(powerOn);
  socket.expect(askSerialNumber);
  EXPECT_NE(z21.initComm(true, true, true), QString());
  openSession(true);
  EXPECT_TRUE(station().z21Connected);
}

TEST_F(Z21Session, TheCancelButtonEndsTheWaitForTheStation) {
  socket.expect(powerOn);
  socket.expect(askSerialNumber).then([&] { z21.cancelRequested = true; }, 50);
  EXPECT_EQ(timeOf([&] { EXPECT_NE(z21.initComm(true, true, true), QString()); }), 200);
}

TEST_F(Z21Session, ANestedOneSendsNothing) {
  openSession(false);
  EXPECT_EQ(z21.initComm(true, true, false), QString());
  EXPECT_EQ(z21.commUseCount, 2);
}

TEST_F(Z21Session, TheSocketStaysOpenForTheOthersAndTheLastOneLogsOff) {
  openSession(false);
  EXPECT_EQ(z21.initComm(true, true, false), QString());
  z21.FinishComm();
  EXPECT_TRUE(station().z21Connected);
  socket.expect(logOff);
  z21.FinishComm();
  EXPECT_FALSE(station().z21Connected);
  EXPECT_EQ(udp.state(), 0);
}

TEST_F(Z21Session, TheFarewellOfTheProgrammingTrackTurnsThePowerOnAndLogsOff) {
  openSession(true);
  socket.expect(powerOn).answer(powerIsOn);
  socket.expect(logOff);
  z21.commJob = CommJob::ReadProgTrack;
  EXPECT_EQ(timeOf([&] { z21.endcomm(true, true); }), 1000 + 100 + 1000 + 100);
  EXPECT_FALSE(station().z21Connected);
  EXPECT_EQ(station().z21LastReply, powerIsOn);
  EXPECT_EQ(station().z21ReplyLen, 0);
  EXPECT_EQ(udp.state(), 0);
  EXPECT_EQ(z21.commUseCount, 0);
}

TEST_F(Z21Session, TheFarewellOfTheMainTrackOnlyLogsOff) {
  openSession(false);
  socket.expect(logOff);
  z21.commJob = CommJob::WriteMain;
  EXPECT_EQ(timeOf([&] { z21.endcomm(true, false); }), 1100);
}

TEST_F(Z21Session, AFarewellThatNobodyHearsStillCloses) {
  openSession(true);
  udp.close();
  z21.endcomm(true, true);
  EXPECT_FALSE(station().z21Connected);
  EXPECT_EQ(z21.commUseCount, 0);
}

TEST_F(Z21Session, ASocketThatClosesByItselfIsNoticed) {
  openSession(false);
  udp.onClosed();
  EXPECT_FALSE(station().z21Connected);
  openSession(false);
  EXPECT_TRUE(station().z21Connected);
}

TEST_F(Z21Session, WhileNothingIsAwaitedADatagramStaysUntilTheNextArrivalFindsSomethingAwaited) {
  socket.expect(powerOn).answer(powerIsOn);
  socket.expect(askSerialNumber).answer(serialNumber);
  ASSERT_EQ(z21.initComm(true, true, true), QString());
  EXPECT_TRUE(station().z21LastReply.isEmpty());

  // The serial number is what is asked for now, but only an arrival looks at it.
  station().z21Wanted = bytes({0x08, 0x00, 0x10, 0x00});
  z21.WaitForData(8);
  EXPECT_EQ(station().z21ReplyLen, 0);
  udp.arrive(powerIsOn);
  EXPECT_EQ(station().z21ReplyLen, 8);
  EXPECT_EQ(station().z21LastReply, serialNumber);
}

TEST_F(Z21Session, AnAnswerLongerThanAskedForEndsTheWait) {
  openSession(false);
  station().z21Wanted = bytes({0x08, 0x00});
  clock.schedule(30, [&] { udp.arrive(serialNumber); });
  EXPECT_EQ(timeOf([&] { z21.WaitForData(7); }), 30);
  EXPECT_EQ(z21.getBufferCount(), 8);
}

TEST_F(Z21Session, MessagesThatAreNoneAreRefusedBeforeSending) {
  openSession(false);
  EXPECT_THROW(station().z21Send(u"0X"), LinkError);
  EXPECT_THROW(station().z21Send(QString(132, u'0')), LinkError);
  station().z21Send(u"  ");
}

TEST_F(Z21Session, NothingCanBeSentOnAClosedSocket) {
  EXPECT_THROW(station().z21Send(u"0400"), LinkError);
}

TEST_F(Z21Session, AClosedPortEndsTheLogOnAndIsTold) {
  socket.expect(powerOn).then([&] { socket.refuse(); }, 2);
  socket.expect(askSerialNumber).then([&] { socket.refuse(); }, 2);
  Millis taken = timeOf([&] {
    EXPECT_EQ(z21.initComm(true, true, true),
              QStringLiteral("Kann Kommunikationsschnittstelle nicht öffnen (1)!"));
  });
  EXPECT_LE(taken, 300);
  EXPECT_EQ(z21.openFailureReason(),
            QStringLiteral("Unter der Adresse 192.168.000.111 gibt es ein Gerät, aber keine Z21!"));
  socket.expect(logOff);
  z21.FinishComm();
}

TEST_F(Z21Session, WhatKeepsTheSocketShutIsTold) {
  socket.stateAfterOpen = 0;
  socket.faultAfterOpen = QStringLiteral("In den Optionen steht keine IP-Adresse!");
  EXPECT_EQ(z21.initComm(true, true, true),
            QStringLiteral("Kann Kommunikationsschnittstelle nicht öffnen (0)!"));
  EXPECT_EQ(z21.openFailureReason(), socket.faultAfterOpen);
}

}  // namespace
}  // namespace lokari
