#include "cab/main_cvs.h"

#include <gtest/gtest.h>

#include <QList>

namespace lokari {
namespace {

constexpr int kNoLimit = 4864;

MainCVs read(const char* text, int highestCv = kNoLimit) {
  return readMainCVs(QString::fromUtf8(text), highestCv);
}

QList<int> numbers(const MainCVs& list) {
  QList<int> numbers;
  for (const MainCV& cv : list.entries) numbers << cv.number;
  return numbers;
}

TEST(MainCVs, AnEntryHasItsNameItsRangeAndAsHintTheFifthField) {
  const MainCVs list = read("PROGMAIN=J\nCV_3=Beschleunigung,0-63,5,2,\"Sekunden, grob\",bits\n");
  ASSERT_EQ(list.entries.size(), 1U);
  EXPECT_EQ(list.entries[0].number, 3);
  EXPECT_EQ(list.entries[0].name, "Beschleunigung");
  EXPECT_EQ(list.entries[0].range, "0-63");
  EXPECT_EQ(list.entries[0].hint, "Sekunden, grob");
  EXPECT_TRUE(list.progMain);
}

TEST(MainCVs, AnEmptyNameIsMadeOfTheNumberAndAnEmptyRangeIsTheWhole) {
  const MainCVs list = read("PROGMAIN=Y\nCV_60=\n");
  ASSERT_EQ(list.entries.size(), 1U);
  EXPECT_EQ(list.entries[0].name, "CV 60");
  EXPECT_EQ(list.entries[0].range, "0-255");
}

TEST(MainCVs, TheAddressTheConfigurationAndTheSpeedTableNeverAppear) {
  const MainCVs list = read(
      "PROGMAIN=J\nCV_1=a\nCV_2=b\nCV_7=c\nCV_8=d\nCV_17=e\nCV_18=f\nCV_19=g\nCV_29=h\n"
      "CV_66=i\nCV_67=j\nCV_94=k\nCV_95=l\nCV_4863=m\nCV_4864=n\nCV_x=o\nCV_99999999=p\n");
  EXPECT_EQ(numbers(list), (QList<int>{2, 66, 95, 4863}));
}

TEST(MainCVs, ABankIsCutOffTheNumber) {
  EXPECT_EQ(numbers(read("PROGMAIN=J\nCV_257_2=Motor\n")), QList<int>{257});
}

TEST(MainCVs, TheLastPROGMAINAheadOfAnEntryDecides) {
  EXPECT_EQ(numbers(read("CV_2=a\nPROGMAIN=J\nCV_3=b\nPROGMAIN=N\nCV_4=c\n")), QList<int>{3});
  EXPECT_FALSE(read("PROGMAIN=J\nPROGMAIN=N\n").progMain);
  EXPECT_TRUE(read("progmain = ja\n").progMain);
  EXPECT_FALSE(read("PROGMAIN=\n").progMain);
  EXPECT_FALSE(read("PROGMAIN=1\n").progMain);
  EXPECT_FALSE(read("").progMain);
}

TEST(MainCVs, PROGMODEKeepsItsValueOnlyAsTheLastKey) {
  EXPECT_EQ(read("PROGMAIN=J\nCV_3=a\nPROGMODE=2\n").progMode, 2);
  EXPECT_EQ(read("PROGMODE=1\nPROGMAIN=J\n").progMode, 0);
  EXPECT_EQ(read("PROGMODE=1\nCV_3=a\n").progMode, 0);
  EXPECT_EQ(read("PROGMODE=1\nUNBEKANNT=3\n").progMode, 0);
  // A line without "=" is no key.
  EXPECT_EQ(read("PROGMODE=1\n; Ende\n").progMode, 1);
}

TEST(MainCVs, APROGMODEOutOfItsRangeIsRefused) {
  EXPECT_EQ(read("PROGMODE=3\n").progMode, 0);
  EXPECT_EQ(read("PROGMODE=-1\n").progMode, 0);
  EXPECT_EQ(read("PROGMODE=2\nPROGMODE=7\n").progMode, 2);
  EXPECT_EQ(read("PROGMODE=2\nPROGMODE=abc\n").progMode, 0);
  EXPECT_EQ(read("PROGMODE=1e99\n").progMode, 0);
}

TEST(MainCVs, ALimitOf256InTheFourthFieldDropsTheEntry) {
  EXPECT_EQ(numbers(read("PROGMAIN=J\nCV_3=a,0-255,0,255\nCV_4=b,0-255,0,256\nCV_5=c,0-9,256\n")),
            (QList<int>{3, 5}));
}

TEST(MainCVs, StationsThatCountInOneByteHaveNoCVBeyond255) {
  EXPECT_EQ(numbers(read("PROGMAIN=J\nCV_255=a\nCV_256=b\n", 255)), QList<int>{255});
  EXPECT_EQ(numbers(read("PROGMAIN=J\nCV_255=a\nCV_256=b\n")), (QList<int>{255, 256}));
}

TEST(MainCVs, AContinuedLineIsOne) {
  const MainCVs list = read("PROGMAIN=J\nCV_3=Beschleu-\n   nigung,0-9\n");
  ASSERT_EQ(list.entries.size(), 1U);
  EXPECT_EQ(list.entries[0].name, "Beschleunigung");
}

}  // namespace
}  // namespace lokari
