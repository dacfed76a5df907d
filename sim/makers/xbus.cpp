#include "sim/makers/xbus.h"

#include <array>

#include "base/bytes.h"

namespace lokari::sim::makers {
namespace {

constexpr std::array kGroups{FunctionGroup{0x20, 0, 5},  FunctionGroup{0x21, 5, 4},
                             FunctionGroup{0x22, 9, 4},  FunctionGroup{0x23, 13, 8},
                             FunctionGroup{0x28, 21, 8}, FunctionGroup{0x29, 29, 8}};

int xorOf(const QByteArray& data) {
  int sum = 0;
  for (qsizetype i = 0; i < data.size(); ++i) sum ^= byteAt(data, i);
  return sum;
}

quint32 maskOf(const FunctionGroup& group) {
  return ((1U << group.count) - 1U) << group.first;
}

/// The light stands behind F4 in its byte and ahead of F1 among the functions.
int lightLast(int bits) {
  return (bits >> 1 & 0x0F) | (bits & 1) << 4;
}
int lightFirst(int bits) {
  return (bits & 0x0F) << 1 | (bits >> 4 & 1);
}

}  // namespace

QByteArray withXor(const QByteArray& message) {
  QByteArray whole = message;
  appendByte(whole, xorOf(message));
  return whole;
}

bool endsInItsXor(const QByteArray& message) {
  return !message.isEmpty() && xorOf(message) == 0;
}

int xBusAddress(const QByteArray& message, qsizetype at) {
  return (byteAt(message, at) & 0x3F) * 256 + byteAt(message, at + 1);
}

const FunctionGroup* functionGroup(int code) {
  for (const FunctionGroup& group : kGroups) {
    if (group.code == code) return &group;
  }
  return nullptr;
}

quint32 withGroup(quint32 functions, const FunctionGroup& group, int bits) {
  const auto ordered = static_cast<quint32>(group.first == 0 ? lightFirst(bits) : bits);
  const quint32 mask = maskOf(group);
  return (functions & ~mask) | (ordered << group.first & mask);
}

int groupBits(quint32 functions, const FunctionGroup& group) {
  const auto bits = static_cast<int>((functions & maskOf(group)) >> group.first);
  return group.first == 0 ? lightLast(bits) : bits;
}

int groupBits(quint32 functions, int code) {
  const FunctionGroup* group = functionGroup(code);
  return group == nullptr ? 0 : groupBits(functions, *group);
}

int MainTrackAccess::written(int held) const {
  if (kind != Kind::WriteBit) return value;
  const int bit = 1 << (value & 0x07);
  return (value & 0x08) != 0 ? held | bit : held & ~bit;
}

std::optional<MainTrackAccess> mainTrackAccess(const QByteArray& message) {
  if (message.size() != 7 || !message.startsWith(bytes({0xE6, 0x30}))) return {};
  const int option = byteAt(message, 4);
  MainTrackAccess access{.address = xBusAddress(message, 2),
                         .cv = (option & 0x03) * 256 + byteAt(message, 5) + 1,
                         .value = byteAt(message, 6)};
  switch (option & 0xFC) {
    case 0xE4:
      access.kind = MainTrackAccess::Kind::Read;
      return access;
    case 0xE8:
      access.kind = MainTrackAccess::Kind::WriteBit;
      return access;
    case 0xEC:
      access.kind = MainTrackAccess::Kind::WriteByte;
      return access;
    default:
      return {};
  }
}

}  // namespace lokari::sim::makers
