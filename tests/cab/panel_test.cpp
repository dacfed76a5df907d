#include "scripted_cab_fixture.h"

namespace lokari {
namespace {

class PanelTest : public test::CabFixture {
 protected:
  Panel& open(int address = 5) {
    fleet.OpenPanel(address, QStringLiteral("Weichen Nord"));
    return *fleet.panelForms(fleet.panelCount());
  }

  PanelFleet fleet{panelParts(), [this](std::shared_ptr<Panel> panel) {
                     return std::make_unique<test::FakeWindow>(windows, std::move(panel));
                   }};
};

TEST_F(PanelTest, TheLowerBitOfAPairSetMeansOff) {
  station.answers = {FunctionMask{0b0110'0101}};
  const Panel& panel = open();
  EXPECT_EQ(panel.state().outOn, (std::array<bool, 5>{false, false, true, false, false}));
  EXPECT_TRUE(panel.hasState());
}

TEST_F(PanelTest, WhatIsPressedWhileTheOutputsAreReadIsSentBehindItAndShownAgain) {
  const auto panel = std::make_shared<Panel>(panelParts(), 5, QStringLiteral("Weichen Nord"));
  bool lamp = false;
  QObject::connect(panel.get(), &Panel::outputChanged, [&](int n, bool on) {
    if (n == 1) lamp = on;
  });
  station.answers = {FunctionMask{0b0101'0101}};
  station.midst = [&] { panel->cmdFunc(1); };
  bool flag = false;
  line.exchange(panel.get(), 0, [&] { panel->load(flag); });
  EXPECT_EQ(station.log, (QStringList{"5: read", "5: output 1 1"}));
  EXPECT_TRUE(lamp);
  EXPECT_TRUE(panel->state().outOn[1]);
}

TEST_F(PanelTest, TheTitleNamesTheUnitAndItsAddress) {
  const Panel& panel = open();
  EXPECT_EQ(panel.caption(), "Weichen Nord (5)");
  EXPECT_EQ(panel.labName(), "Weichen Nord");
}

TEST_F(PanelTest, WithoutDataThePanelStaysOpenAndAsksNotTwice) {
  station.answers = {std::nullopt};
  const Panel& panel = open();
  EXPECT_EQ(prompt.shown, QStringList{QStringLiteral("Keine Daten von Digitalzentrale erhalten")});
  EXPECT_EQ(station.log, QStringList{QStringLiteral("5: read")});
  EXPECT_FALSE(panel.hasState());
  EXPECT_TRUE(windows.log.contains(QStringLiteral("5: up")));
}

TEST_F(PanelTest, ALinkThatCannotBeOpenedIsTold) {
  serial.failsToOpen = true;
  station.vanished = true;
  open();
  EXPECT_EQ(prompt.shown, (QStringList{"Kann Kommunikationsschnittstelle nicht öffnen (0)!",
                                       "Keine Daten von Digitalzentrale erhalten"}));
}

TEST_F(PanelTest, ASwitchChangesItsLampAtOnceAndIsSent) {
  Panel& panel = open();
  station.log.clear();
  QStringList lamps;
  QObject::connect(&panel, &Panel::outputChanged, [&](int n, bool on) {
    lamps << QStringLiteral("%1 %2").arg(n).arg(on);
    EXPECT_TRUE(station.log.isEmpty());
  });
  panel.cmdFunc(2);
  EXPECT_EQ(lamps, QStringList{QStringLiteral("2 0")});
  EXPECT_EQ(station.log, QStringList{QStringLiteral("5: output 2 0")});
}

TEST_F(PanelTest, TheButtonActsExactlyAsItsLamp) {
  Panel& panel = open();
  station.log.clear();
  panel.cmdSwitch(2);
  panel.cmdFunc(2);
  EXPECT_EQ(station.log, (QStringList{"5: output 2 0", "5: output 2 1"}));
}

TEST_F(PanelTest, TheKeys1To4SwitchAndTheKey5DoesNothing) {
  Panel& panel = open();
  station.log.clear();
  EXPECT_TRUE(panel.keyDown(u'1'));
  EXPECT_TRUE(panel.keyDown(u'4'));
  EXPECT_FALSE(panel.keyDown(u'5'));
  EXPECT_FALSE(panel.keyDown(u'0'));
  EXPECT_EQ(station.log, (QStringList{"5: output 0 0", "5: output 3 0"}));
}

TEST_F(PanelTest, AnOutputThatIsNotThereIsNotSwitched) {
  Panel& panel = open();
  station.log.clear();
  panel.cmdFunc(4);
  panel.cmdFunc(-1);
  EXPECT_TRUE(station.log.isEmpty());
}

TEST_F(PanelTest, SixteenPanelsAndNoMore) {
  for (int address = 1; address <= 17; ++address) open(address);
  EXPECT_EQ(fleet.panelCount(), 16);
  EXPECT_EQ(prompt.shown, QStringList{QStringLiteral("Keine weiteren Schaltfenster möglich!")});
  EXPECT_TRUE(windows.log.contains(QStringLiteral("16: at 400,360")));
}

TEST_F(PanelTest, APanelKeepsThePortOpenBesideACabAndTheLastOneClosesIt) {
  const auto cab = loadedCab(3);
  Panel& panel = open();
  cab->unload();
  EXPECT_TRUE(serial.isOpen());
  panel.cmdOK();
  EXPECT_FALSE(serial.isOpen());
}

TEST_F(PanelTest, TheOneKindWithoutPanelsIsTold) {
  settings.baseUnit = StationKind::LiDp;
  fleet.OpenPanel(5, QStringLiteral("Weichen"));
  EXPECT_EQ(prompt.shown,
            QStringList{QStringLiteral("Fahrregler für diese Digitalzentrale nicht verfügbar!")});
  EXPECT_EQ(fleet.panelCount(), 0);
}

}  // namespace
}  // namespace lokari
