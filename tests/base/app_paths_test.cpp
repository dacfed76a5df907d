#include "base/app_paths.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include "base/text_file.h"

namespace lokari {
namespace {

class AppPathsTest : public ::testing::Test {
 protected:
  void write(const QString& name, const QByteArray& data) const {
    ASSERT_TRUE(QDir().mkpath(QFileInfo(folder.filePath(name)).path()));
    ASSERT_TRUE(writeFileAtomically(folder.filePath(name), data));
  }
  QTemporaryDir folder;
};

TEST_F(AppPathsTest, TheEnvironmentDecidesFirst) {
  EXPECT_EQ(chooseAppPath(QStringLiteral("/env/"), folder.path(), QStringLiteral("/user")),
            QStringLiteral("/env"));
}

TEST_F(AppPathsTest, AWritableFolderWithTheTemplateIsAPortableInstallation) {
  EXPECT_EQ(chooseAppPath(QString(), folder.path(), QStringLiteral("/user")),
            QStringLiteral("/user/lokari"));
  write(QStringLiteral("empty.mdb"), "x");
  EXPECT_EQ(chooseAppPath(QString(), folder.path(), QStringLiteral("/user")), folder.path());
}

TEST_F(AppPathsTest, TheCommandLineIsTheStemOfTheSettingsFile) {
  EXPECT_EQ(appPathsFor(QStringLiteral("/app"), QString()).iniFile,
            QStringLiteral("/app/LOKARI.INI"));
  EXPECT_EQ(appPathsFor(QStringLiteral("/app"), QStringLiteral("Club")).iniFile,
            QStringLiteral("/app/Club.INI"));
}

TEST_F(AppPathsTest, APictureInTheFolderAboveMovesTheBasePath) {
  const QString app = folder.filePath(QStringLiteral("bin"));
  EXPECT_EQ(appPathsFor(app, QString()).basePath, app);
  write(QStringLiteral("FAHR_P.BMP"), "x");
  EXPECT_EQ(appPathsFor(app, QString()).basePath, QDir::cleanPath(folder.path()));
}

TEST_F(AppPathsTest, SeedingNeverOverwrites) {
  write(QStringLiteral("installed/EMPTY.MDB"), "new");
  write(QStringLiteral("installed/Zimo/DecTypes.txt"), "types");
  write(QStringLiteral("app/empty.mdb"), "mine");
  const QString app = folder.filePath(QStringLiteral("app"));
  EXPECT_EQ(seedAppPath(app, folder.filePath(QStringLiteral("installed"))), QString());
  EXPECT_EQ(readTextFile(app + QStringLiteral("/empty.mdb")), QStringLiteral("mine"));
  EXPECT_EQ(readTextFile(app + QStringLiteral("/Zimo/DecTypes.txt")), QStringLiteral("types"));
  EXPECT_EQ(QDir(app).entryList(QDir::Files).size(), 1);
}

TEST_F(AppPathsTest, TheTemplateComesLastSinceItMarksACompleteFolder) {
  write(QStringLiteral("installed/EMPTY.MDB"), "template");
  write(QStringLiteral("installed/Zimo/DecTypes.txt"), "types");
  // A file stands where the folder is to be made: the seeding breaks off there.
  write(QStringLiteral("app/Zimo"), "in the way");
  const QString app = folder.filePath(QStringLiteral("app"));
  EXPECT_EQ(seedAppPath(app, folder.filePath(QStringLiteral("installed"))),
            QStringLiteral("Ordner %1/Zimo kann nicht angelegt werden!").arg(app));
  EXPECT_FALSE(QFile::exists(app + QStringLiteral("/EMPTY.MDB")));
}

TEST_F(AppPathsTest, AFolderThatCannotBeMadeIsNamed) {
  EXPECT_EQ(seedAppPath(QStringLiteral("/proc/none"), folder.path()),
            QStringLiteral("Ordner /proc/none kann nicht angelegt werden!"));
}

}  // namespace
}  // namespace lokari
