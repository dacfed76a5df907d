#include "link/qt_udp_socket.h"

#include <QNetworkDatagram>
#include <QStringList>

#include "link/link_error.h"

namespace lokari {
namespace {

/// A session may leave a talking station unread for hours.
constexpr size_t kMostWaiting = 1000;

/// The four numbers of a dotted address; a library would take leading zeros as octal.
QHostAddress addressOf(const QString& text) {
  const QStringList parts = text.trimmed().split(QLatin1Char('.'));
  if (parts.size() != 4) return {};
  quint32 address = 0;
  for (const QString& part : parts) {
    bool valid = false;
    const uint number = part.trimmed().toUInt(&valid, 10);
    if (!valid || number > 255) return {};
    address = address << 8 | number;
  }
  return QHostAddress(address);
}

}  // namespace

QtUdpSocket::QtUdpSocket() {
  QObject::connect(&socket_, &QUdpSocket::readyRead, &socket_, [this] { receive(); });
}

void QtUdpSocket::open(const QString& host, quint16 remotePort, quint16 localPort) {
  close();
  host_ = addressOf(host);
  port_ = remotePort;
  if (!host_.isNull()) socket_.bind(QHostAddress(QHostAddress::AnyIPv4), localPort);
}

void QtUdpSocket::close() {
  socket_.close();
  waiting_.clear();
}

int QtUdpSocket::state() const {
  return socket_.state() == QAbstractSocket::BoundState ? kOpen : 0;
}

void QtUdpSocket::send(const QByteArray& datagram) {
  if (state() != kOpen) throw LinkError(QStringLiteral("Die Netzwerkverbindung ist nicht offen!"));
  if (socket_.writeDatagram(datagram, host_, port_) != datagram.size()) {
    throw LinkError(QStringLiteral("Netzwerkfehler beim Senden: ") + socket_.errorString());
  }
}

QByteArray QtUdpSocket::takeDatagram() {
  if (waiting_.empty()) return {};
  const QByteArray datagram = waiting_.front();
  waiting_.pop_front();
  if (!waiting_.empty()) {
    QMetaObject::invokeMethod(
        &socket_, [this] { announce(); }, Qt::QueuedConnection);
  }
  return datagram;
}

void QtUdpSocket::receive() {
  while (socket_.hasPendingDatagrams()) {
    const QNetworkDatagram datagram = socket_.receiveDatagram();
    if (!datagram.senderAddress().isEqual(host_, QHostAddress::ConvertV4MappedToIPv4)) continue;
    // A datagram of nothing says nothing, and taken it would look like none.
    if (datagram.data().isEmpty()) continue;
    if (waiting_.size() == kMostWaiting) waiting_.pop_front();
    waiting_.push_back(datagram.data());
    announce();
  }
}

void QtUdpSocket::announce() {
  if (!waiting_.empty() && onArrival) onArrival(waiting_.front().size());
}

}  // namespace lokari
