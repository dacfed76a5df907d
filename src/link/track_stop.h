// Whether this program has stopped the layout, and the stop that every window has. It outlives the
// cab that stopped: only a release ends it.
#pragma once

#include <QObject>

#include <functional>

namespace lokari {

class StationLink;

class TrackStop final : public QObject {
  Q_OBJECT

 public:
  explicit TrackStop(StationLink& link) : link_(link) {}

  /// What became of a stop that was asked for.
  enum class Outcome {
    Sent,             ///< it is on the wire, or right behind the message that is going out
    NotSent,          ///< the line is gone
    NoSession,        ///< nobody has a session: there is nobody to tell
    NoStop,           ///< this kind of station has none
    FirmwareTransfer  ///< a message among the blocks would spoil them
  };

  /// A stop went out and nothing that this program sent since then has switched the layout on.
  bool isHeld() const { return hold_ != Hold::None; }

  /// Stops the layout, whatever waits for the station; never releases it. A job that uses the
  /// station is cancelled: what it did next could switch the layout on.
  Outcome press();
  /// press() for a window: a box tells why nothing went out. During a firmware transfer the speaker
  /// tells it, since a box would hold the transfer up.
  void pressAndTell();
  /// How press() sends; empty where nobody drives. It calls noteStopped() when the stop is out, and
  /// gives false when it found no way out.
  std::function<bool()> send;

  /// A stop, or a go, went out.
  void noteStopped() { set(Hold::Stopped); }
  /// A stop that belongs to no cab went out: every cab shows it.
  void noteStoppedForAll();
  void noteReleased() { set(Hold::None); }

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

  /// A session has opened. For the link alone.
  void noteSession();
  /// A message that switches the layout on has gone out and its answer has had its time. A stop
  /// that was pressed meanwhile goes out again: then true. For the protocols, which know their
  /// messages.
  bool noteSwitchedOn();

 signals:
  void heldChanged(bool held);
  void stoppedForAll();

 private:
  enum class Hold { None, Stopped, ReleaseAgreed };

  void set(Hold hold);

  StationLink& link_;
  Hold hold_ = Hold::None;
  bool telling_ = false;
};

}  // namespace lokari
