#include "base/app_paths.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryFile>

#include <algorithm>

#include "base/paths.h"
#include "base/plain_file.h"

namespace lokari {
namespace {

const QString kTemplate = QStringLiteral("EMPTY.MDB");

/// A folder that takes no file at all is the fault, not the file or folder that came first.
QString copyFault(const QString& file) {
  const QString folder = QFileInfo(file).path();
  QString there = folder;
  while (!QFileInfo(there).isDir() && there != QFileInfo(there).path()) {
    there = QFileInfo(there).path();
  }
  if (!QTemporaryFile(there + QStringLiteral("/.lokari-XXXXXX")).open()) {
    return QStringLiteral(
               "In den Ordner %1 kann nicht geschrieben werden!\n"
               "Lokari legt dort Einstellungen und Datenbanken ab.")
        .arg(there);
  }
  return there == folder ? QStringLiteral("Datei %1 kann nicht angelegt werden!").arg(file)
                         : QStringLiteral("Ordner %1 kann nicht angelegt werden!").arg(folder);
}

}  // namespace

QString chooseAppPath(const QString& environment, const QString& executableFolder,
                      const QString& userData) {
  if (!environment.isEmpty()) return QDir::cleanPath(environment);
  const bool portable = QFileInfo(executableFolder).isWritable() &&
                        !findFile(executableFolder + u'/' + kTemplate).isEmpty();
  return portable ? QDir::cleanPath(executableFolder) : userData + QStringLiteral("/lokari");
}

QString seedAppPath(const QString& appPath, const QString& installedData) {
  const QDir target(appPath);
  if (!target.mkpath(QStringLiteral("."))) {
    return QStringLiteral("Ordner %1 kann nicht angelegt werden!").arg(appPath);
  }
  const QDir source(installedData);
  QStringList names;
  QDirIterator files(installedData, QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
  while (files.hasNext()) names << source.relativeFilePath(files.next());
  // The template marks a folder that is complete, so it comes last.
  std::stable_partition(names.begin(), names.end(), [](const QString& name) {
    return name.compare(kTemplate, Qt::CaseInsensitive) != 0;
  });
  for (const QString& name : names) {
    const QString to = placeFor(target.filePath(name));
    if (QFileInfo::exists(to)) continue;
    if (!QDir().mkpath(QFileInfo(to).path()) || !copyPlainFile(source.filePath(name), to)) {
      return copyFault(to);
    }
    // An installation's files may be read-only; the user's copy is his to change.
    QFile::setPermissions(to, QFile::permissions(to) | QFile::WriteOwner | QFile::ReadOwner);
  }
  return {};
}

AppPaths appPathsFor(const QString& appPath, const QString& commandLine) {
  AppPaths paths;
  paths.appPath = appPath;
  paths.iniFile = commandLine.isEmpty() ? appPath + QStringLiteral("/LOKARI.INI")
                                        : appPath + u'/' + commandLine + QStringLiteral(".INI");
  const QString parent = QDir::cleanPath(appPath + QStringLiteral("/.."));
  const bool dataAbove = !findFile(parent + QStringLiteral("/fahr_p.bmp")).isEmpty();
  paths.basePath = dataAbove ? parent : appPath;
  return paths;
}

}  // namespace lokari
