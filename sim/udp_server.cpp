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
  if (peerPort_ != 0) socket_.writeDatagram(datagram, peer_, peerPort_);
}

void UdpServer::receive() {
  while (socket_.hasPendingDatagrams()) {
    const QNetworkDatagram datagram = socket_.receiveDatagram();
    peer_ = datagram.senderAddress();
    peerPort_ = static_cast<quint16>(datagram.senderPort());
    if (onReceive) onReceive(datagram.data());
  }
}

}  // namespace lokari::sim
