// A record that others change, delete or hold meanwhile, and the ways out of an edit.
#include <QFile>

#include "form_fixture.h"

namespace lokari {
namespace {

using RecordChangesTest = test::FormFixture;

// ---- Somebody else ------------------------------------------------------------------------------

TEST_F(RecordChangesTest, ARecordThatSomebodyDeletedIsNotStoredIntoNothing) {
  open();
  type("fz_lname", "neu");
  base_.run("DELETE FROM LOCO_DAT WHERE DC_ADR = 3");
  EXPECT_FALSE(form_.storeEdit());
  EXPECT_EQ(prompt_.shown, QStringList{str("Der Datensatz wurde gelöscht.")});
  EXPECT_EQ(text("fz_lname"), str("neu")) << "the entry is still there";
  prompt_.choices = {0};
  form_.MoveNext();
  EXPECT_EQ(text("st_sname"), str("A5")) << "given up";
}

TEST_F(RecordChangesTest, AChangeOfSomebodyElseIsAskedAboutWithBothTexts) {
  open();
  type("fz_lname", "hier");
  base_.run("UPDATE LOCO_DAT SET FZ_LNAME = 'dort', FZ_CODE = '64' WHERE DC_ADR = 3");
  EXPECT_FALSE(form_.storeEdit()) << "the safe answer goes on editing";
  ASSERT_EQ(prompt_.asked.size(), 1);
  EXPECT_EQ(prompt_.shown[0],
            str("Der Datensatz wurde inzwischen von einem anderen Programm geändert."));
  EXPECT_EQ(prompt_.below[0], str("Langbezeichnung: dort \"dort\", hier \"hier\"\n"
                                  "Baureihe: nur dort geändert (jetzt \"64\")"));
  EXPECT_EQ(text("fz_lname"), str("hier"));
  EXPECT_EQ(stored("SELECT FZ_LNAME FROM LOCO_DAT WHERE DC_ADR = 3"), str("dort"));
}

TEST_F(RecordChangesTest, MineIsStoredAndTheOthersFieldsStay) {
  open();
  type("fz_lname", "hier");
  base_.run("UPDATE LOCO_DAT SET FZ_LNAME = 'dort', FZ_CODE = '64' WHERE DC_ADR = 3");
  prompt_.choices = {0};
  EXPECT_TRUE(form_.storeEdit());
  EXPECT_EQ(stored("SELECT FZ_LNAME FROM LOCO_DAT WHERE DC_ADR = 3"), str("hier"));
  EXPECT_EQ(stored("SELECT FZ_CODE FROM LOCO_DAT WHERE DC_ADR = 3"), str("64"));
}

TEST_F(RecordChangesTest, AnEditThatIsGivenUpShowsWhatTheOtherProgramStored) {
  open();
  type("fz_lname", "hier");
  base_.run("UPDATE LOCO_DAT SET FZ_LNAME = 'dort', FZ_CODE = '64' WHERE DC_ADR = 3");
  EXPECT_FALSE(form_.storeEdit()) << "the safe answer goes on editing";
  form_.giveUp();
  EXPECT_EQ(text("fz_lname"), str("dort"));
  EXPECT_EQ(text("fz_code"), str("64"));
  type("fz_lname", "hier");
  EXPECT_TRUE(form_.storeEdit()) << "what is on show is what is stored: nothing to ask";
  EXPECT_EQ(prompt_.asked.size(), 1);
}

TEST_F(RecordChangesTest, AnEditThatIsGivenUpBehindAFaultShowsWhatIsStored) {
  open();
  type("dc_adr", "5");
  base_.run("UPDATE LOCO_DAT SET FZ_LNAME = 'dort' WHERE DC_ADR = 3");
  prompt_.choices = {0};
  EXPECT_TRUE(form_.storeEdit());
  EXPECT_EQ(prompt_.shown, QStringList{str("Datensatz mit dieser Adresse bereits vorhanden!")});
  EXPECT_EQ(text("dc_adr"), str("3"));
  EXPECT_EQ(text("fz_lname"), str("dort"));
}

TEST_F(RecordChangesTest, GivingUpARecordThatIsGoneTellsIt) {
  open();
  type("fz_lname", "hier");
  base_.run("DELETE FROM LOCO_DAT WHERE DC_ADR = 3");
  form_.giveUp();
  EXPECT_EQ(prompt_.shown, QStringList{str("Der Datensatz wurde gelöscht.")});
}

TEST_F(RecordChangesTest, TheirsIsTakenAndShown) {
  open();
  type("fz_lname", "hier");
  base_.run("UPDATE LOCO_DAT SET FZ_LNAME = 'dort' WHERE DC_ADR = 3");
  prompt_.choices = {1};
  EXPECT_TRUE(form_.storeEdit());
  EXPECT_EQ(text("fz_lname"), str("dort"));
  EXPECT_EQ(form_.editMode(), EditMode::None);
  EXPECT_EQ(stored("SELECT FZ_LNAME FROM LOCO_DAT WHERE DC_ADR = 3"), str("dort"));
}

TEST_F(RecordChangesTest, OnlyTheSetThatChangedIsWritten) {
  open();
  form_.butNew();
  type("dc_adr", "9");
  type("st_sname", "A9");
  form_.butOK();
  form_.MoveFirst();
  form_.MoveLast();
  CvRecord record = form_.workingCopy();
  record.recCvValues[1][2] = 7;
  form_.storeProgrammed(record, str("9"), QString());
  ASSERT_TRUE(form_.storeEdit());
  // Another program stores the first set while the window holds its older copy.
  record = form_.workingCopy();
  record.recCvValues[2][2] = 9;
  form_.storeProgrammed(record, str("9"), QString());
  base_.run("UPDATE LOCO_DAT SET DC_CV = zeroblob(4865) WHERE DC_ADR = 9");
  EXPECT_TRUE(form_.storeEdit()) << "zeros are what was there";
  base_.run("UPDATE LOCO_DAT SET DC_CV = x'0505' WHERE DC_ADR = 9");
  record.recCvValues[2][2] = 10;
  form_.storeProgrammed(record, str("9"), QString());
  EXPECT_FALSE(form_.storeEdit());
  EXPECT_TRUE(prompt_.below.last().contains(
      str("CV-Werte, Satz 1: nur dort geändert (CV 1 jetzt 5; CV 2 jetzt 5)")))
      << qPrintable(prompt_.below.last());
  prompt_.choices = {0};
  EXPECT_TRUE(form_.storeEdit());
  EXPECT_EQ(stored("SELECT DC_CV FROM LOCO_DAT WHERE DC_ADR = 9").toByteArray(), QByteArray("\5\5"))
      << "the owner has not touched that set";
  EXPECT_EQ(stored("SELECT substr(DC_CV_2, 3, 1) = x'0A' FROM LOCO_DAT WHERE DC_ADR = 9").toInt(),
            1);
}

TEST_F(RecordChangesTest, TheSetsAreReadAnewForTheDecoderWindow) {
  open();
  base_.run("UPDATE LOCO_DAT SET DC_CV = x'2A', DC_CV_ST = x'31' WHERE DC_ADR = 3");
  form_.refreshCvSets();
  EXPECT_EQ(form_.workingCopy().recCvValues[0][0], 42);
  EXPECT_EQ(form_.workingCopy().recCvMarks[0][0], '1');
}

TEST_F(RecordChangesTest, APastedSetStaysPasted) {
  open();
  form_.mnuEditCopy();
  form_.MoveNext();
  form_.mnuEditInsert();
  base_.run("UPDATE LOCO_DAT SET DC_CV = x'2A' WHERE DC_ADR = 5");
  form_.refreshCvSets();
  EXPECT_EQ(form_.workingCopy().recCvValues[0][0], 0);
}

// ---- A file that another program holds ----------------------------------------------------------

class HeldFileTest : public RecordChangesTest {
 protected:
  void hold() {
    other_ = std::make_unique<Database>(base_.path());
    other_->write(str("BEGIN EXCLUSIVE"), {});
  }
  void release() { other_->write(str("ROLLBACK"), {}); }

