#include "base/numbers.h"

#include <gtest/gtest.h>

namespace lokari {
namespace {

struct NumberCase {
  const char* text;
  std::optional<double> value;
};

TEST(ParseNumber, TakesTheWholeTextOrNothing) {
  const NumberCase cases[] = {
      {"0", 0.0},
      {"7", 7.0},
      {" 7 ", 7.0},
      {"-5", -5.0},
      {"+5", 5.0},
      {"- 5", -5.0},
      {"0.4", 0.4},
      {"0,4", 0.4},
      {".5", 0.5},
      {"5.", 5.0},
      {"1e3", 1000.0},
      {"1E-1", 0.1},
      {"1.234,50", 1234.5},
      {"1,234.50", 1234.5},
      {"1.234.567,5", 1234567.5},
      {"", std::nullopt},
      {" ", std::nullopt},
      {"abc", std::nullopt},
      {"5a", std::nullopt},
      {"1-3", std::nullopt},
      {".", std::nullopt},
      {"1.234.567", std::nullopt},
      {"100,110,120", std::nullopt},
      {"1e", std::nullopt},
      {"1.2.3", std::nullopt},
      {"1,2.3,4", std::nullopt},
      {"0x10", std::nullopt},
      {"inf", std::nullopt},
      {"nan", std::nullopt},
      {"1e999", std::nullopt},
      {"12 3", std::nullopt},
  };
  for (const NumberCase& c : cases) {
    const auto value = parseNumber(QString::fromUtf8(c.text));
    ASSERT_EQ(value.has_value(), c.value.has_value()) << '"' << c.text << '"';
    EXPECT_DOUBLE_EQ(value.value_or(0), c.value.value_or(0)) << '"' << c.text << '"';
    EXPECT_EQ(isNumeric(QString::fromUtf8(c.text)), c.value.has_value());
  }
}

TEST(NumericPrefix, TakesWhatTheTextBeginsWith) {
  EXPECT_EQ(numericPrefix(u"30_2"), 30);
  EXPECT_EQ(numericPrefix(u"  5 ="), 5);
  EXPECT_EQ(numericPrefix(u"-4x"), -4);
  EXPECT_DOUBLE_EQ(numericPrefix(u"1.5.2"), 1.5);
  EXPECT_EQ(numericPrefix(u"x5"), 0);
  EXPECT_EQ(numericPrefix(u""), 0);
}

TEST(ToInt16, RoundsTiesToTheEvenNumber) {
  EXPECT_EQ(toInt16(0.5), 0);
  EXPECT_EQ(toInt16(1.5), 2);
  EXPECT_EQ(toInt16(2.5), 2);
  EXPECT_EQ(toInt16(-0.5), 0);
  EXPECT_EQ(toInt16(-1.5), -2);
  EXPECT_EQ(toInt16(2.51), 3);
}

TEST(ToInt16, FailsOutsideSixteenBits) {
  EXPECT_EQ(toInt16(32767.0), 32767);
  EXPECT_EQ(toInt16(-32768.0), -32768);
  EXPECT_EQ(toInt16(32767.4), 32767);
  EXPECT_THROW(toInt16(32767.5), NumberError);
  EXPECT_THROW(toInt16(-32769.0), NumberError);
  EXPECT_THROW(toInt16(u"40000"), NumberError);
  EXPECT_THROW(toInt16(u"abc"), NumberError);
  EXPECT_EQ(toInt16(u" 12,5 "), 12);
}

TEST(ToCvByte, RoundsAndCuts) {
  EXPECT_EQ(toCvByte(254.5), 254);
  EXPECT_EQ(toCvByte(255.5), 255);
  EXPECT_EQ(toCvByte(300), 255);
  EXPECT_EQ(toCvByte(-3), 0);
}

TEST(Printed, HasABlankInFrontUnlessNegative) {
  EXPECT_EQ(printed(29), QStringLiteral(" 29"));
  EXPECT_EQ(printed(0), QStringLiteral(" 0"));
  EXPECT_EQ(printed(-3), QStringLiteral("-3"));
}

TEST(Hex, OnlyAOneDigitResultIsPadded) {
  EXPECT_EQ(hex(255), QStringLiteral("FF"));
  EXPECT_EQ(hexPadded(8), QStringLiteral("08"));
  EXPECT_EQ(hexPadded(255), QStringLiteral("FF"));
  EXPECT_EQ(hexPadded(256), QStringLiteral("100"));
  EXPECT_EQ(hex(-1), QStringLiteral("FFFFFFFF"));
}

TEST(ParseHex, TakesDigitsOnly) {
  EXPECT_EQ(parseHex(u"7b"), 123U);
  EXPECT_EQ(parseHex(u"FFFFFFFF"), 0xFFFFFFFFU);
  EXPECT_FALSE(parseHex(u""));
  EXPECT_FALSE(parseHex(u"0g"));
  EXPECT_FALSE(parseHex(u" 1"));
  EXPECT_FALSE(parseHex(u"123456789"));
}

}  // namespace
}  // namespace lokari
