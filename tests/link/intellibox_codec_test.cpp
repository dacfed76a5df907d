#include "link/intellibox_codec.h"

#include <gtest/gtest.h>

namespace lokari::ibx {
namespace {

constexpr int kPaged = 1;
constexpr int kRegister = 2;
constexpr int kDirect = 0;

QByteArray fromHex(const char* text) {
  return QByteArray::fromHex(text);
}

TEST(IntelliboxCodec, ReadsByTheMode) {
  EXPECT_EQ(readCv(29, kPaged), fromHex("EE 1D 00"));
  EXPECT_EQ(readCv(8, kRegister), fromHex("EC 08 00"));
  EXPECT_EQ(readCv(29, kDirect), fromHex("F2 1D 00"));
  EXPECT_EQ(readCv(29, 7), fromHex("F2 1D 00"));
}

TEST(IntelliboxCodec, ACvGoesOutAsTheUserCountsItLowByteFirst) {
  struct Row {
    int cv;
    const char* direct;
  };
  const Row rows[] = {{1, "F2 01 00"},   {255, "F2 FF 00"}, {256, "F2 00 01"},
                      {257, "F2 01 01"}, {512, "F2 00 02"}, {1024, "F2 00 04"}};
  for (const Row& row : rows) EXPECT_EQ(readCv(row.cv, kDirect), fromHex(row.direct)) << row.cv;
  EXPECT_EQ(readCv(1024, kPaged), fromHex("EE 00 04"));
}

TEST(IntelliboxCodec, TheRegisterCommandHasTheLowByteAnd0WhateverTheHighByte) {
  EXPECT_EQ(readCv(0x0105, kRegister), fromHex("EC 05 00"));
  EXPECT_EQ(writeCv(0x0305, 6, kRegister), fromHex("ED 05 00 06"));
}

TEST(IntelliboxCodec, WritesByTheMode) {
  EXPECT_EQ(writeCv(29, 6, kPaged), fromHex("EF 1D 00 06"));
  EXPECT_EQ(writeCv(8, 6, kRegister), fromHex("ED 08 00 06"));
  EXPECT_EQ(writeCv(29, 6, kDirect), fromHex("F1 1D 00 06"));
  EXPECT_EQ(writeCv(1024, 255, kDirect), fromHex("F1 00 04 FF"));
}

TEST(IntelliboxCodec, WritesOnTheMainTrackByAddress) {
  EXPECT_EQ(writeCvMain(3, 3, 29, 6), fromHex("DE 03 00 1D 00 06"));
  EXPECT_EQ(writeCvMain(127, 1000, 29, 6), fromHex("DE 7F 00 1D 00 06"));
  EXPECT_EQ(writeCvMain(128, 128, 29, 6), fromHex("DE 80 00 1D 00 06"));
  EXPECT_EQ(writeCvMain(1000, 1000, 1024, 6), fromHex("DE E8 03 00 04 06"));
}

TEST(IntelliboxCodec, NoCommandWritesToWhatIsNoAddress) {
  EXPECT_EQ(writeCvMain(-1, 1000, 29, 6), std::nullopt);
  EXPECT_EQ(writeCvMain(128, -1, 29, 6), std::nullopt);
  EXPECT_EQ(writeCvMain(128, 65536, 29, 6), std::nullopt);
}

TEST(IntelliboxCodec, TheCommandsWithoutNumbers) {
  EXPECT_EQ(askEvent(), fromHex("CE"));
  EXPECT_EQ(endProgramming(), fromHex("E2"));
}

TEST(IntelliboxCodec, AReplyThatBeginsWith0Accepts) {
  EXPECT_TRUE(isAccepted(fromHex("00")));
  EXPECT_TRUE(isAccepted(fromHex("00 FF")));
  EXPECT_FALSE(isAccepted(fromHex("06 00")));
  EXPECT_FALSE(isAccepted({}));
}

TEST(IntelliboxCodec, AnEventIsMissingWhatItsLengthCounts) {
  EXPECT_EQ(missing(fromHex("02")), 2);
  EXPECT_EQ(missing(fromHex("02 00")), 1);
  EXPECT_EQ(missing(fromHex("02 00 7B")), 0);
  EXPECT_EQ(missing(fromHex("02 00 7B FF")), 0);
  EXPECT_EQ(missing(fromHex("00")), 0);
  EXPECT_EQ(missing(fromHex("FF")), 255);
  EXPECT_EQ(missing({}), 0);
}

TEST(IntelliboxCodec, TheThirdByteOfAnEventIsTheValue) {
  EXPECT_EQ(readResult(fromHex("02 00 7B")), 123);
  EXPECT_EQ(readResult(fromHex("03 00 FF 55")), 255);
}

TEST(IntelliboxCodec, AnEventWithoutItsValueIsAWrongReplyToARead) {
  EXPECT_EQ(readResult(fromHex("01 00")), -1003);
  EXPECT_EQ(readResult(fromHex("01")), -1003);
  EXPECT_EQ(readResult({}), -1003);
}

TEST(IntelliboxCodec, AWriteNeedsNoValueInItsEvent) {
  EXPECT_EQ(writeResult(fromHex("01 00"), 6), 6);
  EXPECT_EQ(writeResult(fromHex("02 00 7B"), 6), 6);
  EXPECT_EQ(writeResult(fromHex("01"), 6), -1003);
}

TEST(IntelliboxCodec, EveryStatusByteHasItsCode) {
  struct Row {
    const char* event;
    int code;
  };
  const Row rows[] = {{"01 FF", -1001},    {"01 FE", -1021}, {"01 FD", -1018}, {"01 FC", -1019},
                      {"02 FF 7B", -1001}, {"01 FB", -251},  {"01 F5", -245},  {"01 01", -1}};
  for (const Row& row : rows) {
    EXPECT_EQ(readResult(fromHex(row.event)), row.code) << row.event;
    EXPECT_EQ(writeResult(fromHex(row.event), 6), row.code) << row.event;
  }
}

}  // namespace
}  // namespace lokari::ibx
