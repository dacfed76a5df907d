// Transports for a link whose session is never opened.
#pragma once

#include "link/can_driver.h"
#include "link/link_error.h"
#include "link/serial_line.h"
#include "link/station_link.h"
#include "link/udp_socket.h"

namespace lokari::test {

class IdleSerial final : public SerialLine {
 public:
  void open(const SerialSettings&) override { refuse(); }
  void close() override {}
  bool isOpen() const override { return false; }
  qsizetype inBufferCount() override { return refuse(); }
  QByteArray read(qsizetype) override {
    refuse();
    return {};
  }
  void write(const QByteArray&) override { refuse(); }
  void setRtsEnable(bool) override { refuse(); }
  bool ctsHolding() override { return refuse() != 0; }

 private:
  static int refuse() { throw LinkError(QStringLiteral("Kein Anschluss!")); }
};

class IdleUdp final : public UdpSocket {
 public:
  void open(const QString&, quint16, quint16) override {}
  void close() override {}
  int state() const override { return 0; }
  void send(const QByteArray&) override { throw LinkError(QStringLiteral("Kein Anschluss!")); }
  QByteArray takeDatagram() override { return {}; }
};

class IdleCan final : public CanDriver {
 public:
  bool isPresent(int) const override { return false; }
  int open(int, qint16, qint16, qint16) override { return 1; }
  int close() override { return 0; }
  int write(const CanMessage&) override { return 1; }
  int read(CanMessage&) override { return 1; }
};

struct IdleTransports {
  IdleSerial serial;
  IdleUdp udp;
  IdleCan can;

  Transports transports() { return {serial, udp, can}; }
};

}  // namespace lokari::test
