// Messages of the Lenz interfaces as the station sees them. A message is a header whose low four
// bits count the data bytes, the data, and the XOR of all that as the last byte.
//
// To the station:
//
//   21 81                     resume normal operation
//   21 10                     what did the programming track give?
//   21 21                     which version?
//   21 24                     which state?
//   22 14 cv, 22 15 cv        read, paged and direct; cv 0 is CV 256
//   22 18..1B cv              read, direct: CVs 1-255 and 1024, 256-511, 512-767, 768-1023
//   23 17 cv v, 23 16 cv v    write, paged and direct
//   23 1C..1F cv v            write, direct, as 18..1B
//   E6 30 ah al k cv v        write on the main track: k is EC to EF with bits 8 and 9 of the CV's
//                             number, which counts from 0 there, cv its other bits; a long address
//                             has C0 added to ah
#pragma once

#include <QByteArray>

#include <optional>
#include <vector>

#include "base/clock.h"
#include "sim/decoder.h"

namespace lokari::sim {

struct LenzCommand {
  enum class Kind { Resume, AskResult, AskVersion, AskState, ReadCv, WriteCv, WriteMain };

  Kind kind = Kind::Resume;
  Method method = Method::Direct;
  int cv = 0;       ///< 1 to 1024
  int value = 0;    ///< 0 to 255
  int address = 0;  ///< of a vehicle on the main track
};

/// What a whole message with a good check byte orders, or nothing.
std::optional<LenzCommand> lenzCommandFrom(const QByteArray& message);

/// Takes messages out of a stream of bytes.
class LenzMessageReader {
 public:
  /// On USB every message goes behind FF FE, and whatever stands between messages is dropped.
  explicit LenzMessageReader(bool usb) : usb_(usb) {}

  /// The messages that `data`, arriving at `now`, completes, good or bad. A sender who pauses for
  /// a second inside a message begins a new one.
  std::vector<QByteArray> feed(const QByteArray& data, Millis now);

 private:
  std::optional<QByteArray> next();

  bool usb_;
  QByteArray input_;
  Millis lastAt_ = 0;
};

/// `message` with its check byte behind it.
QByteArray lenzClosed(QByteArray message);

/// True when the last byte is the XOR of all the others.
bool lenzCheckIsGood(const QByteArray& message);

// -- from the station

QByteArray lenzAccepted();     ///< 01 04
QByteArray lenzResumed();      ///< 61 01
QByteArray lenzServiceMode();  ///< 61 02: service mode entered, no result yet
QByteArray lenzReport(int code);
/// 62 21 and the version in binary-coded decimal digits: the first generation.
QByteArray lenzVersion(int version);
/// 63 21 with the command station behind it: the later ones.
QByteArray lenzVersion(int version, int central);
/// 62 22: 08 programming, 04 automatic start, 02 emergency off, 01 emergency stop.
QByteArray lenzState(int state);
/// 63 with 10 for a paged access, 14 to 17 for a direct one by the CV's block.
QByteArray lenzResult(Method method, int cv, int value);

}  // namespace lokari::sim
