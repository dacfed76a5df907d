// Programming on the main from the cab, with a vehicle database and its record form.
#include <QDir>
#include <QFile>
#include <QSqlQuery>

#include <csignal>
#include <cstdlib>

#include "base/ini_file.h"
#include "db/database_session.h"
#include "scripted_cab_fixture.h"
#include "support/ini_text.h"
#include "support/recording_desktop.h"
#include "support/test_database.h"

namespace lokari {
namespace {

constexpr char kDescription[] =
    "PROGMAIN=J\nCV_3=Anfahren,0-255,0,2,sanft\nCV_4=Bremsen\nPROGMODE=1\n";

class CabProgramming : public test::CabFixture {
 protected:
  CabProgramming() {
    settings.baseUnit = StationKind::TamsMc;
    base.run("DELETE FROM DCMANUFS");
    base.run("INSERT INTO DCMANUFS VALUES (1, 145, 'Zimo')");
    base.addVehicle(1000, QStringLiteral("Anlage"), QStringLiteral("Lok"));
    base.addVehicle(5, QStringLiteral("Anlage"), QStringLiteral("Andere"));
    QByteArray values(4865, '\0');
    values[2] = 10;
    values[3] = 20;
    base.run(
        "UPDATE LOCO_DAT SET DC_CV = ?, DC_CV_1 = ?, DC_MANUF = 145, DC_DECODER = "
        "'SD-100-Lang', DC_CV_NAME = 'Eins', DC_CV_NAME_1 = 'Zwei', DC_DEC_VER = 'Zwei' "
        "WHERE DC_ADR = 1000",
        {QByteArray(4865, '\7'), values});
    base.close();
    write("Zimo/SD-100-L.dec", kDescription);
    EXPECT_EQ(session.InitDB(), 0);
    EXPECT_EQ(form().FindFirst(QStringLiteral("DC_ADR=1000")), FindResult::Found);
  }

  void write(const char* name, const QByteArray& text) {
    const QString path = files.filePath(QString::fromLatin1(name));
    EXPECT_TRUE(QDir().mkpath(QFileInfo(path).path()));
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(text);
  }

  RecordForm& form() { return session.form(); }

  std::shared_ptr<Cab> open(bool noRecord = false) {
    auto cab = std::make_shared<Cab>(
        CabParts{line, prompt, vehicles, files.path(), cabParts().makeProtocol}, 1000, noRecord);
    bool flag = false;
    line.exchange(cab.get(), 0, [&] { cab->load(flag); });
    serial.writes.clear();
    return cab;
  }

  /// CV 3 and 4 of the second set were read and found as they are.
  void markAsRead() {
    QByteArray marks(4865, '\0');
    marks[2] = marks[3] = '1';
    session.database().write(
        QStringLiteral("UPDATE LOCO_DAT SET DC_CV_1_ST = ? WHERE DC_ADR = 1000"), {marks});
    ASSERT_EQ(session.InitDB(), 0);
    ASSERT_EQ(form().FindFirst(QStringLiteral("DC_ADR=1000")), FindResult::Found);
  }
  /// Another program stores a CV of the second set.
  void storeBeside(int cv, char value) {
    QByteArray values;
    session.database().read(QStringLiteral("SELECT DC_CV_1 FROM LOCO_DAT WHERE DC_ADR = 1000"), {},
                            [&](const QSqlQuery& row) { values = row.value(0).toByteArray(); });
    ASSERT_GE(values.size(), cv);
    values[cv - 1] = value;
    session.database().write(QStringLiteral("UPDATE LOCO_DAT SET DC_CV_1 = ? WHERE DC_ADR = 1000"),
                             {values});
  }
  int mark(int cv) { return stored("DC_CV_1_ST", cv); }

  int stored(const char* column, int cv, int address = 1000) {
    QByteArray values;
    session.database().read(QStringLiteral("SELECT %1 FROM LOCO_DAT WHERE DC_ADR = %2")
                                .arg(QLatin1String(column))
                                .arg(address),
                            {}, [&](const QSqlQuery& row) { values = row.value(0).toByteArray(); });
    return values.size() < cv ? -1 : static_cast<quint8>(values[cv - 1]);
  }

