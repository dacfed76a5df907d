// The main window on screens that are smaller than its design.
#include <gtest/gtest.h>

#include <QScreen>

#include "app/ui/main_win.h"
#include "app_folder.h"
#include "support/small_screen.h"

namespace lokari {
namespace {

class MainWinScreen : public ::testing::Test {
 protected:
  void SetUp() override {
    ASSERT_TRUE(window_.start());
    window_.show();
    QApplication::processEvents();
  }

  test::AppFolder folder_;
  test::Outside outside_;
  Workbench workbench_{outside_.parts(folder_)};
  MainWin window_{workbench_};
};

TEST_F(MainWinScreen, TakesTheWholeWidthWhereItsDesignHasNoRoom) {
  const QRect room = window_.screen()->availableGeometry();
  ASSERT_LT(room.width(), 980);
  EXPECT_TRUE(room.contains(window_.frameGeometry()));
  EXPECT_EQ(window_.x(), room.left());
  EXPECT_GE(window_.width(), room.width() - 8);
}

TEST_F(MainWinScreen, ShowsItsWholeToolRowOnASmallScreen) {
  test::expectFits(&window_, {"butProg", "butDrive", "butSwitch", "butStop"});
}

}  // namespace
}  // namespace lokari
