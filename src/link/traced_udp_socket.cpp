#include "link/traced_udp_socket.h"

#include "link/link_error.h"
#include "link/trace_head.h"

namespace lokari {

void TracedUdpSocket::open(const QString& host, quint16 remotePort, quint16 localPort) {
  if (trace_.isWanted()) {
    trace_.opening(QStringLiteral("öffnet %1, UDP-Port %2")
                       .arg(stationText(trace_.settings()), QString::number(remotePort)));
  }
  // Another user of the socket may have set calls of its own meanwhile.
  listens_ = true;
  socket_.onArrival = [this](qsizetype size) {
    if (onArrival) onArrival(size);
  };
  // Where it arrives: it may be taken later, behind the next question, or never.
  socket_.onReceived = [this](const QByteArray& datagram) {
    trace_.received(datagram);
    if (onReceived) onReceived(datagram);
  };
  socket_.onRefused = [this] {
    trace_.event(QStringLiteral("dort hört niemand zu"));
    if (onRefused) onRefused();
  };
  socket_.onClosed = [this] {
    trace_.event(QStringLiteral("die Verbindung ist zu"));
    if (onClosed) onClosed();
  };
  socket_.open(host, remotePort, localPort);
  if (trace_.isWanted() && !socket_.fault().isEmpty()) trace_.fault(socket_.fault());
}

void TracedUdpSocket::close() {
  if (socket_.state() == kOpen) trace_.event(QStringLiteral("schließt die Verbindung"));
  socket_.close();
}

TracedUdpSocket::~TracedUdpSocket() {
  if (!listens_) return;
  socket_.onArrival = nullptr;
  socket_.onReceived = nullptr;
  socket_.onRefused = nullptr;
  socket_.onClosed = nullptr;
}

void TracedUdpSocket::send(const QByteArray& datagram) {
  // Ahead of it: an answer may be there before the call is back.
  trace_.sent(datagram);
  try {
    socket_.send(datagram);
  } catch (const LinkError& error) {
    trace_.fault(QStringLiteral("nicht gesendet: ") + error.message());
    throw;
  }
}

QByteArray TracedUdpSocket::takeDatagram() {
  return socket_.takeDatagram();
}

}  // namespace lokari
