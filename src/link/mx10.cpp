#include "link/mx10.h"

#include <algorithm>

#include "base/bytes.h"
#include "link/dotted_address.h"
#include "link/mx10_codec.h"
#include "link/station_link.h"
#include "link/track_stop.h"

namespace lokari {
namespace {

constexpr int kOpenTries = 3;
constexpr int kDriver = 7;
constexpr int kParameter = 8;
constexpr int kBitTiming = 0x031C;  // 125 kbit/s

}  // namespace

Mx10Protocol::Mx10Protocol(StationLink& link)
    : StationProtocol(link), can_(link.can(), link.canLog()) {}

/// What lies behind the number of a step.
LinkError Mx10Protocol::whyNotOpen() const {
  const Settings& settings = link().settings();
  const bool byAddress = settings.station().usesIpAddress;
  if (!can_.fault().isEmpty()) return LinkError(can_.fault());
  if (byAddress && !dottedAddress(settings.ipAddr)) return LinkError(noAddress(settings.ipAddr));
  if (byAddress && can_.isRefused()) {
    return LinkError(QStringLiteral("Unter der Adresse %1 gibt es ein Gerät, aber keinen MX10!")
                         .arg(settings.ipAddr));
  }
  return LinkError(QStringLiteral("Keine Verbindung zum MX10!"));
}

void Mx10Protocol::giveUp(bool progOn) {
  // The farewell closes the driver, which then has nothing more to tell.
  const LinkError reason = whyNotOpen();
  link().endcomm(false, progOn);
  throw reason;
}

void Mx10Protocol::open(bool progOn, int& step) {
  const Settings& settings = link().settings();
  const int port = settings.station().usesIpAddress ? 0 : settings.comPort;
  int code = 0;
  for (int i = 0; i < kOpenTries; ++i) {
    if (i > 0) link().Delay(1);
    if (link().cancelRequested) break;
    step = 1903;
    code = can_.canOpen(kDriver, port, kParameter, kBitTiming,
                        {.ipAddr = settings.ipAddr, .baudrate = settings.baudrate});
    if (code == 0 || code == ModCan::kAlreadyOpen) break;
  }
  if (code != 0 && code != ModCan::kAlreadyOpen) {
    step = code;
    throw whyNotOpen();
  }

  const bool isFirst = code != ModCan::kAlreadyOpen;
  try {
    bool loggedOn = true;
    if (isFirst) {
      connectStation(step);
      step = can_.canWrite(mx10::logOn());
      loggedOn = step == 0;
    }
    if (progOn && loggedOn) switchToProgrammingTrack(step);
  } catch (const LinkError&) {
    // Left open, a vanished device would pass for a running session at the next try.
    if (isFirst && can_.isOpen()) close(true);
    throw;
  }
}

void Mx10Protocol::reopen(int users, int& step) {
  // An interface that vanished still counts as open, and a station whose network was away has
  // forgotten who logged on.
  close(true);
  open(false, step);
  for (int user = 1; user < users; ++user) open(false, step);
}

void Mx10Protocol::connectStation(int& step) {
  link().lastCvFailed = false;
  step = 1904;
  link().WaitForData(mx10::kWantAnnouncement);
  step = 1905;
  if (canRxMsg.LEN == 0) {
    step = 1901;
    giveUp(false);
  }
  mx10Nid = wordLow(static_cast<qint32>(canRxMsg.ID));
  step = 1906;
  mx10Serial = mx10::serialNumber(canRxMsg);
  step = 1908;
  link().Delay(0);
  ClearMX10Input();
}

void Mx10Protocol::switchToProgrammingTrack(int& step) {
  if (can_.canWrite(mx10::toProgrammingTrack(mx10Nid)) != 0) {
    step = 1902;
    giveUp(true);
  }
  step = 1920;
  link().WaitForData(mx10::kWantTrackState);
  step = 1921;
  if (canRxMsg.LEN == 0) {
    step = 1922;
    giveUp(false);
  }
  link().Delay(2);
  ClearMX10Input();
}

void Mx10Protocol::farewell(bool, bool progOn) {
  // A station that does not take it, or does not answer, gets no second one: the transport closes.
  if (!progOn || can_.canWrite(mx10::toNormal(mx10Nid)) != 0) return;
  link().WaitForData(mx10::kWantTrackState);
  if (canRxMsg.LEN == 0) return;
  link().Delay(1);
  ClearMX10Input();
}

void Mx10Protocol::close(bool lastUser) {
  do {
    can_.canClose();
  } while (lastUser && can_.isOpen());
  if (can_.isOpen()) return;
  mx10Nid = 0;
  mx10Serial = 0;
}

bool Mx10Protocol::take(CanMessage& message) {
  if (can_.canRead(message) != 0) return false;
  LayoutOrder& order = link().trackStop().order();
  if (const auto power = mx10::trackPower(message)) {
    order.hear(*power ? LayoutNews::On : LayoutNews::Off);
  }
  return true;
}

bool Mx10Protocol::arrived(qint32 want) {
  CanMessage message;
  while (take(message)) {
    if (!mx10::answers(message.ID, want)) continue;
    if (vehicleQuestion_ && !mx10::answersVehicle(message, *vehicleQuestion_)) continue;
    if (cvQuestion_ && !mx10::answersCv(message, *cvQuestion_, mx10Nid)) continue;
    canRxMsg = message;
    return true;
  }
  return can_.isRefused();
}

void Mx10Protocol::ClearMX10Input() {
  CanMessage dropped;
  while (take(dropped)) {
  }
}

int Mx10Protocol::getData(quint8* data) const {
  if (canRxMsg.ID < 1) return 0;
  std::copy_n(canRxMsg.DATA.begin(), std::min<size_t>(canRxMsg.LEN + 1U, canRxMsg.DATA.size()),
              data);
  return canRxMsg.LEN;
}

std::unique_ptr<StationProtocol> makeMx10Protocol(StationLink& link) {
  return std::make_unique<Mx10Protocol>(link);
}

}  // namespace lokari
