// Reading and writing CVs through a Tams MC, and with it every road through the CV frame that a
// station can take that sends nothing on its second chance.
#include "link/link_error.h"
#include "support/link_fixture.h"

namespace lokari {
namespace {

class TamsTest : public test::LinkFixture {
 protected:
  TamsTest() : LinkFixture(StationKind::TamsMc) {
    link.commJob = CommJob::ReadProgTrack;
    EXPECT_EQ(link.initComm(true, true, true), "");
  }

  int write(int cv, int value, int address = 3) {
    return link.WriteCV(cv, value, address, link.progMode);
  }
  /// Behind the end of the told way it is asked for binary commands.
  void expectBinaryInVain() { line.expect("x\xE0"); }
};

const QString kNoOrWrong = QStringLiteral("Keine / falsche Antwort vom Basisgerät!");

TEST_F(TamsTest, ReadsACv) {
  line.expect("xPTRB 29\r").answer("6]\r");
  EXPECT_EQ(link.ReadCV(29, 3), 6);
  EXPECT_TRUE(view.statuses.isEmpty());
}

TEST_F(TamsTest, AReplyWithItsEndIsNotWaitedFor) {
  line.expect("xPTRB 8\r").answer("123]\r", 70);
  EXPECT_EQ(timeOf([&] { EXPECT_EQ(link.ReadCV(8, 3), 123); }), 70);
}

TEST_F(TamsTest, WithoutTheSlowOptionAReadStartsAtOnce) {
  line.expect("xPTRB 8\r").answer("145]\r");
  link.ReadCV(8, 3);
  EXPECT_EQ(line.writes.first().at, 1000);
}

TEST_F(TamsTest, TheSlowOptionAddsExactlyOneSecond) {
  settings.delayFlag = true;
  line.expect("xPTRB 8\r").answer("145]\r");
  link.ReadCV(8, 3);
  EXPECT_EQ(line.writes.first().at, 2000);
}

TEST_F(TamsTest, ReadsByTheProgrammingMode) {
  line.expect("xPTRP 1\r").answer("3]\r").expect("xPTRR 1\r").answer("4]\r");
  link.progMode = 1;
  EXPECT_EQ(link.ReadCV(1, 3), 3);
  link.progMode = 2;
  EXPECT_EQ(link.ReadCV(1, 3), 4);
}

TEST_F(TamsTest, WaitingInputIsDroppedBeforeTheCommand) {
  line.arrive("77]\r");
  line.expect("xPTRB 1\r").answer("3]\r");
  EXPECT_EQ(link.ReadCV(1, 3), 3);
}

TEST_F(TamsTest, AReadClearsTheFailureOfTheCvBefore) {
  link.lastCvFailed = true;
  line.expect("xPTRB 1\r").answer("3]\r");
  link.ReadCV(1, 3);
  EXPECT_FALSE(link.lastCvFailed);
}

TEST_F(TamsTest, ACarriageReturnAheadOfTheDigitsDoesNotCutTheValue) {
  for (const char* ends : {"\r", "\n", "\r\n", "\r\n\r\n"}) {
    line.expect("xPTRB 8\r").answer(QByteArray(ends) + "14").answer("0]\r", 500);
    EXPECT_EQ(link.ReadCV(8, 3), 140) << QByteArray(ends).toHex().toStdString();
    line.expect("xPTRB 8\r").answer(QByteArray(ends) + "6]\r");
    EXPECT_EQ(link.ReadCV(8, 3), 6);
    EXPECT_EQ(link.getBufferCount(), 0);
  }
  line.expect("xPTRB 8\r").answer("\r14");
  EXPECT_EQ(link.ReadCV(8, 3), -1001) << "the rest never comes";
  line.expect("xPTRB 8\r").answer("\r\nNo ack]\r");
  EXPECT_EQ(link.ReadCV(8, 3), -1021);
}

TEST_F(TamsTest, ACarriageReturnAheadOfAWrittenReplyIsPassedOverToo) {
  link.commJob = CommJob::WriteProgTrack;
  line.expect("xPTWD 29, 6\r").answer("\r\nOk").answer("]\r", 300);
  EXPECT_EQ(write(29, 6), 6);
}

TEST_F(TamsTest, ErrorIsAWrongReply) {
  line.expect("xPTRB 1\r").answer("Error]\r");
  EXPECT_EQ(link.ReadCV(1, 3), -1003);
}

TEST_F(TamsTest, NoAckIsNoAcknowledge) {
  line.expect("xPTRB 1\r").answer("No ack]\r");
  EXPECT_EQ(link.ReadCV(1, 3), -1021);
}

TEST_F(TamsTest, AValueOf256IsAWrongReply) {
  line.expect("xPTRB 1\r").answer("256]\r");
  EXPECT_EQ(link.ReadCV(1, 3), -1003);
}

TEST_F(TamsTest, GarbageIsAWrongReply) {
  line.expect("xPTRB 1\r").answer("@@@@]\r");
  EXPECT_EQ(link.ReadCV(1, 3), -1003);
}

TEST_F(TamsTest, EveryReplyMayArriveByteByByte) {
  const QList<std::pair<QByteArray, int>> replies{
      {"6]\r", 6}, {"45]\r", 45}, {"123]\r", 123}, {"Error]\r", -1003}, {"No ack]\r", -1021}};
  for (const auto& [reply, result] : replies) {
    line.expect("xPTRB 1\r");
    for (const char c : reply) line.answer(QByteArray(1, c), 4);
    EXPECT_EQ(link.ReadCV(1, 3), result) << reply.toStdString();
    EXPECT_EQ(link.getBufferCount(), 0) << reply.toStdString();
  }
}

TEST_F(TamsTest, AWrittenReplyMayArriveByteByByte) {
  link.commJob = CommJob::WriteProgTrack;
  const QList<std::pair<QByteArray, int>> replies{
      {"Ok]\r", 6}, {"Error]\r", -1003}, {"No ack]\r", -1021}};
  for (const auto& [reply, result] : replies) {
    line.expect("xPTWD 29, 6\r");
    for (const char c : reply) line.answer(QByteArray(1, c), 4);
    EXPECT_EQ(write(29, 6), result) << reply.toStdString();
    EXPECT_EQ(link.getBufferCount(), 0) << reply.toStdString();
  }
}

TEST_F(TamsTest, ATextCutForGoodIsAWrongReply) {
  line.expect("xPTRB 1\r").answer("No a");
  EXPECT_EQ(link.ReadCV(1, 3), -1003);
}

TEST_F(TamsTest, AReplyWithoutItsEndIsWaitedForOnce) {
  line.expect("xPTRB 8\r").answer("123", 10);
  // 1010 until the reply; then until more than 2 whole seconds have passed
  EXPECT_EQ(timeOf([&] { EXPECT_EQ(link.ReadCV(8, 3), 123); }), 3000);
}

TEST_F(TamsTest, WhatFollowsAReplyIsDropped) {
  line.expect("xPTRB 8\r").answer("123", 10).answer("7]\r", 500);
  EXPECT_EQ(link.ReadCV(8, 3), 123);
  EXPECT_EQ(link.getBufferCount(), 0);
  line.expect("xPTRB 1\r").answer("3]\r");
  EXPECT_EQ(link.ReadCV(1, 3), 3);
}

TEST_F(TamsTest, ASilentStationIsAskedOnceAndWaitedForThreeTimes) {
  line.expect("xPTRB 1\r");
  expectBinaryInVain();
  // wait, second chance, its pause, binary question, epilogue: each wait lasts 3 seconds
  EXPECT_EQ(timeOf([&] { EXPECT_EQ(link.ReadCV(1, 3), -1001); }), 3000 + 3000 + 1000 + 3000 + 3000);
  EXPECT_EQ(view.statuses, QStringList{kNoOrWrong});
}

TEST_F(TamsTest, ALateReplyIsTakenInTheSecondChance) {
  line.expect("xPTRB 1\r").answer("3]\r", 3500);
  EXPECT_EQ(link.ReadCV(1, 3), 3);
}

// A reply does not tell its CV.
TEST_F(TamsTest, TheReplyToAQuestionThatWasGivenUpIsNotTheNextOnes) {
  settings.timeoutVal = 1;
  line.expect("xPTRB 5\r").answer("255]\r", 9500);
  expectBinaryInVain();
  EXPECT_EQ(link.ReadCV(5, 3), -1001);
  line.expect("xPTRB 8\r").answer("145]\r");
  EXPECT_EQ(link.ReadCV(8, 3), 145);
  const Millis next = clock.now();
  line.expect("xPTRB 7\r").answer("33]\r");
  EXPECT_EQ(link.ReadCV(7, 3), 33);
  EXPECT_LE(clock.now() - next, 100) << "nothing is owed any more";
}

TEST_F(TamsTest, AShortReplyIsDroppedByTheSecondChance) {
  line.expect("xPTRB 1\r").answer("3", 10).answer("4]\r", 3500);
  EXPECT_EQ(link.ReadCV(1, 3), 4);
}

TEST_F(TamsTest, AShortReplyAndNothingElseIsNoReply) {
  line.expect("xPTRB 1\r").answer("3", 3500);
  EXPECT_EQ(link.ReadCV(1, 3), -1001);
}

TEST_F(TamsTest, ACancelDuringTheWaitGivesCancelledAndSkipsTheSecondChance) {
  line.expect("xPTRB 1\r").then([&] { link.cancelRequested = true; }, 400);
  EXPECT_EQ(timeOf([&] { EXPECT_EQ(link.ReadCV(1, 3), -1002); }), 400);
  EXPECT_TRUE(link.cancelRequested);
  EXPECT_TRUE(line.isOpen());
  EXPECT_EQ(link.commUseCount, 1);
  link.endcomm(true, true);
  EXPECT_FALSE(line.isOpen());
}

TEST_F(TamsTest, ACancelDuringTheSecondChanceGivesCancelled) {
  line.expect("xPTRB 1\r").then([&] { link.cancelRequested = true; }, 4000);
  EXPECT_EQ(link.ReadCV(1, 3), -1002);
}

TEST_F(TamsTest, AReplyThatIsThereCountsInSpiteOfACancel) {
  line.expect("xPTRB 1\r").then([&] {
    link.cancelRequested = true;
    line.arrive("3]\r");
  });
  EXPECT_EQ(link.ReadCV(1, 3), 3);
}

TEST_F(TamsTest, TheNextReadCanGoAheadAfterAFailure) {
  line.expect("xPTRB 1\r").answer("Error]\r").expect("xPTRB 2\r").answer("9]\r");
  EXPECT_EQ(link.ReadCV(1, 3), -1003);
  EXPECT_EQ(link.ReadCV(2, 3), 9);
}

TEST_F(TamsTest, WritesACvOnTheProgrammingTrack) {
  link.commJob = CommJob::WriteProgTrack;
  line.expect("xPTWD 29, 6\r").answer("Ok]\r");
  EXPECT_EQ(write(29, 6), 6);
}

TEST_F(TamsTest, WritesByTheProgrammingModeAndNotByTheArgument) {
  link.commJob = CommJob::WriteProgTrack;
  line.expect("xPTWR 1, 7\r").answer("Ok]\r").expect("xPTWP 1, 7\r").answer("Ok]\r");
  link.progMode = 2;
  EXPECT_EQ(link.WriteCV(1, 7, 3, 1), 7);
  link.progMode = 1;
  EXPECT_EQ(link.WriteCV(1, 7, 3, 0), 7);
}

TEST_F(TamsTest, WritesOnTheMainTrackByAddress) {
  link.commJob = CommJob::WriteMain;
  line.expect("xPD 3, 29, 6\r").answer("Ok]\r");
  EXPECT_EQ(write(29, 6, 3), 6);
}

TEST_F(TamsTest, AWriteIsRefusedWithTheCodesOfARead) {
  link.commJob = CommJob::WriteProgTrack;
  line.expect("xPTWD 29, 6\r").answer("No ack]\r");
  EXPECT_EQ(write(29, 6), -1021);
  line.expect("xPTWD 29, 6\r").answer("Error]\r");
  EXPECT_EQ(write(29, 6), -1003);
  line.expect("xPTWD 29, 6\r").answer("Nix]\r");
  EXPECT_EQ(write(29, 6), -1003);
}

TEST_F(TamsTest, ASilentStationGivesNoReplyToAWriteWithoutRepeatingIt) {
  link.commJob = CommJob::WriteProgTrack;
  line.expect("xPTWD 29, 6\r");
  expectBinaryInVain();
  EXPECT_EQ(write(29, 6), -1001);
}

TEST_F(TamsTest, AWriteNeedsFourBytesOrTheBracket) {
  link.commJob = CommJob::WriteProgTrack;
  line.expect("xPTWD 29, 6\r").answer("Ok", 3500);
  EXPECT_EQ(write(29, 6), -1001);
}

TEST_F(TamsTest, ADeviceThatVanishesDuringAReadThrows) {
  line.expect("xPTRB 1\r").then([&] { line.vanish(); }, 200);
  EXPECT_THROW(link.ReadCV(1, 3), LinkError);
}

TEST_F(TamsTest, ADeviceThatVanishedBeforeAReadThrows) {
  line.vanish();
  EXPECT_THROW(link.ReadCV(1, 3), LinkError);
}

TEST_F(TamsTest, WithoutAViewAFailureIsStillACode) {
  link.setView(nullptr);
  line.expect("xPTRB 1\r");
  expectBinaryInVain();
  EXPECT_EQ(link.ReadCV(1, 3), -1001);
}

}  // namespace
}  // namespace lokari
