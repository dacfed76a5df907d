// Sessions with the Intellibox and its CVs.
#include "link/ibx_send.h"
#include "link/link_error.h"
#include "link/station_protocol.h"
#include "support/link_fixture.h"

namespace lokari {
namespace {

const char* const kRead29 = "78 F2 1D 00";
const char* const kWrite29 = "78 F1 1D 00 06";
const char* const kAskEvent = "78 CE";
const char* const kEnd = "78 E2";

constexpr Millis kReadTime = 30 + 10 + 2000;  ///< three bytes, the reply, the two seconds
constexpr Millis kWriteTime = 40 + 10 + 2000;
constexpr Millis kAskTime = 10 + 1000;
constexpr Millis kEndTime = 10 + 10;

class IntelliboxTest : public test::LinkFixture {
 protected:
  explicit IntelliboxTest(StationKind kind = StationKind::Ibx) : LinkFixture(kind) {
    link.commJob = CommJob::WriteProgTrack;
    EXPECT_EQ(link.initComm(true, true, true), "");
    clock.advance(2000 - clock.now());
  }

  static QByteArray fromHex(const char* text) { return QByteArray::fromHex(text); }
  test::ScriptedLine& expect(const char* message) { return line.expect(fromHex(message)); }
  test::ScriptedLine& expect(const char* message, const char* answer) {
    return expect(message).answer(fromHex(answer));
  }
  void expectEnd() { expect(kEnd, "00"); }
  /// A read of CV 29 that the station accepts, up to the question for the event.
  test::ScriptedLine& expectReadAndAsk() {
    expect(kRead29, "00");
    return expect(kAskEvent);
  }
  test::ScriptedLine& expectWriteAndAsk() {
    expect(kWrite29, "00");
    return expect(kAskEvent);
  }

