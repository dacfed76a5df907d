#include "cab/cab.h"

#include <QPointer>
#include <QScopedValueRollback>

#include <algorithm>
#include <utility>

#include "base/prompt.h"
#include "cab/cab_line.h"
#include "cab/leaving.h"
#include "link/station_link.h"
#include "link/track_stop.h"

namespace lokari {
namespace {

/// Names of exchanges; a newer one of a name takes the place of one that still waits.
constexpr int kSpeed = 1;

}  // namespace

Cab::Cab(const CabParts& parts, int address, bool noRecord)
    : Cab(parts, address,
          noRecord ? std::nullopt : std::optional<CabRecord>(parts.records.onShow())) {}

Cab::Cab(const CabParts& parts, int address, const std::optional<CabRecord>& record)
    : SlotUnit(parts.line, parts.prompt, address), parts_(parts), noRecord_(!record) {
  state_.address = address;
  state_.funcCount = kind().cab.funcCount;
  if (record) record_ = *record;
  setTitle(noRecord_ ? parts_.records.nameOf(address) : record_.shortName);
  protocol_ =
      parts_.makeProtocol(kind().family, line(), state_,
                          {.stateArrived = [this](FunctionMask mask) { stateArrived(mask); },
                           .stopFailed =
                               [self = QPointer<Cab>(this)](bool stopped, StopFault fault) {
                                 if (self) self->stopFailed(stopped, fault);
                               },
                           .stopHeld =
                               [self = QPointer<Cab>(this)](bool stopped) {
                                 if (self) self->stopHeld(stopped);
                               },
                           .layoutTold =
                               [self = QPointer<Cab>(this)](LayoutStands stands) {
                                 if (self) self->layoutTold(stands);
                               }});
  // A release is one for the whole layout, whoever pressed it; so is a stop that no cab sent.
  TrackStop& layout = link().trackStop();
  state_.stopped = layout.isHeld();
  connect(&layout, &TrackStop::stoppedForAll, this, [this] { showHeld(true); });
  connect(&layout, &TrackStop::heldChanged, this, [this](bool held) {
    if (held) return;
    layoutTold(LayoutStands::No);
    showHeld(false);
  });
  connect(&line(), &CabLine::goneChanged, this, &Cab::lineChanged);
  if (kind().cab.linkStaysOpen) adoptSession();
}

Cab::~Cab() = default;

// ---- Driving ------------------------------------------------------------------------------------
// While a command waits, the station may tell of what was before it, and the window shows that.
// What goes out is what the user asked for, and is shown again.

void Cab::vsbSpeed(int value) {
  if (isUnloading()) return;
  bar_ = std::clamp(value, 0, CabState::kHighestSpeed);
  state_.speed = bar_;
  emit speedShown(bar_);
  if (inSpeedChange_) return;
  wantedSpeed_ = bar_;
  exchange(kSpeed, [this] {
    if (!mayDrive(directionChosen_)) {
      showSpeed(0);
      return tellUnsent();
    }
    // A reading ahead of it has shown another one.
    const int speed = wantedSpeed_.value_or(bar_);
    wantedSpeed_.reset();
    if (speed != bar_) showSpeed(speed);
    state_.speed = speed;
    speedChosen_ = true;
    sendSpeed();
  });
}

/// Inside an exchange; false when the station does not take it.
bool Cab::sendSpeed() {
  // A station that answers tells the speed that it has made of it.
  QScopedValueRollback told(taken_, state_.speed);
  const bool taken = protocol_->sendSpeed();
  if (taken) told.commit();
  // Stations that do not answer would be sent positions faster than their line takes them, and a
  // stop would stand in line behind all of them.
  link().waitUntilSent();
  state_.canBusy = false;
  return taken;
}

void Cab::showSpeed(int position) {
  bar_ = position;
  state_.speed = position;
  const QScopedValueRollback moving(inSpeedChange_, true);
  emit barMoved(position);
  emit speedShown(position);
}

void Cab::standStill(std::function<void()> done) {
  const int before = state_.speed;
  wantedSpeed_.reset();
  exchange(
      kSpeed,
      [this, before, then = std::move(done)] {
        const bool sends = mayDrive(directionChosen_);
        showSpeed(0);
        if (sends && (!sendSpeed() || taken_ > 0)) {
          return tellNotStill(
              before,
              QStringLiteral("%1 wurde nicht angehalten: Die Zentrale hat es nicht bestätigt!"));
        }
        if (then) then();
      },
      [this, before] {
        tellNotStill(before, QStringLiteral("%1 wurde nicht angehalten: Die Verbindung zur "
                                            "Digitalzentrale ist weg!"));
      });
}

void Cab::tellNotStill(int speed, const QString& text) {
  showSpeed(speed);
  tellLater(text.arg(caption()));
}

/// From the event loop: a box must not hold the line.
void Cab::tellLater(const QString& text, const QString& more) {
  tell_ =
      link().clock().after(0, [this, text, more] { prompt().message(text, Icon::Warning, more); });
}

void Cab::cmdFunc(int n) {
  if (!hasFunction(n) || isUnloading() || !functionsKnown()) return;
  bool& lamp = state_.funcOn[static_cast<size_t>(n)];
  lamp = !lamp;
  const bool on = lamp;
  emit functionChanged(n, on);
  exchange(distinct(), [this, n, on] {
    // The reading that it waited for gave nothing.
    if (!functionsKnown()) {
      state_.funcOn[static_cast<size_t>(n)] = false;
      emit functionChanged(n, false);
      return;
    }
    if (std::exchange(state_.funcOn[static_cast<size_t>(n)], on) != on) {
      emit functionChanged(n, on);
    }
    protocol_->sendFunction(n);
    state_.canBusy = false;
  });
}

void Cab::setDirection(bool backward) {
  if (isUnloading()) return;
  state_.backward = backward;
  emit directionChanged(backward);
  exchange(distinct(), [this, backward] {
    const bool known = mayDrive(speedChosen_);
    directionChosen_ = known || kind().cab.drivesAlone;
    if (!known) {
      if (!directionChosen_ && std::exchange(state_.backward, false)) emit directionChanged(false);
      return tellUnsent();
    }
    if (std::exchange(state_.backward, backward) != backward) emit directionChanged(backward);
    protocol_->sendDirection();
    state_.canBusy = false;
  });
}

/// A driving message says more than what was pressed. What the station has not told is asked for
/// once more; `chosen` tells whether the user has chosen the rest of it where it has little else.
bool Cab::mayDrive(bool chosen) {
  return !isStateMissing() || readAnew() || (chosen && kind().cab.drivesAlone);
}

void Cab::tellUnsent() {
  prompt().beep();
  unsent_ = true;
  emit noticeChanged();
}

void Cab::imgMan() {
  if (!manualVisible() || isUnloading()) return;
  state_.manual = !state_.manual;
  const bool manual = state_.manual;
  emit manualChanged(manual);
  exchange(distinct(), [this, manual] {
    if (!mayDrive(false)) {
      if (std::exchange(state_.manual, false)) emit manualChanged(false);
      return tellUnsent();
    }
    if (std::exchange(state_.manual, manual) != manual) emit manualChanged(manual);
    protocol_->sendManual();
    state_.canBusy = false;
  });
}

void Cab::imgStop() {
  // A stop that still waits for its line must not be followed by the go of a second press.
  if (isUnloading() || stopPending_) return;
  stopPending_ = true;
  const bool stopped = !state_.stopped;
  urgent(
      stopped ? QStringLiteral("Halt") : QStringLiteral("Los"),
      [this, stopped] {
        // The line is there, and no message stands in the way: the order counts from here on.
        stopPending_ = false;
        failedStop_.reset();
        link().trackStop().noteOrdered(stopped);
        showHeld(stopped);
        emit noticeChanged();
        protocol_->sendStopped();
      },
      [this, stopped](const QString& reason) {
        stopPending_ = false;
        stopFailed(stopped, StopFault::NotSent, reason);
      });
}

void Cab::stopFailed(bool stopped, StopFault fault, const QString& reason) {
  if (fault == StopFault::NotSent) prompt().beep();
  failedStop_ = {stopped, fault, reason};
  // Pressed again meanwhile, the newer order counts.
  if (state_.stopped == stopped) {
    TrackStop& layout = link().trackStop();
    layout.noteFailed(stopped, fault == StopFault::Silent);
    // Behind a stop the button offers it again, also where that of somebody else holds.
    showHeld(!stopped && layout.isHeld());
  }
  emit noticeChanged();
}

void Cab::stopHeld(bool stopped) {
  failedStop_.reset();
  link().trackStop().noteTaken(stopped);
  showHeld(stopped);
  emit noticeChanged();
}

void Cab::layoutTold(LayoutStands stands) {
  if (std::exchange(stands_, stands) != stands) emit noticeChanged();
}

void Cab::showHeld(bool held) {
  if (std::exchange(state_.stopped, held) != held) emit stoppedChanged(held);
}

QString Cab::notice() const {
  QString text = stopNotice();
  if (stands_ != LayoutStands::No) text += u'\n' + layoutStandsText(stands_);
  if (isStateMissing()) {
    text += QStringLiteral("\nDie Zentrale hat den Stand des Fahrzeugs nicht gemeldet.");
    if (unsent_) {
      text += QStringLiteral("\nEs wurde nichts gesendet. „Neu lesen“ fragt noch einmal") +
              (kind().cab.drivesAlone ? QStringLiteral("; mit gewählter Richtung fährt es auch so.")
                                      : QStringLiteral("."));
    }
  }
  if (!failedStep_.isEmpty()) text += u'\n' + failedStep_;
  return text.trimmed();
}

QString Cab::stopNotice() const {
  const QString line = SlotUnit::notice();
  if (!failedStop_) return line;
  const QString order = failedStop_->stopped ? QStringLiteral("Halt") : QStringLiteral("Los");
  switch (failedStop_->fault) {
    case StopFault::NotSent: {
      const QString failed = QStringLiteral("%1 wurde nicht gesendet!").arg(order);
      if (!line.isEmpty()) return failed + u'\n' + line;
      return (failed + u' ' + failedStop_->reason).trimmed();
    }
    case StopFault::Refused:
      return QStringLiteral("Die Zentrale hat „%1“ abgelehnt!\n%2").arg(order, line).trimmed();
    case StopFault::Silent:
      return QStringLiteral("Die Zentrale hat „%1“ nicht bestätigt!\n%2")
          .arg(order, line)
          .trimmed();
  }
  return line;
}

bool Cab::keyDown(QChar key) {
  if (key >= u'0' && key <= u'7') {
    cmdFunc(key.unicode() - u'0');
  } else if (key == u'+') {
    imgDirForward();
  } else if (key == u'-') {
    imgDirBackward();
  } else if (key.toUpper() == u'M') {
    imgMan();
  } else if (key == u' ') {
    imgStop();
  } else {
    return false;
  }
  return true;
}

// ---- The end ------------------------------------------------------------------------------------

void Cab::leave() {
  const Entered entered(*this);
  if (isUnloading() || asking_) return;
  if (!isMoving()) return unload();
  const QScopedValueRollback asking(asking_, true);
  switch (askHowToLeave(prompt(), {caption()})) {
    case Leaving::LetRun:
      return unload();
    case Leaving::StopThese:
      return standStill([this] { unload(); });
    case Leaving::SwitchOff:
      // One that did not go out, or was not confirmed, leaves the cab where it is.
      if (link().trackStop().pressAndAwait()) unload();
  }
}

void Cab::onUnloading() {
  cabTimer_.reset();
}

}  // namespace lokari
