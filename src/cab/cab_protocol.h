// What a protocol family does for a cab: reading the vehicle's state and sending its driving
// commands. One object serves one cab.
//
// Messages go out through CabLine::send(). The operations are called one at a time for the whole
// link (CabLine::exchange()), but sendStopped(), which may come while another operation waits for
// its answer: it must put its message on the wire at once and leave the answer of the one that
// waits to it as far as the protocol can tell them apart. Every operation throws LinkError when its
// message finds no way out.
#pragma once

#include <QtGlobal>

#include <functional>
#include <memory>
#include <optional>

#include "base/clock.h"
#include "cab/cab_state.h"
#include "cab/layout_stands.h"
#include "cab/stop_fault.h"

namespace lokari {

class CabLine;
class StationLink;

/// Bit n stands for function Fn, bit 0 for the light.
using FunctionMask = quint32;

/// What a protocol tells its cab.
struct CabHooks {
  /// The station has told the vehicle's state outside the reading at load: direction and speed are
  /// in the state, `mask` has the functions. The speed bar itself does not move.
  std::function<void(FunctionMask mask)> stateArrived = {};
  /// A stop (`stopped`) or go that went out does not hold. May be called when the cab has gone.
  std::function<void(bool stopped, StopFault fault)> stopFailed = {};
  /// One holds, as the station says, or where no station says anything; also one that was told as
  /// Silent. As above.
  std::function<void(bool stopped)> stopHeld = {};
  /// The station has taken a command, and tells whether the layout stands all the same. As above.
  std::function<void(LayoutStands stands)> layoutTold = {};
};

class CabProtocol {
 public:
  CabProtocol(CabLine& line, CabState& state, CabHooks hooks)
      : line_(line), state_(state), hooks_(std::move(hooks)) {}
  virtual ~CabProtocol() = default;
  CabProtocol(const CabProtocol&) = delete;
  CabProtocol& operator=(const CabProtocol&) = delete;

  /// The reading at load; the session is open. Sets `steps`, `speed`, `backward`, `manual`,
  /// `locoCmd` and what else the family keeps. Nothing when it failed; the caller may ask again.
  virtual std::optional<FunctionMask> readState() = 0;
  /// The functions that the last good reading told of.
  virtual FunctionMask toldFunctions() const { return ~FunctionMask{0}; }
  /// Sends `speed`, with the direction where the message carries it. False when the station does
  /// not take it, or stays silent where it answers.
  virtual bool sendSpeed() = 0;
  /// Sends `backward`.
  virtual void sendDirection() = 0;
  /// Sends `funcOn[n]`, n from 0 to 28.
  virtual void sendFunction(int n) = 0;
  /// Sends `manual`; only on kinds that have it.
  virtual void sendManual() {}
  /// Sends `stopped`: track power off, or on again.
  virtual void sendStopped() = 0;
  /// The cab's timer has come round and no exchange is in hand: keep-alive or poll.
  virtual void tick() {}

 protected:
  CabLine& line() const { return line_; }
  StationLink& link() const;
  CabState& state() const { return state_; }
  const CabHooks& hooks() const { return hooks_; }
  enum class GoesOut {
    AtOnce,
    WhenGranted,  ///< the station grants the line; the one that writes tells LayoutOrder
  };
  /// Runs `send`, which sends `stopped`, and awaits the station's word for it; see LayoutOrder,
  /// also for `listen`. What it throws passes through.
  void order(const std::function<void()>& send, GoesOut when = GoesOut::AtOnce,
             std::function<void()> listen = {}) const;

 private:
  CabLine& line_;
  CabState& state_;
  CabHooks hooks_;
};

}  // namespace lokari
