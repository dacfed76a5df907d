// The commands that work on the database alone.
#include <QDir>

#include <sys/stat.h>

#include "cli_fixture.h"
#include "db/database.h"
#include "support/places.h"

namespace lokari {
namespace {

class DatabaseCommands : public CliFixture {
 protected:
  DatabaseCommands() {
    EXPECT_TRUE(QDir(folder.path()).mkpath("DB"));
    EXPECT_TRUE(QFile::copy(places::emptyDatabase(), path()));
    Database database(path());
    database.write(
        "INSERT INTO LOCO_DAT (DC_ADR, DC_COLL, ST_SNAME, FZ_LNAME, FZ_FTYPE, DC_DECODER) VALUES "
        "(7, NULL, 'ohne', NULL, NULL, NULL), (3, 'Anlage', 'V 200', 'Lok, \"rot\"', 'Diesellok', "
        "'ZX100'), (9, '', 'leer', 'a' || char(9) || 'b' || char(10) || 'c', NULL, NULL)",
        {});
  }

  QString path() const { return folder.filePath("DB/LOKARIV3.MDB"); }

  QString programs;  ///< of an installation; empty for none

  int runWords(const QStringList& words) {
    console.results.clear();
    console.messages.clear();
    const CliWorld world{folder.path(), clock, {line_, socket, can}, console, interrupt, programs};
    return static_cast<int>(runCli(words, world));
  }

