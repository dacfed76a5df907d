#include "link/lidp_codec.h"

#include <gtest/gtest.h>

namespace lokari::lidp {
namespace {

TEST(LidpCodec, ReadsWithFourDigitsCountedFromZero) {
  EXPECT_EQ(readCommand(1), "0B0000\r");
  EXPECT_EQ(readCommand(29), "0B001C\r");
  EXPECT_EQ(readCommand(256), "0B00FF\r");
  EXPECT_EQ(readCommand(257), "0B0100\r");
  EXPECT_EQ(readCommand(1024), "0B03FF\r");
}

TEST(LidpCodec, WritesWithTwoMoreDigits) {
  EXPECT_EQ(writeCommand(29, 6), "0A001C06\r");
  EXPECT_EQ(writeCommand(1, 0), "0A000000\r");
  EXPECT_EQ(writeCommand(1024, 255), "0A03FFFF\r");
}

TEST(LidpCodec, EndsTheSession) {
  EXPECT_EQ(endCommand(), "01\r");
}

TEST(LidpCodec, OkBehindTheValueIsTheValue) {
  EXPECT_EQ(readResult("06OK"), 6);
  EXPECT_EQ(readResult("FFOK\r\n"), 255);
  EXPECT_EQ(readResult("00OK"), 0);
  EXPECT_EQ(readResult("aBOK"), 171);
}

TEST(LidpCodec, OkAfterAWriteIsTheValueWritten) {
  EXPECT_EQ(writeResult("07OK\r\n", 6), 6);
  EXPECT_EQ(writeResult("??OK", 6), 6);
}

TEST(LidpCodec, LineEndsAheadOfAReplyAreDropped) {
  EXPECT_EQ(withoutLateEnd("\r\n06OK\r\n"), "06OK\r\n");
  EXPECT_EQ(withoutLateEnd("\n06OK"), "06OK");
  EXPECT_EQ(withoutLateEnd("06OK"), "06OK");
  EXPECT_EQ(withoutLateEnd("\r\n"), "");
}

TEST(LidpCodec, X1IsAWrongReplyAndX2NoAcknowledge) {
  EXPECT_EQ(readResult("X1\r\n"), -1003);
  EXPECT_EQ(writeResult("X1\r\n", 6), -1003);
  EXPECT_EQ(readResult("X2\r\n"), -1021);
  EXPECT_EQ(writeResult("X2\r\n", 6), -1021);
}

TEST(LidpCodec, AnythingElseIsAFailureWithoutAText) {
  for (const char* reply : {"X3\r\n", "????", "OK\r\n", "06ok", " 6OK", "", "06O", "@06OK"}) {
    EXPECT_EQ(readResult(reply), -1002) << reply;
  }
  for (const char* reply : {"X3\r\n", "????", "OK\r\n", "06ok", "", "06O"}) {
    EXPECT_EQ(writeResult(reply, 6), -1002) << reply;
  }
}

}  // namespace
}  // namespace lokari::lidp
