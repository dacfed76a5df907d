#include "reports/csv_export.h"

#include <QDir>

#include <unistd.h>

#include "base/file_place.h"
#include "base/paths.h"
#include "pdf_pages.h"
#include "reports/print_selection.h"
#include "reports/report_error.h"
#include "support/no_larger_files.h"
#include "support/test_database.h"

namespace lokari {
namespace {

const std::string kMark("\xEF\xBB\xBF");

class CsvExportTest : public ::testing::Test {
 protected:
  CsvExportTest() {
    database.run("DELETE FROM LOCO_DAT");
    database.run(
        "INSERT INTO LOCO_DAT (DC_ADR, DC_COLL, DC_TYPE, ST_SNAME, FZ_LNAME, MD_PRICE, MD_SCALE) "
        "VALUES (17, 'Vitrine', 1, 'E 10', 'Lok \"rot\"; alt', 199.9, '1:87'), "
        "(9, 'Anlage', 2, 'Übung', NULL, 1234.5678, NULL), (3, 'anlage', 3, 'V 60', "
        "'eins' || char(10) || 'zwei', 20, '1:160'), (5, NULL, 1, '=1+1', NULL, NULL, NULL)");
    database.run("UPDATE LOCO_DAT SET DC_MANUF = 145, DC_DECODER = 'ZX100' WHERE DC_ADR = 17");
    database.run("INSERT OR REPLACE INTO DCMANUFS (DC_MANUF, DC_MANUF_TEXT) VALUES (145, 'Zimo')");
    useTemplate(
        "Adresse;Name;Text;Preis\n"
        "{{#fahrzeuge}}\n{{DC_ADR}};{{ST_SNAME}};{{FZ_LNAME}};{{MD_PRICE}}\n{{/fahrzeuge}}\n");
  }

  void useTemplate(const QByteArray& text) { put(templateFile(), text); }
  QString templateFile() const { return database.folder() + QStringLiteral("/repc_ger.rpt"); }
  QString file() const { return csvPlace(database.folder()); }

  static void put(const QString& path, const QByteArray& text) {
    ASSERT_TRUE(QDir().mkpath(QFileInfo(path).path()));
    QFile out(path);
    ASSERT_TRUE(out.open(QIODevice::WriteOnly));
    out.write(text);
  }

  std::string contents() const { return contentsOf(file()); }
  static std::string contentsOf(const QString& path) {
    QFile in(path);
    return in.open(QIODevice::ReadOnly) ? in.readAll().toStdString() : std::string();
  }

  bool run(const QString& formula = {}) {
    return exportCsv({database.open(), templateFile(), formula},
                     csvFilePlace(database.folder(), own), progress);
  }

  /// What keeps the export from being done; empty when nothing does.
  QString refusal() {
    try {
      run();
    } catch (const ReportError& error) {
      return error.text();
    }
    return {};
  }

