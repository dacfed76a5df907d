// The stop of the whole layout that needs no cab: it goes out on whatever session is open.
#pragma once

#include <memory>

#include "cab/cab.h"
#include "link/track_stop.h"

namespace lokari {

class LayoutStop {
 public:
  /// `line` must outlive it.
  LayoutStop(CabLine& line, CabProtocolFactory makeProtocol);
  ~LayoutStop();
  LayoutStop(const LayoutStop&) = delete;
  LayoutStop& operator=(const LayoutStop&) = delete;

  /// Sends it at once, as a cab's goes out, and tells the link's TrackStop when it is on the wire:
  /// see TrackStop::send. Only on kinds with cabs.
  TrackStop::Outcome send();

 private:
  using Outcome = TrackStop::Outcome;

  Outcome sendNow();
  void noteFailed(StopFault fault);
  void noteHeld();

  CabLine& line_;
  CabProtocolFactory makeProtocol_;
  const StationKindRow* kind_ = nullptr;  // of `protocol_`
  CabState state_;                        // of no vehicle
  std::unique_ptr<CabProtocol> protocol_;
  std::unique_ptr<Clock::Alarm> tell_;
};

}  // namespace lokari
