#include "decoder/ui/speed_curve.h"

#include "window_fixture.h"

namespace lokari {
namespace {

class SpeedCurveTest : public test::WindowFixture {
 protected:
  QList<SpeedCurve::Point> points() {
    return control<SpeedCurve>(QStringLiteral("picSpeedTable"))->points();
  }
};

TEST_F(SpeedCurveTest, WithoutATableItGoesFromStartOverMiddleToTop) {
  describe("CV_2=Start,0-100\nCV_6=Mitte,0-200\nCV_5=Hoechst,0-200\n");
  setValue(2, 10);
  setValue(6, 50, '1');
  setValue(5, 200, '2');
  edit([&] {
    const auto curve = points();
    ASSERT_EQ(curve.size(), 3);
    EXPECT_DOUBLE_EQ(curve[0].speed, 0.1);
    EXPECT_DOUBLE_EQ(curve[1].step, 0.5);
    EXPECT_DOUBLE_EQ(curve[1].speed, 0.25);
    EXPECT_EQ(curve[1].colour, TextColour::Blue);
    EXPECT_DOUBLE_EQ(curve[2].speed, 1.0);
    EXPECT_EQ(curve[2].colour, TextColour::Red);
  });
}

TEST_F(SpeedCurveTest, AMiddleOfZeroLiesHalfWay) {
  describe("CV_2=Start,0-100\nCV_6=Mitte,0-100\nCV_5=Hoechst,0-100\n");
  setValue(2, 20);
  setValue(5, 80);
  edit([&] {
    const auto curve = points();
    ASSERT_EQ(curve.size(), 3);
    EXPECT_DOUBLE_EQ(curve[1].speed, 0.5);
  });
}

TEST_F(SpeedCurveTest, ATableInUseShowsItsTwentyEightPoints) {
  describe("INTERNALSTEPS=200\n");
  setValue(29, 16 + 2);
  setValue(67, 20);
  setValue(94, 200, '1');
  edit([&] {
    const auto curve = points();
    ASSERT_EQ(curve.size(), 28);
    EXPECT_DOUBLE_EQ(curve.first().speed, 0.1);
    EXPECT_DOUBLE_EQ(curve.last().step, 1.0);
    EXPECT_DOUBLE_EQ(curve.last().speed, 1.0);
    EXPECT_EQ(curve.last().colour, TextColour::Blue);
  });
}

TEST_F(SpeedCurveTest, WithFourteenStepsEverySecondCvIsAPoint) {
  describe("");
  setValue(29, 16);
  setValue(68, 51);
  edit([&] {
    const auto curve = points();
    ASSERT_EQ(curve.size(), 14);
    EXPECT_DOUBLE_EQ(curve.first().speed, 0.2);
  });
}

TEST_F(SpeedCurveTest, AShortTableHasFifteenPoints) {
  describe("FAMILY=1\n");
  setValue(29, 16);
  edit([&] { EXPECT_EQ(points().size(), 15); });
}

}  // namespace
}  // namespace lokari
