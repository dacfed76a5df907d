#include "link/zimo_binary_codec.h"

#include <gtest/gtest.h>

#include "base/bytes.h"
#include "link/cv_result.h"

namespace lokari {
namespace {

using zbin::Confirmation;
using zbin::Verdict;

QByteArray fromHex(const char* text) {
  return QByteArray::fromHex(text);
}

/// What stands behind the start pair of a frame given whole.
zbin::Reply received(const char* frame) {
  const QByteArray whole = fromHex(frame);
  const std::optional<qsizetype> start = zbin::bodyStart(whole);
  return start ? zbin::takeApart(whole.mid(*start)) : zbin::Reply{};
}

TEST(ZimoBinaryCrc, OfAnEmptyStringIsFf) {
  EXPECT_EQ(zbin::calcCRC8({}), 0xFF);
}

TEST(ZimoBinaryCrc, IsTheReflectedOneWirePolynomialFromFf) {
  EXPECT_EQ(zbin::calcCRC8(fromHex("00")), 0x35);
  EXPECT_EQ(zbin::calcCRC8(fromHex("01")), 0x6B);
  EXPECT_EQ(zbin::calcCRC8("123456789"), 0x0B);
}

TEST(ZimoBinaryFrame, GreetsAndSaysGoodbye) {
  EXPECT_EQ(zbin::frame(0, zbin::hello(), false), fromHex("0101 00 1030 00 3E 17"));
  EXPECT_EQ(zbin::frame(1, zbin::logOn(), false), fromHex("0101 1021 1030 11 04 1021 B8 17"));
  EXPECT_EQ(zbin::frame(2, zbin::logOff(), false), fromHex("0101 02 1030 11 04 00 A8 17"));
}

TEST(ZimoBinaryFrame, ReadsACvHighByteFirst) {
  EXPECT_EQ(zbin::readCv(29), fromHex("13 80 00 00 1D"));
  EXPECT_EQ(zbin::readCv(256), fromHex("13 80 00 01 00"));
  EXPECT_EQ(zbin::readCv(1024), fromHex("13 80 00 04 00"));
  EXPECT_EQ(zbin::frame(2, zbin::readCv(29), false), fromHex("0101 02 1030 13 80 00 00 1D AC 17"));
  EXPECT_EQ(zbin::frame(2, zbin::readCv(1), false), fromHex("0101 02 1030 13 80 00 00 1021 92 17"));
}

TEST(ZimoBinaryFrame, WritesACvOnTheProgrammingTrack) {
  EXPECT_EQ(zbin::writeCv(29, 6), fromHex("13 80 00 00 1D 06"));
  EXPECT_EQ(zbin::writeCv(257, 255), fromHex("13 80 00 01 01 FF"));
  EXPECT_EQ(zbin::frame(2, zbin::writeCv(29, 6), false),
            fromHex("0101 02 1030 13 80 00 00 1D 06 D1 17"));
}

TEST(ZimoBinaryFrame, WritesACvOnTheMainTrackByAddress) {
  EXPECT_EQ(zbin::writeCvMain(3, 29, 6), fromHex("13 80 03 00 1D 06"));
  EXPECT_EQ(zbin::writeCvMain(1000, 29, 6), fromHex("13 83 E8 00 1D 06"));
  EXPECT_EQ(zbin::writeCvMain(10239, 1024, 0), fromHex("13 A7 FF 04 00 00"));
  EXPECT_EQ(zbin::writeCvMain(1, 29, 6), fromHex("13 80 01 00 1D 06"));
  EXPECT_EQ(zbin::frame(2, fromHex("13 83 E8 00 1D 06"), false),
            fromHex("0101 02 1030 13 83 E8 00 1D 06 CA 17"));
}

TEST(ZimoBinaryFrame, NoMessageWritesOnTheMainTrackToWhatIsNoAddress) {
  for (const int address : {0, -1, -200, 10240, 32767}) {
    EXPECT_EQ(zbin::writeCvMain(address, 29, 6), std::nullopt) << address;
  }
}

TEST(ZimoBinaryFrame, AcknowledgesAsAnAnswer) {
  EXPECT_EQ(zbin::acknowledge(7), fromHex("13 07 00"));
  EXPECT_EQ(zbin::frame(3, zbin::acknowledge(7), true), fromHex("0101 03 50 13 07 00 9F 17"));
}

TEST(ZimoBinaryFrame, EscapesThePayload) {
  EXPECT_EQ(zbin::frame(5, fromHex("17"), false), fromHex("0101 05 1030 1037 15 17"));
  EXPECT_EQ(zbin::frame(5, fromHex("10"), false), fromHex("0101 05 1030 1030 96 17"));
  EXPECT_EQ(zbin::frame(5, fromHex("01"), false), fromHex("0101 05 1030 1021 55 17"));
}

TEST(ZimoBinaryFrame, EscapesTheSequenceByteLikeAnyOther) {
  EXPECT_EQ(zbin::frame(0x01, fromHex("00"), false), fromHex("0101 1021 1030 00 95 17"));
  EXPECT_EQ(zbin::frame(0x10, fromHex("00"), false), fromHex("0101 1030 1030 00 74 17"));
  EXPECT_EQ(zbin::frame(0x17, fromHex("00"), false), fromHex("0101 1037 1030 00 0E 17"));
  EXPECT_EQ(zbin::frame(0xFF, fromHex("00"), false), fromHex("0101 FF 1030 00 EC 17"));
}

TEST(ZimoBinaryFrame, EscapesTheChecksumLikeAnyOther) {
  EXPECT_EQ(zbin::frame(0x2D, zbin::readCv(29), false),
            fromHex("0101 2D 1030 13 80 00 00 1D 1021 17"));
  EXPECT_EQ(zbin::frame(0x11, zbin::readCv(29), false),
            fromHex("0101 11 1030 13 80 00 00 1D 1030 17"));
  EXPECT_EQ(zbin::frame(0xBF, zbin::readCv(29), false),
            fromHex("0101 BF 1030 13 80 00 00 1D 1037 17"));
}

TEST(ZimoBinaryStart, IsTheFirstPairOfAdjacentOnes) {
  EXPECT_EQ(zbin::bodyStart(fromHex("01 01 05 50 13")), 2);
  EXPECT_EQ(zbin::bodyStart(fromHex("AA 01 01 05 50")), 3);
  EXPECT_EQ(zbin::bodyStart(fromHex("01 AA 01 01 05")), 4);
  EXPECT_EQ(zbin::bodyStart(fromHex("AA BB CC 01 01")), 5);
  EXPECT_EQ(zbin::bodyStart(fromHex("01 01 01 01 01")), 2);
}

TEST(ZimoBinaryStart, IsMissingWithoutAPair) {
  EXPECT_FALSE(zbin::bodyStart({}).has_value());
  EXPECT_FALSE(zbin::bodyStart(fromHex("01")).has_value());
  EXPECT_FALSE(zbin::bodyStart(fromHex("01 AA 01 BB 01")).has_value());
  EXPECT_FALSE(zbin::bodyStart(fromHex("AA BB CC DD 01")).has_value());
}

TEST(ZimoBinaryReply, OfAFourByteHeaderLosesByteFourAndTheLastTwo) {
  const zbin::Reply reply = received("0101 07 50 13 02 00 C5 17");
  EXPECT_EQ(reply.seq, 7);
  EXPECT_EQ(reply.text, fromHex("13 00"));
}

TEST(ZimoBinaryReply, OfAFiveByteHeaderLosesBytesFourAndFiveAndTheLastThree) {
  const zbin::Reply reply = received("0101 07 D0 13 02 AA 00 06 C5 C6 17");
  EXPECT_EQ(reply.seq, 7);
  EXPECT_EQ(reply.text, fromHex("13 00 06"));
}

TEST(ZimoBinaryReply, LosesItsEscapesBeforeItIsMeasured) {
  const zbin::Reply reply = received("0101 1021 1030 13 1037 80 00 00 1030 1021 1037 17");
  EXPECT_EQ(reply.seq, 1);
  EXPECT_EQ(reply.text, fromHex("13 80 00 00 10 01"));
  EXPECT_TRUE(received("0101 07 1030 13 1021 17").text.isEmpty());
}

TEST(ZimoBinaryReply, OfNothingButHeaderAndTailIsTheCommandByte) {
  EXPECT_EQ(received("0101 07 50 13 02 C5 17").text, fromHex("13"));
  EXPECT_EQ(received("0101 07 D0 13 02 AA C5 C6 17").text, fromHex("13"));
}

TEST(ZimoBinaryReply, ThatIsTooShortIsEmptyButKeepsItsSequenceByte) {
  EXPECT_EQ(received("0101 17").seq, 0x17);
  EXPECT_TRUE(received("0101 17").text.isEmpty());
  EXPECT_EQ(received("0101 07 17").seq, 7);
  EXPECT_TRUE(received("0101 07 50 13 02 17").text.isEmpty());
  EXPECT_TRUE(received("0101 07 D0 13 02 AA C5 17").text.isEmpty());
}

TEST(ZimoBinaryReply, IsTakenWhateverItsChecksum) {
  EXPECT_EQ(received("0101 07 50 13 02 00 00 17").text, fromHex("13 00"));
  EXPECT_EQ(received("0101 07 50 13 02 00 FF 17").text, fromHex("13 00"));
}

TEST(ZimoBinaryReply, MayEscapeItsVeryEnd) {
  EXPECT_EQ(received("0101 07 50 13 02 00 C5 10 17").text, fromHex("13 00"));
}

TEST(ZimoBinaryJudgement, TellsBusyFromAcceptedAndRefused) {
  EXPECT_EQ(zbin::judge({}), Verdict::TooShort);
  EXPECT_EQ(zbin::judge(fromHex("13")), Verdict::TooShort);
  EXPECT_EQ(zbin::judge(fromHex("13 00")), Verdict::Accepted);
  EXPECT_EQ(zbin::judge(fromHex("13 00 55")), Verdict::Accepted);
  EXPECT_EQ(zbin::judge(fromHex("13 04")), Verdict::Busy);
  EXPECT_EQ(zbin::judge(fromHex("11 04")), Verdict::Busy);
  EXPECT_EQ(zbin::judge(fromHex("13 05")), Verdict::Refused);
  EXPECT_EQ(zbin::judge(fromHex("11 00")), Verdict::Refused);
}

TEST(ZimoBinaryJudgement, ARefusalCarriesTheStationsByte) {
  EXPECT_EQ(zbin::refusal(fromHex("13 05")), -1035);
  EXPECT_EQ(zbin::refusal(fromHex("13 FF")), -1285);
  EXPECT_EQ(zbin::refusal(fromHex("11 00")), -1030);
}

TEST(ZimoBinaryJudgement, AResultIsItsSixthByte) {
  const zbin::Result result = zbin::result(fromHex("13 80 00 00 1D 06"));
  EXPECT_TRUE(result.ours);
  EXPECT_EQ(result.code, 6);
  EXPECT_EQ(zbin::result(fromHex("13 80 00 04 00 FF 99")).code, 255);
}

TEST(ZimoBinaryJudgement, AShorterResultIsAFailureWithItsFourthByte) {
  const zbin::Result result = zbin::result(fromHex("13 80 00 03"));
  EXPECT_TRUE(result.ours);
  EXPECT_EQ(result.code, -1103);
  EXPECT_EQ(zbin::result(fromHex("13 80 00 FF 1D")).code, -1355);
}

TEST(ZimoBinaryJudgement, AResultWithoutAFourthByteIsAWrongReply) {
  EXPECT_TRUE(zbin::result(fromHex("13")).ours);
  EXPECT_EQ(zbin::result(fromHex("13")).code, cv_result::kWrongReply);
  EXPECT_EQ(zbin::result(fromHex("13 80 00")).code, cv_result::kWrongReply);
}

TEST(ZimoBinaryJudgement, AResultOfAnotherCommandIsAWrongReplyAndNotOurs) {
  EXPECT_FALSE(zbin::result(fromHex("11 80 00 00 1D 06")).ours);
  EXPECT_EQ(zbin::result(fromHex("11 80 00 00 1D 06")).code, cv_result::kWrongReply);
  EXPECT_FALSE(zbin::result({}).ours);
  EXPECT_EQ(zbin::result({}).code, cv_result::kWrongReply);
}

TEST(ZimoBinaryJudgement, AMessageIsConfirmedByItsFirstByte) {
  const QByteArray drive = fromHex("03 00 03 10 20 00 00");
  EXPECT_EQ(zbin::confirmation(drive, fromHex("03 00")), Confirmation::Done);
  EXPECT_EQ(zbin::confirmation(drive, fromHex("03 34")), Confirmation::Done);
  EXPECT_EQ(zbin::confirmation(drive, fromHex("02")), Confirmation::Done);
  EXPECT_EQ(zbin::confirmation(drive, fromHex("02 04")), Confirmation::Done);
  EXPECT_EQ(zbin::confirmation(drive, fromHex("03 04")), Confirmation::Busy);
  EXPECT_EQ(zbin::confirmation(drive, fromHex("03")), Confirmation::None);
  EXPECT_EQ(zbin::confirmation(drive, fromHex("03 05")), Confirmation::None);
  EXPECT_EQ(zbin::confirmation(drive, fromHex("08 00")), Confirmation::None);
  EXPECT_EQ(zbin::confirmation(drive, {}), Confirmation::None);
}

TEST(ZimoBinaryJudgement, BusyWinsOverTheTrackPowerByte) {
  EXPECT_EQ(zbin::confirmation(fromHex("02 02"), fromHex("02 04")), Confirmation::Busy);
  EXPECT_EQ(zbin::confirmation(fromHex("02 02"), fromHex("02 05")), Confirmation::Done);
}

}  // namespace
}  // namespace lokari
