#include "cab/slot_unit.h"

#include <QScopedValueRollback>

#include <utility>

#include "base/prompt.h"
#include "cab/cab_line.h"
#include "link/link_error.h"
#include "link/station_link.h"

namespace lokari {

SlotUnit::Entered::Entered(SlotUnit& unit) : unit_(unit.shared_from_this()) {
  ++unit_->entered_;
}

SlotUnit::Entered::~Entered() {
  if (--unit_->entered_ > 0 || !unit_->released_) return;
  if (const auto tell = std::exchange(unit_->onGone, nullptr)) tell();
}

SlotUnit::SlotUnit(CabLine& line, Prompt& prompt, int address)
    : line_(line), prompt_(prompt), address_(address), kind_(line.link().settings().station()) {
  connect(&line_, &CabLine::goneChanged, this, &SlotUnit::noticeChanged);
}

SlotUnit::~SlotUnit() = default;

QString SlotUnit::notice() const {
  if (!line_.isGone()) return {};
  const QString gone = QStringLiteral("Keine Verbindung zur Zentrale. %1").arg(line_.goneReason());
  const QString order = line_.waitingOrder();
  if (order.isEmpty()) return gone.trimmed();
  return QStringLiteral("%1 ist noch nicht gesendet: Die Verbindung wird gerade neu geöffnet.\n%2")
      .arg(order, gone)
      .trimmed();
}

StationLink& SlotUnit::link() const {
  return line_.link();
}

void SlotUnit::setTitle(const QString& name) {
  labName_ = name;
  caption_ = QStringLiteral("%1 (%2)").arg(name).arg(address_);
}

void SlotUnit::load(bool& loadFlag) {
  const Entered entered(*this);
  if (unloading_ || std::exchange(loadFlag, true)) return;
  {
    const QScopedValueRollback loading(loading_, true);
    onLoad();
  }
  emit loaded();
  if (std::exchange(owesNoAnswer_, false) && !unloading_) showNoAnswer();
}

void SlotUnit::unload() {
  const Entered entered(*this);
  if (std::exchange(unloading_, true)) return;
  emit leaving();
  onUnloading();
  if (onUnload) onUnload();
  // Behind what was asked for before, and never under an exchange that waits for its answer.
  line_.exchange(this, distinct(), [this, self = shared_from_this()] {
    const Entered inside(*this);
    release();
  });
}

void SlotUnit::release() {
  line_.forget(this);
  finishSessions();
  released_ = true;
}

bool SlotUnit::openSession() {
  ++sessions_;
  openFailure_ = link().initComm(true, false, false);
  openReason_ = link().openFailureReason();
  if (openFailure_.isEmpty()) {
    line_.noteBack();
    return true;
  }
  // Behind the message the window says what it was.
  line_.noteGone(openReason_.isEmpty() ? openFailure_ : openReason_);
  return false;
}

void SlotUnit::showNoAnswer() {
  // The others go on while somebody reads.
  const auto aside = link().stepAside();
  if (!openFailure_.isEmpty()) prompt_.message(openFailure_, Icon::Warning, openReason_);
  prompt_.message(QStringLiteral("Keine Daten von Digitalzentrale erhalten"), Icon::Warning);
}

bool SlotUnit::isGivenUp() const {
  return link().cancelRequested && !unloading_;
}

void SlotUnit::finishSessions() {
  for (; sessions_ > 0; --sessions_) link().FinishComm();
}

bool SlotUnit::hasStation() const {
  return link().settings().baseUnit == kind_.kind;
}

void SlotUnit::talk(const std::function<void()>& exchange, Opening opening) {
  if (opening == Opening::Reopens) line_.restore();
  exchange();
  line_.noteBack();
}

bool SlotUnit::run(const std::function<void()>& exchange, Opening opening) {
  const Entered entered(*this);
  // What ended another job must not end the waits of this one. A unit that is going waits no more.
  if (!unloading_) link().cancelRequested = false;
  if (!hasStation()) return true;
  try {
    talk(exchange, opening);
    return true;
  } catch (const LinkError& error) {
    // The lamps and arrows keep what the user did. A poll that has not tried to open the line knows
    // no better why it is gone.
    if (opening == Opening::Reopens || !line_.isGone()) line_.noteGone(error.message());
    return false;
  }
}

void SlotUnit::exchange(int what, std::function<void()> run, std::function<void()> failed) {
  const Entered entered(*this);
  line_.exchange(
      this, what,
      [this, self = shared_from_this(), job = std::move(run), tellFailure = std::move(failed)] {
        const Entered inside(*this);
        if (!this->run(job, Opening::Reopens) && tellFailure) tellFailure();
      });
}

void SlotUnit::urgent(const QString& order, std::function<void()> run,
                      std::function<void(const QString&)> failed) {
  const Entered entered(*this);
  line_.urgent(
      [this, self = shared_from_this(), job = std::move(run), tellFailure = std::move(failed)] {
        const Entered inside(*this);
        if (!hasStation()) {
          tellFailure(QStringLiteral("In den Optionen steht jetzt eine andere Zentrale."));
          return;
        }
        try {
          talk(job, Opening::Reopens);
        } catch (const LinkError& error) {
          line_.noteGone(error.message());
          tellFailure(error.message());
        }
      },
      order);
}

void SlotUnit::background(std::function<void()> run) {
  const Entered entered(*this);
  // Nobody waits for a poll: where the line has to be opened anew, the next command does it.
  line_.background(this, [this, self = shared_from_this(), job = std::move(run)] {
    this->run(job, Opening::AsItIs);
  });
}

}  // namespace lokari
