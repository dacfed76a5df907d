#include "reports/rzk_export.h"

#include <QDir>
#include <QFileInfo>

#include <sys/stat.h>
#include <unistd.h>

#include "base/prompt.h"
#include "reports/rzk_record.h"
#include "rzk_reader.h"
#include "support/no_larger_files.h"
#include "support/scripted_prompt.h"
#include "support/test_database.h"

namespace lokari {
namespace {

const QString kDone = QStringLiteral("Export beendet,\r%1 Fahrzeuge übernommen.");
const QString kIncompatible =
    QStringLiteral("RZK_LOCO.DAT nicht kompatibel, Übernahme abgebrochen.");

class RzkExportTest : public ::testing::Test {
 protected:
  RzkExportTest() {
    database.run("DELETE FROM LOCO_DAT");
    add(17, "Anlage", "V60", "Diesellok", 4);
    add(3, "Vitrine", "E103x", "Schnellzuglok in der Vitrine");
    add(3, "Anlage", "E103", "Schnellzuglok");
    add(1000, "Anlage", "Schienenbus", QString(60, u'ü'));
    database.run(
        "INSERT INTO LOCO_DAT (DC_ADR, DC_COLL, ST_SNAME) VALUES (NULL, 'Anlage', 'leer')");
  }

  void add(int address, const char* collection, const char* name, const QString& longName,
           int group = 0) {
    database.run(
        "INSERT INTO LOCO_DAT (DC_ADR, DC_COLL, ST_SNAME, FZ_LNAME, ST_GROUP) VALUES (?, ?, ?, ?, "
        "?)",
        {address, collection, name, longName, group == 0 ? QVariant() : QVariant(group)});
  }

  QString path(const char* name) const {
    return database.folder() + u'/' + QString::fromUtf8(name);
  }

  bool exportTo(const char* name, const QString& filter = {}) {
    const auto text = RzkExport({prompt, {}, own}, database.open(), filter).exportTo(path(name));
    closing = text.value_or(QString());
    return text.has_value();
  }

  static QByteArray contents(const QString& file) {
    QFile in(file);
    EXPECT_TRUE(in.open(QIODevice::ReadOnly)) << file.toStdString();
    return in.readAll();
  }

  static void put(const QString& file, const QByteArray& data) {
    QFile out(file);
    ASSERT_TRUE(out.open(QIODevice::WriteOnly));
    out.write(data);
  }

  test::RzkFile read(const char* name) const { return test::readRzkFile(path(name).toStdString()); }

