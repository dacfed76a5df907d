#include "link/system_transports.h"

namespace lokari {

SystemTransports::SystemTransports(const QString& appPath, Clock& clock)
    : ports_(appPath),
      serial_(ports_),
      can_(clock, serial_, udp_),
      canLog_(appPath + QStringLiteral("/CAN.log"), clock),
      trace_(appPath, clock) {
  trace_.requestBy(qEnvironmentVariable("LOKARI_TRACE"));
}

Transports SystemTransports::transports() {
  return {serial_, udp_, can_, &canLog_, &trace_};
}

}  // namespace lokari
