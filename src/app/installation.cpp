#include "app/installation.h"

#include <QCoreApplication>
#include <QDir>
#include <QStandardPaths>

#include "base/paths.h"

namespace lokari {

Installation findInstallation(const QString& commandLine) {
  const QString programs = QCoreApplication::applicationDirPath();
  const QString appPath =
      chooseAppPath(qEnvironmentVariable("LOKARI_APP"), programs,
                    QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation));
  const QString fault =
      prepareAppPath(appPath, QDir::cleanPath(programs + QStringLiteral("/../share/lokari")));
  return {appPathsFor(appPath, commandLine), programs, fault};
}

QString prepareAppPath(const QString& appPath, const QString& installedData) {
  const bool used = !findFile(appPath + QStringLiteral("/EMPTY.MDB")).isEmpty();
  return used ? QString() : seedAppPath(appPath, installedData);
}

}  // namespace lokari
