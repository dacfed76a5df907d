#include "db/german_text.h"

#include <gtest/gtest.h>

#include "db/like_pattern.h"

namespace lokari {
namespace {

int order(const char* a, const char* b) {
  return compareGerman(std::string_view(a), std::string_view(b));
}

bool like(const char* text, const char* pattern) {
  const auto parsed = LikePattern::parse(pattern);
  return parsed && parsed->matches(text);
}

TEST(GermanText, CaseNeverCounts) {
  EXPECT_EQ(order("Anlage", "ANLAGE"), 0);
  EXPECT_EQ(order("ÄRA", "ära"), 0);
}

TEST(GermanText, UmlautsStandBesideTheirBaseLetter) {
  EXPECT_LT(order("Ähre", "Bahn"), 0);
  EXPECT_GT(order("Oma", "Öl"), 0);
  EXPECT_LT(order("Müller", "Mut"), 0);
  EXPECT_LT(order("Zug", "Züge"), 0);
}

TEST(GermanText, AnAccentDecidesOnlyBetweenOtherwiseEqualTexts) {
  EXPECT_LT(order("Muller", "Müller"), 0);
  EXPECT_NE(order("Muller", "Müller"), 0);
  EXPECT_LT(order("Müller", "Mullerz"), 0);
}

TEST(GermanText, SharpSOrdersLikeTwoS) {
  EXPECT_LT(order("Maß", "Mast"), 0);
  EXPECT_LT(order("Masr", "Maß"), 0);
  EXPECT_NE(order("Maß", "Mass"), 0);
}

TEST(GermanText, ACommonBeginningDecidesNothing) {
  EXPECT_EQ(order("Sammlung 3", "Sammlung 3"), 0);
  EXPECT_EQ(order("Sammlung A", "Sammlung a"), 0);
  EXPECT_LT(order("Sammlung 10", "Sammlung 3"), 0);
  EXPECT_LT(order("Sammlung", "Sammlung 3"), 0);
  EXPECT_LT(order("Spur ä", "Spur B"), 0);
  EXPECT_LT(order("Straßa", "Strassb"), 0);
  EXPECT_GT(order("Spur \xC3", "Spur a"), 0);
}

TEST(GermanText, TheEmptyTextStandsFirst) {
  EXPECT_LT(order("", "A"), 0);
  EXPECT_EQ(order("", ""), 0);
  EXPECT_LT(order("A", "AB"), 0);
}

TEST(GermanText, BrokenUtf8IsComparedAndNotOverread) {
  EXPECT_NE(order("\xC3", "a"), 0);
  EXPECT_EQ(order("\xF0\x9F", "\xF0\x9F"), 0);
}

TEST(GermanText, AZeroInsideATextDoesNotEndIt) {
  EXPECT_NE(compareGerman(std::string_view("a\0b", 3), std::string_view("a\0c", 3)), 0);
}

TEST(LikePattern, StarQuestionMarkAndHash) {
  EXPECT_TRUE(like("V 200", "V*"));
  EXPECT_TRUE(like("V 200", "*200"));
  EXPECT_TRUE(like("V 200", "v ###"));
  EXPECT_TRUE(like("V 200", "?*2?0"));
  EXPECT_TRUE(like("", "*"));
  EXPECT_FALSE(like("V 200", "V"));
  EXPECT_FALSE(like("V 2x0", "V ###"));
  EXPECT_FALSE(like("", "?"));
}

TEST(LikePattern, ListsAndRanges) {
  EXPECT_TRUE(like("b1", "[a-c]#"));
  EXPECT_TRUE(like("Ä1", "[a-c]#"));
  EXPECT_FALSE(like("d1", "[a-c]#"));
  EXPECT_TRUE(like("d1", "[!a-c]#"));
  EXPECT_TRUE(like("x", "[xyz]"));
  EXPECT_TRUE(like("a*b", "a[*]b"));
  EXPECT_FALSE(like("aXb", "a[*]b"));
}

TEST(LikePattern, BrokenListsAreNoPattern) {
  EXPECT_FALSE(LikePattern::parse("[abc").has_value());
  EXPECT_FALSE(LikePattern::parse("[c-a]").has_value());
}

TEST(LikePattern, SignsOfOtherLanguagesAreOrdinaryCharacters) {
  EXPECT_FALSE(like("abc", "a%"));
  EXPECT_TRUE(like("a%", "a%"));
  EXPECT_FALSE(like("abc", "a_c"));
}

TEST(LikePattern, ManyStarsEndInReasonableTime) {
  const std::string text(3000, 'a');
  std::string pattern;
  for (int i = 0; i < 300; ++i) pattern += "a*";
  EXPECT_FALSE(like(text.c_str(), (pattern + "b").c_str()));
}

}  // namespace
}  // namespace lokari
