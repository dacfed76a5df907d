// Sessions with the MX1 and its CVs, both kinds with the line protocol.
#include "link/link_error.h"
#include "support/link_fixture.h"

namespace lokari {
namespace {

class Mx1TextTest : public test::LinkFixture {
 protected:
  explicit Mx1TextTest(StationKind kind = StationKind::Mx1) : LinkFixture(kind) {}

  void SetUp() override {
    line.expect("\r");
    link.commJob = CommJob::ReadProgTrack;
    ASSERT_EQ(link.initComm(true, true, true), "");
  }

  int write(int cv, int value, int address = 3) { return link.WriteCV(cv, value, address, 0); }
};

class Mx1TextKinds : public Mx1TextTest, public ::testing::WithParamInterface<StationKind> {
 protected:
  Mx1TextKinds() : Mx1TextTest(GetParam()) {}
};

INSTANTIATE_TEST_SUITE_P(Both, Mx1TextKinds,
                         ::testing::Values(StationKind::Mx1, StationKind::Mx1V25));

const QString kNoOrWrong = QStringLiteral("Keine / falsche Antwort vom Basisgerät!");

// -- session

TEST_P(Mx1TextKinds, OpenAt9600AndWakeTheStation) {
  EXPECT_EQ(line.opened.comPort, 3);
  EXPECT_EQ(line.opened.baudrate, 9600);
  EXPECT_EQ(line.opened.handshaking,
            GetParam() == StationKind::Mx1 ? Handshaking::None : Handshaking::RequestToSend);
  EXPECT_EQ(line.sent(), "\r");
  EXPECT_EQ(clock.now(), 1000);
}

TEST_P(Mx1TextKinds, ReadAndWriteAlike) {
  line.expect("QN1D\r").answer("QN001D06\r");
  EXPECT_EQ(link.ReadCV(29, 3), 6);
  link.commJob = CommJob::WriteProgTrack;
  line.expect("RN1D0E\r").answer("QN001D0E\r");
  EXPECT_EQ(write(29, 14), 14);
  link.commJob = CommJob::WriteMain;
  link.pomAddr = 3;
  line.expect("L031403EC1C06\r");
  EXPECT_EQ(write(29, 6), 6);
}

TEST_F(Mx1TextTest, WhatTheStationSaysWhenItWakesUpIsThrownAway) {
  link.FinishComm();
  line.expect("\r").answer("MX1 bereit\r", 500);
  EXPECT_EQ(link.initComm(true, true, true), "");
  EXPECT_EQ(link.getBufferCount(), 0);
}

TEST_F(Mx1TextTest, ANestedSessionDoesNotWakeTheStationAgain) {
  EXPECT_EQ(link.initComm(true, false, false), "");
  EXPECT_EQ(line.opens, 1);
  link.FinishComm();
  EXPECT_TRUE(line.isOpen());
}

TEST_F(Mx1TextTest, TheFarewellLeavesProgrammingWithTwoCommandsOneSecondApart) {
  line.expect("REN\r").expect("RE\r");
  link.endcomm(true, true);
  ASSERT_EQ(line.writes.size(), 3);
  EXPECT_EQ(line.writes[1].at, 2000);
  EXPECT_EQ(line.writes[2].at, 3000);
  EXPECT_FALSE(line.isOpen());
}

TEST_F(Mx1TextTest, TheFarewellOfAProgrammingTrackWriteIsTheSame) {
  link.commJob = CommJob::WriteProgTrack;
  line.expect("REN\r").expect("RE\r");
  link.endcomm(true, true);
}

TEST_F(Mx1TextTest, WithoutLeaveModeTheFarewellIsSilent) {
  link.commJob = CommJob::TestComm;
  link.endcomm(false, false);
  EXPECT_EQ(line.sent(), "\r");
  EXPECT_FALSE(line.isOpen());
}

TEST_F(Mx1TextTest, ARefusedMainTrackAddressIsReportedByTheFarewell) {
  link.commJob = CommJob::WriteMain;
  link.pomAddr = 3;
  line.expect("L031403EC1C06\r").answer("??\r", 300);
  EXPECT_EQ(write(29, 6), 6);
  EXPECT_TRUE(prompt.shown.isEmpty());
  link.endcomm(true, false);
  EXPECT_EQ(prompt.shown,
            QStringList{QStringLiteral("Adresse gesperrt - Programmierung nicht möglich!")});
  EXPECT_FALSE(line.isOpen());
}

TEST_F(Mx1TextTest, AnAcceptedMainTrackWriteEndsWithoutABoxAndWithoutFarewell) {
  link.commJob = CommJob::WriteMain;
  link.pomAddr = 3;
  line.expect("L031403EC1C06\r").answer("L??\r");
  write(29, 6);
  link.endcomm(true, false);
  EXPECT_TRUE(prompt.shown.isEmpty());
  EXPECT_EQ(line.writes.size(), 2);
}

TEST_F(Mx1TextTest, QuestionMarksAfterAnotherJobShowNoBox) {
  line.expect("REN\r").answer("??\r").expect("RE\r");
  link.endcomm(true, true);
  EXPECT_TRUE(prompt.shown.isEmpty());
}

// -- reading

TEST_F(Mx1TextTest, ReadsCv8WithALeadingZeroAndCv256WithThreeDigits) {
  line.expect("QN08\r").answer("QN000891\r");
  EXPECT_EQ(link.ReadCV(8, 3), 145);
  line.expect("QN100\r").answer("QN00100A\r");
  EXPECT_EQ(link.ReadCV(256, 3), 10);
}

TEST_F(Mx1TextTest, AReadEndsWithItsReply) {
  line.expect("QN1D\r").answer("QN001D06\r", 70);
  EXPECT_EQ(timeOf([&] { link.ReadCV(29, 3); }), 70);
  EXPECT_TRUE(view.statuses.isEmpty());
}

TEST_F(Mx1TextTest, TheSlowOptionAddsExactlyOneSecond) {
  settings.delayFlag = true;
  line.expect("QN1D\r").answer("QN001D06\r", 70);
  EXPECT_EQ(timeOf([&] { link.ReadCV(29, 3); }), 1070);
}

TEST_F(Mx1TextTest, AReadClearsTheFailureOfTheCvBefore) {
  link.lastCvFailed = true;
  line.expect("QN1D\r").answer("QN001D06\r");
  link.ReadCV(29, 3);
  EXPECT_FALSE(link.lastCvFailed);
}

TEST_F(Mx1TextTest, AReplyThatWaitsBeforeTheQuestionIsNotTakenForItsAnswer) {
  line.arrive("QN001C07\r");
  line.expect("QN1D\r").answer("QN001D06\r");
  EXPECT_EQ(link.ReadCV(29, 3), 6);
}

TEST_P(Mx1TextKinds, AStrayMessageDoesNotShiftTheRestOfABatchByOneCv) {
  const QByteArray stray("A0310200000\r");
  line.expect("QN01\r").answer("QN000103\r").answer(stray, 5);
  line.expect("QN02\r").answer("QN000204\r");
  line.expect("QN03\r").answer(stray).answer("QN000305\r", 300);
  line.expect("QN04\r").answer("QN000406\r");
  line.expect("QN05\r").answer("QN000507\r");
  QList<int> results;
  for (const int cv : {1, 2, 3, 4, 5}) {
    results << link.ReadCV(cv, 3);
    clock.advance(20);
  }
  // The one that the stray message came in front of is lost, as a wrong reply.
  EXPECT_EQ(results, (QList<int>{3, 4, -1003, 6, 7}));
}

TEST_F(Mx1TextTest, ALateReplyIsNotTakenForTheNextCv) {
  line.expect("QN01\r").expect("QN01\r").answer("QN000103\r", 4500);
  EXPECT_EQ(link.ReadCV(1, 3), -1001);
  line.expect("QN1D\r").answer("QN001D06\r", 1500);
  EXPECT_EQ(link.ReadCV(29, 3), 6);
}

TEST_F(Mx1TextTest, TheSecondReplyToAQuestionThatWentOutTwiceIsNotTakenForTheNextCv) {
  line.expect("QN01\r").answer("QN000103\r", 3500);
  line.expect("QN01\r").answer("QN000103\r", 1600);
  EXPECT_EQ(link.ReadCV(1, 3), 3);
  line.expect("QN1D\r").answer("QN001D06\r", 500);
  EXPECT_EQ(link.ReadCV(29, 3), 6);
}

TEST_F(Mx1TextTest, OnlyALateReplyIsNoReply) {
  line.expect("QN01\r").expect("QN01\r").answer("QN000103\r", 4500);
  EXPECT_EQ(link.ReadCV(1, 3), -1001);
  line.expect("QN1D\r");
  EXPECT_EQ(link.ReadCV(29, 3), -1001);
}

TEST_F(Mx1TextTest, AStationThatNamesNoCvIsBelievedAsBefore) {
  for (const char* reply : {"QN00xx06\r", "QN000006\r", "QN00FF06\r"}) {
    line.expect("QN1D\r").answer(reply);
    EXPECT_EQ(link.ReadCV(29, 3), 6) << reply;
    line.expect("QN01\r").answer(reply);
    EXPECT_EQ(link.ReadCV(1, 3), 6) << reply;
  }
}

TEST_F(Mx1TextTest, ARefusalAmongWhatIsDroppedIsStillToldByTheFarewell) {
  link.commJob = CommJob::WriteMain;
  link.pomAddr = 3;
  line.expect("L031403EC1C06\r").answer("Z20\r??\r", 5);
  write(29, 6);
  clock.advance(100);
  line.expect("E03E8\r").answer("E8103E8\r");
  EXPECT_EQ(link.getAddrIndex(1000), 129);
  link.endcomm(true, false);
  EXPECT_EQ(prompt.shown,
            QStringList{QStringLiteral("Adresse gesperrt - Programmierung nicht möglich!")});
}

TEST_F(Mx1TextTest, ARefusedSwitchingIsNoRefusedAddress) {
  link.commJob = CommJob::WriteMain;
  link.pomAddr = 3;
  line.expect("L031403EC1C06\r").answer("???\r", 5);
  write(29, 6);
  link.endcomm(true, false);
  EXPECT_TRUE(prompt.shown.isEmpty());
}

TEST_F(Mx1TextTest, TheSecondChanceDropsTheInputAndAsksAgain) {
  line.expect("QN1D\r").answer("noise").expect("QN1D\r").answer("QN001D06\r");
  // A wait of 3 s, the reply after 10 ms, a pause of 1 s.
  EXPECT_EQ(timeOf([&] { EXPECT_EQ(link.ReadCV(29, 3), 6); }), 4010);
}

TEST_F(Mx1TextTest, SilenceIsNoReplyAfterTwoAttempts) {
  line.expect("QN1D\r").expect("QN1D\r");
  EXPECT_EQ(link.ReadCV(29, 3), -1001);
  EXPECT_EQ(view.statuses, QStringList{kNoOrWrong});
  EXPECT_TRUE(line.played());
}

TEST_F(Mx1TextTest, ACancelInTheFirstWaitEndsTheReadAtOnce) {
  line.expect("QN1D\r").then([&] { link.cancelRequested = true; }, 500);
  EXPECT_EQ(timeOf([&] { EXPECT_EQ(link.ReadCV(29, 3), -1002); }), 500);
  line.expect("REN\r").expect("RE\r");
  link.endcomm(true, true);
}

TEST_F(Mx1TextTest, ACancelInTheSecondWaitIsACancelToo) {
  line.expect("QN1D\r").expect("QN1D\r").then([&] { link.cancelRequested = true; }, 500);
  EXPECT_EQ(link.ReadCV(29, 3), -1002);
}

TEST_F(Mx1TextTest, AReadWithAnotherStatusIsTriedOnceMore) {
  line.expect("QN1D\r").answer("QN051D00\r").expect("QN1D\r").answer("QN001D06\r");
  // 10 ms, a second before the repeat, 10 ms, the second chance's pause.
  EXPECT_EQ(timeOf([&] { EXPECT_EQ(link.ReadCV(29, 3), 6); }), 2020);
}

TEST_F(Mx1TextTest, AReadWithAnotherStatusTwiceIsMinusTheStatus) {
  line.expect("QN1D\r").answer("QN051D00\r").expect("QN1D\r").answer("QN061D00\r");
  EXPECT_EQ(link.ReadCV(29, 3), -6);
}

TEST_F(Mx1TextTest, AStatusAfterTheSecondChanceStillHasItsExtraAttempt) {
  line.expect("QN1D\r");
  line.expect("QN1D\r").answer("QN051D00\r");
  line.expect("QN1D\r").answer("QNFF1D00\r");
  EXPECT_EQ(link.ReadCV(29, 3), -255);
}

TEST_F(Mx1TextTest, SilenceAfterAStatusIsNoReply) {
  line.expect("QN1D\r").answer("QN051D00\r").expect("QN1D\r");
  EXPECT_EQ(link.ReadCV(29, 3), -1001);
}

TEST_F(Mx1TextTest, ACancelBeforeTheExtraAttemptSendsNothingMore) {
  line.expect("QN1D\r").answer("QN051D00\r").then([&] { link.cancelRequested = true; }, 200);
  EXPECT_EQ(link.ReadCV(29, 3), -1002);
}

TEST_F(Mx1TextTest, AReplyWithoutQnIsAWrongReply) {
  line.expect("QN1D\r").answer("RN001D06\r");
  EXPECT_EQ(link.ReadCV(29, 3), -1003);
}

TEST_F(Mx1TextTest, AStatusOrValueThatIsNoNumberIsAWrongReply) {
  line.expect("QN1D\r").answer("QN001Dx6\r");
  EXPECT_EQ(link.ReadCV(29, 3), -1003);
  line.expect("QN1D\r").answer("QN??1D06\r").expect("QN1D\r").answer("QN??1D06\r");
  EXPECT_EQ(link.ReadCV(29, 3), -1003);
}

TEST_F(Mx1TextTest, AReplyMayArriveByteByByte) {
  line.expect("QN1D\r");
  for (const char c : QByteArray("QN001D06\r")) line.answer(QByteArray(1, c), 4);
  EXPECT_EQ(link.ReadCV(29, 3), 6);
  EXPECT_EQ(link.getBufferCount(), 0);
}

TEST_F(Mx1TextTest, AReplyCutAtEveryByteIsNoReplyAndTheNextReadGoesOn) {
  const QByteArray whole("QN001D06\r");
  for (qsizetype size = 0; size < whole.size(); ++size) {
    line.expect("QN1D\r").answer(whole.left(size)).expect("QN1D\r").answer(whole.left(size));
    EXPECT_EQ(link.ReadCV(29, 3), -1001) << size;
    line.expect("QN01\r").answer("QN000103\r");
    EXPECT_EQ(link.ReadCV(1, 3), 3) << size;
  }
}

TEST_F(Mx1TextTest, OfTwoRepliesAtOnceTheFirstCountsAndBothAreGone) {
  line.expect("QN1D\r").answer("QN001D06\rQN001D07\r");
  EXPECT_EQ(link.ReadCV(29, 3), 6);
  EXPECT_EQ(link.getBufferCount(), 0);
}

TEST_F(Mx1TextTest, NoiseBeforeAReplyIsAWrongReplyAndTheNextReadGoesOn) {
  line.expect("QN1D\r").answer("\r\rQN001D06\r");
  EXPECT_EQ(link.ReadCV(29, 3), -1003);
  line.expect("QN01\r").answer("QN000103\r\n\n");
  EXPECT_EQ(link.ReadCV(1, 3), 3);
  EXPECT_EQ(link.getBufferCount(), 0);
}

TEST_F(Mx1TextTest, AVanishedPortEndsTheReadAndTheSessionCloses) {
  line.expect("QN1D\r").then([&] { line.vanish(); }, 200);
  EXPECT_THROW(link.ReadCV(29, 3), LinkError);
  link.endcomm(true, true);
  EXPECT_EQ(link.commUseCount, 0);
}

// -- writing

TEST_F(Mx1TextTest, AWriteGivesTheStationsValue) {
  link.commJob = CommJob::WriteProgTrack;
  line.expect("RN1D06\r").answer("QN001D02\r");
  EXPECT_EQ(write(29, 6), 2);
}

TEST_F(Mx1TextTest, AWriteWithAnotherStatusIsNotRepeated) {
  link.commJob = CommJob::WriteProgTrack;
  line.expect("RN1D06\r").answer("QN051D06\r");
  EXPECT_EQ(timeOf([&] { EXPECT_EQ(write(29, 6), -5); }), 10);
}

TEST_F(Mx1TextTest, AWriteHasItsSecondChanceOnSilence) {
  link.commJob = CommJob::WriteProgTrack;
  line.expect("RN1D06\r").expect("RN1D06\r").answer("QN001D06\r");
  EXPECT_EQ(write(29, 6), 6);
  line.expect("RN1D06\r").expect("RN1D06\r");
  EXPECT_EQ(write(29, 6), -1001);
}

TEST_F(Mx1TextTest, AWriteWithoutQnIsAWrongReply) {
  link.commJob = CommJob::WriteProgTrack;
  line.expect("RN1D06\r").answer("RN001D06\r");
  EXPECT_EQ(write(29, 6), -1003);
}

TEST_F(Mx1TextTest, ACancelledWriteSendsNoSecondTime) {
  link.commJob = CommJob::WriteProgTrack;
  line.expect("RN1D06\r").then([&] { link.cancelRequested = true; }, 100);
  EXPECT_EQ(write(29, 6), -1002);
}

TEST_F(Mx1TextTest, AMainTrackWriteReturnsAtOnce) {
  link.commJob = CommJob::WriteMain;
  link.pomAddr = 3;
  line.expect("L031403EC1C06\r");
  EXPECT_EQ(timeOf([&] { EXPECT_EQ(write(29, 6), 6); }), 0);
}

TEST_F(Mx1TextTest, Address1000WithIndex129GoesOutInTheLongForm) {
  link.commJob = CommJob::WriteMain;
  link.pomAddr = 129;
  line.expect("L8115C3E8EC1C06\r");
  EXPECT_EQ(write(29, 6, 1000), 6);
}

TEST_F(Mx1TextTest, EveryJobButTheProgrammingTrackWriteGoesToTheMainTrack) {
  link.commJob = CommJob::ReadProgTrack;
  link.pomAddr = 3;
  line.expect("L031403EC1E01\r");
  EXPECT_EQ(write(31, 1), 1);
}

// -- indices of long addresses

TEST_F(Mx1TextTest, AnAddressBelow128IsItsOwnIndexAndNothingIsSent) {
  EXPECT_EQ(link.getAddrIndex(100), 100);
  EXPECT_EQ(link.getAddrIndex(127), 127);
  EXPECT_EQ(line.writes.size(), 1);
}

TEST_F(Mx1TextTest, AnAddressFrom128OnIsAskedFor) {
  line.expect("E03E8\r").answer("E8103E8\r");
  EXPECT_EQ(link.getAddrIndex(1000), 129);
  line.expect("E0080\r").answer("E800080\r");
  EXPECT_EQ(link.getAddrIndex(128), 128);
}

TEST_F(Mx1TextTest, AnIndexBelow128IsNone) {
  line.expect("E03E8\r").answer("E7F03E8\r");
  EXPECT_EQ(link.getAddrIndex(1000), -1);
}

TEST_F(Mx1TextTest, ASilentStationIsAskedForAnIndexTwice) {
  line.expect("E03E8\r").expect("E03E8\r").answer("E8103E8\r");
  EXPECT_EQ(link.getAddrIndex(1000), 129);
  line.expect("E03E8\r").expect("E03E8\r");
  EXPECT_EQ(link.getAddrIndex(1000), -1);
}

TEST_F(Mx1TextTest, AnIndexReplyOfAnotherLengthIsNoneAndStaysWaiting) {
  line.expect("E03E8\r").answer("E8103E8");
  EXPECT_EQ(link.getAddrIndex(1000), -1);
  EXPECT_EQ(link.getBufferCount(), 7);
  line.read();
  line.expect("E03E8\r").answer("E8103E8\r\n");
  EXPECT_EQ(link.getAddrIndex(1000), -1);
  EXPECT_EQ(link.getBufferCount(), 9);
}

TEST_F(Mx1TextTest, TheIndexOfAnotherAddressIsNotTakenForThisOne) {
  line.expect("E03E8\r").expect("E03E8\r").answer("E8103E8\r", 3500);
  EXPECT_EQ(link.getAddrIndex(1000), -1);
  // What came meanwhile is dropped, what comes now is told apart by its address.
  line.expect("E07D0\r").answer("E8207D0\r", 1000);
  EXPECT_EQ(link.getAddrIndex(2000), 130);
  line.arrive("E8103E8\r");
  line.expect("E03E9\r").answer("E8303E9\r");
  EXPECT_EQ(link.getAddrIndex(1001), 131);
}

}  // namespace
}  // namespace lokari
