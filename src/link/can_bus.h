// CAN interfaces of the operating system.
#pragma once

#include <QCanBusDevice>

#include <memory>
#include <vector>

#include "link/can_port.h"
#include "link/can_queue.h"

namespace lokari {

class Clock;

/// Where a driver's bus may be found: a plugin of the bus library and its name for the interface.
/// The first one that connects is taken.
struct CanInterface {
  int driver = 0;  ///< 1 to 5
  QString plugin;
  QString name;
};

class CanBus final : public CanPort {
 public:
  CanBus(std::vector<CanInterface> interfaces, Clock& clock)
      : interfaces_(std::move(interfaces)), clock_(clock) {}
  ~CanBus() override;

  /// The interfaces of this machine.
  static std::vector<CanInterface> systemInterfaces();

  /// Whether one of the driver's plugins is installed.
  bool isPresent(int driver) const;
  /// `btr` are the two bit timing registers of the bus, for a 16 MHz oscillator.
  int open(int driver, qint16 btr);
  int close() override;
  /// Refuses a message of more than 8 bytes.
  int write(const CanMessage& message) override;
  /// Throws LinkError when the interface has vanished.
  int read(CanMessage& message) override;

 private:
  bool connectTo(const CanInterface& where, int bitRate);
  void receive();

  std::vector<CanInterface> interfaces_;
  Clock& clock_;
  std::unique_ptr<QCanBusDevice> device_;
  CanQueue queue_;
};

/// Bits per second of two bit timing registers: BTR0 is the high byte.
int bitRateOf(qint16 btr);

}  // namespace lokari
