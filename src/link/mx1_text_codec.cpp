#include "link/mx1_text_codec.h"

#include "base/numbers.h"

namespace lokari::mx1 {
namespace {

QByteArray digits(int number) {
  return hexPadded(number).toLatin1();
}

QByteArray line(const QByteArray& text) {
  return text + '\r';
}

constexpr char kReplyHead[] = "QN";

bool isLineEnd(char c) {
  return c == '\r' || c == '\n';
}

/// The number of the two hexadecimal digits at `index`, counted from 0.
std::optional<int> twoDigits(const QByteArray& text, qsizetype index) {
  if (text.size() < index + 2) return std::nullopt;
  const std::optional<quint32> number = parseHex(QString::fromLatin1(text.mid(index, 2)));
  if (!number) return std::nullopt;
  return static_cast<int>(*number);
}

}  // namespace

QByteArray wakeUp() {
  return line({});
}

QByteArray readCommand(int cv) {
  return line("QN" + digits(cv));
}

QByteArray writeCommand(int cv, int value) {
  return line("RN" + digits(cv) + digits(value));
}

QByteArray writeMainCommand(int index, int address, int cv, int value) {
  const QByteArray packetAddress = index < kFirstLongAddress
                                       ? "14" + digits(index)
                                       : "15" + digits(address / 256 + 192) + digits(address & 255);
  // On the track a CV counts from 0.
  return line("L" + digits(index) + packetAddress + "EC" + digits(cv - 1) + digits(value));
}

QByteArray askIndexCommand(int address) {
  return line("E" + digits(address / 256) + digits(address & 255));
}

QByteArray leaveFirst() {
  return line("REN");
}

QByteArray leaveSecond() {
  return line("RE");
}

Reply parseReply(const QByteArray& reply) {
  if (!reply.startsWith(kReplyHead)) return {};
  const std::optional<int> named = twoDigits(reply, 4);
  if (reply.mid(2, 2) == "00") return {Reply::Kind::Value, twoDigits(reply, 6), named};
  return {Reply::Kind::Status, twoDigits(reply, 2), named};
}

qsizetype findReply(const QByteArray& text, qsizetype from) {
  for (qsizetype at = text.indexOf(kReplyHead, from); at >= 0;
       at = text.indexOf(kReplyHead, at + 1)) {
    const bool beginsLine = at == 0 || isLineEnd(text[at - 1]);
    if (beginsLine && text.size() >= at + kReplyLength) return at;
  }
  return -1;
}

std::optional<int> parseIndex(const QByteArray& reply) {
  if (reply.size() != kIndexReplyLength) return std::nullopt;
  const std::optional<int> index = twoDigits(reply, 1);
  if (!index || *index < kFirstLongAddress) return std::nullopt;
  return index;
}

std::optional<int> indexAddress(const QByteArray& reply) {
  const std::optional<int> high = twoDigits(reply, 3);
  const std::optional<int> low = twoDigits(reply, 5);
  if (!high || !low) return std::nullopt;
  return *high * 256 + *low;
}

Refusals refusalsIn(const QByteArray& text) {
  Refusals found;
  for (qsizetype at = 0; at < text.size(); ++at) {
    if (at > 0 && !isLineEnd(text[at - 1])) continue;
    const QByteArray line = text.mid(at, 3);
    if (line == "???") {
      found.switching = true;
    } else if (line.startsWith("??")) {
      found.address = true;
    }
  }
  return found;
}

}  // namespace lokari::mx1
