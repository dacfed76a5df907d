#include "base/ui/window_scale.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QScreen>
#include <QTemporaryDir>
#include <QVBoxLayout>
#include <QWidget>

#include <sys/stat.h>

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

TEST_F(WindowScaleTest, AStoredSizeIsCutToTheScreen) {
  QWidget window;
  // Its frame is not known before it is shown.
  const QSize room = window.screen()->availableSize() - QSize(8, 32);
  for (const QSize stored : {QSize(100'000, 100'000), QSize(100'000, 50), QSize(50, 100'000)}) {
    scale_.storeSize(QStringLiteral("main_win"), stored);
    scale_.restoreSize(QStringLiteral("main_win"), &window);
    EXPECT_EQ(window.size(), stored.boundedTo(room));
  }
}

TEST_F(WindowScaleTest, AStoredSizeTakesAWindowThatWasPlacedBackOntoItsScreen) {
  QWidget window;
  const QRect screen = window.screen()->availableGeometry();
  window.move(screen.topLeft() + QPoint(53, 43));
  scale_.storeSize(QStringLiteral("main_win"), screen.size());
  scale_.restoreSize(QStringLiteral("main_win"), &window);
  EXPECT_EQ(window.pos(), screen.topLeft());
  EXPECT_TRUE(screen.contains(window.geometry()));
}

TEST_F(WindowScaleTest, AStoredSizeIsNeverBelowTheSmallest) {
  QWidget window;
  auto* rows = new QVBoxLayout(&window);
  auto* wide = new QWidget(&window);
  wide->setMinimumSize(120, 90);
  rows->addWidget(wide);
  scale_.storeSize(QStringLiteral("main_win"), {1, 1});
  scale_.restoreSize(QStringLiteral("main_win"), &window);
  EXPECT_EQ(window.size(), window.minimumSizeHint());
}

TEST_F(WindowScaleTest, APipeInThePlaceOfTheFileIsNotWaitedFor) {
  ASSERT_EQ(::mkfifo(QFile::encodeName(folder_.filePath(QStringLiteral("WINDOW.INI"))), 0600), 0);
  scale_.storeSize(QStringLiteral("main_win"), {1111, 777});
  EXPECT_FALSE(scale_.storedSize(QStringLiteral("main_win")).isValid());
  EXPECT_TRUE(scale_.storedColumns(QStringLiteral("frmTable")).isEmpty());
}

TEST_F(WindowScaleTest, WithResizeModeZeroNoSizeIsStored) {
  scale_.setResizeMode(0);
  scale_.storeSize(QStringLiteral("main_win"), {1111, 777});
  EXPECT_FALSE(scale_.storedSize(QStringLiteral("main_win")).isValid());
}

}  // namespace
}  // namespace lokari
