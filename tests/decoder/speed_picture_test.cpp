// The mouse on the picture of the speed curve. The area begins 600 twips from the picture's left
// edge; with 28 steps the points stand 200 twips apart, and 40 twips are one hundredth of the
// height.
#include "decoder/speed_picture.h"

#include "speed_fixture.h"

namespace lokari {
namespace {

class SpeedPictureTest : public SpeedFixture {
 protected:
  SpeedPictureTest() { picture.area = {600, 5600, 4000}; }

  SpeedPicture picture{table};
};

TEST_F(SpeedPictureTest, PointsStandAtTheirShares) {
  store(67, 50);
  store(94, 100);
  openTable("INTERNALSTEPS=100\n");
  const auto at = picture.positions();
  ASSERT_EQ(at.size(), 28U);
  EXPECT_EQ(at.front(), QPointF(800, 2000));
  EXPECT_EQ(at.back(), QPointF(6200, 0));
}

TEST_F(SpeedPictureTest, APointIsMetWithinFortyTwipsInBothDirections) {
  store(67, 50);
  openTable("INTERNALSTEPS=100\n");
  EXPECT_EQ(picture.pointAt(QPointF(760, 2040)), 1);
  EXPECT_EQ(picture.pointAt(QPointF(840, 1960)), 1);
  EXPECT_EQ(picture.pointAt(QPointF(841, 2000)), 0);
  EXPECT_EQ(picture.pointAt(QPointF(759, 2000)), 0);
  EXPECT_EQ(picture.pointAt(QPointF(800, 2041)), 0);
  EXPECT_EQ(picture.pointAt(QPointF(800, 1959)), 0);
}

TEST_F(SpeedPictureTest, WherePointsOverlapTheLastOneWins) {
  store(67, 50);
  store(68, 50);
  openTable("INTERNALSTEPS=100\n");
  picture.area = {600, 28 * 50, 4000};
  // Point 1 at 650, point 2 at 700, point 3 on the ground.
  EXPECT_EQ(picture.pointAt(QPointF(675, 2000)), 2);
  EXPECT_EQ(picture.pointAt(QPointF(655, 2000)), 1);
  EXPECT_EQ(picture.pointAt(730.0), 3) << "by the horizontal position alone";
}

TEST_F(SpeedPictureTest, APointAtTheVeryEdgeCannotBeMet) {
  openEco("CV_2=Start,0-100\n");
  picture.area = {0, 5600, 4000};
  EXPECT_EQ(picture.pointAt(QPointF(0, 4000)), 0);
  picture.area = {1, 5600, 4000};
  EXPECT_EQ(picture.pointAt(QPointF(1, 4000)), 1);
}

TEST_F(SpeedPictureTest, APressBesideEveryPointHoldsNone) {
  openTable("INTERNALSTEPS=100\n");
  picture.press(QPointF(800, 3900));
  EXPECT_EQ(picture.dragPoint(), 0);
  picture.drag(QPointF(800, 2000));
  EXPECT_EQ(value(67), 0);
}

TEST_F(SpeedPictureTest, APressAloneChangesNothing) {
  store(67, 50, '1');
  openTable("INTERNALSTEPS=100\n");
  picture.press(QPointF(800, 2030));
  EXPECT_EQ(picture.dragPoint(), 1);
  EXPECT_EQ(value(67), 50);
  EXPECT_EQ(mark(67), CvMark::Verified);
}

TEST_F(SpeedPictureTest, ADragGivesThePointTheValueUnderTheMouse) {
  store(67, 50, '1');
  openTable("INTERNALSTEPS=100\n");
  picture.press(QPointF(800, 2000));
  picture.drag(QPointF(800, 1000));
  EXPECT_EQ(value(67), 75);
  EXPECT_EQ(mark(67), CvMark::None);
  picture.drag(QPointF(800, -500));
  EXPECT_EQ(value(67), 100);
  picture.drag(QPointF(800, 9000));
  EXPECT_EQ(value(67), 0);
}

TEST_F(SpeedPictureTest, AHeldButtonSweepsFromPointToPointByTheHorizontalPositionAlone) {
  openTable("INTERNALSTEPS=100\n");
  picture.press(QPointF(800, 4000));
  picture.drag(QPointF(810, 3600));
  picture.drag(QPointF(990, 3200));
  EXPECT_EQ(picture.dragPoint(), 2);
  picture.drag(QPointF(1200, 2800));
  EXPECT_EQ(tableValues(4), (std::vector<int>{10, 20, 30, 0}));
}

TEST_F(SpeedPictureTest, BetweenTwoPointsTheOneInHandStays) {
  openTable("INTERNALSTEPS=100\n");
  picture.press(QPointF(800, 4000));
  picture.drag(QPointF(900, 2000));
  EXPECT_EQ(picture.dragPoint(), 1);
  EXPECT_EQ(tableValues(2), (std::vector<int>{50, 0}));
}

TEST_F(SpeedPictureTest, WithFourteenStepsTheSweepMeetsEverySecondCv) {
  openTable("INTERNALSTEPS=100\n", 14);
  picture.press(QPointF(1000, 4000));
  picture.drag(QPointF(1000, 3600));
  picture.drag(QPointF(1400, 3200));
  EXPECT_EQ(tableValues(4), (std::vector<int>{0, 10, 0, 20}));
}

TEST_F(SpeedPictureTest, ThreePointsDoNotSweep) {
  store(5, 100);
  openEco("CV_2=Start,0-100\nCV_6=Mitte,0-100\nCV_5=Hoechst,0-100\n");
  picture.press(QPointF(600, 4000));
  ASSERT_EQ(picture.dragPoint(), 1);
  picture.drag(QPointF(3400, 3000));
  EXPECT_EQ(picture.dragPoint(), 1);
  EXPECT_EQ(value(2), 25);
  EXPECT_EQ(value(6), 0);
}

TEST_F(SpeedPictureTest, AMiddleOfZeroIsMetWhereItIsDrawn) {
  store(5, 100);
  openEco("CV_2=Start,0-100\nCV_6=Mitte,0-100\nCV_5=Hoechst,0-100\n");
  picture.press(QPointF(3400, 2000));
  EXPECT_EQ(picture.dragPoint(), 2);
}

TEST_F(SpeedPictureTest, ARefusedValueEndsTheDragging) {
  store(6, 10);
  openEco("CV_6=Mitte,\"0-20,80-100\"\n");
  picture.press(QPointF(3400, 3600));
  ASSERT_EQ(picture.dragPoint(), 2);
  picture.drag(QPointF(3400, 2000));
  picture.drag(QPointF(3400, 2010));
  EXPECT_EQ(prompt.shown.size(), 1);
  EXPECT_EQ(value(6), 10);
}

TEST_F(SpeedPictureTest, APointWhoseCvTheDecoderLacksIsNotTaken) {
  openEco("CV_5=Hoechst,0-100\n");
  picture.press(QPointF(600, 4000));
  EXPECT_EQ(picture.dragPoint(), 0);
}

TEST_F(SpeedPictureTest, AfterTheReleaseTheMouseMovesNothing) {
  openTable("INTERNALSTEPS=100\n");
  picture.press(QPointF(800, 4000));
  picture.release();
  picture.drag(QPointF(800, 2000));
  EXPECT_EQ(value(67), 0);
}

TEST_F(SpeedPictureTest, APointThatTheViewLostUnderTheButtonIsLetGo) {
  openTable("CV_2=Start,0-100\n");
  picture.press(QPointF(6200, 4000));
  ASSERT_EQ(picture.dragPoint(), 28);
  bench->optionClicked(QStringLiteral("optDcDrvSpdTblNo"));
  picture.drag(QPointF(6200, 2000));
  EXPECT_EQ(picture.dragPoint(), 0);
}

TEST_F(SpeedPictureTest, TheNearestPointIsFoundFromEverywhere) {
  openTable("");
  EXPECT_EQ(picture.nearestTo(-100), 1);
  EXPECT_EQ(picture.nearestTo(899), 1);
  EXPECT_EQ(picture.nearestTo(901), 2);
  EXPECT_EQ(picture.nearestTo(99999), 28);
}

}  // namespace
}  // namespace lokari
