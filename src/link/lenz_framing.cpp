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
#include "link/station_protocol.h"
#include "link/track_stop.h"

namespace lokari {
namespace {

constexpr std::array kInterfaces{
    LenzInterface{StationKind::Li100, false, 15, 15, false, true},
    LenzInterface{StationKind::Li100V3, false, 6, 9, true, false},
    LenzInterface{StationKind::LiUsb, true, 6, 9, true, false},
};

constexpr std::array kInMakerForm{
    LenzInterface{StationKind::Li100, false, 3, 3, true, false},
    LenzInterface{StationKind::Li100V3, false, 3, 3, true, false},
    LenzInterface{StationKind::LiUsb, true, 5, 5, true, false},
};

constexpr int kRequestPulseMs = 50;
constexpr int kUsbHead = 2;
constexpr int kResumeRounds = 5;
/// A station that never stops telling news must not keep a question open.
constexpr int kMostWaits = 8;
/// A station's shortest message.
constexpr int kShortestMessage = 3;

/// "Stop" or "go on" for the whole track.
bool isTrackOrder(const QByteArray& msg) {
  return msg.startsWith(bytes({0x80, 0x80})) || msg.startsWith(bytes({0x21, 0x80})) ||
         msg.startsWith(bytes({0x21, 0x81}));
}

/// A message that was not answered by then is not answered any more.
constexpr Millis kAnswerTime = 1000;
/// A message whose next piece takes longer has lost it.
constexpr Millis kPieceTime = 5000;
/// Messages that nobody takes are not kept for ever.
constexpr size_t kMostMessages = 16;

}  // namespace

const LenzInterface& lenzInterface(StationKind kind, bool makerForm) {
  for (const LenzInterface& each : makerForm ? kInMakerForm : kInterfaces) {
    if (each.kind == kind) return each;
  }
  Q_UNREACHABLE();
}

const LenzInterface& LenzFraming::type() const {
  return lenzInterface(kind_, link_.settings().makerForm);
}

void LenzFraming::lnzSend(const QByteArray& msg, std::function<void()> lost) {
  sendInTurn(msg, std::move(lost), isTrackOrder(msg) ? Yields::Yes : Yields::No);
}

void LenzFraming::sendInTurn(const QByteArray& msg, std::function<void()> lost, Yields yields) {
  const bool isOrder = lost != nullptr;
  if (type().usb) return write(msg, isOrder);
  if (requesting_) {
    // The word for an order that is not the newest any more would be taken for that one's.
    if (isOrder) std::erase_if(ahead_, [](const Ahead& each) { return each.lost != nullptr; });
    ahead_.push_back({msg, std::move(lost)});
    return;
  }
  try {
    request();
    while (!ahead_.empty()) {
      const Ahead first = ahead_.front();
      write(first.msg, first.lost != nullptr);
      ahead_.pop_front();
      // Of two orders to the layout the newer one holds; behind it the older one would undo it.
      if (ahead_.empty() && isTrackOrder(first.msg) && yields == Yields::Yes) return;
      request();
    }
    write(msg, isOrder);
  } catch (const LinkError&) {
    for (const Ahead& each : std::exchange(ahead_, {})) {
      if (each.lost) each.lost();
    }
    throw;
  }
}

void LenzFraming::write(const QByteArray& msg, bool isOrder) {
  link_.serial().write(type().usb ? bytes({0xFF, 0xFE}) + msg : msg);
  const Millis now = link_.clock().now();
  while (!unanswered_.empty() && unanswered_.front() + kAnswerTime < now) unanswered_.pop_front();
  unanswered_.push_back(now);
  if (!isOrder) return;
  answersToOrder_ = unanswered_.size();
  link_.trackStop().order().noteSent();
}

void LenzFraming::hear(const QByteArray& data) {
  const Millis now = link_.clock().now();
  const Millis pause = now - heardAt_;
  if (pause > kAnswerTime) heardLast_.clear();
  // Behind a pause a message that stands by itself shows that the piece before is none of it.
  const bool isNew = pause > kAnswerTime && lenz::beginsWithMessage(data, type().usb);
  if (pause > kPieceTime || isNew) heard_.clear();
  heardAt_ = now;
  heard_ += data;
  LayoutOrder& order = link_.trackStop().order();
  while (const auto message = lenz::takeMessage(heard_, type().usb)) {
    if (messages_.size() == kMostMessages) messages_.pop_front();
    messages_.push_back(message->bytes);
    switch (newsIn(*message)) {
      case lenz::News::None:
        break;
      case lenz::News::Off:
        order.hear(LayoutNews::Off);
        break;
      case lenz::News::On:
        order.hear(LayoutNews::On);
        break;
      case lenz::News::Accepted:
        noteAnswer(true);
        break;
      case lenz::News::Refused:
        noteAnswer(false);
        break;
      case lenz::News::Answer:
        if (!unanswered_.empty()) unanswered_.pop_front();
        if (answersToOrder_ > 0) --answersToOrder_;
        break;
    }
  }
}

/// The first generation says each answer several times: the others say nothing more.
lenz::News LenzFraming::newsIn(const lenz::Message& message) {
  const lenz::News news = lenz::newsIn(message);
  const bool isRepeat = std::exchange(heardLast_, message.bytes) == message.bytes;
  return type().firstGeneration && isRepeat && !lenz::isOfLayout(news) ? lenz::News::None : news;
}

/// An answer does not tell what it answers; the station answers in the order of the messages. A
/// job's messages have several answers, and an acceptance by the first generation may be one that
/// it has said before: then only what is told to everybody counts.
void LenzFraming::noteAnswer(bool accepted) {
  if (!unanswered_.empty()) unanswered_.pop_front();
  if (answersToOrder_ == 0 || --answersToOrder_ > 0) return;
  if (link_.runningJob != CommJob::None || (accepted && type().firstGeneration)) return;
  link_.trackStop().order().hear(accepted ? LayoutNews::Accepted : LayoutNews::Refused);
}

std::optional<QByteArray> LenzFraming::nextMessage(Millis deadline) {
  const auto come = [this] {
    link_.serial().inBufferCount();  // a device that has vanished shows
    return !messages_.empty() || link_.cancelRequested || link_.isFarewellHurried();
  };
  link_.clock().waitUntil(come, deadline);
  if (messages_.empty()) return std::nullopt;
  const QByteArray message = messages_.front();
  messages_.pop_front();
  return message;
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
  return type().usb && reply.size() > kUsbHead ? reply.mid(kUsbHead) : reply;
}

QByteArray LenzFraming::takeReply() {
  return completed(link_.serial().read());
}

QByteArray LenzFraming::takeAnswer(lenz::Meaning answer) {
  QByteArray input = link_.serial().read();
  for (int waits = 0; waits < kMostWaits && !input.isEmpty(); ++waits) {
    const QByteArray left = lenz::withoutNews(input, type().usb, answer);
    if (!left.isEmpty()) return completed(left);
    link_.WaitForData(kShortestMessage);
    if (link_.getBufferCount() == 0) break;
    input = link_.serial().read();
  }
  return unwrapped(input);
}

QByteArray LenzFraming::completed(const QByteArray& input) {
  QByteArray reply = unwrapped(input);
  if (const qsizetype rest = lenz::missing(reply); rest > 0) {
    link_.WaitForData(static_cast<qint32>(rest));
    reply += link_.serial().read();
  }
  return reply;
}

void LenzFraming::leaveServiceMode() {
  for (int round = 0; round < kResumeRounds; ++round) {
    link_.protocol().dropInput();
    if (resume(type().want)) return;
    link_.Delay(1);
  }
}

bool LenzFraming::resume(int want) {
  // A stop ahead of it is no reason to stay in the service mode.
  sendInTurn(lenz::resume(), {}, Yields::No);
  // Right behind it: the layout must not run for as long as the answer takes.
  const bool stopped = link_.trackStop().noteSwitchedOn();
  link_.WaitForData(want);
  const qint32 came = link_.getBufferCount();
  const bool resumed =
      came >= kShortestMessage && lenz::tellsResumed(unwrapped(link_.serial().read()));
  saysItOnce_ = saysItOnce_ || (resumed && came < want);
  // Insisting would switch the layout on behind the stop.
  return stopped || link_.trackStop().mayStand() || resumed;
}

}  // namespace lokari