  void write(const QString& name, const QByteArray& data) {
    EXPECT_TRUE(QDir(folder.path()).mkpath(QFileInfo(name).path()));
    QFile file(folder.filePath(name));
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(data);
  }
};

TEST_F(DatabaseCommands, VehiclesComeInTheDefaultOrderOneALine) {
  EXPECT_EQ(run("vehicles"), 0);
  EXPECT_EQ(console.results,
            (QStringList{"\t9\tleer\ta b c\t\t", "Anlage\t3\tV 200\tLok, \"rot\"\tDiesellok\tZX100",
                         "\t7\tohne\t\t\t"}));
  EXPECT_TRUE(untouched());
}

TEST_F(DatabaseCommands, VehiclesAsCsvHaveAHeadAndQuotes) {
  EXPECT_EQ(runWords({"vehicles", "--csv", "--where", "DC_COLL=\"anlage\""}), 0);
  EXPECT_EQ(console.results, (QStringList{"DC_COLL,DC_ADR,ST_SNAME,FZ_LNAME,FZ_FTYPE,DC_DECODER",
                                          "Anlage,3,V 200,\"Lok, \"\"rot\"\"\",Diesellok,ZX100"}));
}

TEST_F(DatabaseCommands, AConditionThatIsNotUnderstoodIsAWrongCall) {
  for (const char* condition :
       {"DC_ADR=*", "NOSUCH=1", "DC_ADR='x'", "1=1; DROP TABLE LOCO_DAT", "DC_ADR=3 ORDER BY"}) {
    EXPECT_EQ(runWords({"vehicles", "--where", condition}), 2) << condition;
    EXPECT_TRUE(console.results.isEmpty());
    EXPECT_EQ(console.messages.size(), 2);
    EXPECT_TRUE(console.messages.first().startsWith(
        QStringLiteral("Die Bedingung \"%1\" ist fehlerhaft: ").arg(condition)));
  }
  EXPECT_EQ(run("vehicles alle"), 2);
}

TEST_F(DatabaseCommands, TheFaultOfAConditionNamesThePlaceInIt) {
  const struct {
    const char* condition;
    const char* fault;
  } cases[] = {
      {"dc_adr=", "Syntaxfehler am Ende im Ausdruck \"dc_adr=\"."},
      {"dc_adr", "Syntaxfehler am Ende im Ausdruck \"dc_adr\"."},
      {"", "Syntaxfehler am Ende im Ausdruck \"\"."},
      {"dc_adr=3 ORDER BY dc_adr",
       "Syntaxfehler bei \"ORDER BY dc_adr\" im Ausdruck \"dc_adr=3 ORDER BY dc_adr\"."},
      {"(dc_adr=3", "Syntaxfehler am Ende im Ausdruck \"(dc_adr=3\"."},
      {"dc_adr=3 AND AND 1=1",
       "Syntaxfehler bei \"AND 1=1\" im Ausdruck \"dc_adr=3 AND AND 1=1\"."},
      {"dc_adr=3 AND st_sname=5",
       "Text und Zahl werden verglichen im Ausdruck \"dc_adr=3 AND st_sname=5\", bei "
       "\"st_sname=5\"."},
      {"st_sname='x", "Syntaxfehler: Text ohne Ende in \"st_sname='x\"."},
      {"nosuch=1", "Die Tabelle LOCO_DAT hat keine Spalte \"nosuch\"."},
  };
  for (const auto& each : cases) {
    EXPECT_EQ(runWords({"vehicles", "--where", each.condition}), 2) << each.condition;
    EXPECT_EQ(console.messages.value(0), QStringLiteral("Die Bedingung \"%1\" ist fehlerhaft: %2")
                                             .arg(each.condition, QString::fromUtf8(each.fault)));
  }
}

TEST_F(DatabaseCommands, APriceIsComparedAsItIsWritten) {
  Database(path()).write(
      "UPDATE LOCO_DAT SET MD_PRICE = CASE DC_ADR WHEN 3 THEN 1069.9 WHEN 7 THEN 1069.89 ELSE 2 "
      "END",
      {});
  for (const char* condition : {"MD_PRICE>=1.069,90", "MD_PRICE>=1069,9", "MD_PRICE>=1069.90",
                                "MD_PRICE=1.069,90", "MD_PRICE>1.069,89"}) {
    EXPECT_EQ(runWords({"vehicles", "--where", condition}), 0) << condition;
    ASSERT_EQ(console.results.size(), 1) << condition;
    EXPECT_TRUE(console.results[0].startsWith("Anlage\t3\t")) << qPrintable(console.results[0]);
  }
}

// ---- Files that are none
// -------------------------------------------------------------------------

struct Named {
  const char* what;
  int status;
  QStringList words;  ///< %1 stands for the name of the pipe
  const char* told;
};

class PipeInPlaceTest : public DatabaseCommands, public ::testing::WithParamInterface<Named> {};

TEST_P(PipeInPlaceTest, IsRefusedAndNotWaitedFor) {
  ASSERT_EQ(::mkfifo(folder.filePath("pipe.rzk").toLocal8Bit().constData(), S_IRUSR | S_IWUSR), 0);
  writeIni("PIPE", "DBPath=" + folder.filePath("pipe.rzk").toLocal8Bit() + "\r\nBaseUnit=MX1\r\n");
  QStringList words = GetParam().words;
  words.replaceInStrings("%1", folder.filePath("pipe.rzk"));
  EXPECT_EQ(runWords(words), GetParam().status);
  EXPECT_TRUE(
      (console.messages + console.results).join(u'\n').contains(QString::fromUtf8(GetParam().told)))
      << qPrintable((console.messages + console.results).join(u'\n'));
  EXPECT_TRUE(untouched());
}

INSTANTIATE_TEST_SUITE_P(
    Files, PipeInPlaceTest,
    ::testing::Values(Named{"Vehicles",
                            1,
                            {"--settings", "PIPE", "vehicles"},
                            "pipe.rzk ist keine gewöhnliche Datei, sondern eine Pipe."},
                      Named{"Check",
                            1,
                            {"--settings", "PIPE", "check"},
                            "pipe.rzk ist keine gewöhnliche Datei, sondern eine Pipe."},
                      Named{"VehicleRead",
                            1,
                            {"--settings", "PIPE", "vehicle", "read", "Anlage", "3"},
                            "pipe.rzk ist keine gewöhnliche Datei, sondern eine Pipe."},
                      Named{"ExportCsv",
                            1,
                            {"--settings", "PIPE", "export", "csv", "%1.csv"},
                            "pipe.rzk ist keine gewöhnliche Datei, sondern eine Pipe."},
                      Named{"CsvTarget", 1, {"export", "csv", "%1"}, "sondern eine Pipe."},
                      Named{"RzkTarget", 1, {"export", "rzk", "%1"}, "sondern eine Pipe."},
                      Named{"Access", 1, {"import", "access", "%1"}, "sondern eine Pipe."}),
    [](const auto& each) { return std::string(each.param.what); });

TEST_F(DatabaseCommands, APipeBesideTheDatabaseIsRefusedToo) {
  // The engine opens it to see whether an interrupted write is to be taken back.
  ASSERT_EQ(::mkfifo((path() + "-journal").toLocal8Bit().constData(), S_IRUSR | S_IWUSR), 0);
  EXPECT_EQ(runWords({"vehicles"}), 1);
  EXPECT_TRUE(
      console.messages.value(0).contains("LOKARIV3.MDB-journal ist keine gewöhnliche Datei"));
}

TEST_F(DatabaseCommands, SettingsThatAreAPipeAreTold) {
  ASSERT_EQ(::mkfifo(folder.filePath("X.INI").toLocal8Bit().constData(), S_IRUSR | S_IWUSR), 0);
  EXPECT_EQ(runWords({"--settings", "X", "vehicles"}), 0);
  EXPECT_TRUE(console.messages.value(0).endsWith(
      "X.INI ist keine gewöhnliche Datei, sondern eine Pipe. Es gelten die Vorgaben."));
  EXPECT_EQ(runWords({"--settings", "X", "test"}), 2);
  EXPECT_TRUE(untouched());
}

TEST_F(DatabaseCommands, AMissingColumnIsNoFaultOfTheCondition) {
  Database(path()).write("ALTER TABLE LOCO_DAT DROP COLUMN FZ_LNAME", {});
  EXPECT_EQ(runWords({"vehicles", "--where", "DC_ADR=3"}), 1);
  EXPECT_TRUE(console.messages.first().startsWith("Datenbankdatei "));
}

TEST_F(DatabaseCommands, VehiclesAsJsonAreOneObjectALine) {
  EXPECT_EQ(runWords({"vehicles", "--json", "--where", "DC_ADR=3"}), 0);
  EXPECT_EQ(
      console.results,
      QStringList{"{\"DC_ADR\":3,\"DC_COLL\":\"Anlage\",\"DC_DECODER\":\"ZX100\",\"FZ_FTYPE\":"
                  "\"Diesellok\",\"FZ_LNAME\":\"Lok, \\\"rot\\\"\",\"ST_SNAME\":\"V 200\"}"});
  EXPECT_EQ(runWords({"vehicles", "--json", "--csv"}), 2);
}

TEST_F(DatabaseCommands, AMissingDatabaseFails) {
  ASSERT_TRUE(QFile::remove(path()));
  EXPECT_EQ(run("vehicles"), 1);
  EXPECT_TRUE(console.messages.first().contains("DB/LOKARIV3.MDB"));
  EXPECT_FALSE(QFile::exists(path()));
}

TEST_F(DatabaseCommands, CheckFindsNothingInASoundInstallation) {
  EXPECT_EQ(run("check"), 0);
  EXPECT_TRUE(console.results.isEmpty());
  EXPECT_EQ(console.messages,
            QStringList{"Geprüft: die Datenbank und 0 Beschreibungsdateien, 0 Fehler."});
}

TEST_F(DatabaseCommands, CheckFindsMissingTablesColumnsAndIndexes) {
  Database database(path());
  database.write("DROP INDEX LOCO_DAT_COLL_ADR", {});
  database.write("CREATE UNIQUE INDEX LOCO_DAT_COLL_ADR ON LOCO_DAT (DC_COLL, DC_ADR)", {});
  database.write("DROP INDEX LOCO_DAT_ADR", {});
  database.write("ALTER TABLE LOCO_DAT DROP COLUMN MD_USER_3", {});
  database.write("DROP TABLE ERAS", {});
  EXPECT_EQ(run("check"), 1);
  EXPECT_EQ(console.results,
            (QStringList{path() + "\t0\tTabelle LOCO_DAT: Die Spalte MD_USER_3 fehlt.",
                         path() + "\t0\tTabelle LOCO_DAT: Es fehlt: Index über DC_ADR.",
                         path() + "\t0\tTabelle LOCO_DAT: Es fehlt: eindeutiger Index über DC_COLL "
                                  "NOCASE, DC_ADR.",
                         path() + "\t0\tDie Tabelle ERAS fehlt."}));
}

TEST_F(DatabaseCommands, CheckFindsWrongTypes) {
  Database database(path());
  database.write("ALTER TABLE LOCO_DAT DROP COLUMN MD_INFO", {});
  database.write("ALTER TABLE LOCO_DAT ADD COLUMN MD_INFO VARCHAR(40)", {});
  database.write("ALTER TABLE LOCO_DAT DROP COLUMN FZ_MAXSPEED", {});
  database.write("ALTER TABLE LOCO_DAT ADD COLUMN FZ_MAXSPEED VARCHAR(255)", {});
  database.write("ALTER TABLE LOCO_DAT DROP COLUMN ST_SNAME", {});
  database.write("ALTER TABLE LOCO_DAT ADD COLUMN ST_SNAME VARCHAR(60)", {});
  database.write("ALTER TABLE LOCO_DAT ADD COLUMN EIGENE INTEGER", {});
  EXPECT_EQ(run("check"), 1);
  EXPECT_EQ(
      console.results,
      (QStringList{path() + "\t0\tTabelle LOCO_DAT: Die Spalte FZ_MAXSPEED ist VARCHAR(255) statt "
                            "SMALLINT.",
                   path() + "\t0\tTabelle LOCO_DAT: Die Spalte MD_INFO ist VARCHAR(40) statt "
                            "VARCHAR(255)."}))
      << "more and wider columns are no fault";
}

TEST_F(DatabaseCommands, CheckFindsValuesOutOfRange) {
  Database database(path());
  database.write("UPDATE LOCO_DAT SET DC_ADR = 10240, ST_SNAME = 'zu lang!' WHERE DC_ADR = 7", {});
  database.write("UPDATE LOCO_DAT SET DC_CV = 'Text', FZ_MAXSPEED = 'schnell' WHERE DC_ADR = 3",
                 {});
  EXPECT_EQ(run("check --json"), 1);
  ASSERT_EQ(console.results.size(), 4);
  EXPECT_TRUE(console.results[0].contains(
      "Zeile 1: DC_ADR ist \\\"10240\\\", erlaubt ist eine Zahl von 1 bis 10239."));
  EXPECT_TRUE(console.results[1].contains("ein Text von höchstens 6 Zeichen"));
  EXPECT_TRUE(console.results[2].contains("FZ_MAXSPEED ist \\\"schnell\\\""));
  EXPECT_TRUE(console.results[3].contains("eine Folge von Bytes"));
}

TEST_F(DatabaseCommands, ManyWrongValuesOfAColumnAreCounted) {
  Database database(path());
  for (int i = 0; i < 15; ++i) {
    database.write("INSERT INTO LOCO_DAT (DC_ADR, DC_COLL, ST_SNAME) VALUES (?, 'x', 'y')",
                   {20000 + i});
  }
  EXPECT_EQ(run("check"), 1);
  EXPECT_EQ(console.results.size(), 11);
  EXPECT_TRUE(console.results.last().endsWith("DC_ADR ist in 5 weiteren Zeilen falsch."));
}

TEST_F(DatabaseCommands, CheckTellsATableWithoutRowNumbersInGerman) {
  {
    Database database(path());
    database.write("DROP TABLE ERAS", {});
    database.write(
        "CREATE TABLE ERAS (FZ_ERA_SEQ SMALLINT, FZ_ERA VARCHAR(255) PRIMARY KEY) WITHOUT ROWID",
        {});
  }
  EXPECT_EQ(run("check"), 1);
  EXPECT_TRUE(console.results.value(0).endsWith(
      "Tabelle ERAS: Ihre Zeilen haben keine Nummern (WITHOUT ROWID)."))
      << qPrintable(console.results.join(u'\n'));
  EXPECT_FALSE(console.results.join(u'\n').contains("rowid"));
}

TEST_F(DatabaseCommands, CheckTellsTheFaultsOfADamagedDatabase) {
  QFile file(path());
  ASSERT_TRUE(file.open(QIODevice::ReadWrite));
  // The second half of the file is overwritten.
  ASSERT_TRUE(file.seek(file.size() / 2));
  file.write(QByteArray(static_cast<int>(file.size() / 2), 'x'));
  file.close();
  EXPECT_EQ(run("check"), 1);
  ASSERT_FALSE(console.results.isEmpty());
  EXPECT_TRUE(console.results.first().startsWith(path() + "\t0\t"));
}

TEST_F(DatabaseCommands, CheckTellsTheFaultsOfDescriptionsWithTheirLines) {
  write("Maker/BAD.dec", "[BAD]\r\nCV_1=name,0-255\r\nCV_x=?\r\n");
  EXPECT_EQ(run("check"), 1);
  ASSERT_FALSE(console.results.isEmpty());
  EXPECT_EQ(console.results.first().section('\t', 0, 0), "Maker/BAD.dec");
  EXPECT_GT(console.results.first().section('\t', 1, 1).toInt(), 0);
}

TEST_F(DatabaseCommands, VehiclesGoIntoAVehicleFile) {
  const QString file = folder.filePath("RZK_LOCO.DAT");
  EXPECT_EQ(runWords({"export", "rzk", file}), 1);
  EXPECT_FALSE(QFileInfo::exists(file)) << "a new file is made when told to";
  EXPECT_EQ(runWords({"export", "rzk", file, "--yes"}), 0);
  EXPECT_EQ(console.results, QStringList{"Export beendet, 3 Fahrzeuge übernommen."});
  EXPECT_EQ(QFileInfo(file).size(), 4 * 52);
  EXPECT_EQ(runWords({"export", "rzk", file}), 0);
  EXPECT_EQ(console.results, QStringList{"Export beendet, 0 Fahrzeuge übernommen."});
  EXPECT_EQ(runWords({"export", "rzk"}), 2);
  EXPECT_EQ(runWords({"export", "rzk", file, file}), 2);
}

TEST_F(DatabaseCommands, VehiclesGoIntoATableFile) {
  const QString file = folder.filePath("liste.csv");
  EXPECT_EQ(runWords({"export", "csv", file}), 1);
  EXPECT_EQ(console.messages.last(), "Die Vorlage " + folder.filePath("repc_ger.rpt") +
                                         " fehlt oder lässt sich nicht lesen.");
  write("Eigene.rpt", "A;N\n{{#fahrzeuge}}\n{{DC_ADR}};{{ST_SNAME}}\n{{/fahrzeuge}}\n");
  writeIni("LOKARI", "CSVReport=eigene.rpt\r\n");
  EXPECT_EQ(runWords({"export", "csv", file}), 0);
  EXPECT_EQ(console.results,
            (QStringList{"Export beendet,", "3 Fahrzeuge in", QDir::toNativeSeparators(file)}));
  QFile written(file);
  ASSERT_TRUE(written.open(QIODevice::ReadOnly));
  EXPECT_EQ(written.readAll(),
            "\xEF\xBB\xBF"
            "A;N\r\n9;leer\r\n3;V 200\r\n7;ohne\r\n");
  EXPECT_EQ(runWords({"export", "csv"}), 2);
  EXPECT_EQ(runWords({"export", "csv", file, file}), 2);
}

TEST_F(DatabaseCommands, ExportsReplaceOnlyATableFileAndOnlyWithYes) {
  write("repc_ger.rpt", "N\n{{#fahrzeuge}}\n{{ST_SNAME}}\n{{/fahrzeuge}}\n");
  write("liste.csv", "alt");
  write("foto.jpg", "JFIF");
  const auto contents = [this](const char* name) {
    QFile file(folder.filePath(QString::fromUtf8(name)));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
  };
  EXPECT_EQ(runWords({"export", "csv", folder.filePath("liste.csv")}), 1);
  EXPECT_EQ(contents("liste.csv"), "alt");
  EXPECT_EQ(runWords({"export", "csv", folder.filePath("liste.csv"), "--yes"}), 0);
  EXPECT_NE(contents("liste.csv"), "alt");
  for (const char* name : {"foto.jpg", "LOKARI.INI", "repc_ger.rpt", "DB/LOKARIV3.MDB"}) {
    const QByteArray before = contents(name);
    EXPECT_EQ(runWords({"export", "csv", folder.filePath(QString::fromUtf8(name)), "--yes"}), 1);
    EXPECT_TRUE(console.messages.last().startsWith("In die Datei ")) << name;
    EXPECT_TRUE(contents(name) == before) << name;
  }
}

TEST_F(DatabaseCommands, ExportsMakeNoFolderAndNoFileWithoutAName) {
  write("repc_ger.rpt", "N\n{{#fahrzeuge}}\n{{ST_SNAME}}\n{{/fahrzeuge}}\n");
  EXPECT_EQ(runWords({"export", "csv", folder.filePath("neu/liste.csv"), "--yes"}), 1);
  EXPECT_FALSE(QFileInfo::exists(folder.filePath("neu")));
  EXPECT_EQ(runWords({"export", "csv", "", "--yes"}), 2);
  EXPECT_EQ(runWords({"export", "rzk", "", "--yes"}), 2);
}

TEST_F(DatabaseCommands, ADataFolderWithoutTemplatesTakesThoseOfTheInstallation) {
  write("share/lokari/repc_ger.rpt", "N\n{{#fahrzeuge}}\n{{ST_SNAME}}\n{{/fahrzeuge}}\n");
  programs = folder.filePath("bin");
  const QString file = folder.filePath("liste.csv");
  EXPECT_EQ(runWords({"export", "csv", file}), 0);
  EXPECT_EQ(console.results.value(1), "3 Fahrzeuge in");
  write("repc_ger.rpt", "{{#fahrzeuge}}{{NIX}}{{/fahrzeuge}}");
  EXPECT_EQ(runWords({"export", "csv", file, "--yes"}), 1)
      << "a template of the user's own comes first";
  writeIni("LOKARI", "CSVReport=nirgends.rpt\r\n");
  EXPECT_EQ(runWords({"export", "csv", file, "--yes"}), 1);
  EXPECT_EQ(console.messages.last(), "Die Vorlage " + folder.filePath("nirgends.rpt") +
                                         " fehlt oder lässt sich nicht lesen.");
}

TEST_F(DatabaseCommands, ADatabaseThatIsMissingGivesNoTableFile) {
  ASSERT_TRUE(QFile::remove(path()));
  const QString file = folder.filePath("liste.csv");
  EXPECT_EQ(runWords({"export", "csv", file}), 1);
  EXPECT_FALSE(QFile::exists(file));
}

}  // namespace
}  // namespace lokari
