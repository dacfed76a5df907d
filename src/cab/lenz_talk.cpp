#include "cab/lenz_talk.h"

#include <algorithm>
#include <utility>

#include "base/bytes.h"
#include "cab/cab_line.h"
#include "cab/lenz_codec.h"
#include "link/lenz.h"
#include "link/lenz_codec.h"
#include "link/lenz_meaning.h"
#include "link/serial_line.h"
#include "link/station_link.h"
#include "link/station_protocol.h"

namespace lokari {
namespace {

constexpr int kUsbHead = 2;
/// A station that never stops telling news must not keep a question open.
constexpr int kMostWaits = 24;

/// What every reply has at least, and what tells how long it is.
constexpr int kShortestReply = 3;

constexpr int kMostBusy = 5;
constexpr int kBusyPauseMs = 200;

bool isBusy(const QByteArray& reply) {
  return lenz::isSound(reply) && lenz::meaningOf(reply) == lenz::Meaning::Busy;
}

/// Bytes to wait for behind those that have come, at least one.
qint32 lackingOf(const QByteArray& come, int size) {
  if (come.isEmpty()) return kShortestReply;
  const int head = byteAt(come, 0);
  const qsizetype whole = lenz::isHeader(head) ? lenz::sizeBehind(head) : size;
  return static_cast<qint32>(
      std::max<qsizetype>(1, std::min<qsizetype>(whole, size) - come.size()));
}

}  // namespace

LenzTalk::LenzTalk(CabLine& line) : line_(line), kind_(line.link().settings().baseUnit) {}

const LenzInterface& LenzTalk::type() const {
  return lenzInterface(kind_, link().settings().makerForm);
}

StationLink& LenzTalk::link() const {
  return line_.link();
}

LenzFraming& LenzTalk::framing() const {
  return dynamic_cast<LenzProtocol&>(link().protocol()).framing();
}

// A message is one write, and the line is asked for ahead of it; a stop that comes meanwhile goes
// first.
void LenzTalk::send(const QByteArray& message, std::function<void()> lost) {
  framing().lnzSend(message, std::move(lost));
  if (!line_.isNested()) link().protocol().dropInput();
}

QByteArray LenzTalk::ask(const QByteArray& message, int size, bool lingers) {
  QByteArray reply = askOnce(message, size, lingers);
  for (int tries = 0; tries < kMostBusy && isBusy(reply) && !link().cancelRequested; ++tries) {
    link().DelayMsec(kBusyPauseMs);
    reply = askOnce(message, size, lingers);
  }
  if (!lenz::isDoubtful(reply, size)) return reply;
  const QByteArray again = askOnce(message, size, lingers);
  const qsizetype said = size - 1;
  return again.left(said) == reply.left(said) ? again : QByteArray();
}

QByteArray LenzTalk::askOnce(const QByteArray& message, int size, bool lingers) {
  send(lenz::withCheck(message));
  const qsizetype head = type().usb ? kUsbHead : 0;
  QByteArray input;
  for (int waits = 0; waits < kMostWaits; ++waits) {
    const qint32 lacking = lackingOf(input.mid(head), size);
    link().WaitForData(lacking +
                       static_cast<qint32>(input.size() < head ? head - input.size() : 0));
    if (lingers) link().Delay(0);
    const bool came = link().getBufferCount() > 0;
    input = lenz::withoutNews(input + link().serial().read(), type().usb);
    const bool whole = lenz::isWhole(input.mid(head), size);
    if (whole || (!came && input.size() >= head + size)) return framing().unwrapped(input);
    if (!came) break;
  }
  return {};
}

}  // namespace lokari
