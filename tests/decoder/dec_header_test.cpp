#include "decoder/dec_header.h"

#include <gtest/gtest.h>

namespace lokari {
namespace {

struct HeaderCase {
  const char* text;
  const char* type;
  const char* maker;
};

class DecHeaderTest : public ::testing::TestWithParam<HeaderCase> {};

TEST_P(DecHeaderTest, ReadsTypeAndMaker) {
  const DecHeader header = readDecHeader(QString::fromUtf8(GetParam().text));
  EXPECT_EQ(header.type, QString::fromUtf8(GetParam().type));
  EXPECT_EQ(header.maker, QString::fromUtf8(GetParam().maker));
}

const HeaderCase kCases[] = {
    {"[MX640]\r\nMANUFACTURER=145\r\n", "MX640", "145"},
    {"; Kommentar\n\n[ MX640 ] Rest]\n", "MX640", ""},
    {"[MX640]\n[MX999]\n", "MX640", ""},
    // Only at the start of a line, and only with its end on the same one.
    {" [MX640]\nCV_2=[x]\n", "", ""},
    {"[MX640\n[MX999]\n", "MX999", ""},
    {"[]\n[  ]\n[MX1]\n", "MX1", ""},
    {"", "", ""},
    {"MANUFACTURER=145", "", "145"},
    {"\t  manufacturer = 13\n", "", "13"},
    {"ManufacturerID: 7   \n", "", "7"},
    {"MANUFACTURER=007\n", "", "7"},
    {"MANUFACTURER=000\n", "", "0"},
    {"MANUFACTURER=97 ; Adlerton\n", "", ""},
    {"MANUFACTURER\n", "", ""},
    {"; MANUFACTURER=97\n", "", ""},
    {"MANUFACTURER=12x97\n", "", "97"},
    {"MANUFACTURER=97\nMANUFACTURER=?\n", "", "97"},
    {"MANUFACTURER=97\nMANUFACTURER=13\n", "", "13"},
    {"MANUFACTURER=-5\n", "", "5"},
};

INSTANTIATE_TEST_SUITE_P(Lines, DecHeaderTest, ::testing::ValuesIn(kCases));

TEST(DigitsAtEndTest, TakesTheLastRunOfDigits) {
  EXPECT_EQ(digitsAtEnd(QStringLiteral("Fa. (5)\t(97")), QStringLiteral("97"));
  EXPECT_EQ(digitsAtEnd(QStringLiteral("97")), QStringLiteral("97"));
  EXPECT_EQ(digitsAtEnd(QStringLiteral("97)")), QString());
  EXPECT_EQ(digitsAtEnd(QString()), QString());
}

}  // namespace
}  // namespace lokari
