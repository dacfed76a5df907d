// One serial port: 8 data bits, no parity, 1 stop bit. Bytes arrive while events run.
#pragma once

#include <QByteArray>

#include <functional>

#include "base/clock.h"
#include "base/station_kind.h"

namespace lokari {

struct SerialSettings {
  int comPort = 0;   ///< number of the port, 1 to 10
  int baudrate = 0;  ///< bits per second
  Handshaking handshaking = Handshaking::None;
};

/// What bytes take on the wire: a start bit, eight of data and a stop bit each.
inline Millis timeOnWire(qint64 bytes, int baudrate) {
  constexpr qint64 kBits = 10;
  constexpr qint64 kSecond = 1000;
  return baudrate > 0 ? (bytes * kBits * kSecond + baudrate - 1) / baudrate : 0;
}

/// Every operation but close() and isOpen() throws LinkError when the port is not open, cannot do
/// it, or its device has vanished.
class SerialLine {
 public:
  virtual ~SerialLine() = default;

  /// Opens the port with nothing waiting in either direction.
  virtual void open(const SerialSettings& settings) = 0;
  virtual void close() = 0;
  /// False also once the device has vanished.
  virtual bool isOpen() const = 0;

  /// Bytes waiting.
  virtual qsizetype inBufferCount() = 0;
  /// Takes up to `most` waiting bytes, 0 for all; never waits.
  virtual QByteArray read(qsizetype most = 0) = 0;
  /// Sends without waiting for the line.
  virtual void write(const QByteArray& data) = 0;
  /// How long it takes until everything written is on the wire; 0 when nothing is left to send.
  virtual Millis untilSent() = 0;

  /// The request-to-send line. Lowering it suspends the handshaking until it is raised again.
  virtual void setRtsEnable(bool raised) = 0;
  /// The data-terminal-ready line, which opening raises.
  virtual void setDtrEnable(bool raised) = 0;
  /// The clear-to-send line; a line without modem signals counts as raised.
  virtual bool ctsHolding() = 0;

  /// Hears what arrives, once, beside whoever takes it. Called while events run; may be empty.
  std::function<void(const QByteArray&)> onReceived;
};

}  // namespace lokari
