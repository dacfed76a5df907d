// The CAN module: nine drivers behind four operations, with a use count and the traffic log.
#pragma once

#include <QString>

#include "link/can_driver.h"

namespace lokari {

class CanLog;

/// What the key library takes from the settings.
struct KeySettings {
  QString ipAddr;
  int baudrate = 0;  ///< 0: the key's own
};

class ModCan {
 public:
  static constexpr int kAlreadyOpen = -1;
  static constexpr int kNoSuchDriver = 0x1000;
  /// A driver's code that counts as success.
  static constexpr int kHarmless = 0x10;

  /// `log` may be null.
  ModCan(CanDriver& driver, CanLog* log) : driver_(driver), log_(log) {}
  ~ModCan();
  ModCan(const ModCan&) = delete;
  ModCan& operator=(const ModCan&) = delete;

  /// 0 on success, kAlreadyOpen when it is open (the use is counted), kNoSuchDriver for a `driver`
  /// outside 1 to 8, else the driver's code.
  ///
  /// Driver 7 is taken as 8; 6 and 8 become 7 and 9, the key library's second generation, where it
  /// is present. For driver 9 with `p1` 0 the IP address takes the places of `btr` and `p2`.
  int canOpen(int driver, int p1, int p2, int btr, const KeySettings& key);
  /// Closes the driver when the last user has gone; gives the driver's code.
  int canClose();
  /// 0 on success.
  int canWrite(const CanMessage& message);
  /// 0 when a message was delivered. Never waits.
  int canRead(CanMessage& message);

  /// Why canOpen() failed, a whole German sentence; empty when there is no more to tell.
  QString fault() const { return driver_.fault(); }
  /// The station's machine tells that nobody listens there to what was written last.
  bool isRefused() const { return driver_.isRefused(); }

  bool isOpen() const { return uses_ > 0; }
  /// The driver number in use, after renumbering.
  int canDriver() const { return canDriver_; }

 private:
  void log(const QString& text);

  CanDriver& driver_;
  CanLog* log_;
  int canDriver_ = 0;
  int uses_ = 0;
};

/// An address "192.168.000.111" as the two numbers that carry it: 256 x the first part plus the
/// second, and the same of the third and fourth, as signed 16-bit integers. Both are 0 for a text
/// that is no such address.
struct PackedAddress {
  qint16 btr = 0;
  qint16 p2 = 0;
};
PackedAddress packAddress(const QString& ipAddr);

}  // namespace lokari
