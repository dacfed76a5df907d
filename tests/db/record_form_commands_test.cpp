// New record, confirm, cancel, delete, copy and paste, pictures, the decoder window's way back.
#include <QBuffer>
#include <QDir>
#include <QImage>

#include "db/record_form.h"
#include "tests/db/form_fixture.h"

namespace lokari {
namespace {

class FormCommands : public test::FormFixture {
 protected:
  static QByteArray picture(const char* format) {
    QImage image(4, 3, QImage::Format_RGB32);
    image.fill(Qt::red);
    QByteArray data;
    QBuffer buffer(&data);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, format);
    return data;
  }

  QString write(const char* name, const QByteArray& data) {
    QFile file(QDir(base_.folder()).filePath(str(name)));
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(data);
    return file.fileName();
  }

  void newVehicle(const char* address, const char* name) {
    form_.butNew();
    type("dc_adr", address);
    type("st_sname", name);
  }
};

TEST_F(FormCommands, NewRecordModeHidesTheToolbarAndLocksTheRest) {
  open();
  type("fz_era", "III");
  form_.butNew();
  for (const char* control : {"butTable", "butFind", "butNew", "butDelete", "butFilter"}) {
    EXPECT_FALSE(visible(control)) << control;
  }
  for (const char* control :
       {"butPicLink", "Data1", "butProg", "butDrive", "butSwitch", "mnuDbPrint", "mnuEditNew",
        "mnuEditCopy", "mnuEditDelete", "mnuEditFind"}) {
    EXPECT_FALSE(enabled(control)) << control;
  }
  EXPECT_TRUE(visible("butOK"));
  EXPECT_TRUE(visible("butCancel"));
  EXPECT_EQ(text("butOK"), str("OK"));
  EXPECT_EQ(text("Data1"), str("neuer Satz"));
  EXPECT_EQ(text("dc_type"), str("1"));
  EXPECT_EQ(form_.typeOption(), 1);
  EXPECT_EQ(text("fz_era"), QString());
  EXPECT_EQ(text("st_sname"), QString());
  EXPECT_EQ(form_.editMode(), EditMode::Add);
  EXPECT_EQ(form_.position(), 0);
  EXPECT_EQ(focus_, QStringList{str("dc_adr")});
}

TEST_F(FormCommands, AConfirmedRecordStandsAtTheEndWithAnEmptyCollection) {
  open();
  newVehicle("1", "N1");
  form_.butOK();
  EXPECT_EQ(text("Data1"), str("Satz  4 von  4"));
  EXPECT_EQ(text("st_sname"), str("N1"));
  EXPECT_EQ(stored("SELECT DC_COLL FROM LOCO_DAT WHERE DC_ADR = 1").toString(), QString());
  EXPECT_FALSE(stored("SELECT DC_COLL FROM LOCO_DAT WHERE DC_ADR = 1").isNull());
  EXPECT_TRUE(visible("butNew"));
  EXPECT_FALSE(visible("butOK"));
  EXPECT_EQ(text("butOK"), str("Suchen"));
  EXPECT_TRUE(enabled("Data1"));
  EXPECT_TRUE(form_.savedOkCaption.isEmpty());
}

TEST_F(FormCommands, ConfirmingWithoutAnAddressBeepsAndStays) {
  open();
  form_.butNew();
  type("st_sname", "x");
  form_.butOK();
  EXPECT_EQ(prompt_.beeps, 1);
  EXPECT_EQ(form_.editMode(), EditMode::Add);
  EXPECT_TRUE(visible("butOK"));
}

TEST_F(FormCommands, ConfirmingAnInvalidRecordStays) {
  open();
  newVehicle("10240", "x");
  form_.butOK();
  EXPECT_EQ(prompt_.shown, QStringList{str("Adresse ungültig")});
  EXPECT_EQ(form_.editMode(), EditMode::Add);
  EXPECT_TRUE(visible("butOK"));
}

TEST_F(FormCommands, ConfirmingATakenAddressKeepsTheNewRecord) {
  open();
  newVehicle("3", "x");
  type("dc_coll", "Anlage");
  form_.butOK();
  EXPECT_EQ(prompt_.shown, QStringList{str("Datensatz mit dieser Adresse bereits vorhanden!")});
  EXPECT_EQ(form_.editMode(), EditMode::Add);
  type("dc_adr", "4");
  form_.butOK();
  EXPECT_EQ(text("Data1"), str("Satz  4 von  4"));
}

TEST_F(FormCommands, ADropDownInANewRecordIsNotStoredAtOnce) {
  open();
  newVehicle("4", "x");
  type("fz_era", "III");
  EXPECT_EQ(form_.editMode(), EditMode::Add);
  form_.butOK();
  EXPECT_EQ(stored("SELECT FZ_ERA FROM LOCO_DAT WHERE DC_ADR = 4").toString(), str("III"));
}

TEST_F(FormCommands, CancelReturnsToTheRecordAndItsWorkingCopy) {
  base_.run("UPDATE LOCO_DAT SET DC_CV = ? WHERE DC_ADR = 3", {QByteArray(4865, '\x09')});
  open();
  newVehicle("4", "x");
  EXPECT_EQ(form_.workingCopy().recCvValues[0], QByteArray(4865, '\0'));
  form_.butCancel();
  EXPECT_EQ(text("Data1"), str("Satz  1 von  3"));
  EXPECT_EQ(text("dc_adr"), str("3"));
  EXPECT_EQ(text("dc_coll"), str("Anlage"));
  EXPECT_EQ(form_.workingCopy().recCvValues[0], QByteArray(4865, '\x09'));
  EXPECT_TRUE(visible("butNew"));
  EXPECT_TRUE(enabled("mnuEditNew"));
  EXPECT_EQ(stored("SELECT COUNT(*) FROM LOCO_DAT").toInt(), 3);
}

TEST_F(FormCommands, WithAnEmptyTableCancelBeepsAndStays) {
  base_.run("DELETE FROM LOCO_DAT");
  open();
  form_.butNew();
  form_.butCancel();
  EXPECT_EQ(prompt_.beeps, 1);
  EXPECT_EQ(form_.editMode(), EditMode::Add);
  EXPECT_TRUE(visible("butOK"));
}

TEST_F(FormCommands, TheFirstRecordOfAnEmptyTableIsStored) {
  base_.run("DELETE FROM LOCO_DAT");
  open();
  EXPECT_EQ(text("Data1"), str("keine Daten"));
  newVehicle("12", "Erste");
  form_.butOK();
  EXPECT_EQ(text("Data1"), str("Satz  1 von  1"));
  EXPECT_TRUE(visible("butNew"));
}

TEST_F(FormCommands, AnUntouchedBlankRecordOfAnEmptyTableIsNotStored) {
  base_.run("DELETE FROM LOCO_DAT");
  open();
  form_.butNew();
  EXPECT_TRUE(form_.close());
  EXPECT_EQ(stored("SELECT COUNT(*) FROM LOCO_DAT").toInt(), 0);
}

TEST_F(FormCommands, DeleteInNewRecordModeReturnsToTheKeptRecordAndLeavesTheButtons) {
  open();
  form_.MoveNext();
  newVehicle("4", "x");
  form_.butDelete();
  EXPECT_TRUE(prompt_.shown.isEmpty());
  EXPECT_EQ(text("st_sname"), str("A5"));
  EXPECT_EQ(form_.editMode(), EditMode::None);
  EXPECT_TRUE(visible("butOK"));
  EXPECT_FALSE(visible("butNew"));
  form_.butCancel();
  EXPECT_TRUE(visible("butNew"));
}

TEST_F(FormCommands, ConfirmingAfterADeleteInNewRecordModeRestoresTheToolbar) {
  open();
  newVehicle("4", "x");
  form_.butDelete();
  form_.butOK();
  EXPECT_TRUE(prompt_.shown.isEmpty());
  EXPECT_TRUE(visible("butNew"));
  EXPECT_FALSE(visible("butOK"));
  EXPECT_EQ(text("butOK"), str("Suchen"));
  EXPECT_EQ(stored("SELECT COUNT(*) FROM LOCO_DAT").toInt(), 3);
}

TEST_F(FormCommands, ANewRecordStoredByTheWayLeavesTheModeAndIsOnShow) {
  open();
  newVehicle("4", "x");
  EXPECT_TRUE(form_.storeEdit());
  EXPECT_EQ(text("Data1"), str("Satz  4 von  4"));
  EXPECT_TRUE(visible("butNew"));
  type("fz_lname", "gehört zur 4");
  form_.MoveFirst();
  EXPECT_EQ(stored("SELECT FZ_LNAME FROM LOCO_DAT WHERE DC_ADR = 4").toString(),
            str("gehört zur 4"));
  EXPECT_TRUE(stored("SELECT FZ_LNAME FROM LOCO_DAT WHERE DC_ADR = 3").isNull());
}

TEST_F(FormCommands, AnUntouchedBlankRecordOfAnEmptyTableWaitsForItsTexts) {
  base_.run("DELETE FROM LOCO_DAT");
  open();
  form_.butNew();
  EXPECT_TRUE(form_.storeEdit());
  type("dc_adr", "12");
  type("st_sname", "Erste");
  form_.butOK();
  EXPECT_TRUE(prompt_.shown.isEmpty());
  EXPECT_EQ(text("Data1"), str("Satz  1 von  1"));
}

TEST_F(FormCommands, DeletingAsksAndDoesNothingOnNo) {
  open();
  prompt_.answers = {Answer::No};
  form_.butDelete();
  EXPECT_EQ(prompt_.shown, QStringList{str("Datensatz wirklich löschen?")});
  EXPECT_EQ(form_.records().count(), 3);
}

TEST_F(FormCommands, DeletingShowsTheNextRecordAndAtTheEndTheOneBefore) {
  open();
  prompt_.answers = {Answer::Yes, Answer::Yes};
  form_.butDelete();
  EXPECT_EQ(text("Data1"), str("Satz  1 von  2"));
  EXPECT_EQ(text("st_sname"), str("A5"));
  form_.MoveLast();
  form_.butDelete();
  EXPECT_EQ(text("st_sname"), str("A5"));
  EXPECT_EQ(text("Data1"), str("Satz  1 von  1"));
}

TEST_F(FormCommands, DeletingTheOnlyRecordStartsNewRecordMode) {
  base_.run("DELETE FROM LOCO_DAT WHERE DC_ADR > 3");
  open();
  prompt_.answers = {Answer::Yes};
  form_.butDelete();
  EXPECT_EQ(text("Data1"), str("neuer Satz"));
  EXPECT_EQ(form_.editMode(), EditMode::Add);
  EXPECT_TRUE(visible("butOK"));
}

TEST_F(FormCommands, DeletingDropsAnInvalidEdit) {
  open();
  type("dc_adr", "20000");
  prompt_.answers = {Answer::Yes};
  form_.butDelete();
  EXPECT_EQ(prompt_.shown.size(), 1);
  EXPECT_EQ(form_.records().count(), 2);
  EXPECT_EQ(text("st_sname"), str("A5"));
}

TEST_F(FormCommands, CopyNewAddressPasteTakesAllButAddressAndUserInfo2) {
  base_.run(
      "UPDATE LOCO_DAT SET DC_CV = ?, DC_CV_NAME_2 = 'Sommer', DC_MANUF = 145, DC_DECODER = "
      "'ZX100', "
      "DC_DEC_VER = 'Sommer', FZ_ERA = 'IV', MD_PRICE = 149.9, MD_USER_1 = 'eins', "
      "MD_USER_2 = 'zwei', MD_USER_3 = 'drei', DC_TYPE = 3, MD_INFO = 'Zeile' || char(13,10) || "
      "'b' "
      "WHERE DC_ADR = 3",
      {QByteArray(4865, '\x05')});
  open();
  EXPECT_FALSE(enabled("mnuEditInsert"));
  form_.mnuEditCopy();
  EXPECT_TRUE(enabled("mnuEditInsert"));
  newVehicle("40", "x");
  form_.mnuEditInsert();
  EXPECT_EQ(text("dc_adr"), str("40"));
  EXPECT_EQ(form_.editMode(), EditMode::Add);
  EXPECT_EQ(form_.typeOption(), 3);
  form_.butOK();
  EXPECT_TRUE(prompt_.shown.isEmpty());
  EXPECT_EQ(text("st_sname"), str("A3"));
  EXPECT_EQ(text("dc_coll"), str("Anlage"));
  EXPECT_EQ(text("fz_era"), str("IV"));
  EXPECT_EQ(text("md_price"), str("149,90"));
  EXPECT_EQ(text("md_info"), str("Zeile\r\nb"));
  EXPECT_EQ(text("md_user_1"), str("eins"));
  EXPECT_EQ(text("md_user_2"), QString());
  EXPECT_EQ(text("md_user_3"), str("drei"));
  EXPECT_EQ(text("dc_manuf"), str("Zimo"));
  EXPECT_EQ(text("dc_decoder"), str("ZX100"));
  EXPECT_EQ(form_.workingCopy().recCvValues[0], QByteArray(4865, '\x05'));
  EXPECT_EQ(form_.workingCopy().recCvName[2], str("Sommer"));
  EXPECT_EQ(form_.workingCopy().recSetName, str("Sommer"));
}

TEST_F(FormCommands, APasteOverARecordIsStoredByTheNextMove) {
  base_.run("UPDATE LOCO_DAT SET DC_CV = ? WHERE DC_ADR = 3", {QByteArray(4865, '\x05')});
  open();
  form_.mnuEditCopy();
  form_.MoveLast();
  form_.mnuEditInsert();
  EXPECT_EQ(form_.editMode(), EditMode::Edit);
  form_.MoveFirst();
  EXPECT_EQ(stored("SELECT DC_CV FROM LOCO_DAT WHERE DC_ADR = 7").toByteArray(),
            QByteArray(4865, '\x05'));
}

TEST_F(FormCommands, APasteOverARecordStoresNothingItself) {
  base_.run("UPDATE LOCO_DAT SET FZ_ERA = 'IV', FZ_LINE = 'DB', MD_MOTOR = 'x' WHERE DC_ADR = 3");
  open();
  form_.mnuEditCopy();
  form_.MoveLast();
  form_.mnuEditInsert();
  EXPECT_EQ(text("fz_era"), str("IV"));
  EXPECT_EQ(stored("SELECT DC_COLL FROM LOCO_DAT WHERE DC_ADR = 7").toString(), str("Vitrine"));
  EXPECT_TRUE(stored("SELECT FZ_ERA FROM LOCO_DAT WHERE DC_ADR = 7").isNull());
  form_.MoveFirst();
  EXPECT_TRUE(prompt_.shown.isEmpty());
  EXPECT_EQ(stored("SELECT DC_COLL FROM LOCO_DAT WHERE DC_ADR = 7").toString(), str("Anlage"));
  EXPECT_EQ(stored("SELECT FZ_ERA FROM LOCO_DAT WHERE DC_ADR = 7").toString(), str("IV"));
  EXPECT_EQ(stored("SELECT MD_MOTOR FROM LOCO_DAT WHERE DC_ADR = 7").toString(), str("x"));
}

TEST_F(FormCommands, APasteIntoACollectionThatHasTheAddressIsRefusedOnceAtTheNextMove) {
  base_.addVehicle(3, str("Vitrine"), str("V3"));
  base_.run("UPDATE LOCO_DAT SET FZ_ERA = 'IV' WHERE ST_SNAME = 'A3'");
  open();
  form_.mnuEditCopy();
  ASSERT_EQ(form_.FindFirst(str("ST_SNAME = \"V3\"")), FindResult::Found);
  form_.mnuEditInsert();
  EXPECT_TRUE(prompt_.shown.isEmpty());
  form_.MoveFirst();
  EXPECT_EQ(prompt_.shown, QStringList{str("Datensatz mit dieser Adresse bereits vorhanden!")});
  EXPECT_EQ(form_.editMode(), EditMode::Edit);
}

TEST_F(FormCommands, ACopyWithoutATypeLeavesTheTypeOfTheRecord) {
  base_.run("UPDATE LOCO_DAT SET DC_TYPE = NULL WHERE DC_ADR = 3");
  open();
  form_.mnuEditCopy();
  newVehicle("40", "x");
  form_.mnuEditInsert();
  EXPECT_EQ(form_.typeOption(), 1);
  form_.butOK();
  EXPECT_EQ(stored("SELECT DC_TYPE FROM LOCO_DAT WHERE DC_ADR = 40").toInt(), 1);
}

TEST_F(FormCommands, APasteAfterTheDecoderWindowBringsItsOwnDecoder) {
  base_.run("UPDATE LOCO_DAT SET DC_MANUF = 145, DC_DECODER = 'ZX100' WHERE DC_ADR = 3");
  open();
  form_.mnuEditCopy();
  form_.MoveLast();
  ASSERT_TRUE(form_.prepareProgramming());
  CvRecord record = form_.workingCopy();
  record.recManuf = 145;
  record.recDecoder = str("ZX200");
  form_.storeProgrammed(record, str("7"), str("Zimo"));
  form_.mnuEditInsert();
  form_.MoveFirst();
  EXPECT_EQ(stored("SELECT DC_DECODER FROM LOCO_DAT WHERE DC_ADR = 7").toString(), str("ZX100"));
}

TEST_F(FormCommands, ThePictureIsCopiedThroughTheClipboard) {
  const QByteArray image = picture("PNG");
  base_.run("UPDATE LOCO_DAT SET MD_PIC = ? WHERE DC_ADR = 3", {image});
  open();
  form_.mnuEditCopy();
  EXPECT_EQ(desktop_.clipboard, image);
  newVehicle("40", "x");
  EXPECT_TRUE(form_.picture().isEmpty());
  form_.mnuEditInsert();
  form_.butOK();
  EXPECT_EQ(form_.picture(), image);
  EXPECT_EQ(stored("SELECT MD_PIC FROM LOCO_DAT WHERE DC_ADR = 40").toByteArray(), image);
}

TEST_F(FormCommands, CopyingARecordWithoutAPictureEmptiesTheClipboard) {
  desktop_.clipboard = "x";
  open();
  form_.mnuEditCopy();
  EXPECT_TRUE(desktop_.clipboard.isEmpty());
}

TEST_F(FormCommands, APictureIsLoadedAndItsFolderKept) {
  open();
  const QByteArray image = picture("BMP");
  const QString path = write("lok.bmp", image);
  prompt_.fileNames = {path};
  form_.butPicLink();
  EXPECT_EQ(prompt_.fileQuestions.at(0).title, str("Grafik öffnen"));
  EXPECT_EQ(prompt_.fileQuestions.at(0).filter,
            str("Bilder(*.bmp,*.jpg)|*.bmp;*.jpg|Alle Dateien (*.*)|*.*"));
  EXPECT_EQ(prompt_.fileQuestions.at(0).folder, str("/app"));
  EXPECT_EQ(form_.editMode(), EditMode::Edit);
  EXPECT_EQ(form_.picture(), image);
  EXPECT_EQ(ini_.getString(str("LOKARI"), str("PicDir"), QString(), 128), base_.folder() + u'/');
  form_.MoveNext();
  EXPECT_TRUE(form_.picture().isEmpty());
  form_.MoveFirst();
  EXPECT_EQ(form_.picture(), image);
}

TEST_F(FormCommands, AFileThatIsNoPictureIsRefusedAndTheOldPictureStays) {
  open();
  prompt_.fileNames = {write("lok.bmp", "no picture")};
  form_.butPicLink();
  EXPECT_EQ(prompt_.shown, QStringList{str("Grafikdatei lok.bmp kann nicht geladen werden!")});
  EXPECT_EQ(form_.editMode(), EditMode::None);
}

TEST_F(FormCommands, APictureThatEndsBehindItsHeadIsRefused) {
  open();
  prompt_.fileNames = {write("halb.bmp", picture("BMP").left(30))};
  form_.butPicLink();
  EXPECT_EQ(prompt_.shown, QStringList{str("Grafikdatei halb.bmp kann nicht geladen werden!")});
  EXPECT_EQ(form_.editMode(), EditMode::None);
}

TEST_F(FormCommands, APictureThatIsNotThereIsRefused) {
  open();
  prompt_.fileNames = {base_.folder() + str("/fort.bmp")};
  form_.butPicLink();
  EXPECT_EQ(prompt_.shown, QStringList{str("Grafikdatei fort.bmp kann nicht geladen werden!")});
}

TEST_F(FormCommands, ACancelledPictureDialogDoesNothing) {
  open();
  form_.butPicLink();
  EXPECT_TRUE(prompt_.shown.isEmpty());
  EXPECT_EQ(form_.editMode(), EditMode::None);
}

TEST_F(FormCommands, ADeletedPictureGoesWithTheRecordWhenItIsLeft) {
  base_.run("UPDATE LOCO_DAT SET MD_PIC = ? WHERE DC_ADR = 3", {picture("BMP")});
  open();
  form_.butPicDel();
  EXPECT_TRUE(form_.picture().isEmpty());
  form_.MoveNext();
  EXPECT_TRUE(stored("SELECT MD_PIC FROM LOCO_DAT WHERE DC_ADR = 3").isNull());
}

TEST_F(FormCommands, TheDecoderWindowNeedsATypeAndNoFunctionUnit) {
  base_.run("UPDATE LOCO_DAT SET DC_TYPE = NULL WHERE DC_ADR = 3");
  base_.run("UPDATE LOCO_DAT SET DC_TYPE = 2 WHERE DC_ADR = 5");
  open();
  EXPECT_FALSE(form_.prepareProgramming());
  EXPECT_EQ(prompt_.shown.last(), str("Type nicht festgelegt!"));
  EXPECT_FALSE(form_.adrCheckOff);
  form_.MoveNext();
  EXPECT_FALSE(form_.prepareProgramming());
  EXPECT_EQ(prompt_.shown.last(), str("Programmierfenster für Funktionsteile nicht verfügbar!"));
  form_.MoveNext();
  EXPECT_TRUE(form_.prepareProgramming());
  EXPECT_TRUE(form_.adrCheckOff);
}

TEST_F(FormCommands, WithoutAMakerTheDecodersNameIsEmptied) {
  base_.run("UPDATE LOCO_DAT SET DC_DECODER = 'ZX100' WHERE DC_ADR = 3");
  open();
  EXPECT_TRUE(form_.prepareProgramming());
  EXPECT_EQ(form_.workingCopy().recDecoder, QString());
}

TEST_F(FormCommands, WhatTheDecoderWindowHandsBackIsOnDiskAfterTheNextMove) {
  open();
  ASSERT_TRUE(form_.prepareProgramming());
  CvRecord record = form_.workingCopy();
  record.recCvValues[0][0] = 3;
  record.recCvMarks[0][0] = '1';
  record.recCvName[0] = str("Set 1");
  record.recManuf = 145;
  record.recDecoder = str("ZX100");
  record.recSetName = str("Set 1");
  form_.storeProgrammed(record, str("3"), str("Zimo"));
  EXPECT_EQ(form_.editMode(), EditMode::Edit);
  EXPECT_EQ(text("dc_decoder"), str("ZX100"));
  EXPECT_EQ(text("dc_manuf"), str("Zimo"));
  EXPECT_EQ(text("st_sname"), str("A3"));
  EXPECT_TRUE(form_.close());
  EXPECT_EQ(stored("SELECT DC_CV FROM LOCO_DAT WHERE DC_ADR = 3").toByteArray(),
            record.recCvValues[0]);
  EXPECT_EQ(stored("SELECT DC_CV_ST FROM LOCO_DAT WHERE DC_ADR = 3").toByteArray(),
            record.recCvMarks[0]);
  EXPECT_EQ(stored("SELECT DC_MANUF FROM LOCO_DAT WHERE DC_ADR = 3").toInt(), 145);
  EXPECT_EQ(stored("SELECT DC_DEC_VER FROM LOCO_DAT WHERE DC_ADR = 3").toString(), str("Set 1"));
}

TEST_F(FormCommands, AnAddressChangedInTheDecoderWindowIsStoredAsWell) {
  open();
  ASSERT_TRUE(form_.prepareProgramming());
  form_.storeProgrammed(form_.workingCopy(), str("33"), QString());
  form_.MoveNext();
  EXPECT_EQ(stored("SELECT DC_ADR FROM LOCO_DAT WHERE ST_SNAME = 'A3'").toInt(), 33);
}

/// Marks of the address in every set, and one of another CV.
CvRecord withAddressMarks(CvRecord record) {
  for (QByteArray& marks : record.recCvMarks) {
    for (const int place : {0, 2, 16, 17}) marks[place] = '1';
  }
  return record;
}

TEST_F(FormCommands, AnAddressThatIsTypedHasNoMarkOfTheOneBefore) {
  open();
  ASSERT_TRUE(form_.prepareProgramming());
  form_.storeProgrammed(withAddressMarks(form_.workingCopy()), str("3"), QString());
  ASSERT_TRUE(form_.storeIfValid());
  form_.edited(str("dc_adr"), str("77"));
  form_.MoveNext();
  for (const char* column : {"DC_CV_ST", "DC_CV_4_ST"}) {
    const QByteArray marks =
        stored(str("SELECT %1 FROM LOCO_DAT WHERE DC_ADR = 77").arg(str(column)).toUtf8())
            .toByteArray();
    ASSERT_GT(marks.size(), 17);
    for (const int place : {0, 16, 17}) EXPECT_EQ(marks.at(place), '\0') << column << place;
    EXPECT_EQ(marks.at(2), '1') << "CV 3 is what it was";
  }
}

TEST_F(FormCommands, APastedCopyKeepsItsMarksButNotThoseOfTheOtherAddress) {
  open();
  ASSERT_TRUE(form_.prepareProgramming());
  form_.storeProgrammed(withAddressMarks(form_.workingCopy()), str("3"), QString());
  ASSERT_TRUE(form_.storeIfValid());
  form_.mnuEditCopy();
  form_.butNew();
  form_.edited(str("dc_adr"), str("78"));
  form_.mnuEditInsert();
  EXPECT_EQ(form_.workingCopy().recCvMarks[0].at(2), '1');
  for (const int place : {0, 16, 17}) {
    EXPECT_EQ(form_.workingCopy().recCvMarks[0].at(place), '\0') << place;
  }
}

}  // namespace
}  // namespace lokari
