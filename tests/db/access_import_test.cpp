// Access files on the way of the user: chosen, asked about, taken over, opened.
#include "db/access_import.h"

#include <QSqlQuery>

#include "access_files.h"
#include "base/ini_file.h"
#include "db/database_session.h"
#include "support/recording_desktop.h"
#include "support/scripted_prompt.h"

namespace lokari {
namespace {

QString str(const char* text) {
  return QString::fromUtf8(text);
}

class AccessImportTest : public ::testing::Test {
 protected:
  AccessImportTest() {
    EXPECT_TRUE(QFile::copy(path("EMPTY.MDB"), path("OFFEN.MDB")));
    Database(path("OFFEN.MDB"))
        .write(str("INSERT INTO LOCO_DAT (DC_ADR, DC_COLL, ST_SNAME) VALUES (100, 'A', 'X')"), {});
  }

  QString path(const char* name) const { return files_.path(str(name)); }

  /// The program starts with this database.
  int start(const char* database) {
    session_ = std::make_unique<DatabaseSession>(
        RecordFormParts{prompt_, desktop_, ini_, files_.folder()}, path(database), import_);
    return session_->InitDB();
  }
  /// The user opens a database.
  void choose(const char* database) {
    prompt_.fileNames = {path(database)};
    session_->mnuDbOpen();
  }
  int vehicles() {
    int count = 0;
    session_->database().read(str("SELECT COUNT(*) FROM LOCO_DAT"), {},
                              [&](const QSqlQuery& row) { count = row.value(0).toInt(); });
    return count;
  }

