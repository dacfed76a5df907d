#include "sim/lenz_messages.h"

#include <gtest/gtest.h>

#include "base/bytes.h"

namespace lokari::sim {
namespace {

using Kind = LenzCommand::Kind;

QByteArray fromHex(const char* text) {
  return QByteArray::fromHex(text);
}

std::optional<LenzCommand> command(const char* message) {
  EXPECT_TRUE(lenzCheckIsGood(fromHex(message))) << message;
  return lenzCommandFrom(fromHex(message));
}

struct AccessRow {
  const char* message;
  Kind kind;
  Method method;
  int cv;
};

TEST(LenzMessages, EveryCvCommandIsUnderstood) {
  const AccessRow rows[] = {
      {"22 14 1D 2B", Kind::ReadCv, Method::Paged, 29},
      {"22 14 00 36", Kind::ReadCv, Method::Paged, 256},
      {"22 15 1D 2A", Kind::ReadCv, Method::Direct, 29},
      {"22 15 00 37", Kind::ReadCv, Method::Direct, 256},
      {"22 18 FF C5", Kind::ReadCv, Method::Direct, 255},
      {"22 18 00 3A", Kind::ReadCv, Method::Direct, 1024},
      {"22 19 00 3B", Kind::ReadCv, Method::Direct, 256},
      {"22 1A 00 38", Kind::ReadCv, Method::Direct, 512},
      {"22 1B FF C6", Kind::ReadCv, Method::Direct, 1023},
      {"23 17 1D 06 2F", Kind::WriteCv, Method::Paged, 29},
      {"23 16 1D 06 2E", Kind::WriteCv, Method::Direct, 29},
      {"23 1C 00 06 39", Kind::WriteCv, Method::Direct, 1024},
      {"23 1D 00 06 38", Kind::WriteCv, Method::Direct, 256},
      {"23 1F FF 06 C5", Kind::WriteCv, Method::Direct, 1023},
  };
  for (const AccessRow& row : rows) {
    const auto got = command(row.message);
    ASSERT_TRUE(got) << row.message;
    EXPECT_EQ(got->kind, row.kind) << row.message;
    EXPECT_EQ(got->method, row.method) << row.message;
    EXPECT_EQ(got->cv, row.cv) << row.message;
    EXPECT_EQ(got->value, row.kind == Kind::WriteCv ? 6 : 0) << row.message;
  }
}

TEST(LenzMessages, MainTrackCommandsNameAddressAndCv) {
  const auto shortAddress = command("E6 30 00 03 EC 1C 06 23");
  ASSERT_TRUE(shortAddress);
  EXPECT_EQ(shortAddress->kind, Kind::WriteMain);
  EXPECT_EQ(shortAddress->address, 3);
  EXPECT_EQ(shortAddress->cv, 29);
  EXPECT_EQ(shortAddress->value, 6);
  const auto longAddress = command("E6 30 C3 E8 ED 00 06 16");
  ASSERT_TRUE(longAddress);
  EXPECT_EQ(longAddress->address, 1000);
  EXPECT_EQ(longAddress->cv, 257);
}

TEST(LenzMessages, TheOtherCommandsHaveNoNumbers) {
  EXPECT_EQ(command("21 81 A0")->kind, Kind::Resume);
  EXPECT_EQ(command("21 10 31")->kind, Kind::AskResult);
  EXPECT_EQ(command("21 21 00")->kind, Kind::AskVersion);
  EXPECT_EQ(command("21 24 05")->kind, Kind::AskState);
}

TEST(LenzMessages, WhatIsNoneOfThemIsNothing) {
  for (const char* message : {"21 22 03", "22 16 1D 29", "22 1C 1D 23", "23 18 1D 06 20",
                              "E6 31 00 03 EC 1C 06 22", "E6 30 00 03 F0 1C 06 3F", "40 40"}) {
    EXPECT_FALSE(command(message)) << message;
  }
  EXPECT_FALSE(lenzCommandFrom({}));
  EXPECT_FALSE(lenzCheckIsGood({}));
  EXPECT_FALSE(lenzCheckIsGood(fromHex("21 81 A1")));
}

TEST(LenzMessages, TheStationsMessagesCarryTheirCheckByte) {
  EXPECT_EQ(lenzAccepted(), fromHex("01 04 05"));
  EXPECT_EQ(lenzResumed(), fromHex("61 01 60"));
  EXPECT_EQ(lenzServiceMode(), fromHex("61 02 63"));
  EXPECT_EQ(lenzReport(0x13), fromHex("61 13 72"));
}

TEST(LenzMessages, TheTypeOfAResultFollowsFromTheMethodAndTheBlock) {
  EXPECT_EQ(lenzResult(Method::Paged, 29, 6), fromHex("63 10 1D 06 68"));
  EXPECT_EQ(lenzResult(Method::Direct, 29, 6), fromHex("63 14 1D 06 6C"));
  EXPECT_EQ(lenzResult(Method::Direct, 256, 6), fromHex("63 15 00 06 70"));
  EXPECT_EQ(lenzResult(Method::Direct, 512, 6), fromHex("63 16 00 06 73"));
  EXPECT_EQ(lenzResult(Method::Direct, 1023, 6), fromHex("63 17 FF 06 8D"));
  EXPECT_EQ(lenzResult(Method::Direct, 1024, 6), fromHex("63 14 00 06 71"));
}

TEST(LenzMessageReader, TakesMessagesInAnyPortions) {
  const QByteArray stream = fromHex("21 81 A0 22 15 1D 2A 21 10 31");
  LenzMessageReader whole(false);
  EXPECT_EQ(whole.feed(stream, 0).size(), 3U);
  LenzMessageReader single(false);
  std::vector<QByteArray> messages;
  for (const char byte : stream) {
    for (const QByteArray& each : single.feed(QByteArray(1, byte), 0)) messages.push_back(each);
  }
  EXPECT_EQ(messages,
            (std::vector{fromHex("21 81 A0"), fromHex("22 15 1D 2A"), fromHex("21 10 31")}));
}

TEST(LenzMessageReader, ASecondsPauseEndsAMessageThatIsCut) {
  LenzMessageReader reader(false);
  EXPECT_TRUE(reader.feed(fromHex("22 15"), 5000).empty());
  EXPECT_EQ(reader.feed(fromHex("21 81 A0"), 6001), std::vector{fromHex("21 81 A0")});
  EXPECT_TRUE(reader.feed(fromHex("22 15"), 7000).empty());
  EXPECT_EQ(reader.feed(fromHex("1D 2A"), 8000), std::vector{fromHex("22 15 1D 2A")});
}

TEST(LenzMessageReader, OnUsbAMessageStandsBehindItsHead) {
  LenzMessageReader reader(true);
  EXPECT_EQ(reader.feed(fromHex("FF FE 21 81 A0 FF FE 21 10 31"), 0),
            (std::vector{fromHex("21 81 A0"), fromHex("21 10 31")}));
  EXPECT_TRUE(reader.feed(fromHex("21 81 A0 FF"), 0).empty());
  EXPECT_EQ(reader.feed(fromHex("FE 21 81 A0"), 0), std::vector{fromHex("21 81 A0")});
}

}  // namespace
}  // namespace lokari::sim
