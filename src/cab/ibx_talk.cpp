#include "cab/ibx_talk.h"

#include <QScopedValueRollback>

#include <utility>

#include "base/bytes.h"
#include "base/prompt.h"
#include "cab/cab_line.h"
#include "link/ibx_send.h"
#include "link/link_error.h"
#include "link/p50x_codes.h"
#include "link/serial_line.h"
#include "link/station_link.h"
#include "link/station_protocol.h"

namespace lokari {
namespace {

constexpr int kMostRepeats = 10;
constexpr int kQueuePauseMs = 200;
constexpr int kNoCode = -1;

}  // namespace

StationLink& IbxTalk::link() const {
  return line_.link();
}

void IbxTalk::send(const QByteArray& command) {
  line_.send([&] { ibxSend(link(), command); });
}

QByteArray IbxTalk::takeReply(int size) {
  link().WaitForData(1);
  QByteArray reply = link().serial().read(1);
  if (byteAt(reply, 0) == 0 && size > 1) {
    link().WaitForData(size - 1);
    reply += link().serial().read(size - 1);
  }
  return reply;
}

QByteArray IbxTalk::ask(const QByteArray& command, int size) {
  for (int repeats = 0;; ++repeats) {
    const QByteArray reply = askOnce(command, size);
    if (!p50x::isQueueFull(byteAt(reply, 0)) || repeats == kMostRepeats) return reply;
    if (link().cancelRequested) return reply;
    pause(kQueuePauseMs);
  }
}

QByteArray IbxTalk::askOnce(const QByteArray& command, int size) {
  const QScopedValueRollback taking(line_.replyTakers, line_.replyTakers + 1);
  try {
    takeOwed();
    link().protocol().dropInput();
    send(command);
    const QByteArray reply = takeReply(size);
    takeOwed();
    return reply;
  } catch (const LinkError&) {
    giveUpOwed();
    throw;
  }
}

void IbxTalk::pause(int ms) {
  const QScopedValueRollback taking(line_.replyTakers, line_.replyTakers + 1);
  link().DelayMsec(ms);
}

int IbxTalk::tell(const QByteArray& command) {
  return byteAt(ask(command, 1), 0);
}

void IbxTalk::tellAtOnce(const QByteArray& command, Answered answered) {
  if (line_.isNested() && line_.replyTakers == 0) {
    send(command);
    return confirmBehind(command, answered);
  }
  const bool isOutermost = !line_.isNested();
  const QScopedValueRollback taking(line_.replyTakers, line_.replyTakers + (isOutermost ? 1 : 0));
  // What lies there belongs to an earlier question, and would pass for the answer.
  if (isOutermost && line_.repliesOwed.empty()) link().protocol().dropInput();
  // Ahead of the sending: one that waits for its end is replied to behind this one.
  line_.repliesOwed.push_back(std::move(answered));
  try {
    send(command);
  } catch (const LinkError&) {
    line_.repliesOwed.pop_back();
    giveUpOwed();
    throw;
  }
  if (!isOutermost) return;
  try {
    takeOwed();
  } catch (const LinkError&) {
    giveUpOwed();
    throw;
  }
}

void IbxTalk::takeOwed() {
  while (!line_.repliesOwed.empty()) {
    const QByteArray reply = takeReply(1);
    // Silence is over for all of them: what did not come by now does not come.
    if (reply.isEmpty()) return giveUpOwed();
    const Answered answered = std::move(line_.repliesOwed.front());
    line_.repliesOwed.pop_front();
    const int code = byteAt(reply, 0);
    if (!p50x::isTaken(code)) link().prompt().beep();
    answered(code);
  }
}

void IbxTalk::confirmBehind(const QByteArray& command, const Answered& answered) {
  // A job has taken the reply by then, and dropped what was left.
  const bool mayCome = link().runningJob == CommJob::None;
  line_.exchange(&line_.repliesOwed, 0, [line = &line_, command, answered, mayCome] {
    IbxTalk(*line).confirm(command, mayCome, answered);
  });
}

void IbxTalk::confirm(const QByteArray& command, bool mayCome, const Answered& answered) {
  // The session may have ended with the job: there is nobody left to ask.
  if (link().commUseCount == 0) return;
  // A cancel belongs to the job before, unless it stays.
  link().cancelRequested = link().cancelRequested && link().cancelStays;
  QByteArray reply;
  try {
    if (mayCome) reply = takeReply(1);
    if (reply.isEmpty()) reply = ask(command, 1);
  } catch (const LinkError& error) {
    line_.noteGone(error.message());
  }
  const int code = byteAt(reply, 0);
  if (!p50x::isTaken(code)) link().prompt().beep();
  answered(code);
}

void IbxTalk::giveUpOwed() {
  const auto owed = std::exchange(line_.repliesOwed, {});
  if (!owed.empty()) link().prompt().beep();
  for (const Answered& answered : owed) answered(kNoCode);
}

}  // namespace lokari
