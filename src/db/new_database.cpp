#include "db/new_database.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <fcntl.h>
#include <unistd.h>

#include "base/plain_file.h"
#include "db/database.h"
#include "db/reference_lists.h"

namespace lokari {

QString templateFault(const QString& path) {
  try {
    const Database database(path);
    checkSources(database);
    return {};
  } catch (const StorageError& error) {
    return error.text();
  }
}

void removeDatabase(const QString& path) {
  for (const char16_t* suffix : {u"", u"-journal", u"-wal", u"-shm"}) {
    QFile::remove(path + QString::fromUtf16(suffix));
  }
}

bool copyTemplate(const QString& from, const QString& to) {
  if (!copyPlainFile(from, to)) return false;
  if (QFile::setPermissions(to, QFile::permissions(to) | QFile::WriteOwner | QFile::WriteUser)) {
    return true;
  }
  QFile::remove(to);
  return false;
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
