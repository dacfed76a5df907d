// The windows of cabs and panels on the simulated station of every kind, in virtual time: what the
// mouse and the keyboard do arrives at the vehicle.
#include <gtest/gtest.h>

#include <QLabel>
#include <QTest>

#include "base/ui/window_scale.h"
#include "cab/cab_fleet.h"
#include "cab/cab_line.h"
#include "cab/cab_table.h"
#include "cab/panel_fleet.h"
#include "cab/ui/frm_cab.h"
#include "cab/ui/frm_panel.h"
#include "cab/ui/picture_button.h"
#include "cab/ui/speed_bar.h"
#include "sim/network_session_fixture.h"
#include "support/places.h"

namespace lokari {
namespace {

constexpr int kAddress = 3;

class CabOnEveryKind : public test::NetworkSession,
                       public ::testing::WithParamInterface<StationKindRow> {
 protected:
  CabOnEveryKind() : NetworkSession(GetParam().kind) { settings.comPort = 3; }

  /// What butDrive does ahead of opening a cab.
  void openLink() {
    if (!GetParam().cab.linkStaysOpen) return;
    ASSERT_EQ(link->initComm(true, false, false), QString());
  }
  FrmCab* openCab(int address = kAddress) {
    openLink();
    cabs.OpenCab(address, false);
    EXPECT_EQ(prompt.shown, QStringList());
    return frmCab;
  }

  template <typename T>
  static T* control(QWidget* window, const char* name) {
    T* found = window->findChild<T*>(QString::fromLatin1(name));
    if (!found) throw std::logic_error(std::string("no control ") + name);
    return found;
  }
  static void click(QWidget* window, const char* name) {
    QTest::mouseClick(control<QWidget>(window, name), Qt::LeftButton);
  }
  static bool lampIsOn(QWidget* window, int n) {
    const QByteArray name = "cmdFunc_" + QByteArray::number(n);
    return control<PictureButton>(window, name.constData())->picture() ==
           QStringLiteral("lmpon_n.bmp");
  }
  const sim::DriveState& vehicle() const { return layout.drive(kAddress); }
  /// Nothing runs: some stations take the power off, others stop every vehicle.
  bool halted() const { return !layout.trackPower() || layout.stopped(); }
  /// The vehicle's speed as a position of the bar, to the width of one step.
  int position() const { return 128 * vehicle().speed / vehicle().steps; }

  CabLine shared{*link};
  VehicleRecords records{nullptr, prompt};
  WindowScale scale{QString()};
  const Pictures pictures{places::data()};
  FrmCab* frmCab = nullptr;
  FrmPanel* frmPanel = nullptr;
  CabFleet cabs{{shared, prompt, records, {}, makeCabProtocol},
                [this](const std::shared_ptr<Cab>& cab) {
                  auto window = std::make_unique<FrmCab>(cab, pictures, scale);
                  frmCab = window.get();
                  return window;
                }};
  PanelFleet panels{{shared, prompt, makePanelProtocol},
                    [this](const std::shared_ptr<Panel>& panel) {
                      auto window = std::make_unique<FrmPanel>(panel, pictures, scale);
                      frmPanel = window.get();
                      return window;
                    }};
};

std::vector<StationKindRow> kindsWithCabs() {
  std::vector<StationKindRow> kinds;
  for (const StationKindRow& row : kStationKinds)
    if (row.cab.available()) kinds.push_back(row);
  return kinds;
}

INSTANTIATE_TEST_SUITE_P(Kinds, CabOnEveryKind, ::testing::ValuesIn(kindsWithCabs()),
                         [](const auto& row) {
                           return QString::fromUtf16(row.param.name).toStdString();
                         });

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
    window->close();
    clock.advance(1000);
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
