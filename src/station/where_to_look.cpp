#include "station/where_to_look.h"

#include "base/settings.h"

namespace lokari {

QString whereToLook(const Settings& settings) {
  const StationKindRow& kind = settings.station();
  if (kind.usesIpAddress) {
    return QStringLiteral("Bitte Netzwerkkabel, Stromversorgung und die Adresse %1 prüfen.")
        .arg(settings.ipAddr);
  }
  const int rate = settings.baudrate != 0 ? settings.baudrate : kind.defaultRate;
  if (rate == 0) {
    return QStringLiteral("Bitte Kabel an COM%1 und Stromversorgung prüfen.").arg(settings.comPort);
  }
  return QStringLiteral("Bitte Kabel an COM%1, Stromversorgung und Baudrate (%2) prüfen.")
      .arg(settings.comPort)
      .arg(rate);
}

}  // namespace lokari
