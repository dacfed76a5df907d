#include "db/catalogue_update.h"

#include <gtest/gtest.h>

#include <QSqlQuery>

#include "base/ini_file.h"
#include "db/database_session.h"
#include "support/places.h"
#include "support/recording_desktop.h"
#include "support/scripted_prompt.h"
#include "support/test_database.h"

namespace lokari {
namespace {

QString str(const char* text) {
  return QString::fromUtf8(text);
}

/// Rows of a table, their columns joined; Null is "-".
QStringList rowsOf(const Database& database, const char* statement) {
  QStringList rows;
  database.read(str(statement), {}, [&rows](const QSqlQuery& row) {
    QStringList values;
    for (int i = 0; row.value(i).isValid(); ++i) {
      values << (row.value(i).isNull() ? QStringLiteral("-") : row.value(i).toString());
    }
    rows << values.join(u' ');
  });
  return rows;
}

QStringList makersOf(const Database& database) {
  return rowsOf(database,
                "SELECT DC_MANUF_SEQ, DC_MANUF, DC_MANUF_TEXT FROM DCMANUFS ORDER BY DC_MANUF");
}

QStringList typesOf(const Database& database) {
  return rowsOf(database,
                "SELECT DC_SEQ, DC_MANUF, DC_DECODER FROM DECODERS ORDER BY DC_MANUF, DC_DECODER");
}

class CatalogueUpdateTest : public ::testing::Test {
 protected:
  CatalogueUpdateTest() {
    source_.clearLists();
    source_.run(
        "INSERT INTO DCMANUFS VALUES (1, 0, 'Standard'), (2, 97, 'Adlerton'), "
        "(3, 145, 'Zimo')");
    source_.run("INSERT INTO DECODERS VALUES (1, 'MX620', 145), (2, 'MX640', 145)");
    target_.clearLists();
  }

  void update() { updateCatalogue(source_.open(), target_.open()); }

  test::TestDatabase source_;
  test::TestDatabase target_;
};

TEST_F(CatalogueUpdateTest, AddsWhatIsMissingWithoutSequenceNumbers) {
  update();
  EXPECT_EQ(makersOf(target_.open()), (QStringList{"- 0 Standard", "- 97 Adlerton", "- 145 Zimo"}));
  EXPECT_EQ(typesOf(target_.open()), (QStringList{"- 145 MX620", "- 145 MX640"}));
}

TEST_F(CatalogueUpdateTest, KeepsWhatIsThereButMakerZerosRow) {
  target_.run("INSERT INTO DCMANUFS VALUES (9, 0, 'Ohne'), (8, 145, 'ZIMO neu'), (7, 13, 'Eigen')");
  target_.run("INSERT INTO DECODERS VALUES (5, 'mx640', 145), (6, 'Bastler', 13)");
  update();
  EXPECT_EQ(makersOf(target_.open()),
            (QStringList{"- 0 Standard", "7 13 Eigen", "- 97 Adlerton", "8 145 ZIMO neu"}));
  EXPECT_EQ(typesOf(target_.open()), (QStringList{"6 13 Bastler", "- 145 MX620", "5 145 mx640"}));
}

TEST_F(CatalogueUpdateTest, OneTypeNameOfTwoMakersIsTwoTypes) {
  target_.run("INSERT INTO DECODERS VALUES (1, 'MX620', 97)");
  update();
  EXPECT_EQ(typesOf(target_.open()), (QStringList{"1 97 MX620", "- 145 MX620", "- 145 MX640"}));
}

TEST_F(CatalogueUpdateTest, ANameWithAQuoteIsAName) {
  source_.run("INSERT INTO DECODERS VALUES (1, 'O''B', 97), (1, 'X'' OR ''1', 97)");
  target_.run("INSERT INTO DECODERS VALUES (1, 'O''B', 97)");
  update();
  EXPECT_EQ(
      rowsOf(target_.open(),
             "SELECT DC_SEQ, DC_DECODER FROM DECODERS WHERE DC_MANUF = 97 ORDER BY DC_DECODER"),
      (QStringList{"1 O'B", "- X' OR '1"}));
}

TEST_F(CatalogueUpdateTest, AFailureTakesEverythingBack) {
  target_.run("INSERT INTO DCMANUFS VALUES (9, 0, 'Ohne')");
  // A name that no database of this program holds.
  source_.run("INSERT INTO DECODERS VALUES (1, 'MX999999999', 145)");
  EXPECT_THROW(update(), StorageError);
  EXPECT_EQ(makersOf(target_.open()), QStringList{"9 0 Ohne"});
  EXPECT_TRUE(typesOf(target_.open()).isEmpty());
}

/// The menu command on an open database.
class MnuUpdDBTest : public ::testing::Test {
 protected:
  MnuUpdDBTest() {
    EXPECT_TRUE(QFile::copy(places::emptyDatabase(), template_));
    base_.addVehicle(3, str("Anlage"), str("L3"));
    base_.run("UPDATE LOCO_DAT SET DC_MANUF = 0");
    base_.run("UPDATE DCMANUFS SET DC_MANUF_TEXT = 'Ohne' WHERE DC_MANUF = 0");
    QObject::connect(&session_, &DatabaseSession::busyChanged, &session_,
                     [this](bool busy) { log_ << (busy ? "busy" : "ready"); });
  }

