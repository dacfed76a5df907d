#include "link/trace_head.h"

#include <QDir>
#include <QStringList>

#include <algorithm>
#include <array>

#include "base/settings.h"
#include "link/dotted_address.h"
#include "link/serial_line.h"
#include "link/serial_protocol.h"

namespace lokari {
namespace {

struct Network {
  quint32 address;
  quint32 mask;
};
constexpr std::array kPrivateNetworks{
    Network{0x0A000000, 0xFF000000}, Network{0x7F000000, 0xFF000000},
    Network{0xA9FE0000, 0xFFFF0000}, Network{0xAC100000, 0xFFF00000},
    Network{0xC0A80000, 0xFFFF0000},
};

/// Whether anybody could be found by it.
bool isPrivate(quint32 address) {
  return std::any_of(kPrivateNetworks.begin(), kPrivateNetworks.end(),
                     [&](const Network& each) { return (address & each.mask) == each.address; });
}

QString networkText(const Settings& settings) {
  const auto address = dottedAddress(settings.ipAddr);
  if (!address || *address == 0) return QStringLiteral("keiner Adresse");
  if (isPrivate(*address)) return settings.ipAddr;
  return QStringLiteral("einer Adresse außerhalb des eigenen Netzes");
}

/// Without leading zeros.
QString plainAddress(quint32 address) {
  QStringList parts;
  for (const int shift : {24, 16, 8, 0}) parts << QString::number(address >> shift & 0xFF);
  return parts.join(u'.');
}

QString flag(const char16_t* key, bool value) {
  return QString::fromUtf16(key) + (value ? QStringLiteral("=1") : QStringLiteral("=0"));
}

}  // namespace

QString portText(const SerialSettings& line) {
  QString text = QStringLiteral("COM%1").arg(line.comPort);
  if (line.baudrate != 0) text += QStringLiteral(", %1 Baud").arg(line.baudrate);
  if (line.handshaking == Handshaking::RequestToSend) text += QStringLiteral(", RTS/CTS");
  return text;
}

QString stationText(const Settings& settings) {
  const StationKindRow& kind = settings.station();
  return QString::fromUtf16(kind.name) + QStringLiteral(" an ") +
         (kind.usesIpAddress ? networkText(settings) : portText(sessionLine(settings)));
}

QString traceHead(const Settings& settings) {
  const QStringList flags{
      QStringLiteral("Timeout=%1").arg(settings.timeoutVal),
      flag(u"Delay", settings.delayFlag),
      flag(u"LenzV36", settings.lenzV36),
      flag(u"MakerForm", settings.makerForm),
      flag(u"AddressCheck", settings.addressCheck),
      flag(u"ManufacturerCheck", settings.manufacturerCheck),
      flag(u"ContinueOnError", settings.continueOnError),
      flag(u"Zimo12Functions", settings.zimoFunctionCount != 8),
  };
  return QStringLiteral("# Zentrale: ") + stationText(settings) + u'\n' +
         QStringLiteral("# Einstellungen: ") + flags.join(u' ') + u'\n' +
         QStringLiteral("# Zeit, > gesendet, < empfangen, - Anschluss, Bytes, ; Bedeutung");
}

QString withoutHome(QString text) {
  const QString home = QDir::homePath();
  return home.size() > 1 ? text.replace(home, QStringLiteral("~")) : text;
}

QString withoutOwner(const QString& text, const Settings& settings) {
  QString rest = withoutHome(text);
  const auto address = dottedAddress(settings.ipAddr);
  if (!address || isPrivate(*address)) return rest;
  for (const QString& each : {settings.ipAddr, plainAddress(*address)}) {
    rest.replace(each, QStringLiteral("…"));
  }
  return rest;
}

}  // namespace lokari
