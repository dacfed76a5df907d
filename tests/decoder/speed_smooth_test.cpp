// Smoothing, and the values that a table takes from the user.
#include "speed_fixture.h"

namespace lokari {
namespace {

class SpeedSmooth : public SpeedFixture {
 protected:
  void smooth() { bench->buttonClicked(QStringLiteral("cmdSmooth")); }
};

TEST_F(SpeedSmooth, EachPointSeesItsLowerNeighbourSmoothedAndHalvesGoToTheEvenNumber) {
  store(67, 5);
  store(68, 9);
  store(69, 3);
  openTable("");
  smooth();
  // (0+9)/2 = 4.5, (4+3)/2 = 3.5, (4+0)/2 = 2, (2+0)/2 = 1, (1+0)/2 = 0.5
  EXPECT_EQ(tableValues(6), (std::vector<int>{4, 4, 2, 1, 0, 0}));
}

TEST_F(SpeedSmooth, AStraightLineThroughZeroStays) {
  for (int i = 1; i <= 28; ++i) store(66 + i, 9 * i);
  openTable("");
  smooth();
  for (int i = 1; i <= 28; ++i) EXPECT_EQ(value(66 + i), 9 * i) << i;
}

TEST_F(SpeedSmooth, OfAnotherStraightLineTheFirstPointIsPulledTowardsZero) {
  store(67, 100);
  store(68, 104);
  openTable("");
  smooth();
  EXPECT_EQ(value(67), 52);
}

TEST_F(SpeedSmooth, TheLastPointStays) {
  store(93, 0);
  store(94, 255);
  openTable("");
  smooth();
  EXPECT_EQ(value(93), 128) << "(0+255)/2 = 127.5";
  EXPECT_EQ(value(94), 255);
}

TEST_F(SpeedSmooth, WithFourteenStepsOnlyEverySecondCvTakesPart) {
  store(67, 200);
  store(68, 10);
  store(69, 200);
  store(70, 20);
  store(72, 60);
  store(94, 77);
  openTable("", 14);
  smooth();
  // CV 68: (0+20)/2 = 10; CV 70: (10+60)/2 = 35; CV 72: (35+0)/2 = 17.5
  EXPECT_EQ(tableValues(6), (std::vector<int>{200, 10, 200, 35, 0, 18}));
  EXPECT_EQ(value(94), 77);
}

TEST_F(SpeedSmooth, AShortTableEndsAtItsFifteenthPoint) {
  store(81, 60);
  store(82, 200);
  openTable("FAMILY=1\n", 14);
  smooth();
  EXPECT_EQ(value(80), 30);
  EXPECT_EQ(value(81), 60);
  EXPECT_EQ(value(82), 200);
}

TEST_F(SpeedSmooth, AMarkGoesWithTheValueThatItWasSetFor) {
  store(67, 5, '1');
  store(68, 10, '1');
  store(69, 20, '1');
  openTable("");
  smooth();
  EXPECT_EQ(value(67), 5) << "(0+10)/2";
  EXPECT_EQ(mark(67), CvMark::Verified);
  EXPECT_EQ(value(68), 12) << "(5+20)/2 = 12.5";
  EXPECT_EQ(mark(68), CvMark::None);
}

TEST_F(SpeedSmooth, ThePictureAndTheGridFollow) {
  store(68, 20);
  openTable("");
  int redraws = 0;
  QList<int> rows;
  QObject::connect(bench.get(), &DecoderBench::speedTableChanged, [&] { ++redraws; });
  QObject::connect(bench.get(), &DecoderBench::gridRowChanged, [&](int row) { rows << row; });
  smooth();
  EXPECT_GT(redraws, 0);
  EXPECT_TRUE(rows.contains(bench->grid().rowOf(CvIndex(67))));
}

TEST_F(SpeedSmooth, TheButtonsAreOffForADecoderWithoutATable) {
  const auto states = [this] {
    QList<bool> enabled;
    for (const char* name : {"cmdSmooth", "cmdTblList", "cmdLoadTable", "cmdSaveTable"}) {
      enabled << control(name).enabled;
    }
    return enabled;
  };
  openEco("SPEEDTABLE=N\nCV_67=Licht,0-255\n");
  EXPECT_EQ(states(), QList<bool>(4, false));
  openEco("");
  EXPECT_EQ(states(), QList<bool>(4, true));
}

}  // namespace
}  // namespace lokari
