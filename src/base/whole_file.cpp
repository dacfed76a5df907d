#include "base/whole_file.h"

#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "base/file_fault.h"
#include "base/paths.h"

namespace lokari {
namespace {

/// Bytes that wait for each other on their way to the file.
constexpr qsizetype kChunk = qsizetype{64} * 1024;
constexpr mode_t kAllMayUse = 0666;
constexpr mode_t kModeBits = 07777;

/// Links followed, so that the file they lead to is replaced and not the link.
QString behindLinks(const QString& path) {
  const QString canonical = QFileInfo(path).canonicalFilePath();
  return canonical.isEmpty() ? path : canonical;
}

mode_t usualMode() {
  const mode_t mask = ::umask(0);
  ::umask(mask);
  return kAllMayUse & ~mask;
}

/// A rename is there after a power cut only when its folder is on the medium too.
void syncFolder(const QString& file) {
  QByteArray folder = QFile::encodeName(folderOf(file));
  if (folder.isEmpty()) folder = ".";
  const int handle = ::open(folder.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (handle < 0) return;
  ::fsync(handle);
  ::close(handle);
}

}  // namespace

WholeFile::WholeFile(const QString& place, QString temporary)
    : place_(behindLinks(place)),
      temporary_(std::move(temporary)),
      staysBehind_(!temporary_.isEmpty()) {}

WholeFile::~WholeFile() {
  if (file_ < 0) return;
  ::close(file_);
  if (!staysBehind_) ::unlink(QFile::encodeName(temporary_).constData());
}

bool WholeFile::failed(int error) {
  fail(fileFault(error));
  return false;
}

void WholeFile::fail(const QString& fault) {
  if (fault_.isEmpty()) fault_ = fault;
}

bool WholeFile::begin() {
  struct stat old {};
  const QByteArray place = QFile::encodeName(place_);
  if (::lstat(place.constData(), &old) == 0) {
    if (S_ISDIR(old.st_mode)) return failed(EISDIR);
    if (!S_ISREG(old.st_mode)) {
      fail(QStringLiteral("das ist keine gewöhnliche Datei"));
      return false;
    }
    // A protected file is not replaced either.
    if (::access(place.constData(), W_OK) != 0) return failed(errno);
  }
  if (!staysBehind_) {
    QByteArray name = place + ".XXXXXX";
    file_ = ::mkostemp(name.data(), O_CLOEXEC);
    temporary_ = QFile::decodeName(name);
  } else {
    file_ = ::open(QFile::encodeName(temporary_).constData(),
                   O_RDWR | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, S_IRUSR | S_IWUSR);
  }
  if (file_ < 0) return failed(errno);
  return open(QIODevice::WriteOnly | QIODevice::Unbuffered);
}

qint64 WholeFile::readData(char*, qint64) {
  return -1;
}

qint64 WholeFile::writeData(const char* data, qint64 count) {
  if (!fault_.isEmpty()) return -1;
  waiting_.append(data, static_cast<qsizetype>(count));
  length_ += count;
  if (waiting_.size() >= kChunk && !writeOut()) return -1;
  return count;
}

bool WholeFile::writeOut() {
  qsizetype at = 0;
  while (at < waiting_.size()) {
    const ssize_t written =
        ::write(file_, waiting_.constData() + at, static_cast<size_t>(waiting_.size() - at));
    if (written < 0 && errno == EINTR) continue;
    // A medium that takes nothing is as full as one that says so.
    if (written <= 0) return failed(written < 0 ? errno : ENOSPC);
    at += written;
  }
  waiting_.clear();
  return true;
}

bool WholeFile::bringToDisk() {
  if (!fault_.isEmpty()) return false;
  if (onDisk_) return true;
  if (!writeOut()) return false;
  // Some file systems have nothing to be brought anywhere.
  if (::fsync(file_) != 0 && errno != EINVAL && errno != ENOTSUP) return failed(errno);
  struct stat state {};
  if (::fstat(file_, &state) != 0) return failed(errno);
  if (state.st_size != length_) {
    fail(QStringLiteral("es sind nur %1 von %2 Bytes angekommen").arg(state.st_size).arg(length_));
    return false;
  }
  onDisk_ = true;
  return true;
}

QByteArray WholeFile::readBack(qint64 at, qint64 count) const {
  QByteArray bytes(static_cast<qsizetype>(std::max<qint64>(0, count)), '\0');
  qsizetype got = 0;
  while (got < bytes.size()) {
    const ssize_t part =
        ::pread(file_, bytes.data() + got, static_cast<size_t>(bytes.size() - got), at + got);
    if (part < 0 && errno == EINTR) continue;
    if (part <= 0) break;
    got += part;
  }
  bytes.truncate(got);
  return bytes;
}

bool WholeFile::keepModeAndGroup() {
  struct stat old {};
  if (::stat(QFile::encodeName(place_).constData(), &old) != 0) {
    return ::fchmod(file_, usualMode()) == 0;
  }
  // Who may not give a file to a group still replaces it; its bits then say no more than before.
  const bool sameGroup = ::fchown(file_, static_cast<uid_t>(-1), old.st_gid) == 0;
  const mode_t mode = old.st_mode & kModeBits;
  return ::fchmod(file_, sameGroup ? mode : mode & ~static_cast<mode_t>(S_IRWXG)) == 0;
}

bool WholeFile::commit() {
  if (!bringToDisk()) return false;
  if (!keepModeAndGroup()) return failed(errno);
  if (::rename(QFile::encodeName(temporary_).constData(), QFile::encodeName(place_).constData()) !=
      0) {
    return failed(errno);
  }
  ::close(file_);
  file_ = -1;
  close();
  syncFolder(place_);
  return true;
}

}  // namespace lokari
