#include "sim/makers/mx1_frames.h"

#include "base/bytes.h"

namespace lokari::sim::makers {
namespace {

constexpr int kBegin = 0x01;
constexpr int kMask = 0x10;
constexpr int kEnd = 0x17;
constexpr int kTurned = 0x20;

/// Sequence, kind, message, checksum.
constexpr qsizetype kShortest = 4;

int checksum(const QByteArray& data) {
  constexpr int kPolynomial = 0x8C;
  int sum = 0xFF;
  for (qsizetype i = 0; i < data.size(); ++i) {
    sum ^= byteAt(data, i);
    for (int bit = 0; bit < 8; ++bit) sum = (sum & 1) != 0 ? sum >> 1 ^ kPolynomial : sum >> 1;
  }
  return sum;
}

QByteArray masked(const QByteArray& data) {
  QByteArray result;
  for (qsizetype i = 0; i < data.size(); ++i) {
    const int byte = byteAt(data, i);
    const bool special = byte == kBegin || byte == kMask || byte == kEnd;
    if (special) appendByte(result, kMask);
    appendByte(result, special ? byte ^ kTurned : byte);
  }
  return result;
}

QByteArray unmasked(const QByteArray& data) {
  QByteArray result;
  for (qsizetype i = 0; i < data.size(); ++i) {
    const bool special = byteAt(data, i) == kMask && i + 1 < data.size();
    if (special) ++i;
    appendByte(result, special ? byteAt(data, i) ^ kTurned : byteAt(data, i));
  }
  return result;
}

}  // namespace

QByteArray mx1Bytes(const Mx1Frame& frame) {
  QByteArray inside = bytes({frame.sequence, frame.kind, frame.message}) + frame.data;
  appendByte(inside, checksum(inside));
  return bytes({kBegin, kBegin}) + masked(inside) + bytes({kEnd});
}

QList<Mx1Frame> Mx1Reader::feed(const QByteArray& data) {
  static const QByteArray head = bytes({kBegin, kBegin});
  QList<Mx1Frame> frames;
  input_ += data;
  for (;;) {
    const qsizetype begin = input_.indexOf(head);
    if (begin < 0) {
      // The first half of a head may have come.
      input_ = input_.endsWith(static_cast<char>(kBegin)) ? input_.right(1) : QByteArray();
      return frames;
    }
    input_.remove(0, begin);
    const qsizetype end = input_.indexOf(static_cast<char>(kEnd));
    if (end < 0) return frames;
    // A head inside is the beginning of a frame whose forerunner was cut.
    const qsizetype last = input_.lastIndexOf(head, end);
    const QByteArray inside = unmasked(input_.mid(last + head.size(), end - last - head.size()));
    input_.remove(0, end + 1);
    if (inside.size() < kShortest) continue;
    if (byteAt(inside, inside.size() - 1) != checksum(inside.chopped(1))) continue;
    frames.append({byteAt(inside, 0), byteAt(inside, 1), byteAt(inside, 2),
                   inside.mid(3, inside.size() - kShortest)});
  }
}

}  // namespace lokari::sim::makers
