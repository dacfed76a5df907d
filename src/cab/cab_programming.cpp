// Programming on the main from the cab: what its steps store and send.
#include <QPointer>
#include <QScopedValueRollback>

#include <utility>

#include "cab/cab.h"
#include "cab/cab_line.h"
#include "link/cv_result.h"
#include "link/link_error.h"
#include "link/station_link.h"
#include "link/station_protocol.h"
#include "link/switch_on_question.h"
#include "link/track_stop.h"

namespace lokari {
namespace {

/// Names of exchanges, each with the CV's number; see cab.cpp.
constexpr int kCv = 1000;
constexpr int kCvStorage = 50000;

QString notStored() {
  return QStringLiteral("Der Wert ließ sich nicht speichern.");
}

}  // namespace

void Cab::chooseCV(const QString& name) {
  programming_.show(name);
  emit programmingChanged();
}

// Some stations are told to go on ahead of a CV that is not confirmed at once.
bool Cab::mayWriteCV() {
  const auto leave = askToSwitchOn(link(), StationUse::CvJob);
  if (!leave) return false;
  if (!*leave) return true;
  // Whoever stopped the layout: the go is this cab's. Without it the CV would reach nobody.
  showHeld(true);
  imgStop();
  // It goes out ahead of the step, maybe not at once; sendCV() sees what has become of it.
  return true;
}

void Cab::stepCVUp() {
  if (!mayWriteCV()) return;
  if (const auto step = programming_.stepUp()) writeCV(*step, programming_.progMode());
}

void Cab::stepCVDown() {
  if (!mayWriteCV()) return;
  // The way down takes the method of the decoder window.
  if (const auto step = programming_.stepDown()) writeCV(*step, link().progMode);
}

void Cab::writeCV(const MainProgramming::Step& step, int mode) {
  emit programmingChanged();
  if (isUnloading()) return;
  parts_.records.whenFree([this, self = QPointer<Cab>(this), step, mode] {
    if (!self || isUnloading()) return;
    // Its turn on the line is given away while a box waits for the file.
    line().alone(this, kCvStorage + step.number, [this, step, mode, kept = shared_from_this()] {
      const Entered inside(*this);
      if (isUnloading()) return;
      if (!parts_.records.awaitFree(record_, [this] { return link().stepAside(); })) {
        return stepFailed(step, notStored());
      }
      if (!isUnloading()) queueCV(step, mode);
    });
  });
}

void Cab::queueCV(const MainProgramming::Step& step, int mode) {
  exchange(
      kCv + step.number, [this, step, mode] { sendCV(step, mode); },
      [this, step] {
        if (std::exchange(stepStored_, false)) {
          tellDoubt(step, line().goneReason());
        } else {
          stepFailed(step, line().goneReason());
        }
      });
}

/// The step is in the record ahead of being sent, its mark cleared: whatever ends the program, the
/// record never calls a value read that the decoder may not have.
void Cab::sendCV(const MainProgramming::Step& step, int mode) {
  programming_.take(step);
  failedStep_.clear();
  // The go ahead of it failed, or somebody has stopped the layout since.
  if (asksToSwitchOn(link(), StationUse::CvJob)) {
    return stepFailed(step, QStringLiteral("Die Anlage ist angehalten."));
  }
  const QScopedValueRollback job(link().commJob, CommJob::WriteMain);
  // The last job may have left the other track chosen.
  const QScopedValueRollback track(link().progTrack, false);
  const QScopedValueRollback busy(state_.canBusy, true);
  // A line that is gone says so here, before anything is stored.
  link().protocol().bufferCount();
  // An MX1 knows long addresses by an index only; without one nothing must be written, since its
  // command would reach another vehicle.
  const int known = link().getAddrIndex(address());
  if (known < 0) {
    return stepFailed(step, QStringLiteral("Die Zentrale hat keinen Index für diese Adresse."));
  }
  const int set = programming_.cvSet();
  const StoredChange change =
      parts_.records.storeCV(record_, set, step.number, {.value = step.value});
  if (change.outcome == StoredChange::Outcome::Failed) {
    tellLater(change.fault, QStringLiteral("CV %1 wird deshalb nicht gesendet.").arg(step.number));
    return stepFailed(step, notStored());
  }
  link().pomAddr = known;
  const int settled = programming_.settled(step.number);
  programming_.settle(step);
  // What breaks from here on may have reached the decoder.
  stepStored_ = true;
  const int result = link().WriteCV(step.number, step.value, address(), mode);
  stepStored_ = false;
  if (link().lastCvRefused) {
    programming_.settle({step.number, settled});
    if (change.outcome == StoredChange::Outcome::Stored) {
      const StoredChange back = parts_.records.storeCV(record_, set, step.number, change.before);
      if (back.outcome == StoredChange::Outcome::Failed) tellLater(back.fault);
    }
    return stepFailed(step,
                      QStringLiteral("Die Zentrale hat abgelehnt: %1.").arg(cvResultText(result)));
  }
  if (result < 0) return tellDoubt(step, cvResultText(result));
  emit programmingChanged();
  emit noticeChanged();
}

void Cab::stepFailed(const MainProgramming::Step& step, const QString& reason) {
  const int kept = programming_.settled(step.number);
  programming_.take({step.number, kept});
  failedStep_ = QStringLiteral("CV %1 wurde nicht geschrieben, es bleibt bei %2. %3")
                    .arg(QString::number(step.number), QString::number(kept), reason)
                    .trimmed();
  emit programmingChanged();
  emit noticeChanged();
}

void Cab::tellDoubt(const MainProgramming::Step& step, const QString& reason) {
  failedStep_ = QStringLiteral("Ob CV %1 jetzt %2 ist, ist nicht bekannt. %3")
                    .arg(QString::number(step.number), QString::number(step.value), reason)
                    .trimmed();
  emit programmingChanged();
  emit noticeChanged();
}

}  // namespace lokari
