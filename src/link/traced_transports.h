// The three transports with the trace around them: the one place where they come together, so that
// no protocol knows of it and every kind of station has it.
#pragma once

#include "link/station_link.h"
#include "link/traced_can_driver.h"
#include "link/traced_serial_line.h"
#include "link/traced_udp_socket.h"

namespace lokari {

class TracedTransports {
 public:
  /// All arguments, and what `bare` names, must outlive it. `bare` has a trace.
  TracedTransports(const Transports& bare, const Settings& settings, const Clock& clock);

  Transports transports() { return {serial_, udp_, can_, canLog_, trace_}; }

 private:
  CanLog* canLog_;
  Trace* trace_;
  MessageTrace serialTrace_;
  MessageTrace udpTrace_;
  MessageTrace canTrace_;
  TracedSerialLine serial_;
  TracedUdpSocket udp_;
  TracedCanDriver can_;
};

}  // namespace lokari
