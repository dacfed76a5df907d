#include "link/ibx_send.h"

#include "link/serial_line.h"
#include "link/station_link.h"
#include "link/station_protocol.h"

namespace lokari {
namespace {

constexpr int kBytePauseMs = 10;

}  // namespace

void ibxSend(StationLink& link, const QByteArray& msg) {
  link.protocol().gate().sendWhole([&] {
    link.serial().write("x");
    for (const char byte : msg) {
      link.DelayMsec(kBytePauseMs);
      link.serial().write(QByteArray(1, byte));
    }
  });
}

}  // namespace lokari
