// What cabs and panels have in common: an address, a title, a part of the station's session, and an
// orderly end although their own exchanges may still wait on the stack.
#pragma once

#include <QObject>
#include <QString>

#include <functional>
#include <memory>

#include "base/station_kind.h"

namespace lokari {

class CabLine;
class Prompt;
class StationLink;

class SlotUnit : public QObject, public std::enable_shared_from_this<SlotUnit> {
  Q_OBJECT

 public:
  SlotUnit(CabLine& line, Prompt& prompt, int address);
  ~SlotUnit() override;

  /// `dc_adr`
  int address() const { return address_; }
  /// Title of the window: name, " (", address, ")".
  const QString& caption() const { return caption_; }
  const QString& labName() const { return labName_; }
  /// The station kind it was opened on.
  const StationKindRow& kind() const { return kind_; }

  /// The steps at load, inside an exchange of the line. Raises `loadFlag`, and ends at once when it
  /// is raised already or the unit is going. Messages go through the prompt.
  void load(bool& loadFlag);
  /// `cmdOK`: the button that ends it.
  void cmdOK() { leave(); }
  /// The user closes it; a vehicle that moves is asked about first.
  virtual void leave() { unload(); }
  /// The end, by whatever road: keeps what was changed and gives the session back. Nothing is
  /// switched. What was asked for before still goes out.
  void unload();
  bool isUnloading() const { return unloading_; }
  /// What the user has to know of the line, in lines of German; empty when all is well.
  virtual QString notice() const;
  /// load() is reading the station.
  bool isLoading() const { return loading_; }

  /// It is going: its slot is free and its window disappears. Called once.
  std::function<void()> onUnload;
  /// Nothing of it stands on the stack any more: its window may be deleted. Called once, last.
  std::function<void()> onGone;

 signals:
  /// The reading at load has ended, with or without an answer; messages follow.
  void answered();
  /// unload() has begun.
  void leaving();
  /// load() has ended: show everything.
  void loaded();
  /// notice() changed.
  void noticeChanged();

 protected:
  /// Stands on the stack while a public operation runs: keeps the object, and tells onGone behind
  /// the outermost one after unload().
  class Entered {
   public:
    explicit Entered(SlotUnit& unit);
    ~Entered();
    Entered(const Entered&) = delete;
    Entered& operator=(const Entered&) = delete;

   private:
    std::shared_ptr<SlotUnit> unit_;
  };

  /// Names of exchanges from here on are distinct().
  static constexpr int kFirstDistinct = 100000;

  CabLine& line() const { return line_; }
  StationLink& link() const;
  Prompt& prompt() const { return prompt_; }
  void setTitle(const QString& name);

  /// Runs an exchange by the order of the line; see CabLine::exchange(). A line that is gone is
  /// opened anew ahead of it; a failure is the line's to tell, `failed` learns of it.
  void exchange(int what, std::function<void()> run, std::function<void()> failed = {});
  /// The same for a message that gets through at once; see CabLine::urgent(), also for `order`.
  /// `failed` learns why it did not go out.
  void urgent(const QString& order, std::function<void()> run,
              std::function<void(const QString& reason)> failed);
  /// The same for what can wait; see CabLine::background().
  void background(std::function<void()> run);
  /// The name of an exchange that none may take the place of.
  int distinct() { return ++distinct_; }
  /// Opens the session, or joins it; false when it does not open.
  bool openSession();
  /// The messages of a reading that gave nothing, behind load(): where the session does not open,
  /// that, once, with the reason below; and that the station has told nothing.
  void tellNoAnswer() { owesNoAnswer_ = true; }
  /// The user has given up waiting for the station.
  bool isGivenUp() const;
  /// Ahead of load(), on kinds whose link stays open: the opener's session becomes this one's.
  void adoptSession() { ++sessions_; }
  /// Gives all of it back.
  void finishSessions();
  bool hasSession() const { return sessions_ > 0; }

  /// The steps at load.
  virtual void onLoad() = 0;
  /// unload() has begun.
  virtual void onUnloading() {}

 private:
  enum class Opening { Reopens, AsItIs };
  /// False when the line was gone.
  bool run(const std::function<void()>& exchange, Opening opening);
  /// Throws LinkError when the line is gone and does not come back.
  void talk(const std::function<void()>& exchange, Opening opening);
  /// The options still name the kind that it was opened on; another one would not understand it.
  bool hasStation() const;
  void release();
  void showNoAnswer();

  CabLine& line_;
  Prompt& prompt_;
  int address_;
  const StationKindRow& kind_;
  QString caption_;
  QString labName_;
  int sessions_ = 0;
  QString openFailure_;  // of the last openSession()
  QString openReason_;
  int distinct_ = kFirstDistinct;
  int entered_ = 0;
  bool loading_ = false;
  bool owesNoAnswer_ = false;
  bool unloading_ = false;
  bool released_ = false;
};

}  // namespace lokari
