#include "link/lenz_codec.h"

#include <gtest/gtest.h>

namespace lokari::lenz {
namespace {

constexpr int kPaged = 1;
constexpr int kRegister = 2;
constexpr int kDirect = 0;

QByteArray fromHex(const char* text) {
  return QByteArray::fromHex(text);
}

struct CvBytes {
  int cv;
  const char* message;
};

// -- messages to the station

TEST(LenzCodec, TheCheckByteIsTheXorOfAllOthers) {
  EXPECT_EQ(withCheck(fromHex("21 21")), fromHex("21 21 00"));
  EXPECT_EQ(withCheck(fromHex("E4 12 C3 E8 85")), fromHex("E4 12 C3 E8 85 58"));
  EXPECT_EQ(withCheck({}), fromHex("00"));
}

TEST(LenzCodec, TheMessagesWithoutNumbers) {
  EXPECT_EQ(resume(), fromHex("21 81 A0"));
  EXPECT_EQ(requestResult(), fromHex("21 10 31"));
}

TEST(LenzCodec, ReadsPaged) {
  const CvBytes rows[] = {
      {1, "22 14 01 37"}, {29, "22 14 1D 2B"}, {255, "22 14 FF C9"}, {256, "22 14 00 36"}};
  for (const CvBytes& row : rows) {
    EXPECT_EQ(readCv(row.cv, kPaged, false), fromHex(row.message)) << row.cv;
    EXPECT_EQ(readCv(row.cv, kPaged, true), fromHex(row.message)) << row.cv;
  }
}

TEST(LenzCodec, ReadsDirect) {
  const CvBytes rows[] = {
      {1, "22 15 01 36"}, {29, "22 15 1D 2A"}, {255, "22 15 FF C8"}, {256, "22 15 00 37"}};
  for (const CvBytes& row : rows) {
    EXPECT_EQ(readCv(row.cv, kDirect, false), fromHex(row.message)) << row.cv;
    EXPECT_EQ(readCv(row.cv, kRegister, false), fromHex(row.message)) << row.cv;
  }
}

TEST(LenzCodec, ReadsDirectUpTo1024WithProtocol36) {
  const CvBytes rows[] = {
      {1, "22 18 01 3B"},   {255, "22 18 FF C5"},  {256, "22 19 00 3B"},
      {511, "22 19 FF C4"}, {512, "22 1A 00 38"},  {767, "22 1A FF C7"},
      {768, "22 1B 00 39"}, {1023, "22 1B FF C6"}, {1024, "22 18 00 3A"},
  };
  for (const CvBytes& row : rows) {
    EXPECT_EQ(readCv(row.cv, kDirect, true), fromHex(row.message)) << row.cv;
    EXPECT_EQ(readCv(row.cv, kRegister, true), fromHex(row.message)) << row.cv;
  }
}

TEST(LenzCodec, NoMessageReadsACvThatItCannotName) {
  for (const int cv : {-1, 0, 257, 512, 1024, 4864}) {
    EXPECT_EQ(readCv(cv, kDirect, false), std::nullopt) << cv;
    EXPECT_EQ(readCv(cv, kPaged, false), std::nullopt) << cv;
    EXPECT_EQ(readCv(cv, kPaged, true), std::nullopt) << cv;
  }
  for (const int cv : {-1, 0, 1025, 4864}) EXPECT_EQ(readCv(cv, kDirect, true), std::nullopt) << cv;
}

TEST(LenzCodec, WritesPagedAndDirect) {
  EXPECT_EQ(writeCv(29, 6, kPaged, false), fromHex("23 17 1D 06 2F"));
  EXPECT_EQ(writeCv(29, 6, kPaged, true), fromHex("23 17 1D 06 2F"));
  EXPECT_EQ(writeCv(255, 6, kPaged, false), fromHex("23 17 FF 06 CD"));
  EXPECT_EQ(writeCv(29, 6, kDirect, false), fromHex("23 16 1D 06 2E"));
  EXPECT_EQ(writeCv(29, 6, kRegister, false), fromHex("23 16 1D 06 2E"));
  EXPECT_EQ(writeCv(255, 6, kDirect, false), fromHex("23 16 FF 06 CC"));
  EXPECT_EQ(writeCv(1, 0, kDirect, false), fromHex("23 16 01 00 34"));
}

TEST(LenzCodec, WritesDirectUpTo1024WithProtocol36) {
  const CvBytes rows[] = {
      {1, "23 1C 01 06 38"},   {255, "23 1C FF 06 C6"},  {256, "23 1D 00 06 38"},
      {511, "23 1D FF 06 C7"}, {512, "23 1E 00 06 3B"},  {767, "23 1E FF 06 C4"},
      {768, "23 1F 00 06 3A"}, {1023, "23 1F FF 06 C5"}, {1024, "23 1C 00 06 39"},
  };
  for (const CvBytes& row : rows) {
    EXPECT_EQ(writeCv(row.cv, 6, kDirect, true), fromHex(row.message)) << row.cv;
  }
}

TEST(LenzCodec, NoMessageWritesACvThatItCannotName) {
  for (const int cv : {-1, 0, 256, 257, 1024}) {
    EXPECT_EQ(writeCv(cv, 6, kDirect, false), std::nullopt) << cv;
    EXPECT_EQ(writeCv(cv, 6, kPaged, false), std::nullopt) << cv;
    EXPECT_EQ(writeCv(cv, 6, kPaged, true), std::nullopt) << cv;
  }
  EXPECT_EQ(writeCv(0, 6, kDirect, true), std::nullopt);
  EXPECT_EQ(writeCv(1025, 6, kDirect, true), std::nullopt);
}

TEST(LenzCodec, WritesOnTheMainTrackByShortAddressBelow100) {
  EXPECT_EQ(writeCvMain(3, 3, 29, 6), fromHex("E6 30 00 03 EC 1C 06 23"));
  EXPECT_EQ(writeCvMain(99, 99, 29, 6), fromHex("E6 30 00 63 EC 1C 06 43"));
  EXPECT_EQ(writeCvMain(3, 1000, 29, 6), fromHex("E6 30 00 03 EC 1C 06 23"));
}

TEST(LenzCodec, WritesOnTheMainTrackByLongAddressFrom100On) {
  EXPECT_EQ(writeCvMain(100, 100, 29, 6), fromHex("E6 30 C0 64 EC 1C 06 84"));
  EXPECT_EQ(writeCvMain(1000, 1000, 29, 6), fromHex("E6 30 C3 E8 EC 1C 06 0B"));
  EXPECT_EQ(writeCvMain(10239, 10239, 29, 6), fromHex("E6 30 E7 FF EC 1C 06 38"));
  EXPECT_EQ(writeCvMain(128, 1000, 29, 6), fromHex("E6 30 C3 E8 EC 1C 06 0B"));
}

TEST(LenzCodec, OnTheMainTrackACvCountsFromZero) {
  EXPECT_EQ(writeCvMain(3, 3, 1, 6), fromHex("E6 30 00 03 EC 00 06 3F"));
  EXPECT_EQ(writeCvMain(3, 3, 255, 6), fromHex("E6 30 00 03 EC FE 06 C1"));
  EXPECT_EQ(writeCvMain(3, 3, 257, 6), fromHex("E6 30 00 03 ED 00 06 3E"));
  EXPECT_EQ(writeCvMain(3, 3, 513, 6), fromHex("E6 30 00 03 EE 00 06 3D"));
  EXPECT_EQ(writeCvMain(3, 3, 1023, 6), fromHex("E6 30 00 03 EF FE 06 C2"));
}

TEST(LenzCodec, NoMessageWritesAMultipleOf256OnTheMainTrack) {
  for (const int cv : {0, 256, 512, 768, 1024, 1025, -256}) {
    EXPECT_EQ(writeCvMain(3, 3, cv, 6), std::nullopt) << cv;
  }
}

TEST(LenzCodec, NoMessageWritesToWhatIsNoAddress) {
  EXPECT_EQ(writeCvMain(-1, 1000, 29, 6), std::nullopt);
  EXPECT_EQ(writeCvMain(128, 10240, 29, 6), std::nullopt);
  EXPECT_EQ(writeCvMain(128, -1, 29, 6), std::nullopt);
}

// -- replies

TEST(LenzCodec, AMessageIsMissingWhatItsHeaderCounts) {
  EXPECT_EQ(missing(fromHex("63")), 4);
  EXPECT_EQ(missing(fromHex("63 14 1D")), 2);
  EXPECT_EQ(missing(fromHex("63 14 1D 06 6C")), 0);
  EXPECT_EQ(missing(fromHex("63 14 1D 06 6C 61 02")), 0);
  EXPECT_EQ(missing(fromHex("61 13")), 1);
  EXPECT_EQ(missing(fromHex("01")), 2);
  EXPECT_EQ(missing(fromHex("AA")), 0);
  EXPECT_EQ(missing({}), 0);
}

TEST(LenzCodec, FindsTheFirstResultInALongReply) {
  EXPECT_EQ(resultWithin(fromHex("AA 63 14 1D 06 6C")), fromHex("63 14 1D 06 6C"));
  EXPECT_EQ(resultWithin(fromHex("61 02 63 63 10 1D 06 68 63 14 01 05 73")),
            fromHex("63 10 1D 06 68"));
  EXPECT_EQ(resultWithin(fromHex("63 14 1D 06 6C AA BB")), fromHex("63 14 1D 06 6C"));
}

TEST(LenzCodec, DoesNotSearchAReplyOfFiveBytes) {
  EXPECT_EQ(resultWithin(fromHex("AA 63 14 1D 06")), fromHex("AA 63 14 1D 06"));
}

TEST(LenzCodec, AResultThatIsCutAtTheEndIsNotFound) {
  const QByteArray reply = fromHex("AA BB 63 14 1D 06");
  EXPECT_EQ(resultWithin(reply), reply);
}

TEST(LenzCodec, AReplyWithoutAResultStaysWhole) {
  const QByteArray reply = fromHex("61 02 63 61 02 63 63 18 00 00 00");
  EXPECT_EQ(resultWithin(reply), reply);
}

TEST(LenzCodec, FindsTheServiceModeInALongReply) {
  EXPECT_EQ(serviceModeWithin(fromHex("01 04 05 61 02 63")), fromHex("61 02 63"));
  EXPECT_EQ(serviceModeWithin(fromHex("61 02 63 61 01 60")), fromHex("61 02 63"));
  EXPECT_EQ(serviceModeWithin(fromHex("01 61 02 55")), fromHex("61 02 55"));
  EXPECT_EQ(serviceModeWithin(fromHex("01 04 61 02")), fromHex("01 04 61 02"));
  EXPECT_EQ(serviceModeWithin(fromHex("01 04 05 01 04 05")), fromHex("01 04 05 01 04 05"));
}

TEST(LenzCodec, TheFourthByteOfAResultIsTheValue) {
  for (const char* reply :
       {"63 10 1D 06 68", "63 14 1D 06 6C", "63 15 1D 06 6D", "63 16 1D 06 6E", "63 17 1D 06 6F"}) {
    EXPECT_EQ(resultValue(fromHex(reply)), 6) << reply;
  }
  EXPECT_EQ(resultValue(fromHex("63 14 1D FF 95")), 255);
}

TEST(LenzCodec, OtherRepliesHaveNoValue) {
  for (const char* reply : {"", "63", "63 14", "63 14 1D", "63 11 1D 06 69", "63 18 1D 06 60",
                            "61 14 1D 06 6E", "AA 63 14 1D 06"}) {
    EXPECT_EQ(resultValue(fromHex(reply)), std::nullopt) << reply;
  }
}

TEST(LenzCodec, TheSecondByteOfAReportIsItsCode) {
  EXPECT_EQ(report(fromHex("61 12 73")), 0x12);
  EXPECT_EQ(report(fromHex("61 FF")), 0xFF);
  EXPECT_EQ(report(fromHex("61")), std::nullopt);
  EXPECT_EQ(report(fromHex("01 04 05")), std::nullopt);
  EXPECT_EQ(report({}), std::nullopt);
}

TEST(LenzCodec, AFailedWriteIsMinusTheReportsCodeAndNeverAValue) {
  EXPECT_EQ(writeFailure(fromHex("61 12 73")), -18);
  EXPECT_EQ(writeFailure(fromHex("61 FF 9E")), -255);
  EXPECT_EQ(writeFailure(fromHex("61 00 61")), -1003);
  EXPECT_EQ(writeFailure(fromHex("61")), -1003);
  EXPECT_EQ(writeFailure(fromHex("AA BB CC")), -1003);
  EXPECT_EQ(writeFailure({}), -1003);
}

TEST(LenzCodec, KnowsTheFixedReplies) {
  EXPECT_TRUE(isServiceMode(fromHex("61 02 63")));
  EXPECT_FALSE(isServiceMode(fromHex("61 02")));
  EXPECT_FALSE(isServiceMode(fromHex("61 02 62")));
  EXPECT_FALSE(isServiceMode(fromHex("61 02 63 00")));
  EXPECT_TRUE(isAccepted(fromHex("01 04 05")));
  EXPECT_FALSE(isAccepted(fromHex("01")));
  EXPECT_FALSE(isAccepted(fromHex("01 03 02")));
  EXPECT_TRUE(tellsResumed(fromHex("61 01 60")));
  EXPECT_TRUE(tellsResumed(fromHex("01 04 05 FF FE 61 01")));
  EXPECT_FALSE(tellsResumed(fromHex("61 02 63 61")));
  EXPECT_FALSE(tellsResumed({}));
}

}  // namespace
}  // namespace lokari::lenz
