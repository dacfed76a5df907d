#include "db/database_session.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QSqlQuery>
#include <QTemporaryDir>

#include <sqlite3.h>
#include <sys/stat.h>

#include "base/ini_file.h"
#include "db/reference_lists.h"
#include "support/no_larger_files.h"
#include "support/places.h"
#include "support/recording_desktop.h"
#include "support/scripted_prompt.h"

namespace lokari {
namespace {

class ScriptedOldFormat final : public OldFormat {
 public:
  std::optional<int> vehicles(const QString& path) override {
    asked << QFileInfo(path).fileName();
    return count;
  }
  void ConvertDB(const QString& path, DatabaseSession&) override {
    converted << QFileInfo(path).fileName();
  }
  std::optional<QString> takeOver(const QString& path) override {
    offered << QFileInfo(path).fileName();
    return taken;
  }

  std::optional<int> count;
  std::optional<QString> taken;
  QStringList offered;
  QStringList asked;
  QStringList converted;
};

class SessionTest : public ::testing::Test {
 protected:
  SessionTest() {
    EXPECT_TRUE(QDir(app_.path()).mkpath(str("DB")));
    EXPECT_TRUE(QFile::copy(places::emptyDatabase(), path("EMPTY.MDB")));
    start("DB/LOKARIV3.MDB");
  }

  static QString str(const char* text) { return QString::fromUtf8(text); }
  QString path(const char* name) const { return app_.filePath(str(name)); }

  /// A session of a new process.
  void start(const char* database) {
    session_ = std::make_unique<DatabaseSession>(
        RecordFormParts{prompt_, desktop_, ini_, app_.path()}, path(database), oldFormat_);
    opened_ = 0;
    QObject::connect(session_.get(), &DatabaseSession::opened, session_.get(),
                     [this] { ++opened_; });
  }

  /// A database with these addresses, each in the collection "A".
  void make(const char* name, const QList<int>& addresses) {
    QFile::remove(path(name));
    ASSERT_TRUE(QFile::copy(path("EMPTY.MDB"), path(name)));
    Database database(path(name));
    for (const int address : addresses) {
      database.write(str("INSERT INTO LOCO_DAT (DC_ADR, DC_COLL, DC_TYPE, ST_SNAME) "
                         "VALUES (?, 'A', 1, 'L' || ?)"),
                     {address, address});
    }
  }

  void write(const char* name, const QByteArray& data) {
    QFile file(path(name));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(data);
  }

  QByteArray contents(const char* name) {
    QFile file(path(name));
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    return file.readAll();
  }

  RecordForm& form() { return session_->form(); }
  QString text(const char* control) { return form().text(str(control)); }

