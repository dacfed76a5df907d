#include "app/command_line.h"

#include <QCoreApplication>
#include <QStandardPaths>

#include "base/app_paths.h"
#include "base/paths.h"
#include "base/settings.h"

namespace lokari {
namespace {

QString helpText() {
  return QStringLiteral(
      "Aufruf: lokari [STAMM]\n\n"
      "  STAMM       andere Einstellungen als LOKARI: STAMM.INI im Datenordner\n"
      "  -h, --help  diese Hilfe\n"
      "  --version   die Version des Programms\n\n"
      "Der Datenordner ist der in LOKARI_APP genannte, sonst der des Programms (tragbare\n"
      "Installation), sonst ~/.local/share/lokari. Ohne Fenster: lokari-cli --help");
}

}  // namespace

QString answerTo(const QString& commandLine, const QString& appPath) {
  const bool help = commandLine == QLatin1String("--help") || commandLine == QLatin1String("-h");
  if (!help && commandLine != QLatin1String("--version")) return {};
  if (!findFile(appPathsFor(appPath, commandLine).iniFile).isEmpty()) return {};
  return help ? helpText() : QString::fromUtf16(kTitle);
}

QString dataFolder() {
  return chooseAppPath(qEnvironmentVariable("LOKARI_APP"), QCoreApplication::applicationDirPath(),
                       QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation));
}

}  // namespace lokari
