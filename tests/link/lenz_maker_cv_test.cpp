// CVs on the programming track of a Lenz interface in the form of its maker's documents.
#include "lenz_fixture.h"

namespace lokari {
namespace {

class MakerCv : public test::LenzFixture {
 protected:
  explicit MakerCv(StationKind kind = StationKind::Li100V3) : LenzFixture(kind) {
    settings.makerForm = true;
  }

  static constexpr const char* kResume = "21 81 A0";
  static constexpr const char* kResumed = "61 01 60";
  static constexpr const char* kAsk = "21 10 31";
  static constexpr const char* kInServiceMode = "61 02 63";
  static constexpr const char* kRead29 = "22 15 1D 2A";
  static constexpr const char* kResult = "63 14 1D 06 6C";

  void expectAccess(const char* message, const char* result) {
    expect(message, kInServiceMode);
    expect(kAsk, result);
    expect(kResume, kResumed);
  }
};

class MakerCvOnUsb : public MakerCv {
 protected:
  MakerCvOnUsb() : MakerCv(StationKind::LiUsb) {}
};

class MakerCvOnLi100 : public MakerCv {
 protected:
  MakerCvOnLi100() : MakerCv(StationKind::Li100) {}
};

TEST_F(MakerCv, OneMessageConfirmsARead) {
  expectAccess(kRead29, kResult);
  EXPECT_EQ(timeOf([&] { EXPECT_EQ(link.ReadCV(29, 3), 6); }), 3 * 60);
}

TEST_F(MakerCvOnLi100, OneMessageConfirmsAReadThereToo) {
  expectAccess(kRead29, kResult);
  EXPECT_EQ(timeOf([&] { EXPECT_EQ(link.ReadCV(29, 3), 6); }), 3 * 60);
}

TEST_F(MakerCvOnUsb, EitherHeadIsTakenForABroadcast) {
  for (const char* head : {"FF FD", "FF FE"}) {
    expect("FF FE 22 15 01 36").answer(fromHex(head) + fromHex("61 02 63"));
    expect("FF FE 21 10 31", "FF FE 63 14 01 05 73");
    expect("FF FE 21 81 A0").answer(fromHex(head) + fromHex("61 01 60"));
    EXPECT_EQ(link.ReadCV(1, 3), 5) << head;
  }
}

TEST_F(MakerCv, ConfirmationsAndBroadcastsComeInAnyOrderAndNumberAndInPieces) {
  for (const char* reply : {"01 04 05", "61 02 63", "01 04 05 61 02 63", "61 02 63 01 04 05",
                            "61 02 63 61 02 63 61 02 63"}) {
    const QByteArray whole = fromHex(reply);
    for (qsizetype cut = 1; cut < whole.size(); ++cut) {
      for (const Millis pause : {Millis{0}, Millis{30}, Millis{700}, Millis{2500}}) {
        // A part may come behind the question for the result.
        expect(kRead29).answer(whole.left(cut)).answer(whole.mid(cut), pause);
        expect(kAsk).answer(fromHex(kResult), 3000);
        expect(kResume, kResumed);
        EXPECT_EQ(link.ReadCV(29, 3), 6) << reply << " cut at " << cut << ", " << pause << " ms";
      }
    }
  }
}

TEST_F(MakerCv, AResultCutAnywhereIsPutTogether) {
  const QByteArray whole = fromHex(kResult);
  for (qsizetype cut = 1; cut < whole.size(); ++cut) {
    for (const Millis pause : {Millis{0}, Millis{30}, Millis{700}, Millis{2500}}) {
      expect(kRead29, kInServiceMode);
      expect(kAsk).answer(whole.left(cut)).answer(whole.mid(cut), pause);
      expect(kResume, kResumed);
      EXPECT_EQ(link.ReadCV(29, 3), 6) << "cut at " << cut << ", " << pause << " ms";
    }
  }
}

TEST_F(MakerCv, AResultIsAskedForOnceAndAwaitedNinetySeconds) {
  expect(kRead29, kInServiceMode);
  expect(kAsk).answer(fromHex(kResult), 89'000);
  expect(kResume, kResumed);
  EXPECT_EQ(link.ReadCV(29, 3), 6);
  expect(kRead29, kInServiceMode);
  expect(kAsk);
  expect(kResume, kResumed);
  EXPECT_EQ(timeOf([&] { EXPECT_EQ(link.ReadCV(29, 3), -1001); }), 90'000 + 60 + 60);
}

TEST_F(MakerCv, ALongWaitIsShownAndNoShortOne) {
  expectAccess(kRead29, kResult);
  link.ReadCV(29, 3);
  EXPECT_TRUE(view.details.isEmpty());
  expect(kRead29, kInServiceMode);
  expect(kAsk).answer(fromHex(kResult), 20'000);
  expect(kResume, kResumed);
  link.ReadCV(29, 3);
  EXPECT_EQ(view.details,
            (QStringList{"Die Zentrale arbeitet am Programmiergleis, bis zu 90 Sekunden …", ""}));
}

TEST_F(MakerCv, ACancelEndsTheWaitAtOnce) {
  expect(kRead29, kInServiceMode);
  Millis cancelledAt = 0;
  expectAnd(
      kAsk,
      [&] {
        link.cancelRequested = true;
        cancelledAt = clock.now();
      },
      20'000);
  expectAnd(
      kResume, [&] { EXPECT_LE(clock.now() - cancelledAt, 100); }, 0);
  expectTimes(4, kResume);
  EXPECT_EQ(link.ReadCV(29, 3), -1002);
}

TEST_F(MakerCv, ABusyStationGetsTheCommandAndTheQuestionAgain) {
  expect(kRead29, "61 81 E0");
  expect(kRead29, "61 80 E1");
  expect(kRead29, "01 0A 0B");
  expect(kRead29, kInServiceMode);
  expect(kAsk, "61 1F 7E");
  expect(kAsk, "61 81 E0");
  expect(kAsk, kResult);
  expect(kResume, kResumed);
  EXPECT_EQ(link.ReadCV(29, 3), 6);
}

TEST_F(MakerCv, AStationThatStaysBusyIsNotReadyAndHasDoneNothing) {
  for (int i = 0; i < 10; ++i) expect(kRead29, "61 81 E0");
  expect(kResume, kResumed);
  EXPECT_EQ(link.ReadCV(29, 3), -1020);
  EXPECT_TRUE(link.lastCvRefused);
}

TEST_F(MakerCv, ReportsHaveTheCodesThatHaveTexts) {
  const QList<std::pair<const char*, int>> rows{
      {"61 12 73", -1018}, {"61 13 72", -1019}, {"61 82 E3", -1130}};
  for (const auto& [report, result] : rows) {
    expectAccess(kRead29, report);
    EXPECT_EQ(link.ReadCV(29, 3), result) << report;
    EXPECT_FALSE(link.lastCvRefused);
    expectAccess("23 16 1D 06 2E", report);
    EXPECT_EQ(write(29, 6), result) << report;
  }
}

TEST_F(MakerCv, AMessageThatTheStationDoesNotKnowIsRefused) {
  expect(kRead29, "61 82 E3");
  expect(kResume, kResumed);
  EXPECT_EQ(link.ReadCV(29, 3), -1130);
  EXPECT_TRUE(link.lastCvRefused);
}

TEST_F(MakerCv, AnInterfaceWithoutItsStationIsNoReply) {
  const QList<std::pair<const char*, int>> rows{
      {"01 02 03", -1001}, {"01 08 09", -1020}, {"01 01 00", -1003}};
  for (const auto& [word, result] : rows) {
    expect(kRead29, word);
    expect(kResume, kResumed);
    EXPECT_EQ(link.ReadCV(29, 3), result) << word;
  }
}

TEST_F(MakerCv, SilenceIsNoReplyAfterTheDocumentedTime) {
  expect(kRead29);
  expect(kResume, kResumed);
  EXPECT_EQ(timeOf([&] { EXPECT_EQ(link.ReadCV(29, 3), -1001); }), 50 + 5000 + 60);
}

TEST_F(MakerCv, TheLateResultOfAnotherCvIsPassedOver) {
  expect(kRead29, kInServiceMode);
  expect(kAsk).answer(fromHex("63 14 08 61 1E")).answer(fromHex(kResult), 2000);
  expect(kResume, kResumed);
  EXPECT_EQ(link.ReadCV(29, 3), 6);
}

TEST_F(MakerCv, RegisterModeHasItsOwnMessages) {
  link.progMode = 2;
  expectAccess("22 11 01 32", "63 10 01 03 71");
  EXPECT_EQ(link.ReadCV(1, 3), 3);
  expectAccess("22 11 05 36", "63 10 05 06 70");
  EXPECT_EQ(link.ReadCV(29, 3), 6) << "register 5";
  expectAccess("23 12 01 11 21", "63 10 01 11 63");
  EXPECT_EQ(write(1, 17, 2), 17);
  EXPECT_EQ(link.ReadCV(9, 3), -1003) << "there are eight";
}

TEST_F(MakerCv, PagedModeReaches256) {
  link.progMode = 1;
  expectAccess("22 14 00 36", "63 10 00 06 75");
  EXPECT_EQ(link.ReadCV(256, 3), 6);
  expectAccess("23 17 00 06 32", "63 10 00 06 75");
  EXPECT_EQ(write(256, 6, 1), 6);
}

TEST_F(MakerCv, TheHigherRangesHaveTheirMessagesAndResults) {
  expectAccess("22 15 FF C8", "63 14 FF 06 8E");
  EXPECT_EQ(link.ReadCV(255, 3), 6);
  const char* const kVersion = "63 21 36 00 74";
  const std::tuple<int, const char*, const char*> reads[] = {
      {256, "22 19 00 3B", "63 15 00 06 70"},
      {511, "22 19 FF C4", "63 15 FF 06 8F"},
      {512, "22 1A 00 38", "63 16 00 06 73"},
      {1023, "22 1B FF C6", "63 17 FF 06 8D"},
      {1024, "22 18 00 3A", "63 14 00 06 71"}};
  for (const auto& [cv, message, result] : reads) {
    expect("21 21 00", kVersion);
    expectAccess(message, result);
    EXPECT_EQ(link.ReadCV(cv, 3), 6) << cv;
  }
  expect("21 21 00", kVersion);
  expectAccess("23 1D 00 06 38", "63 15 00 06 70");
  EXPECT_EQ(write(256, 6), 6);
}

// The byte 00 is CV 256 at an older station and CV 1024 at one of version 3.6.
TEST_F(MakerCv, Cv256IsReadAsTheStationsVersionHasIt) {
  expect("21 21 00", "63 21 30 00 72");
  expectAccess("22 15 00 37", "63 14 00 06 71");
  EXPECT_EQ(link.ReadCV(256, 3), 6);
  expect("21 21 00", "63 21 36 00 74");
  expectAccess("22 19 00 3B", "63 15 00 06 70");
  EXPECT_EQ(link.ReadCV(256, 3), 6);
  expect("21 21 00", "63 21 30 00 72");
  EXPECT_EQ(link.ReadCV(257, 3), -1003);
}

TEST_F(MakerCv, AWriteWithoutAValueIsReadBack) {
  expect("23 16 1D 06 2E", kInServiceMode);
  expect(kAsk, "61 11 70");
  expect(kRead29, "01 04 05");
  expect(kAsk, "63 14 1D 02 68");
  expect(kResume, kResumed);
  EXPECT_EQ(write(29, 6), 2);
}

TEST_F(MakerCv, ADirectReadMayBeAnsweredAsARegister) {
  expectAccess("22 15 01 36", "63 10 01 03 71");
  EXPECT_EQ(link.ReadCV(1, 3), 3);
}

TEST_F(MakerCvOnLi100, TheMainTrackIsWrittenAndNotAskedForAResult) {
  expect("E6 30 00 03 EC 1C 06 23", "01 04 05");
  EXPECT_EQ(writeMain(29, 6, 3), 6);
}

}  // namespace
}  // namespace lokari
