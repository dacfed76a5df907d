// The CAN interfaces and keys of this machine, by driver number.
#pragma once

#include <QtGlobal>

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

/// Results are 0 for success, else the driver's code. Messages arrive while events run.
class CanDriver {
 public:
  virtual ~CanDriver() = default;

  /// Whether this machine can offer the driver, 1 to 9.
  virtual bool isPresent(int driver) const = 0;
  /// The meaning of the three parameters differs by driver.
  virtual int open(int driver, qint16 btr, qint16 p1, qint16 p2) = 0;
  virtual int close() = 0;
  virtual int write(const CanMessage& message) = 0;
  /// Takes the oldest message waiting; not 0 when there is none. Never waits. Throws LinkError when
  /// the device has vanished.
  virtual int read(CanMessage& message) = 0;
};

}  // namespace lokari
