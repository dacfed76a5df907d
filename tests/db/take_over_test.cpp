#include "db/take_over.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QSqlQuery>

#include "access_files.h"
#include "db/database.h"
#include "db/folder_lock.h"
#include "ole_objects.h"

namespace lokari {
namespace {

QString str(const char* text) {
  return QString::fromUtf8(text);
}

class TakeOverTest : public ::testing::Test {
 protected:
  TakeOverTest() {
    tables_ = {{"LOCO_DAT", {"DC_RECNO", "DC_ADR", "DC_COLL", "MD_INFO", "MD_PIC"}, {}, {}}};
  }

  void add(const QVariant& number, const QVariant& address, const QVariant& collection,
           const QVariant& info = {}, const QVariant& picture = {}) {
    tables_[0].rows.append({number, address, collection, info, picture});
  }

  bool run(const char* target = "NEU.MDB") {
    test::MemoryForeignDatabase source(tables_);
    TakeOver job(source, {files_.path(str("EMPTY.MDB")), files_.path(str(target))},
                 files_.progress);
    const bool taken = job.run();
    report_ = job.report();
    return taken;
  }

  /// The first column of all rows.
  QVariantList stored(const char* statement) const {
    QVariantList values;
    Database(files_.path(str("NEU.MDB"))).read(str(statement), {}, [&](const QSqlQuery& row) {
      values << row.value(0);
    });
    return values;
  }

