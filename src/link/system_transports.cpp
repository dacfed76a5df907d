#include "link/system_transports.h"

#include "base/settings.h"

namespace lokari {

SystemTransports::SystemTransports(const Settings& settings, const QString& appPath, Clock& clock)
    : ports_(appPath), serial_(ports_), can_(settings, clock, serial_, udp_) {
  if (settings.canLog) canLog_.emplace(appPath + QStringLiteral("/CAN.log"), clock);
}

Transports SystemTransports::transports() {
  return {serial_, udp_, can_, canLog_ ? &*canLog_ : nullptr};
}

}  // namespace lokari
