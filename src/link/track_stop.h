// Whether this program has stopped the layout, and the stop that every window has. It outlives the
// cab that stopped: only a release ends it.
#pragma once

#include <QObject>

#include <functional>
#include <memory>
#include <optional>

#include "base/clock.h"
#include "link/comm_job.h"
#include "link/layout_order.h"

namespace lokari {

class StationLink;

class TrackStop final : public QObject {
  Q_OBJECT

 public:
  explicit TrackStop(StationLink& link) : link_(link), order_(link) {}

  /// What became of a stop that was asked for.
  enum class Outcome {
    Sent,             ///< it is on the wire
    Waiting,          ///< it follows the message that is going out, or the line being opened anew
    NotSent,          ///< the line is gone
    NoSession,        ///< nobody has a session: there is nobody to tell
    NoStop,           ///< this kind of station has none
    FirmwareTransfer  ///< a message among the blocks would spoil them
  };

  /// A stop went out and nothing that this program sent since then has switched the layout on. The
  /// station's word for it may still be awaited.
  bool isHeld() const { return hold_ == Hold::Stopped; }

  /// It may stand, and nobody has agreed to a release.
  bool staysStopped() const { return mayStand() && agreement_ == nullptr; }

  /// It is held, or a stop went out that the station has not confirmed: what switches the layout on
  /// is asked about all the same.
  bool mayStand() const { return hold_ != Hold::None; }

  /// The last stop or go, and what the station has said to it.
  LayoutOrder& order() { return order_; }

  /// Stops the layout, whatever waits for the station; never releases it. A job that uses the
  /// station is cancelled: what it did next could switch the layout on.
  Outcome press();
  /// press() for a window: a box tells why nothing went out. During a firmware transfer the speaker
  /// tells it, since a box would hold the transfer up.
  void pressAndTell();
  /// The same, and waits for the station's word where it gives one. True when the layout stands;
  /// false also when the word is taken only behind the caller.
  bool pressAndAwait();
  /// Ends the job that uses the station, also one that has lent the line out. For a stop, and for
  /// the program's end.
  void cancelJob();
  /// How press() sends; empty where nobody drives. It calls noteOrdered() when the stop goes out.
  /// Behind Waiting it calls noteBehind().
  std::function<Outcome()> send;
  /// A stop that was Waiting has gone out, or found no way: then a box tells it.
  void noteBehind(bool sent);

  // ---- What becomes of a stop, or a go (`stops` is false)

  /// It goes out, and counts from here on.
  void noteOrdered(bool stops);
  /// It holds, as the station says or where no station says anything; also after noteFailed().
  void noteTaken(bool stops);
  /// It did not go out, was refused, or, `silent`, nobody knows. What is known from the time ahead
  /// of it counts again.
  void noteFailed(bool stops, bool silent);
  /// The last noteTaken() was a mistake: noteFailed() follows.
  void noteDisproved();
  /// A stop belongs to no cab: every cab shows it.
  void showToAll() { emit stoppedForAll(); }

  /// While it lives, the next session that opens is known to switch the layout on: the user has
  /// agreed to it.
  class Agreement {
   public:
    explicit Agreement(TrackStop& stop);
    ~Agreement();
    Agreement(const Agreement&) = delete;
    Agreement& operator=(const Agreement&) = delete;

   private:
    TrackStop& stop_;
  };

  /// While it lives the running job leaves the line to others: a stop ends none of their waits, and
  /// is kept for the job.
  class JobAside {
   public:
    explicit JobAside(TrackStop& stop);
    ~JobAside();
    JobAside(const JobAside&) = delete;
    JobAside& operator=(const JobAside&) = delete;

    /// The job is to end.
    bool isStopped() const { return stopped_; }

   private:
    friend class TrackStop;

    TrackStop& stop_;
    CommJob job_;
    bool stopped_ = false;
  };

  /// A session has opened. For the link alone.
  void noteSession();
  /// A message that switches the layout on has gone out. A stop that was pressed ahead of it goes
  /// out again: then true. For the protocols, which know their messages.
  bool noteSwitchedOn();

 signals:
  void heldChanged(bool held);
  void stoppedForAll();

 private:
  enum class Hold {
    None,
    Stopped,
    Unconfirmed,  ///< a stop, or the go behind it, went out, and nobody knows what became of it
  };

  void set(Hold hold);
  void settle(Hold hold);
  void tell(Outcome outcome);

  StationLink& link_;
  LayoutOrder order_;
  Hold hold_ = Hold::None;
  Hold known_ = Hold::None;       // what holds if the order whose word is awaited fails
  Hold provedFrom_ = Hold::None;  // `known_` ahead of the last word that an order was taken
  std::optional<bool> awaited_;   // that order: whether it stops
  const Agreement* agreement_ = nullptr;
  JobAside* jobAside_ = nullptr;
  bool telling_ = false;
  std::unique_ptr<Clock::Alarm> tellLater_;
};

}  // namespace lokari