  QTemporaryDir app_;
  test::ScriptedPrompt prompt_;
  test::RecordingDesktop desktop_;
  IniFile ini_{path("LOKARI.INI")};
  ScriptedOldFormat oldFormat_;
  std::unique_ptr<DatabaseSession> session_;
  int opened_ = 0;
};

TEST_F(SessionTest, OpensTheDatabaseAtItsFirstRecord) {
  make("DB/LOKARIV3.MDB", {5, 3});
  EXPECT_EQ(session_->InitDB(), 0);
  EXPECT_EQ(text("Data1"), str("Satz  1 von  2"));
  EXPECT_EQ(text("dc_adr"), str("3"));
  EXPECT_FALSE(form().loadingRecord);
  EXPECT_FALSE(form().quietDelete);
  EXPECT_TRUE(session_->catalogue().makerByNumber(0).has_value());
  EXPECT_TRUE(prompt_.shown.isEmpty());
}

TEST_F(SessionTest, AFirstVehicleThatCannotBeReadAtTheStartIsNotTakenForALeftover) {
  make("DB/LOKARIV3.MDB", {3, 5});
  // Another program takes the file while the form fills, and the user does not wait for it.
  std::unique_ptr<Database> other;
  const QString last = QString::fromUtf16(referenceLists().back().control);
  QObject::connect(&form(), &RecordForm::listChanged, &form(), [&](const QString& control) {
    if (control != last) return;
    other = std::make_unique<Database>(path("DB/LOKARIV3.MDB"));
    other->write(str("BEGIN EXCLUSIVE"), {});
  });
  QObject::connect(&form(), &RecordForm::recordShown, &form(), [&] { other.reset(); });
  EXPECT_EQ(session_->InitDB(), 0);
  EXPECT_EQ(prompt_.shown.last(),
            str("Die Datenbank wird gerade von einem anderen Programm benutzt."));
  EXPECT_EQ(form().records().count(), 2);
  form().MoveLast();
  form().MoveFirst();
  EXPECT_EQ(text("dc_adr"), str("3"));
}

TEST_F(SessionTest, TheFileIsFoundInAnyCase) {
  make("DB/lokariv3.mdb", {5});
  EXPECT_EQ(session_->InitDB(), 0);
}

TEST_F(SessionTest, AMissingFileIsReported) {
  EXPECT_EQ(session_->InitDB(), 1);
  EXPECT_EQ(prompt_.shown, QStringList{str("Datenbankdatei ") + path("DB/LOKARIV3.MDB") +
                                       str(" nicht gefunden\noder Zugriff nicht möglich!\n"
                                           "Programmneuinstallation kann erforderlich sein.")});
  EXPECT_FALSE(session_->hasDatabase());
}

TEST_F(SessionTest, APipeInItsPlaceIsToldAndNotWaitedFor) {
  ASSERT_EQ(::mkfifo(path("DB/LOKARIV3.MDB").toLocal8Bit().constData(), S_IRUSR | S_IWUSR), 0);
  EXPECT_EQ(session_->InitDB(), 1);
  ASSERT_EQ(prompt_.shown.size(), 1);
  EXPECT_TRUE(prompt_.shown[0].contains(str(" nicht gefunden\n")));
  EXPECT_EQ(prompt_.below[0], str("Sie ist keine gewöhnliche Datei, sondern eine Pipe."));
}

TEST_F(SessionTest, AnEmptyDatabaseGoesStraightIntoNewRecordMode) {
  make("DB/LOKARIV3.MDB", {});
  EXPECT_EQ(session_->InitDB(), 0);
  EXPECT_EQ(text("Data1"), str("neuer Satz"));
  EXPECT_EQ(form().editMode(), EditMode::Add);
  EXPECT_TRUE(form().isVisible(str("butOK")));
  EXPECT_FALSE(form().isEnabled(str("Data1")));
  form().butCancel();
  EXPECT_EQ(text("Data1"), str("neuer Satz"));
}

TEST_F(SessionTest, ALeftoverRecordGoesSilentlyAtStartAndWithAQuestionLater) {
  make("DB/LOKARIV3.MDB", {0, 3});
  EXPECT_EQ(session_->InitDB(), 0);
  EXPECT_TRUE(prompt_.shown.isEmpty());
  EXPECT_EQ(text("Data1"), str("Satz  1 von  1"));
  EXPECT_EQ(text("dc_adr"), str("3"));

  make("DB/ANDERE.MDB", {0, 4});
  prompt_.fileNames = {path("DB/ANDERE.MDB")};
  prompt_.answers = {Answer::No};
  session_->mnuDbOpen();
  EXPECT_EQ(prompt_.shown, QStringList{str("Datensatz wirklich löschen?")});
  EXPECT_EQ(text("Data1"), str("Satz  1 von  2"));
}

TEST_F(SessionTest, ALeftoverWithoutAnyAddressGoesAsWell) {
  make("DB/LOKARIV3.MDB", {});
  {
    Database database(path("DB/LOKARIV3.MDB"));
    database.write(str("INSERT INTO LOCO_DAT (DC_TYPE) VALUES (1)"), {});
  }
  EXPECT_EQ(session_->InitDB(), 0);
  EXPECT_EQ(text("Data1"), str("neuer Satz"));
  EXPECT_EQ(form().records().count(), 0);
}

TEST_F(SessionTest, WhatIsNoDatabaseIsRefusedSilentlyAndNotTouched) {
  for (const QByteArray& data :
       {QByteArray("no database at all, only text"), QByteArray(),
        QByteArray("SQLite format 3\0garbage", 24), QByteArray(5000, '\0')}) {
    write("DB/LOKARIV3.MDB", data);
    EXPECT_EQ(session_->InitDB(), 1);
    EXPECT_EQ(contents("DB/LOKARIV3.MDB"), data);
  }
  EXPECT_TRUE(prompt_.shown.isEmpty());
  EXPECT_FALSE(session_->hasDatabase());
}

TEST_F(SessionTest, ADatabaseWithoutTheVehicleTableIsRefusedSilently) {
  make("DB/LOKARIV3.MDB", {});
  { Database(path("DB/LOKARIV3.MDB")).write(str("DROP TABLE LOCO_DAT"), {}); }
  EXPECT_EQ(session_->InitDB(), 1);
  EXPECT_TRUE(prompt_.shown.isEmpty());
}

TEST_F(SessionTest, ADatabaseOfAnotherProgramIsRefused) {
  make("DB/LOKARIV3.MDB", {3});
  { Database(path("DB/LOKARIV3.MDB")).write(str("PRAGMA application_id = 17"), {}); }
  EXPECT_EQ(session_->InitDB(), 1);
}

TEST_F(SessionTest, ADatabaseOfANewerVersionIsRefusedWithAMessageAndNotTouched) {
  make("DB/LOKARIV3.MDB", {3});
  { Database(path("DB/LOKARIV3.MDB")).write(str("PRAGMA user_version = 2"), {}); }
  const QByteArray before = contents("DB/LOKARIV3.MDB");
  EXPECT_EQ(session_->InitDB(), 1);
  ASSERT_EQ(prompt_.shown.size(), 1);
  EXPECT_TRUE(prompt_.shown[0].contains(str("mit einer neueren Programmversion angelegt")));
  EXPECT_EQ(contents("DB/LOKARIV3.MDB"), before);
}

TEST_F(SessionTest, ADatabaseThatAnotherProgramHoldsIsReported) {
  make("DB/LOKARIV3.MDB", {3});
  sqlite3* other = nullptr;
  ASSERT_EQ(sqlite3_open(path("DB/LOKARIV3.MDB").toUtf8().constData(), &other), SQLITE_OK);
  ASSERT_EQ(sqlite3_exec(other, "BEGIN EXCLUSIVE", nullptr, nullptr, nullptr), SQLITE_OK);
  EXPECT_EQ(session_->InitDB(), 1);
  sqlite3_close(other);
  EXPECT_EQ(prompt_.shown,
            QStringList{str("Datenbankdatei ") + path("DB/LOKARIV3.MDB") +
                        str("\nDie Datenbank wird gerade von einem anderen Programm benutzt.")});
  EXPECT_FALSE(session_->hasDatabase());
}

TEST_F(SessionTest, AFolderInPlaceOfTheDatabaseIsReportedAsUnreadable) {
  ASSERT_TRUE(QDir().mkpath(path("DB/LOKARIV3.MDB")));
  EXPECT_EQ(session_->InitDB(), 1);
  ASSERT_EQ(prompt_.shown.size(), 1);
  EXPECT_TRUE(prompt_.shown[0].startsWith(str("Datenbankdatei ") + path("DB/LOKARIV3.MDB") +
                                          str(" nicht gefunden\n")));
}

TEST_F(SessionTest, AnAbandonedDialogLeavesTheFirstRecordOfAnEmptyDatabaseToBeEntered) {
  make("DB/LOKARIV3.MDB", {});
  ASSERT_EQ(session_->InitDB(), 0);
  session_->mnuDbOpen();
  session_->mnuDbNew();
  form().edited(str("dc_adr"), str("5"));
  form().edited(str("st_sname"), str("x"));
  form().butOK();
  EXPECT_TRUE(prompt_.shown.isEmpty());
  EXPECT_EQ(text("Data1"), str("Satz  1 von  1"));
}

TEST_F(SessionTest, TheDialogsStartInTheFolderDbAndNotInThatOfTheOpenDatabase) {
  ASSERT_TRUE(QDir(app_.path()).mkpath(str("WOANDERS")));
  make("WOANDERS/CLUB.MDB", {3});
  start("WOANDERS/CLUB.MDB");
  ASSERT_EQ(session_->InitDB(), 0);
  session_->mnuDbOpen();
  session_->mnuDbNew();
  ASSERT_EQ(prompt_.fileQuestions.size(), 2);
  EXPECT_EQ(prompt_.fileQuestions[0].folder, path("DB"));
  EXPECT_EQ(prompt_.fileQuestions[1].folder, path("DB"));
}

TEST_F(SessionTest, AnAccessFileIsNamedAsSuch) {
  write("DB/LOKARIV3.MDB", QByteArray("\0\1\0\0Standard Jet DB\0", 20) + QByteArray(4096, 'x'));
  EXPECT_EQ(session_->InitDB(), 1);
  ASSERT_EQ(prompt_.shown.size(), 1);
  EXPECT_TRUE(prompt_.shown[0].contains(str("Access-Datenbank")));
}

TEST_F(SessionTest, TheDatabaseThatAnAccessFileWasTakenOverIntoIsOpened) {
  write("DB/LOKARIV3.MDB", QByteArray("\0\1\0\0Standard Jet DB\0", 20) + QByteArray(4096, 'x'));
  make("DB/NEU.MDB", {5});
  oldFormat_.taken = path("DB/NEU.MDB");
  EXPECT_EQ(session_->InitDB(), 0);
  EXPECT_EQ(oldFormat_.offered, QStringList{str("LOKARIV3.MDB")});
  EXPECT_EQ(session_->dbPath(), path("DB/NEU.MDB"));
  EXPECT_EQ(text("dc_adr"), str("5"));
  EXPECT_TRUE(prompt_.shown.isEmpty());
}

TEST_F(SessionTest, AnAccessFileThatIsNotTakenOverLeavesTheOldDatabaseOpen) {
  make("DB/LOKARIV3.MDB", {3});
  ASSERT_EQ(session_->InitDB(), 0);
  write("DB/x.mdb", QByteArray("\0\1\0\0Standard Jet DB\0", 20) + QByteArray(4096, 'x'));
  oldFormat_.taken = QString();
  prompt_.fileNames = {path("DB/x.mdb")};
  session_->mnuDbOpen();
  EXPECT_EQ(opened_, 0);
  EXPECT_EQ(session_->database().path(), path("DB/LOKARIV3.MDB"));
  EXPECT_TRUE(prompt_.shown.isEmpty()) << "the user knows already";
}

TEST_F(SessionTest, AnAccessFileOfV2WithoutVehiclesIsRefusedSilently) {
  write("DB/LOKARIV3.MDB", QByteArray("\0\1\0\0Standard Jet DB\0", 20) + QByteArray(4096, 'x'));
  oldFormat_.count = 0;
  EXPECT_EQ(session_->InitDB(), 1);
  EXPECT_TRUE(prompt_.shown.isEmpty());
  EXPECT_TRUE(oldFormat_.offered.isEmpty());
}

TEST_F(SessionTest, ADamagedDatabaseIsReportedAndNotTouched) {
  make("DB/LOKARIV3.MDB", {3});
  QByteArray data = contents("DB/LOKARIV3.MDB");
  data.truncate(data.size() / 2);
  write("DB/LOKARIV3.MDB", data);
  EXPECT_EQ(session_->InitDB(), 1);
  ASSERT_EQ(prompt_.shown.size(), 1);
  EXPECT_TRUE(prompt_.shown[0].contains(str("beschädigt")));
  EXPECT_EQ(contents("DB/LOKARIV3.MDB"), data);
}

TEST_F(SessionTest, ARefusedDatabaseLeavesTheOldOneOpen) {
  make("DB/LOKARIV3.MDB", {3});
  ASSERT_EQ(session_->InitDB(), 0);
  write("DB/x.mdb", "nothing");
  prompt_.fileNames = {path("DB/x.mdb")};
  session_->mnuDbOpen();
  EXPECT_EQ(opened_, 0);
  EXPECT_EQ(session_->dbPath(), path("DB/LOKARIV3.MDB"));
  ASSERT_EQ(prompt_.shown, QStringList{str("Datenbankdatei ") + path("DB/x.mdb") +
                                       str("\nDie Datei ist keine Datenbank.")});
  EXPECT_TRUE(prompt_.below[0].contains(str("LOKARIV3.MDB bleibt geöffnet")));
  form().edited(str("fz_lname"), str("noch da"));
  EXPECT_TRUE(form().storeEdit());
  EXPECT_EQ(session_->database().path(), path("DB/LOKARIV3.MDB"));
}

TEST_F(SessionTest, AV2DatabaseAtStartAnsweredNoGoesOnWithoutADatabase) {
  write("DB/LOKARIV3.MDB", "old");
  oldFormat_.count = 41;
  prompt_.answers = {Answer::No};
  EXPECT_EQ(session_->InitDB(), 0);
  EXPECT_EQ(prompt_.shown, QStringList{str("Die Datenbank is noch im Format von Lokari V2.\n"
                                           "In aktuelle V3-Datenbank importieren?")});
  EXPECT_FALSE(session_->hasDatabase());
  EXPECT_TRUE(oldFormat_.converted.isEmpty());
  EXPECT_EQ(form().position(), -1);
}

TEST_F(SessionTest, AV2DatabaseIsTakenIntoTheOpenOne) {
  make("DB/LOKARIV3.MDB", {3});
  ASSERT_EQ(session_->InitDB(), 0);
  write("DB/ALT.MDB", "old");
  oldFormat_.count = 41;
  prompt_.fileNames = {path("DB/ALT.MDB")};
  prompt_.answers = {Answer::Yes};
  session_->mnuDbOpen();
  EXPECT_EQ(oldFormat_.converted, QStringList{str("ALT.MDB")});
  EXPECT_EQ(session_->dbPath(), path("DB/LOKARIV3.MDB"));
  EXPECT_EQ(session_->database().path(), path("DB/LOKARIV3.MDB"));
}

TEST_F(SessionTest, AV2DatabaseWithoutVehiclesIsRefusedSilently) {
  write("DB/LOKARIV3.MDB", "old");
  oldFormat_.count = 0;
  EXPECT_EQ(session_->InitDB(), 1);
  EXPECT_TRUE(prompt_.shown.isEmpty());
}

TEST_F(SessionTest, OpeningStoresTheEditAndStartsInTheFolderDb) {
  make("DB/LOKARIV3.MDB", {3});
  make("DB/ANDERE.MDB", {4});
  ASSERT_EQ(session_->InitDB(), 0);
  form().edited(str("fz_lname"), str("neu"));
  prompt_.fileNames = {path("DB/ANDERE.MDB")};
  session_->mnuDbOpen();
  EXPECT_EQ(prompt_.fileQuestions.at(0).title, str("Datenbank öffnen"));
  EXPECT_EQ(prompt_.fileQuestions.at(0).filter,
            str("Access-Datenbanken|*.mdb|Alle Dateien (*.*)|*.*"));
  EXPECT_EQ(prompt_.fileQuestions.at(0).folder, path("DB"));
  EXPECT_EQ(prompt_.fileQuestions.at(0).presetName, QString());
  EXPECT_EQ(opened_, 1);
  EXPECT_EQ(text("dc_adr"), str("4"));
  QString name;
  Database(path("DB/LOKARIV3.MDB"))
      .read(str("SELECT FZ_LNAME FROM LOCO_DAT"), {},
            [&](const QSqlQuery& row) { name = row.value(0).toString(); });
  EXPECT_EQ(name, str("neu"));
}

TEST_F(SessionTest, AnInvalidEditOrACancelledDialogKeepsTheDatabase) {
  make("DB/LOKARIV3.MDB", {3});
  ASSERT_EQ(session_->InitDB(), 0);
  form().edited(str("dc_adr"), str("20000"));
  session_->mnuDbOpen();
  session_->mnuDbNew();
  EXPECT_TRUE(prompt_.fileQuestions.isEmpty());
  EXPECT_EQ(prompt_.shown, QStringList({str("Adresse ungültig"), str("Adresse ungültig")}));
  form().edited(str("dc_adr"), str("3"));
  session_->mnuDbOpen();
  session_->mnuDbNew();
  EXPECT_EQ(prompt_.fileQuestions.size(), 2);
  EXPECT_EQ(opened_, 0);
  EXPECT_EQ(session_->dbPath(), path("DB/LOKARIV3.MDB"));
}

TEST_F(SessionTest, OpeningAnotherDatabaseLeavesNewRecordMode) {
  make("DB/LOKARIV3.MDB", {});
  make("DB/ANDERE.MDB", {4});
  ASSERT_EQ(session_->InitDB(), 0);
  prompt_.fileNames = {path("DB/ANDERE.MDB")};
  session_->mnuDbOpen();
  EXPECT_EQ(text("Data1"), str("Satz  1 von  1"));
  EXPECT_TRUE(form().isVisible(str("butNew")));
  EXPECT_EQ(text("butOK"), str("Suchen"));
}

TEST_F(SessionTest, ANewDatabaseIsACopyOfTheTemplateInNewRecordMode) {
  make("DB/LOKARIV3.MDB", {3});
  ASSERT_EQ(session_->InitDB(), 0);
  prompt_.fileNames = {path("DB/test")};
  session_->mnuDbNew();
  EXPECT_EQ(prompt_.fileQuestions.at(0).title, str("Neue Datenbank anlegen"));
  EXPECT_EQ(prompt_.fileQuestions.at(0).presetName, str("NEUE_DB.MDB"));
  EXPECT_EQ(prompt_.fileQuestions.at(0).folder, path("DB"));
  EXPECT_EQ(session_->dbPath(), path("DB/test.MDB"));
  EXPECT_TRUE(QFile::exists(path("DB/test.MDB")));
  EXPECT_EQ(opened_, 1);
  EXPECT_EQ(text("Data1"), str("neuer Satz"));
  EXPECT_TRUE(form().workingCopy().hasArrays());
  form().edited(str("dc_adr"), str("5"));
  form().edited(str("st_sname"), str("x"));
  form().butOK();
  EXPECT_EQ(text("Data1"), str("Satz  1 von  1"));
}

TEST_F(SessionTest, ANameWithAnExtensionStaysAsItIs) {
  make("DB/LOKARIV3.MDB", {3});
  ASSERT_EQ(session_->InitDB(), 0);
  prompt_.fileNames = {path("DB/test.db")};
  session_->mnuDbNew();
  EXPECT_EQ(session_->dbPath(), path("DB/test.db"));
}

TEST_F(SessionTest, AnExistingFileIsNeverWrittenOver) {
  make("DB/LOKARIV3.MDB", {3});
  ASSERT_EQ(session_->InitDB(), 0);
  write("DB/da.mdb", "mine");
  prompt_.fileNames = {path("DB/DA")};
  session_->mnuDbNew();
  EXPECT_EQ(prompt_.shown, QStringList{str("Datenbankdatei ") + path("DB/DA.MDB") +
                                       str(" exisitiert bereits\noder Zugriff nicht möglich!")});
  EXPECT_EQ(contents("DB/da.mdb"), QByteArray("mine"));
  EXPECT_EQ(text("dc_adr"), str("3"));
}

TEST_F(SessionTest, WithoutATemplateThereIsNoNewDatabase) {
  make("DB/LOKARIV3.MDB", {3});
  ASSERT_EQ(session_->InitDB(), 0);
  QFile::remove(path("EMPTY.MDB"));
  prompt_.fileNames = {path("DB/test.MDB")};
  session_->mnuDbNew();
  EXPECT_EQ(prompt_.shown, QStringList{str("Datenbankdatei ") + path("EMPTY.MDB") +
                                       str(" nicht gefunden\noder Zugriff nicht möglich!")});
  EXPECT_EQ(session_->dbPath(), path("DB/LOKARIV3.MDB"));
}

TEST_F(SessionTest, AFailedCopyBeepsAndKeepsTheOldDatabase) {
  make("DB/LOKARIV3.MDB", {3});
  ASSERT_EQ(session_->InitDB(), 0);
  prompt_.fileNames = {path("NOSUCH/test.MDB")};
  session_->mnuDbNew();
  EXPECT_EQ(prompt_.shown, QStringList{str("Fehler beim Kopieren der Datenbank!")});
  EXPECT_EQ(prompt_.beeps, 1);
  EXPECT_EQ(session_->dbPath(), path("DB/LOKARIV3.MDB"));
  EXPECT_TRUE(prompt_.below[0].contains(path("NOSUCH")));
  EXPECT_EQ(text("dc_adr"), str("3"));
}

TEST_F(SessionTest, ATemplateThatIsNoDatabaseIsNamedAndNothingIsMade) {
  make("DB/LOKARIV3.MDB", {3});
  ASSERT_EQ(session_->InitDB(), 0);
  write("EMPTY.MDB", "rubbish");
  const QStringList before = QDir(path("DB")).entryList();
  prompt_.fileNames = {path("DB/test.MDB")};
  session_->mnuDbNew();
  EXPECT_EQ(prompt_.shown, QStringList{str("Datenbankdatei ") + path("EMPTY.MDB") +
                                       str("\nDie Datei ist keine Datenbank.")});
  EXPECT_TRUE(prompt_.below[0].contains(str("aus der Installation")));
  EXPECT_EQ(QDir(path("DB")).entryList(), before);
  EXPECT_EQ(session_->dbPath(), path("DB/LOKARIV3.MDB"));
  EXPECT_EQ(text("dc_adr"), str("3"));
}

TEST_F(SessionTest, ANewDatabaseThatFindsNoRoomLeavesNoFile) {
  make("DB/LOKARIV3.MDB", {3});
  ASSERT_EQ(session_->InitDB(), 0);
  prompt_.fileNames = {path("DB/test.MDB")};
  const QStringList before = QDir(path("DB")).entryList(QDir::AllEntries | QDir::Hidden);
  {
    const test::NoLargerFiles full(QFileInfo(path("EMPTY.MDB")).size() / 2);
    session_->mnuDbNew();
  }
  EXPECT_EQ(QDir(path("DB")).entryList(QDir::AllEntries | QDir::Hidden), before);
  EXPECT_EQ(prompt_.shown.size(), 1);
  EXPECT_EQ(session_->dbPath(), path("DB/LOKARIV3.MDB"));
  form().edited(str("fz_lname"), str("noch da"));
  EXPECT_TRUE(form().storeEdit());
}

TEST_F(SessionTest, ANewDatabaseThatCannotBeOpenedLeavesNoFile) {
  make("DB/LOKARIV3.MDB", {3});
  ASSERT_EQ(session_->InitDB(), 0);
  const QStringList before = QDir(path("DB")).entryList(QDir::AllEntries | QDir::Hidden);
  bool wasCopied = false;
  QObject::connect(session_.get(), &DatabaseSession::busyChanged, session_.get(), [&](bool busy) {
    if (busy) return;
    wasCopied = QFileInfo(path("DB/test.MDB")).size() == QFileInfo(path("EMPTY.MDB")).size();
    write("DB/test.MDB", "the medium has kept something else");
    write("DB/test.MDB-journal", "and this");
  });
  prompt_.fileNames = {path("DB/test.MDB")};
  session_->mnuDbNew();
  EXPECT_TRUE(wasCopied);
  EXPECT_EQ(QDir(path("DB")).entryList(QDir::AllEntries | QDir::Hidden), before);
  EXPECT_EQ(prompt_.shown, QStringList{str("Datenbankdatei ") + path("DB/test.MDB") +
                                       str("\nDie Datei ist keine Datenbank.")});
  EXPECT_EQ(opened_, 0);
  EXPECT_EQ(session_->dbPath(), path("DB/LOKARIV3.MDB"));
  form().edited(str("fz_lname"), str("noch da"));
  EXPECT_TRUE(form().storeEdit());
}

TEST_F(SessionTest, WhatInitDBRefusesSilentlyIsToldByItsCaller) {
  write("DB/LOKARIV3.MDB", "no database at all, only text");
  EXPECT_EQ(session_->InitDB(), 1);
  EXPECT_TRUE(prompt_.shown.isEmpty());
  session_->tellRefusal();
  EXPECT_EQ(prompt_.shown, QStringList{str("Datenbankdatei ") + path("DB/LOKARIV3.MDB") +
                                       str("\nDie Datei ist keine Datenbank.")});
  EXPECT_TRUE(prompt_.below[0].contains(path("LOKARI.INI") + str(" unter DBPath")));
  session_->tellRefusal();
  EXPECT_EQ(prompt_.shown.size(), 1);
}

TEST_F(SessionTest, ADatabaseMadeOfAProtectedTemplateCanBeWritten) {
  make("DB/LOKARIV3.MDB", {3});
  ASSERT_EQ(session_->InitDB(), 0);
  ASSERT_TRUE(QFile::setPermissions(path("EMPTY.MDB"), QFile::ReadOwner | QFile::ReadUser));
  prompt_.fileNames = {path("DB/test.MDB")};
  session_->mnuDbNew();
  EXPECT_TRUE(QFile::permissions(path("DB/test.MDB")).testFlag(QFile::WriteOwner));
}

}  // namespace
}  // namespace lokari
