// The windows of cabs and panels on the simulated station of every kind, in virtual time: what the
// mouse and the keyboard do arrives at the vehicle.
#include "cab_sim_fixture.h"

namespace lokari {
namespace {

using test::kAddress;

class CabOnEveryKind : public test::CabOnStation,
                       public ::testing::WithParamInterface<StationKindRow> {
 protected:
  CabOnEveryKind() : CabOnStation(GetParam().kind) {}
};

INSTANTIATE_TEST_SUITE_P(Kinds, CabOnEveryKind, ::testing::ValuesIn(test::kindsWithCabs()),
                         test::nameOfKind);

TEST_P(CabOnEveryKind, MouseAndKeyboardDriveTheVehicle) {
  FrmCab* window = openCab();
  ASSERT_NE(window, nullptr);
  auto* vsbSpeed = control<SpeedBar>(window, "vsbSpeed");
  QTest::mouseClick(vsbSpeed, Qt::LeftButton, {}, QPoint(20, vsbSpeed->height() / 2));
  EXPECT_NEAR(position(), vsbSpeed->value(), 128 / vehicle().steps + 1);
  EXPECT_FALSE(vehicle().backward);
  click(window, "imgDirBackward");
  EXPECT_TRUE(vehicle().backward);
  QTest::keyClick(vsbSpeed, Qt::Key_0);
  click(window, "cmdFunc_4");
  EXPECT_EQ(vehicle().functions, 1U | 1U << 4);
  QTest::keyClick(vsbSpeed, Qt::Key_4);
  EXPECT_EQ(vehicle().functions, 1U);
  QTest::keyClick(vsbSpeed, Qt::Key_Plus);
  EXPECT_FALSE(vehicle().backward);
  QTest::keyClick(vsbSpeed, Qt::Key_Home);
  EXPECT_EQ(vehicle().speed, 0);
}

TEST_P(CabOnEveryKind, TheHighestFunctionIsSwitched) {
  FrmCab* window = openCab();
  const int highest = GetParam().cab.funcCount;
  click(window, ("cmdFunc_" + QByteArray::number(highest)).constData());
  EXPECT_EQ(vehicle().functions, 1U << highest);
}

TEST_P(CabOnEveryKind, StopAndGoHoldForTheWholeTrack) {
  FrmCab* window = openCab();
  QTest::keyClick(control<QWidget>(window, "vsbSpeed"), Qt::Key_Space);
  clock.advance(100);
  EXPECT_TRUE(halted());
  click(window, "imgStop");
  clock.advance(100);
  EXPECT_FALSE(halted());
}

TEST_P(CabOnEveryKind, AStoppedTrackStaysStoppedWhenTheCabCloses) {
  FrmCab* window = openCab();
  click(window, "imgStop");
  clock.advance(100);
  window->close();
  clock.advance(5000);
  EXPECT_TRUE(halted());
  EXPECT_EQ(link->commUseCount, 0);
}

TEST_P(CabOnEveryKind, ACabThatComesBackShowsTheRunningVehicleAsItIs) {
  {
    FrmCab* window = openCab();
    // In this order: a change of direction may change the speed with some stations.
    click(window, "imgDirBackward");
    control<SpeedBar>(window, "vsbSpeed")->setValue(100);
    click(window, "cmdFunc_0");
    click(window, "cmdFunc_3");
    closeMoving(window);
  }
  const sim::DriveState before = vehicle();
  FrmCab* window = openCab();
  EXPECT_NEAR(control<SpeedBar>(window, "vsbSpeed")->value(), 100, 128 / before.steps + 1);
  EXPECT_TRUE(control<PictureButton>(window, "imgDirBackward")->isChecked());
  EXPECT_TRUE(lampIsOn(window, 0));
  EXPECT_FALSE(lampIsOn(window, 1));
  EXPECT_TRUE(lampIsOn(window, 3));
  clock.advance(5000);
  EXPECT_EQ(vehicle(), before);
}

TEST_P(CabOnEveryKind, AQuickDragEndsAtTheLastPositionWithFewMessages) {
  FrmCab* window = openCab();
  auto* vsbSpeed = control<SpeedBar>(window, "vsbSpeed");
  int told = 0;
  layout.onChange = [&told](const QString&) { ++told; };
  const int bottom = vsbSpeed->height() - 2;
  QTest::mousePress(vsbSpeed, Qt::LeftButton, {}, QPoint(20, bottom));
  // The mouse moves on while an exchange waits for its answer.
  for (int move = 1; move <= 200; ++move) {
    clock.schedule(
        move, [vsbSpeed, bottom, move] { QTest::mouseMove(vsbSpeed, QPoint(20, bottom - move)); });
  }
  clock.advance(2000);
  QTest::mouseRelease(vsbSpeed, Qt::LeftButton, {}, QPoint(20, bottom - 200));
  clock.advance(2000);
  EXPECT_NEAR(position(), vsbSpeed->value(), 128 / vehicle().steps + 1);
  EXPECT_GT(vsbSpeed->value(), 60);
  EXPECT_LE(told, 201);
}

TEST_P(CabOnEveryKind, APanelSwitchesTheFourOutputs) {
  panels.OpenPanel(kAddress, QStringLiteral("Bahnhof"));
  EXPECT_EQ(prompt.shown, QStringList());
  ASSERT_NE(frmPanel, nullptr);
  QStringList told;
  layout.onChange = [&told](const QString& change) { told << change; };
  for (int n = 0; n < 4; ++n) {
    const bool before = lampIsOn(frmPanel, n);
    click(frmPanel, ("cmdSwitch_" + QByteArray::number(n)).constData());
    EXPECT_NE(lampIsOn(frmPanel, n), before) << n;
  }
  clock.advance(1000);
  EXPECT_EQ(told.size(), 4) << told.join(u'\n').toStdString();
  frmPanel->close();
  EXPECT_EQ(link->commUseCount, 0);
}

}  // namespace
}  // namespace lokari