  std::unique_ptr<Database> other_;
};

TEST_F(HeldFileTest, IsWaitedForAndThenWritten) {
  open();
  type("fz_lname", "neu");
  hold();
  prompt_.patience = 3;
  int asked = 0;
  prompt_.meanwhile = [&] {
    if (++asked == 2) release();
  };
  EXPECT_TRUE(form_.storeEdit());
  EXPECT_EQ(asked, 2);
  EXPECT_EQ(stored("SELECT FZ_LNAME FROM LOCO_DAT WHERE DC_ADR = 3"), str("neu"));
}

TEST_F(HeldFileTest, ASearchThatHasToWaitShowsItsAnswerBehindTheWait) {
  base_.run("UPDATE LOCO_DAT SET FZ_LNAME = 'Baureihe 218' WHERE DC_ADR = 5");
  for (const bool filter : {false, true}) {
    prompt_.shown.clear();
    open();
    form_.butFind();
    type("fz_lname", "218");
    hold();
    prompt_.patience = 2;
    int boxes = -1;
    prompt_.meanwhile = [&] {
      release();
      boxes = static_cast<int>(prompt_.shown.size());
    };
    filter ? form_.butFilter() : form_.butOK();
    EXPECT_EQ(boxes, 1) << "the wait alone";
    EXPECT_EQ(prompt_.shown.size(), 2);
    EXPECT_EQ(prompt_.shown.last(), str("Keine passenden Daten gefunden!"));
    EXPECT_FALSE(prompt_.boxInBox);
    other_.reset();
  }
}

TEST_F(HeldFileTest, AnAbbruchOfTheWaitingLeavesTheEditOrGivesItUpAsTheUserSays) {
  open();
  type("fz_lname", "neu");
  hold();
  form_.MoveNext();
  EXPECT_EQ(text("fz_lname"), str("neu"));
  ASSERT_EQ(prompt_.asked.size(), 1);
  EXPECT_EQ(prompt_.shown.last(),
            str("Die Datenbank wird gerade von einem anderen Programm benutzt."));
  prompt_.choices = {0};
  EXPECT_TRUE(form_.close());
  release();
  EXPECT_TRUE(stored("SELECT FZ_LNAME FROM LOCO_DAT WHERE DC_ADR = 3").isNull());
}

// ---- The way out --------------------------------------------------------------------------------

struct Fault {
  const char* name;
  const char* text;
  void (*make)(const QString& path);
};

void overwriteWith(const QString& path, const QByteArray& bytes) {
  QFile file(path);
  ASSERT_TRUE(file.open(QIODevice::ReadWrite));
  ASSERT_EQ(file.write(bytes), bytes.size());
}

const Fault kFaults[] = {
    {"Gone",
     "Die Datenbankdatei liegt nicht mehr an ihrem Platz: Sie wurde gelöscht, umbenannt oder "
     "ersetzt.",
     [](const QString& path) { ASSERT_TRUE(QFile::remove(path)); }},
    {"Replaced",
     "Die Datenbankdatei liegt nicht mehr an ihrem Platz: Sie wurde gelöscht, umbenannt oder "
     "ersetzt.",
     [](const QString& path) {
       ASSERT_TRUE(QFile::copy(path, path + QStringLiteral(".neu")));
       ASSERT_TRUE(QFile::remove(path));
       ASSERT_TRUE(QFile::rename(path + QStringLiteral(".neu"), path));
     }},
    {"Rubbish", "Die Datei ist keine Datenbank.",
     [](const QString& path) { overwriteWith(path, QByteArray(200000, 'x')); }},
};

class WayOutTest : public RecordChangesTest, public ::testing::WithParamInterface<Fault> {};

TEST_P(WayOutTest, ThePogramCanBeClosedAlthoughTheEditCannotBeStored) {
  open();
  type("fz_lname", "neu");
  GetParam().make(base_.path());
  EXPECT_FALSE(form_.close()) << "the safe answer goes on editing";
  EXPECT_EQ(prompt_.shown, QStringList{str(GetParam().text)});
  EXPECT_EQ(prompt_.asked[0].answers[1], str("&Weiter bearbeiten"));
  prompt_.choices = {0};
  EXPECT_TRUE(form_.close());
}

TEST_P(WayOutTest, AnotherFileCanBeOpenedAlthoughTheEditCannotBeStored) {
  open();
  type("fz_lname", "neu");
  GetParam().make(base_.path());
  prompt_.choices = {0};
  EXPECT_TRUE(form_.storeEdit());
  EXPECT_EQ(prompt_.shown.size(), 1) << "one box";
  EXPECT_EQ(form_.editMode(), EditMode::None);
  EXPECT_EQ(text("fz_lname"), QString());
  EXPECT_FALSE(form_.isUnsaved());
}

INSTANTIATE_TEST_SUITE_P(AllFaults, WayOutTest, ::testing::ValuesIn(kFaults),
                         [](const auto& fault) { return std::string(fault.param.name); });

TEST_F(RecordChangesTest, ATakenAddressCanBeGivenUpOnTheWayOut) {
  open();
  type("dc_adr", "5");
  form_.MoveNext();
  EXPECT_EQ(prompt_.shown, QStringList{str("Datensatz mit dieser Adresse bereits vorhanden!")});
  EXPECT_EQ(text("dc_adr"), str("5")) << "as told: the record stays in its edit state";
  prompt_.choices = {0};
  form_.MoveNext();
  EXPECT_EQ(text("st_sname"), str("A5"));
}

// ---- Taking back --------------------------------------------------------------------------------

TEST_F(RecordChangesTest, EscGivesOneFieldUpUnasked) {
  open();
  type("fz_lname", "neu");
  EXPECT_TRUE(form_.isUnsaved());
  form_.giveUp();
  EXPECT_EQ(text("fz_lname"), QString());
  EXPECT_FALSE(form_.isUnsaved());
  EXPECT_EQ(form_.editMode(), EditMode::None);
  EXPECT_TRUE(prompt_.shown.isEmpty());
}

TEST_F(RecordChangesTest, EscAsksWhereSeveralFieldsChanged) {
  open();
  type("fz_lname", "neu");
  type("fz_code", "64");
  form_.giveUp();
  EXPECT_EQ(prompt_.shown.size(), 1);
  EXPECT_EQ(text("fz_lname"), str("neu")) << "the safe answer";
  prompt_.choices = {0};
  form_.giveUp();
  EXPECT_EQ(text("fz_lname"), QString());
}

TEST_F(RecordChangesTest, EscGivesUpTheBlankRecordBehindTheLast) {
  open();
  form_.MoveLast();
  form_.MoveNext();
  type("dc_adr", "9");
  form_.giveUp();
  EXPECT_EQ(text("st_sname"), str("V7"));
  EXPECT_EQ(form_.editMode(), EditMode::None);
}

TEST_F(RecordChangesTest, ADeletedRecordComesBackWhole) {
  open();
  base_.run("UPDATE LOCO_DAT SET DC_CV = x'010203', FZ_LNAME = 'Lok' WHERE DC_ADR = 5");
  const QVariant number = stored("SELECT DC_RECNO FROM LOCO_DAT WHERE DC_ADR = 5");
  form_.MoveNext();
  prompt_.answers = {Answer::Yes};
  EXPECT_FALSE(visible("butUndo"));
  form_.butDelete();
  EXPECT_EQ(text("st_sname"), str("V7"));
  EXPECT_TRUE(visible("butUndo"));
  form_.butUndo();
  EXPECT_EQ(text("st_sname"), str("A5"));
  EXPECT_EQ(text("Data1"), str("Satz  2 von  3"));
  EXPECT_EQ(stored("SELECT DC_RECNO FROM LOCO_DAT WHERE DC_ADR = 5"), number);
  EXPECT_EQ(stored("SELECT DC_CV FROM LOCO_DAT WHERE DC_ADR = 5").toByteArray(),
            QByteArray("\1\2\3"));
  EXPECT_FALSE(visible("butUndo"));
}

TEST_F(RecordChangesTest, TheOnlyRecordComesBackOutOfTheNewOne) {
  base_.run("DELETE FROM LOCO_DAT WHERE DC_ADR <> 3");
  open();
  prompt_.answers = {Answer::Yes};
  form_.butDelete();
  EXPECT_TRUE(visible("butOK"));
  form_.butUndo();
  EXPECT_EQ(text("st_sname"), str("A3"));
  EXPECT_FALSE(visible("butOK"));
  EXPECT_TRUE(visible("butNew"));
}

TEST_F(RecordChangesTest, AnEditInHandIsAskedAboutAheadOfTheTakingBack) {
  open();
  prompt_.answers = {Answer::Yes};
  form_.butDelete();
  ASSERT_EQ(text("st_sname"), str("A5"));
  type("fz_lname", "neu");
  form_.butUndo();
  ASSERT_EQ(prompt_.asked.size(), 1) << "the safe answer goes on editing";
  EXPECT_EQ(prompt_.shown.last(),
            str("Vor dem Zurückholen: Eingaben zu Adresse 5 \"A5\" speichern?"));
  EXPECT_EQ(text("fz_lname"), str("neu"));
  EXPECT_TRUE(form_.isUnsaved());
  EXPECT_TRUE(stored("SELECT FZ_LNAME FROM LOCO_DAT WHERE DC_ADR = 5").isNull());
  EXPECT_EQ(stored("SELECT COUNT(*) FROM LOCO_DAT").toInt(), 2);
  prompt_.choices = {1};
  form_.butUndo();
  EXPECT_EQ(text("st_sname"), str("A3"));
  EXPECT_TRUE(stored("SELECT FZ_LNAME FROM LOCO_DAT WHERE DC_ADR = 5").isNull()) << "given up";
  EXPECT_FALSE(visible("butUndo"));
}

TEST_F(RecordChangesTest, AnEditIsStoredAheadOfTheTakingBackWhenTheUserSaysSo) {
  open();
  prompt_.answers = {Answer::Yes};
  form_.butDelete();
  type("fz_lname", "neu");
  prompt_.choices = {0};
  form_.butUndo();
  EXPECT_EQ(text("st_sname"), str("A3"));
  EXPECT_EQ(stored("SELECT FZ_LNAME FROM LOCO_DAT WHERE DC_ADR = 5"), str("neu"));
}

TEST_F(RecordChangesTest, ANewRecordInHandIsGivenUpForTheTakingBack) {
  open();
  prompt_.answers = {Answer::Yes};
  form_.butDelete();
  form_.butNew();
  type("dc_adr", "9");
  prompt_.choices = {1};
  form_.butUndo();
  EXPECT_EQ(text("st_sname"), str("A3"));
  EXPECT_FALSE(visible("butOK"));
  EXPECT_EQ(stored("SELECT COUNT(*) FROM LOCO_DAT").toInt(), 3);
}

TEST_F(RecordChangesTest, ARecordWhoseAddressWasGivenAwayCanBeTakenBackOnceItIsFree) {
  open();
  prompt_.answers = {Answer::Yes};
  form_.butDelete();
  ASSERT_EQ(text("st_sname"), str("A5"));
  type("dc_adr", "3");
  prompt_.choices = {0};
  form_.butUndo();
  EXPECT_EQ(stored("SELECT COUNT(*) FROM LOCO_DAT").toInt(), 2);
  EXPECT_EQ(prompt_.shown.last(), str("Datensatz mit dieser Adresse bereits vorhanden!"));
  EXPECT_EQ(
      prompt_.below.last(),
      str("Adresse 3 der Sammlung \"Anlage\" hat jetzt \"A5\". Der gelöschte Datensatz \"A3\" "
          "lässt sich zurückholen, sobald sie wieder frei ist."));
  EXPECT_TRUE(visible("butUndo"));
  base_.run("UPDATE LOCO_DAT SET DC_ADR = 5 WHERE ST_SNAME = 'A5'");
  form_.butUndo();
  EXPECT_EQ(stored("SELECT ST_SNAME FROM LOCO_DAT WHERE DC_ADR = 3").toString(), str("A3"));
  EXPECT_FALSE(visible("butUndo"));
}

TEST_F(RecordChangesTest, TheCaseOfAnUmlautInTheCollectionMakesNoSecondOfTheKind) {
  base_.run("UPDATE LOCO_DAT SET DC_COLL = 'Ü' WHERE DC_ADR = 3");
  open();
  form_.FindFirst(str("DC_ADR=3"));
  prompt_.answers = {Answer::Yes};
  form_.butDelete();
  base_.run("UPDATE LOCO_DAT SET DC_COLL = 'ü', DC_ADR = 3 WHERE ST_SNAME = 'A5'");
  form_.butUndo();
  EXPECT_EQ(stored("SELECT COUNT(*) FROM LOCO_DAT").toInt(), 2);
  EXPECT_TRUE(prompt_.below.last().contains(str("hat jetzt \"A5\"")));
}

TEST_F(RecordChangesTest, AStoredRecordEndsTheTakingBack) {
  open();
  prompt_.answers = {Answer::Yes};
  form_.butDelete();
  type("fz_lname", "neu");
  ASSERT_TRUE(form_.storeEdit());
  EXPECT_FALSE(visible("butUndo"));
  form_.butUndo();
  EXPECT_EQ(stored("SELECT COUNT(*) FROM LOCO_DAT").toInt(), 2);
}

// ---- The first vehicle and the blank record -----------------------------------------------------

TEST_F(RecordChangesTest, TheFirstVehicleIsValidatedLikeAnyOther) {
  base_.run("DELETE FROM LOCO_DAT");
  open();
  form_.butNew();
  type("dc_adr", "20000");
  type("st_sname", "X");
  form_.butOK();
  EXPECT_EQ(prompt_.shown, QStringList{str("Adresse ungültig")});
  EXPECT_EQ(stored("SELECT COUNT(*) FROM LOCO_DAT").toInt(), 0);
}

TEST_F(RecordChangesTest, TheBlankRecordBehindTheLastIsValidatedOnceSomethingWasTyped) {
  open();
  form_.MoveLast();
  form_.MoveNext();
  type("fz_lname", "ohne Adresse");
  form_.MovePrevious();
  EXPECT_EQ(prompt_.shown, QStringList{str("Adresse ungültig")});
  EXPECT_EQ(stored("SELECT COUNT(*) FROM LOCO_DAT").toInt(), 3);
}

TEST_F(RecordChangesTest, AnUntouchedBlankRecordIsStillPassedOver) {
  open();
  form_.MoveLast();
  form_.MoveNext();
  form_.MovePrevious();
  EXPECT_TRUE(prompt_.shown.isEmpty());
}

TEST_F(RecordChangesTest, DeletingAllOfAFilterLeadsBackToAllVehicles) {
  open();
  form_.butFind();
  type("dc_coll", "Vitrine");
  form_.butFilter();
  ASSERT_EQ(form_.records().count(), 1);
  prompt_.answers = {Answer::Yes};
  form_.butDelete();
  EXPECT_EQ(form_.records().count(), 2);
  EXPECT_FALSE(form_.isFiltered());
  EXPECT_TRUE(visible("butNew")) << "no new record was begun";
  EXPECT_EQ(form_.editMode(), EditMode::None);
}

TEST_F(RecordChangesTest, TheBoxOfATakenCollectionWaitsUntilTheFieldIsLeft) {
  base_.addVehicle(3, QStringLiteral("An"), QStringLiteral("An3"));
  open();
  form_.FindFirst(str("ST_SNAME=\"A3\""));
  type("dc_coll", "An");
  EXPECT_TRUE(prompt_.shown.isEmpty()) << "it may become another one";
  type("dc_coll", "Anna");
  EXPECT_EQ(stored("SELECT DC_COLL FROM LOCO_DAT WHERE ST_SNAME = 'A3'"), str("Anna"));
  type("dc_coll", "An");
  form_.focusLost(str("dc_coll"));
  EXPECT_EQ(prompt_.shown, QStringList{str("Datensatz mit dieser Adresse bereits vorhanden!")});
}

// ---- One box at a time --------------------------------------------------------------------------

TEST_F(RecordChangesTest, AFieldThatABoxTakesTheFocusFromAsksNothing) {
  open();
  type("st_group", "99999999");
  type("fz_maxspeed", "99999999");
  // The focus goes back to the first field, so the second one loses it.
  QObject::connect(&form_, &RecordForm::focusWanted, &form_,
                   [this](const QString&, bool) { form_.focusLost(str("fz_code")); });
  type("fz_code", "ein viel zu langer Text");
  form_.focusLost(str("fz_code"));
  EXPECT_EQ(prompt_.shown, QStringList{str("Maximale Eingabelänge überschritten!")});
}

TEST_F(RecordChangesTest, MessagesNameTheFieldAsItsLabelDoes) {
  open();
  type("st_group", "99999999");
  EXPECT_FALSE(form_.storeEdit());
  EXPECT_EQ(prompt_.shown,
            QStringList{str("\"99999999\" ist kein gültiger Wert für das Feld Fahrzeug-Gruppe.")});
}

}  // namespace
}  // namespace lokari