  test::TestDatabase base;
  QTemporaryDir files;
  test::RecordingDesktop desktop;
  test::IniText iniText{"[LOKARI]\r\n"};
  IniFile ini{iniText.path()};
  NoOldFormat oldFormat;
  DatabaseSession session{RecordFormParts{prompt, desktop, ini, files.path()}, base.path(),
                          oldFormat};
  VehicleRecords vehicles{&session, prompt};
};

TEST_F(CabProgramming, TheTitleAndTheListComeFromTheRecordOnShow) {
  const auto cab = open();
  EXPECT_EQ(cab->caption(), "Lok (1000)");
  EXPECT_EQ(cab->labName(), "Lok");
  const MainProgramming& area = cab->programming();
  EXPECT_TRUE(area.isAvailable());
  EXPECT_EQ(area.names(), (QStringList{"Anfahren", "Bremsen"}));
  EXPECT_EQ(area.shownName(), "CV 3: Anfahren");
  EXPECT_EQ(area.shownValue(), "10");
  EXPECT_EQ(area.shownHint(), "sanft");
  EXPECT_EQ(area.progMode(), 1);
}

TEST_F(CabProgramming, TheSetIsTheOneInUseAndElseTheFirst) {
  EXPECT_EQ(open()->programming().cvSet(), 2);
  form().edited(QStringLiteral("st_sname"), QStringLiteral("Lok"));
  CvRecord record = form().workingCopy();
  record.recSetName = QStringLiteral("Drei");
  form().storeProgrammed(record, QStringLiteral("1000"), QStringLiteral("Zimo"));
  EXPECT_EQ(open()->programming().cvSet(), 1);
}

TEST_F(CabProgramming, ACabByItsAddressAloneIsNamedByTheFirstSuchRecordAndProgramsNothing) {
  const auto cab = open(true);
  EXPECT_EQ(cab->caption(), "Lok (1000)");
  EXPECT_FALSE(cab->programming().isAvailable());
}

TEST_F(CabProgramming, TheAreaIsOffWithoutPROGMAIN) {
  write("Zimo/SD-100-L.dec", "CV_3=Anfahren\nPROGMAIN=N\n");
  EXPECT_FALSE(open()->programming().isAvailable());
  write("Zimo/SD-100-L.dec", "CV_3=Anfahren\n");
  EXPECT_FALSE(open()->programming().isAvailable());
}

TEST_F(CabProgramming, TheAreaIsOffWithoutADescription) {
  QFile::remove(files.filePath(QStringLiteral("Zimo/SD-100-L.dec")));
  const auto cab = open();
  EXPECT_FALSE(cab->programming().isAvailable());
  cab->stepCVUp();
  EXPECT_TRUE(serial.writes.isEmpty());
}

TEST_F(CabProgramming, TheAreaIsOffOnALI100) {
  settings.baseUnit = StationKind::Li100;
  EXPECT_FALSE(open()->programming().isAvailable());
}

TEST_F(CabProgramming, AClickShowsTheEntryOfThatName) {
  const auto cab = open();
  cab->chooseCV(QStringLiteral("Bremsen"));
  EXPECT_EQ(cab->programming().shownName(), "CV 4: Bremsen");
  EXPECT_EQ(cab->programming().shownValue(), "20");
  cab->chooseCV(QStringLiteral("Pfeifen"));
  EXPECT_EQ(cab->programming().shownName(), "CV 4: Bremsen");
}

TEST_F(CabProgramming, EachStepIsWrittenToTheVehicleOnTheMainTrack) {
  const auto cab = open();
  link.commJob = CommJob::ReadProgTrack;
  link.progTrack = true;
  cab->stepCVUp();
  EXPECT_EQ(cab->programming().shownValue(), "11");
  EXPECT_EQ(serial.sent(), "xPD 1000, 3, 11\r");
  EXPECT_EQ(link.commJob, CommJob::ReadProgTrack);
  EXPECT_TRUE(link.progTrack);
  EXPECT_EQ(link.pomAddr, 1000);
  EXPECT_FALSE(cab->state().canBusy);
}

TEST_F(CabProgramming, AValueOf255IsNotSteppedUpAndZeroNotDown) {
  const auto cab = open();
  for (int i = 0; i < 300; ++i) cab->stepCVUp();
  EXPECT_EQ(cab->programming().shownValue(), "255");
  EXPECT_EQ(serial.writes.size(), 245);
  for (int i = 0; i < 300; ++i) cab->stepCVDown();
  EXPECT_EQ(cab->programming().shownValue(), "0");
  EXPECT_EQ(serial.writes.size(), 500);
}

TEST_F(CabProgramming, TheChangesGoIntoTheSetOfTheRecordAndIntoTheMainWindow) {
  const auto cab = open();
  cab->stepCVUp();
  cab->cmdOK();
  EXPECT_EQ(stored("DC_CV_1", 3), 11);
  EXPECT_EQ(stored("DC_CV_1", 4), 20);
  EXPECT_EQ(stored("DC_CV", 3), 7);
  EXPECT_EQ(form().workingCopy().recCvValues[1][2], 11);
}

TEST_F(CabProgramming, AStepIsStoredAtOnceAndNotOnlyWhenTheCabCloses) {
  const auto cab = open();
  cab->stepCVUp();
  EXPECT_EQ(stored("DC_CV_1", 3), 11);
  EXPECT_EQ(form().workingCopy().recCvValues[1][2], 11);
  cab->stepCVUp();
  EXPECT_EQ(stored("DC_CV_1", 3), 12);
}

// ---- What the record says of a step ---------------------------------------------------------

TEST_F(CabProgramming, AStepTakesTheMarkOfTheValueThatItReplaces) {
  markAsRead();
  const auto cab = open();
  cab->stepCVUp();
  EXPECT_EQ(stored("DC_CV_1", 3), 11);
  EXPECT_EQ(mark(3), 0) << "nobody has seen this value";
  EXPECT_EQ(mark(4), '1');
  EXPECT_EQ(form().workingCopy().recCvMarks[1][2], '\0');
}

TEST_F(CabProgramming, AnEditInHandDoesNotPutTheOldMarkBack) {
  markAsRead();
  const auto cab = open();
  form().edited(QStringLiteral("st_sname"), QStringLiteral("Lok 2"));
  cab->stepCVUp();
  ASSERT_TRUE(form().storeEdit());
  EXPECT_EQ(stored("DC_CV_1", 3), 11);
  EXPECT_EQ(mark(3), 0);
}

TEST_F(CabProgramming, AStepThatTheStationDoesNotConfirmIsToldInTheCab) {
  markAsRead();
  const auto cab = open();
  cab->stepCVUp();
  EXPECT_EQ(mark(3), 0);
  EXPECT_EQ(cab->notice(), "Ob CV 3 jetzt 11 ist, ist nicht bekannt. Keine Antwort vom Basisgerät");
}

TEST_F(CabProgramming, AStepThatFindsTheLineGoneKeepsValueAndMark) {
  markAsRead();
  const auto cab = open();
  serial.vanish();
  serial.failsToOpen = true;
  for (int presses = 0; presses < 3; ++presses) {
    cab->stepCVUp();
    EXPECT_TRUE(serial.writes.isEmpty());
    EXPECT_EQ(stored("DC_CV_1", 3), 10);
    EXPECT_EQ(mark(3), '1');
    EXPECT_EQ(cab->programming().shownValue(), "10");
    EXPECT_TRUE(
        cab->notice().contains(QStringLiteral("CV 3 wurde nicht geschrieben, es bleibt bei 10.")))
        << cab->notice().toStdString();
  }
}

TEST_F(CabProgramming, ALineThatBreaksBehindTheStepLeavesItAsNotKnown) {
  markAsRead();
  const auto cab = open();
  const auto breaks = clock.after(500, [this] { serial.vanish(); });
  cab->stepCVUp();
  EXPECT_EQ(serial.sent(), "xPD 1000, 3, 11\r");
  EXPECT_EQ(stored("DC_CV_1", 3), 11);
  EXPECT_EQ(mark(3), 0);
  EXPECT_EQ(cab->programming().shownValue(), "11");
  EXPECT_TRUE(cab->notice().contains(QStringLiteral("Ob CV 3 jetzt 11 ist, ist nicht bekannt.")))
      << cab->notice().toStdString();
}

TEST_F(CabProgramming, AStepThatTheStationRefusesKeepsValueAndMark) {
  settings.baseUnit = StationKind::Li100V3;
  markAsRead();
  const auto cab = open();
  const auto answer = clock.after(500, [this] { serial.arrive(QByteArray::fromHex("6182e3")); });
  cab->stepCVUp();
  EXPECT_EQ(serial.sent().toHex(), "e630c3e8ec020b18");
  EXPECT_EQ(stored("DC_CV_1", 3), 10);
  EXPECT_EQ(mark(3), '1');
  EXPECT_EQ(form().workingCopy().recCvMarks[1][2], '1');
  EXPECT_EQ(cab->programming().shownValue(), "10");
  EXPECT_TRUE(cab->notice().startsWith(QStringLiteral(
      "CV 3 wurde nicht geschrieben, es bleibt bei 10. Die Zentrale hat abgelehnt: ")))
      << cab->notice().toStdString();
}

TEST_F(CabProgramming, ADamagedRefusalIsNone) {
  settings.baseUnit = StationKind::Li100V3;
  markAsRead();
  const auto cab = open();
  const auto answer = clock.after(500, [this] { serial.arrive(QByteArray::fromHex("6182e2")); });
  cab->stepCVUp();
  EXPECT_EQ(stored("DC_CV_1", 3), 11);
  EXPECT_EQ(mark(3), 0);
}

TEST_F(CabProgramming, ALongAddressWithoutAnIndexIsToldAndNothingIsStored) {
  settings.baseUnit = StationKind::Mx1;
  markAsRead();
  const auto cab = open();
  cab->stepCVUp();
  EXPECT_EQ(serial.sent(), "E03E8\rE03E8\r") << "the questions for the index alone";
  EXPECT_EQ(stored("DC_CV_1", 3), 10);
  EXPECT_EQ(mark(3), '1');
  EXPECT_EQ(cab->programming().shownValue(), "10");
  EXPECT_EQ(cab->notice(),
            "CV 3 wurde nicht geschrieben, es bleibt bei 10. Die Zentrale hat keinen Index für "
            "diese Adresse.");
}

TEST_F(CabProgramming, AStepThatCannotBeStoredIsNotSent) {
  markAsRead();
  const auto cab = open();
  session.database().write(QStringLiteral("CREATE TRIGGER full BEFORE UPDATE ON LOCO_DAT BEGIN "
                                          "SELECT RAISE(ABORT, 'voll'); END"),
                           {});
  prompt.whileShown = [this] { EXPECT_FALSE(line.isBusy()) << "others need the line"; };
  cab->stepCVUp();
  clock.advance(1);
  EXPECT_EQ(prompt.shown.size(), 1);
  EXPECT_EQ(prompt.below.value(0), "CV 3 wird deshalb nicht gesendet.");
  EXPECT_TRUE(serial.writes.isEmpty());
  EXPECT_EQ(stored("DC_CV_1", 3), 10);
  EXPECT_EQ(cab->programming().shownValue(), "10");
}

TEST_F(CabProgramming, AStepWaitsForADatabaseThatAnotherProgramHoldsAndHoldsNobodyElseUp) {
  markAsRead();
  const auto cab = open();
  Database other(base.path());
  other.write(QStringLiteral("BEGIN IMMEDIATE"), {});
  prompt.patience = 3;
  int looks = 0;
  prompt.meanwhile = [&] {
    EXPECT_FALSE(line.isBusy());
    EXPECT_TRUE(serial.writes.isEmpty());
    if (++looks == 2) other.write(QStringLiteral("COMMIT"), {});
  };
  cab->stepCVUp();
  EXPECT_EQ(looks, 2);
  EXPECT_EQ(serial.sent(), "xPD 1000, 3, 11\r");
  EXPECT_EQ(stored("DC_CV_1", 3), 11);
  EXPECT_EQ(prompt.shown.size(), 1);
}

TEST_F(CabProgramming, AStepWhoseDatabaseTheUserDoesNotWaitForIsNotSent) {
  markAsRead();
  const auto cab = open();
  Database other(base.path());
  other.write(QStringLiteral("BEGIN IMMEDIATE"), {});
  prompt.patience = 3;
  cab->stepCVUp();
  clock.advance(1);
  EXPECT_EQ(prompt.shown.size(), 1);
  EXPECT_TRUE(serial.writes.isEmpty());
  EXPECT_EQ(cab->programming().shownValue(), "10");
  EXPECT_EQ(cab->notice(),
            "CV 3 wurde nicht geschrieben, es bleibt bei 10. Der Wert ließ sich nicht speichern.");
}

TEST_F(CabProgramming, AStepDuringAChangeOfTheWholeDatabaseWaitsForItsEnd) {
  markAsRead();
  const auto cab = open();
  session.database().transaction([&] {
    cab->stepCVUp();
    EXPECT_TRUE(serial.writes.isEmpty());
  });
  EXPECT_EQ(serial.sent(), "xPD 1000, 3, 11\r");
  EXPECT_EQ(stored("DC_CV_1", 3), 11);
  EXPECT_EQ(mark(3), 0);
}

TEST_F(CabProgramming, AStepIsStoredOverWhatIsOnTheRowByThen) {
  const auto cab = open();
  {
    // Another program has read other CVs since.
    Database other(base.path());
    QByteArray values(4865, '\0');
    values[2] = 10;
    values[3] = 99;
    other.write(QStringLiteral("UPDATE LOCO_DAT SET DC_CV_1 = ? WHERE DC_ADR = 1000"), {values});
  }
  cab->stepCVUp();
  EXPECT_EQ(stored("DC_CV_1", 3), 11);
  EXPECT_EQ(stored("DC_CV_1", 4), 99);
}

TEST_F(CabProgramming, TheSameAddressInTwoCollectionsIsTwoVehiclesAndTheStepGoesIntoItsOwn) {
  session.database().write(
      QStringLiteral("INSERT INTO LOCO_DAT (DC_RECNO, DC_COLL, DC_ADR, ST_SNAME, DC_TYPE, DC_CV, "
                     "DC_CV_1, DC_MANUF, DC_DECODER, DC_CV_NAME, DC_CV_NAME_1, DC_DEC_VER) "
                     "SELECT 900, 'Vitrine', DC_ADR, ST_SNAME, DC_TYPE, DC_CV, DC_CV_1, DC_MANUF, "
                     "DC_DECODER, DC_CV_NAME, DC_CV_NAME_1, DC_DEC_VER FROM LOCO_DAT "
                     "WHERE DC_ADR = 1000"),
      {});
  ASSERT_EQ(session.InitDB(), 0);
  ASSERT_EQ(form().FindFirst(QStringLiteral("DC_COLL='Vitrine'")), FindResult::Found);
  const auto cab = open();
  EXPECT_EQ(cab->collection(), "Vitrine");
  ASSERT_EQ(form().FindFirst(QStringLiteral("DC_COLL='Anlage' AND DC_ADR=1000")),
            FindResult::Found);
  cab->stepCVUp();
  const auto storedIn = [this](const char* collection) {
    QByteArray values;
    session.database().read(
        QStringLiteral("SELECT DC_CV_1 FROM LOCO_DAT WHERE DC_COLL = ? AND DC_ADR = 1000"),
        {QString::fromLatin1(collection)},
        [&](const QSqlQuery& row) { values = row.value(0).toByteArray(); });
    return static_cast<int>(values.at(2));
  };
  EXPECT_EQ(storedIn("Vitrine"), 11);
  EXPECT_EQ(storedIn("Anlage"), 10);
}

/// The process is killed behind a step, before anything else can run.
TEST_F(CabProgramming, AProcessThatIsKilledKeepsTheStepThatItHasSent) {
  EXPECT_EXIT(
      {
        DatabaseSession own(RecordFormParts{prompt, desktop, ini, files.path()}, base.path(),
                            oldFormat);
        if (own.InitDB() != 0 ||
            own.form().FindFirst(QStringLiteral("DC_ADR=1000")) != FindResult::Found)
          std::_Exit(1);
        VehicleRecords its(&own, prompt);
        auto cab = std::make_shared<Cab>(
            CabParts{line, prompt, its, files.path(), cabParts().makeProtocol}, 1000, false);
        bool flag = false;
        line.exchange(cab.get(), 0, [&] { cab->load(flag); });
        const auto before = serial.writes.size();
        cab->stepCVUp();
        if (serial.writes.size() == before) std::_Exit(2);
        std::raise(SIGKILL);
      },
      ::testing::KilledBySignal(SIGKILL), "");
  EXPECT_EQ(stored("DC_CV_1", 3), 11);
  EXPECT_TRUE(session.database().integrityFaults().isEmpty());
}

TEST_F(CabProgramming, ARecordThatIsNoLongerOnShowIsFoundByItsNumber) {
  const auto cab = open();
  cab->stepCVDown();
  ASSERT_EQ(form().FindFirst(QStringLiteral("DC_ADR=5")), FindResult::Found);
  cab->cmdOK();
  EXPECT_EQ(stored("DC_CV_1", 3), 9);
  EXPECT_EQ(stored("DC_CV_1", 4), 20);
  EXPECT_NE(stored("DC_CV_1", 3, 5), 9);
  EXPECT_EQ(form().workingCopy().recCvValues[1][2], 0);
}

TEST_F(CabProgramming, AnEditInHandDoesNotPutTheOldValueBack) {
  const auto cab = open();
  CvRecord record = form().workingCopy();
  record.recCvValues[1][3] = 99;
  form().storeProgrammed(record, QStringLiteral("1000"), QStringLiteral("Zimo"));
  cab->stepCVUp();
  cab->cmdOK();
  ASSERT_TRUE(form().storeEdit());
  EXPECT_EQ(stored("DC_CV_1", 3), 11);
  EXPECT_EQ(stored("DC_CV_1", 4), 99);
}

TEST_F(CabProgramming, AStepDuringAnEditKeepsWhatAnotherProgramHasStored) {
  const auto cab = open();
  form().edited(QStringLiteral("fz_lname"), QStringLiteral("Rangierlok"));
  storeBeside(4, 77);
  cab->stepCVUp();
  EXPECT_EQ(form().workingCopy().recCvValues[1][3], 77);
  ASSERT_TRUE(form().storeEdit());
  EXPECT_TRUE(prompt.asked.isEmpty());
  EXPECT_EQ(stored("DC_CV_1", 3), 11);
  EXPECT_EQ(stored("DC_CV_1", 4), 77);
}

TEST_F(CabProgramming, AStepDuringAnEditOfTheSetIsNoAnswerToWhatAnotherProgramHasStored) {
  const auto cab = open();
  CvRecord record = form().workingCopy();
  record.recCvValues[1][3] = 99;
  form().storeProgrammed(record, QStringLiteral("1000"), QStringLiteral("Zimo"));
  storeBeside(5, 55);
  cab->stepCVUp();
  EXPECT_FALSE(form().storeEdit()) << "the safe answer goes on editing";
  ASSERT_EQ(prompt.asked.size(), 1);
  EXPECT_TRUE(prompt.below.last().contains(QStringLiteral("CV 5 dort 55, hier 0")))
      << qPrintable(prompt.below.last());
  EXPECT_FALSE(prompt.below.last().contains(QStringLiteral("CV 3")));
  EXPECT_EQ(stored("DC_CV_1", 5), 55);
  EXPECT_EQ(stored("DC_CV_1", 3), 11);
}

TEST_F(CabProgramming, LeavingWithoutAChangeDoesNotTouchTheRecord) {
  const auto cab = open();
  session.database().write(QStringLiteral("UPDATE LOCO_DAT SET DC_CV_1 = NULL"), {});
  cab->cmdOK();
  EXPECT_EQ(stored("DC_CV_1", 3), -1);
}

TEST_F(CabProgramming, ARecordThatIsGoneIsLeftInPeace) {
  const auto cab = open();
  cab->stepCVUp();
  ASSERT_EQ(form().FindFirst(QStringLiteral("DC_ADR=5")), FindResult::Found);
  session.database().write(QStringLiteral("DELETE FROM LOCO_DAT WHERE DC_ADR = 1000"), {});
  prompt.shown.clear();
  cab->cmdOK();
  EXPECT_TRUE(prompt.shown.isEmpty());
}

TEST_F(CabProgramming, AnotherDatabaseDoesNotGetTheChangesOfThisOne) {
  const test::TestDatabase other;
  const auto cab = open();
  cab->stepCVUp();
  prompt.fileNames = {other.path()};
  session.mnuDbOpen();
  ASSERT_EQ(session.dbPath(), other.path());
  prompt.shown.clear();
  cab->stepCVUp();
  clock.advance(1);
  EXPECT_EQ(prompt.shown,
            QStringList{QStringLiteral("Die geänderten CV-Werte von \"Lok\" werden nicht "
                                       "gespeichert: Es ist eine andere Datenbank geöffnet.")});
}

}  // namespace
}  // namespace lokari
