#include "link/system_udp_socket.h"

#include <arpa/inet.h>
#include <cerrno>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include "link/dotted_address.h"
#include "link/link_error.h"

namespace lokari {
namespace {

/// A session may leave a talking station unread for hours.
constexpr size_t kMostWaiting = 1000;
constexpr qsizetype kLongestDatagram = 65536;

sockaddr_in endpoint(quint32 address, quint16 port) {
  sockaddr_in made{};
  made.sin_family = AF_INET;
  made.sin_addr.s_addr = htonl(address);
  made.sin_port = htons(port);
  return made;
}

const sockaddr* plain(const sockaddr_in& address) {
  return reinterpret_cast<const sockaddr*>(&address);
}

QString bindFault(int error, quint16 localPort) {
  if (error == EADDRINUSE) {
    return QStringLiteral("Der UDP-Port %1 dieses Rechners ist von einem anderen Programm belegt!")
        .arg(localPort);
  }
  return QStringLiteral("Der UDP-Port %1 dieses Rechners lässt sich nicht öffnen: %2")
      .arg(QString::number(localPort), qt_error_string(error));
}

}  // namespace

SystemUdpSocket::~SystemUdpSocket() {
  close();
}

void SystemUdpSocket::open(const QString& host, quint16 remotePort, quint16 localPort) {
  close();
  fault_.clear();
  const auto address = dottedAddress(host);
  if (!address) return fail(noAddress(host));
  socket_ = ::socket(AF_INET, SOCK_DGRAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0);
  if (socket_ < 0) return fail(qt_error_string(errno));
  const sockaddr_in local = endpoint(INADDR_ANY, localPort);
  if (::bind(socket_, plain(local), sizeof local) != 0) return fail(bindFault(errno, localPort));
  const sockaddr_in remote = endpoint(*address, remotePort);
  if (::connect(socket_, plain(remote), sizeof remote) != 0) {
    return fail(QStringLiteral("Die Adresse %1 ist von diesem Rechner aus nicht zu erreichen: %2")
                    .arg(host, qt_error_string(errno)));
  }
  ++opened_;
  notifier_ = std::make_unique<QSocketNotifier>(socket_, QSocketNotifier::Read);
  QObject::connect(notifier_.get(), &QSocketNotifier::activated, notifier_.get(),
                   [this] { receive(); });
}

void SystemUdpSocket::fail(const QString& fault) {
  close();
  fault_ = fault;
}

void SystemUdpSocket::close() {
  if (notifier_) {
    // It may be the one that calls.
    notifier_->setEnabled(false);
    notifier_.release()->deleteLater();
  }
  if (socket_ >= 0) ::close(socket_);
  socket_ = -1;
  waiting_.clear();
}

void SystemUdpSocket::send(const QByteArray& datagram) {
  if (state() != kOpen) throw LinkError(QStringLiteral("Die Netzwerkverbindung ist nicht offen!"));
  const auto size = static_cast<size_t>(datagram.size());
  ssize_t sent = ::send(socket_, datagram.constData(), size, MSG_NOSIGNAL);
  // What an earlier datagram has met is reported here, and this one has not gone out.
  if (sent < 0 && errno == ECONNREFUSED) {
    sent = ::send(socket_, datagram.constData(), size, MSG_NOSIGNAL);
  }
  if (sent != static_cast<ssize_t>(datagram.size())) {
    throw LinkError(QStringLiteral("Netzwerkfehler beim Senden: ") + qt_error_string(errno));
  }
}

QByteArray SystemUdpSocket::takeDatagram() {
  if (waiting_.empty()) return {};
  const QByteArray datagram = waiting_.front();
  waiting_.pop_front();
  if (!waiting_.empty()) {
    QMetaObject::invokeMethod(
        &context_, [this] { announce(); }, Qt::QueuedConnection);
  }
  return datagram;
}

void SystemUdpSocket::receive() {
  const int turn = opened_;
  while (socket_ >= 0 && turn == opened_) {
    QByteArray datagram(kLongestDatagram, Qt::Uninitialized);
    const ssize_t size = ::recv(socket_, datagram.data(), kLongestDatagram, 0);
    if (size < 0) {
      if (errno == EINTR) continue;
      if (errno != ECONNREFUSED) return;
      if (onRefused) onRefused();
      continue;
    }
    // A datagram of nothing says nothing, and taken it would look like none.
    if (size == 0) continue;
    if (waiting_.size() == kMostWaiting) waiting_.pop_front();
    waiting_.emplace_back(datagram.constData(), static_cast<qsizetype>(size));
    if (onReceived) onReceived(QByteArray(waiting_.back()));
    announce();
  }
}

void SystemUdpSocket::announce() {
  if (!waiting_.empty() && onArrival) onArrival(waiting_.front().size());
}

}  // namespace lokari
