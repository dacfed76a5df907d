#include "link/track_stop.h"

#include <QScopedValueRollback>

#include <utility>

#include "base/prompt.h"
#include "link/station_link.h"

namespace lokari {
namespace {

QString textOf(TrackStop::Outcome outcome, const StationKindRow& kind) {
  switch (outcome) {
    case TrackStop::Outcome::NoSession:
      return QStringLiteral("Halt nicht gesendet: Keine Verbindung zur Digitalzentrale ist offen!");
    case TrackStop::Outcome::NotSent:
      return QStringLiteral("Halt nicht gesendet: Die Verbindung zur Digitalzentrale ist weg!");
    case TrackStop::Outcome::NoStop:
      return QStringLiteral("Halt nicht gesendet: %1 hat keinen Halt!")
          .arg(QString::fromUtf16(kind.name));
    default:
      return {};
  }
}

}  // namespace

TrackStop::Agreement::Agreement(TrackStop& stop) : stop_(stop) {
  if (stop_.staysStopped()) stop_.agreement_ = this;
}

TrackStop::Agreement::~Agreement() {
  if (stop_.agreement_ == this) stop_.agreement_ = nullptr;
}

TrackStop::JobAside::JobAside(TrackStop& stop)
    : stop_(stop), job_(std::exchange(stop.link_.runningJob, CommJob::None)) {
  stop_.jobAside_ = this;
}

TrackStop::JobAside::~JobAside() {
  stop_.jobAside_ = nullptr;
  stop_.link_.runningJob = job_;
}

void TrackStop::set(Hold hold) {
  const bool before = isHeld();
  hold_ = hold;
  if (isHeld() != before) emit heldChanged(isHeld());
}

void TrackStop::settle(Hold hold) {
  awaited_.reset();
  known_ = hold;
  set(hold);
}

void TrackStop::noteOrdered(bool stops) {
  const auto after = [](bool stopping) { return stopping ? Hold::Stopped : Hold::None; };
  // What the order before makes of the layout is not known yet.
  if (awaited_ && known_ != after(*awaited_)) known_ = Hold::Unconfirmed;
  awaited_ = stops;
  agreement_ = nullptr;
  set(after(stops));
}

void TrackStop::noteTaken(bool stops) {
  if (awaited_) provedFrom_ = known_;
  settle(stops ? Hold::Stopped : Hold::None);
}

void TrackStop::noteDisproved() {
  awaited_ = isHeld();
  known_ = provedFrom_;
}

void TrackStop::noteFailed(bool stops, bool silent) {
  const bool mayHold = stops && silent && known_ == Hold::None;
  settle(mayHold ? Hold::Unconfirmed : known_);
}

TrackStop::Outcome TrackStop::press() {
  if (link_.runningJob == CommJob::SendFirm) return Outcome::FirmwareTransfer;
  if (!link_.settings().station().cab.available()) return Outcome::NoStop;
  if (link_.commUseCount == 0 || !send) return Outcome::NoSession;
  const Outcome outcome = send();
  // A cancel would end the opening that the stop waits for.
  if (outcome != Outcome::Waiting) cancelJob();
  return outcome;
}

void TrackStop::cancelJob() {
  if (jobAside_ != nullptr) jobAside_->stopped_ = true;
  if (link_.runningJob != CommJob::None && link_.runningJob != CommJob::ProgressOnly) {
    link_.cancelRequested = true;
  }
}

void TrackStop::noteBehind(bool sent) {
  cancelJob();
  if (sent) return;
  // From the event loop: a box must not hold up what the stop waited for.
  tellLater_ = link_.clock().after(0, [this] { tell(Outcome::NotSent); });
}

void TrackStop::pressAndTell() {
  const Outcome outcome = press();
  if (outcome == Outcome::FirmwareTransfer) return link_.prompt().beep();
  tell(outcome);
}

bool TrackStop::pressAndAwait() {
  pressAndTell();
  order_.settle();
  return known_ == Hold::Stopped;
}

void TrackStop::tell(Outcome outcome) {
  const QString text = textOf(outcome, link_.settings().station());
  // Whoever goes on pressing the key gets one box.
  if (text.isEmpty() || telling_) return;
  const QScopedValueRollback telling(telling_, true);
  link_.prompt().message(text, Icon::Warning,
                         QStringLiteral("Bitte die Anlage an der Zentrale anhalten."));
}

void TrackStop::noteSession() {
  if (std::exchange(agreement_, nullptr) != nullptr) settle(Hold::None);
}

bool TrackStop::noteSwitchedOn() {
  if (!staysStopped() || !send) return false;
  // Whatever held until now does not hold any more, unless the stop gets out.
  awaited_.reset();
  known_ = Hold::None;
  const bool repeated = send() != Outcome::NotSent;
  if (!repeated) settle(Hold::None);
  return repeated;
}

}  // namespace lokari
