#include "station/firm_block.h"

#include <algorithm>

#include "base/bytes.h"

namespace lokari {
namespace {

constexpr char kBlockStart = '!';
constexpr char kErased = '\xFF';

}  // namespace

FirmReply firmReplyFrom(char byte) {
  const auto reply = static_cast<FirmReply>(byte);
  switch (reply) {
    case FirmReply::Next:
    case FirmReply::SameBank:
    case FirmReply::SameBlock:
      return reply;
    default:
      return FirmReply::None;
  }
}

QByteArray firmBlock(const QByteArray& image, int address) {
  const int inBank = address % kFirmBankSize;
  QByteArray message(1, kBlockStart);
  appendByte(message, firmBank(address));
  appendByte(message, inBank / 256);
  appendByte(message, inBank % 256);
  message += image.mid(address, kFirmBlockData);
  int sum = 0;
  for (qsizetype i = 1; i < message.size(); ++i) sum += byteAt(message, i);
  appendByte(message, sum % 256);
  return message;
}

bool firmBlockErased(const QByteArray& image, int address) {
  const auto first = image.begin() + address;
  return std::all_of(first, first + kFirmBlockData, [](char c) { return c == kErased; });
}

}  // namespace lokari
