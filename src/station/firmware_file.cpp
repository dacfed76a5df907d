#include "station/firmware_file.h"

#include "base/numbers.h"
#include "base/paths.h"
#include "base/plain_file.h"
#include "base/prompt.h"
#include "base/settings.h"
#include "station/intel_hex.h"

namespace lokari {
namespace {

std::variant<Firmware, HexFault> readBusily(QFile& file,
                                            const std::function<void(bool)>& showBusy) {
  showBusy(true);
  auto result = readIntelHex(file);
  showBusy(false);
  return result;
}

QString belowQuestion(const QStringList& openCabs) {
  if (openCabs.isEmpty()) return {};
  return QStringLiteral(
             "Geöffnet: %1. Während der Übertragung hört die Zentrale nicht auf sie, auch nicht "
             "auf Halt.")
      .arg(openCabs.join(QStringLiteral(", ")));
}

}  // namespace

QString firmwareRefusal(const Settings& settings) {
  if (settings.station().takesFirmware) return {};
  return QStringLiteral(
      "Diese Funktion ist nur mit dem Zimo MX1-2000-Basisgerät möglich.\n"
      "Stellen Sie den Gerätetyp unter Parameter | Optionen entsprechend ein.");
}

std::optional<Firmware> confirmedFirmware(QString name, Prompt& prompt,
                                          const std::function<void(bool)>& showBusy,
                                          const QStringList& openCabs) {
  if (!fileNameOf(name).contains(u'.')) name += QStringLiteral(".HEX");
  PlainFile file(findFile(name));
  if (!file.open()) {
    prompt.message(
        QStringLiteral("Firmware-Datei %1 nicht gefunden\noder Zugriff nicht möglich!").arg(name),
        Icon::Warning, specialFileFault(file.fileName()));
    return std::nullopt;
  }
  auto result = readBusily(file, showBusy);
  if (const auto* fault = std::get_if<HexFault>(&result)) {
    prompt.message(QStringLiteral("%1 in Firmware-Datei (Zeile%2)\nÜbertragung abgebrochen.")
                       .arg(hexErrorText(fault->error), printed(fault->line)));
    return std::nullopt;
  }
  const Answer answer =
      prompt.ask({.text = QStringLiteral("Firmware-Datei %1 einspielen?").arg(fileNameOf(name)),
                  .buttons = Buttons::OkCancel,
                  .more = belowQuestion(openCabs)});
  if (answer != Answer::Ok) return std::nullopt;
  return std::get<Firmware>(std::move(result));
}

std::optional<Firmware> chosenFirmware(const Settings& settings, Prompt& prompt,
                                       const QString& folder,
                                       const std::function<void(bool)>& showBusy,
                                       const QStringList& openCabs) {
  const QString refusal = firmwareRefusal(settings);
  if (!refusal.isEmpty()) {
    prompt.message(refusal);
    return std::nullopt;
  }
  const QString name = prompt.openFile(
      {.title = QStringLiteral("Firmwaredatei wählen"),
       .filter = QStringLiteral("Firmware-Dateien (*.hex)|*.hex|Alle Dateien (*.*)|*.*"),
       .folder = folder,
       .presetName = QStringLiteral("Mx1_2k.hex")});
  if (name.isEmpty()) return std::nullopt;
  return confirmedFirmware(name, prompt, showBusy, openCabs);
}

}  // namespace lokari
