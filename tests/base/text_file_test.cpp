#include "base/text_file.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include "support/no_larger_files.h"

namespace lokari {
namespace {

TEST(DecodeText, ReadsWindows1252) {
  EXPECT_EQ(decodeText(QByteArray("L\xE4rm \x80")), QStringLiteral("Lärm €"));
}

TEST(DecodeText, ReadsUtf8WithItsMark) {
  EXPECT_EQ(decodeText(QByteArray("\xEF\xBB\xBFL\xC3\xA4rm")), QStringLiteral("Lärm"));
}

TEST(DecodeText, TakesBrokenUtf8ForWindows1252) {
  EXPECT_EQ(decodeText(QByteArray("\xEF\xBB\xBFL\xE4rm")), QStringLiteral("ï»¿Lärm"));
}

TEST(EncodeWindows1252, ReplacesWhatTheCodePageLacks) {
  EXPECT_EQ(encodeWindows1252(QStringLiteral("Lärm € Ω 🚂!")), QByteArray("L\xE4rm \x80 ? ?!"));
}

TEST(SplitLines, KnowsEveryLineEnd) {
  const QStringList expected{QStringLiteral("a"), QString(), QStringLiteral("b"),
                             QStringLiteral("c")};
  EXPECT_EQ(splitLines(QStringLiteral("a\r\n\r\nb\rc\n")), expected);
  EXPECT_TRUE(splitLines(QString()).isEmpty());
  EXPECT_EQ(splitLines(QStringLiteral("\n")), QStringList{QString()});
}

TEST(WriteFileAtomically, LeavesNothingBehindWhenItFails) {
  EXPECT_FALSE(writeFileAtomically(QStringLiteral("/proc/none/x"), "data"));
}

TEST(WriteFileAtomically, FullDiskLeavesTheOldFile) {
  QTemporaryDir folder;
  const QString path = folder.filePath(QStringLiteral("f"));
  ASSERT_TRUE(writeFileAtomically(path, "old"));
  // A small file goes to disk at its end, a large one on the way.
  for (const int size : {1'000, 100'000}) {
    for (const int room : {0, 500, size - 1}) {
      const test::NoLargerFiles full(room);
      EXPECT_FALSE(writeFileAtomically(path, QByteArray(size, 'x'))) << size << " in " << room;
    }
    EXPECT_EQ(readTextFile(path), QStringLiteral("old")) << size;
  }
  EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files).size(), 1);
}

TEST(WriteFileAtomically, ReplacesTheFile) {
  QTemporaryDir folder;
  const QString path = folder.filePath(QStringLiteral("f"));
  EXPECT_TRUE(writeFileAtomically(path, "one"));
  EXPECT_TRUE(writeFileAtomically(path, "two"));
  EXPECT_EQ(readTextFile(path), QStringLiteral("two"));
  EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files).size(), 1);
}

}  // namespace
}  // namespace lokari