  void start() {
    base_.close();
    ASSERT_EQ(session_.InitDB(), 0);
    prompt_.shown.clear();
    prompt_.answers = {Answer::Ok};
  }

  test::TestDatabase base_;
  test::ScriptedPrompt prompt_;
  test::RecordingDesktop desktop_;
  QTemporaryDir app_;
  QString template_ = app_.filePath(QStringLiteral("Empty.mdb"));
  IniFile ini_{app_.filePath(QStringLiteral("LOKARI.INI"))};
  NoOldFormat oldFormat_;
  DatabaseSession session_{{prompt_, desktop_, ini_, app_.path()}, base_.path(), oldFormat_};
  QStringList log_;
};

TEST_F(MnuUpdDBTest, AsksShowsTheBusyPointerAndEndsWithABeep) {
  start();
  session_.mnuUpdDB();
  EXPECT_EQ(prompt_.shown, (QStringList{str("Neue Decoderhersteller und -typen einspielen?"),
                                        str("Datenbankerweiterung erfolgreich abgeschlossen!")}));
  EXPECT_EQ(log_, (QStringList{"busy", "ready"}));
  EXPECT_EQ(prompt_.beeps, 1);
}

TEST_F(MnuUpdDBTest, AnythingButOkChangesNothing) {
  start();
  prompt_.answers = {Answer::Cancel};
  session_.mnuUpdDB();
  EXPECT_EQ(prompt_.shown.size(), 1);
  EXPECT_TRUE(log_.isEmpty());
  EXPECT_EQ(session_.catalogue().makerByNumber(0)->name, str("Ohne"));
}

TEST_F(MnuUpdDBTest, OnAnUpToDateDatabaseOnlyTheTextOfRowZeroChanges) {
  const QStringList types = typesOf(base_.open());
  QStringList makers = makersOf(base_.open());
  start();
  session_.mnuUpdDB();
  EXPECT_EQ(typesOf(session_.database()), types);
  EXPECT_TRUE(makers.first().endsWith(str("0 Ohne")));
  makers.first() = str("- 0 Standard");
  EXPECT_EQ(makersOf(session_.database()), makers);
}

TEST_F(MnuUpdDBTest, TheRecordOnShowTakesTheMakersNewName) {
  start();
  ASSERT_EQ(session_.form().text(str("dc_manuf")), str("Ohne"));
  session_.form().edited(str("st_sname"), str("neu"));
  session_.mnuUpdDB();
  EXPECT_EQ(session_.form().text(str("dc_manuf")), str("Standard"));
  EXPECT_EQ(session_.form().text(str("st_sname")), str("neu"));
  EXPECT_EQ(session_.form().editMode(), EditMode::Edit);
}

TEST_F(MnuUpdDBTest, WithoutTheTemplateTheStorageSaysSo) {
  start();
  ASSERT_TRUE(QFile::remove(template_));
  session_.mnuUpdDB();
  EXPECT_EQ(prompt_.shown.last(), str("Datenbankdatei ") + app_.path() +
                                      str("/EMPTY.MDB\nDie Datenbankdatei kann nicht geöffnet "
                                          "werden."));
  EXPECT_EQ(log_, (QStringList{"busy", "ready"}));
  EXPECT_EQ(prompt_.beeps, 0);
  EXPECT_EQ(session_.catalogue().makerByNumber(0)->name, str("Ohne"));
}

TEST_F(MnuUpdDBTest, ADatabaseThatCannotBeWrittenIsNamed) {
  start();
  Database other(base_.path());
  other.write(str("BEGIN EXCLUSIVE"), {});
  session_.mnuUpdDB();
  EXPECT_EQ(prompt_.shown.last(),
            str("Datenbankdatei ") + base_.path() +
                str("\nDie Datenbank wird gerade von einem anderen Programm benutzt."));
  other.write(str("ROLLBACK"), {});
  EXPECT_EQ(session_.catalogue().makerByNumber(0)->name, str("Ohne"));
}

TEST_F(MnuUpdDBTest, WithoutAnOpenDatabaseNothingIsAsked) {
  session_.mnuUpdDB();
  EXPECT_TRUE(prompt_.shown.isEmpty());
}

}  // namespace
}  // namespace lokari
