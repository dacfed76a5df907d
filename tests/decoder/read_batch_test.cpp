// RdComm against a simulated station, in virtual time.
#include "bench_fixture.h"

namespace lokari {
namespace {

const char* const kPlain =
    "[X]\n"
    "CV_2=Spannung,0-63,3\nCV_3=Zeit\nCV_4=Bremse\nCV_5=Hoch\nCV_6=Mitte\n"
    "CV_9=Periode,0-99,0,2\n"
    "CV_30=Fehler,0-255,256,5\nCV_33=Licht,0-15,0,3\nCV_49=Regler,0-3,0,4\nCV_51=Klang,0-9,0,6\n"
    "CV_52=nur Liste\n";

class ReadBatchTest : public BenchFixture {
 protected:
  ReadBatchTest() {
    for (int cv = 2; cv <= 1024; ++cv) {
      if (cv != 8 && cv != 29 && cv != 17 && cv != 18) decoder().store(cv, cv % 251);
    }
    decoder().store(29, 2);
  }

  /// Status texts without those of beginning and end.
  QStringList steps() const { return view.statuses.mid(1, view.statuses.size() - 2); }
};

TEST_F(ReadBatchTest, NothingMarkedOpensNoLink) {
  openEco(kPlain);
  read();
  EXPECT_EQ(prompt.shown, QStringList({"Keine Daten zum Lesen ausgewählt!"}));
  EXPECT_EQ(line.opens, 0);
  EXPECT_EQ(view.hides, 1);
  EXPECT_EQ(view.statuses, QStringList({"Beginne Kommunikation ..."}));
  expectSessionClosed();
}

TEST_F(ReadBatchTest, ReadsWhatIsMarked) {
  openEco(kPlain);
  check("chkRd_3");
  check("chkRd_9");
  markRow(33);
  markRow(51);
  read();
  EXPECT_EQ(sent(), QStringList({"xPTRB 3", "xPTRB 9", "xPTRB 33", "xPTRB 51"}));
  EXPECT_EQ(view.statuses,
            QStringList({"Beginne Kommunikation ...", "Lese Beschleunigungszeit (CV 3)",
                         "Lese Periode (CV 9)", "Lese Licht (CV 33)", "Lese Klang (CV 51)",
                         "Beende Kommunikation ..."}));
  EXPECT_EQ(view.percents, (QList<double>{0, 0, 25, 50, 75, 100, 0}));
  for (const int index : {3, 9, 33, 51}) {
    EXPECT_EQ(value(index), index) << index;
    EXPECT_EQ(mark(index), CvMark::Verified) << index;
  }
  EXPECT_EQ(text("txtDcComAccTime"), "3");
  EXPECT_EQ(control("txtDcComAccTime").colour, TextColour::Blue);
  EXPECT_EQ(text("txtDcDrvUser"), "9");
  EXPECT_EQ(row(33).text, "33");
  EXPECT_EQ(row(33).colour, TextColour::Blue);
  EXPECT_EQ(mark(4), CvMark::None);
  EXPECT_EQ(view.hides, 1);
  EXPECT_EQ(prompt.beeps, 0);
  expectSessionClosed();
}

TEST_F(ReadBatchTest, TheFixedCvsHaveNamesOfTheirOwn) {
  openEco(kPlain);
  for (const char* box : {"chkRd_2", "chkRd_3", "chkRd_4", "chkRd_5", "chkRd_6"}) check(box);
  read();
  EXPECT_EQ(steps(), QStringList({"Lese Minimalspannung (CV 2)", "Lese Beschleunigungszeit (CV 3)",
                                  "Lese Bremszeit (CV 4)", "Lese Maximalgeschwindigkeit (CV 5)",
                                  "Lese Mittengeschwindigkeit (CV 6)"}));
  EXPECT_EQ(text("txtDcDrvMedSpeed"), "6");
}

TEST_F(ReadBatchTest, AValueOutsideTheRangeIsTakenWithoutAMessage) {
  openEco(kPlain);
  markRow(33);
  read();
  EXPECT_EQ(value(33), 33) << "the decoder is right by definition";
  EXPECT_TRUE(prompt.shown.isEmpty());
}

TEST_F(ReadBatchTest, CvsOfTheListAloneAreNotRead) {
  openEco(kPlain);
  bench->gridClicked(bench->grid().rowOf(CvIndex(52)), GridColumn::Read);
  read();
  EXPECT_EQ(prompt.shown, QStringList({"Keine Daten zum Lesen ausgewählt!"}));
}

TEST_F(ReadBatchTest, RowsBeyondTheTabsAreReadIntoTheGrid) {
  std::string lines = "[X]\nMAXTABS=6\n";
  for (int i = 100; i < 122; ++i) lines += "CV_" + std::to_string(i) + "=F,0-255,0,3\n";
  openEco(lines.c_str());
  const int gridRow = bench->grid().rowOf(CvIndex(121));
  bench->gridClicked(gridRow, GridColumn::Read);
  read();
  EXPECT_EQ(sent(), QStringList({"xPTRB 121"}));
  EXPECT_EQ(bench->gridRow(gridRow).value, "121");
  EXPECT_EQ(bench->gridRow(gridRow).colour, TextColour::Blue);
}

TEST_F(ReadBatchTest, TheSpeedTableIsReadByItsBox) {
  openEco(kPlain);
  check("chkRd_Tbl");
  read();
  ASSERT_EQ(sent().size(), 28);
  EXPECT_EQ(sent().first(), "xPTRB 67");
  EXPECT_EQ(steps().first(), "Lese Geschwindigkeitstabelle (CV 67)");
  EXPECT_EQ(value(94), 94);
  EXPECT_EQ(mark(94), CvMark::Verified);
  EXPECT_EQ(view.percents.at(view.percents.size() - 2), 100);
}

TEST_F(ReadBatchTest, AShortTableEndsAtCv81) {
  openEco("[X]\nFAMILY=1");
  check("chkRd_Tbl");
  bench->buttonClicked(QStringLiteral("cmdReadAll"));
  bench->checkBoxToggled(QStringLiteral("chkDcAdrRead"), false);
  bench->checkBoxToggled(QStringLiteral("chkRd_19"), false);
  bench->checkBoxToggled(QStringLiteral("chkRd_29"), false);
  read();
  EXPECT_EQ(sent().size(), 15);
  EXPECT_EQ(sent().last(), "xPTRB 81");
  EXPECT_EQ(view.percents.at(view.percents.size() - 2), 100);
}

TEST_F(ReadBatchTest, TableCvsWithADescriptionOfTheirOwnAreRows) {
  openEco("[X]\nSPEEDTABLE=N\nCV_67=Kurve,0-255,0,5");
  markRow(67);
  read();
  EXPECT_EQ(steps(), QStringList({"Lese Kurve (CV 67)"}));
  EXPECT_EQ(row(67).text, "67");
}

TEST_F(ReadBatchTest, ARowInPlaceOfTheTableShowsWhatWasRead) {
  openEco("[X]\nTYPE=3\nCV_67=Blinken,0-255,0,3");
  markRow(67);
  read();
  EXPECT_EQ(sent(), QStringList({"xPTRB 67"}));
  EXPECT_EQ(value(67), 67);
  EXPECT_EQ(row(67).text, "67");
  EXPECT_EQ(row(67).colour, TextColour::Blue);
  bench->rowLeft(rowOf(67));
  EXPECT_EQ(value(67), 67) << "no old text goes back into the set";
}

TEST_F(ReadBatchTest, PagedAndRegisterModeReachTheFirstCvsAndTheConfiguration) {
  for (const char* mode : {"PROGMODE=1\n", "PROGMODE=2\n"}) {
    openEco((std::string(kPlain) + mode).c_str());
    bench->buttonClicked(QStringLiteral("cmdReadAll"));
    bench->checkBoxToggled(QStringLiteral("chkDcAdrRead"), false);
    read();
    const QString command = mode[9] == '1' ? QStringLiteral("xPTRP ") : QStringLiteral("xPTRR ");
    EXPECT_EQ(sent().first(4),
              QStringList({command + "2", command + "3", command + "4", command + "29"}))
        << mode;
    EXPECT_EQ(sent().size(), 4);
  }
}

TEST_F(ReadBatchTest, RegisterModeChecksTheConfigurationInRegister5) {
  settings.addressCheckNow = true;
  openEco("[X]\nPROGMODE=2\nCV_3=Zeit");
  check("chkRd_3");
  read();
  EXPECT_EQ(sent(), QStringList({"xPTRR 5", "xPTRR 1", "xPTRR 3"}));
}

// ---- CV 19 and 29 -----------------------------------------------------------------------------

TEST_F(ReadBatchTest, TheConsistAddressAndItsDirection) {
  decoder().store(19, 128 + 77);
  openEco(kPlain);
  check("chkRd_19");
  read();
  EXPECT_EQ(steps(), QStringList({"Lese Verbundadresse (CV 19)"}));
  EXPECT_EQ(text("txtDcComConsist"), "77");
  EXPECT_TRUE(checked("optDcConsistDirReverse"));
  EXPECT_EQ(value(19), 205);
  EXPECT_EQ(mark(19), CvMark::Verified);
  EXPECT_EQ(control("optDcConsistDirNormal").colour, TextColour::Blue);
  EXPECT_EQ(control("txtDcComConsist").colour, TextColour::Blue);
}

TEST_F(ReadBatchTest, TheConfigurationSetsTheOptions) {
  settings.addressCheckNow = true;
  decoder().store(29, 1 + 2 + 4 + 16);
  openEco(kPlain);
  check("chkRd_29");
  read();
  EXPECT_EQ(steps().last(), "Lese Grundeinstellungen (CV 29)");
  for (const char* name : {"optDcComDirReverse", "optDcComSteps28", "optDcDrvSteps28",
                           "optDcComAnalogYes", "optDcComSpdTblYes", "optDcDrvSpdTblYes"}) {
    EXPECT_TRUE(checked(name)) << name;
  }
  EXPECT_EQ(value(29), 1 + 2 + 4 + 16);
  EXPECT_EQ(mark(29), CvMark::Verified);
  EXPECT_EQ(control("optDcComDirReverse").colour, TextColour::Blue);
}

TEST_F(ReadBatchTest, WithoutAddressCheckRailComShowsYes) {
  openEco(kPlain);
  check("chkRd_29");
  read();
  EXPECT_TRUE(checked("optDcComRailComYes"));
  EXPECT_TRUE(checked("optDcComDetectPulseNo"));
  EXPECT_EQ(value(29), 2 + 8) << "the option that went on set its bit";
}

TEST_F(ReadBatchTest, RailComFollowsTheConfigurationOfTheAddressCheck) {
  settings.addressCheckNow = true;
  openEco(kPlain);
  check("chkRd_29");
  bench->optionClicked(QStringLiteral("optDcComRailComYes"));
  read();
  EXPECT_TRUE(checked("optDcComRailComNo"));
  decoder().store(29, 8);
  read();
  EXPECT_TRUE(checked("optDcComRailComYes"));
}

TEST_F(ReadBatchTest, Bit6GoesToThePulseOptionAndTheManBitStays) {
  settings.addressCheckNow = true;
  decoder().store(29, 64);
  openEco(kPlain);
  check("chkRd_29");
  read();
  EXPECT_TRUE(checked("optDcComDetectPulseYes"));
  EXPECT_TRUE(checked("optDcComManBitNo"));
  decoder().store(29, 8);
  read();
  EXPECT_TRUE(checked("optDcComDetectPulseNo")) << "bit 6 overrides bit 3";
}

TEST_F(ReadBatchTest, TheTwinBoxReadsTheConfigurationToo) {
  openEco(kPlain);
  check("chkDrvRd_29");
  read();
  EXPECT_EQ(sent(), QStringList({"xPTRB 29"}));
}

// ---- Address ----------------------------------------------------------------------------------

TEST_F(ReadBatchTest, TheSameAddressRaisesNoQuestion) {
  settings.addressCheckNow = true;
  openEco(kPlain);
  markRow(33);
  read();
  EXPECT_EQ(sent(), QStringList({"xPTRB 29", "xPTRB 1", "xPTRB 33"}));
  EXPECT_EQ(steps().first(), "Adresskontrolle ...");
  EXPECT_TRUE(prompt.shown.isEmpty());
  EXPECT_EQ(mark(1), CvMark::None);
}

TEST_F(ReadBatchTest, AnotherAddressIsAskedAboutAndOkGoesOn) {
  settings.addressCheckNow = true;
  decoder().setAddress(47);
  openEco(kPlain);
  markRow(33);
  prompt.answers = {Answer::Ok};
  read();
  EXPECT_EQ(prompt.shown, QStringList({"Abweichende Adresse im Empfänger (47)!"}));
  EXPECT_EQ(value(33), 33);
  EXPECT_EQ(text("dc_adr"), "3") << "not asked for, so not taken over";
  EXPECT_EQ(mark(1), CvMark::Failed);
  EXPECT_EQ(control("dc_adr").colour, TextColour::Red);
}

TEST_F(ReadBatchTest, AnotherAddressWithCancelEndsOrderly) {
  settings.addressCheckNow = true;
  decoder().setAddress(47);
  openEco(kPlain);
  markRow(33);
  prompt.answers = {Answer::Cancel};
  read();
  EXPECT_EQ(value(33), 0);
  EXPECT_EQ(view.statuses.last(), "Beende Kommunikation ...");
  EXPECT_EQ(view.hides, 1);
  expectSessionClosed();
}

TEST_F(ReadBatchTest, AnAddressThatIsNoNumberDiffersFromEveryOther) {
  settings.addressCheckNow = true;
  openEco(kPlain, "abc");
  markRow(33);
  prompt.answers = {Answer::Ok};
  read();
  EXPECT_EQ(prompt.shown, QStringList({"Abweichende Adresse im Empfänger (3)!"}));
}

TEST_F(ReadBatchTest, OnlyTheAddressMarkedIsOneReadAndTakesItOver) {
  decoder().setAddress(47);
  openEco(kPlain);
  check("chkDcAdrRead");
  prompt.answers = {Answer::Ok};
  read();
  EXPECT_EQ(sent(), QStringList({"xPTRB 29", "xPTRB 1"}));
  EXPECT_EQ(text("dc_adr"), "47");
  EXPECT_EQ(mark(1), CvMark::Verified);
  EXPECT_EQ(control("dc_adr").colour, TextColour::Blue);
  EXPECT_EQ(view.percents, (QList<double>{0, 100, 0}));
}

TEST_F(ReadBatchTest, ALongAddressComesFromCv18And17) {
  decoder().store(29, 34);
  decoder().store(17, 192 + 7);
  decoder().store(18, 208);
  openEco(kPlain, "2000");
  check("chkDcAdrRead");
  read();
  EXPECT_EQ(sent(), QStringList({"xPTRB 29", "xPTRB 18", "xPTRB 17"}));
  EXPECT_TRUE(prompt.shown.isEmpty());
  EXPECT_EQ(text("dc_adr"), "2000");
}

TEST_F(ReadBatchTest, ALongAddressBeyondTheHighestIsReplacedByOne) {
  decoder().store(29, 34);
  decoder().store(17, 192 + 40);
  decoder().store(18, 0);
  openEco(kPlain, "3");
  check("chkDcAdrRead");
  prompt.answers = {Answer::Ok};
  read();
  EXPECT_EQ(prompt.shown, QStringList({"Abweichende Adresse im Empfänger (10240)!"}));
  EXPECT_EQ(text("dc_adr"), "1");
}

TEST_F(ReadBatchTest, AContinuedFailureOfTheCheckFindsAddressZero) {
  settings.continueOnError = true;
  openEco(kPlain);
  check("chkDcAdrRead");
  markRow(33);
  fault("noack");
  prompt.answers = {Answer::Ok};
  read();
  EXPECT_EQ(prompt.shown, QStringList({"Abweichende Adresse im Empfänger (0)!"}));
  EXPECT_EQ(sent(), QStringList({"xPTRB 29", "xPTRB 33"})) << "nothing more of the address is read";
  EXPECT_EQ(text("dc_adr"), "3");
  EXPECT_EQ(mark(1), CvMark::Failed);
  EXPECT_EQ(value(33), 33);
}

// ---- Maker ------------------------------------------------------------------------------------

TEST_F(ReadBatchTest, TheSameMakerRaisesNoQuestionAndTheVersionIsRead) {
  settings.manufacturerCheckNow = true;
  openEco(kPlain);
  markRow(33);
  read();
  EXPECT_EQ(sent(), QStringList({"xPTRB 8", "xPTRB 7", "xPTRB 33"}));
  EXPECT_EQ(steps().first(), "Herstellerkontrolle ...");
  EXPECT_EQ(text("txtDcComVersion"), "7");
  EXPECT_TRUE(control("txtDcComVersion").enabled);
  EXPECT_EQ(value(8), 97);
  EXPECT_EQ(value(7), 7);
  EXPECT_TRUE(prompt.shown.isEmpty());
}

TEST_F(ReadBatchTest, MakersZeroAndThirteenRaiseNoQuestion) {
  settings.manufacturerCheckNow = true;
  for (const int maker : {0, 13}) {
    decoder().store(8, maker);
    openEco(kPlain);
    markRow(33);
    read();
    EXPECT_TRUE(prompt.shown.isEmpty()) << maker;
    EXPECT_EQ(value(8), maker);
  }
}

TEST_F(ReadBatchTest, AnotherMakerIsTakenOverWithOk) {
  settings.manufacturerCheckNow = true;
  decoder().store(8, 131);
  describe("Fahrwerk/FW-28.dec", "[FW-28]\nMAXADDRESS=28");
  openEco(kPlain);
  markRow(33);
  prompt.answers = {Answer::Ok};
  read();
  EXPECT_EQ(prompt.shown, QStringList({"Abweichender Decoderhersteller (Fahrwerk)!"}));
  EXPECT_EQ(text("cbDcManuf"), "Fahrwerk");
  EXPECT_EQ(text("cbDcDecoder"), "FW-28");
  EXPECT_EQ(bench->dcManufNo, 131);
  EXPECT_EQ(bench->description.MAXADDRESS, 28);
  EXPECT_EQ(value(8), 131);
  EXPECT_EQ(value(7), 7);
  EXPECT_EQ(view.hides, 1);
  expectSessionClosed();
}

TEST_F(ReadBatchTest, AnotherMakerWithCancelEndsOrderly) {
  settings.manufacturerCheckNow = true;
  decoder().store(8, 131);
  openEco(kPlain);
  markRow(33);
  prompt.answers = {Answer::Cancel};
  read();
  EXPECT_EQ(text("cbDcManuf"), "Adlerton");
  EXPECT_EQ(value(8), 0);
  EXPECT_EQ(view.hides, 1);
  expectSessionClosed();
}

TEST_F(ReadBatchTest, AnUnknownMakerShowsAsItsNumber) {
  settings.manufacturerCheckNow = true;
  decoder().store(8, 99);
  openEco(kPlain);
  markRow(33);
  read();
  EXPECT_EQ(prompt.shown, QStringList({"Abweichender Decoderhersteller (99)!"}));
}

TEST_F(ReadBatchTest, Maker145TellsItsSubVersionAndType) {
  settings.manufacturerCheckNow = true;
  decoder().store(8, 145);
  decoder().store(65, 12);
  decoder().store(250, 220);
  describe("Zimo/ZX100.dec", "[ZX100]\nCV_3=Zeit");
  record.recManuf = 145;
  record.recDecoder = QStringLiteral("ZX100");
  bench->open(record, QStringLiteral("3"));
  check("chkRd_3");
  read();
  EXPECT_EQ(sent(), QStringList({"xPTRB 8", "xPTRB 7", "xPTRB 65", "xPTRB 250", "xPTRB 3"}));
  EXPECT_EQ(text("txtDcComVersion"), "7.12 (MX620)");
  EXPECT_EQ(value(65), 12);
  EXPECT_EQ(value(250), 220);
}

TEST_F(ReadBatchTest, Maker145WithoutThoseTwoIsNoFailure) {
  settings.manufacturerCheckNow = true;
  decoder().store(8, 145);
  decoder().present = {{1, 64}};
  describe("Zimo/ZX100.dec", "[ZX100]\nCV_3=Zeit");
  record.recManuf = 145;
  record.recDecoder = QStringLiteral("ZX100");
  bench->open(record, QStringLiteral("3"));
  check("chkRd_3");
  read();
  EXPECT_EQ(text("txtDcComVersion"), "7");
  EXPECT_EQ(value(3), 3);
  EXPECT_EQ(mark(3), CvMark::Verified);
  EXPECT_EQ(prompt.beeps, 0);
}

TEST_F(ReadBatchTest, AFunctionDecoderIsWarnedOf) {
  settings.addressCheckNow = true;
  decoder().store(29, 128 + 2);
  openEco(kPlain);
  markRow(33);
  prompt.answers = {Answer::Cancel, Answer::Ok};
  read();
  EXPECT_EQ(prompt.shown, QStringList({"Achtung: Funktionsdecoder!"}));
  EXPECT_EQ(value(33), 0);
  EXPECT_EQ(view.hides, 1);
  read();
  EXPECT_EQ(value(33), 33);
}

// ---- Banks ------------------------------------------------------------------------------------

const char* const kBanks =
    "[X]\nMAPCVA=31\nMAPCVB=32\nMAPVALA_2=16\nMAPVALB_2=0\nMAPVALA_3=16\nMAPVALB_3=1\n"
    "CV_49=Regler,0-255,0,4\n"
    "CV_257_2=Motor,0-128,100,6\nCV_258_2=Pfiff,0-128,128,6\nCV_257_3=Bremse,0-128,1,6\n";

class ReadBanks : public ReadBatchTest {
 protected:
  ReadBanks() {
    decoder().banks = {{{16, 0}, {{257, 11}, {258, 12}}}, {{16, 1}, {{257, 21}}}};
    decoder().store(31, 0);
    decoder().store(32, 0);
    openEco(kBanks);
  }
};

TEST_F(ReadBanks, ABankIsSelectedOnceForAllItsCvs) {
  for (const int index : {49, 1024, 1025, 1280}) markRow(index);
  read();
  EXPECT_EQ(sent(), QStringList({"xPTRB 49", "xPTWD 31, 16", "xPTWD 32, 0", "xPTRB 257",
                                 "xPTRB 258", "xPTWD 31, 16", "xPTWD 32, 1", "xPTRB 257"}));
  EXPECT_EQ(steps(), QStringList({"Lese Regler (CV 49)", "Lese Motor (CV 257 (2))",
                                  "Lese Pfiff (CV 258 (2))", "Lese Bremse (CV 257 (3))"}));
  EXPECT_EQ(value(1024), 11);
  EXPECT_EQ(value(1025), 12);
  EXPECT_EQ(value(1280), 21);
  EXPECT_EQ(row(1280).text, "21");
}

TEST_F(ReadBanks, ABankThatCannotBeSelectedIsAFailure) {
  decoder().readOnly.insert(32);
  markRow(1024);
  read();
  EXPECT_EQ(view.statuses.last(), "Kein ACK vom Decoder");
  EXPECT_EQ(mark(1024), CvMark::None);
  EXPECT_EQ(view.hides, 0);
  expectSessionClosed();
}

TEST_F(ReadBanks, AfterAContinuedFailureNoCvOfAnotherBankIsTaken) {
  settings.continueOnError = true;
  decoder().readOnly.insert(32);
  markRow(49);
  markRow(1280);
  read();
  EXPECT_EQ(sent(), QStringList({"xPTRB 49", "xPTWD 31, 16", "xPTWD 32, 1"}));
  EXPECT_EQ(value(1280), 0);
  EXPECT_EQ(mark(1280), CvMark::Failed);
  EXPECT_EQ(row(1280).colour, TextColour::Red);
  EXPECT_EQ(mark(49), CvMark::Verified);
}

class ReadBanksOnMx1 : public BenchFixture {
 protected:
  ReadBanksOnMx1() : BenchFixture(StationKind::Mx1) {}
};

TEST_F(ReadBanksOnMx1, ABankIsSelectedOnTheProgrammingTrack) {
  decoder().banks = {{{16, 0}, {{257, 11}}}};
  decoder().store(31, 0);
  decoder().store(32, 0);
  openEco(kBanks);
  markRow(1024);
  read();
  EXPECT_EQ(sent().mid(1, 3), QStringList({"RN1F10", "RN2000", "QN101"}));
  EXPECT_EQ(value(1024), 11);
  EXPECT_EQ(link.commJob, CommJob::ReadProgTrack);
}

// ---- Failures ---------------------------------------------------------------------------------

struct FailureCase {
  const char* fault;
  const char* status;
};

class ReadFailures : public ReadBatchTest, public ::testing::WithParamInterface<FailureCase> {};

TEST_P(ReadFailures, EndTheRunWithTheirTextAndKeepTheValuesReadSoFar) {
  openEco(kPlain);
  check("chkRd_3");
  markRow(33);
  markRow(49);
  fault(GetParam().fault);
  read();
  EXPECT_EQ(view.statuses.last(), QString::fromUtf8(GetParam().status));
  EXPECT_EQ(prompt.beeps, 1);
  EXPECT_EQ(value(3), 3);
  EXPECT_EQ(mark(3), CvMark::Verified);
  EXPECT_EQ(value(33), 0);
  EXPECT_EQ(mark(33), CvMark::None);
  EXPECT_EQ(sent().last(), "xPTRB 33");
  EXPECT_EQ(view.hides, 0) << "the dialog stays up with the text";
  expectSessionClosed();
}

TEST_P(ReadFailures, AreSurvivedWithZeroAndARedMark) {
  settings.continueOnError = true;
  openEco(kPlain);
  check("chkRd_3");
  markRow(33);
  markRow(49);
  fault(GetParam().fault);
  read();
  EXPECT_TRUE(view.statuses.contains(QString::fromUtf8(GetParam().status)));
  EXPECT_EQ(prompt.beeps, 1);
  EXPECT_EQ(value(33), 0);
  EXPECT_EQ(mark(33), CvMark::Failed);
  EXPECT_EQ(row(33).colour, TextColour::Red);
  EXPECT_EQ(value(49), 49);
  EXPECT_EQ(mark(49), CvMark::Verified);
  EXPECT_EQ(view.percents.at(view.percents.size() - 2), 100);
  EXPECT_EQ(view.hides, 1);
  expectSessionClosed();
}

INSTANTIATE_TEST_SUITE_P(OnTheSecondCv, ReadFailures,
                         ::testing::Values(FailureCase{"silence@1", "Keine Antwort vom Basisgerät"},
                                           FailureCase{"garbage@1",
                                                       "Falsche Antwort vom Basisgerät"},
                                           FailureCase{"noack@1", "Kein ACK vom Decoder"}));

TEST_F(ReadBatchTest, AContinuedFailurePausesForThreeSeconds) {
  settings.continueOnError = true;
  openEco(kPlain);
  markRow(33);
  markRow(49);
  fault("noack");
  read();
  ASSERT_EQ(line.writes.size(), 2);
  EXPECT_GE(line.writes[1].at - line.writes[0].at, 3000);
  EXPECT_LT(line.writes[1].at - line.writes[0].at, 4000);
}

TEST_F(ReadBatchTest, AContinuedFailureOfTheConfigurationShowsItsOwnOptions) {
  settings.continueOnError = true;
  record.recCvValues[0][28] = 1 + 2 + 4 + 8 + 16;
  openEco(kPlain);
  check("chkRd_29");
  fault("noack");
  read();
  EXPECT_EQ(mark(29), CvMark::Failed);
  for (const char* name : {"optDcComDirNormal", "optDcComSteps14", "optDcDrvSteps14",
                           "optDcComAnalogNo", "optDcComSpdTblNo", "optDcDrvSpdTblNo",
                           "optDcComRailComNo", "optDcComDetectPulseNo", "optDcComManBitYes"}) {
    EXPECT_TRUE(checked(name)) << name;
    EXPECT_EQ(control(name).colour, TextColour::Red) << name;
  }
  EXPECT_EQ(value(29), 64);
}

TEST_F(ReadBatchTest, AContinuedFailureOfTheConsistAddress) {
  settings.continueOnError = true;
  record.recCvValues[0][18] = '\x85';
  openEco(kPlain);
  check("chkRd_19");
  fault("noack");
  read();
  EXPECT_EQ(mark(19), CvMark::Failed);
  EXPECT_TRUE(checked("optDcConsistDirNormal"));
  EXPECT_EQ(value(19), 0);
}

TEST_F(ReadBatchTest, AContinuedFailureOfATablePoint) {
  settings.continueOnError = true;
  openEco(kPlain);
  check("chkRd_Tbl");
  fault("noack@5");
  read();
  EXPECT_EQ(mark(72), CvMark::Failed);
  EXPECT_EQ(value(72), 0);
  EXPECT_EQ(mark(73), CvMark::Verified);
}

TEST_F(ReadBatchTest, ALinkThatCannotBeOpenedStaysInTheStatusLine) {
  openEco(kPlain);
  markRow(33);
  line.failsToOpen = true;
  read();
  EXPECT_EQ(view.statuses.last(), "Kann Kommunikationsschnittstelle nicht öffnen (0)!");
  EXPECT_EQ(prompt.beeps, 1);
  EXPECT_EQ(view.hides, 0);
  EXPECT_EQ(view.captions, QStringList({"Abbruch", "OK"}));
  EXPECT_FALSE(bench->commRunning);
}

TEST_F(ReadBatchTest, APortThatVanishesEndsTheRunAndKeepsTheValues) {
  settings.continueOnError = true;
  openEco(kPlain);
  check("chkRd_3");
  markRow(33);
  markRow(49);
  fault("unplugged@1");
  read();
  EXPECT_FALSE(view.statuses.last().isEmpty());
  EXPECT_NE(view.statuses.last(), "Beende Kommunikation ...");
  EXPECT_NE(view.statuses.last(), "Lese Licht (CV 33)");
  EXPECT_EQ(value(3), 3);
  EXPECT_EQ(mark(3), CvMark::Verified);
  EXPECT_EQ(value(33), 0);
  EXPECT_EQ(mark(33), CvMark::None);
  EXPECT_EQ(view.hides, 0);
  EXPECT_EQ(prompt.beeps, 1);
  expectSessionClosed();
}

// ---- Cancel -----------------------------------------------------------------------------------

TEST_F(ReadBatchTest, ACancelDuringAReadEndsOrderly) {
  openEco(kPlain);
  check("chkRd_3");
  markRow(33);
  markRow(49);
  fault("silence@1");
  clock.schedule(2000, [this] { link.cancelRequested = true; });
  read();
  EXPECT_EQ(value(3), 3);
  EXPECT_EQ(mark(33), CvMark::None);
  EXPECT_EQ(sent().last(), "xPTRB 33");
  EXPECT_EQ(view.statuses.last(), "Beende Kommunikation ...");
  EXPECT_EQ(prompt.beeps, 0);
  EXPECT_EQ(view.hides, 1);
  expectSessionClosed();
}

TEST_F(ReadBatchTest, ACancelDuringThePauseAfterAFailureEndsTheRunBehindTheCv) {
  settings.continueOnError = true;
  openEco(kPlain);
  markRow(33);
  markRow(49);
  fault("noack");
  clock.schedule(2500, [this] { link.cancelRequested = true; });
  read();
  EXPECT_EQ(mark(33), CvMark::Failed);
  EXPECT_EQ(mark(49), CvMark::None);
  EXPECT_EQ(view.hides, 1);
  expectSessionClosed();
}

TEST_F(ReadBatchTest, TheWindowsFlagsHoldDuringTheRun) {
  openEco(kPlain);
  markRow(33);
  bool running = false;
  bool enabled = false;
  fault("late:1:500");
  clock.schedule(1300, [&] {
    running = bench->commRunning;
    enabled = view.progressEnabled;
  });
  read();
  EXPECT_TRUE(running);
  EXPECT_TRUE(enabled);
  EXPECT_EQ(value(33), 33);
}

TEST_F(ReadBatchTest, ABenchWithoutAViewWorksAsWell) {
  link.setView(nullptr);
  openEco(kPlain);
  markRow(33);
  read();
  EXPECT_EQ(value(33), 33);
}

}  // namespace
}  // namespace lokari
