// Bit descriptions: which groups get a control, what they show of a value, and the value that their
// entries make.
#include "decoder/bit_description.h"

#include <gtest/gtest.h>

#include <QDirIterator>

#include <random>

#include "base/text_file.h"
#include "decoder/dec_loader.h"
#include "support/places.h"

namespace lokari {
namespace {

using Entries = std::vector<std::optional<int>>;
constexpr std::nullopt_t kNone = std::nullopt;

/// One control: "Titel[Aus/Ein]=1" for options, "Titel(0-7)=3" for a number.
QString controlText(const BitGroup& group, int value) {
  const QString range = group.hasOptions()
                            ? QStringLiteral("[%1]").arg(group.choices.join(u'/'))
                            : QStringLiteral("(%1-%2)").arg(group.lowest()).arg(group.highest());
  return group.title + range + u'=' + QString::number(group.shown(value));
}

QString controlsText(const QString& bits, int value) {
  QStringList texts;
  const BitDescription description(bits);
  for (const BitGroup& group : description.groups()) texts << controlText(group, value);
  return texts.join(QStringLiteral("; "));
}

struct Case {
  const char* name;
  const char* bits;
  int value;
  const char* controls;
  Entries entries;
  int result;     ///< -1: refused
  size_t at = 0;  ///< the refused group
};

const Case kCases[] = {
    // Groups of bits.
    {"FirstGroupIsBitZero", "1,Licht,Aus,Ein", 1, "Licht[Aus/Ein]=1", {1}, 1},
    {"SecondGroupFollowsTheFirst",
     "1,Licht,Aus,Ein|2,Modus,A,B,C,D",
     5,
     "Licht[Aus/Ein]=1; Modus[A/B/C/D]=2",
     {1, 2},
     5},
    {"ChoicesOfBitOneGiveTwo",
     "1,Licht,Aus,Ein|2,Modus,A,B,C,D",
     0,
     "Licht[Aus/Ein]=0; Modus[A/B/C/D]=0",
     {0, 1},
     2},
    {"ChoicesOfBitOneGiveFour",
     "1,Licht,Aus,Ein|2,Modus,A,B,C,D",
     0,
     "Licht[Aus/Ein]=0; Modus[A/B/C/D]=0",
     {0, 2},
     4},
    {"ChoicesOfBitOneGiveSix",
     "1,Licht,Aus,Ein|2,Modus,A,B,C,D",
     6,
     "Licht[Aus/Ein]=0; Modus[A/B/C/D]=3",
     {0, 3},
     6},
    {"TitleWithoutChoicesIsANumber", "3,Stufe", 255, "Stufe(0-7)=7", {5}, 5},
    {"NumberStandsAtItsBits",
     "1,Taste,Nein,Ja|2,Stufe",
     6,
     "Taste[Nein/Ja]=0; Stufe(0-3)=3",
     {1, 2},
     5},
    {"WholeByte", "8,Wert", 200, "Wert(0-255)=200", {255}, 255},
    {"LineEndingInABar", "1,Licht,Aus,Ein|", 1, "Licht[Aus/Ein]=1", {1}, 1},
    {"BlanksAroundItems",
     " 1 , Licht , Aus , Ein | 2 , Modus",
     3,
     "Licht[Aus/Ein]=1; Modus(0-3)=1",
     {1, 1},
     3},
    {"OptionsWithoutATitle", "1,,Aus,Ein", 1, "[Aus/Ein]=1", {0}, 0},
    {"AnEmptyChoiceKeepsItsPlace", "2,Modus,A,,C", 2, "Modus[A//C]=2", {1}, 1},
    {"WidthZeroStaysOnItsBit",
     "0,Eins,Aus,Ein|1,Zwei,Aus,Ein",
     1,
     "Eins[Aus/Ein]=0; Zwei[Aus/Ein]=1",
     {0, 1},
     1},

    // Bits that are passed over.
    {"NumberAloneIsPassedOver", "2|1,Licht,Aus,Ein", 4, "Licht[Aus/Ein]=1", {1}, 4},
    {"PassedBitsAreZeroInTheNewValue", "2|1,Licht,Aus,Ein", 7, "Licht[Aus/Ein]=1", {1}, 4},
    {"NumberWithoutATitleIsPassedOver", "2,|1,Licht,Aus,Ein", 4, "Licht[Aus/Ein]=1", {1}, 4},
    {"AnEmptyGroupPassesNothingOver",
     "1,Licht,Aus,Ein||1,Horn,Aus,Ein",
     2,
     "Licht[Aus/Ein]=0; Horn[Aus/Ein]=1",
     {0, 1},
     2},
    {"NoGroupAtAll", "8", 77, "", {}, 0},

    // Sixteen choices count.
    {"SixteenChoices",
     "4,N,a,b,c,d,e,f,g,h,i,j,k,l,m,n,o,p",
     15,
     "N[a/b/c/d/e/f/g/h/i/j/k/l/m/n/o/p]=15",
     {15},
     15},
    {"TheSeventeenthChoiceIsDropped",
     "5,N,a,b,c,d,e,f,g,h,i,j,k,l,m,n,o,p,q,r",
     16,
     "N[a/b/c/d/e/f/g/h/i/j/k/l/m/n/o/p]=16",
     {16},
     -1},

    // Decimal digits.
    {"UnitsOfADecimalNumber", "#,Einer", 7, "Einer(0-9)=7", {9}, 9},
    {"UnitsAndTens", "#,Einer|#,Zehner", 37, "Einer(0-9)=7; Zehner(0-9)=3", {7, 3}, 37},
    {"TensOfAHundred", "#,Einer|#,Zehner", 123, "Einer(0-9)=3; Zehner(0-9)=12", {3, 12}, -1, 1},
    {"AThirdDigitIsTheUnitsAgain",
     "#,a|#,b|#,c",
     37,
     "a(0-9)=7; b(0-9)=3; c(0-9)=7",
     {7, 3, 0},
     37},
    {"AnAddressBehindUnitsIsTheTens", "#,a|A,b", 37, "a(0-9)=7; b(0-9)=3", {7, 3}, 37},
    {"AGroupBetweenTwoDigitsMakesUnitsOfBoth", "#,a|1|#,b", 37, "a(0-9)=7; b(0-9)=7", {1, 2}, 3},
    {"TheTensBehindTheTensAreUnits",
     "#,a|#,b|#,c|#,d",
     40,
     "a(0-9)=0; b(0-9)=4; c(0-9)=0; d(0-9)=4",
     {0, 4, 0, 0},
     40},
    {"ADigitWithoutATitleButAComma", "#,|#,", 37, "Einer(0-9)=7; Zehner(0-9)=3", {7, 3}, 37},
    {"ADigitWithoutAComma", "#|1,Licht,Aus,Ein", 1, "Licht[Aus/Ein]=1", {1}, 1},
    {"TextsBehindADigitAreNoChoices", "#,Einer,a,b", 4, "Einer(0-9)=4", {5}, 5},

    // The address of two CVs.
    {"AddressAlone", "A", 1000, "Adresse(128-10239)=1000", {128}, 128},
    {"AddressWithATitle", "A,Zweitadresse", 4711, "Zweitadresse(128-10239)=4711", {10239}, 10239},
    {"AddressWithACommaAlone", "A,", 300, "Adresse(128-10239)=300", {300}, 300},

    // The position goes back behind digits and addresses.
    {"PositionGoesBackByOneBehindUnits",
     "2,Art|#,n|1,Licht,Aus,Ein",
     2,
     "Art(0-3)=2; n(0-9)=2; Licht[Aus/Ein]=1",
     {0, 0, 1},
     2},
    {"PositionGoesBackByThreeBehindTheTens",
     "3,Art|#,n|#,m|1,Licht,Aus,Ein",
     1,
     "Art(0-7)=1; n(0-9)=1; m(0-9)=0; Licht[Aus/Ein]=1",
     {0, 0, 0, 1},
     1},
    {"PositionGoesBackByThreeBehindAnAddress",
     "4,Art|A,n|1,Licht,Aus,Ein",
     2,
     "Art(0-15)=2; n(128-10239)=2; Licht[Aus/Ein]=1",
     {0, 128, 1},
     130},
    {"BelowBitZeroThereAreNoBits",
     "#,n|1,Licht,Aus,Ein",
     1,
     "n(0-9)=1; Licht[Aus/Ein]=0",
     {1, 0},
     1},

    // Refused entries.
    {"WidthThreeRefusesEight", "3,Stufe", 0, "Stufe(0-7)=0", {8}, -1},
    {"NegativeIsRefused", "3,Stufe", 0, "Stufe(0-7)=0", {-1}, -1},
    {"ADigitRefusesTen", "#,Einer|#,Zehner", 0, "Einer(0-9)=0; Zehner(0-9)=0", {9, 10}, -1, 1},
    {"AnAddressRefuses127", "A", 0, "Adresse(128-10239)=0", {127}, -1},
    {"AnAddressRefuses10240", "A", 0, "Adresse(128-10239)=0", {10240}, -1},
    {"NoNumberIsRefused", "3,Stufe|2,Art", 0, "Stufe(0-7)=0; Art(0-3)=0", {1, kNone}, -1, 1},
    {"NoChosenOptionIsRefused", "2,Modus,A,B,C", 3, "Modus[A/B/C]=3", {3}, -1},
    {"TheFirstRefusedGroupIsTold", "3,Stufe|2,Art", 0, "Stufe(0-7)=0; Art(0-3)=0", {8, 4}, -1, 0},
    {"MoreThanTheCvHoldsIsRefused",
     "8,Wert|1,Licht,Aus,Ein",
     255,
     "Wert(0-255)=255; "
     "Licht[Aus/Ein]=0",
     {0, 1},
     -1,
     1},
    {"FewerEntriesThanGroups", "3,Stufe|2,Art", 0, "Stufe(0-7)=0; Art(0-3)=0", {1}, -1, 1},

    // What a description should not say is no fault of the program's.
    {"ANegativeWidthIsATypeValue", "-1,a|#,b", 37, "a(0-9)=7; b(0-9)=3", {7, 3}, 37},
    {"ALowerTypeValueHasNoControl",
     "4,Art|-4,weg|1,Licht,Aus,Ein",
     1,
     "Art(0-15)=1; Licht[Aus/Ein]=1",
     {0, 1},
     1},
    {"AWordIsNoWidth", "x,Wort", 5, "Wort(0-0)=0", {0}, 0},
    {"AHugeWidthIsAllBits", "40000,Wert", 255, "Wert(0-32767)=255", {256}, -1},
    {"AGroupFarBeyondTheCv", "30000|1,Licht,Aus,Ein", 255, "Licht[Aus/Ein]=0", {0}, 0},
    {"AGroupFarBeyondTheCvCannotBeSet", "30000|1,Licht,Aus,Ein", 255, "Licht[Aus/Ein]=0", {1}, -1},
};

std::string nameOf(const ::testing::TestParamInfo<Case>& info) {
  return info.param.name;
}

class BitGrammar : public ::testing::TestWithParam<Case> {};

TEST_P(BitGrammar, ShowsAndAccepts) {
  const Case& c = GetParam();
  const QString bits = QString::fromUtf8(c.bits);
  EXPECT_EQ(controlsText(bits, c.value), QString::fromUtf8(c.controls));
  const BitEntry entry = BitDescription(bits).accept(c.entries);
  if (c.result >= 0) {
    EXPECT_EQ(entry.value, c.result);
  } else {
    EXPECT_FALSE(entry.value.has_value());
    EXPECT_EQ(entry.refused, c.at);
  }
}

INSTANTIATE_TEST_SUITE_P(Table, BitGrammar, ::testing::ValuesIn(kCases), nameOf);

/// What the dialog gives back when the user changes nothing; nothing when it is refused.
std::optional<int> unchanged(const BitDescription& description, int value) {
  Entries entries;
  for (const BitGroup& group : description.groups()) entries.emplace_back(group.shown(value));
  return description.accept(entries).value;
}

/// A well-formed description of groups of bits, and the values that it can show: each option has
/// a name, and bits that are passed over are 0.
struct Generated {
  QString bits;
  std::vector<int> values;
};

Generated generate(std::mt19937& random) {
  const auto any = [&random](int low, int high) {
    return std::uniform_int_distribution<int>(low, high)(random);
  };
  QStringList groups;
  std::vector<int> values{0};
  int position = 0;
  while (position < 8 && any(0, 9) > 0) {
    const int width = any(1, std::min(8 - position, 5));
    const int highest = (1 << width) - 1;
    QString group = QString::number(width);
    int last = 0;
    switch (any(0, 3)) {
      case 0:  // passed over
        break;
      case 1:  // a number
        group += QStringLiteral(",Zahl");
        last = highest;
        break;
      default: {  // options, not always for all values
        group += QStringLiteral(",Wahl");
        last = any(0, std::min(highest, 15));
        for (int choice = 0; choice <= last; ++choice) group += QStringLiteral(",w%1").arg(choice);
      }
    }
    std::vector<int> extended;
    for (const int value : values)
      for (int entry = 0; entry <= last; ++entry) extended.push_back(value + (entry << position));
    values = std::move(extended);
    groups << group;
    position += width;
  }
  return {groups.join(u'|'), values};
}

TEST(BitDescriptions, AcceptingAValueUnchangedGivesItBack) {
  std::mt19937 random(20240607);
  size_t checked = 0;
  for (int i = 0; i < 3000; ++i) {
    const Generated generated = generate(random);
    const BitDescription description(generated.bits);
    for (const int value : generated.values) {
      ASSERT_EQ(unchanged(description, value), value) << generated.bits.toStdString();
      ++checked;
    }
  }
  EXPECT_GT(checked, 50000U);
}

TEST(BitDescriptions, AcceptingADecimalNumberUnchangedGivesItBack) {
  for (int value = 0; value <= 9; ++value)
    EXPECT_EQ(unchanged(BitDescription(QStringLiteral("#,Einer")), value), value);
  for (int value = 0; value <= 99; ++value)
    EXPECT_EQ(unchanged(BitDescription(QStringLiteral("#,Einer|#,Zehner")), value), value);
}

TEST(BitDescriptions, AcceptingAnAddressUnchangedGivesItBack) {
  for (const char* bits : {"A", "A,Adresse"})
    for (int value = 128; value <= 10239; ++value)
      ASSERT_EQ(unchanged(BitDescription(QString::fromUtf8(bits)), value), value);
}

/// The bits of a CV that a description's groups hold, worked out from its text alone; -1 for a
/// decimal number.
int coveredBits(const QString& bits) {
  int covered = 0;
  int position = 0;
  for (const QString& group : bits.split(u'|')) {
    if (group.startsWith(u'#')) return -1;
    const int width = group.section(u',', 0, 0).toInt();
    if (group.contains(u',')) covered |= ((1 << width) - 1) << position;
    position += width;
  }
  return covered;
}

TEST(BitDescriptions, EveryShippedOneGivesItsValuesBack) {
  QDirIterator files(places::source() + QStringLiteral("/data/dec"), {QStringLiteral("*.dec")},
                     QDir::Files, QDirIterator::Subdirectories);
  int descriptions = 0;
  while (files.hasNext()) {
    const QString file = files.next();
    const auto text = readTextFile(file);
    ASSERT_TRUE(text.has_value()) << file.toStdString();
    DecoderDescription decoder;
    ASSERT_TRUE(loadDescription(*text, decoder)) << file.toStdString();
    for (int cv = 1; cv <= kHighestCvIndex; ++cv) {
      const QString& bits = decoder.info(CvIndex(cv)).cvBits;
      if (bits.isEmpty()) continue;
      ++descriptions;
      const BitDescription description(bits);
      EXPECT_FALSE(description.groups().empty()) << file.toStdString() << ": CV " << cv;
      const int covered = coveredBits(bits);
      for (int value = 0; value <= (covered < 0 ? 99 : 255); ++value) {
        if (covered >= 0 && (value & ~covered) != 0) continue;
        bool named = true;
        for (const BitGroup& group : description.groups())
          named = named && group.shown(value) <= group.highest();
        const auto result = unchanged(description, value);
        EXPECT_EQ(result.has_value(), named) << file.toStdString() << ": CV " << cv;
        EXPECT_EQ(result.value_or(value), value) << file.toStdString() << ": CV " << cv;
      }
    }
  }
  EXPECT_GT(descriptions, 50);
}

}  // namespace
}  // namespace lokari
