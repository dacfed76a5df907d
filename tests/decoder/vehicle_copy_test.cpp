// Copying CVs onto other vehicles: which records, which bytes, all or none, and the tab buttons.
#include "decoder/vehicle_copy.h"

#include <QSqlQuery>

#include "base/ini_file.h"
#include "bench_fixture.h"
#include "db/record_form.h"
#include "db/reference_lists.h"
#include "support/ini_text.h"
#include "support/recording_desktop.h"

namespace lokari {
namespace {

constexpr const char* kSome =
    "[X]\nSPEEDTABLE=N\n"
    "CV_2=zwei\nCV_3=drei\nCV_4=vier\nCV_5=fuenf\nCV_6=sechs\nCV_9=neun,0-255,0,2\n"
    "CV_30=a,0-255,0,5\nCV_31=b,0-255,0,5\nCV_40=c,0-255,0,3\n";

constexpr const char* kValueColumns[] = {"DC_CV", "DC_CV_1", "DC_CV_2", "DC_CV_3", "DC_CV_4"};

/// Hands everything on, and has the user press Abbruch at one of the reports.
class PressedView final : public CommView {
 public:
  PressedView(CommView& shown, StationLink& link) : shown_(shown), link_(link) {}
  void setStatus(const QString& text) override { shown_.setStatus(text); }
  void setProgress(double percent) override {
    shown_.setProgress(percent);
    if (++reports_ == cancelAt) link_.cancelRequested = true;
  }
  void resetProgress() override { shown_.resetProgress(); }
  void setProgressEnabled(bool enabled) override { shown_.setProgressEnabled(enabled); }
  void setCancelCaption(const QString& caption) override { shown_.setCancelCaption(caption); }
  void hide() override { shown_.hide(); }

  int cancelAt = 0;

 private:
  CommView& shown_;
  StationLink& link_;
  int reports_ = 0;
};

class VehicleCopy : public BenchFixture {
 protected:
  VehicleCopy() {
    addVehicle(3, "Anlage", 1, QByteArray(kCvArraySize, '\7'));
    addVehicle(5, "Anlage", 2, QByteArray("\1\2\3", 3));
    addVehicle(7, "Vitrine", 3, QByteArray(10, '\5'));
    addVehicle(9, "Vitrine", 1, {});
    RecordSet records;
    records.open(*ownDatabase, QString::fromUtf16(kDefaultQuery));
    form.bind(*ownDatabase, std::move(records));
    bench = std::make_unique<DecoderBench>(BenchParts{settings, clock, prompt, link, catalogue,
                                                      folder.path(), QStringList(256), &form});
    for (int cv = 1; cv <= 60; ++cv) record.recCvValues[0][cv - 1] = static_cast<char>(cv + 100);
    openEco(kSome);
  }

  /// All five sets have the same values; empty is Null.
  void addVehicle(int address, const char* collection, int type, const QByteArray& values) {
    const QVariant array = values.isNull() ? QVariant() : QVariant(values);
    ownDatabase->write(
        QStringLiteral("INSERT INTO LOCO_DAT (DC_ADR, DC_COLL, DC_TYPE, ST_SNAME, DC_CV, DC_CV_1, "
                       "DC_CV_2, DC_CV_3, DC_CV_4, DC_CV_ST) VALUES (?, ?, ?, 'X', ?, ?, ?, ?, ?, "
                       "?)"),
        {address, QString::fromUtf8(collection), type, array, array, array, array, array,
         QByteArray(kCvArraySize, '1')});
  }

  void addMany(int count) {
    ownDatabase->transaction([&] {
      for (int i = 0; i < count; ++i) addVehicle(1000 + i, "Viele", 1, {});
    });
  }

  QByteArray stored(int address, const char* column) const {
    QByteArray result;
    database->read(
        QStringLiteral("SELECT %1 FROM LOCO_DAT WHERE DC_ADR = ?").arg(QString::fromUtf8(column)),
        {address}, [&result](const QSqlQuery& row) { result = row.value(0).toByteArray(); });
    return result;
  }
  int storedByte(int address, int cv, const char* column = "DC_CV") const {
    const QByteArray array = stored(address, column);
    return array.size() < cv ? -1 : static_cast<quint8>(array[cv - 1]);
  }

  void copyOf(const char* tab) {
    prompt.answers = {Answer::Ok};
    bench->buttonClicked(QStringLiteral("cmdCopy") + QString::fromUtf8(tab));
  }
  void markForWriting(int cv) { check(qPrintable(QStringLiteral("chkWrt_%1").arg(cv))); }

