#include "link/traced_can_driver.h"

#include "link/link_error.h"
#include "link/trace_head.h"

namespace lokari {

int TracedCanDriver::open(const CanOpenCall& call) {
  if (trace_.isWanted()) {
    trace_.opening(QStringLiteral("öffnet %1, CAN-Treiber %2")
                       .arg(stationText(trace_.settings()), QString::number(call.driver)));
  }
  const int code = driver_.open(call);
  if (code != 0 && trace_.isWanted()) {
    trace_.event(QStringLiteral("nicht geöffnet (%1) ").arg(code) + driver_.fault());
  }
  return code;
}

int TracedCanDriver::close() {
  trace_.event(QStringLiteral("schließt den CAN-Treiber"));
  return driver_.close();
}

int TracedCanDriver::write(const CanMessage& message) {
  // Ahead of it: an answer may be there before the call is back.
  trace_.sent(message);
  const int code = driver_.write(message);
  if (code != 0 && trace_.isWanted()) {
    trace_.fault(QStringLiteral("nicht gesendet (%1)").arg(code));
  }
  return code;
}

int TracedCanDriver::read(CanMessage& message) {
  try {
    const int code = driver_.read(message);
    if (code == 0) trace_.received(message);
    return code;
  } catch (const LinkError& error) {
    trace_.fault(error.message());
    throw;
  }
}

}  // namespace lokari
