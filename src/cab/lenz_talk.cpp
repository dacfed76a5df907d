#include "cab/lenz_talk.h"

#include "cab/cab_line.h"
#include "cab/lenz_codec.h"
#include "link/lenz_codec.h"
#include "link/link_error.h"
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
    : line_(line), framing_(line.link(), lenzInterface(line.link().settings().baseUnit)) {}

StationLink& LenzTalk::link() const {
  return line_.link();
}

void LenzTalk::write(const QByteArray& message) {
  line_.send([&] {
    framing_.lnzSend(message);
    if (!line_.isNested()) link().protocol().dropInput();
  });
}

void LenzTalk::send(const QByteArray& message) {
  try {
    write(message);
  } catch (const LinkError&) {
    // The device is gone; the next reading tells.
  }
}

QByteArray LenzTalk::ask(const QByteArray& message, int size, bool lingers) {
  try {
    write(lenz::withCheck(message));
    const qsizetype whole = size + (type().usb ? kUsbHead : 0);
    QByteArray input;
    for (int waits = 0; waits < kMostWaits; ++waits) {
      const auto lacking = static_cast<qint32>(whole - input.size());
      link().WaitForData(lacking);
      if (lingers) link().Delay(0);
      if (link().getBufferCount() < lacking) return {};
      input = lenz::withoutNews(input + link().serial().read(), type().usb);
      if (input.size() >= whole) return framing_.unwrapped(input);
    }
  } catch (const LinkError&) {
    // As if it had said nothing.
  }
  return {};
}

}  // namespace lokari
