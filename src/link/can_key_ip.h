// The CAN key's IP mode: the station itself over UDP.
#pragma once

#include <memory>

#include "base/clock.h"
#include "link/can_port.h"
#include "link/can_queue.h"

namespace lokari {

class UdpSocket;

class CanKeyIp final : public CanPort {
 public:
  static constexpr quint16 kStationPort = 14520;
  static constexpr quint16 kLocalPort = 14521;

  CanKeyIp(UdpSocket& socket, Clock& clock) : socket_(socket), clock_(clock) {}
  ~CanKeyIp() override;

  /// Opens the socket to a dotted address and tells the station; from then on something goes out
  /// at least every 30 s.
  int open(const QString& address);
  /// Tells the station and closes the socket.
  int close() override;
  int write(const CanMessage& message) override;
  int read(CanMessage& message) override { return queue_.take(message); }
  QString fault() const override { return fault_; }
  bool isRefused() const override { return refused_; }

 private:
  void receive();
  void keepAlive();

  UdpSocket& socket_;
  Clock& clock_;
  CanQueue queue_;
  QString fault_;
  bool refused_ = false;                 ///< what was sent last
  std::unique_ptr<Clock::Alarm> alarm_;  ///< null while closed
};

}  // namespace lokari
