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

// A reply does not tell its CV.
TEST_F(LidpTest, EachQuestionGetsItsOwnReplyAlsoWhereTheyAreLateAndCameTwice) {
  const auto late = [this](const char* question, const char* reply) {
    line.expect(question).answer(reply, 3500).expect(question).answer(reply, 3500);
  };
  late("0B0002\r", "0BOK\r\n");
  late("0B0003\r", "0COK\r\n");
  late("0B0004\r", "0DOK\r\n");
  EXPECT_EQ(link.ReadCV(3, 3), 11);
  EXPECT_EQ(link.ReadCV(4, 3), 12);
  EXPECT_EQ(link.ReadCV(5, 3), 13);
}

TEST_F(LidpTest, TheReplyToAQuestionThatWasGivenUpIsAwaitedAheadOfTheNextOne) {
  line.expect("0B0002\r").expect("0B0002\r").answer("0BOK\r\n", 4500);
  EXPECT_EQ(link.ReadCV(3, 3), -1001);
  line.expect("0B0003\r").answer("0COK\r\n");
  EXPECT_EQ(link.ReadCV(4, 3), 12);
  const Millis next = clock.now();
  line.expect("0B0004\r").answer("0DOK\r\n");
  EXPECT_EQ(link.ReadCV(5, 3), 13);
  EXPECT_LE(clock.now() - next, 100) << "nothing is owed any more";
}

TEST_F(LidpTest, OwedRepliesAreAwaitedTenSecondsAndNotBehindACancel) {
  line.expect("0B0002\r").expect("0B0002\r");
  EXPECT_EQ(link.ReadCV(3, 3), -1001);
  const Millis asked = line.writes.last().at;
  const auto cancel = clock.after(1000, [this] { link.cancelRequested = true; });
  EXPECT_EQ(link.ReadCV(4, 3), -1002);
  EXPECT_EQ(line.writes.last().at, asked);
  link.cancelRequested = false;
  line.expect("0B0003\r").answer("0COK\r\n");
  EXPECT_EQ(link.ReadCV(4, 3), 12);
  EXPECT_EQ(line.writes.last().at, asked + 10'000);
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
