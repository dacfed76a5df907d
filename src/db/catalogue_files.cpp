#include "db/catalogue_files.h"

#include <QDir>
#include <QFile>
#include <QStringList>

#include "base/paths.h"
#include "base/plain_file.h"

namespace lokari {
namespace {

QString fileOf(const QString& type) {
  return type + QStringLiteral(".dec");
}

const QString& defaultFile() {
  static const QString name = QStringLiteral("default.dec");
  return name;
}

}  // namespace

/// Where the file or folder is, or is to be made; empty for names that lead elsewhere.
QString CatalogueFiles::place(const QStringList& names) const {
  const QString path = insideFolder(appPath_, names);
  return path.isEmpty() ? path : placeFor(path);
}

void CatalogueFiles::makeFolder(const QString& maker) const {
  const QString folder = place({maker});
  if (!folder.isEmpty()) QDir().mkdir(folder);
}

void CatalogueFiles::removeFolder(const QString& maker) const {
  const QString folder = place({maker});
  if (!folder.isEmpty()) QDir().rmdir(folder);
}

bool CatalogueFiles::folderStaysBehind(const QString& maker, const QString& other) const {
  const QString folder = place({maker});
  if (folder.isEmpty() || folder == place({other})) return false;
  return !QDir(folder).entryList({QStringLiteral("*.dec")}, QDir::Files).isEmpty();
}

void CatalogueFiles::addDescription(const QString& maker, const QString& type) const {
  const QString target = place({maker, fileOf(type)});
  if (target.isEmpty() || QFile::exists(target)) return;
  QString source = place({maker, defaultFile()});
  if (!QFile::exists(source)) source = place({defaultFile()});
  // A file that an installation protects makes one that the user may change.
  if (copyPlainFile(source, target)) {
    QFile::setPermissions(target, QFile::permissions(target) | QFile::WriteOwner);
  }
}

void CatalogueFiles::removeDescription(const QString& maker, const QString& type) const {
  const QString file = place({maker, fileOf(type)});
  if (!file.isEmpty()) QFile::remove(file);
}

bool CatalogueFiles::descriptionStaysBehind(const QString& maker, const QString& type,
                                            const QString& other) const {
  const QString file = place({maker, fileOf(type)});
  if (file.isEmpty() || !QFile::exists(file)) return false;
  return !QFile::exists(place({maker, fileOf(other)}));
}

}  // namespace lokari
