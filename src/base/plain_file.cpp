#include "base/plain_file.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "base/file_fault.h"

namespace lokari {
namespace {

struct SpecialFile {
  mode_t type;
  const char16_t* name;
};
constexpr std::array kSpecialFiles{
    SpecialFile{S_IFDIR, u"ein Ordner"},  SpecialFile{S_IFIFO, u"eine Pipe"},
    SpecialFile{S_IFSOCK, u"ein Socket"}, SpecialFile{S_IFCHR, u"ein Gerät"},
    SpecialFile{S_IFBLK, u"ein Gerät"},
};

QString faultOf(const struct stat& state, const QString& subject) {
  const mode_t type = state.st_mode & S_IFMT;
  if (type == S_IFREG) return {};
  const auto* row = std::find_if(kSpecialFiles.begin(), kSpecialFiles.end(),
                                 [type](const SpecialFile& each) { return each.type == type; });
  return QStringLiteral("%1 ist keine gewöhnliche Datei%2.")
      .arg(subject, row == kSpecialFiles.end()
                        ? QString()
                        : QStringLiteral(", sondern ") + QString::fromUtf16(row->name));
}

}  // namespace

QString specialFileFault(const QString& path, const QString& subject) {
  struct stat state {};
  if (path.isEmpty() || ::stat(QFile::encodeName(path).constData(), &state) != 0) return {};
  return faultOf(state, subject);
}

bool PlainFile::open() {
  // Opening a device may already do something to it.
  if (const QString fault = specialFileFault(fileName()); !fault.isEmpty()) {
    setErrorString(fault);
    return false;
  }
  // What has become a pipe since is not waited for either.
  const int file = ::open(QFile::encodeName(fileName()).constData(),
                          O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
  struct stat state {};
  if (file < 0 || ::fstat(file, &state) != 0) {
    setErrorString(fileFault(errno));
    if (file >= 0) ::close(file);
    return false;
  }
  const QString fault = faultOf(state, QStringLiteral("Sie"));
  if (fault.isEmpty()) return open(file, QIODevice::ReadOnly, QFileDevice::AutoCloseHandle);
  ::close(file);
  setErrorString(fault);
  return false;
}

bool copyPlainFile(const QString& from, const QString& to) {
  return specialFileFault(from).isEmpty() && QFile::copy(from, to);
}

}  // namespace lokari
