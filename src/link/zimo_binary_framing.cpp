#include "link/zimo_binary_framing.h"

#include "base/prompt.h"
#include "link/link_error.h"
#include "link/serial_line.h"
#include "link/station_link.h"
#include "link/station_protocol.h"
#include "link/zimo_binary_codec.h"

namespace lokari {
namespace {

/// The station may be busy on the track before it answers.
constexpr int kFirstBytesSeconds = 30;
constexpr int kMostTries = 5;
constexpr int kBusyPauseMs = 100;
constexpr int kFailurePauseMs = 500;

}  // namespace

void ZimoBinaryFraming::zbinSend(const QByteArray& msg, bool answer) {
  SerialLine& line = link_.serial();
  if (!line.isOpen()) return;
  line.write(zbin::frame(zbinSeq, msg, answer));
  zbinSeq = (zbinSeq + 1) % 256;
}

QByteArray ZimoBinaryFraming::zbinReceive() {
  try {
    const QByteArray body = receiveBody();
    if (body.isEmpty()) return {};
    const zbin::Reply reply = zbin::takeApart(body);
    zbinRxSeq = reply.seq;
    return reply.text;
  } catch (const LinkError&) {
    // A frame that the port broke off counts as none; the next message meets the failure itself.
    return {};
  }
}

QByteArray ZimoBinaryFraming::receiveBody() {
  SerialLine& line = link_.serial();
  if (line.inBufferCount() < zbin::kHead) link_.WaitForData(zbin::kHead, kFirstBytesSeconds);
  if (line.inBufferCount() < zbin::kHead) return {};

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

void ZimoBinaryFraming::zbinSendMsg(const QByteArray& msg) {
  for (int tries = 0; tries < kMostTries; ++tries) {
    if (!link_.serial().isOpen()) return;
    zbinSend(msg, false);
    switch (zbin::confirmation(msg, zbinReceive())) {
      case zbin::Confirmation::Done:
        return;
      case zbin::Confirmation::Busy:
        link_.DelayMsec(kBusyPauseMs);
        break;
      case zbin::Confirmation::None:
        link_.DelayMsec(kFailurePauseMs);
        if (link_.serial().isOpen()) link_.protocol().dropInput();
        break;
    }
  }
  link_.prompt().beep();
}

}  // namespace lokari
