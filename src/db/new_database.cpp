#include "db/new_database.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <fcntl.h>
#include <unistd.h>

namespace lokari {

bool copyTemplate(const QString& from, const QString& to) {
  return QFile::copy(from, to) &&
         QFile::setPermissions(to, QFile::permissions(to) | QFile::WriteOwner | QFile::WriteUser);
}

bool syncToDisk(const QString& path) {
  const int file = open(QFile::encodeName(path).constData(), O_RDONLY | O_CLOEXEC);
  if (file < 0) return false;
  const bool synced = fsync(file) == 0;
  close(file);
  return synced;
}

bool moveIntoPlace(const QString& from, const QString& to) {
  return !QFileInfo::exists(to) && QDir().rename(from, to);
}

}  // namespace lokari
