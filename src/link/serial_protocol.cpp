#include "link/serial_protocol.h"

#include "link/serial_line.h"
#include "link/station_link.h"

namespace lokari {

SerialSettings sessionLine(const Settings& settings) {
  const StationKindRow& kind = settings.station();
  return {.comPort = settings.comPort,
          .baudrate = settings.baudrate != 0 ? settings.baudrate : kind.defaultRate,
          .handshaking = kind.handshaking};
}

void SerialProtocol::open(bool, int&) {
  SerialLine& line = link().serial();
  if (line.isOpen()) return;
  line.open(sessionLine(link().settings()));
  link().lastCvFailed = false;
  greet();
  link().Delay(1);
  dropInput();
}

void SerialProtocol::farewell(bool leaveMode, bool) {
  sayGoodbye(leaveMode);
  dropInput();
}

void SerialProtocol::close(bool lastUser) {
  if (lastUser) link().serial().close();
}

qint32 SerialProtocol::bufferCount() {
  return static_cast<qint32>(link().serial().inBufferCount());
}

bool SerialProtocol::arrived(qint32 want) {
  return link().serial().inBufferCount() >= want;
}

void SerialProtocol::dropInput() {
  SerialLine& line = link().serial();
  while (line.inBufferCount() > 0) line.read();
}

}  // namespace lokari
