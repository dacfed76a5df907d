#include "sim/udp_server.h"

#include <QNetworkDatagram>

namespace lokari::sim {

UdpServer::UdpServer() {
  QObject::connect(&socket_, &QUdpSocket::readyRead, &socket_, [this] { receive(); });
}

QString UdpServer::open(quint16 port) {
  if (socket_.bind(QHostAddress(QHostAddress::LocalHost), port)) return {};
  return QStringLiteral("Kann 127.0.0.1:%1 nicht öffnen: %2").arg(port).arg(socket_.errorString());
}

void UdpServer::send(const QByteArray& datagram) {
  sendTo(last_, datagram);
}

void UdpServer::sendTo(int client, const QByteArray& datagram) {
  if (client < 0 || client >= peers_.size()) return;
  socket_.writeDatagram(datagram, peers_[client].address, peers_[client].port);
}

int UdpServer::clientOf(const Peer& peer) {
  const qsizetype known = peers_.indexOf(peer);
  if (known >= 0) return static_cast<int>(known);
  peers_.append(peer);
  return static_cast<int>(peers_.size()) - 1;
}

void UdpServer::receive() {
  while (socket_.hasPendingDatagrams()) {
    const QNetworkDatagram datagram = socket_.receiveDatagram();
    last_ = clientOf({datagram.senderAddress(), static_cast<quint16>(datagram.senderPort())});
    if (onReceive) onReceive(datagram.data());
    if (onReceiveFrom) onReceiveFrom(last_, datagram.data());
  }
}

}  // namespace lokari::sim
