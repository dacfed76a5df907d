// Sessions with the Lenz decoder programmer and its CVs.
#include "link/link_error.h"
#include "support/link_fixture.h"

namespace lokari {
namespace {

class LidpTest : public test::LinkFixture {
 protected:
  LidpTest() : LinkFixture(StationKind::LiDp) {
    link.commJob = CommJob::ReadProgTrack;
    EXPECT_EQ(link.initComm(true, true, true), "");
    clock.advance(2000 - clock.now());
  }

  int write(int cv, int value) { return link.WriteCV(cv, value, 3, 0); }
};

// -- session

TEST_F(LidpTest, OpensAt57600WithoutHandshakingAndSaysNothing) {
  EXPECT_EQ(line.opened.baudrate, 57600);
  EXPECT_EQ(line.opened.handshaking, Handshaking::None);
  EXPECT_EQ(line.sent(), "");
}

TEST_F(LidpTest, EverySessionEndsWithItsFarewell) {
  for (const CommJob job : {CommJob::ReadProgTrack, CommJob::WriteMain, CommJob::TestComm}) {
    link.initComm(true, true, true);
    link.commJob = job;
    line.expect("01\r").answer("OK\r\n");
    EXPECT_EQ(timeOf([&] { link.endcomm(false, false); }), 1000);
  }
  EXPECT_EQ(line.sent(), "01\r01\r01\r");
}

TEST_F(LidpTest, AVanishedPortStillClosesTheSession) {
  line.vanish();
  EXPECT_NO_THROW(link.endcomm(true, true));
  EXPECT_EQ(link.commUseCount, 0);
}

// -- reading

TEST_F(LidpTest, ReadsACv) {
  line.expect("0B001C\r").answer("06OK\r\n", 70);
  EXPECT_EQ(timeOf([&] { EXPECT_EQ(link.ReadCV(29, 3), 6); }), 70);
  EXPECT_TRUE(view.statuses.isEmpty());
}

TEST_F(LidpTest, TheSlowOptionAddsExactlyOneSecond) {
  settings.delayFlag = true;
  line.expect("0B001C\r").answer("06OK\r\n", 70);
  EXPECT_EQ(timeOf([&] { link.ReadCV(29, 3); }), 1070);
}

TEST_F(LidpTest, WaitingInputIsDroppedFirst) {
  line.arrive("X2\r\n");
  line.expect("0B001C\r").answer("06OK\r\n");
  EXPECT_EQ(link.ReadCV(29, 3), 6);
}

TEST_F(LidpTest, TheSecondChanceDropsTheInputAndSendsTheSame) {
  line.expect("0B001C\r").answer("06O").expect("0B001C\r").answer("06OK\r\n");
  EXPECT_EQ(timeOf([&] { EXPECT_EQ(link.ReadCV(29, 3), 6); }), 3000 + 10 + 1000);
}

TEST_F(LidpTest, SilenceIsNoReplyAfterTwoAttempts) {
  line.expect("0B001C\r").expect("0B001C\r");
  EXPECT_EQ(timeOf([&] { EXPECT_EQ(link.ReadCV(29, 3), -1001); }), 3000 + 3000 + 1000);
  EXPECT_EQ(view.statuses, QStringList{QStringLiteral("Keine / falsche Antwort vom Basisgerät!")});
}

TEST_F(LidpTest, ACancelInTheFirstWaitEndsTheReadAtOnce) {
  line.expect("0B001C\r").then([&] { link.cancelRequested = true; }, 500);
  EXPECT_EQ(timeOf([&] { EXPECT_EQ(link.ReadCV(29, 3), -1002); }), 500);
}

TEST_F(LidpTest, ACancelInTheSecondWaitIsACancelToo) {
  line.expect("0B001C\r").expect("0B001C\r").then([&] { link.cancelRequested = true; }, 500);
  EXPECT_EQ(link.ReadCV(29, 3), -1002);
}

TEST_F(LidpTest, EveryRefusalHasItsCode) {
  const QList<std::pair<const char*, int>> rows{
      {"X1\r\n", -1003}, {"X2\r\n", -1021}, {"X3\r\n", -1002}, {"????", -1002}};
  for (const auto& [reply, result] : rows) {
    line.expect("0B001C\r").answer(reply);
    EXPECT_EQ(link.ReadCV(29, 3), result) << reply;
  }
}

TEST_F(LidpTest, AReplyMayArriveByteByByte) {
  line.expect("0B001C\r");
  for (const char c : QByteArray("06OK")) line.answer(QByteArray(1, c), 4);
  EXPECT_EQ(link.ReadCV(29, 3), 6);
}

TEST_F(LidpTest, AReplyCutAtEveryByteIsNoReplyAndTheNextReadGoesOn) {
  const QByteArray whole("06OK");
  for (qsizetype size = 0; size < whole.size(); ++size) {
    const QByteArray cut = whole.left(size);
    line.expect("0B001C\r").answer(cut).expect("0B001C\r").answer(cut);
    EXPECT_EQ(link.ReadCV(29, 3), -1001) << size;
    line.expect("0B0000\r").answer("03OK\r\n");
    EXPECT_EQ(link.ReadCV(1, 3), 3) << size;
  }
}

TEST_F(LidpTest, OfTwoRepliesAtOnceTheFirstCounts) {
  line.expect("0B001C\r").answer("06OK\r\n07OK\r\n");
  EXPECT_EQ(link.ReadCV(29, 3), 6);
  EXPECT_EQ(link.getBufferCount(), 0);
}

TEST_F(LidpTest, NoiseBeforeAReplyIsAFailureAndTheNextReadGoesOn) {
  line.expect("0B001C\r").answer("@@06OK\r\n");
  EXPECT_EQ(link.ReadCV(29, 3), -1002);
  line.expect("0B0000\r").answer("03OK\r\n@@");
  EXPECT_EQ(link.ReadCV(1, 3), 3);
}

TEST_F(LidpTest, TheLateEndOfAnEarlierReplyIsNotPartOfTheNextOne) {
  line.expect("0B001C\r").answer("\r", 2).answer("\n06", 20).answer("OK", 900);
  EXPECT_EQ(timeOf([&] { EXPECT_EQ(link.ReadCV(29, 3), 6); }), 922);
}

TEST_F(LidpTest, LineEndsAloneAreNoReply) {
  line.expect("0B001C\r").answer("\r\n\r\n");
  EXPECT_EQ(link.ReadCV(29, 3), -1001);
}

TEST_F(LidpTest, AVanishedPortEndsTheRead) {
  line.expect("0B001C\r").then([&] { line.vanish(); }, 200);
  EXPECT_THROW(link.ReadCV(29, 3), LinkError);
}

// -- writing

TEST_F(LidpTest, WritesTheSameTextWhateverTheJob) {
  for (const CommJob job : {CommJob::WriteProgTrack, CommJob::WriteMain}) {
    link.commJob = job;
    line.expect("0A001C06\r").answer("07OK\r\n");
    EXPECT_EQ(write(29, 6), 6);
  }
}

TEST_F(LidpTest, AWriteHasItsSecondChanceToo) {
  line.expect("0A001C06\r").expect("0A001C06\r").answer("06OK\r\n");
  EXPECT_EQ(write(29, 6), 6);
}

TEST_F(LidpTest, AWriteIsRefusedWithTheCodesOfARead) {
  const QList<std::pair<const char*, int>> rows{
      {"X1\r\n", -1003}, {"X2\r\n", -1021}, {"X3\r\n", -1002}};
  for (const auto& [reply, result] : rows) {
    line.expect("0A001C06\r").answer(reply);
    EXPECT_EQ(write(29, 6), result) << reply;
  }
}

}  // namespace
}  // namespace lokari
