// The windows of cabs and panels on the simulated station of a kind, in virtual time.
#pragma once

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

namespace lokari::test {

inline constexpr int kAddress = 3;

class CabOnStation : public NetworkSession {
 protected:
  explicit CabOnStation(StationKind kind) : NetworkSession(kind) { settings.comPort = 3; }

  /// What butDrive does ahead of opening a cab.
  void openLink() {
    if (!settings.station().cab.linkStaysOpen) return;
    ASSERT_EQ(link->initComm(true, false, false), QString());
  }
  FrmCab* openCab(int address = kAddress) {
    openLink();
    cabs.OpenCab(address, false);
    EXPECT_EQ(prompt.shown, QStringList());
    return frmCab;
  }

  /// Closes the cab of a vehicle that moves, and lets it run.
  void closeMoving(FrmCab* window) {
    window->close();
    clock.advance(1000);
    EXPECT_EQ(prompt.asked.size(), 1);
    prompt.asked.clear();
    prompt.shown.clear();
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

inline std::vector<StationKindRow> kindsWithCabs() {
  std::vector<StationKindRow> kinds;
  for (const StationKindRow& row : kStationKinds)
    if (row.cab.available()) kinds.push_back(row);
  return kinds;
}

inline std::string nameOfKind(const ::testing::TestParamInfo<StationKindRow>& row) {
  return QString::fromUtf16(row.param.name).toStdString();
}

}  // namespace lokari::test
