#include "link/traced_transports.h"

namespace lokari {

TracedTransports::TracedTransports(const Transports& bare, const Settings& settings,
                                   const Clock& clock)
    : canLog_(bare.canLog),
      trace_(bare.trace),
      serialTrace_(*bare.trace, settings, clock, Transport::Serial),
      udpTrace_(*bare.trace, settings, clock, Transport::Udp),
      canTrace_(*bare.trace, settings, clock, Transport::Can),
      serial_(bare.serial, serialTrace_),
      udp_(bare.udp, udpTrace_),
      can_(bare.can, canTrace_) {}

}  // namespace lokari
