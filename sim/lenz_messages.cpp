#include "sim/lenz_messages.h"

#include "base/bytes.h"

namespace lokari::sim {
namespace {

constexpr Millis kLongestPause = 1000;
constexpr int kLongAddress = 0xC0;
constexpr char kUsbHead[] = "\xFF\xFE";

char exclusiveOr(const QByteArray& data) {
  char all = 0;
  for (const char byte : data) all = static_cast<char>(all ^ byte);
  return all;
}

/// The CV that a block's command and its byte name; the first block's 0 is `firstZero`.
int cvOf(int block, int byte, int firstZero) {
  return block == 0 && byte == 0 ? firstZero : block * 256 + byte;
}

std::optional<LenzCommand> readCommand(int code, int cv) {
  constexpr auto kRead = LenzCommand::Kind::ReadCv;
  if (code == 0x14) return LenzCommand{kRead, Method::Paged, cvOf(0, cv, 256)};
  if (code == 0x15) return LenzCommand{kRead, Method::Direct, cvOf(0, cv, 256)};
  if (code >= 0x18 && code <= 0x1B) {
    return LenzCommand{kRead, Method::Direct, cvOf(code - 0x18, cv, 1024)};
  }
  return {};
}

std::optional<LenzCommand> writeCommand(int code, int cv, int value) {
  constexpr auto kWrite = LenzCommand::Kind::WriteCv;
  if (code == 0x17) return LenzCommand{kWrite, Method::Paged, cvOf(0, cv, 256), value};
  if (code == 0x16) return LenzCommand{kWrite, Method::Direct, cvOf(0, cv, 256), value};
  if (code >= 0x1C && code <= 0x1F) {
    return LenzCommand{kWrite, Method::Direct, cvOf(code - 0x1C, cv, 1024), value};
  }
  return {};
}

std::optional<LenzCommand> mainCommand(const QByteArray& message) {
  const int operation = byteAt(message, 4);
  if (byteAt(message, 1) != 0x30 || operation < 0xEC || operation > 0xEF) return {};
  int high = byteAt(message, 2);
  if (high >= kLongAddress) high -= kLongAddress;
  return LenzCommand{LenzCommand::Kind::WriteMain, Method::Direct,
                     (operation - 0xEC) * 256 + byteAt(message, 5) + 1, byteAt(message, 6),
                     high * 256 + byteAt(message, 3)};
}

}  // namespace

QByteArray lenzClosed(QByteArray message) {
  message += exclusiveOr(message);
  return message;
}

bool lenzCheckIsGood(const QByteArray& message) {
  return !message.isEmpty() && exclusiveOr(message) == 0;
}

std::optional<LenzCommand> lenzCommandFrom(const QByteArray& message) {
  const int code = byteAt(message, 1);
  switch (byteAt(message, 0)) {
    case 0x21:
      if (code == 0x81) return LenzCommand{LenzCommand::Kind::Resume};
      if (code == 0x10) return LenzCommand{LenzCommand::Kind::AskResult};
      if (code == 0x21) return LenzCommand{LenzCommand::Kind::AskVersion};
      if (code == 0x24) return LenzCommand{LenzCommand::Kind::AskState};
      return {};
    case 0x22:
      return readCommand(code, byteAt(message, 2));
    case 0x23:
      return writeCommand(code, byteAt(message, 2), byteAt(message, 3));
    case 0xE6:
      return mainCommand(message);
    default:
      return {};
  }
}

std::vector<QByteArray> LenzMessageReader::feed(const QByteArray& data, Millis now) {
  if (now - lastAt_ > kLongestPause) input_.clear();
  lastAt_ = now;
  input_ += data;
  std::vector<QByteArray> messages;
  while (const std::optional<QByteArray> message = next()) messages.push_back(*message);
  return messages;
}

std::optional<QByteArray> LenzMessageReader::next() {
  if (usb_) {
    const qsizetype head = input_.indexOf(kUsbHead);
    // A first half of the head at the end may get its second one.
    if (head < 0) input_ = input_.endsWith(kUsbHead[0]) ? input_.right(1) : QByteArray();
    if (head > 0) input_.remove(0, head);
    if (input_.size() < 3) return {};
  }
  const qsizetype start = usb_ ? 2 : 0;
  const int header = byteAt(input_, start);
  if (header < 0) return {};
  const qsizetype size = (header & 0x0F) + 2;
  if (input_.size() < start + size) return {};
  const QByteArray message = input_.mid(start, size);
  input_.remove(0, start + size);
  return message;
}

QByteArray lenzAccepted() {
  return lenzClosed(bytes({0x01, 0x04}));
}

QByteArray lenzResumed() {
  return lenzReport(0x01);
}

QByteArray lenzServiceMode() {
  return lenzReport(0x02);
}

QByteArray lenzReport(int code) {
  return lenzClosed(bytes({0x61, code}));
}

QByteArray lenzVersion(int version) {
  return lenzClosed(bytes({0x62, 0x21, version}));
}

QByteArray lenzVersion(int version, int central) {
  return lenzClosed(bytes({0x63, 0x21, version, central}));
}

QByteArray lenzState(int state) {
  return lenzClosed(bytes({0x62, 0x22, state}));
}

QByteArray lenzResult(Method method, int cv, int value) {
  const int block = cv % 1024 / 256;
  return lenzClosed(bytes({0x63, method == Method::Direct ? 0x14 + block : 0x10, cv % 256, value}));
}

}  // namespace lokari::sim
