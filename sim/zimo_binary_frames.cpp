#include "sim/zimo_binary_frames.h"

#include <algorithm>
#include <array>

namespace lokari::sim {
namespace {

constexpr int kFrameStart = 0x01;
constexpr int kFrameEscape = 0x10;
constexpr int kFrameEnd = 0x17;
constexpr int kFlip = 0x20;

constexpr int kNews = 0x00;
constexpr int kOwnMessage = 0x10;
constexpr int kAnswerToRequest = 0x50;
constexpr int kLongHeader = 0x80;

/// Sequence, type, command and checksum.
constexpr qsizetype kShortestBody = 4;
constexpr qsizetype kLongestBody = 300;

char asChar(int byte) {
  return static_cast<char>(static_cast<unsigned char>(byte));
}

int asByte(char c) {
  return static_cast<unsigned char>(c);
}

/// The remainder of each byte, for the polynomial x^8 + x^5 + x^4 + 1 with its bits reversed.
constexpr std::array<quint8, 256> makeTable() {
  std::array<quint8, 256> table{};
  for (unsigned i = 0; i < table.size(); ++i) {
    unsigned remainder = i;
    for (int bit = 0; bit < 8; ++bit) {
      remainder = (remainder & 1U) != 0 ? (remainder >> 1) ^ 0x8CU : remainder >> 1;
    }
    table[i] = static_cast<quint8>(remainder);
  }
  return table;
}

constexpr std::array<quint8, 256> kTable = makeTable();

}  // namespace

quint8 zimoChecksum(const QByteArray& data) {
  quint8 sum = 0xFF;
  for (const char c : data) sum = kTable[static_cast<size_t>(sum ^ asByte(c))];
  return sum;
}

std::deque<ZimoFrame> ZimoFrameReader::feed(const QByteArray& data) {
  std::deque<ZimoFrame> frames;
  for (const char c : data) {
    const int byte = asByte(c);
    if (starts_ < 2 || byte == kFrameStart) {
      // Outside a frame only a start counts; inside one a bare 01 can only be the next one's.
      const bool insideBody = starts_ == 2 && !body_.isEmpty();
      const int before = insideBody ? 0 : starts_;
      starts_ = byte == kFrameStart ? std::min(before + 1, 2) : 0;
      body_.clear();
      escaped_ = false;
    } else if (byte == kFrameEnd) {
      starts_ = 0;
      const qsizetype rest = body_.size() - 1;
      if (body_.size() >= kShortestBody && zimoChecksum(body_.left(rest)) == asByte(body_[rest])) {
        frames.push_back({asByte(body_[0]), asByte(body_[1]), body_.mid(2, rest - 2)});
      }
    } else if (byte == kFrameEscape) {
      escaped_ = true;
    } else {
      body_.append(asChar(escaped_ ? byte ^ kFlip : byte));
      escaped_ = false;
      if (body_.size() > kLongestBody) starts_ = 0;
    }
  }
  return frames;
}

namespace {

QByteArray frameOf(ZimoHeader header, int seq, int type, int command, int requestSeq,
                   const QByteArray& data) {
  const bool isLong = header == ZimoHeader::Long;
  QByteArray body;
  body.append(asChar(seq));
  body.append(asChar(type | (isLong ? kLongHeader : 0)));
  body.append(asChar(command));
  body.append(asChar(requestSeq));
  if (isLong) body.append('\0');
  body += data;
  const quint8 sum = zimoChecksum(body);
  body.append(asChar(sum));
  if (isLong) body.append(asChar(~sum & 0xFF));

  QByteArray frame;
  frame.append(asChar(kFrameStart));
  frame.append(asChar(kFrameStart));
  for (const char c : body) {
    const int byte = asByte(c);
    const bool special = byte == kFrameStart || byte == kFrameEscape || byte == kFrameEnd;
    if (special) frame.append(asChar(kFrameEscape));
    frame.append(asChar(special ? byte ^ kFlip : byte));
  }
  frame.append(asChar(kFrameEnd));
  return frame;
}

}  // namespace

QByteArray zimoStationFrame(ZimoHeader header, int seq, bool answer, int command, int requestSeq,
                            const QByteArray& data) {
  return frameOf(header, seq, answer ? kAnswerToRequest : kOwnMessage, command, requestSeq, data);
}

QByteArray zimoNewsFrame(ZimoHeader header, int seq, int command, const QByteArray& data) {
  return frameOf(header, seq, kNews, command, 0, data);
}

}  // namespace lokari::sim
