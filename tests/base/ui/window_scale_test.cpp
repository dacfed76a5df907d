#include "base/ui/window_scale.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QTemporaryDir>
#include <QWidget>

namespace lokari {
namespace {

class WindowScaleTest : public ::testing::Test {
 protected:
  WindowScaleTest() { scale_.begin({800, 600}); }

  QTemporaryDir folder_;
  WindowScale scale_{folder_.filePath(QStringLiteral("WINDOW.INI"))};
};

TEST_F(WindowScaleTest, TheFactorsFollowTheMainWindowInProportion) {
  scale_.mainResized({1200, 900});
  EXPECT_DOUBLE_EQ(scale_.scaleX, 1.5);
  EXPECT_DOUBLE_EQ(scale_.scaleY, 1.5);
  scale_.mainResized({600, 900});
  EXPECT_DOUBLE_EQ(scale_.scaleX, 0.75);
  EXPECT_DOUBLE_EQ(scale_.scaleY, 1.5);
  EXPECT_DOUBLE_EQ(scale_.lastWidth, 600);
  EXPECT_DOUBLE_EQ(scale_.lastHeight, 900);
}

TEST_F(WindowScaleTest, WithResizeModeZeroTheFactorsStayOne) {
  scale_.setResizeMode(0);
  scale_.mainResized({1600, 1200});
  EXPECT_DOUBLE_EQ(scale_.scaleX, 1.0);
  EXPECT_DOUBLE_EQ(scale_.scaleY, 1.0);
}

TEST_F(WindowScaleTest, AWindowIsOpenedAtTheMainWindowsScale) {
  scale_.mainResized({1000, 720});
  QWidget form;
  form.resize(200, 100);
  scale_.ResizeWindow(&form);
  EXPECT_EQ(form.size(), QSize(250, 120));
}

TEST_F(WindowScaleTest, AWindowKeepsItsSizeAtScaleOne) {
  QWidget form;
  form.resize(200, 100);
  scale_.ResizeWindow(&form);
  EXPECT_EQ(form.size(), QSize(200, 100));
}

TEST_F(WindowScaleTest, ContentsFillTheWindowOrKeepTheirSize) {
  for (const int mode : {0, 1}) {
    scale_.setResizeMode(mode);
    QWidget window;
    auto* contents = new QWidget;
    contents->setMinimumSize(100, 80);
    scale_.arrange(&window, contents);
    window.resize(300, 200);
    window.show();
    QApplication::processEvents();
    EXPECT_EQ(contents->size(), mode == 0 ? QSize(100, 80) : QSize(300, 200));
  }
}

TEST_F(WindowScaleTest, AStoredSizeIsFoundInTheNextRun) {
  EXPECT_FALSE(scale_.storedSize(QStringLiteral("main_win")).isValid());
  scale_.storeSize(QStringLiteral("main_win"), {1111, 777});
  const WindowScale next(folder_.filePath(QStringLiteral("WINDOW.INI")));
  EXPECT_EQ(next.storedSize(QStringLiteral("main_win")), QSize(1111, 777));
}

TEST_F(WindowScaleTest, WithResizeModeZeroNoSizeIsStored) {
  scale_.setResizeMode(0);
  scale_.storeSize(QStringLiteral("main_win"), {1111, 777});
  EXPECT_FALSE(scale_.storedSize(QStringLiteral("main_win")).isValid());
}

}  // namespace
}  // namespace lokari
