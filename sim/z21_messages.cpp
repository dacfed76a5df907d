#include "sim/z21_messages.h"

#include "base/bytes.h"

namespace lokari::sim {
namespace {

constexpr qsizetype kHead = 4;
constexpr int kReadBits = 0x01;
constexpr int kWriteBits = 0x03;

char byteChecksum(const QByteArray& data) {
  char sum = 0;
  for (const char byte : data) sum = static_cast<char>(sum ^ byte);
  return sum;
}

char textChecksum(const QByteArray& message) {
  return byteChecksum(message.toHex(' ').toUpper());
}

int word(int high, int low) {
  return high * 256 + low;
}

/// Read and write of the main track: 111001 or 111011, then the CV's ten bits, counted from 0.
std::optional<Z21CvCommand> mainCommand(const QByteArray& data) {
  if (data.size() != 7 || byteAt(data, 1) != 0x30) return {};
  const int option = byteAt(data, 4);
  const int operation = option >> 2 & 0x03;
  if (option >> 4 != 0x0E || (operation != kReadBits && operation != kWriteBits)) return {};
  return Z21CvCommand{.main = true,
                      .write = operation == kWriteBits,
                      .address = word(byteAt(data, 2) & 0x3F, byteAt(data, 3)),
                      .cv = word(option & 0x03, byteAt(data, 5)) + 1,
                      .value = byteAt(data, 6)};
}

}  // namespace

int z21VehicleAddress(const QByteArray& data, qsizetype at) {
  return word(byteAt(data, at) & 0x3F, byteAt(data, at + 1));
}

std::optional<Z21DriveCommand> z21DriveCommand(const QByteArray& data) {
  if (data.size() != 5 || byteAt(data, 0) != 0xE4) return {};
  Z21DriveCommand command;
  switch (byteAt(data, 1)) {
    case 0x10:
      command.steps = 14;
      break;
    case 0x12:
      command.steps = 28;
      break;
    case 0x13:
      command.steps = 128;
      break;
    default:
      return {};
  }
  command.address = z21VehicleAddress(data, 2);
  command.speed = byteAt(data, 4) & 0x7F;
  command.backward = (byteAt(data, 4) & 0x80) == 0;
  return command;
}

std::optional<Z21FunctionCommand> z21FunctionCommand(const QByteArray& data) {
  if (data.size() != 5 || !data.startsWith(bytes({0xE4, 0xF8}))) return {};
  return Z21FunctionCommand{.address = z21VehicleAddress(data, 2),
                            .function = byteAt(data, 4) & 0x3F,
                            .on = (byteAt(data, 4) & 0x40) != 0};
}

QList<Z21Message> splitZ21Datagram(const QByteArray& datagram) {
  QList<Z21Message> messages;
  QByteArray rest = datagram;
  while (rest.size() >= kHead) {
    const int length = word(byteAt(rest, 1), byteAt(rest, 0));
    if (length < kHead || length > rest.size()) break;
    const QByteArray whole = rest.left(length);
    rest.remove(0, length);
    Z21Message message{word(byteAt(whole, 3), byteAt(whole, 2)), whole.mid(kHead)};
    if (message.kind == kZ21Command) {
      if (message.data.isEmpty()) break;
      const char sum = message.data.back();
      message.data.chop(1);
      if (sum != byteChecksum(message.data) && sum != textChecksum(whole.chopped(1))) break;
    }
    messages.append(message);
  }
  return messages;
}

QByteArray z21Bytes(const Z21Message& message) {
  QByteArray data = message.data;
  if (message.kind == kZ21Command) data.append(byteChecksum(message.data));
  const int length = static_cast<int>(kHead + data.size());
  return bytes({length & 0xFF, length >> 8, message.kind & 0xFF, message.kind >> 8}) + data;
}

std::optional<Z21CvCommand> z21CvCommand(const QByteArray& data) {
  if (data.startsWith(bytes({0x23, 0x11})) && data.size() == 4) {
    return Z21CvCommand{.cv = word(byteAt(data, 2), byteAt(data, 3)) + 1};
  }
  if (data.startsWith(bytes({0x24, 0x12})) && data.size() == 5) {
    return Z21CvCommand{
        .write = true, .cv = word(byteAt(data, 2), byteAt(data, 3)) + 1, .value = byteAt(data, 4)};
  }
  if (byteAt(data, 0) == 0xE6) return mainCommand(data);
  return {};
}

}  // namespace lokari::sim
