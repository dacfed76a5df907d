#include "station/where_to_look.h"

#include "base/settings.h"

namespace lokari {
namespace {

/// 0 where none is known.
int rateOf(const Settings& settings) {
  return settings.baudrate != 0 ? settings.baudrate : settings.station().defaultRate;
}

}  // namespace

QString whatAnswersOtherwise(const Settings& settings) {
  const StationKindRow& kind = settings.station();
  const QString name = QString::fromUtf16(kind.name);
  if (kind.usesIpAddress) {
    return QStringLiteral(
               "Unter der Adresse %1 antwortet etwas, aber nicht so wie %2. "
               "Bitte die eingestellte Zentrale prüfen.")
        .arg(settings.ipAddr, name);
  }
  const QString port = QStringLiteral("An COM%1 antwortet etwas, aber nicht so wie %2. ")
                           .arg(settings.comPort)
                           .arg(name);
  const int rate = rateOf(settings);
  if (rate == 0) return port + QStringLiteral("Bitte die eingestellte Zentrale prüfen.");
  return port +
         QStringLiteral("Bitte die eingestellte Zentrale und die Baudrate (%1) prüfen.").arg(rate);
}

QString whereToLook(const Settings& settings) {
  const StationKindRow& kind = settings.station();
  if (kind.usesIpAddress) {
    return QStringLiteral("Bitte Netzwerkkabel, Stromversorgung und die Adresse %1 prüfen.")
        .arg(settings.ipAddr);
  }
  const int rate = rateOf(settings);
  if (rate == 0) {
    return QStringLiteral("Bitte Kabel an COM%1 und Stromversorgung prüfen.").arg(settings.comPort);
  }
  return QStringLiteral("Bitte Kabel an COM%1, Stromversorgung und Baudrate (%2) prüfen.")
      .arg(settings.comPort)
      .arg(rate);
}

}  // namespace lokari