  test::TestDatabase database;
  test::ProgressRecord progress;
  QStringList own;
};

TEST_F(CsvExportTest, ALineForEachVehicleInTheOrderOfCollectionAndAddress) {
  EXPECT_TRUE(run());
  EXPECT_EQ(contents(), kMark +
                            "Adresse;Name;Text;Preis\r\n"
                            "3;V 60;\"eins\nzwei\";20,00\r\n"
                            "9;Übung;;1234,5678\r\n"
                            "17;E 10;\"Lok \"\"rot\"\"; alt\";199,90\r\n"
                            "5;'=1+1;;\r\n");
  EXPECT_EQ(progress.texts.last(), QStringLiteral("Export beendet,\r4 Fahrzeuge in\r") + file());
  EXPECT_EQ(progress.percents.last(), 100);
}

TEST_F(CsvExportTest, TheFileIsCalledAfterTheFirstDatabaseWhicheverIsOpen) {
  EXPECT_EQ(csvPlace("/srv/nirgends"), "/srv/nirgends/DB/LOKARIV3.CSV");
  put(database.folder() + "/db/lokariv3.csv", "alt");
  EXPECT_EQ(file(), database.folder() + "/db/lokariv3.csv") << "case does not count";
  EXPECT_TRUE(run());
  EXPECT_TRUE(contents().starts_with(kMark + "Adresse"));
}

TEST_F(CsvExportTest, OnlyTheSelectedVehicles) {
  EXPECT_TRUE(run(collectionVehicles("Anlage", "4", "9999").formula));
  EXPECT_EQ(contents(), kMark + "Adresse;Name;Text;Preis\r\n9;Übung;;1234,5678\r\n");
  EXPECT_TRUE(run("{LOCO_DAT.DC_ADR}=9999"));
  EXPECT_EQ(contents(), kMark + "Adresse;Name;Text;Preis\r\n");
  EXPECT_EQ(progress.texts.last().section('\r', 1, 1), "0 Fahrzeuge in");
}

TEST_F(CsvExportTest, FieldsBesideTheColumns) {
  useTemplate(
      "{{titel}} {{anzahl}} {{auswahl}}\n{{#fahrzeuge}}\n"
      "{{nummer}};{{#gerade}}ja{{/gerade}};{{DC_TYPE_TEXT}};{{DC_MANUF_TEXT}};{{DC_TYPE}}\n"
      "{{/fahrzeuge}}\n");
  EXPECT_TRUE(run("{LOCO_DAT.DC_ADR} > 4"));
  EXPECT_EQ(contents(), kMark +
                            "Fahrzeugliste 3 Adresse > 4\r\n"
                            "1;;Funktionsteil;;2\r\n2;ja;Fahrzeug;Zimo;1\r\n3;;Fahrzeug;;1\r\n");
}

TEST_F(CsvExportTest, TheTemplateCannotBreakTheQuoting) {
  useTemplate("{{#fahrzeuge}}\n{{{ST_SNAME}}};\"{{&FZ_LNAME}}\";x\n{{/fahrzeuge}}\n");
  EXPECT_TRUE(run("{LOCO_DAT.DC_ADR}=17"));
  EXPECT_EQ(contents(), kMark + "E 10;\"Lok \"\"rot\"\"; alt\";x\r\n");
}

TEST_F(CsvExportTest, TheTemplateChoosesTheSeparator) {
  useTemplate("A,P\n{{#fahrzeuge}}\n{{DC_ADR}},{{MD_PRICE}}\n{{/fahrzeuge}}\n");
  EXPECT_TRUE(run("{LOCO_DAT.DC_ADR}=17"));
  EXPECT_EQ(contents(), kMark + "A,P\r\n17,\"199,90\"\r\n");
}

TEST_F(CsvExportTest, TextsThatLookLikeNumbersStayTextsUnlessTheTemplateSaysOtherwise) {
  database.run("UPDATE LOCO_DAT SET ST_SNAME = '007', MD_PRICE = -2.5 WHERE DC_ADR = 17");
  const QByteArray body = "{{#fahrzeuge}}\n{{DC_ADR}};{{ST_SNAME}};{{MD_PRICE}}\n{{/fahrzeuge}}\n";
  useTemplate(body);
  EXPECT_TRUE(run("{LOCO_DAT.DC_ADR}=17"));
  EXPECT_EQ(contents(), kMark + "17;'007;-2,50\r\n");
  useTemplate("{{! Texte unverändert }}\n" + body);
  EXPECT_TRUE(run("{LOCO_DAT.DC_ADR}=17"));
  EXPECT_EQ(contents(), kMark + "17;007;-2,50\r\n");
}

TEST_F(CsvExportTest, TheShippedTemplateHasACellForEachHeading) {
  useTemplate({});
  ASSERT_TRUE(QFile::remove(templateFile()));
  ASSERT_TRUE(QFile::copy(QStringLiteral(LOKARI_TEMPLATES "/repc_ger.rpt"), templateFile()));
  EXPECT_TRUE(run("{LOCO_DAT.DC_ADR}=17"));
  EXPECT_EQ(contents(),
            kMark +
                "Sammlung;Adresse;Art;Kurzname;Langbezeichnung;Fahrzeug-Type;Fahrzeug-Gruppe;"
                "Baureihe;Betriebsnummer;Max. Geschwindigkeit;Bahnverwaltung;Epoche;"
                "Decoder-Hersteller;Decoder;Hersteller;Katalog-Nr.;Maßstab;Preis;Motortype;"
                "Bemerkung;Benutzerinfo 1;Benutzerinfo 2;Benutzerinfo 3\r\n"
                "Vitrine;17;Fahrzeug;E 10;\"Lok \"\"rot\"\"; alt\";;;;;;;;Zimo;ZX100;;;1:87;199,90;"
                ";;;;\r\n");
}

TEST_F(CsvExportTest, AFailureLeavesTheOldFile) {
  put(file(), "alt");
  EXPECT_THROW(run("{LOCO_DAT.DC_ADR}=*"), ReportError);
  useTemplate("{{#fahrzeuge}}\n{{NIX}}\n{{/fahrzeuge}}\n");
  EXPECT_THROW(run(), ReportError);
  ASSERT_TRUE(QFile::remove(templateFile()));
  EXPECT_THROW(run(), ReportError);
  EXPECT_EQ(contents(), "alt");
}

TEST_F(CsvExportTest, APlaceThatIsNoPlainFileIsToldAndNothingIsLost) {
  ASSERT_TRUE(QDir().mkpath(file() + QStringLiteral("/belegt")));
  EXPECT_EQ(refusal(), QStringLiteral("In die Datei\r") + file() +
                           QStringLiteral("\rwird nicht geschrieben: Sie ist keine gewöhnliche "
                                          "Datei, sondern ein Ordner."));
  EXPECT_TRUE(QFileInfo(file() + QStringLiteral("/belegt")).isDir());
}

TEST_F(CsvExportTest, AFullDiskIsToldWithItsReasonAndLeavesTheOldFile) {
  put(file(), "alt");
  database.open();
  QString told;
  {
    const test::NoLargerFiles full(10);
    told = refusal();
  }
  EXPECT_EQ(told, QStringLiteral("Fehler beim Schreiben von\r") + file() +
                      QStringLiteral("\rEine ältere Datei dieses Namens ist unverändert.\r"
                                     "(die Datei wird größer als hier erlaubt)"));
  EXPECT_EQ(contents(), "alt");
}

TEST_F(CsvExportTest, NeitherTheDatabaseNorTheTemplateIsOverwritten) {
  useTemplate("{{#fahrzeuge}}\n{{DC_ADR}}\n{{/fahrzeuge}}\n");
  database.open();
  own = {templateFile()};
  for (const QString& each : {database.path(), templateFile()}) {
    // However it is called: by a link, symbolic or not, its name is that of a table file.
    for (const bool isHard : {false, true}) {
      ASSERT_TRUE(QDir().mkpath(QFileInfo(file()).path()));
      const QByteArray to = QFile::encodeName(file());
      const QByteArray from = QFile::encodeName(each);
      ASSERT_EQ(isHard ? ::link(from, to) : ::symlink(from, to), 0);
      const std::string before = contentsOf(each);
      EXPECT_FALSE(refusal().isEmpty());
      EXPECT_TRUE(contentsOf(each) == before) << each.toStdString();
      ASSERT_TRUE(QFile::remove(file()));
    }
  }
}

TEST_F(CsvExportTest, CancellingLeavesTheOldFile) {
  put(file(), "alt");
  int questions = 0;
  for (;; ++questions) {
    progress = {};
    progress.workUntilCancel = questions + 1;
    if (run()) break;
    EXPECT_EQ(contents(), "alt");
    EXPECT_EQ(progress.texts.last(), "Abgebrochen, es wurde keine Datei geschrieben.");
  }
  EXPECT_EQ(questions, 2) << "while reading and while writing";
}

}  // namespace
}  // namespace lokari
