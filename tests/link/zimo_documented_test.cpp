// The Zimo binary protocol as the makers' documents have it: kinds of frames that a station of the
// told form does not send.
#include "link/link_error.h"
#include "link/zimo_binary.h"
#include "support/link_fixture.h"

namespace lokari {
namespace {

const char* const kRead29 = "0101 02 1030 13 80 00 00 1D AC 17";
const char* const kRead29Again = "0101 03 1030 13 80 00 00 1D 91 17";
const char* const kWriteMain29 = "0101 02 1030 13 80 03 00 1D 06 59 17";
/// Of kind 40, to sequence 2: taken, busy, error 7.
const char* const kConfirmed = "0101 2F 40 13 02 00 81 17";
const char* const kBusy = "0101 2F 40 13 02 04 E0 17";
const char* const kRefused = "0101 2F 40 13 02 07 02 17";
/// Of kind 20, to sequence 2: CV 29 is 6; error 6.
const char* const kResult = "0101 30 20 13 02 80 00 00 1D 06 74 17";
const char* const kFailure = "0101 30 20 13 02 80 00 06 2E 17";
/// To other messages or sequences.
const char* const kConfirmedEarlier = "0101 2F 40 13 1021 00 D4 17";
const char* const kConfirmedOther = "0101 2F 40 03 02 00 CB 17";
const char* const kResultEarlier = "0101 31 20 13 1021 80 00 00 1D 07 D7 17";
const char* const kDataOther = "0101 31 20 08 02 80 00 00 1D 07 C3 17";
/// Of kind 00: vehicle 3 has changed, in two messages.
const char* const kNews = "0101 30 00 FF 00 80 03 1030 0C 00 00 FF 17";
const char* const kOtherNews = "0101 31 00 08 00 80 03 1030 0C 00 00 C6 17";
const char* const kAck3 = "0101 03 50 13 30 00 DC 17";

QByteArray fromHex(const char* text) {
  return QByteArray::fromHex(text);
}

class ZimoDocumented : public test::LinkFixture {
 protected:
  ZimoDocumented() : LinkFixture(StationKind::Mx1Bin) {
    expect("0101 00 1030 00 3E 17").answer(fromHex("0101 04 50 00 00 00 0E 17"));
    expect("0101 1021 1030 11 04 1021 B8 17").answer(fromHex("0101 05 50 11 00 00 22 17"));
    link.commJob = CommJob::ReadProgTrack;
    EXPECT_EQ(link.initComm(true, true, true), "");
  }

  test::ScriptedLine& expect(const char* frame) { return line.expect(fromHex(frame)); }
};

TEST_F(ZimoDocumented, AResultMayComeWithoutAConfirmation) {
  expect(kRead29).answer(fromHex(kResult), 400);
  expect(kAck3);
  EXPECT_EQ(link.ReadCV(29, 3), 6);
}

TEST_F(ZimoDocumented, AResultMayComeBehindItsConfirmation) {
  expect(kRead29).answer(fromHex(kConfirmed)).answer(fromHex(kResult), 400);
  expect(kAck3);
  EXPECT_EQ(link.ReadCV(29, 3), 6);
}

TEST_F(ZimoDocumented, AFailureIsItsError) {
  expect(kRead29).answer(fromHex(kFailure));
  expect(kAck3);
  EXPECT_EQ(link.ReadCV(29, 3), -1106);
}

TEST_F(ZimoDocumented, ARefusalIsItsErrorAndABusyStationIsAskedAgain) {
  expect(kRead29).answer(fromHex(kRefused));
  EXPECT_EQ(link.ReadCV(29, 3), -1037);
  expect(kRead29Again).answer(fromHex("0101 2F 40 13 03 04 24 17"));
  expect("0101 04 1030 13 80 00 00 1D 22 17")
      .answer(fromHex("0101 30 20 13 04 80 00 00 1D 06 C6 17"));
  expect("0101 05 50 13 30 00 40 17");
  EXPECT_EQ(link.ReadCV(29, 3), 6);
}

TEST_F(ZimoDocumented, WhatAnswersAnotherMessageOrSequenceIsPassedOver) {
  for (const char* stray :
       {kNews, kOtherNews, kConfirmedEarlier, kConfirmedOther, kResultEarlier, kDataOther}) {
    dynamic_cast<ZimoBinaryProtocol&>(link.protocol()).framing().zbinSeq = 2;
    expect(kRead29).answer(fromHex(stray)).answer(fromHex(kResult), 400);
    expect(kAck3);
    EXPECT_EQ(link.ReadCV(29, 3), 6) << stray;
  }
  EXPECT_EQ(line.writes.size(), 2 + 6 * 2) << "nothing but the results is acknowledged";
}

TEST_F(ZimoDocumented, WithTheSettingWhatNobodyAskedForIsAcknowledgedByItsMessage) {
  settings.makerForm = true;
  expect(kRead29).answer(fromHex(kNews));
  expect("0101 03 50 FF 30 27 17").answer(fromHex(kOtherNews));
  expect("0101 04 50 08 31 08 17").answer(fromHex(kConfirmedOther)).answer(fromHex(kResult), 400);
  expect("0101 05 50 13 30 00 40 17");
  EXPECT_EQ(link.ReadCV(29, 3), 6);
}

TEST_F(ZimoDocumented, AMainTrackWriteHasAResult) {
  link.commJob = CommJob::WriteMain;
  expect(kWriteMain29).answer(fromHex("0101 30 20 13 02 80 03 00 1D 06 FC 17"));
  expect(kAck3);
  EXPECT_EQ(link.WriteCV(29, 6, 3, 0), 6);
  dynamic_cast<ZimoBinaryProtocol&>(link.protocol()).framing().zbinSeq = 2;
  expect(kWriteMain29).answer(fromHex("0101 30 20 13 02 80 03 06 7B 17"));
  expect(kAck3);
  EXPECT_EQ(link.WriteCV(29, 6, 3, 0), -1106);
}

TEST_F(ZimoDocumented, TheConfirmationOfAStopInBetweenIsNotTakenForTheCvs) {
  auto& framing = dynamic_cast<ZimoBinaryProtocol&>(link.protocol()).framing();
  expect(kRead29).then([&] { framing.zbinSendAhead(fromHex("02 00")); }, 5);
  expect("0101 03 1030 02 00 B8 17")
      .answer(fromHex("0101 31 40 02 03 1021 24 17"))
      .answer(fromHex(kResult), 400);
  expect("0101 04 50 13 30 00 8D 17");
  EXPECT_EQ(link.ReadCV(29, 3), 6);
  EXPECT_EQ(timeOf([&] { framing.zbinSettle(); }), 0) << "it is confirmed";
}

/// A stray frame and the result in two pieces, by the byte they are cut behind.
class ZimoPieces : public ZimoDocumented, public ::testing::WithParamInterface<int> {};

INSTANTIATE_TEST_SUITE_P(Cuts, ZimoPieces, ::testing::Range(1, 28));

TEST_P(ZimoPieces, FramesMayComeInPieces) {
  const QByteArray both = fromHex(kNews) + fromHex(kResult);
  expect(kRead29).answer(both.left(GetParam())).answer(both.mid(GetParam()), 1500);
  expect(kAck3);
  EXPECT_EQ(link.ReadCV(29, 3), 6);
}

}  // namespace
}  // namespace lokari
