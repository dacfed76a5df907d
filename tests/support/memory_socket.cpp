#include "support/memory_socket.h"

#include "link/link_error.h"

namespace lokari::test {

void MemorySocket::open(const QString& host, quint16 remotePort, quint16 localPort) {
  openedHost = host;
  openedRemotePort = remotePort;
  openedLocalPort = localPort;
  waiting_.clear();
  state_ = stateAfterOpen;
}

void MemorySocket::close() {
  state_ = 0;
  waiting_.clear();
}

int MemorySocket::state() const {
  return state_;
}

void MemorySocket::send(const QByteArray& datagram) {
  if (state_ != kOpen) throw LinkError(QStringLiteral("Die Netzwerkverbindung ist nicht offen!"));
  if (failsToSend) throw LinkError(QStringLiteral("Netzwerkfehler beim Senden!"));
  sent.append(datagram);
  onSend(datagram);
}

QByteArray MemorySocket::takeDatagram() {
  if (waiting_.empty()) return {};
  const QByteArray datagram = waiting_.front();
  waiting_.pop_front();
  if (!waiting_.empty()) {
    clock_.schedule(0, [this] {
      if (!waiting_.empty() && onArrival) onArrival(waiting_.front().size());
    });
  }
  return datagram;
}

void MemorySocket::arrive(const QByteArray& datagram) {
  if (state_ != kOpen) return;
  waiting_.push_back(datagram);
  if (onReceived) onReceived(datagram);
  if (onArrival) onArrival(waiting_.front().size());
}

}  // namespace lokari::test
