// Access files in a folder of their own, and the reader that reads them.
#pragma once

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include "db/access_import.h"
#include "foreign_tables.h"
#include "support/places.h"

namespace lokari::test {

class AccessFiles {
 public:
  AccessFiles() {
    EXPECT_TRUE(QFile::copy(places::emptyDatabase(), path(QStringLiteral("EMPTY.MDB"))));
  }

  static AccessReader reader() {
    return {places::programs() + QStringLiteral("/lokari-access-reader")};
  }
  static QString original(const QString& name) { return places::accessFile(name); }

  QString folder() const { return folder_.path(); }
  QString path(const QString& name) const { return folder_.filePath(name); }
  /// What stands in the folder, hidden things included, but for the template.
  QStringList names() const {
    QStringList names = QDir(folder()).entryList(
        QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot, QDir::Name);
    names.removeAll(QStringLiteral("EMPTY.MDB"));
    return names;
  }

  void write(const QString& name, const QByteArray& data) const {
    QFile file(path(name));
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    EXPECT_EQ(file.write(data), data.size());
  }
  static QByteArray contents(const QString& path) {
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << qPrintable(path);
    return file.readAll();
  }
  /// A copy under the same name; gives its path.
  QString copy(const QString& name) const {
    write(name, contents(original(name)));
    return path(name);
  }

  /// Takes a file of the folder over into NEU.MDB beside it.
  bool takeOver(const QString& name) {
    return takeOverAccess(reader(), path(name), path(QStringLiteral("NEU.MDB")), folder(), progress)
        .has_value();
  }
  QString report() const { return progress.statuses.value(progress.statuses.size() - 1); }

  RecordingProgress progress;

 private:
  QTemporaryDir folder_;
};

}  // namespace lokari::test
