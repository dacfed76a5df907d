// A station's UDP port on 127.0.0.1. It answers to whoever spoke to it last.
#pragma once

#include <QHostAddress>
#include <QString>
#include <QUdpSocket>

#include <functional>

namespace lokari::sim {

class UdpServer {
 public:
  UdpServer();

  /// Empty on success, else a German message.
  QString open(quint16 port);
  void close() { socket_.close(); }
  void send(const QByteArray& datagram);

  std::function<void(const QByteArray&)> onReceive;

 private:
  void receive();

  QUdpSocket socket_;
  QHostAddress peer_;
  quint16 peerPort_ = 0;
};

}  // namespace lokari::sim
