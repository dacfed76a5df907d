// The transports of this machine, for the programs.
#pragma once

#include <memory>

#include "link/port_table.h"
#include "link/qt_serial_line.h"
#include "link/qt_udp_socket.h"
#include "link/station_link.h"

namespace lokari {

class SystemTransports {
 public:
  /// `appPath` holds PORTS.INI.
  explicit SystemTransports(const QString& appPath);
  ~SystemTransports();

  Transports transports();
  PortTable& ports() { return ports_; }

 private:
  PortTable ports_;
  QtSerialLine serial_;
  QtUdpSocket udp_;
  std::unique_ptr<CanDriver> can_;
};

}  // namespace lokari
