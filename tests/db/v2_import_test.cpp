#include "db/v2_import.h"

#include <gtest/gtest.h>

#include <QSqlQuery>

#include "base/ini_file.h"
#include "db/cv_record.h"
#include "db/database_session.h"
#include "foreign_tables.h"
#include "ole_objects.h"
#include "support/recording_desktop.h"
#include "support/scripted_prompt.h"
#include "support/test_database.h"

namespace lokari {
namespace {

const QByteArray kCvs = QByteArray(1024, '\x05');
const QByteArray kMarks = QByteArray(1024, 'G');

class V2ImportTest : public ::testing::Test {
 protected:
  V2ImportTest() {
    tables_ = {
        {QStringLiteral("LOCO_DAT"),
         {"DC_RECNO", "DC_ADR", "DC_TYPE", "DC_CV", "DC_CV_ST", "ST_SNAME", "FZ_LNAME", "MD_PRICE"},
         {},
         {}}};
  }

  static QString str(const char* text) { return QString::fromUtf8(text); }

  /// A V2 vehicle; its key is its place in the table.
  void add(const QVariant& address, const QString& shortName,
           const QVariant& longName = QStringLiteral("Lok"), const QVariant& values = kCvs,
           const QVariant& marks = kMarks) {
    QList<QVariantList>& rows = tables_[0].rows;
    rows.append(
        {static_cast<int>(rows.size()) + 1, address, 1, values, marks, shortName, longName, 12.5});
  }

  /// Imports; gives the report without the remarks below it.
  QString import() {
    good_ = importVehicles([this] { return open(); }, base_.open(), progress_) == ImportEnd::Whole;
    const QString report = progress_.statuses.last();
    remarks_ = report.section(str("\r\r"), 1);
    return report.section(str("\r\r"), 0, 0);
  }

  std::unique_ptr<ForeignDatabase> open() {
    return std::make_unique<test::MemoryForeignDatabase>(tables_);
  }

  /// The first column of all rows, in order.
  QVariantList stored(const char* statement) {
    QVariantList values;
    base_.open().read(str(statement), {},
                      [&values](const QSqlQuery& row) { values << row.value(0); });
    return values;
  }

