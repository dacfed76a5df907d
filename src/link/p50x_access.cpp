#include "link/p50x_access.h"

#include "base/bytes.h"
#include "base/clock.h"
#include "link/ibx_send.h"
#include "link/intellibox_codec.h"
#include "link/p50x_codes.h"
#include "link/serial_line.h"
#include "link/station_link.h"
#include "link/station_protocol.h"

namespace lokari {
namespace {

using Kind = P50xOutcome::Kind;

constexpr int kMostBusyAnswers = 20;
constexpr int kBusyPauseMs = 500;
constexpr int kAskPauseMs = 100;
/// The slowest access tries each value of a byte.
constexpr qint64 kLongestAccessSeconds = 120;
constexpr int kMostSilences = 3;

/// Whether a byte can begin a reply to a text command, and is no code of a binary one.
bool isText(int byte) {
  return (byte >= '0' && byte <= '9') || byte == 'E' || byte == 'N' || byte == 'O';
}

class Access {
 public:
  explicit Access(StationLink& link) : link_(link) {}

  P50xOutcome probe() {
    const int code = begin(ibx::askProgramming());
    if (link_.cancelRequested) return end(Kind::Cancelled);
    if (code < 0) return end(Kind::Silent);
    if (isText(code)) return end(Kind::Text, QByteArray(1, static_cast<char>(code)));
    return end(p50x::isTaken(code) ? Kind::Event : Kind::Unknown);
  }

  P50xOutcome run(const QByteArray& command) {
    for (int busy = 0;; ++busy) {
      const int code = begin(command);
      ++sendings_;
      if (link_.cancelRequested) return end(Kind::Cancelled);
      if (code < 0) return silent();
      if (isText(code)) return end(Kind::Text, QByteArray(1, static_cast<char>(code)));
      if (p50x::isTaken(code)) return awaitEvent();
      if (p50x::isUnknown(code)) return end(Kind::Unknown);
      if (!p50x::isBusy(code) || busy == kMostBusyAnswers) return end(Kind::Refused);
      link_.DelayMsec(kBusyPauseMs);
      if (link_.cancelRequested) return end(Kind::Cancelled);
    }
  }

 private:
  P50xOutcome end(Kind kind, const QByteArray& event = {}) const {
    return {.kind = kind, .event = event, .sendings = sendings_};
  }

  int begin(const QByteArray& command) {
    link_.protocol().dropInput();
    return askByte(command);
  }

  int askByte(const QByteArray& command) {
    ibxSend(link_, command);
    link_.WaitForData(1);
    return byteAt(link_.serial().read(1), 0);
  }

  /// The reply may be what got lost: asking for the result begins nothing.
  P50xOutcome silent() {
    const int first = askByte(ibx::askEvent());
    if (link_.cancelRequested) return end(Kind::Cancelled);
    if (isText(first)) return end(Kind::Text, QByteArray(1, static_cast<char>(first)));
    if (first < 0) return end(Kind::Silent);
    // 0 is the command's own reply, late.
    return first == 0 || first == ibx::kNoEvent ? awaitEvent() : takeEvent(first);
  }

  P50xOutcome awaitEvent() {
    const qint64 last = link_.clock().wholeSeconds() + kLongestAccessSeconds;
    int silences = 0;
    while (link_.clock().wholeSeconds() < last) {
      const int first = askByte(ibx::askEvent());
      if (first > 0 && first != ibx::kNoEvent) return takeEvent(first);
      if (link_.cancelRequested) return end(Kind::Cancelled);
      // A line that is held down gives zeros without end.
      if (first <= 0 && ++silences == kMostSilences) break;
      link_.DelayMsec(kAskPauseMs);
      if (link_.cancelRequested) return end(Kind::Cancelled);
    }
    return end(Kind::NoResult);
  }

  P50xOutcome takeEvent(int length) {
    QByteArray event(1, static_cast<char>(length));
    event += link_.serial().read(length);
    while (ibx::missing(event) > 0) {
      link_.WaitForData(static_cast<qint32>(ibx::missing(event)));
      const QByteArray more = link_.serial().read(ibx::missing(event));
      if (more.isEmpty()) break;
      event += more;
    }
    return end(Kind::Event, event);
  }

  StationLink& link_;
  int sendings_ = 0;
};

}  // namespace

P50xOutcome p50xProbe(StationLink& link) {
  return Access(link).probe();
}

P50xOutcome p50xAccess(StationLink& link, const QByteArray& command) {
  return Access(link).run(command);
}

}  // namespace lokari
