#include "cab/lenz_talk.h"

#include <utility>

#include "cab/cab_line.h"
#include "cab/lenz_codec.h"
#include "link/lenz.h"
#include "link/lenz_codec.h"
#include "link/serial_line.h"
#include "link/station_link.h"
#include "link/station_protocol.h"

namespace lokari {
namespace {

constexpr int kUsbHead = 2;
/// A station that never stops telling news must not keep a question open.
constexpr int kMostWaits = 8;

}  // namespace

LenzTalk::LenzTalk(CabLine& line)
    : line_(line), type_(lenzInterface(line.link().settings().baseUnit)) {}

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
  const QByteArray reply = askOnce(message, size, lingers);
  if (!lenz::isDoubtful(reply, size)) return reply;
  const QByteArray again = askOnce(message, size, lingers);
  const qsizetype said = size - 1;
  return again.left(said) == reply.left(said) ? again : QByteArray();
}

QByteArray LenzTalk::askOnce(const QByteArray& message, int size, bool lingers) {
  send(lenz::withCheck(message));
  const qsizetype whole = size + (type().usb ? kUsbHead : 0);
  QByteArray input;
  for (int waits = 0; waits < kMostWaits; ++waits) {
    const auto lacking = static_cast<qint32>(whole - input.size());
    link().WaitForData(lacking);
    if (lingers) link().Delay(0);
    if (link().getBufferCount() < lacking) return {};
    input = lenz::withoutNews(input + link().serial().read(), type().usb);
    if (input.size() >= whole) return framing().unwrapped(input);
  }
  return {};
}

}  // namespace lokari
