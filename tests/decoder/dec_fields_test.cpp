#include "decoder/dec_fields.h"

#include <gtest/gtest.h>

#include <QStringList>

#include "base/numbers.h"

namespace lokari {
namespace {

QStringList fieldsOf(const QString& text, int count) {
  StrParts parts(text);
  QStringList fields;
  for (int i = 0; i < count; ++i) fields << parts.next();
  return fields;
}

TEST(GetStrPart, SplitsAtCommasAndTrimsBlanks) {
  EXPECT_EQ(fieldsOf(" Name , 0-255,5", 3), QStringList({"Name", "0-255", "5"}));
}

TEST(GetStrPart, QuotesProtectCommasAndAreNotCopied) {
  EXPECT_EQ(fieldsOf("\"Licht, vorne\",0-255,0,3", 4),
            QStringList({"Licht, vorne", "0-255", "0", "3"}));
  EXPECT_EQ(fieldsOf("Licht\", \"vorne,x", 2), QStringList({"Licht, vorne", "x"}));
}

TEST(GetStrPart, GivesEmptyFieldsBehindTheLast) {
  EXPECT_EQ(fieldsOf("a,,b", 5), QStringList({"a", "", "b", "", ""}));
  EXPECT_EQ(fieldsOf("", 2), QStringList({"", ""}));
}

TEST(GetStrPart, AnOpenQuoteEndsWithItsText) {
  StrParts parts(QStringLiteral("\"a,b"));
  EXPECT_EQ(parts.next(), "a,b");
  EXPECT_TRUE(parts.lastWasOpen());
  EXPECT_TRUE(parts.atEnd());
}

TEST(GetStrPart, TrimsBlanksAndNoOtherWhiteSpace) {
  EXPECT_EQ(fieldsOf(" \tName\t ,x", 1), QStringList({"\tName\t"}));
}

TEST(GetMinMax, FindsTheEnds) {
  EXPECT_EQ(GetMinMax("0-255", false), 0);
  EXPECT_EQ(GetMinMax("0-255", true), 255);
  EXPECT_EQ(GetMinMax("3,1,5-7", false), 1);
  EXPECT_EQ(GetMinMax("3,1,5-7", true), 7);
}

TEST(GetMinMax, ATrailingCommaCountsAsZero) {
  EXPECT_EQ(GetMinMax("5-10", false), 5);
  EXPECT_EQ(GetMinMax("5-10,", false), 0);
  EXPECT_EQ(GetMinMax("5-10,", true), 10);
}

TEST(GetMinMax, CutsAndRaises) {
  EXPECT_EQ(GetMinMax("300-400", true), 255);
  EXPECT_EQ(GetMinMax("300-400", false), 255);  // the lowest starts as 255
  EXPECT_EQ(GetMinMax("0", true), 255);
  EXPECT_EQ(GetMinMax("0", false), 0);
  EXPECT_EQ(GetMinMax("", true), 255);
}

TEST(GetMinMax, SkipsOtherCharactersWithoutEndingTheNumber) {
  EXPECT_EQ(GetMinMax("1x2-2 0", true), 20);
  EXPECT_EQ(GetMinMax("1x2-2 0", false), 12);
}

TEST(GetMinMax, FailsBeyondSixteenBits) {
  EXPECT_THROW(GetMinMax("0-40000", true), NumberError);
}

TEST(RangeHolds, NumbersAndSpans) {
  EXPECT_FALSE(rangeHolds("1,3,5-7", 2));
  EXPECT_TRUE(rangeHolds("1,3,5-7", 6));
  EXPECT_TRUE(rangeHolds("1,3,5-7", 1));
  EXPECT_TRUE(rangeHolds("1,3,5-7", 5));
  EXPECT_TRUE(rangeHolds("1,3,5-7", 7));
  EXPECT_FALSE(rangeHolds("1,3,5-7", 4));
  EXPECT_FALSE(rangeHolds("1,3,5-7", 8));
}

TEST(RangeHolds, ATrailingCommaChangesNothingForARangeFromZero) {
  for (int value = 0; value < 256; ++value) {
    EXPECT_EQ(rangeHolds("0-255,", value), rangeHolds("0-255", value)) << value;
    EXPECT_TRUE(rangeHolds("0-255,", value)) << value;
  }
}

TEST(RangeHolds, AnEmptyItemIsZero) {
  EXPECT_TRUE(rangeHolds("5-10,", 0));
  EXPECT_FALSE(rangeHolds("5-10", 0));
  EXPECT_TRUE(rangeHolds("-5", 3));
}

TEST(RangeHolds, NumbersTooLongForAnyMachineDoNoHarm) {
  EXPECT_TRUE(rangeHolds("0-99999999999999999999", 200));
  EXPECT_FALSE(rangeHolds("99999999999999999999", 200));
  EXPECT_TRUE(rangeHolds("0000000000000000000007", 7));
}

TEST(NumberList, CollectsDigitsCutsAndSkips) {
  EXPECT_EQ(numberList("1,10,x2 0,,300", 255), (std::vector<int>{1, 10, 20, 255}));
  EXPECT_EQ(numberList("99999999999999999999", 126), (std::vector<int>{126}));
  EXPECT_TRUE(numberList("", 255).empty());
}

}  // namespace
}  // namespace lokari
