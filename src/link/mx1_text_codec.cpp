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
  if (!reply.startsWith("QN")) return {};
  if (reply.mid(2, 2) == "00") return {Reply::Kind::Value, twoDigits(reply, 6)};
  return {Reply::Kind::Status, twoDigits(reply, 2)};
}

std::optional<int> parseIndex(const QByteArray& reply) {
  if (reply.size() != kIndexReplyLength) return std::nullopt;
  const std::optional<int> index = twoDigits(reply, 1);
  if (!index || *index < kFirstLongAddress) return std::nullopt;
  return index;
}

bool isRefusal(const QByteArray& text) {
  return text.startsWith("??");
}

}  // namespace lokari::mx1
