// The speed bar under the mouse and the keyboard.
#include "cab/ui/speed_bar.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QSignalSpy>
#include <QTest>
#include <QWheelEvent>

#include <utility>

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

TEST_F(SpeedBarTest, AClickOnTheScaleMovesAPageAndNeverToFullSpeedAtOnce) {
  const QSignalSpy moved(&bar, &SpeedBar::valueChanged);
  QTest::mouseClick(&bar, Qt::LeftButton, {}, at(1));
  EXPECT_EQ(bar.value(), 10);
  EXPECT_EQ(moved.count(), 1);
  QTest::mousePress(&bar, Qt::LeftButton, {}, at(1));
  QTest::mouseMove(&bar, at(60));
  QTest::mouseRelease(&bar, Qt::LeftButton, {}, at(60));
  EXPECT_EQ(bar.value(), 20) << "the grip was not taken";
  QTest::mouseClick(&bar, Qt::LeftButton, {}, at(298));
  EXPECT_EQ(bar.value(), 10);
  bar.setValue(125);
  QTest::mouseClick(&bar, Qt::LeftButton, {}, at(1));
  EXPECT_EQ(bar.value(), 127);
}

TEST_F(SpeedBarTest, KeysWheelAndPagesStartFromTheLabelWhereItHasPartedFromTheBar) {
  const auto parted = [this](int position, int label) {
    bar.setValue(position);
    bar.startFrom(label);
  };
  const auto wheel = [this](int delta) {
    QWheelEvent turned(QPointF(10, 10), bar.mapToGlobal(QPointF(10, 10)), {}, QPoint(0, delta),
                       Qt::NoButton, {}, Qt::NoScrollPhase, false);
    QApplication::sendEvent(&bar, &turned);
  };
  QList<int> sent;
  QObject::connect(&bar, &SpeedBar::valueChanged, &bar, [&sent](int value) { sent << value; });
  const auto sends = [&sent](int value) { return std::exchange(sent, {}) == QList<int>{value}; };
  parted(100, 40);
  sent.clear();
  QTest::keyClick(&bar, Qt::Key_Up);
  EXPECT_TRUE(sends(41));
  parted(100, 40);
  sent.clear();
  wheel(-120);
  EXPECT_TRUE(sends(40 - QApplication::wheelScrollLines()));
  parted(20, 90);
  sent.clear();
  wheel(120);
  EXPECT_TRUE(sends(90 + QApplication::wheelScrollLines()));
  parted(20, 90);
  sent.clear();
  QTest::keyClick(&bar, Qt::Key_PageDown);
  EXPECT_TRUE(sends(80));
  parted(100, 40);
  sent.clear();
  QTest::mouseClick(&bar, Qt::LeftButton, {}, at(1));
  EXPECT_TRUE(sends(50)) << "not faster than the vehicle runs by more than a page";
}

TEST_F(SpeedBarTest, TheKeyForStandstillIsSentWhateverTheLabelSays) {
  QList<int> sent;
  bar.setValue(100);
  QObject::connect(&bar, &SpeedBar::valueChanged, &bar, [&sent](int value) { sent << value; });
  bar.startFrom(0);
  QTest::keyClick(&bar, Qt::Key_Home);
  EXPECT_EQ(sent, QList<int>{0});
  sent.clear();
  bar.startFrom(40);
  QTest::keyClick(&bar, Qt::Key_Home);
  EXPECT_EQ(sent, QList<int>{0});
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
  bar.setValue(64);
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
