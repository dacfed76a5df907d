#include "cab/ibx_talk.h"

#include <utility>

#include "base/bytes.h"
#include "base/prompt.h"
#include "cab/cab_line.h"
#include "link/ibx_send.h"
#include "link/link_error.h"
#include "link/serial_line.h"
#include "link/station_link.h"
#include "link/station_protocol.h"

namespace lokari {

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

int IbxTalk::tell(const QByteArray& command) {
  return byteAt(ask(command, 1), 0);
}

void IbxTalk::tellAtOnce(const QByteArray& command, Failed failed) {
  // Ahead of the sending: one that waits for its end is replied to behind this one.
  line_.repliesOwed.push_back(std::move(failed));
  try {
    send(command);
  } catch (const LinkError&) {
    line_.repliesOwed.pop_back();
    giveUpOwed();
    throw;
  }
  if (line_.isNested()) return;
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
    const Failed failed = std::move(line_.repliesOwed.front());
    line_.repliesOwed.pop_front();
    if (byteAt(reply, 0) == 0) continue;
    link().prompt().beep();
    failed(StopFault::Refused);
  }
}

void IbxTalk::giveUpOwed() {
  const auto owed = std::exchange(line_.repliesOwed, {});
  if (!owed.empty()) link().prompt().beep();
  for (const Failed& failed : owed) failed(StopFault::Silent);
}

}  // namespace lokari