  QList<test::MemoryTable> tables_;
  test::TestDatabase base_;
  test::RecordingProgress progress_;
  QString remarks_;
  bool good_ = false;
};

TEST_F(V2ImportTest, CopiesEveryColumnOfItsName) {
  add(3, str("V100"), str("Diesellok"));
  EXPECT_EQ(import(),
            QStringLiteral("Import erfolgreich abgeschlossen,\r 1 Datensätze importiert!"));
  EXPECT_TRUE(good_);
  EXPECT_EQ(stored("SELECT DC_ADR FROM LOCO_DAT"), QVariantList{3});
  EXPECT_EQ(stored("SELECT DC_TYPE FROM LOCO_DAT"), QVariantList{1});
  EXPECT_EQ(stored("SELECT ST_SNAME FROM LOCO_DAT"), QVariantList{"V100"});
  EXPECT_EQ(stored("SELECT FZ_LNAME FROM LOCO_DAT"), QVariantList{"Diesellok"});
  EXPECT_EQ(stored("SELECT MD_PRICE FROM LOCO_DAT"), QVariantList{12.5});
  EXPECT_EQ(stored("SELECT MD_INFO IS NULL FROM LOCO_DAT"), QVariantList{1});
}

TEST_F(V2ImportTest, PutsTheVehiclesIntoTheEmptyCollection) {
  add(3, str("V100"));
  import();
  EXPECT_EQ(stored("SELECT DC_COLL IS NOT NULL AND DC_COLL = '' FROM LOCO_DAT"), QVariantList{1});
}

TEST_F(V2ImportTest, NumbersOnFromTheHighestRecordNumber) {
  base_.run("INSERT INTO LOCO_DAT (DC_RECNO, DC_ADR, DC_COLL) VALUES (40, 1, 'A'), (7, 2, 'A')");
  add(3, str("A"));
  add(4, str("B"));
  import();
  EXPECT_EQ(stored("SELECT DC_RECNO FROM LOCO_DAT WHERE DC_ADR > 2 ORDER BY DC_ADR"),
            (QVariantList{41, 42}));
}

TEST_F(V2ImportTest, NumbersAnEmptyDatabaseFromOne) {
  add(3, str("A"));
  import();
  EXPECT_EQ(stored("SELECT DC_RECNO FROM LOCO_DAT"), QVariantList{1});
}

TEST_F(V2ImportTest, SkipsAnAddressOfAnyCollectionAsDouble) {
  base_.addVehicle(3, str("Vitrine"), str("da"));
  add(3, str("neu"));
  add(4, str("B"));
  EXPECT_EQ(import(),
            QStringLiteral("Import erfolgreich abgeschlossen,\r 1 Datensätze importiert!\r"
                           "(1 Datensätze doppelt)"));
  EXPECT_EQ(stored("SELECT ST_SNAME FROM LOCO_DAT ORDER BY DC_ADR"), (QVariantList{"da", "B"}));
}

TEST_F(V2ImportTest, OfTwoRowsWithOneAddressTheFirstIsTaken) {
  add(100, str("A0"));
  add(100, str("dopp"));
  EXPECT_EQ(import(),
            QStringLiteral("Import erfolgreich abgeschlossen,\r 1 Datensätze importiert!\r"
                           "(1 Datensätze doppelt)"));
  EXPECT_EQ(stored("SELECT ST_SNAME FROM LOCO_DAT"), QVariantList{"A0"});
}

TEST_F(V2ImportTest, AVehicleWithoutALongNameGetsThreeDots) {
  add(3, str("A"), QVariant());
  add(4, str("B"), QString());
  import();
  EXPECT_EQ(stored("SELECT FZ_LNAME FROM LOCO_DAT"), (QVariantList{"...", "..."}));
}

TEST_F(V2ImportTest, GivesAllFiveSetsTheSameArraysAndTheirNames) {
  add(3, str("A"));
  import();
  int number = 0;
  for (const CvColumns& set : kCvColumns) {
    const auto column = [this](const char16_t* name) {
      return stored(qPrintable(QStringLiteral("SELECT %1 FROM LOCO_DAT").arg(name)));
    };
    EXPECT_EQ(column(set.values), QVariantList{kCvs});
    EXPECT_EQ(column(set.marks), QVariantList{kMarks});
    EXPECT_EQ(column(set.name), QVariantList{QStringLiteral("Set %1").arg(++number)});
  }
}

TEST_F(V2ImportTest, ReplacesNullArraysByZeros) {
  add(3, str("A"), str("x"), QVariant(), kMarks);
  add(4, str("B"), str("x"), kCvs, QVariant());
  import();
  const QByteArray zeros(4865, '\0');
  EXPECT_EQ(stored("SELECT DC_CV FROM LOCO_DAT ORDER BY DC_ADR"), (QVariantList{zeros, kCvs}));
  EXPECT_EQ(stored("SELECT DC_CV_4 FROM LOCO_DAT ORDER BY DC_ADR"), (QVariantList{zeros, kCvs}));
  EXPECT_EQ(stored("SELECT DC_CV_ST FROM LOCO_DAT ORDER BY DC_ADR"), (QVariantList{kMarks, zeros}));
}

TEST_F(V2ImportTest, CountsRowsThatTheTargetRefusesAndGoesOn) {
  add(3, str("viel zu lang"));
  add(4, str("B"));
  add(QVariant(), str("C"));
  add(40000, str("D"));
  add(4, str("E"));
  EXPECT_EQ(import(), QStringLiteral("Import abgeschlossen,\r 1 Datensätze importiert,\r"
                                     " 3 Datensätze nicht importiert!\r(1 Datensätze doppelt)"));
  EXPECT_FALSE(good_);
  EXPECT_EQ(stored("SELECT DC_ADR FROM LOCO_DAT"), QVariantList{4});
}

TEST_F(V2ImportTest, NamesEachRowThatItDidNotTakeAndWhy) {
  base_.addVehicle(3, str("Vitrine"), str("da"));
  add(3, str("V100"));
  add(4, str("viel zu lang"));
  add(QVariant(), str("C"));
  import();
  EXPECT_EQ(remarks_,
            str("• Adresse 3 \"V100\": Die Adresse gibt es schon, \"da\" in der Sammlung "
                "\"Vitrine\".\r• Adresse 4 \"viel zu lang\": Der Text ist zu lang für das Feld "
                "Kurzname (höchstens 6 Zeichen).\r• Adresse  \"C\": Das Fahrzeug hat keine "
                "Adresse."));
  EXPECT_FALSE(QFile::exists(base_.folder() + str("/TEST-Import.txt")));
}

TEST_F(V2ImportTest, ManyRowsAreNamedInAFileBesideTheDatabase) {
  for (int address = 1; address <= 9; ++address) add(address, str("viel zu lang"));
  import();
  EXPECT_EQ(remarks_.count(u'•'), 5);
  EXPECT_TRUE(remarks_.endsWith(str("… und 4 weitere\rAlle: TEST-Import.txt")))
      << qPrintable(remarks_);
  QFile file(base_.folder() + str("/TEST-Import.txt"));
  ASSERT_TRUE(file.open(QIODevice::ReadOnly));
  EXPECT_EQ(QString::fromUtf8(file.readAll()).count(str("Adresse ")), 9);
}

TEST_F(V2ImportTest, TakesALongRemarkWhole) {
  tables_[0].columns[7] = str("MD_INFO");
  const QString remark = QString(5000, u'ä');
  add(3, str("A"));
  tables_[0].rows.last().last() = remark;
  import();
  EXPECT_TRUE(good_);
  EXPECT_EQ(stored("SELECT MD_INFO FROM LOCO_DAT"), QVariantList{remark});
}

TEST_F(V2ImportTest, ARefusedRowDoesNotMakeItsAddressADouble) {
  add(3, str("viel zu lang"));
  add(3, str("kurz"));
  EXPECT_EQ(import(), QStringLiteral("Import abgeschlossen,\r 1 Datensätze importiert,\r"
                                     " 1 Datensätze nicht importiert!"));
  EXPECT_EQ(stored("SELECT ST_SNAME FROM LOCO_DAT"), QVariantList{"kurz"});
}

TEST_F(V2ImportTest, TellsOfEachRowAndFillsTheBar) {
  add(3, str("A"));
  add(3, str("B"));
  add(4, str("C"));
  add(5, str("D"));
  import();
  EXPECT_EQ(progress_.statuses.mid(0, 5),
            (QStringList{"Importiere Tabelle LOCO_DAT...\r\r", "Satz 1 von 4", "Satz 2 von 4",
                         "Satz 3 von 4", "Satz 4 von 4"}));
  EXPECT_EQ(progress_.percents, (QList<double>{0, 0, 25, 50, 75, 100, 100}));
}

TEST_F(V2ImportTest, WhatWasTakenBeforeACancelStaysAndIsTold) {
  for (int address = 1; address <= 5; ++address) add(address, str("A"));
  progress_.cancelAfter = 2;
  EXPECT_EQ(import(),
            QStringLiteral("Import erfolgreich abgeschlossen,\r 2 Datensätze importiert!"));
  EXPECT_FALSE(good_);
  EXPECT_EQ(stored("SELECT DC_ADR FROM LOCO_DAT"), (QVariantList{1, 2}));
  EXPECT_EQ(progress_.percents.last(), 100);
}

TEST_F(V2ImportTest, AnEmptyTableImportsNothing) {
  EXPECT_EQ(import(),
            QStringLiteral("Import erfolgreich abgeschlossen,\r 0 Datensätze importiert!"));
}

TEST_F(V2ImportTest, ASourceThatBreaksOffKeepsWhatCameBefore) {
  for (int address = 1; address <= 3; ++address) add(address, str("A"));
  tables_[0].breaksAt = 2;
  EXPECT_EQ(import(), QStringLiteral("Fehler bei Import (3049)\rDie Datei ist beschädigt.\r"
                                     " 2 Datensätze importiert!"));
  EXPECT_FALSE(good_);
  EXPECT_EQ(stored("SELECT DC_ADR FROM LOCO_DAT"), (QVariantList{1, 2}));
}

TEST_F(V2ImportTest, AFileWithoutTheTableIsAnError) {
  tables_[0].name = str("LOKS");
  EXPECT_EQ(import(),
            QStringLiteral("Fehler bei Import (3061)\rDie Datei hat keine Tabelle LOCO_DAT."));
  EXPECT_FALSE(good_);
}

TEST_F(V2ImportTest, AFileThatCannotBeOpenedIsAnError) {
  EXPECT_EQ(importVehicles(
                []() -> std::unique_ptr<ForeignDatabase> {
                  throw StorageError(storage_error::kNoDatabase,
                                     QStringLiteral("Keine Datenbank."));
                },
                base_.open(), progress_),
            ImportEnd::Broken);
  EXPECT_EQ(progress_.statuses.last(),
            QStringLiteral("Fehler bei Import (3343)\rKeine Datenbank."));
}

TEST_F(V2ImportTest, AColumnThatTheDatabaseLacksTakesNothingOver) {
  tables_[0].columns[7] = str("MD_FARBE");
  add(3, str("A"));
  EXPECT_EQ(import(), QStringLiteral("Fehler bei Import (3061)\r"
                                     "Die Tabelle LOCO_DAT hat keine Spalte \"MD_FARBE\"."));
  EXPECT_TRUE(stored("SELECT DC_ADR FROM LOCO_DAT").isEmpty());
}

TEST_F(V2ImportTest, ColumnNamesHaveNoCaseAndTheFirstColumnIsNeverCopied) {
  tables_[0].columns = QStringList{"dc_recno", "dc_adr",   "dc_type",  "dc_cv",
                                   "dc_cv_st", "st_sname", "fz_lname", "md_price"};
  add(3, str("A"));
  tables_[0].rows[0][0] = 99;
  import();
  EXPECT_EQ(stored("SELECT DC_RECNO FROM LOCO_DAT"), QVariantList{1});
  EXPECT_EQ(stored("SELECT DC_CV_2 FROM LOCO_DAT"), QVariantList{kCvs});
}

TEST_F(V2ImportTest, TheRecordNumberIsPassedOverWhereverItStands) {
  tables_[0].columns = QStringList{"MD_INFO",  "DC_RECNO", "DC_ADR",   "DC_CV",
                                   "DC_CV_ST", "ST_SNAME", "FZ_LNAME", "MD_PRICE"};
  tables_[0].rows.append(
      {QStringLiteral("erste Spalte"), 99, 3, kCvs, kMarks, str("A"), str("B"), 1.0});
  import();
  EXPECT_EQ(stored("SELECT DC_RECNO FROM LOCO_DAT"), QVariantList{1});
  EXPECT_EQ(stored("SELECT MD_INFO IS NULL FROM LOCO_DAT"), QVariantList{1});
}

class V2Pictures : public V2ImportTest {
 protected:
  V2Pictures() { tables_[0].columns.last() = QStringLiteral("MD_PIC"); }

