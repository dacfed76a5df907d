// Messages on the wire of an XpressNet interface: a header byte, whose low half is the number of
// data bytes, the data, and the exclusive or of all. A framed interface (USB, LAN) has FF FE ahead
// of commands and answers and FF FD ahead of broadcasts, both outside the checksum.
#pragma once

#include <QByteArray>
#include <QList>

namespace lokari::sim::makers {

class XpressNetReader {
 public:
  explicit XpressNetReader(bool framed) : framed_(framed) {}

  /// The messages that are whole now, with their checksum. On a framed interface what stands ahead
  /// of FF FE is passed over.
  QList<QByteArray> feed(const QByteArray& data);

  /// A message has begun and not ended.
  bool isInside() const { return !input_.isEmpty(); }
  void clear() { input_.clear(); }

 private:
  bool framed_;
  QByteArray input_;
};

}  // namespace lokari::sim::makers
