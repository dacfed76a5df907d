#include "cab/intellibox_codec.h"

#include <algorithm>

#include "base/bytes.h"
#include "cab/unit_addresses.h"
#include "link/p50x_codes.h"

namespace lokari::ibx {
namespace {

constexpr int kDrive = 0x80;
constexpr int kAskDrive = 0x84;
constexpr int kOutput = 0x90;
constexpr int kAskOutputs = 0x95;
constexpr int kStop = 0xA5;
constexpr int kGo = 0xA7;

constexpr int kForward = 0x20;
constexpr int kLight = 0x10;
constexpr int kValid = 0x40;
constexpr int kOn = 0x80;

constexpr int kLastAddress = 10239;
constexpr int kLastUnitWithGroup = 510;

QByteArray addressed(int command, int address) {
  return bytes({command, address & 255, address / 256});
}

bool isReply(const QByteArray& reply, qsizetype size) {
  return reply.size() >= size && byteAt(reply, 0) == p50x::kDone;
}

bool hasNoSlot(const QByteArray& reply) {
  return reply == bytes({p50x::kNoSlot});
}

/// Coil of output `n`, with power or without.
QByteArray coil(int address, int n, bool on, int power) {
  const int output = unitOutput(address, n);
  return bytes({kOutput, output & 255, output / 256 + power + (on ? kOn : 0)});
}

}  // namespace

std::optional<QByteArray> drive(int address) {
  if (address < 0 || address > kLastAddress) return std::nullopt;
  return addressed(kDrive, address);
}

int driveFlags(bool backward, bool light) {
  return kValid | (backward ? 0 : kForward) | (light ? kLight : 0);
}

QByteArray switchFunctions(int address, int mask, const FunctionRange& range) {
  QByteArray command = addressed(range.command, address);
  for (int i = 0; i < range.byteCount(); ++i) appendByte(command, mask >> (8 * i) & 0xFF);
  return command;
}

QByteArray stop() {
  return bytes({kStop});
}

QByteArray go() {
  return bytes({kGo});
}

QByteArray askDrive(int address) {
  return addressed(kAskDrive, address);
}

std::optional<DriveReply> driveReply(const QByteArray& reply) {
  if (hasNoSlot(reply)) return DriveReply{};
  if (!isReply(reply, kDriveReplySize)) return std::nullopt;
  const int flags = byteAt(reply, 2);
  return DriveReply{.speed = std::min(byteAt(reply, 1), CabState::kHighestSpeed),
                    .backward = (flags & kForward) == 0,
                    .functions = ((flags & kLight) != 0 ? 1U : 0U) |
                                 static_cast<FunctionMask>(flags & 0x0F) << 1U};
}

QByteArray askFunctions(int address, const FunctionRange& range) {
  return addressed(range.question, address);
}

std::optional<FunctionMask> functionReply(const QByteArray& reply, const FunctionRange& range) {
  if (hasNoSlot(reply)) return FunctionMask{0};
  if (!isReply(reply, range.replySize())) return std::nullopt;
  FunctionMask mask = 0;
  for (int i = 0; i < range.byteCount(); ++i) {
    mask |= static_cast<FunctionMask>(byteAt(reply, 1 + i)) << (range.first + 8 * i);
  }
  return mask & ((FunctionMask{2} << range.last) - 1);
}

int restOf(const QByteArray& reply, const FunctionRange& range) {
  if (!range.keepsRest || !isReply(reply, range.replySize())) return 0;
  const int last = byteAt(reply, range.byteCount());
  const int own = (range.last - range.first) % 8 + 1;
  return (last & ~((1 << own) - 1)) << 8 * (range.byteCount() - 1);
}

std::optional<QByteArray> askOutputs(int address) {
  if (address < 1 || address > kLastUnitWithGroup) return std::nullopt;
  return bytes({kAskOutputs, unitPlace(address) / 2 + 1});
}

std::optional<quint8> outputReply(const QByteArray& reply, int address) {
  if (!isReply(reply, kOutputReplySize)) return std::nullopt;
  const int both = byteAt(reply, 1);
  const int own = address % 2 == 1 ? both & 0x0F : both >> 4;
  int mask = 0;
  for (int i = 0; i < kUnitOutputs; ++i) {
    mask |= 1 << ((own >> i & 1) != 0 ? 2 * i + 1 : 2 * i);
  }
  return static_cast<quint8>(mask);
}

QByteArray switchOutput(int address) {
  return addressed(kOutput, unitOutput(address, 0));
}

QByteArray switchOutput(int address, int n, bool on) {
  return coil(address, n, on, kValid);
}

QByteArray endPulse(int address, int n, bool on) {
  return coil(address, n, on, 0);
}

}  // namespace lokari::ibx
