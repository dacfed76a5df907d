#include "link/mx1_text_codec.h"

#include <gtest/gtest.h>

namespace lokari {
namespace {

using Kind = mx1::Reply::Kind;

TEST(Mx1TextCodec, ReadsWithTheCvAsTheUserCountsIt) {
  EXPECT_EQ(mx1::readCommand(1), "QN01\r");
  EXPECT_EQ(mx1::readCommand(8), "QN08\r");
  EXPECT_EQ(mx1::readCommand(29), "QN1D\r");
  EXPECT_EQ(mx1::readCommand(255), "QNFF\r");
}

TEST(Mx1TextCodec, ALargeNumberMakesItsFieldLonger) {
  EXPECT_EQ(mx1::readCommand(256), "QN100\r");
  EXPECT_EQ(mx1::readCommand(1024), "QN400\r");
  EXPECT_EQ(mx1::writeCommand(256, 5), "RN10005\r");
  EXPECT_EQ(mx1::writeMainCommand(3, 3, 257, 6), "L031403EC10006\r");
}

TEST(Mx1TextCodec, WritesOnTheProgrammingTrack) {
  EXPECT_EQ(mx1::writeCommand(29, 6), "RN1D06\r");
  EXPECT_EQ(mx1::writeCommand(1, 255), "RN01FF\r");
}

TEST(Mx1TextCodec, WritesOnTheMainTrackToAShortAddress) {
  EXPECT_EQ(mx1::writeMainCommand(3, 3, 29, 6), "L031403EC1C06\r");
  EXPECT_EQ(mx1::writeMainCommand(127, 127, 1, 0), "L7F147FEC0000\r");
}

TEST(Mx1TextCodec, WritesOnTheMainTrackToALongAddress) {
  EXPECT_EQ(mx1::writeMainCommand(129, 1000, 29, 6), "L8115C3E8EC1C06\r");
  EXPECT_EQ(mx1::writeMainCommand(128, 128, 8, 16), "L8015C080EC0710\r");
  EXPECT_EQ(mx1::writeMainCommand(255, 10239, 3, 255), "LFF15E7FFEC02FF\r");
}

TEST(Mx1TextCodec, AsksForAnIndexWithThePlainHighByte) {
  EXPECT_EQ(mx1::askIndexCommand(1000), "E03E8\r");
  EXPECT_EQ(mx1::askIndexCommand(128), "E0080\r");
  EXPECT_EQ(mx1::askIndexCommand(10239), "E27FF\r");
}

TEST(Mx1TextCodec, HasTheSessionsCommands) {
  EXPECT_EQ(mx1::wakeUp(), "\r");
  EXPECT_EQ(mx1::leaveFirst(), "REN\r");
  EXPECT_EQ(mx1::leaveSecond(), "RE\r");
}

TEST(Mx1TextCodec, AReplyOfStatusZeroGivesTheValue) {
  const mx1::Reply reply = mx1::parseReply("QN001DA5\r");
  EXPECT_EQ(reply.kind, Kind::Value);
  EXPECT_EQ(reply.number, 0xA5);
}

TEST(Mx1TextCodec, CharactersThatAreNotUsedMayBeAnything) {
  EXPECT_EQ(mx1::parseReply("QN00??06!").number, 6);
  EXPECT_EQ(mx1::parseReply(QByteArray("QN00\x00\xFF"
                                       "06\x00",
                                       9))
                .number,
            6);
}

TEST(Mx1TextCodec, AnotherStatusGivesItsNumber) {
  EXPECT_EQ(mx1::parseReply("QN051D00\r").kind, Kind::Status);
  EXPECT_EQ(mx1::parseReply("QN051D00\r").number, 5);
  EXPECT_EQ(mx1::parseReply("QNFF1D00\r").number, 255);
}

TEST(Mx1TextCodec, DigitsThatAreNoneGiveNoNumber) {
  EXPECT_EQ(mx1::parseReply("QN001DG5\r").kind, Kind::Value);
  EXPECT_FALSE(mx1::parseReply("QN001DG5\r").number.has_value());
  EXPECT_EQ(mx1::parseReply("QN-51D00\r").kind, Kind::Status);
  EXPECT_FALSE(mx1::parseReply("QN-51D00\r").number.has_value());
}

TEST(Mx1TextCodec, TheReplyToAWriteBeginsWithQnToo) {
  EXPECT_EQ(mx1::parseReply("RN001D06\r").kind, Kind::NotAReply);
  EXPECT_EQ(mx1::parseReply(" QN001D06").kind, Kind::NotAReply);
  EXPECT_EQ(mx1::parseReply("qn001d06\r").kind, Kind::NotAReply);
}

TEST(Mx1TextCodec, AReplyCutAnywhereIsNeverReadBeyondItsEnd) {
  const QByteArray whole("QN001DA5\r");
  for (qsizetype size = 0; size < 8; ++size) {
    EXPECT_FALSE(mx1::parseReply(whole.left(size)).number.has_value()) << size;
  }
}

TEST(Mx1TextCodec, AnIndexIsTheSecondAndThirdCharacter) {
  EXPECT_EQ(mx1::parseIndex("E8103E8\r"), 129);
  EXPECT_EQ(mx1::parseIndex("E8003E8\r"), 128);
  EXPECT_EQ(mx1::parseIndex("EFF03E8\r"), 255);
}

TEST(Mx1TextCodec, AnIndexBelow128CountsAsNone) {
  EXPECT_FALSE(mx1::parseIndex("E7F03E8\r").has_value());
  EXPECT_FALSE(mx1::parseIndex("E0003E8\r").has_value());
}

TEST(Mx1TextCodec, AnIndexReplyHasExactlyEightCharacters) {
  EXPECT_FALSE(mx1::parseIndex("").has_value());
  EXPECT_FALSE(mx1::parseIndex("E8103E8").has_value());
  EXPECT_FALSE(mx1::parseIndex("E8103E8\r\n").has_value());
  EXPECT_FALSE(mx1::parseIndex("EG103E8\r").has_value());
}

TEST(Mx1TextCodec, ARefusalBeginsALineWithTwoOrThreeQuestionMarks) {
  struct Row {
    const char* text;
    bool address;
    bool switching;
  };
  const Row rows[] = {{"??\r", true, false},      {"??L03", true, false},
                      {"?\r", false, false},      {" ??", false, false},
                      {"", false, false},         {"???\r", false, true},
                      {"Z20\r??\r", true, false}, {"Z20\r\n???\r??\r", true, true},
                      {"L??\r", false, false}};
  for (const Row& row : rows) {
    const mx1::Refusals found = mx1::refusalsIn(row.text);
    EXPECT_EQ(found.address, row.address) << row.text;
    EXPECT_EQ(found.switching, row.switching) << row.text;
  }
}

TEST(Mx1TextCodec, AReplyMayNameItsCvAndAnIndexReplyItsAddress) {
  EXPECT_EQ(mx1::parseReply("QN001D06\r").named, 29);
  EXPECT_FALSE(mx1::parseReply("QN00--06\r").named);
  EXPECT_EQ(mx1::indexAddress("E8103E8\r"), 1000);
  EXPECT_FALSE(mx1::indexAddress("E81----\r"));
}

TEST(Mx1TextCodec, AWholeReplyIsFoundAtTheBeginningOfALine) {
  EXPECT_EQ(mx1::findReply("QN001D06\r"), 0);
  EXPECT_EQ(mx1::findReply("??\rQN001D06\r"), 3);
  EXPECT_EQ(mx1::findReply("QN001D06"), -1);
  EXPECT_EQ(mx1::findReply("RQN001D06\r"), -1);
}

}  // namespace
}  // namespace lokari
