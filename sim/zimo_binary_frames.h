// Frames of the Zimo binary protocol as the station reads and writes them:
//
//   01 01 | sequence, type, command, ..., checksum | 17
//
// In the body 01, 10 and 17 stand as 10 and the byte XOR 20. The checksum is the 1-Wire CRC-8,
// started with FF. A frame of the station carries, behind its command, the sequence byte of the
// request it belongs to; with the long header one more byte there and one more checksum byte.
#pragma once

#include <QByteArray>

#include <deque>

namespace lokari::sim {

/// The 1-Wire CRC-8 started with FF.
quint8 zimoChecksum(const QByteArray& data);

struct ZimoFrame {
  int seq = 0;
  int type = 0;
  QByteArray payload;  ///< command byte and what follows, without the checksum
};

/// Finds the frames in what arrives, in any portions. Noise between them, frames with a wrong
/// checksum and frames that never end are dropped.
class ZimoFrameReader {
 public:
  /// Whole frames that these bytes complete.
  std::deque<ZimoFrame> feed(const QByteArray& data);

 private:
  QByteArray body_;       ///< of the frame at hand, without escapes
  int starts_ = 0;        ///< 01 bytes seen in a row, 2 inside a frame
  bool escaped_ = false;  ///< the byte before was 10
};

enum class ZimoHeader { Short, Long };

/// A frame of the station that nobody asked for.
QByteArray zimoNewsFrame(ZimoHeader header, int seq, int command, const QByteArray& data);

/// A frame of the station on the wire. `answer` tells an answer from a message of its own.
QByteArray zimoStationFrame(ZimoHeader header, int seq, bool answer, int command, int requestSeq,
                            const QByteArray& data);

}  // namespace lokari::sim
