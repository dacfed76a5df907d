#include "base/paths.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

namespace lokari {
namespace {

class Paths : public ::testing::Test {
 protected:
  void SetUp() override {
    ASSERT_TRUE(QDir(folder.path()).mkpath(QStringLiteral("Zimo")));
    touch(QStringLiteral("Zimo/DecTypes.txt"));
    touch(QStringLiteral("Default.dec"));
  }
  void touch(const QString& name) const {
    QFile file(folder.filePath(name));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  }
  QString in(const QString& name) const { return folder.path() + u'/' + name; }

  QTemporaryDir folder;
};

TEST_F(Paths, AreFoundWithoutRegardToCase) {
  EXPECT_EQ(findFile(in(QStringLiteral("default.DEC"))), in(QStringLiteral("Default.dec")));
  EXPECT_EQ(findFile(in(QStringLiteral("zimo\\dectypes.TXT"))),
            in(QStringLiteral("Zimo/DecTypes.txt")));
  EXPECT_EQ(findFile(in(QStringLiteral("none.dec"))), QString());
  EXPECT_EQ(findFile(QString()), QString());
}

TEST_F(Paths, PreferTheExactName) {
  touch(QStringLiteral("default.dec"));
  EXPECT_EQ(findFile(in(QStringLiteral("default.dec"))), in(QStringLiteral("default.dec")));
  EXPECT_EQ(findFile(in(QStringLiteral("Default.dec"))), in(QStringLiteral("Default.dec")));
}

TEST_F(Paths, GoThroughTheFolderAboveWithEitherSeparator) {
  EXPECT_EQ(findFile(in(QStringLiteral("zimo\\..\\default.dec"))),
            in(QStringLiteral("Zimo/../Default.dec")));
}

TEST_F(Paths, NewFilesGoIntoTheExistingFolder) {
  EXPECT_EQ(placeFor(in(QStringLiteral("ZIMO\\new.dec"))), in(QStringLiteral("Zimo/new.dec")));
  EXPECT_EQ(placeFor(in(QStringLiteral("DEFAULT.DEC"))), in(QStringLiteral("Default.dec")));
  EXPECT_EQ(placeFor(QStringLiteral("relative/x")), QStringLiteral("relative/x"));
}

TEST_F(Paths, NamesFromDataNeverLeaveTheFolder) {
  EXPECT_EQ(insideFolder(QStringLiteral("/a"), {QStringLiteral("b"), QStringLiteral("c.dec")}),
            QStringLiteral("/a/b/c.dec"));
  for (const char* name : {"", ".", "..", "../x", "a/b", "a\\b", "c:", "a\nb"}) {
    EXPECT_EQ(insideFolder(QStringLiteral("/a"), {QString::fromUtf8(name)}), QString()) << name;
  }
}

TEST_F(Paths, AreTakenApartAtTheLastSeparator) {
  EXPECT_EQ(fileNameOf(QStringLiteral("C:\\DB\\LOKARIV3.MDB")), QStringLiteral("LOKARIV3.MDB"));
  EXPECT_EQ(fileNameOf(QStringLiteral("/a/b.mdb")), QStringLiteral("b.mdb"));
  EXPECT_EQ(fileNameOf(QStringLiteral("b.mdb")), QStringLiteral("b.mdb"));
  EXPECT_EQ(folderOf(QStringLiteral("/a/b.mdb")), QStringLiteral("/a/"));
  EXPECT_EQ(folderOf(QStringLiteral("b.mdb")), QString());
}

}  // namespace
}  // namespace lokari
