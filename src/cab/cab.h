// The cab: all of a vehicle's throttle but its window. The window shows the state, told by signals,
// and hands the user's acts over under the names of the controls.
#pragma once

#include <optional>

#include "base/clock.h"
#include "cab/cab_protocol.h"
#include "cab/cab_state.h"
#include "cab/main_programming.h"
#include "cab/slot_unit.h"
#include "cab/vehicle_records.h"

namespace lokari {

using CabProtocolFactory =
    std::function<std::unique_ptr<CabProtocol>(ProtocolFamily, CabLine&, CabState&, CabHooks)>;

/// What cabs work with; all of it must outlive them.
struct CabParts {
  CabLine& line;
  Prompt& prompt;
  VehicleRecords& records;
  QString basePath;  ///< folder of the description files
  CabProtocolFactory makeProtocol;
};

class Cab final : public SlotUnit {
  Q_OBJECT

 public:
  /// `noRecord`: the cab is not for the record on show; it gets its title by the address and no
  /// CVs. Otherwise the record on show is taken now.
  Cab(const CabParts& parts, int address, bool noRecord);
  /// `record` is the one it is for; nothing for `noRecord`.
  Cab(const CabParts& parts, int address, const std::optional<CabRecord>& record);
  ~Cab() override;

  // ---- What the window shows --------------------------------------------------------------------

  const CabState& state() const { return state_; }
  /// Lamps 0 to funcCount are there, the others up to 28 hidden and grey.
  bool hasFunction(int n) const { return n >= 0 && n <= state_.funcCount; }
  /// `imgMan` is there.
  bool manualVisible() const { return kind().cab.manual; }
  /// The vehicle's picture as an encoded file, empty for none.
  const QByteArray& picture() const { return record_.picture; }
  /// The collection of the record that it is for: the same address may be in several. Empty for
  /// none.
  const QString& collection() const { return record_.collection; }
  bool loading() const { return loading_; }
  /// The station has told the vehicle's state at load.
  bool hasState() const { return hasState_; }
  /// The station has told nothing, and the reading at load is over: what is shown are the defaults.
  bool isStateMissing() const { return wasRead_ && !hasState_; }
  /// False while switching one function would send others that nobody knows.
  bool functionsKnown() const { return !isStateMissing() || !kind().cab.functionGroups; }
  /// Tells a stop or go that failed, ahead of what the line has to tell.
  QString notice() const override;
  /// `cbCV`, `txtCV`, `udCV`.
  const MainProgramming& programming() const { return programming_; }

  // ---- The user's acts --------------------------------------------------------------------------

  // In a cab that has read nothing, what drives asks the station once more first, and does not go
  // out when it stays silent; imgStop() always does.

  /// The bar was moved, 0 to 127; also while the program moves it, which sends nothing. Moved again
  /// while the line is busy, only the last position goes out.
  void vsbSpeed(int value);
  /// A press on lamp n; nothing when it is not there.
  void cmdFunc(int n);
  // On mouse down; the release only changes pictures.
  void imgDirForward() { setDirection(false); }
  void imgDirBackward() { setDirection(true); }
  void imgMan();
  /// Goes out at once, also while another handler waits for the station. `stopped` changes when
  /// the message has gone out, and back when the station does not take it.
  void imgStop();
  /// A key pressed in the speed bar, by its character: "0" to "7" are lamps, "+" and "-" the
  /// directions, "m" and "M" the manual mode, the space bar the stop. False for any other.
  bool keyDown(QChar key);

  /// `cmdReread`: asks the station once more for the state that is missing. By itself the cab does
  /// so only when its line has come back.
  void reread();

  /// The vehicle moves, as far as the cab knows.
  bool isMoving() const { return (state_.speed > 0 || taken_ > 0) && !state_.stopped; }
  /// Takes the vehicle to speed 0; `done` runs when the station has taken that, or when nothing has
  /// ever driven it from here. A failure is told, and the speed is shown as before. A bar that is
  /// moved ahead of it takes its place.
  void standStill(std::function<void()> done);
  /// Asks about a vehicle that moves.
  void leave() override;

  /// A click in `cbCV`.
  void chooseCV(const QString& name);
  /// `udCV`.
  void stepCVUp();
  void stepCVDown();

 signals:
  /// The program moves the bar to `state().speed`.
  void barMoved(int position);
  /// `labSpeed`
  void speedShown(int speed);
  void functionChanged(int n, bool on);
  void directionChanged(bool backward);
  void manualChanged(bool manual);
  void stoppedChanged(bool stopped);
  /// The entry of `cbCV` on show, or its value, changed.
  void programmingChanged();

 private:
  void onLoad() override;
  void onUnloading() override;

  // Loading: cab_load.cpp.
  std::optional<FunctionMask> readWithOneRetry();
  std::optional<FunctionMask> readState();
  /// Inside an exchange; false when the station tells nothing again.
  bool readAnew();
  void display(FunctionMask mask);
  void showFunctions(FunctionMask mask, int highest);
  void stateArrived(FunctionMask mask);
  void startTimer();
  void lineChanged();
  void tick();

  void setDirection(bool backward);
  bool mayDrive(bool chosen);
  void tellUnsent();
  bool sendSpeed();
  void showSpeed(int position);
  void tellNotStill(int speed, const QString& text);
  void stopFailed(bool stopped, StopFault fault, const QString& reason = {});
  void stopHeld(bool stopped);
  void layoutTold(LayoutStands stands);
  void showHeld(bool held);
  QString stopNotice() const;

  // Steps of CVs: cab_programming.cpp.
  bool mayWriteCV();
  void writeCV(const MainProgramming::Step& step, int mode);
  void queueCV(const MainProgramming::Step& step, int mode);
  void sendCV(const MainProgramming::Step& step, int mode);
  void tellLater(const QString& text, const QString& more = {});
  void stepFailed(const MainProgramming::Step& step, const QString& reason);
  void tellDoubt(const MainProgramming::Step& step, const QString& reason);

  CabParts parts_;
  bool noRecord_;
  CabRecord record_;
  CabState state_;
  std::unique_ptr<CabProtocol> protocol_;
  MainProgramming programming_;
  std::unique_ptr<Clock::Alarm> cabTimer_;
  std::optional<int> wantedSpeed_;  // by the user, and not on the wire yet
  bool directionChosen_ = false;    // by the user, in a cab that has read nothing
  bool speedChosen_ = false;        // and it went out
  bool unsent_ = false;             // something pressed there did not
  int taken_ = 0;                   // the speed that the station has taken or told last
  int bar_ = 0;                     // where the bar stands; `speed` may come from the station
  bool inSpeedChange_ = false;      // the program moves the bar
  bool loading_ = false;
  bool hasState_ = false;
  bool asking_ = false;  // whether it may leave
  std::unique_ptr<Clock::Alarm> tell_;
  bool wasRead_ = false;      // the reading at load is over
  bool stopPending_ = false;  // pressed, and not on the wire yet

  /// The last stop or go, when it does not hold.
  struct FailedStop {
    bool stopped;
    StopFault fault;
    QString reason;
  };
  std::optional<FailedStop> failedStop_;
  LayoutStands stands_ = LayoutStands::No;  // as told with the last command
  bool stepStored_ = false;                 // the step in hand is in the record and on its way
  QString failedStep_;  // the last step of a CV, when it is not known to have been taken
};

}  // namespace lokari
