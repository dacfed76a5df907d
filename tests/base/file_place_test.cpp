// What may be replaced under a name that a user chose.
#include "base/file_place.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <sys/stat.h>
#include <unistd.h>

#include "base/app_paths.h"
#include "base/settings.h"
#include "base/text_file.h"
#include "support/scripted_prompt.h"

namespace lokari {
namespace {

class FilePlaceTest : public ::testing::Test {
 protected:
  FilePlaceTest() {
    put("LOKARI.INI", "[LOKARI]");
    put("PORTS.INI", "[Ports]");
    put("DB/LOKARIV3.MDB", "SQLite format 3 und der Rest");
    put("liste.csv", "{{#fahrzeuge}}");
    paths = appPathsFor(folder.path(), {});
    settings.dbPath = path("DB/LOKARIV3.MDB");
    settings.csvReport = path("liste.csv");
  }

  QString path(const char* name) const { return folder.filePath(QString::fromUtf8(name)); }
  void put(const char* name, const QByteArray& data) const {
    ASSERT_TRUE(QDir().mkpath(QFileInfo(path(name)).path()));
    ASSERT_TRUE(writeFileAtomically(path(name), data));
  }

  /// The place that a user gets who says yes to everything; empty for none.
  QString place(const char* name, const FileKind& kind) {
    prompt.shown.clear();
    prompt.answers = {Answer::Yes};
    const auto chosen = FilePlace::chosen(path(name), kind, ownFiles(paths, settings), prompt);
    return chosen ? chosen->path() : QString();
  }
  /// Why there is none.
  QString reason() const { return prompt.shown.value(0).section(u'\r', 2); }

