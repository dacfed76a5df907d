// Cabs and panels on small screens and beyond their edge, and with the Tab key alone.
#include "support/small_screen.h"

#include <QScreen>

#include "cab_fixture.h"
#include "support/tab_walk.h"

namespace lokari {
namespace {

class CabOnSmallScreen : public test::CabWindows,
                         public ::testing::WithParamInterface<StationKind> {
 protected:
  CabOnSmallScreen() : CabWindows(GetParam()) {}

  FrmPanel* openPanel() {
    panels.OpenPanel(7, QStringLiteral("Bahnhof"));
    return panelWindows.isEmpty() ? nullptr : panelWindows.last();
  }
  static QRect placeOf(QWidget* window, const char* name) {
    const auto* found = control<QWidget>(window, name);
    return {found->mapToGlobal(QPoint(0, 0)), found->size()};
  }
};

INSTANTIATE_TEST_SUITE_P(Kinds, CabOnSmallScreen,
                         ::testing::Values(StationKind::Mx1Bin, StationKind::Z21Ip,
                                           StationKind::Mx10));

TEST_P(CabOnSmallScreen, FitsWithHaltAndOkInView) {
  FrmCab* window = openCab();
  ASSERT_NE(window, nullptr);
  test::expectFits(window, {"imgStop", "imgDirForward", "imgDirBackward", "vsbSpeed", "cmdOK"});
  FrmPanel* panel = openPanel();
  ASSERT_NE(panel, nullptr);
  test::expectFits(panel, {"cmdSwitch_0", "cmdSwitch_3", "cmdOK"});
}

TEST_P(CabOnSmallScreen, ItOpensNoLargerThanTheScreen) {
  FrmCab* window = openCab();
  ASSERT_NE(window, nullptr);
  EXPECT_LE(window->height(), window->screen()->availableSize().height());
  test::expectWholeInView(window, QStringLiteral("imgStop"));
  test::expectWholeInView(window, QStringLiteral("cmdFunc_0"));
}

TEST_P(CabOnSmallScreen, ItsPlaceMovesOnlyWhereHaltWouldBeOffTheScreen) {
  FrmCab* window = openCab();
  ASSERT_NE(window, nullptr);
  const QRect screen = window->screen()->availableGeometry();
  const QPoint halt = placeOf(window, "imgStop").bottomRight() - window->pos();
  // Halt stands just inside; what is below and beside it hangs over the edge.
  const QPoint inside = screen.bottomRight() - halt;
  window->moveTo(inside);
  window->bringUp();
  EXPECT_EQ(window->pos(), inside);
  window->moveTo(inside + QPoint(300, 200));
  window->bringUp();
  EXPECT_EQ(window->pos(), inside);
  window->moveTo(QPoint(-4000, -4000));
  window->bringUp();
  EXPECT_TRUE(screen.contains(placeOf(window, "imgStop")));
  FrmPanel* panel = openPanel();
  ASSERT_NE(panel, nullptr);
  panel->moveTo(screen.bottomRight());
  panel->bringUp();
  EXPECT_TRUE(screen.contains(placeOf(panel, "cmdSwitch_3")));
}

TEST_P(CabOnSmallScreen, TheTabKeyGoesThroughItAsTheEyeDoes) {
  FrmCab* window = openCab();
  ASSERT_NE(window, nullptr);
  window->resize(test::kSmallScreens[1]);
  test::walkWithTab(window);
  FrmPanel* panel = openPanel();
  ASSERT_NE(panel, nullptr);
  test::walkWithTab(panel);
}

}  // namespace
}  // namespace lokari
