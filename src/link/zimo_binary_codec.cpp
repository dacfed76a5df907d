#include "link/zimo_binary_codec.h"

#include "base/bytes.h"
#include "link/cv_result.h"

namespace lokari::zbin {
namespace {

constexpr char kStart = 0x01;
constexpr char kEscape = 0x10;
constexpr char kEscapeMask = 0x20;

constexpr int kRequest = 0x10;
constexpr int kAnswer = 0x50;
constexpr int kLongHeaderBit = 0x80;
constexpr int kShortHeader = 4;

constexpr int kCvCommand = 0x13;
constexpr int kAccepted = 0x00;
constexpr int kBusy = 0x04;
constexpr int kDone = 0x34;
constexpr int kTrackPowerCommand = 0x02;
/// Added to an address's high byte; with address 0 it names the programming track.
constexpr int kCvAddressBase = 0x80;
constexpr int kFirstAddress = 1;
constexpr int kLastAddress = 10239;

bool needsEscape(char byte) {
  return byte == kStart || byte == kEscape || byte == kEnd;
}

char flipped(char byte) {
  return static_cast<char>(byte ^ kEscapeMask);
}

}  // namespace

QByteArray unescape(const QByteArray& body) {
  QByteArray plain;
  plain.reserve(body.size());
  bool escaped = false;
  for (const char byte : body) {
    if (!escaped && byte == kEscape) {
      escaped = true;
      continue;
    }
    plain.append(escaped ? flipped(byte) : byte);
    escaped = false;
  }
  return plain;
}

quint8 calcCRC8(const QByteArray& data) {
  unsigned reg = 0xFF;
  for (const char byte : data) {
    unsigned rest = static_cast<quint8>(byte);
    for (int bit = 0; bit < 8; ++bit) {
      const unsigned mix = (reg ^ rest) & 1U;
      reg >>= 1;
      rest >>= 1;
      if (mix == 1U) reg ^= 0x8CU;
    }
  }
  return static_cast<quint8>(reg);
}

QByteArray frame(int seq, const QByteArray& payload, bool answer) {
  QByteArray body = bytes({seq, answer ? kAnswer : kRequest}) + payload;
  appendByte(body, calcCRC8(body));

  QByteArray frame(2, kStart);
  frame.reserve(2 * body.size() + 3);
  for (const char byte : body) {
    if (needsEscape(byte)) {
      frame.append(kEscape);
      frame.append(flipped(byte));
    } else {
      frame.append(byte);
    }
  }
  frame.append(kEnd);
  return frame;
}

std::optional<qsizetype> bodyStart(const QByteArray& head) {
  const qsizetype at = head.indexOf(QByteArray(2, kStart));
  if (at < 0) return std::nullopt;
  return at + 2;
}

Reply takeApart(const QByteArray& body) {
  const QByteArray plain = unescape(body);
  Reply reply;
  reply.seq = byteAt(plain, 0);
  const int type = byteAt(plain, 1);
  const int header = type >= 0 && (type & kLongHeaderBit) != 0 ? 5 : kShortHeader;
  const int tail = header - 2;
  if (plain.size() < header + tail) return reply;
  if (header == kShortHeader) {
    const qsizetype checked = plain.size() - tail;
    reply.sound = calcCRC8(plain.left(checked)) == byteAt(plain, checked);
  }
  reply.kind = type & ~kLongHeaderBit;
  reply.answered = byteAt(plain, 3);
  reply.text = plain.mid(2, 1) + plain.mid(header, plain.size() - header - tail);
  return reply;
}

QByteArray readCv(int cv) {
  return bytes({kCvCommand, kCvAddressBase, 0x00, byteSecond(cv), byteLow(cv)});
}

QByteArray writeCv(int cv, int value) {
  QByteArray payload = readCv(cv);
  appendByte(payload, value);
  return payload;
}

std::optional<QByteArray> writeCvMain(int address, int cv, int value) {
  if (address < kFirstAddress || address > kLastAddress) return std::nullopt;
  return bytes({kCvCommand, kCvAddressBase + address / 256, address & 255, byteSecond(cv),
                byteLow(cv), value});
}

QByteArray acknowledge(int seq) {
  return bytes({kCvCommand, seq, 0x00});
}

QByteArray acknowledgeUnasked(int message, int seq) {
  return bytes({message, seq});
}

QByteArray hello() {
  return bytes({0x00});
}

QByteArray logOn() {
  return bytes({0x11, 0x04, 0x01});
}

QByteArray logOff() {
  return bytes({0x11, 0x04, 0x00});
}

Verdict judge(const QByteArray& reply) {
  if (reply.size() < 2) return Verdict::TooShort;
  const int status = byteAt(reply, 1);
  if (byteAt(reply, 0) == kCvCommand && status == kAccepted) return Verdict::Accepted;
  return status == kBusy ? Verdict::Busy : Verdict::Refused;
}

int refusal(const QByteArray& reply) {
  return -1030 - byteAt(reply, 1);
}

Result result(const QByteArray& reply) {
  if (byteAt(reply, 0) != kCvCommand) return {false, cv_result::kWrongReply};
  if (reply.size() >= 6) return {true, byteAt(reply, 5)};
  const int error = byteAt(reply, 3);
  return {true, error < 0 ? cv_result::kWrongReply : -1100 - error};
}

bool isOfEarlierAccess(const QByteArray& reply, int cv) {
  if (byteAt(reply, 0) != kCvCommand) return false;
  if (reply.size() < 6) return reply.size() == 2;
  return byteAt(reply, 3) != byteSecond(cv) || byteAt(reply, 4) != byteLow(cv);
}

Confirmation confirmation(const QByteArray& message, const QByteArray& reply) {
  const int first = byteAt(reply, 0);
  const int second = byteAt(reply, 1);
  if (first < 0) return Confirmation::None;
  const bool answersMessage = first == byteAt(message, 0);
  if (answersMessage && second == kBusy) return Confirmation::Busy;
  if (answersMessage && (second == kAccepted || second == kDone)) return Confirmation::Done;
  return first == kTrackPowerCommand ? Confirmation::Done : Confirmation::None;
}

}  // namespace lokari::zbin
