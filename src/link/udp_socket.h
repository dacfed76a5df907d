// One UDP socket to one remote host.
#pragma once

#include <QByteArray>
#include <QString>

#include <functional>

namespace lokari {

class UdpSocket {
 public:
  /// state() of an open socket; other numbers are the socket library's and appear in messages.
  static constexpr int kOpen = 1;

  virtual ~UdpSocket() = default;

  /// Starts opening; `host` is a dotted address, leading zeros in its numbers are decimal
  /// ("192.168.000.111"). `localPort` 0 takes any free one. The outcome is seen in state().
  virtual void open(const QString& host, quint16 remotePort, quint16 localPort = 0) = 0;
  virtual void close() = 0;
  virtual int state() const = 0;
  /// Why the socket has not opened, a whole German sentence; empty when there is no more to tell.
  virtual QString fault() const = 0;

  /// One datagram. Throws LinkError when the socket is not open.
  virtual void send(const QByteArray& datagram) = 0;
  /// Takes the oldest datagram that is waiting; empty when there is none. Only those from the
  /// remote host and port wait.
  virtual QByteArray takeDatagram() = 0;

  /// Called from the event loop when a datagram arrives, and again after takeDatagram() as long as
  /// more are waiting; the argument is the size of the oldest one. A datagram that is not taken
  /// keeps waiting, without another call until the next one arrives.
  std::function<void(qsizetype)> onArrival;
  /// Hears each datagram as it arrives, beside whoever takes it; may be empty.
  std::function<void(const QByteArray&)> onReceived;
  /// Called when the remote host tells that nobody listens at the port that was sent to.
  std::function<void()> onRefused;
  /// Called when the socket closes without close().
  std::function<void()> onClosed;
};

}  // namespace lokari