  void add(int address, const QByteArray& picture) {
    V2ImportTest::add(address, str("A"));
    tables_[0].rows.last().last() = picture;
  }
};

TEST_F(V2Pictures, ComeOutOfTheWrapperOfAccess) {
  const QByteArray bitmap("BM a bitmap");
  const QByteArray jpeg("\xFF\xD8\xFF\xE0 a photograph");
  add(1, test::wrapped("PBrush", bitmap));
  add(2, test::wrapped("Package", test::packaged(jpeg)));
  add(3, bitmap);
  EXPECT_EQ(import(), str("Import erfolgreich abgeschlossen,\r 3 Datensätze importiert!"));
  EXPECT_EQ(stored("SELECT MD_PIC FROM LOCO_DAT ORDER BY DC_ADR"),
            QVariantList({bitmap, jpeg, bitmap}));
}

TEST_F(V2Pictures, AnotherObjectStaysAsItIsAndIsTold) {
  const QByteArray drawing = test::wrapped("Drawing", "\xD0\xCF\x11\xE0");
  add(1, drawing);
  add(1, drawing);
  EXPECT_EQ(import(), str("Import erfolgreich abgeschlossen,\r 1 Datensätze importiert!\r(1 "
                          "Datensätze doppelt)\r(1 Bild weder Bitmap noch JPEG, unverändert "
                          "importiert)"));
  EXPECT_EQ(stored("SELECT MD_PIC FROM LOCO_DAT"), QVariantList{drawing});
}

/// The import into the database on show.
class ConvertDBTest : public V2ImportTest {
 protected:
  void start() {
    base_.close();
    ASSERT_EQ(session_.InitDB(), 0);
  }
  QString convert() {
    ConvertDB([this] { return open(); }, session_, progress_);
    return progress_.statuses.last();
  }
  QString text(const char* control) { return session_.form().text(str(control)); }

