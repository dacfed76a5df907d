// How windows of cabs come, stand beside each other, and go.
#include "cab_fixture.h"

namespace lokari {
namespace {

class FrmCabLife : public test::CabWindows {
 protected:
  FrmCabLife() {
    for (int address = 10; address < 50; ++address)
      database.addVehicle(address, QStringLiteral("Anlage"), QStringLiteral("Lok %1").arg(address));
    EXPECT_EQ(session.InitDB(), 0);
  }

  /// Puts the record of that address on show, as the user does before he opens a cab for it.
  FrmCab* open(int address) {
    EXPECT_EQ(session.form().FindFirst(QStringLiteral("DC_ADR = %1").arg(address)),
              FindResult::Found);
    return openCab(address);
  }
};

TEST_F(FrmCabLife, ASecondOpeningBringsTheWindowUpAndAsksTheStationNothing) {
  FrmCab* window = openCab();
  ASSERT_EQ(station.reads, 1);
  window->showMinimized();
  openCab();
  EXPECT_EQ(cabWindows.size(), 1);
  EXPECT_FALSE(window->isMinimized());
  EXPECT_TRUE(window->isVisible());
  EXPECT_EQ(station.reads, 1);
}

TEST_F(FrmCabLife, EachStands20PixelsRightOfAndBelowTheOneBefore) {
  FrmCab* first = openCab();
  FrmCab* second = open(10);
  FrmCab* third = open(11);
  EXPECT_EQ(first->pos(), first->designPlace());
  EXPECT_EQ(second->pos() - first->pos(), QPoint(20, 20));
  EXPECT_EQ(third->pos() - second->pos(), QPoint(20, 20));
  EXPECT_EQ(third->property("Tag").toString(), QStringLiteral("3"));
}

TEST_F(FrmCabLife, IsScaledAsTheMainWindowIs) {
  const QSize natural = openCab()->size();
  scale.begin({1000, 500});
  scale.mainResized({1200, 550});
  FrmCab* second = open(10);
  EXPECT_NEAR(second->width(), 1.2 * natural.width(), 1);
  EXPECT_NEAR(second->height(), 1.1 * natural.height(), 1);
  EXPECT_EQ(second->pos(), QPoint(qRound((second->designPlace().x() + 20) * 1.2),
                                  qRound((second->designPlace().y() + 20) * 1.1)));
}

TEST_F(FrmCabLife, IsCompleteInItsSmallestSize) {
  FrmCab* window = openCab();
  window->resize(window->minimumSizeHint());
  QCoreApplication::processEvents();
  for (const char* name : {"vsbSpeed", "imgStop", "cmdFunc_0", "cmdFunc_12", "cmdOK", "udCV"}) {
    auto* part = control<QWidget>(window, name);
    const QRect place(part->mapTo(window, QPoint(0, 0)), part->size());
    EXPECT_TRUE(window->rect().contains(place)) << name;
    EXPECT_GE(part->width(), 16) << name;
    EXPECT_GE(part->height(), 16) << name;
  }
}

TEST_F(FrmCabLife, OkClosesTheWindowAndTheSession) {
  FrmCab* window = openCab();
  ASSERT_TRUE(serial.isOpen());
  click(control<QWidget>(window, "cmdOK"));
  EXPECT_FALSE(window->isVisible());
  EXPECT_FALSE(serial.isOpen());
  EXPECT_EQ(cabs.cabForms(1), nullptr);
  EXPECT_EQ(sent(), QStringList());
}

TEST_F(FrmCabLife, TheFramesCloseButtonDoesTheSame) {
  FrmCab* window = openCab();
  window->close();
  EXPECT_FALSE(window->isVisible());
  EXPECT_FALSE(serial.isOpen());
  EXPECT_EQ(cabs.cabForms(1), nullptr);
  clock.advance(1000);
  EXPECT_EQ(sent(), QStringList());
}

TEST_F(FrmCabLife, ThePortStaysOpenForTheCabsThatAreLeft) {
  openCab();
  FrmCab* second = open(10);
  second->close();
  EXPECT_TRUE(serial.isOpen());
  click(control<QWidget>(cabWindows.first(), "cmdOK"));
  EXPECT_FALSE(serial.isOpen());
}

TEST_F(FrmCabLife, AWindowThatIsClosedWithinItsOwnHandlerIsSafe) {
  FrmCab* window = openCab();
  auto* vsbSpeed = bar(window);
  QObject::connect(vsbSpeed, &SpeedBar::valueChanged, window, [window] { window->close(); });
  QTest::keyClick(vsbSpeed, Qt::Key_Up);
  clock.advance(1000);
  EXPECT_EQ(cabs.cabForms(1), nullptr);
  EXPECT_EQ(sent(), QStringList{QStringLiteral("Stufe 1")});
}

TEST_F(FrmCabLife, TheSlotThatWasLeftIsTheNextOneTaken) {
  openCab();
  FrmCab* second = open(10);
  open(11);
  second->close();
  FrmCab* next = open(12);
  EXPECT_EQ(next->property("Tag").toString(), QStringLiteral("2"));
  EXPECT_EQ(cabs.cabCount(), 3);
}

TEST_F(FrmCabLife, ThirtyTwoStandOpenAndThe33rdIsRefused) {
  for (int address = 10; address < 42; ++address) ASSERT_NE(open(address), nullptr) << address;
  EXPECT_TRUE(prompt.shown.isEmpty());
  open(42);
  EXPECT_EQ(prompt.shown, QStringList{QStringLiteral("Keine weiteren Fahrfenster möglich!")});
  EXPECT_EQ(cabWindows.size(), 32);
  cabWindows.first()->showMinimized();
  open(10);
  EXPECT_FALSE(cabWindows.first()->isMinimized());
  cabs.closeAll();
  EXPECT_FALSE(serial.isOpen());
}

TEST_F(FrmCabLife, AStationThatSaysNothingLeavesTheWindowOpenWithItsDefaults) {
  station.answers = false;
  FrmCab* window = openCab();
  ASSERT_NE(window, nullptr);
  EXPECT_EQ(prompt.shown, QStringList{QStringLiteral("Keine Daten von Digitalzentrale erhalten")});
  EXPECT_EQ(station.reads, 2);
  EXPECT_TRUE(window->isVisible());
  EXPECT_EQ(bar(window)->value(), 0);
  EXPECT_EQ(shownBy(window, "imgDirForward"), QStringLiteral("arrupg_n.bmp"));
  EXPECT_EQ(shownBy(window, "cmdFunc_0"), QStringLiteral("lmpoff_n.bmp"));
  EXPECT_EQ(sent(), QStringList());
}

}  // namespace
}  // namespace lokari
