// An order to the whole layout, stop or go, that awaits the station's word for it. It holds nothing
// up: whatever arrives is listened to beside whoever takes it.
#pragma once

#include <functional>
#include <memory>
#include <vector>

#include "base/clock.h"

namespace lokari {

class StationLink;

/// What a station tells of the whole layout.
enum class LayoutNews {
  Off,       ///< it stands, whoever ordered it
  On,        ///< it goes on
  Accepted,  ///< the last order was taken
  Refused,   ///< the last order was not taken
};

class LayoutOrder {
 public:
  enum class Outcome {
    None,  ///< nothing was ordered, or the station's kind confirms nothing
    Awaited,
    Confirmed,  ///< also by news of somebody else's order of the same kind
    Refused,    ///< what is told of the layout later still confirms
    Silent,     ///< nothing came in time; what comes later still confirms
  };

  struct Order {
    bool stops;
    /// It does not hold: Refused or Silent. May be called when its cab has gone.
    std::function<void(Outcome)> failed;
    /// It holds; also behind `failed`, when the station's word came late.
    std::function<void()> held;
    /// Takes in what has come, where messages wait to be fetched; may be empty.
    std::function<void()> listen = {};
  };

  /// How long a station may take.
  static constexpr Millis kPatience = 3000;

  explicit LayoutOrder(StationLink& link) : link_(link) {}

  /// An order is on its way; noteSent() has to follow. One of the same kind that is still awaited
  /// shares its outcome; an older one of the other kind is told no more.
  void await(Order order);
  /// It goes out just now: the station's time begins.
  void noteSent();
  /// It did not go out, or nobody is left to be told.
  void drop();
  /// The station has told something. For the protocols.
  void hear(LayoutNews news);
  /// It does not hold. Nothing when that has been told, or the order confirmed.
  void fail(Outcome outcome);

  /// The station has not taken it, though it was heard to: told as Silent, unless that is known.
  void disprove();

  /// Waits until the station has said its word, or its time is over, or the farewell is hurried.
  void settle();

  Outcome outcome() const { return outcome_; }

 private:
  void listenOn();

  StationLink& link_;
  std::vector<Order> orders_;  // all of one kind; the last one listens
  Outcome outcome_ = Outcome::None;
  std::unique_ptr<Clock::Alarm> deadline_;
  std::unique_ptr<Clock::Alarm> listening_;
};

}  // namespace lokari
