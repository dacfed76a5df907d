// The speed curve: its points in both views, and how they move.
#include "speed_fixture.h"

namespace lokari {
namespace {

const char* const kCurve =
    "CV_2=Start,0-100\n"
    "CV_6=Mitte,0-200\n"
    "CV_5=Hoechst,10-200\n";

using SpeedTableTest = SpeedFixture;

TEST_F(SpeedTableTest, ThreePointsWhileTheTableIsOff) {
  store(2, 10);
  store(6, 50, '1');
  store(5, 200, '2');
  openEco(kCurve);
  ASSERT_EQ(table.view(), SpeedView::ThreePoints);
  ASSERT_EQ(table.pointCount(), 3);
  EXPECT_EQ(table.cvOf(1), CvIndex(2));
  EXPECT_EQ(table.cvOf(2), CvIndex(6));
  EXPECT_EQ(table.cvOf(3), CvIndex(5));
  const auto points = table.points();
  EXPECT_DOUBLE_EQ(points[0].step, 0.0);
  EXPECT_DOUBLE_EQ(points[0].speed, 0.1);
  EXPECT_EQ(points[0].colour, TextColour::Normal);
  EXPECT_DOUBLE_EQ(points[1].step, 0.5);
  EXPECT_DOUBLE_EQ(points[1].speed, 0.25);
  EXPECT_EQ(points[1].colour, TextColour::Blue);
  EXPECT_DOUBLE_EQ(points[2].step, 1.0);
  EXPECT_DOUBLE_EQ(points[2].speed, 1.0);
  EXPECT_EQ(points[2].colour, TextColour::Red);
}

TEST_F(SpeedTableTest, ThreePointsWhenTheDecoderHasNoTable) {
  store(29, config_bit::kSpeedTable + config_bit::kSteps);
  openEco("SPEEDTABLE=N\n");
  EXPECT_EQ(table.view(), SpeedView::ThreePoints);
}

TEST_F(SpeedTableTest, AMiddleOfZeroLiesHalfWay) {
  store(2, 20);
  store(5, 160);
  openEco(kCurve);
  EXPECT_DOUBLE_EQ(table.points()[1].speed, 0.5);
}

TEST_F(SpeedTableTest, ATableOfTwentyEightSteps) {
  store(67, 20);
  store(94, 200, '1');
  openTable("INTERNALSTEPS=200\n");
  ASSERT_EQ(table.view(), SpeedView::Table);
  const auto points = table.points();
  ASSERT_EQ(points.size(), 28U);
  EXPECT_EQ(points.front().cv, CvIndex(67));
  EXPECT_DOUBLE_EQ(points.front().step, 1.0 / 28);
  EXPECT_DOUBLE_EQ(points.front().speed, 0.1);
  EXPECT_EQ(points.back().cv, CvIndex(94));
  EXPECT_DOUBLE_EQ(points.back().step, 1.0);
  EXPECT_DOUBLE_EQ(points.back().speed, 1.0);
  EXPECT_EQ(points.back().colour, TextColour::Blue);
}

TEST_F(SpeedTableTest, WithFourteenStepsEverySecondCvIsAPoint) {
  openTable("", 14);
  ASSERT_EQ(table.pointCount(), 14);
  EXPECT_EQ(table.cvOf(1), CvIndex(68));
  EXPECT_EQ(table.cvOf(14), CvIndex(94));
}

TEST_F(SpeedTableTest, AShortTableHasFifteenPointsAlsoWithFourteenSteps) {
  openTable("FAMILY=1\n", 14);
  ASSERT_EQ(table.pointCount(), 15);
  EXPECT_EQ(table.cvOf(1), CvIndex(67));
  EXPECT_EQ(table.cvOf(15), CvIndex(81));
}

TEST_F(SpeedTableTest, AValueAboveTheScaleLiesAtItsTop) {
  store(67, 250);
  openTable("INTERNALSTEPS=120\n");
  EXPECT_DOUBLE_EQ(table.points().front().speed, 1.0);
}

TEST_F(SpeedTableTest, APointOfTheTableTakesItsShareOfTheScaleRoundedToEven) {
  openTable("INTERNALSTEPS=121\n");
  EXPECT_TRUE(table.moveTo(3, 0.5));
  EXPECT_EQ(value(69), 60) << "60.5";
  EXPECT_TRUE(table.moveTo(4, 0.25));
  EXPECT_EQ(value(70), 30) << "30.25";
}

TEST_F(SpeedTableTest, AMoveBeyondThePictureIsCut) {
  store(67, 50);
  openTable("INTERNALSTEPS=120\n");
  table.moveTo(1, -0.3);
  EXPECT_EQ(value(67), 0);
  table.moveTo(1, 1.4);
  EXPECT_EQ(value(67), 120);
}

TEST_F(SpeedTableTest, AMoveClearsTheMarkAlsoWhereTheValueStays) {
  store(67, 255, '1');
  openTable("");
  table.moveTo(1, 1.0);
  EXPECT_EQ(value(67), 255);
  EXPECT_EQ(mark(67), CvMark::None);
}

TEST_F(SpeedTableTest, WithFourteenStepsAMoveLeavesTheCvsInBetween) {
  openTable("INTERNALSTEPS=100\n", 14);
  table.moveTo(1, 0.4);
  EXPECT_EQ(value(67), 0);
  EXPECT_EQ(value(68), 40);
  EXPECT_EQ(value(69), 0);
}

TEST_F(SpeedTableTest, APointOfThreeGoesIntoItsField) {
  store(6, 50, '1');
  openEco(kCurve);
  EXPECT_TRUE(table.moveTo(2, 0.4));
  EXPECT_EQ(text("txtDcDrvMedSpeed"), QStringLiteral("80"));
  EXPECT_EQ(value(6), 80);
  EXPECT_EQ(mark(6), CvMark::None);
  EXPECT_EQ(control("txtDcDrvMedSpeed").colour, TextColour::Normal);
  EXPECT_TRUE(table.moveTo(1, 0.3));
  EXPECT_EQ(text("txtDcDrvMinVolt"), QStringLiteral("30"));
  EXPECT_EQ(value(2), 30);
}

TEST_F(SpeedTableTest, APointOfThreeIsCutToTheRangeOfItsCv) {
  store(5, 100);
  openEco(kCurve);
  table.moveTo(3, 0.0);
  EXPECT_EQ(value(5), 10);
  EXPECT_EQ(text("txtDcDrvMaxSpeed"), QStringLiteral("10"));
  table.moveTo(3, 2.0);
  EXPECT_EQ(value(5), 200);
  EXPECT_TRUE(prompt.shown.isEmpty());
}

TEST_F(SpeedTableTest, AValueInAGapOfTheRangeIsRefusedByTheField) {
  store(6, 10);
  openEco("CV_6=Mitte,\"0-20,80-100\"\n");
  EXPECT_FALSE(table.moveTo(2, 0.5));
  EXPECT_EQ(prompt.shown, QStringList{QStringLiteral("Eingabe außerhalb des Wertebereichs!")});
  EXPECT_EQ(focused.last(), QStringLiteral("txtDcDrvMedSpeed"));
  EXPECT_EQ(value(6), 10);
}

TEST_F(SpeedTableTest, APointWhoseCvTheDecoderLacksCannotBeMoved) {
  openEco("CV_5=Hoechst,0-200\n");
  EXPECT_FALSE(table.movable(1));
  EXPECT_FALSE(table.movable(2));
  EXPECT_TRUE(table.movable(3));
}

TEST_F(SpeedTableTest, NudgingStepsByValues) {
  store(67, 100, '2');
  openTable("INTERNALSTEPS=120\n");
  table.nudge(1, 1);
  EXPECT_EQ(value(67), 101);
  EXPECT_EQ(mark(67), CvMark::None);
  table.nudge(1, -10);
  EXPECT_EQ(value(67), 91);
  table.nudge(1, 50);
  EXPECT_EQ(value(67), 120);
}

TEST_F(SpeedTableTest, NudgingAtTheEndOfTheScaleChangesNothing) {
  store(67, 120, '1');
  openTable("INTERNALSTEPS=120\n");
  table.nudge(1, 1);
  EXPECT_EQ(value(67), 120);
  EXPECT_EQ(mark(67), CvMark::Verified);
}

TEST_F(SpeedTableTest, NudgingAValueAboveTheScaleBringsItBackIntoIt) {
  store(67, 250);
  openTable("INTERNALSTEPS=120\n");
  table.nudge(1, -1);
  EXPECT_EQ(value(67), 119);
}

TEST_F(SpeedTableTest, NudgingPassesOverTheGapsOfARange) {
  store(6, 20);
  openEco("CV_6=Mitte,\"5-20,80-90\"\n");
  table.nudge(2, 1);
  EXPECT_EQ(value(6), 80);
  table.nudge(2, -10);
  EXPECT_EQ(value(6), 20);
  table.nudge(2, -20);
  EXPECT_EQ(value(6), 5);
  EXPECT_TRUE(prompt.shown.isEmpty());
}

TEST_F(SpeedTableTest, NudgingAMiddleOfZeroStartsWhereItIsSeen) {
  store(2, 0);
  store(5, 200);
  openEco(kCurve);
  table.nudge(2, 1);
  EXPECT_EQ(value(6), 101);
}

TEST_F(SpeedTableTest, TheTextOfAPointTellsStepCvAndValue) {
  store(90, 130);
  openTable("", 14);
  EXPECT_EQ(table.pointText(12), QStringLiteral("Stufe 12 (CV 90): 130"));
}

TEST_F(SpeedTableTest, TheTextOfThreePointsNamesThem) {
  store(6, 80);
  openEco(kCurve);
  EXPECT_EQ(table.pointText(1), QStringLiteral("Anfang (CV 2): 0"));
  EXPECT_EQ(table.pointText(2), QStringLiteral("Mitte (CV 6): 80"));
  EXPECT_EQ(table.pointText(3), QStringLiteral("Höchstwert (CV 5): 0"));
}

}  // namespace
}  // namespace lokari
