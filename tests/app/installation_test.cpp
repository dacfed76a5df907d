#include "app/installation.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include "app/command_line.h"
#include "base/settings.h"

namespace lokari {
namespace {

class InstallationTest : public ::testing::Test {
 protected:
  void write(const QString& path, const QByteArray& text) const {
    ASSERT_TRUE(QDir().mkpath(QFileInfo(path).path()));
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(text);
  }
  static QByteArray read(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("no file");
  }

  QTemporaryDir folder_;
  QString share_ = folder_.filePath(QStringLiteral("share"));
  QString appPath_ = folder_.filePath(QStringLiteral("user/lokari"));
};

TEST_F(InstallationTest, TheFirstStartCarriesTheDataOver) {
  write(share_ + QStringLiteral("/EMPTY.MDB"), "empty");
  write(share_ + QStringLiteral("/Zimo/DecTypes.txt"), "types");
  EXPECT_TRUE(prepareAppPath(appPath_, share_).isEmpty());
  EXPECT_EQ(read(appPath_ + QStringLiteral("/EMPTY.MDB")), "empty");
  EXPECT_EQ(read(appPath_ + QStringLiteral("/Zimo/DecTypes.txt")), "types");
}

TEST_F(InstallationTest, AFolderInUseIsLeftAlone) {
  write(share_ + QStringLiteral("/EMPTY.MDB"), "empty");
  write(share_ + QStringLiteral("/fahr_p.bmp"), "picture");
  write(appPath_ + QStringLiteral("/empty.mdb"), "own");
  EXPECT_TRUE(prepareAppPath(appPath_, share_).isEmpty());
  EXPECT_EQ(read(appPath_ + QStringLiteral("/fahr_p.bmp")), "no file");
  EXPECT_EQ(read(appPath_ + QStringLiteral("/empty.mdb")), "own");
}

TEST_F(InstallationTest, AFolderThatCannotBeMadeIsAFault) {
  write(share_ + QStringLiteral("/EMPTY.MDB"), "empty");
  write(folder_.filePath(QStringLiteral("user")), "a file in the way");
  EXPECT_EQ(prepareAppPath(appPath_, share_),
            QStringLiteral("Ordner %1 kann nicht angelegt werden!").arg(appPath_));
}

TEST_F(InstallationTest, AFolderThatTakesNoFileIsNamedAndNotTheIconThatCameFirst) {
  write(share_ + QStringLiteral("/EMPTY.MDB"), "empty");
  write(share_ + QStringLiteral("/fahr_p.bmp"), "picture");
  // A folder that nobody can write to, whatever his rights.
  const QString fault = prepareAppPath(QStringLiteral("/proc/self"), share_);
  EXPECT_TRUE(
      fault.startsWith(QStringLiteral("In den Ordner /proc/self kann nicht geschrieben werden!")))
      << qPrintable(fault);
  EXPECT_FALSE(fault.contains(QStringLiteral("fahr_p")));
}

TEST(CommandLine, AsksForHelpUnlessSettingsOfThatNameExist) {
  const QTemporaryDir folder;
  EXPECT_TRUE(answerTo("--help", folder.path()).startsWith("Aufruf: lokari [STAMM]"));
  EXPECT_TRUE(answerTo("-h", folder.path()).startsWith("Aufruf: lokari [STAMM]"));
  EXPECT_EQ(answerTo("--version", folder.path()), QString::fromUtf16(kTitle));
  for (const char* stem : {"", "Club", "--hilfe", "--help me"}) {
    EXPECT_EQ(answerTo(stem, folder.path()), "") << stem;
  }
  QFile file(folder.filePath("--HELP.ini"));
  ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  EXPECT_EQ(answerTo("--help", folder.path()), "");
  EXPECT_NE(answerTo("-h", folder.path()), "");
}

}  // namespace
}  // namespace lokari
