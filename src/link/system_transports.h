// The transports of this machine, for the programs.
#pragma once

#include "link/can_log.h"
#include "link/port_table.h"
#include "link/qt_serial_line.h"
#include "link/station_link.h"
#include "link/system_can.h"
#include "link/system_udp_socket.h"
#include "link/trace.h"

namespace lokari {

class SystemTransports {
 public:
  /// `appPath` holds PORTS.INI, CAN.log and TRACE.log. The environment variable LOKARI_TRACE may
  /// ask for a trace. `clock` must outlive the transports.
  SystemTransports(const QString& appPath, Clock& clock);

  Transports transports();
  PortTable& ports() { return ports_; }
  Trace& trace() { return trace_; }

 private:
  PortTable ports_;
  QtSerialLine serial_;
  SystemUdpSocket udp_;
  SystemCan can_;
  CanLog canLog_;
  Trace trace_;
};

}  // namespace lokari
