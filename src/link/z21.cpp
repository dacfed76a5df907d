#include "link/z21.h"

#include <utility>

#include "base/clock.h"
#include "link/link_error.h"
#include "link/station_link.h"
#include "link/track_stop.h"
#include "link/udp_socket.h"
#include "link/z21_codec.h"
#include "link/z21_form.h"

namespace lokari {
namespace {

constexpr int kOpenRounds = 20;
constexpr int kAnswerRounds = 10;
constexpr int kRound = 100;  // ms
/// The station forgets who is silent for a minute, and with him what he has asked for.
constexpr Millis kSilence = 50000;

}  // namespace

Z21Protocol::~Z21Protocol() {
  link().udp().onArrival = nullptr;
  link().udp().onReceived = nullptr;
  link().udp().onRefused = nullptr;
  link().udp().onClosed = nullptr;
}

void Z21Protocol::open(bool, int& step) {
  // Others may still have their sessions of a socket that went: what they have stopped stays so.
  const bool first = !z21Connected;
  if (first) connectStation(step, !link().trackStop().staysStopped());
  subscribe();
  link().Delay(1);
  if (first) showStanding();
}

const Z21Form& Z21Protocol::form() const {
  return z21Form(link().settings());
}

void Z21Protocol::subscribe() {
  if (!form().subscribes) return;
  z21Send(z21::kSubscribe);
  z21Send(z21::kAskStatus);
}

void Z21Protocol::showStanding() {
  if (!form().subscribes) return;
  // A datagram is lost now and then.
  if (track_.state() == Z21Track::State::Unknown) {
    z21Send(z21::kAskStatus);
    const Millis latest = link().clock().now() + Millis{kAnswerRounds} * kRound;
    link().clock().waitUntil(
        [this] { return track_.state() != Z21Track::State::Unknown || link().cancelRequested; },
        latest);
  }
  dropInput();
  TrackStop& stop = link().trackStop();
  if (!track_.isStanding() || stop.isHeld()) return;
  // Nobody has switched it on, so what the cabs have to offer is to let it go.
  showStopped();
}

void Z21Protocol::reopen(int, int& step) {
  const bool isOpen = link().udp().state() == UdpSocket::kOpen;
  if (isOpen && z21Connected) return;
  try {
    connectStation(step, false);
    subscribe();
  } catch (const LinkError&) {
    // Left open it would swallow messages that reach nobody.
    link().udp().close();
    throw;
  }
}

void Z21Protocol::connectStation(int& step, bool powerOn) {
  UdpSocket& socket = link().udp();
  const auto inRounds = [&](int rounds, const auto& done) {
    for (int i = 0; i < rounds && !done() && !isHopeless() && !link().cancelRequested; ++i) {
      link().DelayMsec(kRound);
    }
    if (done()) return;
    step = socket.state();
    throw LinkError(whyNotOpen());
  };

  socket.close();
  link().clock().pump();
  z21Connected = false;
  portClosed_ = false;
  socket.onArrival = [this](qsizetype) { datagramArrived(); };
  socket.onReceived = [this](const QByteArray& datagram) { hear(datagram); };
  socket.onRefused = [this] { portClosed_ = true; };
  socket.onClosed = [this] { z21Connected = false; };
  socket.open(link().settings().ipAddr, kStationPort);
  inRounds(kOpenRounds, [&] { return socket.state() == UdpSocket::kOpen; });
  z21ReplyLen = 0;
  unread_.clear();
  checksOfBytes_.reset();
  track_.clear();
  programmed_ = false;
  if (powerOn && form().switchesOnAtLogOn) {
    z21Send(z21::kPowerOn);
    link().Delay(0);
    link().trackStop().noteSwitchedOn();
  }
  z21Send(z21::kAskSerialNumber);
  inRounds(kAnswerRounds, [&] { return z21Connected; });
}

bool Z21Protocol::isHopeless() const {
  return portClosed_ || !link().udp().fault().isEmpty();
}

/// What lies behind a session that does not open.
QString Z21Protocol::whyNotOpen() const {
  if (!link().udp().fault().isEmpty()) return link().udp().fault();
  if (portClosed_) {
    return QStringLiteral("Unter der Adresse %1 gibt es ein Gerät, aber keine Z21!")
        .arg(link().settings().ipAddr);
  }
  return QStringLiteral("Keine Antwort von der Z21!");
}

void Z21Protocol::farewell(bool leaveMode, bool progOn) {
  if (progOn && form().leavesAsFound) {
    leaveProgramming();
  } else if (progOn) {
    z21Wanted = z21::powerOnHead();
    z21Send(z21::kPowerOn);
    link().Delay(0);
    z21ReplyLen = 0;
    link().trackStop().noteSwitchedOn();
  }
  if (leaveMode && link().commJob != CommJob::WriteMain) link().Delay(1);
}

/// What stood goes on standing, also where nobody knows, or where it was stopped meanwhile.
void Z21Protocol::leaveProgramming() {
  if (!std::exchange(programmed_, false)) return;
  TrackStop& stop = link().trackStop();
  if (track_.state() == Z21Track::State::On && !stop.mayStand()) {
    z21Send(z21::kPowerOn);
    link().Delay(0);
    stop.noteSwitchedOn();
  } else {
    z21Send(z21::kPowerOff);
    link().Delay(0);
    showStopped();
  }
}

void Z21Protocol::close(bool lastUser) {
  // Cabs, and a job beside them, share the one socket; opening it anew would switch the track on.
  if (!lastUser) return;
  z21Connected = false;
  if (link().udp().state() == UdpSocket::kOpen) {
    try {
      z21Send(z21::kLogOff);
    } catch (const LinkError&) {
      // Nobody hears the logoff; the station forgets a silent client by itself.
    }
    link().Delay(0);
    link().udp().close();
  }
  z21Connected = false;
}

bool Z21Protocol::arrived(qint32 want) {
  return z21ReplyLen >= want || refused_ || portClosed_;
}

void Z21Protocol::dropInput() {
  unread_.clear();
  while (!link().udp().takeDatagram().isEmpty()) {
  }
}

void Z21Protocol::z21Send(QStringView text) {
  const auto data = z21::toBytes(text);
  if (!data) throw LinkError(QStringLiteral("Ungültige Nachricht an die Z21: ") + text.toString());
  if (data->isEmpty()) return;
  const bool forgotten = z21Connected && link().clock().now() - spokeAt_ >= kSilence;
  if (forgotten && form().subscribes) {
    // What it told meanwhile, others heard.
    send(*z21::toBytes(z21::kSubscribe));
    send(*z21::toBytes(z21::kAskStatus));
  }
  send(form().checksOfBytes ? z21::withByteChecksum(*data) : *data);
}

void Z21Protocol::send(const QByteArray& message) {
  link().udp().send(message);
  portClosed_ = false;
  spokeAt_ = link().clock().now();
}

void Z21Protocol::beginCvOperation(int cv) {
  z21ReplyLen = 0;
  z21LastReply.clear();
  cvResult_ = z21::cvResultHead(cv);
  refused_ = false;
  programmed_ = programmed_ || link().progTrack;
  unread_.clear();
  for (QByteArray old = link().udp().takeDatagram(); !old.isEmpty();
       old = link().udp().takeDatagram()) {
    unread_.push_back(old);
  }
}

void Z21Protocol::endCvOperation() {
  z21ReplyLen = 0;
  cvResult_.reset();
  refused_ = false;
}

bool Z21Protocol::isSound(const QByteArray& message) {
  const z21::Checksums sums = z21::checksumsOf(message);
  if (sums.ofBytes == sums.ofText) return sums.ofBytes;
  if (!checksOfBytes_) checksOfBytes_ = sums.ofBytes;
  return *checksOfBytes_ == sums.ofBytes;
}

void Z21Protocol::datagramArrived() {
  if (!z21Connected) {
    z21Connected = true;
    link().udp().takeDatagram();
    return;
  }
  while (!z21Wanted.isEmpty() && !unread_.empty()) {
    const QByteArray old = unread_.front();
    unread_.pop_front();
    lookThrough(old, false);
  }
  if (!z21Wanted.isEmpty()) lookThrough(link().udp().takeDatagram(), true);
}

void Z21Protocol::hear(const QByteArray& datagram) {
  z21::DatagramReader reader(datagram);
  LayoutOrder& order = link().trackStop().order();
  while (const auto message = reader.next()) {
    const Z21Track::State before = track_.state();
    track_.hear(*message);
    if (z21::tellsOff(*message)) order.hear(LayoutNews::Off);
    if (z21::tellsOn(*message)) order.hear(LayoutNews::On);
    if (z21::tellsUnknown(*message)) order.hear(LayoutNews::Refused);
    if (track_.state() != before && track_.state() == Z21Track::State::On) noteOn();
  }
}

/// That it stands is the station's word, and no cab's doing.
void Z21Protocol::showStopped() {
  link().trackStop().noteTaken(true);
  link().trackStop().showToAll();
}

/// Somebody has switched it on: what stood, also by a stop of ours, runs. Ahead of a stop whose
/// word is awaited it is old news.
void Z21Protocol::noteOn() {
  TrackStop& stop = link().trackStop();
  if (!form().subscribes || stop.order().outcome() == LayoutOrder::Outcome::Awaited) return;
  stop.noteTaken(false);
}

bool Z21Protocol::isAwaited(const QByteArray& message) const {
  if (cvResult_) {
    if (z21::answers(*cvResult_, message)) return true;
    if (z21::isTrackNews(message)) return false;
  }
  return z21::answers(z21Wanted, message);
}

bool Z21Protocol::concernsWait(const QByteArray& message) const {
  return !cvResult_ || !form().repeatsBehindNews || z21::endsCvOperation(message);
}

bool Z21Protocol::lookThrough(const QByteArray& datagram, bool keepOthers) {
  z21::DatagramReader reader(datagram);
  QByteArray last;
  while (const auto message = reader.next()) {
    if (isAwaited(*message)) {
      z21LastReply = *message;
      z21ReplyLen = static_cast<int>(message->size());
      z21Wanted.clear();
      return true;
    }
    // A refusal is kept even when news follow it in its datagram: it is the answer.
    if (!z21::endsCvOperation(last) && concernsWait(*message)) last = *message;
  }
  if (keepOthers && !refused_ && !last.isEmpty()) {
    z21LastReply = last;
    refused_ = cvResult_ && z21::endsCvOperation(last);
  }
  return false;
}

std::unique_ptr<StationProtocol> makeZ21Protocol(StationLink& link) {
  return std::make_unique<Z21Protocol>(link);
}

}  // namespace lokari
