#include "link/station_link.h"

#include <QScopedValueRollback>

#include <algorithm>

#include "base/clock.h"
#include "link/can_log.h"
#include "link/comm_view.h"
#include "link/cv_frame.h"
#include "link/link_error.h"
#include "link/protocol_table.h"
#include "link/serial_line.h"
#include "link/station_protocol.h"
#include "link/trace.h"
#include "link/traced_transports.h"
#include "link/track_stop.h"

namespace lokari {
namespace {

constexpr Millis kShortPause = 100;

QString openFailure(int step) {
  return QStringLiteral("Kann Kommunikationsschnittstelle nicht öffnen (%1)!").arg(step);
}

/// Whether two kinds are spoken to on one and the same open line.
bool sharesLine(const StationKindRow& one, const StationKindRow& other) {
  return one.family == other.family && one.transport == Transport::Serial &&
         other.transport == Transport::Serial && one.handshaking == other.handshaking;
}

}  // namespace

struct StationLink::Impl {
  Impl(const Settings& ownerSettings, Clock& ownerClock, Prompt& ownerPrompt, Transports lines)
      : settings(ownerSettings),
        clock(ownerClock),
        prompt(ownerPrompt),
        traced(lines.trace != nullptr
                   ? std::make_unique<TracedTransports>(lines, ownerSettings, ownerClock)
                   : nullptr),
        transports(traced ? traced->transports() : lines) {}