  test::ScriptedPrompt prompt_;
  test::RecordingDesktop desktop_;
  QTemporaryDir folder_;
  IniFile ini_{folder_.filePath(QStringLiteral("LOKARI.INI"))};
  NoOldFormat oldFormat_;
  DatabaseSession session_{{prompt_, desktop_, ini_, folder_.path()}, base_.path(), oldFormat_};
};

TEST_F(ConvertDBTest, ShowsTheFirstRecordAfterwards) {
  base_.addVehicle(9, str("Anlage"), str("alt"));
  base_.addVehicle(10, str("Anlage"), str("alt"));
  start();
  session_.form().MoveNext();
  add(3, str("neu"));
  convert();
  EXPECT_EQ(text("dc_adr"), str("3"));
  EXPECT_EQ(text("Data1"), str("Satz  1 von  3"));
}

TEST_F(ConvertDBTest, APendingEditIsDropped) {
  base_.addVehicle(9, str("Anlage"), str("alt"));
  start();
  session_.form().edited(str("st_sname"), str("neu"));
  ASSERT_EQ(session_.form().editMode(), EditMode::Edit);
  add(3, str("A"));
  convert();
  EXPECT_EQ(session_.form().editMode(), EditMode::None);
  EXPECT_EQ(stored("SELECT ST_SNAME FROM LOCO_DAT WHERE DC_ADR = 9"), QVariantList{"alt"});
}

TEST_F(ConvertDBTest, LeavesTheNewRecordOfAnEmptyDatabase) {
  start();
  ASSERT_EQ(text("Data1"), str("neuer Satz"));
  add(3, str("A"));
  convert();
  EXPECT_EQ(text("Data1"), str("Satz  1 von  1"));
  EXPECT_TRUE(session_.form().isEnabled(str("Data1")));
  EXPECT_TRUE(session_.form().isVisible(str("butNew")));
}

TEST_F(ConvertDBTest, ADatabaseThatStaysEmptyKeepsItsNewRecord) {
  start();
  tables_[0].name = str("LOKS");
  add(3, str("A"));
  convert();
  EXPECT_EQ(text("Data1"), str("neuer Satz"));
  EXPECT_EQ(session_.form().editMode(), EditMode::Add);
}

TEST_F(ConvertDBTest, WithoutAnOpenDatabaseItSaysSo) {
  add(3, str("A"));
  EXPECT_EQ(convert(), QStringLiteral("Fehler bei Import (3343)\rEs ist keine Datenbank geöffnet, "
                                      "die die Fahrzeuge aufnehmen könnte."));
}

}  // namespace
}  // namespace lokari
