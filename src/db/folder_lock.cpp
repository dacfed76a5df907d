#include "db/folder_lock.h"

#include <QFile>

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

namespace lokari {
namespace {

constexpr mode_t kMode = 0600;

}  // namespace

FolderLock::FolderLock(const QString& folder) {
  const QByteArray name = QFile::encodeName(folder + QStringLiteral("/in-arbeit"));
  file_ = open(name.constData(), O_RDWR | O_CREAT | O_CLOEXEC, kMode);
  if (file_ < 0 || flock(file_, LOCK_EX | LOCK_NB) == 0) return;
  close(file_);
  file_ = -1;
}

FolderLock::~FolderLock() {
  if (file_ >= 0) close(file_);
}

}  // namespace lokari
