// Frames of the MX1's binary protocol: 01 01, sequence, kind, message, data, checksum, 17. Bytes
// 01, 10 and 17 inside are sent as 10 and the byte with its bit 20 turned. The checksum is a CRC-8
// of polynomial 31, lowest bit first, from FF on.
#pragma once

#include <QByteArray>
#include <QList>

namespace lokari::sim::makers {

struct Mx1Frame {
  int sequence = 0;
  int kind = 0;
  int message = 0;
  QByteArray data;

  bool operator==(const Mx1Frame&) const = default;
};

QByteArray mx1Bytes(const Mx1Frame& frame);

class Mx1Reader {
 public:
  /// The frames that are whole now. One with a wrong checksum is left out, and what stands outside
  /// of frames is passed over.
  QList<Mx1Frame> feed(const QByteArray& data);

 private:
  QByteArray input_;
};

}  // namespace lokari::sim::makers
