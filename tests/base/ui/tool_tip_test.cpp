#include "base/ui/tool_tip.h"

#include <gtest/gtest.h>

#include <QPushButton>

#include "support/virtual_clock.h"

namespace lokari {
namespace {

class ToolTipTest : public ::testing::Test {
 protected:
  ToolTipTest() {
    window_.resize(400, 300);
    window_.show();
  }

  void place(const QRect& where) { button_.setGeometry(where); }

  test::VirtualClock clock_;
  QWidget window_;
  QPushButton button_{&window_};
  ToolTip tip_{&window_, clock_};
};

TEST_F(ToolTipTest, TheTextIsPaddedByABlankOnBothSides) {
  place({10, 10, 80, 20});
  tip_.showFor(&button_, QStringLiteral("Anfahrspannung"));
  EXPECT_EQ(tip_.text(), QStringLiteral(" Anfahrspannung "));
  EXPECT_TRUE(tip_.isVisible());
}

TEST_F(ToolTipTest, LiesBelowItsControl) {
  place({10, 10, 80, 20});
  tip_.showFor(&button_, QStringLiteral("Text"));
  EXPECT_GE(tip_.y(), 30);
  EXPECT_EQ(tip_.x(), 10);
}

TEST_F(ToolTipTest, LiesAboveAControlAtTheBottom) {
  place({10, 280, 80, 20});
  tip_.showFor(&button_, QStringLiteral("Text"));
  EXPECT_LE(tip_.y() + tip_.height(), 280);
}

TEST_F(ToolTipTest, IsMovedLeftWhereItWouldPassTheRightEdge) {
  place({380, 10, 20, 20});
  tip_.showFor(&button_, QStringLiteral("Ein langer erklärender Text"));
  EXPECT_LE(tip_.x() + tip_.width(), 400);
}

TEST_F(ToolTipTest, GoesByItself) {
  tip_.showFor(&button_, QStringLiteral("Text"));
  clock_.advance(4999);
  EXPECT_TRUE(tip_.isVisible());
  clock_.advance(1);
  EXPECT_FALSE(tip_.isVisible());
}

TEST_F(ToolTipTest, AnEmptyTextHidesIt) {
  tip_.showFor(&button_, QStringLiteral("Text"));
  tip_.showFor(&button_, QString());
  EXPECT_FALSE(tip_.isVisible());
}

}  // namespace
}  // namespace lokari
