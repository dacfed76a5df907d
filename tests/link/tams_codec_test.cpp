#include "link/tams_codec.h"

#include <gtest/gtest.h>

namespace lokari::tams {
namespace {

TEST(TamsCodec, ReadsDirectPagedAndRegister) {
  EXPECT_EQ(readCommand(0, 29), QByteArray("xPTRB 29\r"));
  EXPECT_EQ(readCommand(3, 29), QByteArray("xPTRB 29\r"));
  EXPECT_EQ(readCommand(1, 8), QByteArray("xPTRP 8\r"));
  EXPECT_EQ(readCommand(2, 1), QByteArray("xPTRR 1\r"));
  EXPECT_EQ(readCommand(0, 1024), QByteArray("xPTRB 1024\r"));
}

TEST(TamsCodec, WritesDirectPagedAndRegister) {
  EXPECT_EQ(writeCommand(0, 29, 6), QByteArray("xPTWD 29, 6\r"));
  EXPECT_EQ(writeCommand(1, 29, 6), QByteArray("xPTWP 29, 6\r"));
  EXPECT_EQ(writeCommand(2, 5, 255), QByteArray("xPTWR 5, 255\r"));
}

TEST(TamsCodec, WritesOnTheMainTrack) {
  EXPECT_EQ(writeMainCommand(3, 29, 6), QByteArray("xPD 3, 29, 6\r"));
  EXPECT_EQ(writeMainCommand(10239, 1024, 0), QByteArray("xPD 10239, 1024, 0\r"));
}

TEST(TamsCodec, TakesTheLeadingDigitsOfTheFirstThreeCharacters) {
  EXPECT_EQ(readResult("123]\r"), 123);
  EXPECT_EQ(readResult("6]\r"), 6);
  EXPECT_EQ(readResult("0]\r"), 0);
  EXPECT_EQ(readResult("45]\r"), 45);
  EXPECT_EQ(readResult("255]\r"), 255);
  EXPECT_EQ(readResult("1234"), 123);
  EXPECT_EQ(readResult("1x3]\r"), 1);
  EXPECT_EQ(readResult(" 12]\r"), 12);
}

TEST(TamsCodec, AValueAbove255IsAWrongReply) {
  EXPECT_EQ(readResult("256]\r"), -1003);
  EXPECT_EQ(readResult("999]\r"), -1003);
}

TEST(TamsCodec, NoDigitIsAWrongReply) {
  EXPECT_EQ(readResult("-12]\r"), -1003);
  EXPECT_EQ(readResult("abc"), -1003);
  EXPECT_EQ(readResult("]\r\r"), -1003);
  EXPECT_EQ(readResult("   "), -1003);
  EXPECT_EQ(readResult(QByteArray("\0\xff\x80", 3)), -1003);
}

TEST(TamsCodec, TellsErrorFromNoAcknowledge) {
  EXPECT_EQ(readResult("Error]\r"), -1003);
  EXPECT_EQ(readResult("No ack]\r"), -1021);
  EXPECT_EQ(writeResult("Error]\r", 6), -1003);
  EXPECT_EQ(writeResult("No ack]\r", 6), -1021);
}

TEST(TamsCodec, AWriteNeedsOk) {
  EXPECT_EQ(writeResult("Ok]\r", 6), 6);
  EXPECT_EQ(writeResult("ok]\r", 6), -1003);
  EXPECT_EQ(writeResult("6]\r]", 6), -1003);
}

TEST(TamsCodec, KnowsATextThatIsCutInTheMiddle) {
  EXPECT_TRUE(isCutText("Err"));
  EXPECT_TRUE(isCutText("No ac"));
  EXPECT_FALSE(isCutText("Error"));
  EXPECT_FALSE(isCutText("No ack]\r"));
  EXPECT_FALSE(isCutText("12]"));
  EXPECT_FALSE(isCutText("Ex"));
}

TEST(TamsCodec, KnowsTheEndOfAReply) {
  EXPECT_TRUE(isComplete("Ok]\r"));
  EXPECT_TRUE(isComplete("Ok]")) << "with its bracket, whatever follows";
  EXPECT_FALSE(isComplete("123"));
  EXPECT_FALSE(isComplete(""));
}

}  // namespace
}  // namespace lokari::tams
