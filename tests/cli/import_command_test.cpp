#include <QDir>
#include <QSqlQuery>

#include "cli_fixture.h"
#include "db/database.h"
#include "support/places.h"

namespace lokari {
namespace {

class ImportCommand : public CliFixture {
 protected:
  ImportCommand() {
    EXPECT_TRUE(QDir(folder.path()).mkpath("DB"));
    EXPECT_TRUE(QFile::copy(places::emptyDatabase(), path("EMPTY.MDB")));
    EXPECT_TRUE(QFile::copy(places::emptyDatabase(), path("DB/LOKARIV3.MDB")));
  }

  QString path(const char* name) const { return folder.filePath(name); }
  QString fixture(const char* name) const {
    EXPECT_TRUE(QFile::copy(places::accessFile(name), path(name)));
    return path(name);
  }

  int import(const QStringList& arguments) {
    console.results.clear();
    console.messages.clear();
    const CliWorld world{folder.path(), clock, {line_, socket, can}, console, interrupt, programs};
    return static_cast<int>(runCli(QStringList{"import", "access"} + arguments, world));
  }

  QString programs = places::programs();

  static int vehicles(const QString& file) {
    int count = 0;
    Database(file).read("SELECT COUNT(*) FROM LOCO_DAT", {},
                        [&](const QSqlQuery& row) { count = row.value(0).toInt(); });
    return count;
  }
};

TEST_F(ImportCommand, ACurrentDatabaseComesIntoANewOneBesideIt) {
  const QString file = fixture("jet4_current.mdb");
  EXPECT_EQ(import({file}), 0);
  EXPECT_EQ(console.results, (QStringList{"Übernahme erfolgreich abgeschlossen,",
                                          "45 Fahrzeuge und 26 Listeneinträge übernommen!",
                                          "Neue Datenbank: jet4_current_Lokari.MDB"}));
  EXPECT_EQ(vehicles(path("jet4_current_Lokari.MDB")), 45);
  EXPECT_EQ(vehicles(path("DB/LOKARIV3.MDB")), 0);
  EXPECT_TRUE(untouched());
}

TEST_F(ImportCommand, DescriptionsBesideItAreNamedAndComeAlongWithYes) {
  for (const char* name : {"jet4_current.mdb", "jet4_v2.mdb"}) {
    const QString maker = QStringLiteral("ALT/Zimo");
    ASSERT_TRUE(QDir(folder.path()).mkpath(maker));
    const QString file = path("ALT/") + name;
    ASSERT_TRUE(QFile::copy(places::accessFile(name), file));
    QFile description(path("ALT/Zimo/MXALT.dec"));
    ASSERT_TRUE(description.open(QIODevice::WriteOnly));
    description.write("[MXALT]");
    description.close();

    EXPECT_EQ(import({file}), 0);
    const QString told = console.messages.join(u'\n');
    EXPECT_TRUE(
        told.contains("1 Beschreibungsdatei in den Datenordner kopieren? Zimo/MXALT.dec "
                      "[Nein]"))
        << qPrintable(told);
    EXPECT_FALSE(QFile::exists(path("Zimo/MXALT.dec")));

    EXPECT_EQ(import({file, "--yes"}), 0);
    EXPECT_TRUE(console.messages.join(u'\n').contains("[Ja]"));
    EXPECT_TRUE(QFile::exists(path("Zimo/MXALT.dec")));
    ASSERT_TRUE(QFile::remove(path("Zimo/MXALT.dec")));
    ASSERT_TRUE(QFile::remove(file));
  }
}

TEST_F(ImportCommand, ASecondTimeAnotherNewOneIsMade) {
  const QString file = fixture("jet4_current.mdb");
  EXPECT_EQ(import({file}), 0);
  EXPECT_EQ(import({file}), 0);
  EXPECT_EQ(console.results.last(), "Neue Datenbank: jet4_current_Lokari_2.MDB");
}

TEST_F(ImportCommand, AV2DatabaseComesIntoTheOneOfTheSettings) {
  EXPECT_EQ(import({fixture("jet4_v2.mdb")}), 0);
  EXPECT_EQ(console.results,
            (QStringList{"Import erfolgreich abgeschlossen,", " 40 Datensätze importiert!",
                         "(1 Datensätze doppelt)",
                         "• Adresse 100 \"dopp\": Die Adresse gibt es schon, \"A0\"."}));
  EXPECT_EQ(vehicles(path("DB/LOKARIV3.MDB")), 40);
}

TEST_F(ImportCommand, CtrlCStopsItAndLeavesNothing) {
  const QString file = fixture("jet4_current.mdb");
  interrupt.raised = true;
  EXPECT_EQ(import({file}), 1);
  EXPECT_EQ(console.results, (QStringList{"Übernahme abgebrochen,", "es wurde nichts angelegt!"}));
  EXPECT_FALSE(QFile::exists(path("jet4_current_Lokari.MDB")));
}

TEST_F(ImportCommand, WhatIsNoAccessDatabaseFailsWithAMessage) {
  EXPECT_EQ(import({path("EMPTY.MDB")}), 1);
  EXPECT_EQ(console.messages, QStringList{path("EMPTY.MDB") + " ist keine Access-Datenbank!"});
  QFile broken(path("broken.mdb"));
  ASSERT_TRUE(broken.open(QIODevice::WriteOnly));
  broken.write(QByteArray("\0\1\0\0Standard Jet DB\0", 20) + QByteArray(9000, 'x'));
  broken.close();
  EXPECT_EQ(import({path("broken.mdb")}), 1);
  EXPECT_EQ(console.messages, QStringList{"Die Access-Datei ist beschädigt oder nicht lesbar."});
}

TEST_F(ImportCommand, AFileThatIsMissingOrCannotBeReadIsNamed) {
  EXPECT_EQ(import({path("nosuch.mdb")}), 1);
  EXPECT_EQ(console.messages, QStringList{"Datenbankdatei " + path("nosuch.mdb") +
                                          " nicht gefunden\noder Zugriff nicht möglich!"});
  EXPECT_EQ(import({folder.path()}), 1);
  EXPECT_EQ(console.messages,
            (QStringList{
                "Datenbankdatei " + folder.path() + " nicht gefunden\noder Zugriff nicht möglich!",
                "Sie ist keine gewöhnliche Datei, sondern ein Ordner."}));
}

TEST_F(ImportCommand, AFaultOfTheDatabaseThatIsToTakeAV2FileNamesThatOne) {
  const QString file = fixture("jet4_v2.mdb");
  ASSERT_TRUE(QFile::remove(path("DB/LOKARIV3.MDB")));
  EXPECT_EQ(import({file}), 1);
  ASSERT_EQ(console.messages.size(), 1);
  EXPECT_TRUE(console.messages[0].startsWith("Datenbankdatei ")) << qPrintable(console.messages[0]);
  EXPECT_TRUE(console.messages[0].contains("LOKARIV3.MDB\n"));
}

TEST_F(ImportCommand, CtrlCInAV2FileFailsToo) {
  const QString file = fixture("jet4_v2.mdb");
  interrupt.raised = true;
  EXPECT_EQ(import({file}), 1);
  EXPECT_EQ(vehicles(path("DB/LOKARIV3.MDB")), 0);
}

TEST_F(ImportCommand, WithoutItsReaderItSaysSo) {
  const QString file = fixture("jet4_current.mdb");
  programs = folder.path();
  EXPECT_EQ(import({file}), 1);
  EXPECT_EQ(console.messages,
            QStringList{"Access-Dateien liest das Programm " + path("lokari-access-reader") +
                        ".\nEs fehlt oder kann nicht gestartet werden, Programmneuinstallation "
                        "kann erforderlich sein."});
}

TEST_F(ImportCommand, WithoutOneFileItIsAWrongCall) {
  EXPECT_EQ(import({}), 2);
  EXPECT_EQ(import({"a.mdb", "b.mdb"}), 2);
}

}  // namespace
}  // namespace lokari
