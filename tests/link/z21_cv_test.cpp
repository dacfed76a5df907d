#include "link/cv_result.h"
#include "link/z21_codec.h"
#include "link/z21_fixture.h"

namespace lokari {
namespace {

class Z21Cv : public test::Z21Fixture {};

TEST_F(Z21Cv, ReadsOnTheProgrammingTrack) {
  openSession(true);
  socket.expect(readCv29).answer(cv29Is14, 400);
  int value = -1;
  EXPECT_EQ(timeOf([&] { value = z21.ReadCV(29, 3); }), 400);
  EXPECT_EQ(value, 14);
  EXPECT_EQ(station().z21ReplyLen, 0);
}

TEST_F(Z21Cv, TheSlowTransferOptionAddsOneSecond) {
  openSession(true);
  settings.delayFlag = true;
  socket.expect(readCv29).answer(cv29Is14, 400);
  EXPECT_EQ(timeOf([&] { EXPECT_EQ(z21.ReadCV(29, 3), 14); }), 1400);
}

TEST_F(Z21Cv, ReadsOnTheMainTrack) {
  openSession(false);
  socket.expect(readCv1Main).answer(cv1Is3);
  EXPECT_EQ(z21.ReadCV(1, 3), 3);
}

TEST_F(Z21Cv, WritesOnTheProgrammingTrackAndGivesWhatTheStationReports) {
  openSession(true);
  socket.expect(writeCv1As3)
      .answer(bytes({0x0A, 0x00, 0x40, 0x00, 0x64, 0x14, 0x00, 0x00, 0x05, 0x75}));
  EXPECT_EQ(z21.WriteCV(1, 3, 3, 0), 5);
}

TEST_F(Z21Cv, WritesOnTheMainTrackWithoutWaitingForAnything) {
  openSession(false);
  socket.expect(writeCv1As7Main);
  int result = -1;
  EXPECT_EQ(timeOf([&] { result = z21.WriteCV(1, 7, 3, 0); }), 100);
  EXPECT_EQ(result, 7);
  EXPECT_TRUE(station().z21Wanted.isEmpty());
}

TEST_F(Z21Cv, ABroadcastAheadOfTheReplyInItsDatagramIsSplitOff) {
  openSession(true);
  socket.expect(readCv29).answer(serialNumber + cv29Is14);
  EXPECT_EQ(z21.ReadCV(29, 3), 14);
}

TEST_F(Z21Cv, TakesTheFirstOfTwoReplies) {
  openSession(true);
  socket.expect(readCv29).answer(cv29Is14 + shortCircuit).answer(shortCircuit, 20);
  EXPECT_EQ(z21.ReadCV(29, 3), 14);
}

TEST_F(Z21Cv, NewsOfTheTrackDoNotEndTheWaitForTheResult) {
  openSession(true);
  socket.expect(readCv29).answer(programming, 20).answer(powerIsOn, 200).answer(cv29Is14, 59'000);
  EXPECT_EQ(z21.ReadCV(29, 3), 14);
}

TEST_F(Z21Cv, AShortCircuitEndsTheWaitAtOnce) {
  openSession(true);
  socket.expect(readCv29).answer(shortCircuit, 300);
  int result = 0;
  EXPECT_EQ(timeOf([&] { result = z21.ReadCV(29, 3); }), 300);
  EXPECT_EQ(result, cv_result::kShortCircuit);
}

TEST_F(Z21Cv, NoAcknowledgeEndsTheWaitAtOnce) {
  openSession(true);
  socket.expect(readCv29).answer(noAck, 300);
  int result = 0;
  EXPECT_EQ(timeOf([&] { result = z21.ReadCV(29, 3); }), 300);
  EXPECT_EQ(result, cv_result::kNoAck);
}

TEST_F(Z21Cv, ARefusalFollowedByOtherMessagesIsStillTheAnswer) {
  openSession(true);
  socket.expect(readCv29).answer(shortCircuit + serialNumber, 20).answer(serialNumber, 30);
  EXPECT_EQ(z21.ReadCV(29, 3), cv_result::kShortCircuit);
}

TEST_F(Z21Cv, WritesAreRefusedTheSameWay) {
  openSession(true);
  socket.expect(writeCv1As3).answer(shortCircuit);
  EXPECT_EQ(z21.WriteCV(1, 3, 3, 0), cv_result::kShortCircuit);
  socket.expect(writeCv1As3).answer(noAck);
  EXPECT_EQ(z21.WriteCV(1, 3, 3, 0), cv_result::kNoAck);
}

TEST_F(Z21Cv, OnlyNewsOfTheTrackCountAsNoAcknowledgeAfterTheWait) {
  openSession(true);
  socket.expect(readCv29).answer(powerIsOn, 200);
  int result = 0;
  // A wait of 60 whole seconds, no second one.
  const Millis taken = timeOf([&] { result = z21.ReadCV(29, 3); });
  EXPECT_EQ(result, cv_result::kNoAck);
  EXPECT_GT(taken, 60'000);
  EXPECT_LE(taken, 61'000);
}

TEST_F(Z21Cv, ASilentStationIsAskedTwiceAndGivesAWrongReply) {
  openSession(true);
  settings.timeoutVal = 1;
  socket.expect(readCv29);
  socket.expect(readCv29);
  int result = 0;
  const Millis taken = timeOf([&] { result = z21.ReadCV(29, 3); });
  EXPECT_EQ(result, cv_result::kWrongReply);
  EXPECT_GT(taken, 2 * 60'000);
  EXPECT_LE(taken, 2 * 61'000 + 1'200);
  EXPECT_EQ(settings.timeoutVal, 1);
}

TEST_F(Z21Cv, AReadOnTheMainTrackWhoseDatagramIsLostIsRepeatedThere) {
  openSession(false);
  socket.expect(readCv1Main);
  socket.expect(readCv1Main).answer(cv1Is3, 500);
  EXPECT_EQ(z21.ReadCV(1, 3), 3);
}

TEST_F(Z21Cv, AReadOnTheMainTrackIsRepeatedOnTheProgrammingTrackButItsDecoderIsNotTheVehicle) {
  openSession(false);
  socket.expect(readCv1Main);
  socket.expect(readCv1Main);
  socket.expect(readCv1).answer(cv1Is3, 500);
  EXPECT_EQ(z21.ReadCV(1, 3), cv_result::kWrongReply);
}

TEST_F(Z21Cv, TheRepeatAwaitsAStateMessage) {
  openSession(false);
  socket.expect(readCv1Main);
  socket.expect(readCv1Main);
  QByteArray wanted;
  socket.expect(readCv1).then([&] { wanted = station().z21Wanted; }, 10).answer(shortCircuit, 500);
  EXPECT_EQ(z21.ReadCV(1, 3), cv_result::kShortCircuit);
  EXPECT_EQ(wanted, bytes({0x07, 0x00, 0x40, 0x00}));
}

TEST_F(Z21Cv, AStateMessageThatIsNoRefusalIsAWrongReplyInTheRepeat) {
  openSession(true);
  socket.expect(readCv29);
  socket.expect(readCv29).answer(bytes({0x07, 0x00, 0x40, 0x00, 0x81, 0x00, 0x81}));
  EXPECT_EQ(z21.ReadCV(29, 3), cv_result::kWrongReply);
}

TEST_F(Z21Cv, TheRepeatDropsWhatWaits) {
  openSession(true);
  socket.expect(readCv29).answer(bytes({0x04, 0x00, 0x99, 0x00}));
  socket.expect(readCv29).answer(cv29Is14);
  EXPECT_EQ(z21.ReadCV(29, 3), 14);
}

TEST_F(Z21Cv, ARepeatedWriteIsTheSameWrite) {
  openSession(true);
  socket.expect(writeCv1As3);
  socket.expect(writeCv1As3).answer(cv1Is3, 500);
  EXPECT_EQ(z21.WriteCV(1, 3, 3, 0), 3);
}

TEST_F(Z21Cv, ARepeatedWriteEndsAtARefusal) {
  openSession(true);
  socket.expect(writeCv1As3);
  socket.expect(writeCv1As3).answer(noAck, 500);
  EXPECT_EQ(z21.WriteCV(1, 3, 3, 0), cv_result::kNoAck);
}

TEST_F(Z21Cv, ACancelEndsTheWaitAndTheStationStillGetsItsFarewell) {
  openSession(true);
  socket.expect(readCv29).then([&] { z21.cancelRequested = true; }, 700);
  int result = 0;
  EXPECT_EQ(timeOf([&] { result = z21.ReadCV(29, 3); }), 700);
  EXPECT_EQ(result, cv_result::kCancelled);
  socket.expect(powerOn);
  socket.expect(logOff);
  z21.endcomm(true, true);
}

TEST_F(Z21Cv, AnOldRefusalDoesNotSteerTheNextOperation) {
  openSession(true);
  socket.expect(readCv29).answer(shortCircuit);
  EXPECT_EQ(z21.ReadCV(29, 3), cv_result::kShortCircuit);
  socket.expect(readCv29);
  socket.expect(readCv29).answer(cv29Is14);
  EXPECT_EQ(z21.ReadCV(29, 3), 14);
}

TEST_F(Z21Cv, ARefusalLeftUnreadDoesNotSteerTheNextOperation) {
  openSession(false);
  socket.expect(writeCv1As7Main).answer(shortCircuit);
  EXPECT_EQ(z21.WriteCV(1, 7, 3, 0), 7);
  socket.expect(readCv1Main).answer(cv1Is3, 200);
  EXPECT_EQ(z21.ReadCV(1, 3), 3);
}

TEST_F(Z21Cv, AReplyToAnOlderQuestionIsNoReply) {
  openSession(true);
  socket.expect(readCv29).then([&] { z21.cancelRequested = true; }, 10).answer(cv29Is14, 900);
  EXPECT_EQ(z21.ReadCV(29, 3), cv_result::kCancelled);
  z21.cancelRequested = false;
  clock.advance(2'000);
  socket.expect(readCv1).answer(cv29Is14, 5).answer(cv1Is3, 300);
  EXPECT_EQ(z21.ReadCV(1, 3), 3);
}

TEST_F(Z21Cv, AReplyCutAtAnyByteGivesACodeAndTheSessionGoesOn) {
  openSession(true);
  for (qsizetype size = 0; size < cv29Is14.size(); ++size) {
    socket.expect(readCv29).answer(cv29Is14.left(size));
    socket.expect(readCv29).answer(cv29Is14.left(size));
    EXPECT_EQ(z21.ReadCV(29, 3), cv_result::kWrongReply) << size;
  }
  socket.expect(readCv29).answer(cv29Is14);
  EXPECT_EQ(z21.ReadCV(29, 3), 14);
}

TEST_F(Z21Cv, NoiseBeforeTheReplyIsPassedOver) {
  openSession(true);
  socket.expect(readCv29)
      .answer(bytes({0x00, 0x00, 0x00}), 10)
      .answer(bytes({0xFF, 0x12}), 20)
      .answer(QByteArray(2000, '\x01'), 30)
      .answer(cv29Is14, 300);
  EXPECT_EQ(z21.ReadCV(29, 3), 14);
}

TEST_F(Z21Cv, AResultThatCameWrongIsAskedForOnceMoreAndOnlyTwoEqualOnesAreBelieved) {
  const QByteArray broken14 = cv29Is14.chopped(1) + '\x63';
  QByteArray broken15 = cv29Is14;
  broken15[8] = 15;
  struct Row {
    QByteArray first;
    QByteArray second;
    int result;
  };
  const Row rows[] = {{broken14, cv29Is14, 14},
                      {broken14, broken14, 14},
                      {broken15, cv29Is14, -1003},
                      {broken14, broken15, -1003},
                      {broken14, noAck, -1003}};
  openSession(true);
  for (const Row& row : rows) {
    socket.expect(readCv29).answer(row.first);
    socket.expect(readCv29).answer(row.second);
    EXPECT_EQ(z21.ReadCV(29, 3), row.result) << hexDump(row.first + row.second).toStdString();
  }
}

TEST_F(Z21Cv, AReadOnTheMainTrackThatCameWrongIsAskedForOnTheMainTrack) {
  openSession(false);
  socket.expect(readCv1Main).answer(cv1Is3.chopped(1) + '\x72');
  socket.expect(readCv1Main).answer(cv1Is3);
  EXPECT_EQ(z21.ReadCV(1, 3), 3);
}

TEST_F(Z21Cv, AWrittenValueThatCameWrongIsWrittenOnceMore) {
  openSession(true);
  socket.expect(writeCv1As3).answer(cv1Is3.chopped(1) + '\x72');
  socket.expect(writeCv1As3)
      .answer(bytes({0x0A, 0x00, 0x40, 0x00, 0x64, 0x14, 0x00, 0x00, 0x05, 0x75}));
  EXPECT_EQ(z21.WriteCV(1, 3, 3, 0), -1003);
}

TEST_F(Z21Cv, AChecksumOverTheTextIsOneInUseToo) {
  openSession(true);
  const QByteArray head = cv29Is14.chopped(1);
  const QByteArray text =
      *z21::toBytes(z21::withChecksum(QString::fromLatin1(head.toHex(' ').toUpper())));
  ASSERT_NE(text, cv29Is14);
  socket.expect(readCv29).answer(text);
  EXPECT_EQ(z21.ReadCV(29, 3), 14);
  // Having shown its kind of checksum, the station is asked once more about the other one.
  socket.expect(readCv29).answer(cv29Is14);
  socket.expect(readCv29).answer(text);
  EXPECT_EQ(z21.ReadCV(29, 3), 14);
}

TEST_F(Z21Cv, AClosedPortEndsTheWaitAtOnceWithTheToldCode) {
  openSession(true);
  for (int i = 0; i < 3; ++i) {
    socket.expect(readCv29).then([&] { socket.refuse(); }, 2);
    int result = 0;
    EXPECT_EQ(timeOf([&] { result = z21.ReadCV(29, 3); }), 100);
    EXPECT_EQ(result, cv_result::kWrongReply);
  }
  // The station is back.
  socket.expect(readCv29).answer(cv29Is14, 400);
  EXPECT_EQ(z21.ReadCV(29, 3), 14);
}

TEST_F(Z21Cv, NumbersThatNoMessageCarriesSendNothing) {
  openSession(false);
  EXPECT_EQ(z21.ReadCV(1025, 3), cv_result::kWrongReply);
  EXPECT_EQ(z21.WriteCV(1025, 0, 3, 0), cv_result::kWrongReply);
  EXPECT_EQ(z21.WriteCV(1, 256, 3, 0), cv_result::kWrongReply);
  z21.progTrack = true;
  EXPECT_EQ(z21.ReadCV(0, 3), cv_result::kWrongReply);
}

TEST_F(Z21Cv, AVanishedSocketEndsTheOperation) {
  openSession(true);
  udp.close();
  EXPECT_THROW(z21.ReadCV(29, 3), LinkError);
}

TEST_F(Z21Cv, ClearsTheMarkOfAContinuedFailure) {
  openSession(true);
  z21.lastCvFailed = true;
  socket.expect(readCv29).answer(cv29Is14);
  EXPECT_EQ(z21.ReadCV(29, 3), 14);
  EXPECT_FALSE(z21.lastCvFailed);
}

}  // namespace
}  // namespace lokari
