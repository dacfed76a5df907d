// CVs by the binary commands after the makers' documents: an Intellibox and a Tams MC with the
// setting, and both without it where the told way has come to its end.
#include "link/cv_result.h"
#include "link/link_error.h"
#include "link/station_protocol.h"
#include "support/link_fixture.h"

namespace lokari {
namespace {

std::string nameOf(StationKind kind) {
  return QString::fromUtf16(stationKind(kind).name).toStdString();
}

class P50xFixture : public test::LinkFixture {
 protected:
  P50xFixture(StationKind kind, bool makerForm) : LinkFixture(kind) {
    settings.makerForm = makerForm;
    link.commJob = CommJob::WriteProgTrack;
    EXPECT_EQ(link.initComm(true, true, true), "");
    clock.advance(2000 - clock.now());
  }

  static QByteArray fromHex(const char* text) { return QByteArray::fromHex(text); }
  test::ScriptedLine& expect(const char* command) { return line.expect("x" + fromHex(command)); }
  void expect(const char* command, const char* answer) { expect(command).answer(fromHex(answer)); }
  void expectEnd() { expect("E2", "00"); }
  void expectEvent(const char* event) {
    expect("CE", event);
    expectEnd();
  }

  int read29() { return link.ReadCV(29, 3); }
  int write29() { return link.WriteCV(29, 6, 3, link.progMode); }
  int writeMain29() {
    link.commJob = CommJob::WriteMain;
    link.pomAddr = link.getAddrIndex(3);
    return link.WriteCV(29, 6, 3, 0);
  }
};

// -- both with the setting

class P50xMakers : public P50xFixture, public ::testing::WithParamInterface<StationKind> {
 protected:
  P50xMakers() : P50xFixture(GetParam(), true) {}
  const char* direct() const { return GetParam() == StationKind::Ibx ? "F2 1D 00" : "F0 1D 00"; }
};

INSTANTIATE_TEST_SUITE_P(Kinds, P50xMakers,
                         ::testing::Values(StationKind::Ibx, StationKind::TamsMc),
                         [](const auto& kind) { return nameOf(kind.param); });

TEST_P(P50xMakers, ReadsACv) {
  expect(direct(), "00");
  expectEvent("02 00 7B");
  EXPECT_EQ(read29(), 123);
  EXPECT_TRUE(view.statuses.isEmpty());
  EXPECT_EQ(link.getBufferCount(), 0);
}

TEST_P(P50xMakers, EveryMethodHasItsCommands) {
  link.progMode = 1;
  expect("EE 1D 00", "00");
  expectEvent("02 00 06");
  EXPECT_EQ(read29(), 6);
  expect("EF 1D 00 06", "00");
  expectEvent("01 00");
  EXPECT_EQ(write29(), 6);
  link.progMode = 2;
  expect("EC 05 00", "00");
  expectEvent("02 00 06");
  EXPECT_EQ(link.ReadCV(5, 3), 6);
  expect("ED 05 00 06", "00");
  expectEvent("01 00");
  EXPECT_EQ(link.WriteCV(5, 6, 3, 2), 6);
  link.progMode = 0;
  expect("F1 1D 00 06", "00");
  expectEvent("01 00");
  EXPECT_EQ(write29(), 6);
}

TEST_P(P50xMakers, AMainTrackWriteHasAResultToo) {
  expect("DE 03 00 1D 00 06", "00");
  expect("CE", "F5");
  expectEvent("01 00");
  EXPECT_EQ(writeMain29(), 6);
  expect("DE 03 00 1D 00 06", "00");
  expectEvent("01 FF");
  EXPECT_EQ(writeMain29(), -1001);
}

TEST_P(P50xMakers, TheResultIsAskedForUntilItIsThere) {
  expect(direct(), "00");
  for (int i = 0; i < 50; ++i) expect("CE", "F5");
  expectEvent("02 00 7B");
  EXPECT_EQ(read29(), 123);
}

TEST_P(P50xMakers, AResultThatNeverComesIsNotAskedForForever) {
  expect(direct(), "00");
  // Each question takes two bytes' time and its answer's, and a pause.
  for (int i = 0; i < 1000; ++i) expect("CE", "F5");
  expectEnd();
  EXPECT_EQ(read29(), -1001);
}

TEST_P(P50xMakers, EveryResultHasItsCode) {
  const QList<std::pair<const char*, int>> rows{{"01 FF", -1001}, {"01 FE", -1021},
                                                {"01 FD", -1018}, {"01 FC", -1019},
                                                {"01 FB", -251},  {"01 F4", -244}};
  for (const auto& [event, result] : rows) {
    expect(direct(), "00");
    expectEvent(event);
    EXPECT_EQ(read29(), result) << event;
    expect("F1 1D 00 06", "00");
    expectEvent(event);
    EXPECT_EQ(write29(), result) << event;
  }
}

TEST_P(P50xMakers, ABusyStationIsAskedAgain) {
  expect("F1 1D 00 06", "80");
  expect("F1 1D 00 06", "80");
  expect("F1 1D 00 06", "00");
  expectEvent("01 00");
  EXPECT_EQ(write29(), 6);
}

TEST_P(P50xMakers, AStationThatStaysBusyIsNotReady) {
  for (int i = 0; i < 21; ++i) expect("F1 1D 00 06", "80");
  expectEnd();
  EXPECT_EQ(write29(), -1020);
  EXPECT_FALSE(link.lastCvRefused);
}

TEST_P(P50xMakers, ARefusedWriteIsNotSentAgain) {
  for (const char* code : {"01", "02", "3F", "06"}) {
    expect("F1 1D 00 06", code);
    expectEnd();
    EXPECT_EQ(write29(), -1020) << code;
    EXPECT_TRUE(link.lastCvRefused);
  }
}

TEST_P(P50xMakers, AWriteThatNobodyConfirmsIsNotSentAgainAndItsResultCounts) {
  expect("F1 1D 00 06");
  expect("CE", "F5");
  expectEvent("01 00");
  EXPECT_EQ(write29(), 6);
  expect("F1 1D 00 06");
  expect("CE");
  expect("E2");
  EXPECT_EQ(write29(), -1001);
}

TEST_P(P50xMakers, TheCommandsReplyMayComeLate) {
  expect("F1 1D 00 06").answer(fromHex("00"), 3100);
  expect("CE", "F5");
  expectEvent("01 00");
  EXPECT_EQ(write29(), 6);
}

TEST_P(P50xMakers, AWarningIsTaken) {
  for (const char* code : {"40", "41", "42"}) {
    expect(direct(), code);
    expectEvent("02 00 06");
    EXPECT_EQ(read29(), 6) << code;
  }
}

TEST_P(P50xMakers, ALateAnswerAheadOfAResultIsPassedOver) {
  expect(direct(), "00");
  expect("CE", "00 02 00 7B");
  expect("CE");
  expectEnd();
  EXPECT_EQ(read29(), 123);
}

TEST_P(P50xMakers, ALineOfZerosIsNoReply) {
  expect(direct()).answer(QByteArray(40, '\0'));
  for (int i = 0; i < 3; ++i) expect("CE");
  expectEnd();
  EXPECT_EQ(read29(), -1001);
}

TEST_P(P50xMakers, ACancelEndsTheWaitAndTheProgramming) {
  expect(direct(), "00");
  expect("CE").then([&] { link.cancelRequested = true; }, 500);
  expectEnd();
  EXPECT_EQ(read29(), -1002);
}

TEST_P(P50xMakers, ALineThatVanishesIsTold) {
  expect(direct()).then([&] { line.vanish(); }, 200);
  EXPECT_THROW(read29(), LinkError);
}

TEST_P(P50xMakers, AResultCutForGoodIsAWrongReply) {
  expect(direct(), "00");
  expectEvent("02 00");
  EXPECT_EQ(read29(), -1003);
}

/// The same result in two pieces, by the byte it is cut behind, with a short and a long pause.
class P50xPieces : public P50xFixture,
                   public ::testing::WithParamInterface<std::tuple<StationKind, int, int>> {
 protected:
  P50xPieces() : P50xFixture(std::get<0>(GetParam()), true) {}
};

INSTANTIATE_TEST_SUITE_P(Cuts, P50xPieces,
                         ::testing::Combine(::testing::Values(StationKind::Ibx,
                                                              StationKind::TamsMc),
                                            ::testing::Range(1, 3), ::testing::Values(5, 1800)));

TEST_P(P50xPieces, AResultMayComeInPieces) {
  const auto [kind, cut, pause] = GetParam();
  const QByteArray whole = fromHex("02 00 7B");
  expect(kind == StationKind::Ibx ? "F2 1D 00" : "F0 1D 00", "00");
  expect("CE").answer(whole.left(cut)).answer(whole.mid(cut), pause);
  expectEnd();
  EXPECT_EQ(read29(), 123);
}

// -- reading by bits and by bytes

class IbxByBytes : public P50xFixture, public ::testing::WithParamInterface<bool> {
 protected:
  IbxByBytes() : P50xFixture(StationKind::Ibx, GetParam()) {}
};

INSTANTIATE_TEST_SUITE_P(BothForms, IbxByBytes, ::testing::Bool());

TEST_P(IbxByBytes, ADecoderThatCannotReadBitByBitIsReadByByte) {
  expect("F2 1D 00", "00");
  expect("CE", "01 FA");
  expect("F0 1D 00", "00");
  expectEvent("02 00 7B");
  EXPECT_EQ(read29(), 123);
}

TEST_P(IbxByBytes, ADecoderThatCanNeitherHasTheCodeOfTheFirst) {
  expect("F2 1D 00", "00");
  expect("CE", "01 FA");
  expect("F0 1D 00", "00");
  expectEvent("01 FE");
  EXPECT_EQ(read29(), -1021);
}

TEST_P(IbxByBytes, AStationThatDoesNotKnowTheCommandIsAskedByByte) {
  const int sendings = GetParam() ? 1 : 3;
  for (int i = 0; i < sendings; ++i) expect("F2 1D 00", "3F");
  expect("F0 1D 00", "00");
  expectEvent("02 00 7B");
  EXPECT_EQ(read29(), 123);
}

TEST(CvResultText, TheCodesOfAnIntelliboxHaveAMeaningBehindTheToldText) {
  EXPECT_EQ(cvResultText(-250), "Lesefehler  250: bitweise nicht lesbar");
  EXPECT_EQ(cvResultText(-251), "Lesefehler  251: die Zentrale meldet einen Fehler");
  EXPECT_EQ(cvResultText(-244), "Lesefehler  244: die Zentrale hat abgebrochen");
  EXPECT_EQ(cvResultText(-249), "Lesefehler  249");
}

// -- an Intellibox as told

class IbxAsTold : public P50xFixture {
 protected:
  IbxAsTold() : P50xFixture(StationKind::Ibx, false) {}
};

TEST_F(IbxAsTold, ABusyStationUsesUpNoCommand) {
  for (int i = 0; i < 5; ++i) expect("F1 1D 00 06", "80");
  expect("F1 1D 00 06", "00");
  expectEvent("01 00");
  EXPECT_EQ(write29(), 6);
}

TEST_F(IbxAsTold, AStationThatStaysBusyIsNotReady) {
  for (int i = 0; i < 22; ++i) expect("F1 1D 00 06", "80");
  expectEnd();
  EXPECT_EQ(write29(), -1020);
}

TEST_F(IbxAsTold, AnEventThatNeverComesIsNotAskedForForever) {
  expect("F2 1D 00", "00");
  for (int i = 0; i < 119; ++i) expect("CE", "F5");
  expectEnd();
  EXPECT_EQ(read29(), -1001);
}

TEST_F(IbxAsTold, AWarningIsAnAcceptance) {
  expect("F2 1D 00", "42");
  expectEvent("02 00 7B");
  EXPECT_EQ(read29(), 123);
}

// -- a Tams MC as told, whose station knows no texts

class TamsAsTold : public P50xFixture {
 protected:
  TamsAsTold() : P50xFixture(StationKind::TamsMc, false) {}
  void expectSilentRead() { line.expect("xPTRB 29\r"); }
  /// The station programs by binary commands.
  void expectBinary() { expect("E0", "00"); }
};

TEST_F(TamsAsTold, AStationThatAnswersNoTextIsReadByItsBinaryCommands) {
  expectSilentRead();
  expectBinary();
  expect("F0 1D 00", "00");
  expectEvent("02 00 7B");
  EXPECT_EQ(read29(), 123);
  EXPECT_TRUE(view.statuses.isEmpty());
}

TEST_F(TamsAsTold, ItIsAskedNoMoreTexts) {
  expectSilentRead();
  expectBinary();
  expect("F0 1D 00", "00");
  expectEvent("01 FC");
  EXPECT_EQ(read29(), -1019);
  expect("F0 08 00", "00");
  expectEvent("02 00 91");
  EXPECT_EQ(timeOf([&] { EXPECT_EQ(link.ReadCV(8, 3), 145); }), 30 + 10 + 20 + 20);
  expect("F1 1D 00 06", "00");
  expectEvent("01 00");
  EXPECT_EQ(write29(), 6);
  expect("DE 03 00 1D 00 06", "00");
  expectEvent("01 00");
  EXPECT_EQ(writeMain29(), 6);
}

TEST_F(TamsAsTold, AStationThatAnswersNothingAtAllGivesTheToldCode) {
  expectSilentRead();
  expect("E0");
  EXPECT_EQ(read29(), -1001);
  line.expect("xPTRB 8\r").answer("145]\r");
  EXPECT_EQ(link.ReadCV(8, 3), 145);
}

TEST_F(TamsAsTold, AStationThatRefusesTheBinaryCommandIsAskedTextsAgain) {
  for (const char* code : {"01", "02", "3F"}) {
    expectSilentRead();
    expect("E0", code);
    EXPECT_EQ(read29(), -1001) << code;
    line.expect("xPTRB 8\r").answer("145]\r");
    EXPECT_EQ(link.ReadCV(8, 3), 145);
  }
}

TEST_F(TamsAsTold, ATextThatComesMeanwhileIsTheReply) {
  settings.timeoutVal = 1;
  line.expect("xPTRB 29\r").answer("12", 5700).answer("3]\r", 20);
  expect("E0");
  EXPECT_EQ(read29(), 123);
  line.expect("xPTRB 8\r").answer("145]\r");
  EXPECT_EQ(link.ReadCV(8, 3), 145) << "it understands texts";
}

TEST_F(TamsAsTold, AWriteWithoutAnAnswerIsSentAnewOnlyToAStationThatKnowsNoTexts) {
  line.expect("xPTWD 29, 6\r");
  expectBinary();
  expectSilentRead();
  expect("F1 1D 00 06", "00");
  expectEvent("01 00");
  EXPECT_EQ(write29(), 6);
}

TEST_F(TamsAsTold, AWriteWithoutAnAnswerIsNotSentAnewToAStationThatKnowsThem) {
  line.expect("xPTWD 29, 6\r");
  expectBinary();
  line.expect("xPTRB 29\r").answer("6]\r");
  EXPECT_EQ(write29(), -1001);
}

TEST_F(TamsAsTold, TheLateReplyToAWriteIsItsResult) {
  line.expect("xPTWD 29, 6\r");
  expectBinary();
  line.expect("xPTRB 29\r").answer("Ok]\r");
  EXPECT_EQ(write29(), 6);
}

TEST_F(TamsAsTold, AWriteToAStationThatAnswersNothingIsNotSentAnew) {
  line.expect("xPTWD 29, 6\r");
  expect("E0");
  EXPECT_EQ(write29(), -1001);
}

TEST_F(TamsAsTold, AWriteOnTheMainTrackIsNeverSentAnew) {
  line.expect("xPD 3, 29, 6\r");
  EXPECT_EQ(writeMain29(), -1001);
}

TEST_F(TamsAsTold, ARefusedTextIsTheResult) {
  line.expect("xPTRB 29\r").answer("No ack]\r");
  EXPECT_EQ(read29(), -1021);
  line.expect("xPTRB 29\r").answer("Error]\r");
  EXPECT_EQ(read29(), -1003);
}

/// Every reply with its bracket and without a carriage return behind, cut at every place.
class TamsPieces : public P50xFixture, public ::testing::WithParamInterface<std::tuple<int, int>> {
 protected:
  TamsPieces() : P50xFixture(StationKind::TamsMc, false) {}
};

INSTANTIATE_TEST_SUITE_P(Cuts, TamsPieces,
                         ::testing::Combine(::testing::Range(1, 7), ::testing::Values(5, 900)));

TEST_P(TamsPieces, AReplyEndsWithItsBracket) {
  const auto [cut, pause] = GetParam();
  const QList<std::pair<QByteArray, int>> replies{
      {"6]", 6}, {"45]", 45}, {"123]", 123}, {"Error]", -1003}, {"No ack]", -1021}};
  for (const auto& [reply, result] : replies) {
    for (const char* end : {"", "\r"}) {
      const QByteArray whole = reply + end;
      auto& script = line.expect("xPTRB 29\r").answer(whole.left(cut));
      if (cut < whole.size()) script.answer(whole.mid(cut), pause);
      EXPECT_EQ(read29(), result) << whole.toStdString();
      clock.advance(100);
      link.protocol().dropInput();
    }
  }
  link.commJob = CommJob::WriteProgTrack;
  line.expect("xPTWD 29, 6\r")
      .answer(QByteArray("Ok]").left(cut))
      .answer(QByteArray("Ok]").mid(cut), pause);
  EXPECT_EQ(write29(), 6);
}

}  // namespace
}  // namespace lokari
