#include "app/installation.h"

#include <QCoreApplication>
#include <QDir>

#include "app/command_line.h"
#include "base/paths.h"

namespace lokari {

QString installedData(const QString& programs) {
  return QDir::cleanPath(programs + QStringLiteral("/../share/lokari"));
}

Installation findInstallation(const QString& commandLine) {
  const QString programs = QCoreApplication::applicationDirPath();
  const QString appPath = dataFolder();
  const QString installed = installedData(programs);
  const QString fault = prepareAppPath(appPath, installed);
  AppPaths paths = appPathsFor(appPath, commandLine);
  paths.installed = installed;
  return {paths, programs, fault};
}

QString prepareAppPath(const QString& appPath, const QString& installedData) {
  const bool used = !findFile(appPath + QStringLiteral("/EMPTY.MDB")).isEmpty();
  return used ? QString() : seedAppPath(appPath, installedData);
}

}  // namespace lokari
