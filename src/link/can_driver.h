// The CAN interfaces and keys of this machine, by driver number.
#pragma once

#include <QString>

#include <array>

namespace lokari {

/// One message. `ID` 0 means none; `MSGTYPE` 2 marks a 29-bit identifier. A key carries more than
/// the 8 data bytes of a classic frame.
struct CanMessage {
  quint32 ID = 0;
  quint8 MSGTYPE = 0;
  quint8 LEN = 0;
  std::array<quint8, 17> DATA{};
};

/// What a driver is opened with. The meaning of `btr`, `p1` and `p2` differs by driver.
struct CanOpenCall {
  int driver = 0;
  qint16 btr = 0;
  qint16 p1 = 0;
  qint16 p2 = 0;
  int baudrate = 0;  ///< of a key's serial port, bits per second; 0 is the key's own
};

/// Results are 0 for success, else the driver's code. Messages arrive while events run.
class CanDriver {
 public:
  virtual ~CanDriver() = default;

  /// Whether this machine can offer the driver, 1 to 9.
  virtual bool isPresent(int driver) const = 0;
  virtual int open(const CanOpenCall& call) = 0;
  virtual int close() = 0;
  virtual int write(const CanMessage& message) = 0;
  /// Takes the oldest message waiting; not 0 when there is none. Never waits. Throws LinkError when
  /// the device has vanished.
  virtual int read(CanMessage& message) = 0;

  /// Why open() failed, a whole German sentence; empty when there is no more to tell.
  virtual QString fault() const { return {}; }
  /// The station's machine tells that nobody listens there to what was written last.
  virtual bool isRefused() const { return false; }
};

}  // namespace lokari