  test::AccessFiles files_;
  test::ScriptedPrompt prompt_;
  test::RecordingDesktop desktop_;
  IniFile ini_{path("LOKARI.INI")};
  AccessImport import_{{prompt_, files_.folder(), test::AccessFiles::reader(),
                        [this](const auto& work) { work(files_.progress); }}};
  std::unique_ptr<DatabaseSession> session_;
};

TEST(AccessImportWithoutReader, NamesTheProgramThatIsMissing) {
  test::AccessFiles files;
  test::ScriptedPrompt prompt;
  const QString file = files.copy(str("jet4_current.mdb"));
  AccessImport import({prompt, files.folder(), accessReaderIn(files.folder()),
                       [](const auto&) { ADD_FAILURE() << "nothing can be done"; }});
  EXPECT_EQ(import.vehicles(file), std::nullopt);
  EXPECT_EQ(import.takeOver(file), QString());
  EXPECT_EQ(prompt.shown, QStringList{str("Datenbankdatei ") + file +
                                      str("\nAccess-Dateien liest das Programm ") +
                                      files.path(str("lokari-access-reader")) +
                                      str(".\nEs fehlt oder kann nicht gestartet werden, "
                                          "Programmneuinstallation kann erforderlich sein.")});
}

TEST_F(AccessImportTest, AChosenFileIsTakenOverBesideItAndOpened) {
  ASSERT_EQ(start("OFFEN.MDB"), 0);
  const QString file = files_.copy(str("jet4_current.mdb"));
  prompt_.answers = {Answer::Yes};
  choose("jet4_current.mdb");
  EXPECT_EQ(prompt_.shown, QStringList{str("jet4_current.mdb ist eine Access-Datenbank.\n"
                                           "In die neue Datenbank jet4_current_Lokari.MDB "
                                           "übernehmen?\n\nDie Access-Datei bleibt unverändert.")});
  EXPECT_EQ(session_->dbPath(), path("jet4_current_Lokari.MDB"));
  EXPECT_EQ(vehicles(), 45);
  EXPECT_EQ(test::AccessFiles::contents(file),
            test::AccessFiles::contents(test::AccessFiles::original(str("jet4_current.mdb"))));
}

class OldInstallation : public AccessImportTest {
 protected:
  OldInstallation() {
    EXPECT_TRUE(QDir(files_.folder()).mkpath(str("ALT/DB")));
    files_.write(str("ALT/DB/club.mdb"),
                 test::AccessFiles::contents(test::AccessFiles::original(str("jet4_current.mdb"))));
    EXPECT_TRUE(QDir(files_.folder()).mkpath(str("ALT/Zimo")));
    EXPECT_TRUE(QDir(files_.folder()).mkpath(str("Zimo")));
    files_.write(str("ALT/Zimo/MXALT.dec"), "[MXALT]");
    files_.write(str("ALT/Zimo/MXNEU.DEC"), "[old]");
    files_.write(str("Zimo/mxneu.dec"), "[own]");
  }
};

TEST_F(OldInstallation, ItsDescriptionsAreOfferedAlongAndNothingIsWrittenOver) {
  ASSERT_EQ(start("OFFEN.MDB"), 0);
  prompt_.answers = {Answer::Yes, Answer::Yes};
  choose("ALT/DB/club.mdb");
  ASSERT_EQ(prompt_.shown.size(), 2) << qPrintable(prompt_.shown.join(u'\n'));
  EXPECT_EQ(prompt_.shown[1], str("Im Ordner ") + path("ALT") +
                                  str(" liegen Beschreibungen von Decodertypen, die Lokari nicht "
                                      "hat.\n1 Beschreibungsdatei in den Datenordner kopieren?"));
  EXPECT_EQ(prompt_.below[1], str("Zimo/MXALT.dec"));
  EXPECT_EQ(test::AccessFiles::contents(path("Zimo/MXALT.dec")), "[MXALT]");
  EXPECT_EQ(test::AccessFiles::contents(path("Zimo/mxneu.dec")), "[own]");
  EXPECT_EQ(vehicles(), 45);
}

TEST_F(OldInstallation, WhoSaysNoGetsTheDatabaseAlone) {
  ASSERT_EQ(start("OFFEN.MDB"), 0);
  prompt_.answers = {Answer::Yes, Answer::No};
  choose("ALT/DB/club.mdb");
  EXPECT_FALSE(QFile::exists(path("Zimo/MXALT.dec")));
  EXPECT_EQ(vehicles(), 45);
}

TEST_F(OldInstallation, ADescriptionThatCannotBeReadToItsEndIsNamedAndNotKept) {
  // A plain file by its kind whose contents give an error.
  ASSERT_TRUE(QFile::link(str("/proc/self/mem"), path("ALT/Zimo/MXKAPUTT.dec")));
  ASSERT_EQ(start("OFFEN.MDB"), 0);
  prompt_.answers = {Answer::Yes, Answer::Yes};
  choose("ALT/DB/club.mdb");
  EXPECT_FALSE(QFile::exists(path("Zimo/MXKAPUTT.dec")));
  EXPECT_TRUE(QFile::exists(path("Zimo/MXALT.dec")));
  EXPECT_EQ(prompt_.shown.last(), str("Nicht alle Beschreibungsdateien konnten kopiert werden!"));
  EXPECT_EQ(prompt_.below.last(), str("Zimo/MXKAPUTT.dec"));
}

class OldV2Installation : public OldInstallation {
 protected:
  OldV2Installation() {
    files_.write(str("ALT/DB/alt.mdb"),
                 test::AccessFiles::contents(test::AccessFiles::original(str("jet4_v2.mdb"))));
    files_.write(str("Default.dec"), "[Standard]");
    EXPECT_EQ(start("OFFEN.MDB"), 0);
  }
};

TEST_F(OldV2Installation, AnImportThatCameToItsEndOffersTheDescriptions) {
  prompt_.answers = {Answer::Yes, Answer::Yes};
  choose("ALT/DB/alt.mdb");
  ASSERT_GE(prompt_.shown.size(), 2);
  EXPECT_TRUE(prompt_.shown[1].contains(str("liegen Beschreibungen von Decodertypen")));
  EXPECT_EQ(test::AccessFiles::contents(path("Zimo/MXALT.dec")), "[MXALT]");
}

TEST_F(OldV2Installation, AnImportThatWasStoppedAsksAboutNothingElse) {
  prompt_.answers = {Answer::Yes, Answer::Yes};
  files_.progress.cancelAfter = 2;
  choose("ALT/DB/alt.mdb");
  EXPECT_EQ(prompt_.shown.size(), 1) << qPrintable(prompt_.shown.join(u'\n'));
  EXPECT_FALSE(QFile::exists(path("Zimo/MXALT.dec")));
}

TEST_F(OldInstallation, TypesWithoutADescriptionSayThatTheyOpenAsStandard) {
  files_.write(str("Default.dec"), "[Standard]");
  ASSERT_EQ(start("OFFEN.MDB"), 0);
  prompt_.answers = {Answer::Yes, Answer::No};
  choose("ALT/DB/club.mdb");
  ASSERT_EQ(prompt_.shown.size(), 3);
  EXPECT_EQ(prompt_.shown[2], str("Decodertypen ohne Beschreibungsdatei: Das Decoderfenster öffnet "
                                  "sie wie einen Standard-Decoder."));
  EXPECT_TRUE(prompt_.below[2].contains(str("Fahrzeug"))) << qPrintable(prompt_.below[2]);
}

TEST_F(AccessImportTest, ARefusedOneLeavesTheOldDatabaseAndMakesNothing) {
  ASSERT_EQ(start("OFFEN.MDB"), 0);
  files_.copy(str("jet4_current.mdb"));
  prompt_.answers = {Answer::No};
  choose("jet4_current.mdb");
  EXPECT_EQ(vehicles(), 1);
  EXPECT_EQ(files_.names(), QStringList({"OFFEN.MDB", "jet4_current.mdb"}));
}

TEST_F(AccessImportTest, AtTheStartTheSameIsDone) {
  files_.copy(str("jet4_current.mdb"));
  prompt_.answers = {Answer::Yes};
  EXPECT_EQ(start("jet4_current.mdb"), 0);
  EXPECT_EQ(vehicles(), 45);
}

TEST_F(AccessImportTest, OneThatWasTakenOverBeforeIsOpenedAgain) {
  files_.copy(str("jet4_current.mdb"));
  prompt_.answers = {Answer::Yes};
  ASSERT_EQ(start("jet4_current.mdb"), 0);
  prompt_.shown.clear();
  prompt_.answers = {Answer::Yes};
  EXPECT_EQ(start("jet4_current.mdb"), 0);
  EXPECT_EQ(prompt_.shown,
            QStringList{str("Die Access-Datenbank jet4_current.mdb ist schon übernommen.\n"
                            "Die Datenbank jet4_current_Lokari.MDB öffnen?\n\nBei \"Nein\" wird "
                            "sie noch einmal übernommen, in jet4_current_Lokari_2.MDB.")});
  EXPECT_EQ(session_->dbPath(), path("jet4_current_Lokari.MDB"));
  EXPECT_FALSE(QFile::exists(path("jet4_current_Lokari_2.MDB")));
}

TEST_F(AccessImportTest, OrTakenOverOnceMoreUnderAFreeNameOrLeftAlone) {
  files_.copy(str("jet4_current.mdb"));
  prompt_.answers = {Answer::Yes};
  ASSERT_EQ(start("jet4_current.mdb"), 0);
  prompt_.answers = {Answer::No};
  EXPECT_EQ(start("jet4_current.mdb"), 0);
  EXPECT_EQ(session_->dbPath(), path("jet4_current_Lokari_2.MDB"));
  prompt_.answers = {Answer::Cancel};
  EXPECT_EQ(start("jet4_current.mdb"), 1);
}

TEST_F(AccessImportTest, AFileOfAnotherKindUnderTheNewNameIsLeftAlone) {
  files_.copy(str("jet4_current.mdb"));
  files_.write(str("jet4_current_Lokari.MDB"), "a letter");
  prompt_.answers = {Answer::Yes};
  EXPECT_EQ(start("jet4_current.mdb"), 0);
  EXPECT_EQ(session_->dbPath(), path("jet4_current_Lokari_2.MDB"));
  EXPECT_EQ(test::AccessFiles::contents(path("jet4_current_Lokari.MDB")), "a letter");
}

TEST_F(AccessImportTest, AnEmptyOneOpensForTheFirstVehicle) {
  files_.copy(str("jet4_2003_empty.mdb"));
  prompt_.answers = {Answer::Yes};
  EXPECT_EQ(start("jet4_2003_empty.mdb"), 0);
  EXPECT_EQ(session_->form().text(str("Data1")), str("neuer Satz"));
}

TEST_F(AccessImportTest, AStoppedOneIsToldAndLeavesTheOldDatabase) {
  ASSERT_EQ(start("OFFEN.MDB"), 0);
  files_.copy(str("jet4_current.mdb"));
  prompt_.answers = {Answer::Yes};
  files_.progress.cancelAfter = 2;
  choose("jet4_current.mdb");
  EXPECT_EQ(files_.report(), str("Übernahme abgebrochen,\nes wurde nichts angelegt!"));
  EXPECT_EQ(vehicles(), 1);
  EXPECT_EQ(files_.names(), QStringList({"OFFEN.MDB", "jet4_current.mdb"}));
}

TEST_F(AccessImportTest, AV2FileGoesIntoTheOpenDatabaseAfterItsQuestion) {
  ASSERT_EQ(start("OFFEN.MDB"), 0);
  const QString file = files_.copy(str("jet4_v2.mdb"));
  prompt_.answers = {Answer::Yes};
  choose("jet4_v2.mdb");
  EXPECT_EQ(prompt_.shown, QStringList{str("Die Datenbank is noch im Format von Lokari V2.\n"
                                           "In aktuelle V3-Datenbank importieren?")});
  // 41 vehicles, two of them with the address 100, which the open database has as well.
  EXPECT_EQ(files_.report().section(str("\r\r"), 0, 0),
            str("Import erfolgreich abgeschlossen,\r 39 Datensätze importiert!\r(2 Datensätze "
                "doppelt)"));
  EXPECT_EQ(vehicles(), 40);
  EXPECT_EQ(session_->dbPath(), path("OFFEN.MDB"));
  EXPECT_EQ(files_.names(), QStringList({"OFFEN.MDB", "jet4_v2.mdb"}));
  EXPECT_EQ(test::AccessFiles::contents(file),
            test::AccessFiles::contents(test::AccessFiles::original(str("jet4_v2.mdb"))));
}

TEST_F(AccessImportTest, ADamagedFileIsNamedAndLeavesTheOldDatabase) {
  ASSERT_EQ(start("OFFEN.MDB"), 0);
  const QByteArray whole =
      test::AccessFiles::contents(test::AccessFiles::original(str("jet4_current.mdb")));
  files_.write(str("kaputt.mdb"), whole.left(5000));
  choose("kaputt.mdb");
  EXPECT_EQ(prompt_.shown,
            QStringList{str("Datenbankdatei ") + path("kaputt.mdb") +
                        str("\nDie Access-Datei ist beschädigt oder nicht lesbar.")});
  EXPECT_EQ(vehicles(), 1);
}

}  // namespace
}  // namespace lokari
