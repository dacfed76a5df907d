#include "cli/cab_session.h"

#include <limits>
#include <utility>

#include "cli/command.h"
#include "cli/console.h"
#include "link/link_error.h"
#include "link/station_protocol.h"
#include "link/track_stop.h"

namespace lokari {
namespace {

constexpr Millis kAnswerTime = 500;

const QString kUnconfirmed =
    QStringLiteral("Die Digitalzentrale hat einen Befehl nicht bestätigt!");

}  // namespace

CabSession::CabSession(CliContext& context) : context_(context), line_(context.link) {
  // Somebody who has given up before it began wants no station to be woken.
  if (!context.interrupt.raised) open();
}

CabSession::~CabSession() {
  close();
}

bool CabSession::open() {
  const QString failure = context_.link.openForJob(false);
  open_ = failure.isEmpty();
  opened_ = opened_ || open_;
  if (open_) return true;
  context_.console.message(failure);
  const QString& reason = context_.link.openFailureReason();
  if (!reason.isEmpty()) context_.console.message(reason);
  return false;
}

void CabSession::close() {
  if (open_) context_.link.FinishComm();
  open_ = false;
}

bool CabSession::mayRead(int readings) {
  if (!open_ || context_.link.cancelRequested) return false;
  if (readings == 0 || context_.settings.station().transport != Transport::Can) return true;
  // A CAN session that hears nothing is worth being opened anew.
  close();
  return open();
}

void CabSession::prepareReading() {
  if (context_.settings.station().cab.dropsInputAtLoad) context_.link.protocol().dropInput();
}

void CabSession::tellNoState() {
  failed_ = true;
  if (context_.interrupt.raised) return;
  context_.prompt.message(QStringLiteral("Keine Daten von Digitalzentrale erhalten"));
}

void CabSession::exchange(const std::function<void()>& run) {
  line_.exchange(this, 0, [this, &run] {
    try {
      run();
    } catch (const LinkError& error) {
      lost_ = error.message();
    }
  });
}

bool CabSession::command(const std::function<void()>& send) {
  if (!open_ || context_.interrupt.raised) return false;
  const int beeps = context_.prompt.beeps();
  lost_.clear();
  exchange(send);
  return confirmed(beeps);
}

bool CabSession::stop(const std::function<void()>& send) {
  if (!open_) return false;
  const int beeps = context_.prompt.beeps();
  lost_.clear();
  context_.link.trackStop().order().drop();
  line_.urgent([this, &send] {
    try {
      send();
    } catch (const LinkError& error) {
      lost_ = error.message();
    }
  });
  // What was told as missing may have come since.
  if (isHeardOf()) return true;
  return confirmed(beeps);
}

/// Whether the station has confirmed the last stop or go.
bool CabSession::isHeardOf() {
  using Outcome = LayoutOrder::Outcome;
  const LayoutOrder& order = context_.link.trackStop().order();
  const Clock& clock = context_.link.clock();
  // Who presses Ctrl-C still hears of a stop that a station confirms as usual.
  const Millis hurried = clock.now() + kAnswerTime;
  context_.link.clock().waitUntil(
      [&] {
        return order.outcome() != Outcome::Awaited ||
               (context_.interrupt.raised && clock.now() >= hurried);
      },
      Clock::kNever);
  if (order.outcome() == Outcome::Awaited) lost_ = kUnconfirmed;
  return order.outcome() == Outcome::Confirmed;
}

void CabSession::tellUnconfirmed() {
  const QString fault = portFault();
  tellOnce(fault.isEmpty() ? kUnconfirmed : fault);
}

void CabSession::tellRefused() {
  failed_ = true;
  tellUnconfirmed();
}

void CabSession::tellStands(LayoutStands stands) {
  if (std::exchange(toldStands_, stands) == stands || stands == LayoutStands::No) return;
  context_.console.message(layoutStandsText(stands));
}

void CabSession::tellOnce(const QString& fault) {
  if (!std::exchange(toldUnsent_, true)) context_.console.message(fault);
}

bool CabSession::confirmed(int beepsBefore) {
  QString fault = lost_.isEmpty() ? portFault() : std::exchange(lost_, {});
  if (fault.isEmpty()) {
    if (context_.prompt.beeps() == beepsBefore) return true;
    fault = kUnconfirmed;
  }
  failed_ = true;
  tellOnce(fault);
  return false;
}

void CabSession::fail(const QString& text) {
  failed_ = true;
  if (!context_.interrupt.raised) context_.console.message(text);
}

/// What was written may be lost with a device that has vanished since.
QString CabSession::portFault() {
  try {
    context_.link.protocol().arrived(std::numeric_limits<qint32>::max());
    return {};
  } catch (const LinkError& error) {
    return error.message();
  }
}

ExitStatus CabSession::status() const {
  if (!opened_ && !context_.interrupt.raised) return ExitStatus::WrongCall;
  return failed_ || context_.interrupt.raised ? ExitStatus::Failed : ExitStatus::Done;
}

void checkHasCabs(const CliContext& context, const QString& job) {
  const StationKindRow& kind = context.settings.station();
  if (kind.cab.available()) return;
  throw WrongCall(QStringLiteral("%1 kann nicht %2!").arg(QString::fromUtf16(kind.name), job));
}

}  // namespace lokari
