#include "base/file_place.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <array>
#include <sys/stat.h>

#include "base/app_paths.h"
#include "base/paths.h"
#include "base/plain_file.h"
#include "base/prompt.h"
#include "base/settings.h"

namespace lokari {
namespace {

/// Files of these kinds are the program's own, whichever folder they lie in: settings, databases,
/// templates, description files, speed tables.
constexpr char16_t kOwnExtensions[] = u"ini mdb rpt dec spd";
/// What a database file begins with, whatever it is called: ours, and those of Access.
constexpr std::array kDatabaseBeginnings{
    QByteArrayView("SQLite format 3"),
    QByteArrayView("\0\1\0\0Standard ", 13),
};
constexpr qsizetype kBeginning = 16;

bool isAmong(const QString& extension, const char16_t* extensions) {
  return QString::fromUtf16(extensions).split(u' ').contains(extension, Qt::CaseInsensitive);
}

bool isSameFile(const struct stat& a, const struct stat& b) {
  return a.st_dev == b.st_dev && a.st_ino == b.st_ino;
}

std::optional<struct stat> stateOf(const QString& path) {
  struct stat state {};
  if (path.isEmpty() || ::stat(QFile::encodeName(path).constData(), &state) != 0) return {};
  return state;
}

class Examination {
 public:
  Examination(const QString& path, const FileKind& kind) : path_(path), kind_(kind) {}

  /// Why the file must not be written; empty when it may be.
  QString refusal(const QStringList& own) const {
    if (fileNameOf(path_).isEmpty()) return QStringLiteral("Es fehlt der Dateiname.");
    const auto state = stateOf(path_);
    if (!state) return isAbsent(own);
    if (const QString special = specialFileFault(path_); !special.isEmpty()) return special;
    for (const QString& each : own) {
      const auto its = stateOf(findFile(each));
      if (its && isSameFile(*state, *its)) return ownFile();
    }
    return otherKind();
  }

 private:
  static QString ownFile() { return QStringLiteral("Das Programm arbeitet selbst mit ihr."); }

  QString isAbsent(const QStringList& own) const {
    if (QFileInfo(path_).isSymLink()) {
      return QStringLiteral("Sie ist ein Verweis auf eine Datei, die es nicht gibt.");
    }
    // What the program would take for its own once it is there.
    const auto isIt = [this](const QString& each) {
      return placeFor(each).compare(path_, Qt::CaseInsensitive) == 0;
    };
    return std::any_of(own.begin(), own.end(), isIt) ? ownFile() : QString();
  }

  QString otherKind() const {
    // What takes any file reads for itself what it is.
    if (*kind_.extensions == 0) return {};
    PlainFile file(path_);
    const QByteArray beginning = file.open() ? file.read(kBeginning) : QByteArray();
    for (const QByteArrayView each : kDatabaseBeginnings) {
      if (beginning.startsWith(each)) return QStringLiteral("Sie ist eine Datenbank.");
    }
    // A link is what it leads to.
    const QString extension = QFileInfo(QFileInfo(path_).canonicalFilePath()).suffix();
    if (isAmong(extension, kind_.extensions)) return {};
    const bool looksLikeIt = *kind_.beginning != 0 && beginning.startsWith(kind_.beginning);
    if (looksLikeIt && !isAmong(extension, kOwnExtensions)) return {};
    return QStringLiteral("Sie ist keine %1.").arg(QString::fromUtf16(kind_.name));
  }

  const QString& path_;
  const FileKind& kind_;
};

void require(const QString& path, const FileKind& kind, const QStringList& own) {
  const QString reason = Examination(path, kind).refusal(own);
  if (!reason.isEmpty()) throw PlaceRefused(path, reason);
}

QString refusalText(const QString& path, const QString& reason) {
  return QStringLiteral("In die Datei\r%1\rwird nicht geschrieben: %2")
      .arg(QDir::toNativeSeparators(path), reason);
}

}  // namespace

PlaceRefused::PlaceRefused(const QString& path, const QString& reason)
    : std::runtime_error(refusalText(path, reason).toStdString()),
      text_(refusalText(path, reason)),
      reason_(reason) {}

QStringList ownFiles(const AppPaths& paths, const Settings& settings) {
  const QString database = placeFor(settings.dbPath);
  QStringList files{paths.iniFile, database, settings.listReport, settings.csvReport};
  // What the storage keeps beside an open database.
  for (const char16_t* suffix : {u"-journal", u"-wal", u"-shm"}) {
    files << database + QString::fromUtf16(suffix);
  }
  for (const char16_t* name : {u"/PORTS.INI", u"/WINDOW.INI", u"/EMPTY.MDB", u"/CAN.log",
                               u"/TRACE.log", u"/Readme.txt", u"/Zimo/DecTypes.txt"}) {
    files << paths.appPath + QString::fromUtf16(name);
  }
  return files;
}

FilePlace FilePlace::ofProgram(const QString& name, const FileKind& kind, const QStringList& own) {
  const QString path = placeFor(name);
  require(path, kind, own);
  return FilePlace(path);
}

std::optional<FilePlace> FilePlace::chosen(const QString& name, const FileKind& kind,
                                           const QStringList& own, Prompt& prompt) {
  const QString path = placeFor(name);
  try {
    require(path, kind, own);
  } catch (const PlaceRefused& refused) {
    prompt.message(refused.text());
    return {};
  }
  const bool asks = *kind.question != 0 && QFileInfo::exists(path);
  const QString question = QString::fromUtf16(kind.question).arg(QDir::toNativeSeparators(path));
  if (asks && prompt.ask(question, Buttons::YesNo) != Answer::Yes) return {};
  return FilePlace(path);
}

}  // namespace lokari
