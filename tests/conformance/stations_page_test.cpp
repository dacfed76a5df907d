#include "stations_page.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>

#include "support/places.h"

namespace lokari::conformance {
namespace {

QString textOf(const QString& path) {
  QFile file(path);
  return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

/// What the tests see stands beside the programs, to be copied over the page.
QString keep(const QString& page) {
  const QString path = QDir(places::programs()).filePath(QStringLiteral("stations.md"));
  QFile file(path);
  EXPECT_TRUE(file.open(QIODevice::WriteOnly));
  file.write(page.toUtf8());
  return path;
}

TEST(StationsPage, SaysWhatTheStationsShow) {
  const QString page = stationsPage();
  EXPECT_TRUE(textOf(places::source() + QStringLiteral("/docs/stations.md")) == page)
      << "What holds now stands in " << qPrintable(keep(page))
      << "; copy it to docs/stations.md when that is what is wanted.";
}

}  // namespace
}  // namespace lokari::conformance
