#include "scripted_cab_fixture.h"

namespace lokari {
namespace {

class CabFleetTest : public test::CabFixture {
 protected:
  QStringList ofWindow(int address) const {
    QStringList own;
    for (const QString& each : windows.log) {
      if (each.startsWith(QStringLiteral("%1: ").arg(address))) own << each.section(u' ', 1);
    }
    return own;
  }

  CabFleet fleet{cabParts(), [this](std::shared_ptr<Cab> cab) {
                   return std::make_unique<test::FakeWindow>(windows, std::move(cab));
                 }};
};

TEST_F(CabFleetTest, TheFirstCabTakesSlotOneAtItsDesignPlace) {
  EXPECT_TRUE(fleet.OpenCab(3, false));
  ASSERT_NE(fleet.cabForms(1), nullptr);
  EXPECT_EQ(fleet.cabForms(1)->address(), 3);
  EXPECT_EQ(fleet.cabCount(), 1);
  EXPECT_EQ(fleet.cabLoadIndex(), 65535);
  EXPECT_EQ(ofWindow(3), (QStringList{"tag 1", "scaled", "at 100,60", "up"}));
}

TEST_F(CabFleetTest, EachCabLies300TwipsRightOfAndBelowTheOneBefore) {
  for (int address = 1; address <= 3; ++address) fleet.OpenCab(address, false);
  EXPECT_TRUE(ofWindow(2).contains(QStringLiteral("at 120,80")));
  EXPECT_TRUE(ofWindow(3).contains(QStringLiteral("at 140,100")));
}

TEST_F(CabFleetTest, AScaledMainWindowScalesThePlace) {
  windows.scale = {1.5, 2};
  fleet.OpenCab(1, false);
  fleet.OpenCab(2, false);
  EXPECT_TRUE(ofWindow(1).contains(QStringLiteral("at 150,120")));
  EXPECT_TRUE(ofWindow(2).contains(QStringLiteral("at 180,160")));
}

TEST_F(CabFleetTest, AnOpenAddressBringsItsCabUpWithoutADialogueWithTheStation) {
  fleet.OpenCab(3, false);
  station.log.clear();
  windows.log.clear();
  EXPECT_FALSE(fleet.OpenCab(3, false));
  EXPECT_EQ(fleet.cabCount(), 1);
  EXPECT_TRUE(station.log.isEmpty());
  EXPECT_EQ(link.commUseCount, 1);
  // Scaled once only, or it would grow with every press.
  EXPECT_EQ(ofWindow(3), (QStringList{"tag 1", "at 100,60", "up"}));
}

TEST_F(CabFleetTest, AClosedCabsSlotIsTheNextOneAndTheCountStays) {
  for (int address = 1; address <= 5; ++address) fleet.OpenCab(address, false);
  fleet.cabForms(3)->cmdOK();
  EXPECT_EQ(fleet.cabForms(3), nullptr);
  EXPECT_FALSE(fleet.isOpen(3));
  fleet.OpenCab(9, false);
  ASSERT_NE(fleet.cabForms(3), nullptr);
  EXPECT_EQ(fleet.cabForms(3)->address(), 9);
  EXPECT_EQ(fleet.cabCount(), 5);
}

TEST_F(CabFleetTest, TheThirtyThirdCabIsRefusedAndAnOpenOneStillComesUp) {
  for (int address = 1; address <= 32; ++address) EXPECT_TRUE(fleet.OpenCab(address, false));
  EXPECT_FALSE(fleet.OpenCab(33, false));
  EXPECT_EQ(prompt.shown, QStringList{QStringLiteral("Keine weiteren Fahrfenster möglich!")});
  EXPECT_EQ(fleet.cabCount(), 32);
  windows.log.clear();
  EXPECT_FALSE(fleet.OpenCab(7, false));
  EXPECT_TRUE(ofWindow(7).contains(QStringLiteral("up")));
  EXPECT_EQ(prompt.shown.size(), 1);
}

TEST_F(CabFleetTest, TheOneKindWithoutCabsIsTold) {
  settings.baseUnit = StationKind::LiDp;
  EXPECT_FALSE(fleet.OpenCab(3, false));
  EXPECT_EQ(prompt.shown,
            QStringList{QStringLiteral("Fahrregler für diese Digitalzentrale nicht verfügbar!")});
  EXPECT_EQ(fleet.cabCount(), 0);
}

TEST_F(CabFleetTest, ACabThatIsAskedForInsideAnExchangeLoadsAndShowsItselfBehindIt) {
  fleet.OpenCab(3, false);
  station.log.clear();
  station.midst = [&] {
    EXPECT_TRUE(fleet.OpenCab(4, false));
    EXPECT_FALSE(ofWindow(4).contains(QStringLiteral("up")));
    // Asked for once more it is the same one, and still to come.
    EXPECT_FALSE(fleet.OpenCab(4, false));
    EXPECT_TRUE(ofWindow(4).isEmpty());
  };
  fleet.cabForms(1)->vsbSpeed(5);
  EXPECT_EQ(station.log, (QStringList{"3: speed 5", "4: read"}));
  EXPECT_TRUE(ofWindow(4).contains(QStringLiteral("up")));
  EXPECT_EQ(fleet.cabCount(), 2);
}

TEST_F(CabFleetTest, ACabThatIsClosedBeforeItLoadedIsNeverShown) {
  fleet.OpenCab(3, false);
  station.log.clear();
  station.midst = [&] {
    fleet.OpenCab(4, false);
    fleet.cabForms(2)->unload();
  };
  fleet.cabForms(1)->vsbSpeed(5);
  EXPECT_EQ(station.log, QStringList{QStringLiteral("3: speed 5")});
  EXPECT_EQ(ofWindow(4), QStringList{QStringLiteral("away")});
  EXPECT_EQ(link.commUseCount, 1);
}

TEST_F(CabFleetTest, AWindowIsDeletedFromTheEventLoopBehindItsCab) {
  fleet.OpenCab(3, false);
  station.midst = [&] {
    fleet.cabForms(1)->unload();
    EXPECT_TRUE(ofWindow(3).contains(QStringLiteral("away")));
  };
  fleet.cabForms(1)->vsbSpeed(5);
  EXPECT_EQ(windows.alive, 1);
  clock.pump();
  EXPECT_EQ(windows.alive, 0);
}

TEST_F(CabFleetTest, ClosingAllGoesByTheirSlotsAndClosesThePort) {
  for (int address = 5; address >= 3; --address) fleet.OpenCab(address, false);
  windows.log.clear();
  station.log.clear();
  fleet.closeAll();
  EXPECT_EQ(windows.log, (QStringList{"5: away", "4: away", "3: away"}));
  EXPECT_TRUE(station.log.isEmpty());
  EXPECT_FALSE(serial.isOpen());
  EXPECT_EQ(link.commUseCount, 0);
}

}  // namespace
}  // namespace lokari
