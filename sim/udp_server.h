// A station's UDP port on 127.0.0.1. It answers to whoever spoke to it last, or to a client by its
// number.
#pragma once

#include <QHostAddress>
#include <QList>
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
  /// Clients are numbered from 0 in the order in which they spoke first.
  void sendTo(int client, const QByteArray& datagram);

  std::function<void(const QByteArray&)> onReceive;
  std::function<void(int client, const QByteArray&)> onReceiveFrom;

 private:
  struct Peer {
    QHostAddress address;
    quint16 port = 0;
    bool operator==(const Peer&) const = default;
  };

  void receive();
  int clientOf(const Peer& peer);

  QUdpSocket socket_;
  QList<Peer> peers_;
  int last_ = -1;  ///< of `peers_`, who spoke last
};

}  // namespace lokari::sim
