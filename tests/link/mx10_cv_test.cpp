#include "link/cv_result.h"
#include "link/mx10_fixture.h"

namespace lokari {
namespace {

class Mx10Cv : public test::Mx10Fixture {
 protected:
  const Data read29{0xC0, 0xA1, 0x03, 0x00, 0x1D, 0x00, 0x00, 0x00};
  const Data cv29Is14{0xC0, 0xA1, 0x03, 0x00, 0x1D, 0x00, 0x00, 0x00, 0x0E};
};

TEST_F(Mx10Cv, ReadsByAddressOnBothTracks) {
  openSession(true);
  expect(0x162186C2, read29).answer(0x1623C0A1, cv29Is14, 300);
  int value = -1;
  EXPECT_EQ(timeOf([&] { value = link.ReadCV(29, 3); }), 200 + 300);
  EXPECT_EQ(value, 14);

  link.progTrack = false;
  expect(0x162186C2, {0xC0, 0xA1, 0xD2, 0x04, 0x01, 0x01, 0x00, 0x00})
      .answer(0x1622C0A1, {0xC0, 0xA1, 0xD2, 0x04, 0x01, 0x01, 0x00, 0x00, 0xFF});
  EXPECT_EQ(link.ReadCV(257, 1234), 255);
}

TEST_F(Mx10Cv, DropsWhatCameBeforeTheQuestion) {
  openSession(true);
  can.arrive(message(0x1623C0A1, {0xC0, 0xA1, 0x03, 0x00, 0x1D, 0x00, 0x00, 0x00, 0x63}));
  expect(0x162186C2, read29).answer(0x1623C0A1, cv29Is14);
  EXPECT_EQ(link.ReadCV(29, 3), 14);
}

TEST_F(Mx10Cv, OtherMessagesOfTheBusArePassedOver) {
  openSession(true);
  expect(0x162186C2, read29)
      .answer(0x1621C0A1, cv29Is14, 10)
      .answer(0x1625C0A1, cv29Is14, 20)
      .answer(0x0209C0A1, cv29Is14, 30)
      .answer(0x1623C0A1, cv29Is14, 40);
  EXPECT_EQ(timeOf([&] { EXPECT_EQ(link.ReadCV(29, 3), 14); }), 240);
}

TEST_F(Mx10Cv, AnswersOfAnotherNodeAddressOrCvArePassedOver) {
  openSession(true);
  expect(0x162186C2, read29)
      .answer(0x1623C0A2, {0xC0, 0xA1, 0x03, 0x00, 0x1D, 0x00, 0x00, 0x00, 0x63}, 10)
      .answer(0x1623C0A1, {0xC0, 0xA1, 0x04, 0x00, 0x1D, 0x00, 0x00, 0x00, 0x63}, 20)
      .answer(0x1623C0A1, {0xC0, 0xA1, 0x03, 0x01, 0x1D, 0x00, 0x00, 0x00, 0x63}, 30)
      .answer(0x1623C0A1, {0xC0, 0xA1, 0x03, 0x00, 0x1C, 0x00, 0x00, 0x00, 0x63}, 40)
      .answer(0x1623C0A1, {0xC0, 0xA1, 0x03, 0x00, 0x1D, 0x01, 0x00, 0x00, 0x63}, 50)
      .answer(0x1623C0A1, cv29Is14, 60);
  EXPECT_EQ(timeOf([&] { EXPECT_EQ(link.ReadCV(29, 3), 14); }), 260);
}

TEST_F(Mx10Cv, OnlyTheLateAnswerOfAnotherCvIsNoReplyAfterTheToldTime) {
  openSession(true);
  expect(0x162186C2, read29)
      .answer(0x1623C0A1, {0xC0, 0xA1, 0x03, 0x00, 0x1C, 0x00, 0x00, 0x00, 0x63}, 10);
  expect(0x162186C2, read29);
  EXPECT_EQ(link.ReadCV(29, 3), cv_result::kNoReply);
}

TEST_F(Mx10Cv, ASilentStationIsAskedTwice) {
  openSession(true);
  expect(0x162186C2, read29);
  expect(0x162186C2, read29);
  EXPECT_EQ(link.ReadCV(29, 3), cv_result::kNoReply);
  EXPECT_EQ(view.statuses.last(), QStringLiteral("Keine / falsche Antwort vom Basisgerät!"));
}

TEST_F(Mx10Cv, TheSecondQuestionMayBeAnswered) {
  openSession(true);
  expect(0x162186C2, read29);
  expect(0x162186C2, read29).answer(0x1623C0A1, cv29Is14, 500);
  EXPECT_EQ(link.ReadCV(29, 3), 14);
}

TEST_F(Mx10Cv, AnAnswerTooShortToHoldAValueIsAWrongReply) {
  openSession(true);
  for (size_t size = 0; size < cv29Is14.size(); ++size) {
    const Data cut(cv29Is14.begin(), cv29Is14.begin() + static_cast<int>(size));
    expect(0x162186C2, read29).answer(0x1623C0A1, cut);
    EXPECT_EQ(link.ReadCV(29, 3), cv_result::kWrongReply) << size;
  }
  expect(0x162186C2, read29).answer(0x1623C0A1, cv29Is14);
  EXPECT_EQ(link.ReadCV(29, 3), 14);
}

TEST_F(Mx10Cv, ACancelEndsTheWait) {
  openSession(true);
  expect(0x162186C2, read29).then([&] { link.cancelRequested = true; }, 700);
  int result = 0;
  EXPECT_EQ(timeOf([&] { result = link.ReadCV(29, 3); }), 200 + 700);
  EXPECT_EQ(result, cv_result::kCancelled);
}

TEST_F(Mx10Cv, AReadThatCannotBeSentGetsNoReply) {
  openSession(true);
  can.writeResult = 5;
  expect(0x162186C2, read29);
  EXPECT_EQ(link.ReadCV(29, 3), cv_result::kNoReply);
}

TEST_F(Mx10Cv, WritesNineBytesAndAwaitsNothing) {
  openSession(true);
  expect(0x162586C2, {0xC0, 0xA1, 0x03, 0x00, 0x1D, 0x00, 0x00, 0x00, 0x06});
  int result = -1;
  EXPECT_EQ(timeOf([&] { result = link.WriteCV(29, 6, 3, 0); }), 200);
  EXPECT_EQ(result, 6);
  EXPECT_EQ(station().canRxMsg.ID, 0x162586C2U);
  EXPECT_EQ(station().canRxMsg.LEN, 7);
  EXPECT_EQ(station().canRxMsg.DATA[6], 6);
}

TEST_F(Mx10Cv, AWriteThatCannotBeSentFails) {
  openSession(true);
  can.writeResult = 5;
  expect(0x162586C2, {0xC0, 0xA1, 0x03, 0x00, 0x1D, 0x00, 0x00, 0x00, 0x06});
  EXPECT_EQ(link.WriteCV(29, 6, 3, 0), cv_result::kNoReply);
}

TEST_F(Mx10Cv, NumbersThatNoMessageCarriesSendNothing) {
  openSession(true);
  EXPECT_EQ(link.ReadCV(29, -1), cv_result::kWrongReply);
  EXPECT_EQ(link.ReadCV(65536, 3), cv_result::kWrongReply);
  EXPECT_EQ(link.WriteCV(29, 256, 3, 0), cv_result::kWrongReply);
}

TEST_F(Mx10Cv, ARepliedQuestionIsNotAskedAgainAfterTheSlowTransferPause) {
  openSession(true);
  settings.delayFlag = true;
  expect(0x162186C2, read29).answer(0x1623C0A1, cv29Is14);
  EXPECT_EQ(timeOf([&] { EXPECT_EQ(link.ReadCV(29, 3), 14); }), 1000 + 200 + 10);
}

}  // namespace
}  // namespace lokari