  int read29() { return link.ReadCV(29, 3); }
  int write29() { return link.WriteCV(29, 6, 3, 0); }
  int writeMain(int cv, int address) {
    link.commJob = CommJob::WriteMain;
    link.pomAddr = link.getAddrIndex(address);
    return link.WriteCV(cv, 6, address, 0);
  }
};

// -- sending

TEST_F(IntelliboxTest, TenMillisecondsPassBeforeEachByteBehindTheLetter) {
  expect(kRead29);
  ibxSend(link, fromHex("F2 1D 00"));
  ASSERT_EQ(line.writes.size(), 4);
  for (int i = 0; i < 4; ++i) {
    EXPECT_EQ(line.writes[i].at, 2000 + 10 * i);
    EXPECT_EQ(line.writes[i].data.size(), 1);
  }
}

TEST_F(IntelliboxTest, AnEmptyCommandIsTheSingleLetter) {
  line.expect("x");
  EXPECT_EQ(timeOf([&] { ibxSend(link, {}); }), 0);
}

TEST_F(IntelliboxTest, WhatComesBetweenTheBytesOfACvWriteGoesOutBehindThem) {
  expect("78 DE 03 00 1D 00 06").answer(fromHex("00"), 20);
  expect("78 A5");
  clock.schedule(
      25, [&] { link.protocol().gate().betweenMessages([&] { ibxSend(link, fromHex("A5")); }); });
  EXPECT_EQ(writeMain(29, 3), 6);
}

class TamsIbxSend : public IntelliboxTest {
 protected:
  TamsIbxSend() : IntelliboxTest(StationKind::TamsMc) {}
};

TEST_F(TamsIbxSend, ATamsMcTakesTheSameCommands) {
  expect("78 A2");
  ibxSend(link, fromHex("A2"));
  EXPECT_EQ(line.writes.last().at, 2010);
}

// -- session

TEST_F(IntelliboxTest, OpensAt2400WithHandshakingAndSaysNothing) {
  EXPECT_EQ(line.opened.baudrate, 2400);
  EXPECT_EQ(line.opened.handshaking, Handshaking::RequestToSend);
  link.endcomm(true, true);
  EXPECT_EQ(line.sent(), "");
  EXPECT_FALSE(line.isOpen());
}

// -- reading

TEST_F(IntelliboxTest, AReadAsksForItsEventAndEndsTheProgramming) {
  expectReadAndAsk().answer(fromHex("02 00 7B"));
  expectEnd();
  EXPECT_EQ(timeOf([&] { EXPECT_EQ(read29(), 123); }), kReadTime + kAskTime + kEndTime);
  EXPECT_TRUE(view.statuses.isEmpty());
  EXPECT_EQ(link.getBufferCount(), 0);
}

TEST_F(IntelliboxTest, ReadsByTheProgrammingMode) {
  link.progMode = 1;
  expect("78 EE 1D 00", "00");
  expect(kAskEvent, "02 00 06");
  expectEnd();
  EXPECT_EQ(read29(), 6);
  link.progMode = 2;
  expect("78 EC 05 00", "00");
  expect(kAskEvent, "02 00 06");
  expectEnd();
  EXPECT_EQ(link.ReadCV(5, 3), 6);
}

TEST_F(IntelliboxTest, WaitingInputIsDroppedFirst) {
  line.arrive(fromHex("06 06"));
  expectReadAndAsk().answer(fromHex("02 00 06"));
  expectEnd();
  EXPECT_EQ(read29(), 6);
}

TEST_F(IntelliboxTest, ACommandThatIsNotAcceptedIsSentAgain) {
  expect(kRead29, "06");
  expectReadAndAsk().answer(fromHex("02 00 06"));
  expectEnd();
  EXPECT_EQ(timeOf([&] { EXPECT_EQ(read29(), 6); }),
            kReadTime + 1000 + kReadTime + kAskTime + kEndTime);
}

TEST_F(IntelliboxTest, TheThirdReadCommandIsTheLastEvenIfItIsAccepted) {
  expect(kRead29, "06");
  expect(kRead29);
  expect(kRead29, "00");
  expectEnd();
  EXPECT_EQ(read29(), -1020);
}

TEST_F(IntelliboxTest, TheSecondWriteCommandIsTheLastEvenIfItIsAccepted) {
  expect(kWrite29, "06");
  expect(kWrite29, "00");
  expectEnd();
  EXPECT_EQ(write29(), -1020);
}

TEST_F(IntelliboxTest, SilentCommandsLeaveTheStationNotReady) {
  for (int i = 0; i < 3; ++i) expect(kRead29);
  expect(kEnd);
  EXPECT_EQ(read29(), -1020);
  for (int i = 0; i < 2; ++i) expect(kWrite29);
  expect(kEnd);
  EXPECT_EQ(write29(), -1020);
}

TEST_F(IntelliboxTest, TheReplyToACommandMayComeWithinTheTwoSeconds) {
  expect(kRead29).answer(fromHex("00"), 4500);
  expect(kAskEvent, "02 00 06");
  expectEnd();
  EXPECT_EQ(read29(), 6);
}

TEST_F(IntelliboxTest, AnEventThatIsNotThereYetIsAskedForAgainAndAgain) {
  expectReadAndAsk().answer(fromHex("F5"));
  for (int i = 0; i < 20; ++i) expect(kAskEvent, "F5");
  expect(kAskEvent, "02 00 7B");
  expectEnd();
  EXPECT_EQ(timeOf([&] { EXPECT_EQ(read29(), 123); }), kReadTime + 22 * kAskTime + kEndTime);
}

TEST_F(IntelliboxTest, SilenceAfterF5IsNoReplyAfterTheSecondChance) {
  expectReadAndAsk().answer(fromHex("F5"));
  expect(kAskEvent);
  expect(kAskEvent);
  expectEnd();
  EXPECT_EQ(read29(), -1001);
}

TEST_F(IntelliboxTest, TheSecondChanceAsksForTheEventOnlyAndDoesNotPause) {
  expectReadAndAsk();
  expect(kAskEvent, "02 00 06");
  expectEnd();
  // The command until 4040, the question until 5050, a wait until 8000.
  EXPECT_EQ(timeOf([&] { EXPECT_EQ(read29(), 6); }), 6000 + kAskTime + kEndTime);
}

TEST_F(IntelliboxTest, AnEventThatNeverComesIsNoReply) {
  expectReadAndAsk();
  expect(kAskEvent);
  expectEnd();
  EXPECT_EQ(read29(), -1001);
  EXPECT_EQ(view.statuses, QStringList{QStringLiteral("Keine / falsche Antwort vom Basisgerät!")});
}

TEST_F(IntelliboxTest, EveryStatusHasItsCode) {
  const QList<std::pair<const char*, int>> rows{
      {"01 FF", -1001}, {"01 FE", -1021}, {"01 FD", -1018}, {"01 FC", -1019}, {"01 0A", -10}};
  for (const auto& [event, result] : rows) {
    expectReadAndAsk().answer(fromHex(event));
    expectEnd();
    EXPECT_EQ(read29(), result) << event;
    expectWriteAndAsk().answer(fromHex(event));
    expectEnd();
    EXPECT_EQ(write29(), result) << event;
  }
}

TEST_F(IntelliboxTest, SuccessWithoutAValueIsAWrongReplyToARead) {
  expectReadAndAsk().answer(fromHex("01 00"));
  expectEnd();
  EXPECT_EQ(read29(), -1003);
}

TEST_F(IntelliboxTest, ACutEventIsWaitedForOnce) {
  expectReadAndAsk().answer(fromHex("02 00"), 10).answer(fromHex("06"), 2500);
  expectEnd();
  EXPECT_EQ(read29(), 6);
}

TEST_F(IntelliboxTest, AnEventThatNeedsASecondWaitCountsAsCut) {
  // The first wait lasts until 8000; the question went out at 4050.
  expectReadAndAsk().answer(fromHex("02"), 10).answer(fromHex("00 06"), 4500);
  expectReadAndAsk().answer(fromHex("02 00 07"));
  expectEnd();
  EXPECT_EQ(read29(), 7);
}

TEST_F(IntelliboxTest, AnEventOfLengthZeroCountsAsCut) {
  expectReadAndAsk().answer(fromHex("00"));
  expectReadAndAsk().answer(fromHex("02 00 06"));
  expectEnd();
  EXPECT_EQ(read29(), 6);
}

TEST_F(IntelliboxTest, ALineOfZerosIsNoReply) {
  expectReadAndAsk().answer(QByteArray(40, '\0'));
  expectEnd();
  EXPECT_EQ(read29(), -1001);
  expectWriteAndAsk().answer(QByteArray(40, '\0'));
  expectEnd();
  EXPECT_EQ(write29(), -1001);
  for (int i = 0; i < 3; ++i) expect(kRead29).answer(QByteArray(40, '\0'));
  expect(kEnd);
  EXPECT_EQ(read29(), -1020);
  for (int i = 0; i < 2; ++i) expect("78 DE 03 00 1D 00 06").answer(QByteArray(40, '\0'));
  expect(kEnd);
  EXPECT_EQ(writeMain(29, 3), -1020);
}

TEST_F(IntelliboxTest, ALateAnswerToACommandIsNotTakenForTheBeginningOfAnEvent) {
  for (const char* late : {"00 02 00 7B", "00 00 02 00 7B"}) {
    expectReadAndAsk().answer(fromHex(late));
    expectEnd();
    EXPECT_EQ(read29(), 123) << late;
  }
  expectReadAndAsk().answer(fromHex("00 00 02")).answer(fromHex("00 7B"), 2500);
  expectEnd();
  EXPECT_EQ(read29(), 123);
}

TEST_F(IntelliboxTest, WhatStandsBehindAnEventIsNotItsValue) {
  expectReadAndAsk().answer(fromHex("01 00 07"));
  expectEnd();
  EXPECT_EQ(read29(), -1003);
}

TEST_F(IntelliboxTest, CutEventsUseUpTheCommandsOfARead) {
  expectReadAndAsk().answer(fromHex("02 00"));
  expectReadAndAsk().answer(fromHex("02"));
  expect(kRead29, "00");
  expectEnd();
  EXPECT_EQ(read29(), -1020);
}

TEST_F(IntelliboxTest, ACutEventUsesUpTheCommandsOfAWrite) {
  expectWriteAndAsk().answer(fromHex("01"));
  expect(kWrite29, "00");
  expectEnd();
  EXPECT_EQ(write29(), -1020);
}

TEST_F(IntelliboxTest, AnEventCutAtEveryByteIsReadAgain) {
  const QByteArray whole = fromHex("02 00 06");
  for (qsizetype size = 1; size < whole.size(); ++size) {
    expectReadAndAsk().answer(whole.left(size));
    expectReadAndAsk().answer(whole);
    expectEnd();
    EXPECT_EQ(read29(), 6) << size;
  }
}

TEST_F(IntelliboxTest, AnEventThatComesByteByByteIsPutTogether) {
  auto& script = expectReadAndAsk();
  for (const char byte : fromHex("02 00 06")) script.answer(QByteArray(1, byte), 600);
  expectEnd();
  EXPECT_EQ(read29(), 6);
}

TEST_F(IntelliboxTest, OfTwoEventsAtOnceTheFirstCounts) {
  expectReadAndAsk().answer(fromHex("02 00 06 02 00 07"));
  expectEnd();
  EXPECT_EQ(read29(), 6);
  EXPECT_EQ(link.getBufferCount(), 0);
}

TEST_F(IntelliboxTest, TheReplyToTheEndOfProgrammingIsDropped) {
  expectReadAndAsk().answer(fromHex("02 00 06"));
  expect(kEnd, "00 06 06");
  EXPECT_EQ(read29(), 6);
  EXPECT_EQ(link.getBufferCount(), 0);
}

TEST_F(IntelliboxTest, ACancelWhileTheCommandIsAwaitedIsACancelAndEndsTheProgramming) {
  expect(kRead29).then([&] { link.cancelRequested = true; }, 500);
  expectEnd();
  EXPECT_EQ(timeOf([&] { EXPECT_EQ(read29(), -1002); }), 30 + 500 + 2000 + 10);
}

TEST_F(IntelliboxTest, ACancelBeforeTheNextCommandSendsNothingMore) {
  expect(kWrite29, "06").then([&] { link.cancelRequested = true; }, 2500);
  expect(kEnd);
  EXPECT_EQ(write29(), -1002);
}

TEST_F(IntelliboxTest, ACancelWhileTheEventIsAwaitedIsACancelToo) {
  expectReadAndAsk().then([&] { link.cancelRequested = true; }, 2500);
  expect(kEnd);
  EXPECT_EQ(read29(), -1002);
}

TEST_F(IntelliboxTest, ACancelEndsTheWaitForTheEventThatIsNotThereYet) {
  expectReadAndAsk().answer(fromHex("F5"));
  expect(kAskEvent, "F5").then([&] { link.cancelRequested = true; }, 200);
  expect(kEnd);
  EXPECT_EQ(read29(), -1002);
}

TEST_F(IntelliboxTest, AnEventThatIsThereCountsInSpiteOfACancel) {
  expectReadAndAsk().answer(fromHex("02 00 06")).then([&] { link.cancelRequested = true; }, 200);
  expect(kEnd);
  EXPECT_EQ(read29(), 6);
}

TEST_F(IntelliboxTest, AVanishedPortEndsTheReadAndTheSessionCloses) {
  expect(kRead29).then([&] { line.vanish(); }, 200);
  EXPECT_THROW(read29(), LinkError);
  link.endcomm(true, true);
  EXPECT_EQ(link.commUseCount, 0);
}

// -- writing

TEST_F(IntelliboxTest, AWriteGivesItsOwnValue) {
  expectWriteAndAsk().answer(fromHex("01 00"));
  expectEnd();
  EXPECT_EQ(timeOf([&] { EXPECT_EQ(write29(), 6); }), kWriteTime + kAskTime + kEndTime);
}

TEST_F(IntelliboxTest, WritesByTheArgumentAndNotByTheProgrammingMode) {
  link.progMode = 2;
  expect("78 EF 1D 00 06", "00");
  expect(kAskEvent, "01 00");
  expectEnd();
  EXPECT_EQ(link.WriteCV(29, 6, 3, 1), 6);
  link.progMode = 1;
  expect("78 ED 05 00 06", "00");
  expect(kAskEvent, "01 00");
  expectEnd();
  EXPECT_EQ(link.WriteCV(5, 6, 3, 2), 6);
}

TEST_F(IntelliboxTest, AWriteAsksForTheEventAgainAndAgain) {
  expectWriteAndAsk().answer(fromHex("F5"));
  expect(kAskEvent, "F5");
  expect(kAskEvent, "01 00");
  expectEnd();
  EXPECT_EQ(write29(), 6);
}

TEST_F(IntelliboxTest, AMainTrackWriteEndsWithItsAcceptance) {
  expect("78 DE 03 00 1D 00 06", "00");
  EXPECT_EQ(timeOf([&] { EXPECT_EQ(writeMain(29, 3), 6); }), 60 + 10);
  expect("78 DE E8 03 00 01 06", "00");
  EXPECT_EQ(writeMain(256, 1000), 6);
}

TEST_F(IntelliboxTest, AMainTrackWriteThatIsNotAcceptedIsSentOnceMore) {
  expect("78 DE 03 00 1D 00 06", "06");
  expect("78 DE 03 00 1D 00 06", "00");
  expectEnd();
  EXPECT_EQ(timeOf([&] { EXPECT_EQ(writeMain(29, 3), -1020); }), 70 + 1000 + 70 + kEndTime);
}

TEST_F(IntelliboxTest, AMainTrackWriteThatIsTakenWithoutPowerOnTheTrackReachesNobody) {
  expect("78 DE 03 00 1D 00 06", "42");
  expect("78 DE 03 00 1D 00 06", "42");
  expectEnd();
  EXPECT_EQ(writeMain(29, 3), -1020);
}

TEST_F(IntelliboxTest, AMainTrackWriteToWhatIsNoAddressSendsNothing) {
  link.commJob = CommJob::WriteMain;
  link.pomAddr = -1;
  EXPECT_EQ(link.WriteCV(29, 6, 3, 0), -1003);
  EXPECT_EQ(line.sent(), "");
}

}  // namespace
}  // namespace lokari
