#include "base/ini_file.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QTemporaryDir>

#include <sys/stat.h>

#include "support/ini_text.h"
#include "support/no_larger_files.h"

namespace lokari {
namespace {

using test::IniText;
const QString kSection = QStringLiteral("LOKARI");

QString text(const QByteArray& file, const char* key, int size = 64) {
  const IniText ini(file);
  return IniFile(ini.path())
      .getString(kSection, QString::fromUtf8(key), QStringLiteral("fallback"), size);
}

int number(const QByteArray& file) {
  const IniText ini(file);
  return IniFile(ini.path()).getInt(kSection, QStringLiteral("Key"), 77);
}

TEST(IniFile, AMissingFileOrKeyGivesTheDefault) {
  const IniFile none(QStringLiteral("/nowhere/LOKARI.INI"));
  EXPECT_EQ(none.getString(kSection, QStringLiteral("Key"), QStringLiteral("d"), 64),
            QStringLiteral("d"));
  EXPECT_EQ(none.getInt(kSection, QStringLiteral("Key"), 5), 5);
  EXPECT_EQ(text("[LOKARI]\nOther=1\n", "Key"), QStringLiteral("fallback"));
  EXPECT_EQ(text("[Other]\nKey=1\n", "Key"), QStringLiteral("fallback"));
}

TEST(IniFile, NamesAreComparedWithoutRegardToCase) {
  EXPECT_EQ(text("[lokari]\r\nKEY=value\r\n", "key"), QStringLiteral("value"));
}

TEST(IniFile, IntegersAreTheLeadingDigits) {
  EXPECT_EQ(number("[LOKARI]\nKey=12abc\n"), 12);
  EXPECT_EQ(number("[LOKARI]\nKey= 7 \n"), 7);
  EXPECT_EQ(number("[LOKARI]\nKey=abc\n"), 0);
  EXPECT_EQ(number("[LOKARI]\nKey=-5\n"), 0);
  EXPECT_EQ(number("[LOKARI]\nKey=\n"), 0);
  EXPECT_EQ(number("[LOKARI]\nKey=99999999999999\n"), 2147483647);
  EXPECT_EQ(number("[LOKARI]\n"), 77);
}

TEST(IniFile, TheSizeLimitIncludesTheTerminator) {
  EXPECT_EQ(text("[LOKARI]\nKey=abcdef\n", "Key", 4), QStringLiteral("abc"));
  EXPECT_EQ(text("[LOKARI]\nKey=abc\n", "Key", 4), QStringLiteral("abc"));
}

TEST(IniFile, QuotesAroundAValueGo) {
  EXPECT_EQ(text("[LOKARI]\nKey=\" a b \"\n", "Key"), QStringLiteral(" a b "));
  EXPECT_EQ(text("[LOKARI]\nKey='x'\n", "Key"), QStringLiteral("x"));
  EXPECT_EQ(text("[LOKARI]\nKey=\"x'\n", "Key"), QStringLiteral("\"x'"));
  EXPECT_EQ(text("[LOKARI]\nKey=\"\n", "Key"), QStringLiteral("\""));
}

TEST(IniFile, CommentsAndLinesWithoutEqualsAreNoKeys) {
  EXPECT_EQ(text("[LOKARI]\n;Key=no\nKey\nKey=yes\n", "Key"), QStringLiteral("yes"));
  EXPECT_EQ(text("[LOKARI]\nKey=first\nKey=second\n", "Key"), QStringLiteral("first"));
  EXPECT_EQ(text("[LOKARI]\nA=1\n[LOKARI]\nKey=second section\n", "Key"),
            QStringLiteral("fallback"));
}

TEST(IniFile, AWriteReplacesTheValueAndKeepsTheRest) {
  const IniText ini("; head\r\n[LOKARI]\r\nA=1\r\nkey = old\r\n\r\n[X]\r\nKey=x\r\n");
  EXPECT_TRUE(
      IniFile(ini.path()).writeString(kSection, QStringLiteral("Key"), QStringLiteral("ä")));
  EXPECT_EQ(ini.text(),
            QByteArray("; head\r\n[LOKARI]\r\nA=1\r\nkey =\xE4\r\n\r\n[X]\r\nKey=x\r\n"));
}

TEST(IniFile, ANewKeyGoesToTheEndOfItsSection) {
  const IniText ini("[LOKARI]\nA=1\n\n[X]\nB=2\n");
  EXPECT_TRUE(
      IniFile(ini.path()).writeString(kSection, QStringLiteral("Key"), QStringLiteral("v")));
  EXPECT_EQ(ini.text(), QByteArray("[LOKARI]\nA=1\nKey=v\n\n[X]\nB=2\n"));
}

TEST(IniFile, ANewSectionGoesToTheEnd) {
  const IniText ini("[X]\nB=2\n");
  EXPECT_TRUE(
      IniFile(ini.path()).writeString(kSection, QStringLiteral("Key"), QStringLiteral("v")));
  EXPECT_EQ(ini.text(), QByteArray("[X]\nB=2\n[LOKARI]\nKey=v\n"));
}

TEST(IniFile, AUtf8FileStaysOne) {
  const IniText ini("\xEF\xBB\xBF[LOKARI]\nKey=\xC3\xA4\n");
  IniFile file(ini.path());
  EXPECT_EQ(file.getString(kSection, QStringLiteral("Key"), QString(), 9), QStringLiteral("ä"));
  EXPECT_TRUE(file.writeString(kSection, QStringLiteral("Key"), QStringLiteral("ö")));
  EXPECT_EQ(ini.text(), QByteArray("\xEF\xBB\xBF[LOKARI]\nKey=\xC3\xB6\n"));
}

TEST(IniFile, AWriteKeepsEveryOtherByte) {
  const QByteArray head("; \x81\x8D gemischt\r\n[LOKARI]\nA = 1 \r\n");
  const IniText ini(head + "Key=old\rB=2");
  EXPECT_TRUE(
      IniFile(ini.path()).writeString(kSection, QStringLiteral("Key"), QStringLiteral("v")));
  EXPECT_EQ(ini.text(), head + "Key=v\rB=2");
}

TEST(IniFile, AnUnfinishedLastLineIsEndedBeforeANewKey) {
  const IniText ini("[LOKARI]\nA=1");
  EXPECT_TRUE(
      IniFile(ini.path()).writeString(kSection, QStringLiteral("Key"), QStringLiteral("v")));
  EXPECT_EQ(ini.text(), QByteArray("[LOKARI]\nA=1\nKey=v\n"));
}

TEST(IniFile, AFileWithTheMarkThatIsNoUtf8StaysAsItIs) {
  const QByteArray broken("\xEF\xBB\xBF; L\xE4rm\r\n[LOKARI]\r\n");
  const IniText ini(broken + "Key=1\r\n");
  EXPECT_TRUE(
      IniFile(ini.path()).writeString(kSection, QStringLiteral("Key"), QStringLiteral("ä")));
  EXPECT_EQ(ini.text(), broken + "Key=\xE4\r\n");
}

TEST(IniFile, AValueBeyondTheCodePageTurnsTheFileIntoUtf8) {
  const IniText ini("; L\xE4rm\r\n[LOKARI]\r\nKey=1\r\n");
  IniFile file(ini.path());
  EXPECT_TRUE(file.writeString(kSection, QStringLiteral("Key"), QStringLiteral("/home/Ω")));
  EXPECT_EQ(file.getString(kSection, QStringLiteral("Key"), QString(), 64),
            QStringLiteral("/home/Ω"));
  EXPECT_EQ(ini.text(),
            QByteArray("\xEF\xBB\xBF; L\xC3\xA4rm\r\n[LOKARI]\r\nKey=/home/\xCE\xA9\r\n"));
}

TEST(IniFile, AValueCannotBringLinesOfItsOwn) {
  const IniText ini("[LOKARI]\r\n");
  EXPECT_TRUE(IniFile(ini.path())
                  .writeString(kSection, QStringLiteral("Key"), QStringLiteral("a\r\n[X]\nB=1")));
  EXPECT_EQ(ini.text(), QByteArray("[LOKARI]\r\nKey=a  [X] B=1\r\n"));
}

TEST(IniFile, ANewFileIsWindows1252WithCrLf) {
  const QTemporaryDir folder;
  const QString path = folder.filePath(QStringLiteral("NEU.INI"));
  EXPECT_TRUE(IniFile(path).writeString(kSection, QStringLiteral("Key"), QStringLiteral("ä")));
  QFile file(path);
  ASSERT_TRUE(file.open(QIODevice::ReadOnly));
  EXPECT_EQ(file.readAll(), QByteArray("[LOKARI]\r\nKey=\xE4\r\n"));
}

TEST(IniFile, SeveralKeysAreWrittenAllOrNone) {
  const QByteArray before = "[LOKARI]\r\nA=1\r\nB=2\r\n[Andere]\r\nA=9\r\n";
  const IniText text(before);
  IniFile ini(text.path());
  const QList<IniEntry> entries{{QStringLiteral("B"), QStringLiteral("zwei")},
                                {QStringLiteral("C"), QStringLiteral("drei")}};
  for (const int room : {0, 20, 40}) {
    const test::NoLargerFiles full(room);
    EXPECT_FALSE(ini.writeAll(kSection, entries)) << room;
    QFile file(text.path());
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(file.readAll(), before);
  }
  EXPECT_TRUE(ini.writeAll(kSection, entries));
  QFile file(text.path());
  ASSERT_TRUE(file.open(QIODevice::ReadOnly));
  EXPECT_EQ(file.readAll(), "[LOKARI]\r\nA=1\r\nB=zwei\r\nC=drei\r\n[Andere]\r\nA=9\r\n");
}

TEST(IniFile, WhatWasReadOnceDoesNotChange) {
  const IniText text("[LOKARI]\r\nA=1\r\n");
  IniFile ini(text.path());
  const IniState state = ini.read();
  ASSERT_TRUE(ini.writeString(kSection, QStringLiteral("A"), QStringLiteral("2")));
  EXPECT_EQ(state.getInt(kSection, QStringLiteral("A"), 0), 1);
  EXPECT_EQ(ini.getInt(kSection, QStringLiteral("A"), 0), 2);
}

TEST(IniFile, APipeIsNoSettingsFile) {
  QTemporaryDir folder;
  const QString path = folder.filePath(QStringLiteral("LOKARI.INI"));
  ASSERT_EQ(::mkfifo(QFile::encodeName(path), 0600), 0);
  IniFile ini(path);
  EXPECT_EQ(ini.getInt(kSection, QStringLiteral("A"), 5), 5) << "and nobody waits for a writer";
  EXPECT_FALSE(ini.writeString(kSection, QStringLiteral("A"), QStringLiteral("2")));
}

TEST(IniFile, AFileThatCannotBeWrittenIsReported) {
  IniFile file(QStringLiteral("/proc/none/LOKARI.INI"));
  EXPECT_FALSE(file.writeString(kSection, QStringLiteral("Key"), QStringLiteral("v")));
}

}  // namespace
}  // namespace lokari
