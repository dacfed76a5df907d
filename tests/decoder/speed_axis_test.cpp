// The marks on the axes of the speed curve.
#include "decoder/speed_axis.h"

#include "speed_fixture.h"

namespace lokari {
namespace {

class SpeedAxis : public SpeedFixture {
 protected:
  static QStringList labels(const std::vector<AxisTick>& ticks) {
    QStringList labels;
    for (const AxisTick& tick : ticks) labels << tick.label;
    return labels;
  }
};

TEST_F(SpeedAxis, ValuesAreRoundAndTheTopMakesRoomForItself) {
  openTable("");
  const auto ticks = valueTicks(table);
  EXPECT_EQ(labels(ticks), QStringList({"0", "50", "100", "150", "200", "255"}));
  EXPECT_DOUBLE_EQ(ticks[1].share, 50.0 / 255);
  EXPECT_DOUBLE_EQ(ticks.back().share, 1.0);
}

TEST_F(SpeedAxis, ValuesOfOtherScales) {
  openTable("INTERNALSTEPS=120\n");
  EXPECT_EQ(labels(valueTicks(table)), QStringList({"0", "20", "40", "60", "80", "100", "120"}));
  openTable("INTERNALSTEPS=63\n");
  EXPECT_EQ(labels(valueTicks(table)), QStringList({"0", "10", "20", "30", "40", "50", "63"}));
  openTable("INTERNALSTEPS=1\n");
  EXPECT_EQ(labels(valueTicks(table)), QStringList({"0", "1"}));
}

TEST_F(SpeedAxis, ThreePointsOfOneReachHaveValuesOthersPercent) {
  openEco("CV_2=Start,0-100\nCV_6=Mitte,0-100\nCV_5=Hoechst,0-100\n");
  EXPECT_EQ(labels(valueTicks(table)), QStringList({"0", "20", "40", "60", "80", "100"}));
  openEco("CV_2=Start,0-63\nCV_6=Mitte,0-255\nCV_5=Hoechst,0-255\n");
  EXPECT_EQ(labels(valueTicks(table)),
            QStringList({"0 %", "20 %", "40 %", "60 %", "80 %", "100 %"}));
}

TEST_F(SpeedAxis, StepsOfEveryTable) {
  openTable("");
  EXPECT_EQ(labels(stepTicks(table)), QStringList({"0", "4", "8", "12", "16", "20", "24", "28"}));
  openTable("", 14);
  EXPECT_EQ(labels(stepTicks(table)), QStringList({"0", "2", "4", "6", "8", "10", "12", "14"}));
  openTable("FAMILY=1\n");
  EXPECT_EQ(labels(stepTicks(table)), QStringList({"0", "3", "6", "9", "12", "15"}));
  EXPECT_DOUBLE_EQ(stepTicks(table)[1].share, 0.2);
}

TEST_F(SpeedAxis, ThreePointsAreNamedByTheirCvs) {
  openEco("CV_2=Start,0-100\n");
  EXPECT_EQ(labels(stepTicks(table)), QStringList({"CV 2", "CV 6", "CV 5"}));
}

}  // namespace
}  // namespace lokari
