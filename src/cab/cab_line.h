// The one station link that all cabs and panels share. Waits let events run, so another cab's
// button, a timer or the stop can arrive inside an exchange; here they get their order.
//
// It also knows whether the line is there at all: what fails on it says so once, and every cab and
// panel shows it.
#pragma once

#include <QObject>
#include <QString>

#include <deque>
#include <functional>
#include <memory>

#include "base/clock.h"

namespace lokari {

class StationLink;

class CabLine final : public QObject {
  Q_OBJECT

 public:
  /// `link` must outlive it.
  explicit CabLine(StationLink& link);
  ~CabLine() override;

  StationLink& link() const { return link_; }

  /// An exchange is in hand.
  bool isBusy() const { return depth_ > 0; }

  /// Inside an exchange or an urgent(): another one waits for its answer around it.
  bool isNested() const { return depth_ > 1; }

  /// The user's next command waits for the end of the exchange in hand. A poll that sees it gives
  /// way.
  bool commandWaits() const { return !waiting_.empty(); }

  /// Runs an exchange: now, or, when one is in hand, after it. `owner` and `what` name it: a newer
  /// one with the same names takes the place of one that still waits, so that a bar that is
  /// dragged quickly sends its last position and no queue of old ones.
  void exchange(const void* owner, int what, std::function<void()> run);

  /// exchange() ahead of all that waits: what confirms a stop.
  void exchangeNext(const void* owner, int what, std::function<void()> run);

  /// exchange() for a job that needs the station for itself. Its frame may let others in while it
  /// does not: StationLink::stepAside().
  void alone(const void* owner, int what, std::function<void()> run);

  /// Runs what no user asked for, such as a poll: now, or, when an exchange is in hand, from the
  /// event loop after it and after every command that waits. Owners take turns; each has one in
  /// line at most.
  void background(const void* owner, std::function<void()> run);

  /// Runs `run` at once, also inside an exchange that waits, but never in the middle of a message
  /// that is going out, a CV access's included: then right behind it; and behind the opening of a
  /// line that is gone. This is how a stop gets through. `order` is what a user calls it.
  void urgent(std::function<void()> run, const QString& order = {});

  /// Every message goes out through here, so that an urgent one cannot get in between its bytes.
  void send(const std::function<void()>& write);

  /// Forgets what still waits for `owner`, which is about to go.
  void forget(const void* owner);

  // ---- Whether the line is there ----------------------------------------------------------------

  /// The last message found no way out: the device was pulled, its port does not open.
  bool isGone() const { return gone_; }
  /// Why, a whole sentence; empty while the line is there.
  const QString& goneReason() const { return goneReason_; }
  void noteGone(const QString& reason);
  /// A message went out, or a session opened.
  void noteBack();
  /// Ahead of a command: opens a line that is gone anew, with the sessions that it had. Throws
  /// LinkError when it does not open. Nothing while it is being opened.
  void restore();
  /// What an urgent() that waits for the line to be opened anew is called; empty when none waits.
  QString waitingOrder() const { return heldBack_.empty() ? QString() : heldBack_.back().order; }

  /// Replies to urgent messages that have not been taken yet. Kept by protocols whose replies do
  /// not tell what they reply to: the one whose wait the message got into takes them behind its
  /// own.
  /// Each gets the code of its message's reply, -1 for none.
  std::deque<std::function<void(int code)>> repliesOwed;
  /// How many on the stack take them.
  int replyTakers = 0;

 signals:
  /// The line is gone, or back, or something waits for it.
  void goneChanged();

 private:
  struct Waiting {
    const void* owner;
    int what;
    std::function<void()> run;
  };

  using Queue = std::deque<Waiting>;

  static void put(Queue& queue, Waiting next);
  void run(const std::function<void()>& exchange);
  void runWaiting();
  void wakeBackground();
  void runBackground();
  class Aside;
  std::shared_ptr<void> stepAside();
  bool isOpening() const;
  void runHeldBack(const QString& failure);

  StationLink& link_;
  int depth_ = 0;
  Queue waiting_;
  Queue background_;
  std::unique_ptr<Clock::Alarm> wake_;
  bool gone_ = false;
  QString goneReason_;
  bool alone_ = false;  // the exchange in hand is one of alone(), and needs the line
  std::unique_ptr<Clock::Alarm> wakeAside_;
  bool restoring_ = false;
  struct HeldBack {
    std::function<void()> run;
    QString order;
  };
  std::deque<HeldBack> heldBack_;  // urgent ones, behind the opening
  QString failure_;                // of the opening that they waited for
};

}  // namespace lokari
