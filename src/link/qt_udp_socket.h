// A UDP socket of this machine.
#pragma once

#include <QHostAddress>
#include <QUdpSocket>

#include <deque>

#include "link/udp_socket.h"

namespace lokari {

class QtUdpSocket final : public UdpSocket {
 public:
  QtUdpSocket();

  void open(const QString& host, quint16 remotePort, quint16 localPort = 0) override;
  void close() override;
  int state() const override;
  void send(const QByteArray& datagram) override;
  QByteArray takeDatagram() override;

 private:
  void receive();
  void announce();

  QUdpSocket socket_;
  QHostAddress host_;
  quint16 port_ = 0;
  std::deque<QByteArray> waiting_;  ///< from the host, not taken yet; the last thousand
};

}  // namespace lokari
