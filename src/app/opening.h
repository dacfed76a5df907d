// A cab or a panel that was asked for and is not there yet: it may wait for its turn on the line,
// for the session, for the station's answer. The user sees that it waits, and can give up.
#pragma once

#include <QPointer>
#include <QString>

#include <functional>
#include <memory>

#include "link/switch_on_question.h"

namespace lokari {

class SlotUnit;
class StationLink;

/// Shows that something waits, for as long as it lives.
class WaitWindow {
 public:
  virtual ~WaitWindow() = default;
};

/// `giveUp` is called at most once, by the user's "Abbruch".
using WaitWindowFactory =
    std::function<std::unique_ptr<WaitWindow>(const QString& text, std::function<void()> giveUp)>;

class Opening : public std::enable_shared_from_this<Opening> {
 public:
  explicit Opening(StationLink& link) : link_(link) {}

  void show(const WaitWindowFactory& makeWindow, const QString& text);

  /// The user has given up. What has not begun does not begin.
  bool isGivenUp() const { return givenUp_; }
  /// Its session is being opened now.
  void begin() { begun_ = true; }
  /// Lasts until the station has answered the unit, or the unit goes.
  void follow(SlotUnit& unit);
  void end() { window_.reset(); }

  SwitchOnLeave leave;  ///< to switch the layout on

 private:
  void giveUp();

  StationLink& link_;
  std::unique_ptr<WaitWindow> window_;
  QPointer<SlotUnit> unit_;
  bool begun_ = false;
  bool givenUp_ = false;
};

}  // namespace lokari
