// A UDP socket of this machine.
#pragma once

#include <QObject>
#include <QSocketNotifier>

#include <deque>
#include <memory>

#include "link/udp_socket.h"

namespace lokari {

/// It is connected, so that the system hands out what comes from the station's address and port
/// only, and reports a closed port.
class SystemUdpSocket final : public UdpSocket {
 public:
  SystemUdpSocket() = default;
  ~SystemUdpSocket() override;
  SystemUdpSocket(const SystemUdpSocket&) = delete;
  SystemUdpSocket& operator=(const SystemUdpSocket&) = delete;

  void open(const QString& host, quint16 remotePort, quint16 localPort = 0) override;
  void close() override;
  int state() const override { return socket_ < 0 ? 0 : kOpen; }
  QString fault() const override { return fault_; }
  void send(const QByteArray& datagram) override;
  QByteArray takeDatagram() override;

 private:
  void fail(const QString& fault);
  void receive();
  void announce();

  int socket_ = -1;
  int opened_ = 0;  ///< times; a callback may close the socket or open it anew
  std::unique_ptr<QSocketNotifier> notifier_;
  QObject context_;  ///< of calls that are on their way
  QString fault_;
  std::deque<QByteArray> waiting_;  ///< not taken yet; the last thousand
};

}  // namespace lokari
