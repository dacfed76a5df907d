// Showing records, the navigator, the controls' rules and the validation.
#include "db/record_form.h"

#include "tests/db/form_fixture.h"

namespace lokari {
namespace {

class RecordFormTest : public test::FormFixture {};

TEST_F(RecordFormTest, ShowsTheFirstRecordWithItsNumberAndTheCount) {
  open();
  EXPECT_EQ(text("dc_adr"), str("3"));
  EXPECT_EQ(text("dc_coll"), str("Anlage"));
  EXPECT_EQ(text("st_sname"), str("A3"));
  EXPECT_EQ(text("Data1"), str("Satz  1 von  3"));
  EXPECT_EQ(form_.typeOption(), 1);
  EXPECT_EQ(form_.list(str("dc_coll")), QStringList({str("Anlage"), str("Vitrine")}));
  EXPECT_EQ(form_.list(str("md_scale")).first(), str("1:22.5"));
  EXPECT_FALSE(form_.list(str("fz_era")).isEmpty());
  EXPECT_FALSE(form_.recordDirty);
  EXPECT_EQ(form_.workingCopy().recCvValues[4], QByteArray(4865, '\0'));
}

TEST_F(RecordFormTest, TheNavigatorMovesAndStopsAtTheFirst) {
  open();
  form_.MoveLast();
  EXPECT_EQ(text("Data1"), str("Satz  3 von  3"));
  form_.MovePrevious();
  EXPECT_EQ(text("st_sname"), str("A5"));
  form_.MoveFirst();
  form_.MovePrevious();
  EXPECT_EQ(text("Data1"), str("Satz  1 von  3"));
}

TEST_F(RecordFormTest, MovingPastTheLastRecordBeginsANewOne) {
  open();
  form_.MoveLast();
  form_.MoveNext();
  EXPECT_EQ(form_.editMode(), EditMode::Add);
  EXPECT_EQ(form_.position(), -1);
  EXPECT_EQ(text("Data1"), str("neuer Satz"));
  EXPECT_EQ(text("st_sname"), QString());
  EXPECT_EQ(text("dc_coll"), QString());
  EXPECT_TRUE(visible("butNew"));
  form_.MovePrevious();
  EXPECT_EQ(text("Data1"), str("Satz  3 von  3"));
}

TEST_F(RecordFormTest, ARecordBegunPastTheLastOneIsStoredByTheNextMove) {
  open();
  form_.MoveLast();
  form_.MoveNext();
  type("dc_adr", "9");
  type("st_sname", "N9");
  form_.MoveFirst();
  EXPECT_EQ(text("Data1"), str("Satz  1 von  4"));
  EXPECT_EQ(stored("SELECT ST_SNAME FROM LOCO_DAT WHERE DC_ADR = 9").toString(), str("N9"));
}

TEST_F(RecordFormTest, ARecordBegunPastTheLastOneGetsTheEmptyCollection) {
  open();
  form_.MoveLast();
  form_.MoveNext();
  type("dc_adr", "9");
  type("st_sname", "N9");
  form_.MoveFirst();
  const QVariant collection = stored("SELECT DC_COLL FROM LOCO_DAT WHERE DC_ADR = 9");
  EXPECT_FALSE(collection.isNull());
  EXPECT_EQ(collection.toString(), QString());
}

TEST_F(RecordFormTest, ARecordBegunPastTheLastOneIsOnShowOnceItIsStored) {
  open();
  form_.MoveLast();
  form_.MoveNext();
  type("dc_adr", "9");
  type("st_sname", "N9");
  EXPECT_TRUE(form_.storeEdit());
  EXPECT_EQ(text("Data1"), str("Satz  4 von  4"));
  type("fz_lname", "weiter");
  form_.MoveFirst();
  EXPECT_EQ(stored("SELECT FZ_LNAME FROM LOCO_DAT WHERE DC_ADR = 9").toString(), str("weiter"));
}

TEST_F(RecordFormTest, DeletingARecordBegunPastTheLastOneShowsTheLastOne) {
  open();
  form_.MoveLast();
  form_.MoveNext();
  type("dc_adr", "9");
  form_.butDelete();
  EXPECT_TRUE(prompt_.shown.isEmpty());
  EXPECT_EQ(text("Data1"), str("Satz  3 von  3"));
  EXPECT_EQ(text("st_sname"), str("V7"));
  EXPECT_EQ(stored("SELECT COUNT(*) FROM LOCO_DAT").toInt(), 3);
}

TEST_F(RecordFormTest, TypingZeroBeginsNoEditAndTenDoesFromItsFirstDigit) {
  open();
  type("dc_adr", "0");
  EXPECT_EQ(form_.editMode(), EditMode::None);
  EXPECT_FALSE(form_.recordDirty);
  EXPECT_EQ(selected_, QStringList{str("dc_adr")});
  type("dc_adr", "1");
  EXPECT_EQ(form_.editMode(), EditMode::Edit);
  EXPECT_TRUE(form_.recordDirty);
}

TEST_F(RecordFormTest, AMoveStoresTheEdit) {
  open();
  type("fz_lname", "Schnellzuglokomotive");
  form_.MoveNext();
  EXPECT_EQ(form_.editMode(), EditMode::None);
  EXPECT_EQ(stored("SELECT FZ_LNAME FROM LOCO_DAT WHERE DC_ADR = 3").toString(),
            str("Schnellzuglokomotive"));
  EXPECT_EQ(text("fz_lname"), QString());
}

TEST_F(RecordFormTest, AnEmptiedFieldIsStoredAsNull) {
  open();
  type("fz_lname", "x");
  form_.MoveNext();
  form_.MoveFirst();
  type("fz_lname", "");
  form_.MoveNext();
  EXPECT_TRUE(stored("SELECT FZ_LNAME FROM LOCO_DAT WHERE DC_ADR = 3").isNull());
}

TEST_F(RecordFormTest, AnAddressOutOfRangeIsRefusedAtFocusLossAndAgainInOtherWordsAtSaving) {
  open();
  type("dc_adr", "10240");
  form_.focusLost(str("dc_adr"));
  EXPECT_EQ(prompt_.shown, QStringList{str("Erlaubte Werte liegen zwischen 1 und 10239!")});
  EXPECT_EQ(focus_, QStringList{str("dc_adr")});
  form_.MoveNext();
  EXPECT_EQ(prompt_.shown.last(), str("Adresse ungültig"));
  EXPECT_EQ(form_.validateFail, 1);
  EXPECT_EQ(form_.position(), 0);
  EXPECT_EQ(form_.editMode(), EditMode::Edit);
  EXPECT_EQ(text("dc_adr"), str("10240"));
}

TEST_F(RecordFormTest, AfterTheDecoderWindowOnlyTheRefusalAtSavingRemains) {
  open();
  ASSERT_TRUE(form_.prepareProgramming());
  type("dc_adr", "10240");
  form_.focusLost(str("dc_adr"));
  EXPECT_TRUE(prompt_.shown.isEmpty());
  form_.MoveNext();
  EXPECT_EQ(prompt_.shown, QStringList{str("Adresse ungültig")});
}

TEST_F(RecordFormTest, TheHighestAddressIsValidAtFocusLoss) {
  open();
  type("dc_adr", "10239");
  form_.focusLost(str("dc_adr"));
  EXPECT_TRUE(prompt_.shown.isEmpty());
}

TEST_F(RecordFormTest, AMissingShortNameIsRefusedAtSaving) {
  open();
  type("st_sname", "");
  form_.MoveNext();
  EXPECT_EQ(prompt_.shown, QStringList{str("Kurzbezeichnung muß eingegeben werden")});
  EXPECT_EQ(form_.validateFail, 2);
  EXPECT_EQ(focus_, QStringList{str("st_sname")});
  type("st_sname", "A3");
  form_.MoveNext();
  EXPECT_EQ(form_.validateFail, 0);
  EXPECT_EQ(form_.position(), 1);
}

TEST_F(RecordFormTest, AnAddressTakenInTheCollectionLeavesTheRecordInItsEdit) {
  open();
  type("dc_adr", "5");
  form_.MoveNext();
  EXPECT_EQ(prompt_.shown, QStringList{str("Datensatz mit dieser Adresse bereits vorhanden!")});
  EXPECT_EQ(form_.editMode(), EditMode::Edit);
  EXPECT_EQ(form_.position(), 0);
  type("dc_adr", "4");
  form_.MoveNext();
  EXPECT_EQ(form_.position(), 1);
}

TEST_F(RecordFormTest, FocusLossChecksLengthAndNumbersAndKeepsTheText) {
  open();
  type("st_sname", "1234567");
  form_.focusLost(str("st_sname"));
  EXPECT_EQ(prompt_.shown.last(), str("Maximale Eingabelänge überschritten!"));
  type("md_price", "1,2,3x");
  form_.focusLost(str("md_price"));
  EXPECT_EQ(prompt_.shown.last(), str("Numerische Eingabe erforderlich!"));
  EXPECT_EQ(focus_, QStringList({str("st_sname"), str("md_price")}));
  EXPECT_EQ(text("md_price"), str("1,2,3x"));
  type("md_price", "");
  form_.focusLost(str("md_price"));
  EXPECT_EQ(prompt_.shown.size(), 2);
}

TEST_F(RecordFormTest, ALongRemarkNeverHoldsTheFocusAndIsCopiedWhole) {
  base_.run("UPDATE LOCO_DAT SET MD_INFO = ? WHERE DC_ADR = 3", {QString(5000, u'x')});
  open();
  form_.focusLost(str("md_info"));
  type("fz_lname", "Lok");
  form_.focusLost(str("fz_lname"));
  EXPECT_TRUE(form_.storeEdit());
  form_.mnuEditCopy();
  form_.MoveNext();
  form_.mnuEditInsert();
  EXPECT_TRUE(form_.storeEdit());
  EXPECT_TRUE(prompt_.shown.isEmpty()) << qPrintable(prompt_.shown.join(u'\n'));
  EXPECT_EQ(stored("SELECT LENGTH(MD_INFO) FROM LOCO_DAT WHERE DC_ADR = 5"), 5000);
}

TEST_F(RecordFormTest, KeysThatAFieldDoesNotTake) {
  open();
  for (const char* control : {"dc_adr", "st_group", "fz_maxspeed"}) {
    EXPECT_TRUE(form_.takesKey(str(control), u'7'));
    EXPECT_TRUE(form_.takesKey(str(control), QChar(8)));
    EXPECT_FALSE(form_.takesKey(str(control), u','));
    EXPECT_FALSE(form_.takesKey(str(control), u'a'));
  }
  EXPECT_TRUE(form_.takesKey(str("md_price"), u','));
  EXPECT_FALSE(form_.takesKey(str("md_price"), u'-'));
  EXPECT_TRUE(form_.takesKey(str("st_sname"), u'ä'));
  EXPECT_EQ(prompt_.beeps, 0);
}

TEST_F(RecordFormTest, ACollectionTakesSixteenCharactersAndControlKeysAlways) {
  open();
  type("dc_coll", "123456789012345");
  EXPECT_TRUE(form_.takesKey(str("dc_coll"), u'x'));
  type("dc_coll", "1234567890123456");
  EXPECT_FALSE(form_.takesKey(str("dc_coll"), u'x'));
  EXPECT_EQ(prompt_.beeps, 1);
  EXPECT_TRUE(form_.takesKey(str("dc_coll"), QChar(8)));
  EXPECT_TRUE(form_.takesKey(str("dc_coll"), QChar(13)));
}

TEST_F(RecordFormTest, AFullCollectionTakesWhatDoesNotLengthenIt) {
  open();
  type("dc_coll", "1234567890123456");
  EXPECT_TRUE(form_.takesKey(str("dc_coll"), QChar(127)));
  EXPECT_TRUE(form_.takesKey(str("dc_coll"), u'x', 1));
  EXPECT_EQ(prompt_.beeps, 0);
  EXPECT_FALSE(form_.takesKey(str("st_group"), u'x', 1)) << "another filter holds";
}

TEST_F(RecordFormTest, AChoiceInADropDownIsSavedAtOnceWithTheOtherChanges) {
  open();
  type("fz_code", "042");
  type("fz_era", "III");
  EXPECT_EQ(form_.editMode(), EditMode::None);
  EXPECT_EQ(stored("SELECT FZ_ERA FROM LOCO_DAT WHERE DC_ADR = 3").toString(), str("III"));
  EXPECT_EQ(stored("SELECT FZ_CODE FROM LOCO_DAT WHERE DC_ADR = 3").toString(), str("042"));
  type("fz_code", "043");
  EXPECT_EQ(form_.editMode(), EditMode::Edit);
}

TEST_F(RecordFormTest, AChoiceInADropDownWithAnInvalidAddressFailsAtOnce) {
  open();
  type("dc_adr", "10240");
  type("fz_era", "III");
  EXPECT_EQ(prompt_.shown, QStringList{str("Adresse ungültig")});
  EXPECT_EQ(form_.editMode(), EditMode::Edit);
  EXPECT_TRUE(stored("SELECT FZ_ERA FROM LOCO_DAT WHERE DC_ADR = 3").isNull());
}

TEST_F(RecordFormTest, AChoiceOnAStoredRecordWithAnInvalidAddressFailsAtOnce) {
  base_.run("UPDATE LOCO_DAT SET DC_ADR = 20000 WHERE DC_ADR = 7");
  open();
  form_.MoveLast();
  type("fz_era", "III");
  EXPECT_EQ(prompt_.shown, QStringList{str("Adresse ungültig")});
}

TEST_F(RecordFormTest, ANewCollectionIsOfferedOnceItIsStored) {
  open();
  type("dc_coll", "Neu");
  form_.MoveNext();
  EXPECT_EQ(form_.list(str("dc_coll")), QStringList({str("Anlage"), str("Neu"), str("Vitrine")}));
}

TEST_F(RecordFormTest, TheTypeGroupAndItsTextShowTheSame) {
  open();
  form_.clickType(2);
  EXPECT_EQ(text("dc_type"), str("2"));
  EXPECT_EQ(form_.typeOption(), 2);
  EXPECT_EQ(form_.editMode(), EditMode::Edit);
  form_.MoveNext();
  EXPECT_EQ(form_.typeOption(), 1);
  EXPECT_EQ(stored("SELECT DC_TYPE FROM LOCO_DAT WHERE DC_ADR = 3").toInt(), 2);
}

TEST_F(RecordFormTest, AMakerWithoutARowShowsThePreviousRecordsName) {
  base_.run("UPDATE LOCO_DAT SET DC_MANUF = 145 WHERE DC_ADR = 3");
  base_.run("UPDATE LOCO_DAT SET DC_MANUF = 99 WHERE DC_ADR = 5");
  open();
  EXPECT_EQ(text("dc_manuf"), str("Zimo"));
  form_.MoveNext();
  EXPECT_EQ(text("dc_manuf"), str("Zimo"));
  form_.MoveNext();
  EXPECT_EQ(text("dc_manuf"), QString());
}

TEST_F(RecordFormTest, TheWorkingCopyFollowsTheRecord) {
  base_.run("UPDATE LOCO_DAT SET DC_CV = ?, DC_CV_NAME_1 = 'Winter' WHERE DC_ADR = 5",
            {QByteArray(1000, '\x07')});
  open();
  form_.MoveNext();
  EXPECT_EQ(form_.workingCopy().recCvValues[0].left(1000), QByteArray(1000, '\x07'));
  EXPECT_EQ(form_.workingCopy().recCvValues[0].size(), 4865);
  EXPECT_EQ(form_.workingCopy().recCvName[1], str("Winter"));
}

TEST_F(RecordFormTest, FindFirstStoresLeavesAndShows) {
  open();
  type("fz_lname", "x");
  EXPECT_EQ(form_.FindFirst(str("DC_ADR=7")), FindResult::Found);
  EXPECT_EQ(text("st_sname"), str("V7"));
  EXPECT_EQ(stored("SELECT FZ_LNAME FROM LOCO_DAT WHERE DC_ADR = 3").toString(), str("x"));
  EXPECT_EQ(form_.FindFirst(str("DC_ADR=8")), FindResult::NoMatch);
  EXPECT_EQ(text("st_sname"), str("V7"));
  EXPECT_EQ(form_.FindFirst(str("DC_ADR=")), FindResult::Failed);
  EXPECT_FALSE(form_.storageMessage().isEmpty());
  EXPECT_TRUE(prompt_.shown.isEmpty());
}

TEST_F(RecordFormTest, AfterASearchWithoutAMatchTheNextChangeIsAnEditAgain) {
  open();
  for (const char* condition : {"DC_ADR=8", "DC_ADR="}) {
    type("fz_lname", "x");
    form_.FindFirst(str(condition));
    EXPECT_FALSE(form_.recordDirty);
    type("fz_lname", condition);
    EXPECT_EQ(form_.editMode(), EditMode::Edit);
    form_.MoveNext();
    EXPECT_EQ(stored("SELECT FZ_LNAME FROM LOCO_DAT WHERE DC_ADR = 3").toString(), str(condition));
    form_.MoveFirst();
  }
}

TEST_F(RecordFormTest, ASavedPlaceWithAnAddressOnlyFindsTheEmptyCollectionNotNull) {
  base_.addVehicle(7, QString(), QStringLiteral("Null"));
  base_.addVehicle(7, QStringLiteral(""), QStringLiteral("leer"));
  open();
  EXPECT_EQ(form_.FindFirst(str("DC_ADR=7AND DC_COLL=\"\"")), FindResult::Found);
  EXPECT_EQ(text("st_sname"), str("leer"));
}

TEST_F(RecordFormTest, TheFocusSelectsTheTextOfTheFieldsThatSayso) {
  open();
  form_.focusGained(str("st_sname"));
  form_.focusGained(str("md_info"));
  form_.focusGained(str("dc_coll"));
  EXPECT_EQ(selected_, QStringList{str("st_sname")});
}

TEST_F(RecordFormTest, CloseStoresTheEditAndRefusesAnInvalidOne) {
  open();
  type("dc_adr", "20000");
  EXPECT_FALSE(form_.close());
  EXPECT_TRUE(form_.records().isOpen());
  type("dc_adr", "30");
  EXPECT_TRUE(form_.close());
  EXPECT_EQ(stored("SELECT DC_ADR FROM LOCO_DAT WHERE ST_SNAME = 'A3'").toInt(), 30);
}

TEST_F(RecordFormTest, ARecordThatCannotBeReadIsNeverSaved) {
  open();
  base_.run("DELETE FROM LOCO_DAT WHERE DC_ADR = 5");
  form_.MoveNext();
  EXPECT_EQ(prompt_.shown, QStringList{str("Der Datensatz wurde gelöscht.")});
  type("fz_lname", "x");
  EXPECT_EQ(form_.editMode(), EditMode::None);
  EXPECT_FALSE(form_.prepareProgramming());
  form_.MoveFirst();
  EXPECT_EQ(text("st_sname"), str("A3"));
  EXPECT_EQ(stored("SELECT COUNT(*) FROM LOCO_DAT").toInt(), 2);
}

TEST_F(RecordFormTest, ARecordThatCannotBeReadIsNotCopied) {
  open();
  form_.MoveLast();
  form_.mnuEditCopy();
  form_.MoveFirst();
  base_.run("DELETE FROM LOCO_DAT WHERE DC_ADR = 5");
  form_.MoveNext();
  prompt_.shown.clear();
  form_.mnuEditCopy();
  EXPECT_EQ(prompt_.shown.size(), 1);
  form_.MoveFirst();
  form_.mnuEditInsert();
  EXPECT_EQ(text("st_sname"), str("V7")) << "the copy of before";
}

TEST_F(RecordFormTest, ADeleteThatTheStorageRefusesIsToldAndLosesNoChange) {
  open();
  type("fz_lname", "davor");
  prompt_.answers = {Answer::Yes};
  base_.run("PRAGMA query_only = 1");
  form_.butDelete();
  base_.run("PRAGMA query_only = 0");
  EXPECT_EQ(prompt_.shown, QStringList({str("Datensatz wirklich löschen?"),
                                        str("Die Datenbank ist schreibgeschützt.")}));
  type("fz_code", "danach");
  form_.MoveNext();
  EXPECT_EQ(stored("SELECT FZ_LNAME FROM LOCO_DAT WHERE DC_ADR = 3").toString(), str("davor"));
  EXPECT_EQ(stored("SELECT FZ_CODE FROM LOCO_DAT WHERE DC_ADR = 3").toString(), str("danach"));
}

TEST_F(RecordFormTest, AChangeThatTheStorageRefusesIsToldAndStoredLater) {
  open();
  type("fz_lname", "davor");
  base_.run("PRAGMA query_only = 1");
  form_.MoveNext();
  EXPECT_EQ(prompt_.shown, QStringList{str("Die Datenbank ist schreibgeschützt.")});
  EXPECT_EQ(form_.position(), 0);
  EXPECT_EQ(text("fz_lname"), str("davor"));
  base_.run("PRAGMA query_only = 0");
  form_.MoveNext();
  EXPECT_EQ(form_.position(), 1);
  EXPECT_EQ(stored("SELECT FZ_LNAME FROM LOCO_DAT WHERE DC_ADR = 3").toString(), str("davor"));
}

TEST_F(RecordFormTest, RequeryShowsAFilterAndKeepsTheSetWhenItIsRefused) {
  open();
  form_.requery(str("SELECT * FROM LOCO_DAT WHERE DC_ADR > 3"));
  EXPECT_EQ(text("Data1"), str("Satz  1 von  2"));
  EXPECT_THROW(form_.requery(str("SELECT * FROM LOCO_DAT WHERE DC_ADR=*")), StorageError);
  EXPECT_EQ(text("Data1"), str("Satz  1 von  2"));
  form_.requery(str("SELECT * FROM LOCO_DAT WHERE DC_ADR > 30"));
  EXPECT_EQ(text("Data1"), str("keine Daten"));
}

}  // namespace
}  // namespace lokari
