#include "link/lenz_framing.h"

#include <QScopedValueRollback>

#include <array>
#include <utility>

#include "base/bytes.h"
#include "base/clock.h"
#include "link/lenz_codec.h"
#include "link/link_error.h"
#include "link/serial_line.h"
#include "link/station_link.h"
#include "link/track_stop.h"

namespace lokari {
namespace {

constexpr std::array kInterfaces{
    LenzInterface{StationKind::Li100, false, 15, 15, false, true},
    LenzInterface{StationKind::Li100V3, false, 6, 9, true, false},
    LenzInterface{StationKind::LiUsb, true, 6, 9, true, false},
};

constexpr int kRequestPulseMs = 50;
constexpr int kUsbHead = 2;
/// A station's shortest message.
constexpr int kShortestMessage = 3;

/// "Stop" or "go on" for the whole track.
bool isTrackOrder(const QByteArray& msg) {
  return msg.startsWith(bytes({0x21, 0x80})) || msg.startsWith(bytes({0x21, 0x81}));
}

}  // namespace

const LenzInterface& lenzInterface(StationKind kind) {
  for (const LenzInterface& each : kInterfaces) {
    if (each.kind == kind) return each;
  }
  Q_UNREACHABLE();
}

void LenzFraming::lnzSend(const QByteArray& msg, std::function<void()> lost) {
  SerialLine& line = link_.serial();
  if (type_.usb) {
    line.write(bytes({0xFF, 0xFE}) + msg);
    return;
  }
  if (requesting_) {
    ahead_.push_back({msg, std::move(lost)});
    return;
  }
  try {
    request();
    while (!ahead_.empty()) {
      const QByteArray first = ahead_.front().msg;
      line.write(first);
      ahead_.pop_front();
      // Of two orders to the track the newer one holds; behind it the older one would undo it.
      if (ahead_.empty() && isTrackOrder(first) && isTrackOrder(msg)) return;
      request();
    }
    line.write(msg);
  } catch (const LinkError&) {
    for (const Ahead& each : std::exchange(ahead_, {})) {
      if (each.lost) each.lost();
    }
    throw;
  }
}

void LenzFraming::request() {
  const QScopedValueRollback requesting(requesting_, true);
  SerialLine& line = link_.serial();
  line.setRtsEnable(false);
  link_.DelayMsec(kRequestPulseMs);
  line.setRtsEnable(true);
  Clock& clock = link_.clock();
  const Millis deadline = (clock.wholeSeconds() + link_.settings().timeoutVal) * 1000;
  clock.waitUntil(
      [&] { return line.ctsHolding() || link_.cancelRequested || link_.isFarewellHurried(); },
      deadline);
}

QByteArray LenzFraming::unwrapped(const QByteArray& reply) const {
  return type_.usb && reply.size() > kUsbHead ? reply.mid(kUsbHead) : reply;
}

QByteArray LenzFraming::takeReply() {
  QByteArray reply = unwrapped(link_.serial().read());
  if (const qsizetype rest = lenz::missing(reply); rest > 0) {
    link_.WaitForData(static_cast<qint32>(rest));
    reply += link_.serial().read();
  }
  return reply;
}

bool LenzFraming::resume(int want) {
  lnzSend(lenz::resume());
  // Right behind it: the layout must not run for as long as the answer takes.
  const bool stopped = link_.trackStop().noteSwitchedOn();
  link_.WaitForData(want);
  const bool resumed = link_.getBufferCount() >= kShortestMessage &&
                       lenz::tellsResumed(unwrapped(link_.serial().read()));
  // Insisting would switch the layout on behind the stop.
  return stopped || link_.trackStop().isHeld() || resumed;
}

}  // namespace lokari
