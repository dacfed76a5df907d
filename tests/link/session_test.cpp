// Opening and closing a session, and waiting in it, on a serial station that needs no greeting.
#include "link/link_error.h"
#include "link/station_protocol.h"
#include "support/link_fixture.h"

namespace lokari {
namespace {

class SessionTest : public test::LinkFixture {
 protected:
  SessionTest() : LinkFixture(StationKind::TamsMc) {}
};

const QString kCannotOpen = QStringLiteral("Kann Kommunikationsschnittstelle nicht öffnen (0)!");

TEST_F(SessionTest, OpensThePortAtTheKindsRateAndHandshaking) {
  link.lastCvFailed = true;
  link.cancelRequested = true;

  EXPECT_EQ(timeOf([&] { EXPECT_EQ(link.initComm(true, true, true), ""); }), 1000);

  EXPECT_EQ(line.opened.comPort, 3);
  EXPECT_EQ(line.opened.baudrate, 2400);
  EXPECT_EQ(line.opened.handshaking, Handshaking::RequestToSend);
  EXPECT_TRUE(link.progTrack);
  EXPECT_FALSE(link.lastCvFailed);
  EXPECT_FALSE(link.cancelRequested);
  EXPECT_EQ(link.commUseCount, 1);
  EXPECT_TRUE(line.writes.isEmpty());
}

TEST_F(SessionTest, OpensForTheMainTrack) {
  link.progTrack = true;
  EXPECT_EQ(link.initComm(true, true, false), "");
  EXPECT_FALSE(link.progTrack);
}

TEST_F(SessionTest, ARateInTheSettingsOverridesTheKinds) {
  settings.baudrate = 19200;
  link.initComm(true, true, true);
  EXPECT_EQ(line.opened.baudrate, 19200);
}

TEST_F(SessionTest, BaudrateOf0OnKind6OpensAt57600AndAnotherOneOverridesIt) {
  settings.baseUnit = StationKind::LiUsb;
  EXPECT_EQ(link.initComm(true, true, true), "");
  EXPECT_EQ(line.opened.baudrate, 57600);
  link.FinishComm();
  settings.baudrate = 19200;
  EXPECT_EQ(link.initComm(true, true, true), "");
  EXPECT_EQ(line.opened.baudrate, 19200);
}

TEST_F(SessionTest, ASessionThatOpensHasNoReasonToTell) {
  line.failsToOpen = true;
  link.initComm(true, true, true);
  line.failsToOpen = false;
  EXPECT_EQ(link.initComm(true, true, true), "");
  EXPECT_EQ(link.openFailureReason(), "");
}

TEST_F(SessionTest, ThrowsAwayWhatStoodInTheInputBuffer) {
  clock.schedule(500, [&] { line.arrive("rest"); });
  link.initComm(true, true, true);
  EXPECT_EQ(link.getBufferCount(), 0);
}

TEST_F(SessionTest, APortThatFailsToOpenReadsWithTheNumber0AndLeavesTheCountRaised) {
  line.failsToOpen = true;
  EXPECT_EQ(link.initComm(true, true, true), kCannotOpen);
  EXPECT_EQ(link.openFailureReason(), "Kein Gerät!");
  EXPECT_EQ(link.commUseCount, 1);
  link.FinishComm();
  EXPECT_EQ(link.commUseCount, 0);
}

TEST_F(SessionTest, ASecondInitCommSucceedsWithoutTouchingThePort) {
  link.initComm(true, true, true);
  line.arrive("x");
  EXPECT_EQ(timeOf([&] { EXPECT_EQ(link.initComm(true, false, false), ""); }), 0);
  EXPECT_EQ(line.opens, 1);
  EXPECT_EQ(link.getBufferCount(), 1);
  EXPECT_EQ(link.commUseCount, 2);
}

TEST_F(SessionTest, ThePortSurvivesTheInnerFinishComm) {
  link.initComm(true, true, true);
  link.initComm(true, true, true);
  link.FinishComm();
  EXPECT_TRUE(line.isOpen());
  link.FinishComm();
  EXPECT_FALSE(line.isOpen());
  EXPECT_EQ(line.closes, 1);
}

TEST_F(SessionTest, FinishCommNeverCountsBelow0) {
  link.FinishComm();
  EXPECT_EQ(link.commUseCount, 0);
}

TEST_F(SessionTest, EndcommWaitsASecondDropsTheInputAndCloses) {
  link.initComm(true, true, true);
  line.arrive("rest");
  link.lastCvFailed = true;
  EXPECT_EQ(timeOf([&] { link.endcomm(true, true); }), 1000);
  EXPECT_FALSE(line.isOpen());
  EXPECT_FALSE(link.lastCvFailed);
  EXPECT_EQ(link.commUseCount, 0);
}

TEST_F(SessionTest, EndcommOfANestedSessionDropsTheInputAndLeavesThePortOpen) {
  link.initComm(true, true, true);
  link.initComm(true, true, true);
  line.arrive("rest");
  link.endcomm(true, true);
  EXPECT_TRUE(line.isOpen());
  EXPECT_EQ(link.getBufferCount(), 0);
  EXPECT_EQ(link.commUseCount, 1);
}

TEST_F(SessionTest, EndcommAfterTheDeviceVanishedStillClosesTheSession) {
  link.initComm(true, true, true);
  line.vanish();
  EXPECT_NO_THROW(link.endcomm(true, true));
  EXPECT_EQ(link.commUseCount, 0);
}

TEST_F(SessionTest, AChangeOfTheStationKindClosesTheOldOnesPort) {
  link.initComm(true, true, true);
  settings.baseUnit = StationKind::Mx10;
  link.initComm(true, true, true);
  EXPECT_FALSE(line.isOpen());
}

TEST_F(SessionTest, DelayOf0Lasts100Milliseconds) {
  EXPECT_EQ(timeOf([&] { link.Delay(0); }), 100);
}

TEST_F(SessionTest, DelayBelow0ReturnsAtOnce) {
  EXPECT_EQ(timeOf([&] { link.Delay(-1); }), 0);
}

TEST_F(SessionTest, DelayLastsItsSecondsAlsoAfterACancel) {
  link.cancelRequested = true;
  EXPECT_EQ(timeOf([&] { link.Delay(3); }), 3000);
  EXPECT_EQ(timeOf([&] { link.DelayMsec(55); }), 55);
}

TEST_F(SessionTest, EventsRunInsideADelay) {
  bool ran = false;
  clock.schedule(40, [&] { ran = true; });
  link.Delay(0);
  EXPECT_TRUE(ran);
}

TEST_F(SessionTest, AWaitEndsWithTheByteItWants) {
  link.initComm(true, true, true);
  clock.schedule(100, [&] { line.arrive("ab"); });
  clock.schedule(300, [&] { line.arrive("c"); });
  EXPECT_EQ(timeOf([&] { link.WaitForData(3); }), 300);
  EXPECT_EQ(link.getBufferCount(), 3);
}

TEST_F(SessionTest, AWaitForNothingEndsAtOnce) {
  link.initComm(true, true, true);
  EXPECT_EQ(timeOf([&] { link.WaitForData(0); }), 0);
}

TEST_F(SessionTest, ATimeoutOf1GivesUpAfterOneToTwoSeconds) {
  settings.timeoutVal = 1;
  link.initComm(true, true, true);  // ends on a whole second
  EXPECT_EQ(timeOf([&] { link.WaitForData(1); }), 2000);
  clock.advance(700);
  EXPECT_EQ(timeOf([&] { link.WaitForData(1); }), 1300);
  clock.advance(999);
  EXPECT_EQ(timeOf([&] { link.WaitForData(1); }), 1001);
}

TEST_F(SessionTest, AWaitMayHaveALimitOfItsOwn) {
  link.initComm(true, true, true);
  EXPECT_EQ(timeOf([&] { link.WaitForData(1, 60); }), 61000);
}

TEST_F(SessionTest, ACancelEndsAWait) {
  link.initComm(true, true, true);
  clock.schedule(250, [&] { link.cancelRequested = true; });
  EXPECT_EQ(timeOf([&] { link.WaitForData(1); }), 250);
}

TEST_F(SessionTest, AnEventThatIsDueRunsBeforeAWaitLooks) {
  link.initComm(true, true, true);
  clock.schedule(0, [&] { line.arrive("x"); });
  EXPECT_EQ(timeOf([&] { link.WaitForData(1); }), 0);
}

TEST_F(SessionTest, WhatIsDueRunsOnceMoreOnTheWayOutOfAWait) {
  link.initComm(true, true, true);
  bool ran = false;
  clock.schedule(100, [&] { line.arrive("x"); });
  clock.schedule(100, [&] { ran = true; });
  link.WaitForData(1);
  EXPECT_TRUE(ran);
}

TEST_F(SessionTest, ADeviceThatVanishesDuringAWaitEndsItWithAGermanMessage) {
  link.initComm(true, true, true);
  clock.schedule(300, [&] { line.vanish(); });
  try {
    link.WaitForData(1);
    FAIL() << "the wait went on";
  } catch (const LinkError& error) {
    EXPECT_EQ(error.message(), "Die Schnittstelle ist nicht mehr da!");
  }
  EXPECT_EQ(clock.now(), 1300);
}

TEST_F(SessionTest, ASessionAfterAVanishedDeviceOpensThePortAgain) {
  link.initComm(true, true, true);
  line.vanish();
  link.FinishComm();
  line.comeBack();
  EXPECT_EQ(link.initComm(true, true, true), "");
  EXPECT_EQ(line.opens, 2);
}

TEST_F(SessionTest, ACancelThatStaysIsStillThereBehindAReopening) {
  EXPECT_EQ(link.initComm(true, true, false), "");
  for (const bool stays : {false, true}) {
    line.close();
    link.cancelStays = stays;
    link.cancelRequested = true;
    EXPECT_EQ(link.reopen(), "");
    EXPECT_EQ(link.cancelRequested, stays);
    EXPECT_EQ(link.commUseCount, 1);
  }
}

TEST_F(SessionTest, GetAddrIndexOfAStationWithoutATableIsTheAddressAndWritesNothing) {
  link.initComm(true, true, true);
  EXPECT_EQ(link.getAddrIndex(100), 100);
  EXPECT_EQ(link.getAddrIndex(1000), 1000);
  EXPECT_TRUE(line.writes.isEmpty());
}

}  // namespace
}  // namespace lokari