  QList<test::MemoryTable> tables_;
  test::AccessFiles files_;
  TakeOverReport report_;
};

TEST_F(TakeOverTest, ARowThatTheKeysRefuseIsSkippedAndNamed) {
  add(1, 3, "Anlage");
  add(2, 3, "Anlage");
  add(3, 4, "Anlage");
  ASSERT_TRUE(run());
  EXPECT_EQ(stored("SELECT DC_RECNO FROM LOCO_DAT"), QVariantList({1, 3}));
  EXPECT_EQ(report_.vehicles, 2);
  EXPECT_EQ(report_.skipped.size(), 1);
  EXPECT_TRUE(report_.remarks().contains(
      str("Satz 2 (Adresse 3, Sammlung \"Anlage\") ist nicht übernommen: Diese Adresse gibt es in "
          "der Sammlung schon.")));
}

TEST_F(TakeOverTest, ANumberThatIsTakenIsReplacedByANewOne) {
  add(7, 3, "Anlage");
  add(7, 4, "Anlage");
  add(QVariant(), 5, "Anlage");
  ASSERT_TRUE(run());
  EXPECT_EQ(stored("SELECT DC_RECNO FROM LOCO_DAT ORDER BY DC_ADR"), QVariantList({7, 8, 9}));
  EXPECT_EQ(report_.skipped.size(), 0);
  EXPECT_TRUE(report_.remarks().contains(
      str("Satz 7 (Adresse 4, Sammlung \"Anlage\") hat eine neue Satznummer.")));
}

TEST_F(TakeOverTest, ARowWithAValueThatItsColumnCannotHoldIsSkippedAndNamed) {
  add(1, 70'000, "Anlage");
  tables_.append({"DCMANUFS", {"DC_MANUF", "DC_MANUF_TEXT"}, {{QVariant(), "niemand"}}, {}});
  ASSERT_TRUE(run());
  EXPECT_EQ(report_.skipped.size(), 2);
  EXPECT_TRUE(report_.remarks().contains(
      str("Satz 1 (Adresse 70000, Sammlung \"Anlage\") ist nicht übernommen: \"70000\" ist kein "
          "gültiger Wert für das Feld Adresse.")));
  EXPECT_TRUE(report_.remarks().contains(
      str("Tabelle DCMANUFS, Zeile 1 ist nicht übernommen: Ein Feld, das einen Wert haben muss, "
          "ist leer.")));
}

TEST_F(TakeOverTest, ATableReplacesTheRowsOfTheTemplateAndAMissingOneLeavesThem) {
  tables_.append({"eras", {"FZ_ERA_SEQ", "fz_era"}, {{1, "Jetzt"}}, {}});
  ASSERT_TRUE(run());
  EXPECT_EQ(stored("SELECT FZ_ERA FROM ERAS"), QVariantList{"Jetzt"});
  EXPECT_FALSE(stored("SELECT FZ_LINE FROM LINES").isEmpty());
  EXPECT_TRUE(
      report_.remarks().contains(str("Die Tabelle LINES fehlt, es bleibt bei der Vorlage.")));
}

TEST_F(TakeOverTest, TheMakerOfNumberNullIsAlwaysThere) {
  tables_.append({"DCMANUFS", {"DC_MANUF", "DC_MANUF_TEXT"}, {{145, "Zimo"}}, {}});
  ASSERT_TRUE(run());
  EXPECT_EQ(stored("SELECT DC_MANUF FROM DCMANUFS ORDER BY DC_MANUF"), QVariantList({0, 145}));
}

TEST_F(TakeOverTest, WhatThisSystemDoesNotKnowIsNamed) {
  tables_[0].columns << "MD_EXTRA";
  tables_[0].rows.append({1, 3, "A", QVariant(), QVariant(), "x"});
  tables_.append({"FOTOS", {"X"}, {{1}}, {}});
  tables_.append({"ERAS", {"Y"}, {{1}}, {}});
  ASSERT_TRUE(run());
  EXPECT_EQ(report_.vehicles, 1);
  for (const char* remark : {"Die Spalte MD_EXTRA der Tabelle LOCO_DAT kennt Lokari nicht.",
                             "Die Tabelle FOTOS kennt Lokari nicht.",
                             "Die Spalte Y der Tabelle ERAS kennt Lokari nicht."}) {
    EXPECT_TRUE(report_.remarks().contains(str(remark))) << remark;
  }
  EXPECT_FALSE(stored("SELECT FZ_ERA FROM ERAS").isEmpty());
}

TEST_F(TakeOverTest, APictureInAWrapperThatIsNoneIsKeptBesideAndNamed) {
  const QByteArray object("\x15\x1C\x14\0 a drawing of another program", 34);
  add(7, 3, "Anlage", {}, object);
  add(8, 4, "Anlage", {}, QByteArray("BM plain"));
  ASSERT_TRUE(run());
  EXPECT_EQ(stored("SELECT ifnull(MD_PIC, 'none') FROM LOCO_DAT"),
            QVariantList({"none", QByteArray("BM plain")}));
  EXPECT_EQ(report_.kept, files_.path(str("NEU-Dateien")));
  EXPECT_EQ(test::AccessFiles::contents(report_.kept + str("/MD_PIC 1.ole")), object);
  const QString remark =
      str("Satz 7 (Adresse 3, Sammlung \"Anlage\"): Das Bild ist weder Bitmap noch JPEG, es liegt "
          "unverändert in \"MD_PIC 1.ole\".");
  EXPECT_TRUE(report_.remarks().contains(remark));
  const QString file =
      QString::fromUtf8(test::AccessFiles::contents(report_.kept + str("/Bericht.txt")));
  EXPECT_TRUE(file.contains(remark));
}

TEST_F(TakeOverTest, PicturesInAWrapperAreUnwrapped) {
  const QByteArray bitmap("BM a bitmap");
  const QByteArray jpeg("\xFF\xD8\xFF\xE0 a photograph");
  add(1, 3, "Anlage", {}, test::wrapped("PBrush", bitmap));
  add(2, 4, "Anlage", {}, test::wrapped("Package", test::packaged(jpeg)));
  ASSERT_TRUE(run());
  EXPECT_EQ(stored("SELECT MD_PIC FROM LOCO_DAT"), QVariantList({bitmap, jpeg}));
}

TEST_F(TakeOverTest, ATextThatIsTooLongIsCutAndKeptWhole) {
  tables_[0].columns[3] = str("FZ_LNAME");
  const QString text = QString(40, u'ä') + str("Ende");
  add(7, 3, "Anlage", text);
  add(8, 4, "Anlage", QString(40, u'ä'));
  ASSERT_TRUE(run());
  EXPECT_EQ(stored("SELECT FZ_LNAME FROM LOCO_DAT"),
            QVariantList({QString(40, u'ä'), QString(40, u'ä')}));
  EXPECT_EQ(test::AccessFiles::contents(report_.kept + str("/FZ_LNAME 1.txt")),
            "\xEF\xBB\xBF" + text.toUtf8());
  EXPECT_EQ(report_.skipped.size(), 0);
}

TEST_F(TakeOverTest, ACutGoesThroughNoCharacter) {
  tables_[0].columns[3] = str("FZ_LNAME");
  add(7, 3, "Anlage", QString(39, u'x') + str("🚂"));
  ASSERT_TRUE(run());
  EXPECT_EQ(stored("SELECT FZ_LNAME FROM LOCO_DAT"), QVariantList{QString(39, u'x')});
}

TEST_F(TakeOverTest, ARemarkComesOverWholeHoweverLongItIs) {
  const QString remark = QString(20000, u'ä') + str("Ende");
  add(7, 3, "Anlage", remark);
  ASSERT_TRUE(run());
  EXPECT_EQ(stored("SELECT MD_INFO FROM LOCO_DAT"), QVariantList{remark});
  EXPECT_FALSE(report_.remarks().join(u'\n').contains(str("MD_INFO")));
}

TEST_F(TakeOverTest, TheFolderOfAKilledOneGoesWithTheNextAndALivingOneStays) {
  const QDir folder(files_.folder());
  ASSERT_TRUE(folder.mkpath(str(".lokari-uebernahme-killed/Dateien")));
  files_.write(str(".lokari-uebernahme-killed/neu.MDB"), "half");
  ASSERT_TRUE(folder.mkpath(str(".lokari-uebernahme-living")));
  files_.write(str(".lokari-uebernahme-killed/in-arbeit"), "");
  const FolderLock living(files_.path(str(".lokari-uebernahme-living")));
  ASSERT_TRUE(living.isHeld());
  add(1, 3, "Anlage");
  ASSERT_TRUE(run());
  EXPECT_EQ(files_.names(), QStringList({".lokari-uebernahme-living", "NEU-Dateien", "NEU.MDB"}));
}

TEST_F(TakeOverTest, ATemplateThatIsNoDatabaseIsNamed) {
  files_.write(str("EMPTY.MDB"), "rubbish");
  add(1, 3, "Anlage");
  try {
    run();
    FAIL();
  } catch (const StorageError& error) {
    EXPECT_EQ(error.text(),
              str("Die Vorlage EMPTY.MDB ist nicht brauchbar: Die Datei ist keine Datenbank."));
  }
  EXPECT_EQ(files_.names(), QStringList());
}

TEST_F(TakeOverTest, AStoppedOneLeavesNothing) {
  for (int row = 1; row <= 200; ++row) add(row, row, "Anlage", {}, QByteArray("\x15\x1C"));
  files_.progress.cancelAfter = 3;
  EXPECT_FALSE(run());
  EXPECT_EQ(files_.names(), QStringList());
}

TEST_F(TakeOverTest, ASourceThatBreaksLeavesNothing) {
  for (int row = 1; row <= 200; ++row) add(row, row, "Anlage", {}, QByteArray("\x15\x1C"));
  tables_[0].breaksAt = 150;
  EXPECT_THROW(run(), StorageError);
  EXPECT_EQ(files_.names(), QStringList());
}

TEST_F(TakeOverTest, AFileThatIsThereIsNeverWrittenOver) {
  add(1, 3, "Anlage");
  files_.write(str("NEU.MDB"), "mine");
  EXPECT_THROW(run(), StorageError);
  EXPECT_EQ(test::AccessFiles::contents(files_.path(str("NEU.MDB"))), "mine");
  EXPECT_EQ(files_.names(), QStringList{"NEU.MDB"}) << "nor does anything stay beside it";
}

TEST_F(TakeOverTest, AFolderThatCannotBeWrittenIsNamed) {
  add(1, 3, "Anlage");
  EXPECT_THROW(run("NOSUCH/NEU.MDB"), StorageError);
  EXPECT_EQ(files_.names(), QStringList());
}

TEST_F(TakeOverTest, AMissingTemplateIsNamed) {
  ASSERT_TRUE(QFile::remove(files_.path(str("EMPTY.MDB"))));
  add(1, 3, "Anlage");
  try {
    run();
    FAIL();
  } catch (const StorageError& error) {
    EXPECT_EQ(error.text(), str("Die Vorlage EMPTY.MDB ist nicht gefunden oder nicht lesbar."));
  }
  EXPECT_EQ(files_.names(), QStringList());
}

TEST_F(TakeOverTest, TheProgressNamesTablesAndVehiclesUpToTheEnd) {
  for (int row = 1; row <= 100; ++row) add(row, row, "Anlage");
  ASSERT_TRUE(run());
  EXPECT_TRUE(files_.progress.statuses.contains(str("Übernehme Tabelle DCMANUFS...\n\n")));
  EXPECT_TRUE(files_.progress.statuses.contains(str("Übernehme Fahrzeuge...\n\nSatz 64 von 100")));
  EXPECT_TRUE(std::is_sorted(files_.progress.percents.begin(), files_.progress.percents.end()));
  EXPECT_EQ(files_.progress.percents.last(), 100);
}

TEST_F(TakeOverTest, TheClosingTextShowsWhatIsLostFirstAndNamesTheFileOfAll) {
  report_ = {};
  report_.target = "/x/NEU.MDB";
  report_.kept = "/x/NEU-Dateien";
  report_.vehicles = 1;
  for (int i = 1; i <= 9; ++i) report_.changed << str("Hinweis %1").arg(i);
  report_.skipped << str("Verlust");
  const QString text = report_.closingText();
  EXPECT_TRUE(text.startsWith(
      str("Übernahme abgeschlossen,\n1 Fahrzeug und 0 Listeneinträge übernommen,\n1 Datensatz "
          "nicht übernommen!\nNeue Datenbank: NEU.MDB\n\n• Verlust\n• Hinweis 1\n")));
  EXPECT_TRUE(text.endsWith(
      str("• Hinweis 4\n… und 5 weitere Hinweise\nAlle Hinweise: NEU-Dateien/Bericht.txt")));
  EXPECT_TRUE(report_.fullText().contains(str("• Hinweis 9\n")));
  report_.changed = report_.changed.mid(0, 5);
  EXPECT_TRUE(report_.closingText().contains(str("• Hinweis 4\n… und 1 weiterer Hinweis\n")));
}

TEST_F(TakeOverTest, TheNewNameIsTheFirstFreeOneBesideTheFile) {
  EXPECT_EQ(freeTargetBeside(files_.path(str("CLUB.MDB"))), files_.path(str("CLUB_Lokari.MDB")));
  files_.write(str("club_lokari.mdb"), "x");
  ASSERT_TRUE(QDir(files_.folder()).mkdir(str("CLUB_Lokari_2-Dateien")));
  EXPECT_EQ(freeTargetBeside(files_.path(str("CLUB.MDB"))), files_.path(str("CLUB_Lokari_3.MDB")));
}

}  // namespace
}  // namespace lokari
