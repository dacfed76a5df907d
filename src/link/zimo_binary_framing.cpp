#include "link/zimo_binary_framing.h"

#include <algorithm>
#include <utility>

#include "base/bytes.h"
#include "base/clock.h"
#include "base/prompt.h"
#include "link/link_error.h"
#include "link/serial_line.h"
#include "link/station_link.h"
#include "link/station_protocol.h"
#include "link/track_stop.h"
#include "link/zimo_binary_codec.h"

namespace lokari {
namespace {

constexpr int kMostTries = 5;
/// Older ones are not answered any more.
constexpr size_t kMostAhead = 8;
constexpr int kLastAnswerSeconds = 1;
constexpr int kBusyPauseMs = 100;
constexpr int kFailurePauseMs = 500;
/// A message that was not answered by then is not answered any more.
constexpr Millis kAnswerTime = Millis{1000} * kZimoFirstBytesSeconds;

}  // namespace

void ZimoBinaryFraming::zbinSend(const QByteArray& msg, bool answer) {
  SerialLine& line = link_.serial();
  if (!line.isOpen()) return;
  if (!answer) asked_ = {zbinSeq, byteAt(msg, 0)};
  line.write(zbin::frame(zbinSeq, msg, answer));
  zbinSeq = (zbinSeq + 1) % 256;
  if (answer || msg.isEmpty()) return;
  const Millis now = link_.clock().now();
  while (!unheard_.empty() && unheard_.front().sentAt + kAnswerTime < now) unheard_.pop_front();
  unheard_.push_back({msg[0], now, false});
}

QByteArray ZimoBinaryFraming::zbinReceive(int seconds) {
  const qint64 lastSecond = link_.clock().wholeSeconds() + seconds;
  try {
    for (;;) {
      const auto left = static_cast<int>(lastSecond - link_.clock().wholeSeconds());
      // Frames without end that nobody asked for are no answer.
      if (left < 0) return {};
      const QByteArray body = receiveBody(left);
      if (body.isEmpty()) return {};
      const zbin::Reply reply = zbin::takeApart(body);
      zbinRxSeq = reply.seq;
      zbinSound = reply.sound;
      zbinKind = reply.kind;
      if (!isStray(reply)) return reply.text;
      acknowledge(reply);
    }
  } catch (const LinkError&) {
    // A frame that the port broke off counts as none; the next message meets the failure itself.
    return {};
  }
}

bool ZimoBinaryFraming::isStray(const zbin::Reply& reply) const {
  if (reply.kind == zbin::kUnasked) return true;
  if (reply.kind != zbin::kData && reply.kind != zbin::kConfirmation) return false;
  const Asked answered{reply.answered, byteAt(reply.text, 0)};
  return answered != asked_ && std::find(ahead_.begin(), ahead_.end(), answered) == ahead_.end();
}

/// A station may repeat what nobody acknowledges; a confirmation wants none.
void ZimoBinaryFraming::acknowledge(const zbin::Reply& reply) {
  if (!link_.settings().makerForm || reply.kind == zbin::kConfirmation || !reply.sound) return;
  zbinSend(zbin::acknowledgeUnasked(byteAt(reply.text, 0), reply.seq), true);
}

QByteArray ZimoBinaryFraming::receiveBody(int seconds) {
  SerialLine& line = link_.serial();
  zbinSilent = false;
  if (line.inBufferCount() < zbin::kHead) link_.WaitForData(zbin::kHead, seconds);
  if (line.inBufferCount() < zbin::kHead) {
    zbinSilent = !link_.cancelRequested;
    return {};
  }

  const QByteArray head = line.read(zbin::kHead);
  const std::optional<qsizetype> start = zbin::bodyStart(head);
  if (link_.cancelRequested || !start) return {};

  QByteArray body = head.mid(*start);
  while (!body.contains(zbin::kEnd)) {
    link_.WaitForData(1);
    // Noise that never ends must not keep the job from being cancelled.
    if (link_.cancelRequested || body.size() >= zbin::kLongestBody) return {};
    const QByteArray next = line.read(1);
    if (next.isEmpty()) return {};
    body += next;
  }
  // Bytes behind the end came with the head: what lies around them is no frame.
  return body.endsWith(zbin::kEnd) ? body : QByteArray();
}

void ZimoBinaryFraming::pauseAfter(zbin::Confirmation answer) {
  if (answer == zbin::Confirmation::Busy) {
    link_.DelayMsec(kBusyPauseMs);
    return;
  }
  link_.DelayMsec(kFailurePauseMs);
  if (link_.serial().isOpen()) link_.protocol().dropInput();
}

bool ZimoBinaryFraming::zbinSendMsg(const QByteArray& msg) {
  for (int tries = 0; tries < kMostTries; ++tries) {
    zbinSettle();
    if (!link_.serial().isOpen()) return false;
    // What waits confirms nothing that goes out now.
    link_.protocol().dropInput();
    zbinSend(msg, false);
    const zbin::Confirmation answer = zbin::confirmation(msg, zbinReceive());
    if (answer == zbin::Confirmation::Done) return true;
    // The end of the program, or Ctrl-C: no further try would wait for its answer.
    if (link_.cancelRequested && link_.cancelStays) break;
    pauseAfter(answer);
  }
  link_.prompt().beep();
  return false;
}

void ZimoBinaryFraming::zbinSendAhead(const QByteArray& msg) {
  if (!link_.serial().isOpen()) return;
  if (!unsettled_ || zbinAhead != msg) {
    for (Unheard& each : unheard_) each.isOrder = false;
  }
  zbinAhead = msg;
  zbinAheadFailed = false;
  unsettled_ = true;
  const Asked inTurn = asked_;
  zbinSend(msg, false);
  unheard_.back().isOrder = true;
  ahead_.push_back(std::exchange(asked_, inTurn));
  if (ahead_.size() > kMostAhead) ahead_.pop_front();
  ++answersAhead_;
}

bool ZimoBinaryFraming::answersAhead(const QByteArray& reply) {
  if (answersAhead_ == 0 || reply.isEmpty() || !zbinAhead.startsWith(reply[0])) return false;
  --answersAhead_;
  if (zbin::confirmation(zbinAhead, reply) == zbin::Confirmation::Done) unsettled_ = false;
  return true;
}

/// An answer names the command, and not the message: switching on, the question for the track and
/// a stop have the same one. The station answers in the order of the messages.
void ZimoBinaryFraming::hear(const QByteArray& data) {
  heard_ += data;
  for (qsizetype end = heard_.indexOf(zbin::kEnd); end >= 0; end = heard_.indexOf(zbin::kEnd)) {
    const QByteArray frame = heard_.left(end + 1);
    heard_.remove(0, end + 1);
    const auto start = zbin::bodyStart(frame);
    const QByteArray reply = start ? zbin::takeApart(frame.mid(*start)).text : QByteArray();
    const auto answered = std::find_if(
        unheard_.begin(), unheard_.end(),
        [&reply](const Unheard& each) { return !reply.isEmpty() && each.command == reply[0]; });
    if (answered == unheard_.end()) continue;
    const bool isOrder = answered->isOrder;
    unheard_.erase(answered);
    const bool done = zbin::confirmation(zbinAhead, reply) == zbin::Confirmation::Done;
    if (isOrder && done) link_.trackStop().order().hear(LayoutNews::Accepted);
  }
  heard_ = heard_.right(zbin::kLongestBody);
}

void ZimoBinaryFraming::takeAnswersAhead() {
  const bool cancelled = std::exchange(link_.cancelRequested, false);
  for (int frames = 0; unsettled_ && answersAhead_ > 0 && frames < kMostTries; ++frames) {
    const QByteArray reply = zbinReceive(kLastAnswerSeconds);
    if (reply.isEmpty()) break;
    answersAhead(reply);
  }
  link_.cancelRequested = link_.cancelRequested || cancelled;
}

void ZimoBinaryFraming::forgetAhead() {
  zbinAheadFailed = unsettled_;
  zbinAhead.clear();
  unsettled_ = false;
  answersAhead_ = 0;
  unheard_.clear();
}

void ZimoBinaryFraming::zbinSettle() {
  for (int tries = 0; unsettled_ && tries < kMostTries; ++tries) {
    if (!link_.serial().isOpen()) return forgetAhead();
    // A cancelled job takes no answers; the next exchange settles what it leaves.
    if (link_.cancelRequested) return;
    if (answersAhead_ == 0) zbinSendAhead(zbinAhead);
    zbin::Confirmation answer = zbin::Confirmation::None;
    // The answer to the last one counts; one more may go out while an earlier one is awaited.
    while (answersAhead_ > 0) {
      answer = zbin::confirmation(zbinAhead, zbinReceive());
      if (answersAhead_ > 0) --answersAhead_;
    }
    if (answer == zbin::Confirmation::Done) {
      unsettled_ = false;
      link_.trackStop().order().hear(LayoutNews::Accepted);
    } else {
      pauseAfter(answer);
    }
  }
  if (!unsettled_) return;
  unsettled_ = false;
  zbinAheadFailed = true;
  link_.prompt().beep();
  link_.trackStop().order().disprove();
}

}  // namespace lokari
