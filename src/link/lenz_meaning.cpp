#include "link/lenz_meaning.h"

#include <algorithm>
#include <array>

#include "base/bytes.h"
#include "link/lenz_codec.h"

namespace lokari::lenz {
namespace {

constexpr int kAny = -1;

struct Row {
  int header;
  int code;  ///< or kAny
  Meaning meaning;
};
/// The first row that fits.
constexpr std::array kRows{
    Row{0x01, 0x04, Meaning::HandedOver}, Row{0x01, 0x05, Meaning::Passing},
    Row{0x01, 0x07, Meaning::Passing},    Row{0x01, 0x0A, Meaning::Busy},
    Row{0x01, kAny, Meaning::Fault},      Row{0x61, 0x00, Meaning::Passing},
    Row{0x61, 0x01, Meaning::Passing},    Row{0x61, 0x02, Meaning::ServiceMode},
    Row{0x61, 0x11, Meaning::Ready},      Row{0x61, 0x1F, Meaning::Busy},
    Row{0x61, 0x80, Meaning::Busy},       Row{0x61, 0x81, Meaning::Busy},
    Row{0x61, kAny, Meaning::Report},     Row{0x63, 0x10, Meaning::Result},
    Row{0x63, 0x14, Meaning::Result},     Row{0x63, 0x15, Meaning::Result},
    Row{0x63, 0x16, Meaning::Result},     Row{0x63, 0x17, Meaning::Result},
    Row{0x81, kAny, Meaning::Passing},    Row{0xE3, 0x40, Meaning::Passing},
};

/// 4n: accessories, up to seven pairs; 84 and A4 are the first generation's vehicles.
constexpr std::array kHeaders{0x01, 0x02, 0x42, 0x44, 0x46, 0x48, 0x4A, 0x4C, 0x4E, 0x61, 0x62,
                              0x63, 0x81, 0x84, 0xA4, 0xE1, 0xE2, 0xE3, 0xE4, 0xE5, 0xE6, 0xF2};

constexpr qsizetype kUsbHead = 2;
constexpr int kUnasked = 0xFD;
constexpr int kAccessories = 0x40;
constexpr int kVersion = 0x21;

bool isNews(const QByteArray& message, bool unasked, std::optional<Meaning> answer) {
  // What an accessory reports by itself looks as the answer to the question for it.
  if (unasked && (byteAt(message, 0) & 0xF0) == kAccessories) return true;
  const Meaning meaning = meaningOf(message);
  if (meaning == answer) return false;
  return meaning == Meaning::Passing || meaning == Meaning::ServiceMode ||
         meaning == Meaning::HandedOver;
}

}  // namespace

Meaning meaningOf(const QByteArray& message) {
  const int header = byteAt(message, 0);
  const int code = byteAt(message, 1);
  const auto* const row = std::find_if(kRows.begin(), kRows.end(), [&](const Row& each) {
    return each.header == header && (each.code == kAny || each.code == code);
  });
  return row == kRows.end() ? Meaning::Other : row->meaning;
}

bool isHeader(int byte) {
  return std::find(kHeaders.begin(), kHeaders.end(), byte) != kHeaders.end();
}

qsizetype sizeBehind(int header) {
  return (header & 0x0F) + 2;
}

bool beginsWithMessage(const QByteArray& input, bool usb) {
  QByteArray rest = input;
  const auto message = takeMessage(rest, usb);
  const qsizetype size = message ? message->bytes.size() + (usb ? kUsbHead : 0) : 0;
  return message && input.size() - rest.size() == size;
}

bool tellsTaken(QByteArray input, bool usb) {
  while (const auto message = takeMessage(input, usb)) {
    const Meaning meaning = meaningOf(message->bytes);
    if (meaning == Meaning::HandedOver || meaning == Meaning::ServiceMode) return true;
  }
  return false;
}

QByteArray withoutNews(QByteArray input, bool usb, std::optional<Meaning> answer) {
  for (;;) {
    const qsizetype start = usb ? kUsbHead : 0;
    const int mark = byteAt(input, 1);
    if (usb && (byteAt(input, 0) != 0xFF || (mark != 0xFE && mark != kUnasked))) return input;
    const int header = byteAt(input, start);
    if (!isHeader(header)) return input;
    const QByteArray message = input.mid(start, sizeBehind(header));
    if (!isSound(message) || !isNews(message, usb && mark == kUnasked, answer)) return input;
    input.remove(0, start + message.size());
  }
}

std::optional<int> stationVersion(const QByteArray& message) {
  const int header = byteAt(message, 0);
  if ((header != 0x62 && header != 0x63) || byteAt(message, 1) != kVersion) return std::nullopt;
  return byteAt(message, 2);
}

}  // namespace lokari::lenz