  const Settings& settings;
  Clock& clock;
  Prompt& prompt;
  std::unique_ptr<TracedTransports> traced;  ///< null without a trace
  Transports transports;
  CommView* view = nullptr;
  std::unique_ptr<StationProtocol> protocol;
  StationKind protocolKind = StationKind::Mx1;  ///< of `protocol`
  QString openFailureReason;
  std::unique_ptr<TrackStop> trackStop;
};

StationLink::StationLink(const Settings& settings, Clock& clock, Prompt& prompt,
                         Transports transports)
    : impl_(std::make_unique<Impl>(settings, clock, prompt, transports)) {
  impl_->trackStop = std::make_unique<TrackStop>(*this);
  if (canLog() != nullptr) canLog()->begin();
  followTrace();
}

StationLink::~StationLink() = default;

StationProtocol& StationLink::protocol() {
  const StationKindRow& kind = settings().station();
  if (impl_->protocol && impl_->protocolKind != kind.kind) {
    // The options changed: the old station's transport must not stay open behind the new one's. A
    // test that finds another of a family's interfaces goes on with it on the line it has.
    if (!sharesLine(kind, stationKind(impl_->protocolKind))) impl_->protocol->close(true);
    impl_->protocol.reset();
  }
  if (!impl_->protocol) {
    impl_->protocol = makeProtocol(kind.family, *this);
    impl_->protocolKind = kind.kind;
  }
  return *impl_->protocol;
}

QString StationLink::initComm(bool, bool, bool progOn) {
  if (const auto tell = onSessionOpening) tell();
  ++commUseCount;
  cancelRequested = cancelRequested && cancelStays;
  progTrack = progOn;
  impl_->openFailureReason.clear();
  protocol().beginSession();
  int step = 0;
  QString failure;
  try {
    const QScopedValueRollback opening(opening_, true);
    if (lineLost && commUseCount > 1) reopenFor(commUseCount - 1, step);
    protocol().open(progOn, step);
    lineLost = false;
  } catch (const LinkError& error) {
    impl_->openFailureReason = error.message();
    failure = openFailure(step);
  }
  if (failure.isEmpty()) trackStop().noteSession();
  if (onSessionTried) onSessionTried(failure.isEmpty());
  return failure;
}

QString StationLink::reopen() {
  const QScopedValueRollback opening(opening_, true);
  cancelRequested = cancelRequested && cancelStays;
  int step = 0;
  try {
    reopenFor(commUseCount, step);
  } catch (const LinkError& error) {
    return error.message();
  }
  lineLost = false;
  return {};
}

void StationLink::reopenFor(int users, int& step) {
  // Some kinds take a part back when they fail.
  const QScopedValueRollback count(commUseCount);
  protocol().reopen(users, step);
}

QString StationLink::openForJob(bool progOn) {
  const int users = commUseCount;
  const QString failure = initComm(true, true, progOn);
  // Some kinds take their part back themselves.
  while (!failure.isEmpty() && commUseCount > users) FinishComm();
  return failure;
}

const QString& StationLink::openFailureReason() const {
  return impl_->openFailureReason;
}

void StationLink::endcomm(bool leaveMode, bool progOn) {
  // A session that does not open says goodbye inside its opening.
  const QScopedValueRollback farewell(farewell_, Farewell::Running);
  if (view() != nullptr) view()->setFarewell(true);
  lateRefusal.clear();
  Delay(1);
  try {
    protocol().farewell(leaveMode, progOn);
  } catch (const LinkError&) {
    // The line is gone, and with it the one who would hear the farewell.
  }
  lastCvFailed = false;
  // Behind the last session nobody hears what a stop of the farewell is answered.
  if (commUseCount == 1) trackStop().order().settle();
  FinishComm();
  if (view() != nullptr) view()->setFarewell(false);
}

void StationLink::hurryFarewell() {
  if (isSayingGoodbye()) farewell_ = Farewell::Hurried;
}

void StationLink::FinishComm() {
  if (commUseCount > 0) --commUseCount;
  if (impl_->protocol) impl_->protocol->close(commUseCount == 0);
}

qint32 StationLink::getBufferCount() const {
  return impl_->protocol ? impl_->protocol->bufferCount() : 0;
}

void StationLink::WaitForData(qint32 want) {
  WaitForData(want, settings().timeoutVal);
}

void StationLink::WaitForData(qint32 want, int timeoutSeconds) {
  StationProtocol& station = protocol();
  Clock& time = clock();
  // Whole seconds are counted and must exceed the limit, so a limit of T lasts a little over T.
  const qint64 lastSecond = time.wholeSeconds() + timeoutSeconds;
  station.beginWait();
  time.pump();
  time.waitUntil([&] { return station.arrived(want) || cancelRequested || isFarewellHurried(); },
                 (lastSecond + 1) * 1000);
  time.pump();
}

void StationLink::Delay(int seconds) {
  // The short pauses pace the line: they last also when the user is in a hurry.
  if (seconds == 0) return DelayMsec(kShortPause);
  if (seconds < 0) return;
  clock().waitUntil([this] { return isFarewellHurried(); }, clock().now() + Millis{1000} * seconds);
}

void StationLink::DelayMsec(int ms) {
  clock().waitUntil([] { return false; }, clock().now() + ms);
}

void StationLink::waitUntilSent() {
  SerialLine& line = serial();
  const Millis latest = clock().now() + Millis{1000} * settings().timeoutVal;
  while (line.isOpen() && !cancelRequested && clock().now() < latest) {
    const Millis left = line.untilSent();
    if (left <= 0) return;
    clock().waitUntil([this] { return cancelRequested; }, std::min(clock().now() + left, latest));
  }
}

int StationLink::ReadCV(int cv, int address) {
  const auto exchange = protocol().readCv({.cv = cv, .address = address});
  return runCvFrame(*this, *exchange);
}

int StationLink::WriteCV(int cv, int value, int address, int mode) {
  const auto exchange =
      protocol().writeCv({.cv = cv, .address = address, .value = value, .mode = mode});
  return runCvFrame(*this, *exchange);
}

int StationLink::getAddrIndex(int address) {
  return protocol().addrIndex(address);
}

void StationLink::followTrace() {
  if (impl_->transports.trace != nullptr) impl_->transports.trace->follow(settings());
}

QString StationLink::tracePath() const {
  return impl_->transports.trace != nullptr ? impl_->transports.trace->path() : QString();
}

TrackStop& StationLink::trackStop() {
  return *impl_->trackStop;
}

void StationLink::setView(CommView* view) {
  impl_->view = view;
}

CommView* StationLink::view() const {
  return impl_->view;
}

const Settings& StationLink::settings() const {
  return impl_->settings;
}

Clock& StationLink::clock() const {
  return impl_->clock;
}

Prompt& StationLink::prompt() const {
  return impl_->prompt;
}

SerialLine& StationLink::serial() const {
  return impl_->transports.serial;
}

UdpSocket& StationLink::udp() const {
  return impl_->transports.udp;
}

CanDriver& StationLink::can() const {
  return impl_->transports.can;
}

CanLog* StationLink::canLog() const {
  return settings().canLog ? impl_->transports.canLog : nullptr;
}

}  // namespace lokari
