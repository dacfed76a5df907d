#include "station/ibx_state.h"

#include "base/bytes.h"
#include "link/ibx_send.h"
#include "link/serial_line.h"
#include "link/station_link.h"
#include "station/flag_lines.h"

namespace lokari {
namespace {

constexpr int kPowerOn = 0x08;

constexpr std::array kStates{
    FlagLine{0x04, u"Überhitzung! "},
    FlagLine{0x10, u"Halt aktiv "},
    FlagLine{0x40, u"N-Spur-Gleisspannung"},
};

}  // namespace

QString ibxStateLine(int state) {
  const QString power =
      (state & kPowerOn) != 0 ? QStringLiteral("Power On ") : QStringLiteral("Power Off ");
  return power + flagLines(state, kStates).join(QString());
}

QString askIbxState(StationLink& link) {
  ibxSend(link, bytes({0xA2}));
  link.WaitForData(1);
  const int state = byteAt(link.serial().read(), 0);
  return state < 0 ? QString() : ibxStateLine(state);
}

}  // namespace lokari
