// The CAN key on a serial port.
#pragma once

#include "link/can_key_codec.h"
#include "link/can_port.h"

namespace lokari {

class Clock;
class SerialLine;

class CanKeySerial final : public CanPort {
 public:
  static constexpr int kDefaultRate = 512000;  ///< bits per second

  CanKeySerial(SerialLine& line, Clock& clock) : line_(line), clock_(clock) {}

  /// Wakes the key on that COM port, in three tries of half a second each. A key that stays silent
  /// counts as open: whether a station stands behind it, only its messages tell.
  int open(int comPort, int baudrate);
  int close() override;
  int write(const CanMessage& message) override;
  /// Throws LinkError when the port has vanished.
  int read(CanMessage& message) override;
  QString fault() const override { return fault_; }

 private:
  bool heard();

  SerialLine& line_;
  Clock& clock_;
  can_key::FrameReader reader_;
  QString fault_;
};

}  // namespace lokari