  QTemporaryDir folder;
  AppPaths paths;
  Settings settings;
  test::ScriptedPrompt prompt;
};

const QString kOwn =
    QStringLiteral("wird nicht geschrieben: Das Programm arbeitet selbst mit ihr.");
const QString kSpecial =
    QStringLiteral("wird nicht geschrieben: Sie ist keine gewöhnliche Datei, sondern %1.");

TEST_F(FilePlaceTest, ANewFileNeedsNoQuestion) {
  EXPECT_EQ(place("neu.pdf", kPdfFile), path("neu.pdf"));
  EXPECT_EQ(prompt.shown, QStringList());
}

TEST_F(FilePlaceTest, AFileOfTheKindIsReplacedAfterAQuestionOnly) {
  put("alt.csv", "a;b");
  EXPECT_EQ(place("ALT.csv", kCsvFile), path("alt.csv"));
  EXPECT_EQ(
      prompt.shown,
      QStringList(QStringLiteral("%1\rist schon vorhanden. Datei ersetzen?").arg(path("alt.csv"))));
  prompt.answers = {Answer::No};
  EXPECT_FALSE(FilePlace::chosen(path("alt.csv"), kCsvFile, {}, prompt));
}

TEST_F(FilePlaceTest, AFileOfAnotherKindIsNeverReplaced) {
  put("foto.jpg", "JFIF");
  put("Zimo/MX620.dec", "[MX620]");
  put("ohne", "irgendetwas");
  for (const char* name : {"foto.jpg", "Zimo/MX620.dec", "ohne"}) {
    EXPECT_EQ(place(name, kCsvFile), QString()) << name;
    EXPECT_EQ(reason(), QStringLiteral("wird nicht geschrieben: Sie ist keine CSV-Datei.")) << name;
  }
  EXPECT_EQ(place("foto.jpg", kPdfFile), QString());
  EXPECT_EQ(reason(), QStringLiteral("wird nicht geschrieben: Sie ist keine PDF-Datei."));
}

TEST_F(FilePlaceTest, WhatThisProgramWroteUnderAnotherNameIsOfTheKind) {
  put("Blatt.v2", "%PDF-1.4 und der Rest");
  put("liste",
      "\xEF\xBB\xBF"
      "a;b");
  put("Eigene.rpt",
      "\xEF\xBB\xBF"
      "{{#fahrzeuge}}");
  EXPECT_EQ(place("Blatt.v2", kPdfFile), path("Blatt.v2"));
  EXPECT_EQ(place("liste", kCsvFile), path("liste"));
  EXPECT_EQ(place("Eigene.rpt", kCsvFile), QString()) << "a template begins alike";
}

TEST_F(FilePlaceTest, ADatabaseIsNeverReplacedWhateverItIsCalled) {
  put("sicherung.csv", "SQLite format 3 und der Rest");
  put("access.pdf", QByteArray("\0\1\0\0Standard Jet DB", 19));
  EXPECT_EQ(place("sicherung.csv", kCsvFile), QString());
  EXPECT_EQ(reason(), QStringLiteral("wird nicht geschrieben: Sie ist eine Datenbank."));
  EXPECT_EQ(place("access.pdf", kPdfFile), QString());
}

TEST_F(FilePlaceTest, WhatTheProgramLivesOnIsNeverReplacedNorMade) {
  for (const char* name : {"LOKARI.INI", "lokari.ini", "PORTS.INI", "DB/LOKARIV3.MDB", "liste.csv",
                           "WINDOW.INI", "CAN.log", "TRACE.log", "DB/LOKARIV3.MDB-journal"}) {
    EXPECT_EQ(place(name, kCsvFile), QString()) << name;
    EXPECT_EQ(reason(), kOwn) << name;
  }
  EXPECT_THROW(FilePlace::ofProgram(path("liste.csv"), kCsvFile, ownFiles(paths, settings)),
               PlaceRefused);
}

TEST_F(FilePlaceTest, ALinkIsWhatItLeadsTo) {
  ASSERT_TRUE(QFile::link(path("LOKARI.INI"), path("weich.pdf")));
  ASSERT_EQ(::link(QFile::encodeName(path("LOKARI.INI")), QFile::encodeName(path("hart.pdf"))), 0);
  for (const char* name : {"weich.pdf", "hart.pdf"}) {
    EXPECT_EQ(place(name, kPdfFile), QString()) << name;
    EXPECT_EQ(reason(), kOwn) << name;
  }
  ASSERT_TRUE(QFile::link(path("gibt-es-nicht"), path("leer.pdf")));
  EXPECT_EQ(place("leer.pdf", kPdfFile), QString());
  EXPECT_EQ(reason(), QStringLiteral("wird nicht geschrieben: Sie ist ein Verweis auf eine Datei, "
                                     "die es nicht gibt."));
}

TEST_F(FilePlaceTest, PipesDevicesAndFoldersAreNoFiles) {
  ASSERT_EQ(::mkfifo(QFile::encodeName(path("rohr.csv")), 0600), 0);
  ASSERT_TRUE(QDir().mkpath(path("ordner.csv")));
  ASSERT_TRUE(QFile::link(QStringLiteral("/dev/null"), path("nichts.csv")));
  EXPECT_EQ(place("rohr.csv", kCsvFile), QString());
  EXPECT_EQ(reason(), kSpecial.arg(QStringLiteral("eine Pipe")));
  EXPECT_EQ(place("ordner.csv", kCsvFile), QString());
  EXPECT_EQ(reason(), kSpecial.arg(QStringLiteral("ein Ordner")));
  EXPECT_EQ(place("nichts.csv", kCsvFile), QString());
  EXPECT_EQ(reason(), kSpecial.arg(QStringLiteral("ein Gerät")));
}

TEST_F(FilePlaceTest, WithoutANameThereIsNoPlace) {
  EXPECT_FALSE(FilePlace::chosen(QString(), kCsvFile, {}, prompt));
  EXPECT_FALSE(FilePlace::chosen(folder.path() + u'/', kCsvFile, {}, prompt));
}

}  // namespace
}  // namespace lokari
