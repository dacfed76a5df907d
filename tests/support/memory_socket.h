// A UDP socket without a network: datagrams are put into it by hand.
#pragma once

#include <QList>

#include <deque>

#include "link/udp_socket.h"
#include "support/virtual_clock.h"

namespace lokari::test {

class MemorySocket : public UdpSocket {
 public:
  explicit MemorySocket(VirtualClock& clock) : clock_(clock) {}

  void open(const QString& host, quint16 remotePort, quint16 localPort = 0) override;
  void close() override;
  int state() const override;
  QString fault() const override { return state_ == kOpen ? QString() : faultAfterOpen; }
  void send(const QByteArray& datagram) override;
  QByteArray takeDatagram() override;

  /// A datagram arrives, now. A closed socket loses it.
  void arrive(const QByteArray& datagram);

  /// The remote host tells that nobody listens, now.
  void refuse() {
    if (state_ == kOpen && onRefused) onRefused();
  }

  /// fault() after an open() that fails.
  QString faultAfterOpen;
  /// state() after open(): kOpen, or another number for a socket that does not come up.
  int stateAfterOpen = kOpen;
  bool failsToSend = false;  ///< the network is away
  QString openedHost;
  quint16 openedRemotePort = 0;
  quint16 openedLocalPort = 0;
  QList<QByteArray> sent;  ///< every datagram sent

 protected:
  /// A datagram that the program sent.
  virtual void onSend(const QByteArray& datagram) { Q_UNUSED(datagram) }

 private:
  VirtualClock& clock_;
  std::deque<QByteArray> waiting_;
  int state_ = 0;
};

}  // namespace lokari::test
