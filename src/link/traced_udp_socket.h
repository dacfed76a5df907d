// A UDP socket that tells the trace what it carries. It adds nothing to the socket's own behaviour
// and changes no order.
#pragma once

#include "link/message_trace.h"
#include "link/udp_socket.h"

namespace lokari {

class TracedUdpSocket final : public UdpSocket {
 public:
  /// `socket` and `trace` must outlive it. While it is open the socket's calls are its own.
  TracedUdpSocket(UdpSocket& socket, MessageTrace& trace) : socket_(socket), trace_(trace) {}
  ~TracedUdpSocket() override;
  TracedUdpSocket(const TracedUdpSocket&) = delete;
  TracedUdpSocket& operator=(const TracedUdpSocket&) = delete;

  void open(const QString& host, quint16 remotePort, quint16 localPort = 0) override;
  void close() override;
  int state() const override { return socket_.state(); }
  QString fault() const override { return socket_.fault(); }
  void send(const QByteArray& datagram) override;
  QByteArray takeDatagram() override;

 private:
  UdpSocket& socket_;
  MessageTrace& trace_;
  bool listens_ = false;  ///< the socket's calls come here
};

}  // namespace lokari