  test::TestDatabase database;
  test::ScriptedPrompt prompt;
  QStringList own;  ///< files that the program lives on
  QString closing;
};

TEST_F(RzkExportTest, ANewFileHasEachAddressOnceByAddress) {
  prompt.answers = {Answer::Yes};
  EXPECT_TRUE(exportTo("RZK_LOCO.DAT"));
  const test::RzkFile file = read("RZK_LOCO.DAT");
  EXPECT_TRUE(file.good);
  ASSERT_EQ(file.vehicles.size(), 3U);
  EXPECT_EQ(file.vehicles[0].address, 3);
  EXPECT_EQ(file.vehicles[1], (test::RzkEntry{"V60", "Diesellok", 4, 17}));
  EXPECT_EQ(file.vehicles[2], (test::RzkEntry{"Schien", std::string(40, '\xFC'), 0, 1000}));
  EXPECT_EQ(closing, kDone.arg(3));
  EXPECT_FALSE(QFileInfo::exists(path("RZK_LOCO.TMP")));
}

TEST_F(RzkExportTest, ExportingTwiceLeavesTheFileUnchanged) {
  prompt.answers = {Answer::Yes};
  EXPECT_TRUE(exportTo("RZK_LOCO.DAT"));
  const QByteArray first = contents(path("RZK_LOCO.DAT"));
  EXPECT_TRUE(exportTo("RZK_LOCO.DAT"));
  EXPECT_EQ(contents(path("RZK_LOCO.DAT")), first);
  EXPECT_EQ(closing, kDone.arg(0));
}

TEST_F(RzkExportTest, OnlyFilteredVehiclesAreAddedAndOldOnesStay) {
  put(path("a.dat"), rzkHead() + rzkRecord({.shortName = "alt", .longName = {}, .address = 5}));
  EXPECT_TRUE(exportTo("a.dat", QStringLiteral("DC_COLL = \"Vitrine\"")));
  const test::RzkFile file = read("a.dat");
  ASSERT_EQ(file.vehicles.size(), 2U);
  EXPECT_EQ(file.vehicles[0].shortName, "E103x");
  EXPECT_EQ(file.vehicles[1].shortName, "alt");
}

TEST_F(RzkExportTest, WithoutAMatchingVehicleTheFileKeepsItsContent) {
  const QByteArray old = rzkHead() + rzkRecord({.shortName = "alt", .longName = {}, .address = 5});
  put(path("a.dat"), old);
  EXPECT_TRUE(exportTo("a.dat", QStringLiteral("DC_ADR = 9999")));
  EXPECT_EQ(contents(path("a.dat")), old);
  EXPECT_EQ(closing, kDone.arg(0));
}

TEST_F(RzkExportTest, ABrokenFilterIsToldAndLeavesTheFiles) {
  put(path("a.dat"), rzkHead());
  put(path("a.TMP"), "von früher");
  EXPECT_FALSE(exportTo("a.dat", QStringLiteral("NIX = ")));
  EXPECT_EQ(contents(path("a.dat")), rzkHead());
  EXPECT_EQ(contents(path("a.TMP")), "von früher");
  ASSERT_EQ(prompt.shown.size(), 1);
  EXPECT_NE(prompt.shown[0], kDone.arg(0));
}

TEST_F(RzkExportTest, AnIncompatibleFileIsNotTouched) {
  const QList<QByteArray> strange{{},
                                  "RZKV51",
                                  rzkHead().chopped(1),
                                  QByteArray(520, '\0'),
                                  QByteArray("RZKV50").leftJustified(104, ' ')};
  for (const QByteArray& data : strange) {
    put(path("x.data"), data);
    EXPECT_FALSE(exportTo("x.data"));
    EXPECT_EQ(contents(path("x.data")), data);
    EXPECT_EQ(prompt.shown.last(), kIncompatible);
    EXPECT_EQ(contents(path("x.dTMP")), QByteArray()) << "the temporary file stays, empty";
  }
}

TEST_F(RzkExportTest, ALastRecordThatIsCutShortIsToldAndTheFileStays) {
  const QByteArray whole = rzkRecord({.shortName = "alt", .longName = {}, .address = 2000});
  const QByteArray torn = rzkHead() + whole + whole.left(30);
  put(path("a.dat"), torn);
  EXPECT_FALSE(exportTo("a.dat"));
  EXPECT_EQ(contents(path("a.dat")), torn);
  EXPECT_EQ(prompt.shown.last(), QStringLiteral("Die Fahrzeugdatei ist beschädigt:\r%1\r"
                                                "(vom letzten Fahrzeug sind nur 30 von 52 Bytes "
                                                "da)\rDie Fahrzeugdatei ist unverändert.")
                                     .arg(path("a.dat")));
}

TEST_F(RzkExportTest, ALinkStaysOneAndItsFileTakesTheVehicles) {
  ASSERT_TRUE(QDir(database.folder()).mkpath("anderswo"));
  put(path("anderswo/wahr.dat"), rzkHead());
  ASSERT_TRUE(QFile::link("anderswo/wahr.dat", path("RZK_LOCO.DAT")));
  EXPECT_TRUE(exportTo("RZK_LOCO.DAT"));
  EXPECT_TRUE(QFileInfo(path("RZK_LOCO.DAT")).isSymLink());
  EXPECT_EQ(read("anderswo/wahr.dat").vehicles.size(), 3U);
  EXPECT_EQ(QDir(path("anderswo")).entryList(QDir::Files), QStringList("wahr.dat"));
}

TEST_F(RzkExportTest, TheFileKeepsItsModeAndGroup) {
  put(path("a.dat"), rzkHead());
  const QByteArray file = QFile::encodeName(path("a.dat"));
  // Only root may give a file to any group; for others it keeps its own.
  static_cast<void>(::chown(file, static_cast<uid_t>(-1), 12345));
  ASSERT_EQ(::chmod(file, 0664), 0);
  struct stat before {};
  ASSERT_EQ(::stat(file, &before), 0);
  EXPECT_TRUE(exportTo("a.dat"));
  struct stat after {};
  ASSERT_EQ(::stat(file, &after), 0);
  EXPECT_EQ(after.st_mode, before.st_mode);
  EXPECT_EQ(after.st_gid, before.st_gid);
}

TEST_F(RzkExportTest, APipeIsNeverWaitedFor) {
  ASSERT_EQ(::mkfifo(QFile::encodeName(path("a.dat")), 0600), 0);
  EXPECT_FALSE(exportTo("a.dat"));
  EXPECT_EQ(prompt.shown.last(),
            QStringLiteral("Kann Datei nicht öffnen:\r%1\r(Sie ist keine gewöhnliche Datei, "
                           "sondern eine Pipe.)\rDie Fahrzeugdatei ist unverändert.")
                .arg(path("a.dat")));
}

TEST_F(RzkExportTest, ATemporaryNameThatIsTheOpenDatabasesIsRefused) {
  put(path("TEST.dat"), rzkHead());
  ASSERT_TRUE(QFile::link(database.path(), path("TEST.TMP")));
  own = {database.path()};
  EXPECT_FALSE(exportTo("TEST.dat"));
  EXPECT_TRUE(prompt.shown.last().contains("Das Programm arbeitet selbst mit ihr."));
  EXPECT_TRUE(QFileInfo(path("TEST.TMP")).isSymLink());
}

TEST_F(RzkExportTest, AFullDiskIsToldAndTheFileStays) {
  put(path("a.dat"), rzkHead());
  database.open();
  for (const qint64 room : {0, 52, 150}) {
    const test::NoLargerFiles full(room);
    EXPECT_FALSE(exportTo("a.dat")) << room;
    EXPECT_EQ(contents(path("a.dat")), rzkHead());
    EXPECT_TRUE(prompt.shown.last().contains("die Datei wird größer als hier erlaubt"));
  }
}

TEST_F(RzkExportTest, AnEmptyNameMakesNoFile) {
  prompt.answers = {Answer::Yes};
  EXPECT_FALSE(RzkExport({prompt, {}, {}}, database.open(), {}).exportTo({}));
  EXPECT_EQ(prompt.shown, QStringList());
}

TEST_F(RzkExportTest, AnOldTemporaryFileIsInNobodysWay) {
  put(path("a.dat"), rzkHead());
  put(path("a.TMP"), QByteArray(5000, 'x'));
  EXPECT_TRUE(exportTo("a.dat"));
  EXPECT_EQ(read("a.dat").vehicles.size(), 3U);
  EXPECT_FALSE(QFileInfo::exists(path("a.TMP")));
}

TEST_F(RzkExportTest, AFolderThatCannotBeWrittenToLeavesTheFile) {
  put(path("a.dat"), rzkHead());
  ASSERT_TRUE(QDir(database.folder()).mkpath("a.TMP/inside"));
  EXPECT_FALSE(exportTo("a.dat"));
  EXPECT_EQ(contents(path("a.dat")), rzkHead());
  EXPECT_TRUE(prompt.shown.last().startsWith("Kann Datei nicht anlegen:"))
      << prompt.shown.last().toStdString();
  EXPECT_TRUE(prompt.shown.last().endsWith("Die Fahrzeugdatei ist unverändert."));
}

TEST_F(RzkExportTest, AFolderInThePlaceOfTheFileIsToldWithItsReason) {
  ASSERT_TRUE(QDir(database.folder()).mkpath("a.dat/inside"));
  EXPECT_FALSE(exportTo("a.dat"));
  EXPECT_TRUE(QFileInfo::exists(path("a.dat/inside")));
  const QStringList lines = prompt.shown.last().split(u'\r');
  ASSERT_EQ(lines.size(), 4) << prompt.shown.last().toStdString();
  EXPECT_EQ(lines[3], "Die Fahrzeugdatei ist unverändert.");
  EXPECT_EQ(lines[1], path("a.dat"));
  EXPECT_NE(lines[2], "(Unknown error)");
}

TEST_F(RzkExportTest, TheTemporaryNameReplacesTheLastThreeCharacters) {
  EXPECT_EQ(rzkTemporary("/a/b/RZK_LOCO.DAT"), "/a/b/RZK_LOCO.TMP");
  EXPECT_EQ(rzkTemporary("/a/b/x.data"), "/a/b/x.dTMP");
  EXPECT_EQ(rzkTemporary("/a/b/x."), "/a/b/TMP") << "it never leaves its folder";
}

TEST_F(RzkExportTest, AVehicleFileThatIsCalledLikeTheTemporaryOneIsRefused) {
  put(path("a.tmp"), rzkHead());
  EXPECT_FALSE(exportTo("a.tmp"));
  EXPECT_EQ(contents(path("a.tmp")), rzkHead());
  EXPECT_EQ(prompt.shown.last(),
            "Die Endung TMP ist für die Zwischendatei der Übernahme vergeben.\r"
            "Bitte einen anderen Namen wählen.");
}

TEST_F(RzkExportTest, ANameWithoutAPointGetsDat) {
  prompt.answers = {Answer::Yes};
  EXPECT_TRUE(exportTo("RZK"));
  EXPECT_TRUE(QFileInfo::exists(path("RZK.DAT")));
  EXPECT_EQ(prompt.shown.first(), QStringLiteral("RZK Fahrzeugdatei %1 nicht gefunden\r"
                                                 "oder Zugriff nicht möglich! Datei neu anlegen?")
                                      .arg(path("RZK.DAT")));
}

TEST_F(RzkExportTest, TheMenuAsksForTheFileAndAgainAfterNo) {
  prompt.fileNames = {path("erste"), path("zweite.dat")};
  prompt.answers = {Answer::No, Answer::Yes};
  QList<bool> busy;
  RzkExport({prompt, [&](bool on) { busy.append(on); }, {}}, database.open(), {})
      .mnuExpRZK(database.folder());
  EXPECT_FALSE(QFileInfo::exists(path("erste.DAT")));
  EXPECT_EQ(read("zweite.dat").vehicles.size(), 3U);
  EXPECT_EQ(busy, QList({true, false}));
  EXPECT_EQ(prompt.shown.last(), kDone.arg(3));
}

TEST_F(RzkExportTest, TheMenuEndsWhenTheUserCancels) {
  prompt.fileNames = {QString()};
  RzkExport({prompt, {}, {}}, database.open(), {}).mnuExpRZK(database.folder());
  EXPECT_TRUE(prompt.shown.isEmpty());
  prompt.fileNames = {path("neu.dat")};
  prompt.answers = {Answer::Cancel};
  RzkExport({prompt, {}, {}}, database.open(), {}).mnuExpRZK(database.folder());
  EXPECT_FALSE(QFileInfo::exists(path("neu.dat")));
  EXPECT_EQ(prompt.shown.size(), 1);
}

}  // namespace
}  // namespace lokari
