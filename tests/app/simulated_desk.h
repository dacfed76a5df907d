// The whole workbench with its real windows at the simulated station of one kind, in virtual time.
#pragma once

#include <gtest/gtest.h>

#include <QApplication>
#include <QPushButton>
#include <QTest>
#include <QTimer>

#include "app/driving.h"
#include "app/ui/main_win.h"
#include "app_folder.h"
#include "link/station_link.h"
#include "link/system_can.h"
#include "link/track_stop.h"
#include "sim/decoder_file.h"
#include "sim/station_table.h"
#include "support/sim_line.h"
#include "support/sim_socket.h"

namespace lokari::test {

class SimulatedDesk : public ::testing::Test {
 protected:
  explicit SimulatedDesk(StationKind kind) {
    const QByteArray name = QString::fromUtf16(stationKind(kind).name).toLatin1();
    folder.settings(
        "BaseUnit=" + name +
        "\r\nComPort=3\r\nIPAddr=127.000.000.001\r\nTimeout=2\r\nDelay=0\r\nCANLog=0\r\n");
    folder.add({{QStringLiteral("Anlage"), 3, QStringLiteral("Lok")},
                {QStringLiteral("Anlage"), 5, QStringLiteral("Weiche")}});
    folder.change(5, {{QStringLiteral("DC_TYPE"), 2}});
    EXPECT_EQ(sim::readDecoders(sim::builtInDecoders(), layout), "");
    const sim::StationRow& row = *sim::stationByName(QStringView(stationKind(kind).name));
    station = row.make({outside.clock, layout, faults, 20});
    if (row.wire == sim::Wire::Serial) {
      line = std::make_unique<SimLine>(outside.clock, *station);
      socket = std::make_unique<MemorySocket>(outside.clock);
    } else {
      line = std::make_unique<MemoryLine>(outside.clock);
      socket = std::make_unique<SimSocket>(outside.clock, *station);
    }
    can = std::make_unique<SystemCan>(outside.clock, *line, *socket, std::vector<CanInterface>{});
    WorkbenchParts parts = outside.parts(folder);
    workbench.emplace(WorkbenchParts{parts.paths, parts.clock, parts.prompt, parts.desktop,
                                     Transports{*line, *socket, *can, nullptr}, parts.oldFormat,
                                     parts.bus});
    window = std::make_unique<MainWin>(*workbench);
    EXPECT_TRUE(window->start());
    window->show();
    QApplication::processEvents();
    layout.onChange = [this](const QString&) {
      if (!halted()) ranOnce = true;
    };
    prompt().shown.clear();
  }

  ScriptedPrompt& prompt() { return outside.prompt; }
  VirtualClock& clock() { return outside.clock; }
  Driving& driving() { return workbench->driving(); }
  StationLink& link() { return workbench->link(); }
  TrackStop& stop() { return link().trackStop(); }
  RecordForm& form() { return workbench->session().form(); }

  /// Nothing runs: some stations take the power off, others stop every vehicle.
  bool halted() const { return !layout.trackPower() || layout.stopped(); }

  static QWidget* windowNamed(const char* name) {
    for (QWidget* each : QApplication::topLevelWidgets()) {
      if (each->objectName() == QLatin1String(name) && each->isVisible()) return each;
    }
    return nullptr;
  }
  template <typename T>
  static T* control(QWidget* of, const char* name) {
    T* found = of == nullptr ? nullptr : of->findChild<T*>(QString::fromLatin1(name));
    EXPECT_NE(found, nullptr) << name;
    return found;
  }
  QWidget* cabWindow(int address) {
    for (QWidget* each : QApplication::topLevelWidgets()) {
      if (each->objectName() == QStringLiteral("frmCab") && each->isVisible() &&
          each->windowTitle().endsWith(QStringLiteral("(%1)").arg(address)))
        return each;
    }
    return nullptr;
  }
  static QString wordOfStop(QWidget* cab) {
    return control<QAbstractButton>(cab, "imgStop")->text();
  }

  AppFolder folder;
  Outside outside;
  sim::Layout layout;
  sim::FaultPlan faults;
  std::unique_ptr<sim::Station> station;
  std::unique_ptr<MemoryLine> line;
  std::unique_ptr<MemorySocket> socket;
  std::unique_ptr<SystemCan> can;
  std::optional<Workbench> workbench;
  std::unique_ptr<MainWin> window;
  bool ranOnce = false;  ///< at some moment since it was cleared the layout was on
};

}  // namespace lokari::test
