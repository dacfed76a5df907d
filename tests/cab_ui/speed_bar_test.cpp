// The speed bar under the mouse and the keyboard.
#include "cab/ui/speed_bar.h"

#include <gtest/gtest.h>

#include <QSignalSpy>
#include <QTest>

namespace lokari {
namespace {

class SpeedBarTest : public ::testing::Test {
 protected:
  SpeedBarTest() {
    bar.resize(bar.sizeHint().width(), 300);
    bar.show();
  }
  QPoint at(int y) const { return {20, y}; }

  SpeedBar bar{nullptr};
};

TEST_F(SpeedBarTest, GoesFrom0AtTheBottomTo127AtTheTop) {
  QTest::mouseClick(&bar, Qt::LeftButton, {}, at(1));
  EXPECT_EQ(bar.value(), 127);
  QTest::mouseClick(&bar, Qt::LeftButton, {}, at(298));
  EXPECT_EQ(bar.value(), 0);
  QTest::mouseClick(&bar, Qt::LeftButton, {}, at(150));
  EXPECT_NEAR(bar.value(), 64, 1);
}

TEST_F(SpeedBarTest, TheGripDoesNotJumpWhenItIsTakenBesideItsMiddle) {
  bar.setValue(64);
  const QSignalSpy moved(&bar, &SpeedBar::valueChanged);
  QTest::mousePress(&bar, Qt::LeftButton, {}, at(150 + 9));
  EXPECT_EQ(moved.count(), 0);
  QTest::mouseMove(&bar, at(150 + 9 - 27));
  EXPECT_NEAR(bar.value(), 64 + 13, 1);  // 127 steps on 272 pixels
  QTest::mouseRelease(&bar, Qt::LeftButton, {}, at(150 + 9 - 27));
  EXPECT_FALSE(bar.isSliderDown());
}

TEST_F(SpeedBarTest, AGripDraggedBeyondTheEndsStaysThere) {
  QTest::mousePress(&bar, Qt::LeftButton, {}, at(150));
  QTest::mouseMove(&bar, at(-500));
  EXPECT_EQ(bar.value(), 127);
  QTest::mouseMove(&bar, at(900));
  EXPECT_EQ(bar.value(), 0);
  QTest::mouseRelease(&bar, Qt::LeftButton, {}, at(900));
}

TEST_F(SpeedBarTest, AMouseThatOnlyPassesMovesNothing) {
  bar.setValue(10);
  QTest::mouseMove(&bar, at(20));
  QTest::mousePress(&bar, Qt::RightButton, {}, at(20));
  QTest::mouseRelease(&bar, Qt::RightButton, {}, at(20));
  EXPECT_EQ(bar.value(), 10);
}

TEST_F(SpeedBarTest, ArrowsGoByOneAndPagesByTen) {
  bar.setValue(50);
  QTest::keyClick(&bar, Qt::Key_Up);
  EXPECT_EQ(bar.value(), 51);
  QTest::keyClick(&bar, Qt::Key_Down);
  QTest::keyClick(&bar, Qt::Key_Down);
  EXPECT_EQ(bar.value(), 49);
  QTest::keyClick(&bar, Qt::Key_PageUp);
  EXPECT_EQ(bar.value(), 59);
  QTest::keyClick(&bar, Qt::Key_PageDown);
  EXPECT_EQ(bar.value(), 49);
  QTest::keyClick(&bar, Qt::Key_End);
  EXPECT_EQ(bar.value(), 127);
  QTest::keyClick(&bar, Qt::Key_Home);
  EXPECT_EQ(bar.value(), 0);
}

}  // namespace
}  // namespace lokari
