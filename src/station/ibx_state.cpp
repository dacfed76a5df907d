#include "station/ibx_state.h"

#include "base/bytes.h"
#include "link/ibx_send.h"
#include "link/p50x_codes.h"
#include "link/serial_line.h"
#include "link/station_link.h"
#include "station/flag_lines.h"

namespace lokari {
namespace {

constexpr int kPowerOn = 0x08;
constexpr int kMoreFollows = 0x80;

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
  const int state = byteAt(link.serial().read(1), 0);
  if (state > 0 && (state & kMoreFollows) != 0) {
    link.WaitForData(1);
    link.serial().read(1);
  }
  return state < 0 ? QString() : ibxStateLine(state);
}

StationReport withIbxState(StationLink& link, StationReport report) {
  if (report.lines.isEmpty()) return report;
  const QString state = askIbxState(link);
  if (!state.isEmpty()) report.lines << state;
  return report;
}

StationReport reportOtherP50x(StationLink& link, P50xModel expected) {
  const QByteArray reply = link.serial().read();
  const bool isCode = reply.size() == 1 && p50x::isUnknown(byteAt(reply, 0));
  if (!isCode) return withIbxState(link, p50xReport(reply, expected));
  const QString state = askIbxState(link);
  if (state.isEmpty()) return {};
  return {.lines = {QStringLiteral("Zentrale mit P50X-Protokoll ohne Versionsangabe"), state},
          .wantsMakerForm = true};
}

}  // namespace lokari
