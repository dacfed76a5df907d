#include "app/help_file.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

namespace lokari {
namespace {

class HelpFileTest : public ::testing::Test {
 protected:
  QString make(const QString& name) {
    const QString path = folder_.filePath(name);
    EXPECT_TRUE(QDir().mkpath(QFileInfo(path).path()));
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    return path;
  }

  QString found() const { return findHelpFile(folder_.path()); }

  QTemporaryDir folder_;
};

TEST_F(HelpFileTest, IsLookedForBesideTheDataThenInItsHelpFolder) {
  const QString below = make(QStringLiteral("HELP/LOKARI.qhc"));
  EXPECT_EQ(found(), below);
  const QString beside = make(QStringLiteral("LOKARI.qhc"));
  EXPECT_EQ(found(), beside);
}

TEST_F(HelpFileTest, AHelpFileOfTheOtherKindComesLast) {
  const QString below = make(QStringLiteral("help/lokari.chm"));
  EXPECT_EQ(found(), below);
  const QString beside = make(QStringLiteral("Lokari.chm"));
  EXPECT_EQ(found(), beside);
  const QString ours = make(QStringLiteral("help/lokari.QHC"));
  EXPECT_EQ(found(), ours);
}

TEST_F(HelpFileTest, IsEmptyWhereThereIsNone) {
  EXPECT_TRUE(found().isEmpty());
}

}  // namespace
}  // namespace lokari
