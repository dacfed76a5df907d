// A file that takes its place when it is whole, and what keeps it from doing so.
#include "base/whole_file.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <sys/stat.h>

#include "base/text_file.h"
#include "support/no_larger_files.h"

namespace lokari {
namespace {

class WholeFileTest : public ::testing::Test {
 protected:
  QString path(const char* name) const { return folder.filePath(QString::fromUtf8(name)); }
  QStringList files() const { return QDir(folder.path()).entryList(QDir::Files, QDir::Name); }

  QTemporaryDir folder;
};

TEST_F(WholeFileTest, IsNotThereBeforeItIsCommitted) {
  {
    WholeFile file(path("f"));
    ASSERT_TRUE(file.begin());
    file.write("halb");
    EXPECT_FALSE(QFile::exists(path("f")));
  }
  EXPECT_EQ(files(), QStringList());
}

TEST_F(WholeFileTest, AWriteThatFailedIsNeverForgotten) {
  ASSERT_TRUE(writeFileAtomically(path("f"), "alt"));
  WholeFile file(path("f"));
  ASSERT_TRUE(file.begin());
  {
    const test::NoLargerFiles full(1'000);
    file.write(QByteArray(200'000, 'x'));
  }
  // There is room again, and whoever writes has not looked.
  file.write("und weiter");
  EXPECT_FALSE(file.commit());
  EXPECT_EQ(file.fault(), QStringLiteral("die Datei wird größer als hier erlaubt"));
  EXPECT_EQ(readTextFile(path("f")), QStringLiteral("alt"));
}

TEST_F(WholeFileTest, ReadsBackWhatIsOnTheMedium) {
  WholeFile file(path("f"));
  ASSERT_TRUE(file.begin());
  file.write("0123456789");
  ASSERT_TRUE(file.bringToDisk());
  EXPECT_EQ(file.readBack(2, 3), "234");
  EXPECT_EQ(file.readBack(8, 5), "89");
  EXPECT_EQ(file.length(), 10);
}

TEST_F(WholeFileTest, KeepsTheModeOfTheOldFileAndGivesANewOneTheUsual) {
  const QByteArray file = QFile::encodeName(path("f"));
  ASSERT_TRUE(writeFileAtomically(path("f"), "neu"));
  struct stat state {};
  ASSERT_EQ(::stat(file, &state), 0);
  const mode_t mask = ::umask(0);
  ::umask(mask);
  EXPECT_EQ(state.st_mode & 0777, 0666 & ~mask);
  ASSERT_EQ(::chmod(file, 0640), 0);
  ASSERT_TRUE(writeFileAtomically(path("f"), "neuer"));
  ASSERT_EQ(::stat(file, &state), 0);
  EXPECT_EQ(state.st_mode & 0777, mode_t(0640));
}

TEST_F(WholeFileTest, FollowsALink) {
  ASSERT_TRUE(writeFileAtomically(path("wahr"), "alt"));
  ASSERT_TRUE(QFile::link(path("wahr"), path("verweis")));
  ASSERT_TRUE(writeFileAtomically(path("verweis"), "neu"));
  EXPECT_TRUE(QFileInfo(path("verweis")).isSymLink());
  EXPECT_EQ(readTextFile(path("wahr")), QStringLiteral("neu"));
}

TEST_F(WholeFileTest, NothingButAPlainFileIsReplacedOrRead) {
  ASSERT_EQ(::mkfifo(QFile::encodeName(path("pipe")), 0600), 0);
  EXPECT_EQ(replaceFile(path("pipe"), "x"), QStringLiteral("das ist keine gewöhnliche Datei"));
  EXPECT_EQ(replaceFile(folder.path(), "x"), QStringLiteral("das ist ein Ordner"));
  EXPECT_EQ(readPlainFile(path("pipe")), std::nullopt) << "and nobody waits for a writer";
  EXPECT_EQ(readTextFile(QStringLiteral("/dev/zero")), std::nullopt);
}

TEST_F(WholeFileTest, AMissingFolderIsToldAndNotMade) {
  EXPECT_EQ(replaceFile(path("fort/f"), "x"),
            QStringLiteral("den Ordner oder die Datei gibt es nicht"));
  EXPECT_FALSE(QFile::exists(path("fort")));
}

}  // namespace
}  // namespace lokari