  /// Plays the window's part: the work runs with the recording view on show.
  void playProgress() {
    bench->progressBox = [this](const std::function<void()>& work) {
      ++dialogs;
      link.setView(&pressedView);
      work();
      link.setView(&view);
    };
  }

  test::RecordingDesktop desktop;
  test::IniText iniText{"[LOKARI]\r\n"};
  IniFile ini{iniText.path()};
  RecordForm form{{prompt, desktop, ini, folder.path()}};
  PressedView pressedView{view, link};
  int dialogs = 0;
};

TEST_F(VehicleCopy, AsksWithTheCountAndCopiesOnlyOnOk) {
  markRowForWriting(30);
  markRowForWriting(31);
  bench->buttonClicked(QStringLiteral("cmdCopyOther_1"));
  EXPECT_EQ(prompt.shown, QStringList("2 CV-Wert(e) auf andere Fahrzeuge kopieren?"));
  EXPECT_EQ(storedByte(3, 30), 7);
  copyOf("Other_1");
  EXPECT_EQ(storedByte(3, 30), 130);
}

TEST_F(VehicleCopy, ItIsToldHowManyVehiclesHaveChanged) {
  markRowForWriting(30);
  copyOf("Other_1");
  EXPECT_EQ(prompt.shown.last(), "1 CV-Wert(e) auf 3 Fahrzeug(e) kopiert.");
}

TEST_F(VehicleCopy, WithNoWriteBoxSetTheCountIsZero) {
  copyOf("Drv");
  EXPECT_EQ(prompt.shown.first(), "0 CV-Wert(e) auf andere Fahrzeuge kopieren?");
  EXPECT_EQ(stored(3, "DC_CV"), QByteArray(kCvArraySize, '\7'));
}

TEST_F(VehicleCopy, OkWithoutACvWritesNothingAndSaysSo) {
  copyOf("Drv");
  EXPECT_EQ(
      prompt.shown.last(),
      "Auf dieser Seite ist keine CV zum Schreiben angekreuzt, kein Fahrzeug wurde geändert.");
  EXPECT_EQ(stored(5, "DC_CV"), QByteArray("\1\2\3", 3)) << "not even brought to full size";
  EXPECT_TRUE(stored(9, "DC_CV").isNull());
}

TEST_F(VehicleCopy, AllFiveSetsOfEveryRecordTakeTheBytes) {
  markRowForWriting(30);
  copyOf("Other_1");
  for (const int address : {3, 5, 9})
    for (const char* column : kValueColumns)
      EXPECT_EQ(storedByte(address, 30, column), 130) << address << ' ' << column;
}

TEST_F(VehicleCopy, OtherBytesStay) {
  markRowForWriting(30);
  copyOf("Other_1");
  QByteArray expected(kCvArraySize, '\7');
  expected[29] = static_cast<char>(130);
  for (const char* column : kValueColumns) EXPECT_EQ(stored(3, column), expected) << column;
}

TEST_F(VehicleCopy, ANullFieldGetsAFullArrayWithTheListedCvsOnly) {
  markRowForWriting(30);
  copyOf("Other_1");
  QByteArray expected(kCvArraySize, '\0');
  expected[29] = static_cast<char>(130);
  EXPECT_EQ(stored(9, "DC_CV"), expected);
}

TEST_F(VehicleCopy, AShortFieldKeepsItsBytesAndComesToFullSize) {
  markRowForWriting(30);
  copyOf("Other_1");
  QByteArray expected(kCvArraySize, '\0');
  expected.replace(0, 3, QByteArray("\1\2\3"));
  expected[29] = static_cast<char>(130);
  EXPECT_EQ(stored(5, "DC_CV_3"), expected);
}

TEST_F(VehicleCopy, ARecordOfTypeThreeStays) {
  markRowForWriting(30);
  copyOf("Other_1");
  for (const char* column : kValueColumns) EXPECT_EQ(stored(7, column), QByteArray(10, '\5'));
}

TEST_F(VehicleCopy, AChangedByteLosesItsMarkAndTheOthersKeepTheirs) {
  ownDatabase->write(QStringLiteral("UPDATE LOCO_DAT SET DC_CV_2_ST = ? WHERE DC_ADR = 3"),
                     {QByteArray(kCvArraySize, '2')});
  markRowForWriting(30);
  setMark(30, CvMark::Failed);
  copyOf("Other_1");
  QByteArray expected(kCvArraySize, '1');
  expected[29] = 0;
  EXPECT_EQ(stored(3, "DC_CV_ST"), expected) << "nobody has read the new value there";
  QByteArray failed(kCvArraySize, '2');
  failed[29] = 0;
  EXPECT_EQ(stored(3, "DC_CV_2_ST"), failed) << "each set has its own";
}

TEST_F(VehicleCopy, AByteThatHeldTheValueBeforeKeepsItsMark) {
  bench->setCvval(7, 29);
  markRowForWriting(30);
  copyOf("Other_1");
  EXPECT_EQ(stored(3, "DC_CV_ST"), QByteArray(kCvArraySize, '1'));
  EXPECT_EQ(stored(9, "DC_CV_ST")[29], '\0') << "its value was another";
}

TEST_F(VehicleCopy, MarksThatAreNullOrShortStaySo) {
  ownDatabase->write(QStringLiteral("UPDATE LOCO_DAT SET DC_CV_ST = ? WHERE DC_ADR = 5"),
                     {QByteArray("111", 3)});
  ASSERT_TRUE(stored(5, "DC_CV_1_ST").isNull());
  markRowForWriting(30);
  copyOf("Other_1");
  EXPECT_EQ(stored(5, "DC_CV_ST"), QByteArray("111", 3));
  EXPECT_TRUE(stored(5, "DC_CV_1_ST").isNull());
}

// ---- What the question tells ------------------------------------------------------------------

TEST_F(VehicleCopy, BelowTheQuestionStandsWhomItReaches) {
  markRowForWriting(30);
  bench->buttonClicked(QStringLiteral("cmdCopyOther_1"));
  EXPECT_EQ(prompt.below.first(),
            "Ziel: 3 Fahrzeug(e), die ganze Datenbank (kein Filter), jeweils alle fünf CV-Sätze.\n"
            "3 davon mit anderem Decodertyp als \"AT-ECO\"!");
}

TEST_F(VehicleCopy, AFilterIsToldAndOnlyItsVehiclesAreCounted) {
  ownDatabase->write(
      QStringLiteral("UPDATE LOCO_DAT SET DC_MANUF = 97, DC_DECODER = 'AT-ECO' WHERE DC_ADR = 3"),
      {});
  form.sqlFilter = QStringLiteral("DC_ADR=5 OR DC_ADR=3 OR DC_ADR=7");
  markRowForWriting(30);
  bench->buttonClicked(QStringLiteral("cmdCopyOther_1"));
  EXPECT_EQ(prompt.below.first(),
            "Ziel: 2 Fahrzeug(e), die des Filters, jeweils alle fünf CV-Sätze.\n"
            "1 davon mit anderem Decodertyp als \"AT-ECO\"!");
}

TEST_F(VehicleCopy, VehiclesOfTheSameTypeNeedNoWarning) {
  ownDatabase->write(QStringLiteral("UPDATE LOCO_DAT SET DC_MANUF = 97, DC_DECODER = 'AT-ECO'"),
                     {});
  markRowForWriting(30);
  bench->buttonClicked(QStringLiteral("cmdCopyOther_1"));
  EXPECT_EQ(prompt.below.first(),
            "Ziel: 3 Fahrzeug(e), die ganze Datenbank (kein Filter), jeweils alle fünf CV-Sätze.");
  ownDatabase->write(QStringLiteral("UPDATE LOCO_DAT SET DC_MANUF = 145 WHERE DC_ADR = 9"), {});
  bench->buttonClicked(QStringLiteral("cmdCopyOther_1"));
  EXPECT_TRUE(prompt.below.last().contains(QStringLiteral("\n1 davon"))) << "another maker's";
}

TEST_F(VehicleCopy, AFilterHolds) {
  form.sqlFilter = QStringLiteral("DC_COLL=\"Anlage\"");
  markRowForWriting(30);
  copyOf("Other_1");
  EXPECT_EQ(storedByte(3, 30), 130);
  EXPECT_EQ(storedByte(5, 30), 130);
  EXPECT_TRUE(stored(9, "DC_CV").isEmpty());
  EXPECT_EQ(prompt.shown.last(), "1 CV-Wert(e) auf 2 Fahrzeug(e) kopiert.");
}

TEST_F(VehicleCopy, TheOpenRecordIsOneOfThemAndTheFormTakesItsNewSets) {
  ASSERT_EQ(form.text(QStringLiteral("dc_adr")), "3");
  markRowForWriting(30);
  copyOf("Other_1");
  EXPECT_EQ(static_cast<quint8>(form.workingCopy().recCvValues[4][29]), 130);
  EXPECT_EQ(form.workingCopy().recCvValues[4][28], '\7');
  EXPECT_EQ(form.text(QStringLiteral("dc_adr")), "3") << "and it is still on show";
  EXPECT_EQ(form.editMode(), EditMode::None);
}

TEST_F(VehicleCopy, CmdOkOverwritesTheOpenRecordAgain) {
  markRowForWriting(30);
  copyOf("Other_1");
  bench->rowEdited(rowOf(30), QStringLiteral("77"));
  bench->rowLeft(rowOf(30));
  bench->cmdOK(record);
  form.storeProgrammed(record, QStringLiteral("3"), {});
  ASSERT_TRUE(form.storeEdit());
  EXPECT_EQ(storedByte(3, 30), 77);
  EXPECT_EQ(storedByte(3, 30, "DC_CV_1"), 130) << "what was copied into its other sets stays";
  EXPECT_EQ(storedByte(3, 31, "DC_CV_1"), 0) << "all else is the window's";
  EXPECT_EQ(storedByte(5, 30), 130);
}

TEST_F(VehicleCopy, WhatWasCopiedIntoTheOpenVehicleIsNoUnsavedChange) {
  record = form.workingCopy();
  openEco(kSome);
  for (int cv : {30, 31}) markRowForWriting(cv);
  copyOf("Other_1");
  EXPECT_FALSE(bench->unsaved());
  bench->rowEdited(rowOf(30), QStringLiteral("77"));
  bench->rowLeft(rowOf(30));
  EXPECT_TRUE(bench->unsaved());
  copyOf("Other_1");
  EXPECT_FALSE(bench->unsaved()) << "copied into itself it is stored";
}

TEST_F(VehicleCopy, AnOpenVehicleThatTheCopyDidNotReachKeepsItsSets) {
  form.sqlFilter = QStringLiteral("DC_COLL=\"Vitrine\"");
  markRowForWriting(30);
  copyOf("Other_1");
  bench->cmdOK(record);
  EXPECT_EQ(static_cast<quint8>(record.recCvValues[1][29]), 0);
}

TEST_F(VehicleCopy, AValueThatAFailedReadLeftIsNamedBelowTheQuestion) {
  settings.continueOnError = true;
  markRow(30);
  fault("noack");
  read();
  ASSERT_EQ(value(30), 0);
  markRowForWriting(30);
  markRowForWriting(31);
  bench->buttonClicked(QStringLiteral("cmdCopyOther_1"));
  EXPECT_TRUE(prompt.below.last().endsWith(
      QStringLiteral("\nCV 30: nicht oder nicht ganz gelesen; der Wert stammt von einem "
                     "misslungenen Lesen.")))
      << prompt.below.last().toStdString();
}

// ---- Which CVs --------------------------------------------------------------------------------

TEST_F(VehicleCopy, TheDriveTabCopiesItsFields) {
  for (int cv : {2, 3, 4, 5, 6, 9}) markForWriting(cv);
  bench->checkBoxToggled(QStringLiteral("chkDrvWrt_29"), true);
  copyOf("Drv");
  EXPECT_EQ(prompt.shown.first(), "5 CV-Wert(e) auf andere Fahrzeuge kopieren?");
  for (int cv : {2, 5, 6, 9, 29}) EXPECT_EQ(storedByte(3, cv), cv + 100) << cv;
  for (int cv : {3, 4}) EXPECT_EQ(storedByte(3, cv), 7) << cv;
}

TEST_F(VehicleCopy, TheGeneralTabCopiesItsFieldsButNoAddress) {
  for (int cv : {2, 3, 4, 19, 29}) markForWriting(cv);
  check("chkDcAdrWrite");
  copyOf("Gen");
  EXPECT_EQ(prompt.shown.first(), "4 CV-Wert(e) auf andere Fahrzeuge kopieren?");
  for (int cv : {3, 4, 19, 29}) EXPECT_EQ(storedByte(3, cv), cv + 100) << cv;
  for (int cv : {1, 2, 17, 18}) EXPECT_EQ(storedByte(3, cv), 7) << cv;
}

TEST_F(VehicleCopy, ARowTabCopiesItsOwnRowsOnly) {
  markRowForWriting(30);
  markRowForWriting(40);
  copyOf("Func_1");
  EXPECT_EQ(prompt.shown.first(), "1 CV-Wert(e) auf andere Fahrzeuge kopieren?");
  EXPECT_EQ(storedByte(3, 40), 140);
  EXPECT_EQ(storedByte(3, 30), 7);
}

TEST_F(VehicleCopy, TheSecondTabOfAPageCopiesItsOwnRows) {
  QByteArray lines = "[X]\nSPEEDTABLE=N\n";
  for (int cv = 30; cv < 55; ++cv) lines += "CV_" + QByteArray::number(cv) + "=x,0-255,0,6\n";
  openEco(lines.constData());
  markRowForWriting(30);
  markRowForWriting(52);
  copyOf("Sound_2");
  EXPECT_EQ(storedByte(3, 52), 152);
  EXPECT_EQ(storedByte(3, 30), 7);
}

// ---- All or none ------------------------------------------------------------------------------

TEST_F(VehicleCopy, UpToAHundredRecordsNeedNoProgress) {
  addMany(96);
  playProgress();
  markRowForWriting(30);
  copyOf("Other_1");
  EXPECT_EQ(dialogs, 0);
  EXPECT_EQ(prompt.shown.last(), "1 CV-Wert(e) auf 99 Fahrzeug(e) kopiert.");
}

TEST_F(VehicleCopy, AboveAHundredRecordsThereIsProgress) {
  addMany(97);
  playProgress();
  markRowForWriting(30);
  copyOf("Other_1");
  EXPECT_EQ(dialogs, 1);
  ASSERT_FALSE(view.percents.isEmpty());
  EXPECT_EQ(view.percents.first(), 0);
  EXPECT_EQ(view.percents.last(), 100);
  EXPECT_TRUE(std::is_sorted(view.percents.begin(), view.percents.end()));
  EXPECT_EQ(view.hides, 1);
  EXPECT_EQ(prompt.shown.last(), "1 CV-Wert(e) auf 100 Fahrzeug(e) kopiert.");
}

TEST_F(VehicleCopy, ACancelledCopyChangesNoVehicle) {
  addMany(97);
  playProgress();
  // The user presses Abbruch while the third report is on the screen.
  pressedView.cancelAt = 3;
  markRowForWriting(30);
  copyOf("Other_1");
  EXPECT_FALSE(link.cancelRequested);
  EXPECT_EQ(stored(3, "DC_CV"), QByteArray(kCvArraySize, '\7'));
  EXPECT_EQ(view.percents.size(), 3);
  EXPECT_EQ(prompt.shown.last(), "Kopieren abgebrochen, kein Fahrzeug wurde geändert.");
}

TEST_F(VehicleCopy, AFailureInTheMiddleChangesNoVehicle) {
  addMany(50);
  const std::vector<CvValue> cvs{{CvIndex(30), 99}};
  int reports = 0;
  const auto failing = [&reports](int, int) -> bool {
    if (++reports == 3) throw StorageError(storage_error::kDiskFull, QStringLiteral("voll"));
    return true;
  };
  EXPECT_THROW(copyCvsToVehicles(*ownDatabase, {}, cvs, failing), StorageError);
  EXPECT_EQ(stored(3, "DC_CV"), QByteArray(kCvArraySize, '\7'));
  EXPECT_TRUE(stored(9, "DC_CV").isEmpty());
  EXPECT_EQ(copyCvsToVehicles(*ownDatabase, {}, cvs, [](int, int) { return true; }), 53)
      << "and the next copy goes through";
}

TEST_F(VehicleCopy, ADatabaseThatAnotherProgramHoldsIsLeftAloneWithAMessage) {
  markRowForWriting(30);
  Database other(ownDatabase->path());
  other.transaction([&] { copyOf("Other_1"); });
  EXPECT_EQ(prompt.shown.last(),
            "Kopieren nicht möglich, kein Fahrzeug wurde geändert!\r"
            "Die Datenbank wird gerade von einem anderen Programm benutzt.");
  EXPECT_EQ(stored(3, "DC_CV"), QByteArray(kCvArraySize, '\7'));
}

TEST_F(VehicleCopy, AFilterThatIsNotUnderstoodIsToldAndChangesNothing) {
  form.sqlFilter = QStringLiteral("DC_ADR=");
  markRowForWriting(30);
  copyOf("Other_1");
  EXPECT_TRUE(prompt.shown.last().startsWith("Kopieren nicht möglich"));
  EXPECT_EQ(stored(3, "DC_CV"), QByteArray(kCvArraySize, '\7'));
}

TEST_F(VehicleCopy, WithoutAFormNothingIsAsked) {
  bench = std::make_unique<DecoderBench>(
      BenchParts{settings, clock, prompt, link, catalogue, folder.path(), QStringList(256)});
  bench->open(record, QStringLiteral("3"));
  EXPECT_FALSE(bench->canCopyToVehicles());
  copyOf("Gen");
  EXPECT_TRUE(prompt.shown.isEmpty());
}

}  // namespace
}  // namespace lokari
