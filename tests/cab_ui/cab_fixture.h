// Cabs and panels with their real windows, on a protocol that answers as the test says and writes
// down what it is told to send. The record on show is a vehicle of a database of its own.
#pragma once

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QTest>

#include <stdexcept>

#include "base/ini_file.h"
#include "base/ui/pictures.h"
#include "base/ui/window_scale.h"
#include "cab/cab_fleet.h"
#include "cab/cab_line.h"
#include "cab/panel_fleet.h"
#include "cab/ui/frm_cab.h"
#include "cab/ui/frm_panel.h"
#include "cab/ui/picture_button.h"
#include "cab/ui/speed_bar.h"
#include "db/database_session.h"
#include "link/station_link.h"
#include "support/ini_text.h"
#include "support/memory_can.h"
#include "support/memory_line.h"
#include "support/memory_socket.h"
#include "support/places.h"
#include "support/recording_desktop.h"
#include "support/scripted_prompt.h"
#include "support/test_database.h"
#include "support/virtual_clock.h"

namespace lokari::test {

/// What the station knows and what it was told.
struct ToldStation {
  bool answers = true;
  CabState vehicle;
  FunctionMask functions = 0;
  std::optional<int> highest;              ///< function that it knows
  LayoutStands stands = LayoutStands::No;  ///< told with each speed
  quint8 outputs = 0;                      ///< bit 2i: output i is off
  std::array<bool, 4> neverSwitched{};
  QStringList sent;
  int reads = 0;
};

class ToldCab final : public CabProtocol {
 public:
  ToldCab(ToldStation& station, CabLine& line, CabState& state, CabHooks hooks)
      : CabProtocol(line, state, std::move(hooks)), station_(station) {}

  std::optional<FunctionMask> readState() override {
    ++station_.reads;
    if (!station_.answers) return std::nullopt;
    state().speed = station_.vehicle.speed;
    state().backward = station_.vehicle.backward;
    state().manual = station_.vehicle.manual;
    if (station_.highest) state().funcCount = *station_.highest;
    return station_.functions;
  }
  bool sendSpeed() override {
    told(QStringLiteral("Stufe %1").arg(state().speed));
    hooks().layoutTold(station_.stands);
    return true;
  }
  void sendDirection() override {
    told(state().backward ? QStringLiteral("rückwärts") : QStringLiteral("vorwärts"));
  }
  void sendFunction(int n) override {
    const bool on = state().funcOn[static_cast<size_t>(n)];
    told(QStringLiteral("F%1 %2").arg(n).arg(on ? u"ein" : u"aus"));
  }
  void sendManual() override {
    told(state().manual ? QStringLiteral("manuell") : QStringLiteral("automatisch"));
  }
  void sendStopped() override {
    told(state().stopped ? QStringLiteral("Halt") : QStringLiteral("Los"));
  }
  void tick() override { hooks().stateArrived(station_.functions); }

 private:
  void told(const QString& text) { station_.sent << text; }

  ToldStation& station_;
};

class ToldPanel final : public PanelProtocol {
 public:
  ToldPanel(ToldStation& station, CabLine& line, PanelState& state)
      : PanelProtocol(line, state), station_(station) {}

  std::optional<quint8> readState() override {
    ++station_.reads;
    if (!station_.answers) return std::nullopt;
    state().neverSwitched = station_.neverSwitched;
    return station_.outputs;
  }
  void sendOutput(int n) override {
    const bool on = state().outOn[static_cast<size_t>(n)];
    station_.sent << QStringLiteral("A%1 %2").arg(n).arg(on ? u"ein" : u"aus");
  }

 private:
  ToldStation& station_;
};

class CabWindows : public ::testing::Test {
 protected:
  explicit CabWindows(StationKind kind = StationKind::Mx1Bin) {
    settings.baseUnit = kind;
    settings.comPort = 3;
    settings.timeoutVal = 2;
    settings.delayFlag = false;
    database.addVehicle(3, QStringLiteral("Anlage"), QStringLiteral("V 200 007"));
    EXPECT_EQ(session.InitDB(), 0);
  }

  FrmCab* openCab(int address = 3) {
    if (!cabs.OpenCab(address, false)) return nullptr;
    for (FrmCab* window : cabWindows)
      if (window->windowTitle().endsWith(QStringLiteral("(%1)").arg(address))) return window;
    return nullptr;
  }

  template <typename T>
  static T* control(QWidget* window, const char* name) {
    T* found = window->findChild<T*>(QString::fromLatin1(name));
    if (!found) throw std::logic_error(std::string("no control ") + name);
    return found;
  }
  static PictureButton* picture(QWidget* window, const char* name) {
    return control<PictureButton>(window, name);
  }
  static QString shownBy(QWidget* window, const char* name) {
    return picture(window, name)->picture();
  }
  static QString textOf(QWidget* window, const char* name) {
    return control<QLabel>(window, name)->text();
  }
  static SpeedBar* bar(QWidget* window) { return control<SpeedBar>(window, "vsbSpeed"); }
  static void press(QWidget* control) { QTest::mousePress(control, Qt::LeftButton); }
  static void release(QWidget* control) { QTest::mouseRelease(control, Qt::LeftButton); }
  static void click(QWidget* control) { QTest::mouseClick(control, Qt::LeftButton); }

  /// What was sent since the last call.
  QStringList sent() { return std::exchange(station.sent, {}); }

  VirtualClock clock;
  Settings settings;
  ScriptedPrompt prompt;
  RecordingDesktop desktop;
  TestDatabase database;
  IniText iniText{"[LOKARI]\r\n"};
  IniFile ini{iniText.path()};
  NoOldFormat oldFormat;
  DatabaseSession session{{prompt, desktop, ini, database.folder()}, database.path(), oldFormat};
  MemoryLine serial{clock};
  MemorySocket socket{clock};
  MemoryCan can;
  StationLink link{settings, clock, prompt, {serial, socket, can}};
  CabLine line{link};
  VehicleRecords records{&session, prompt};
  ToldStation station;
  WindowScale scale{database.folder() + QStringLiteral("/WINDOW.INI")};
  const Pictures pictures{places::data()};
  QList<FrmCab*> cabWindows;
  QList<FrmPanel*> panelWindows;
  CabFleet cabs{{line, prompt, records, database.folder(),
                 [this](ProtocolFamily, CabLine& shared, CabState& state, CabHooks hooks) {
                   return std::make_unique<ToldCab>(station, shared, state, std::move(hooks));
                 }},
                [this](const std::shared_ptr<Cab>& cab) {
                  auto window = std::make_unique<FrmCab>(cab, pictures, scale);
                  cabWindows << window.get();
                  return window;
                }};
  PanelFleet panels{{line, prompt,
                     [this](ProtocolFamily, CabLine& shared, PanelState& state) {
                       return std::make_unique<ToldPanel>(station, shared, state);
                     }},
                    [this](const std::shared_ptr<Panel>& panel) {
                      auto window = std::make_unique<FrmPanel>(panel, pictures, scale);
                      panelWindows << window.get();
                      return window;
                    }};
};

}  // namespace lokari::test
