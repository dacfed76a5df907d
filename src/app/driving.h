// Driving and switching from the main window: the one line to the station, and all cabs and panels
// on it.
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <vector>

#include "app/opening.h"
#include "base/clock.h"
#include "cab/cab_fleet.h"
#include "cab/cab_line.h"
#include "cab/layout_stop.h"
#include "cab/panel_fleet.h"
#include "cab/vehicle_records.h"

namespace lokari {

class DatabaseSession;
class Prompt;
class StationLink;

struct DrivingWindows {
  CabFleet::WindowFactory makeCab;
  PanelFleet::WindowFactory makePanel;
  WaitWindowFactory makeWait;
};

class Driving {
 public:
  /// Link, session and prompt must outlive it. `basePath` is the folder of the description files.
  Driving(StationLink& link, DatabaseSession& session, Prompt& prompt, const QString& basePath,
          DrivingWindows windows);
  ~Driving();
  Driving(const Driving&) = delete;
  Driving& operator=(const Driving&) = delete;

  /// A cab for the vehicle on show; the user is told when there is none to be had.
  void butDrive();
  /// A panel for the function unit on show.
  void butSwitch();
  /// A cab for an address, `noRecord` when it is not for the record on show.
  void OpenCab(int address, bool noRecord);

  /// Runs what needs the station for itself, such as a batch: cabs and panels keep silent until it
  /// has ended. Now, or as soon as an exchange in hand has ended; asked for twice, it runs once.
  void runAlone(const void* owner, std::function<void()> job);

  /// Opens a window that may ask for runAlone(): never on top of an exchange, which could not end
  /// below it. Polls and keep-alives go on beside the window. Now, or as soon as an exchange in
  /// hand has ended; asked for twice, it opens once, as it was asked for last.
  void openBeside(const void* owner, std::function<void()> open);

  /// Forgets a job of runAlone() that still waits; its owner is about to go.
  void forget(const void* owner) { line_.forget(owner); }

  /// The user ends the program: asks once about all vehicles that move. False when they were to be
  /// stopped and are not: one could not be, and the user has been told; or their stops wait for an
  /// exchange in hand. `settled` then runs from the event loop once each of them was taken.
  bool settleMoving(std::function<void()> settled);

  /// The end of the program: closes all cabs and panels in the order of their slots. Cabs and jobs
  /// that still wait for the line are forgotten.
  void closeAll();

  /// The titles of the open cabs and panels, in the order of their slots.
  QStringList openTitles() const;

  CabFleet& cabs() { return cabs_; }
  PanelFleet& panels() { return panels_; }

 private:
  /// The type of the record on show; nothing, and a message, when it has none.
  std::optional<double> dcType() const;
  std::optional<int> addressOnShow() const;
  /// Opens what is not there yet: shows that it waits, and asks whether it may switch the layout
  /// on. `open` gives the unit that is loading, null for none.
  void openNew(StationUse use, int address, const std::function<SlotUnit*(const Opening&)>& open);
  std::optional<SwitchOnLeave> mayOpen(StationUse use);
  SlotUnit* openNewCab(int address, const std::optional<CabRecord>& record, const Opening& opening);
  bool hasCabs() const;
  bool standStill(std::function<void()> settled);
  void whenFree(const void* owner, int what, std::function<void()> job);
  void openWhenIdle(const void* owner);

  StationLink& link_;
  DatabaseSession& session_;
  Prompt& prompt_;
  CabLine line_;
  LayoutStop stop_;
  VehicleRecords records_;
  CabFleet cabs_;
  PanelFleet panels_;
  WaitWindowFactory makeWait_;
  // What was asked for and has not begun.
  std::map<std::pair<StationUse, int>, std::weak_ptr<Opening>> waiting_;
  struct Beside {
    std::function<void()> open;
    std::unique_ptr<Clock::Alarm> retry;
  };
  std::map<const void*, Beside> beside_;  // windows that wait to open
  int asked_ = 0;                         // cabs and panels asked for by way of the line
  bool closed_ = false;                   // closeAll() has begun
};

}  // namespace lokari
