// WriteComm against a simulated station, in virtual time.
#include "bench_fixture.h"

namespace lokari {
namespace {

const char* const kPlain =
    "[X]\nPROGMAIN=J\n"
    "CV_2=Spannung,0-63,3\nCV_3=Zeit\nCV_4=Bremse\nCV_5=Hoch\nCV_6=Mitte\n"
    "CV_9=Periode,0-99,0,2\n"
    "CV_30=Fehler,0-255,256,5\nCV_33=Licht,0-15,0,3\nCV_49=Regler,0-3,0,4\nCV_51=Klang,0-9,0,6\n";

class WriteBatchTest : public BenchFixture {
 protected:
  WriteBatchTest() {
    for (int cv = 2; cv <= 99; ++cv) record.recCvValues[0][cv - 1] = static_cast<char>(cv);
    record.recCvValues[0][28] = 2;
    record.recCvValues[0][18] = 0;
    decoder().store(29, 2);
  }

  QStringList steps() const { return view.statuses.mid(1, view.statuses.size() - 2); }
  int inDecoder(int cv) { return decoder().stored(cv); }
};

TEST_F(WriteBatchTest, NothingMarkedOpensNoLink) {
  openEco(kPlain);
  write();
  EXPECT_EQ(prompt.shown, QStringList({"Keine Daten zum Schreiben ausgewählt!"}));
  EXPECT_EQ(line.opens, 0);
  EXPECT_EQ(view.hides, 1);
  expectSessionClosed();
}

TEST_F(WriteBatchTest, WritesAndVerifiesWhatIsMarked) {
  openEco(kPlain);
  for (const char* box : {"chkWrt_2", "chkWrt_3", "chkWrt_4", "chkWrt_5", "chkWrt_6", "chkWrt_9"}) {
    check(box);
  }
  markRowForWriting(33);
  write();
  EXPECT_EQ(sent(), QStringList({"xPTWD 2, 2", "xPTWD 3, 3", "xPTWD 4, 4", "xPTWD 5, 5",
                                 "xPTWD 6, 6", "xPTWD 9, 9", "xPTWD 33, 33"}));
  EXPECT_EQ(steps(),
            QStringList({"Schreibe Minimalspannung (CV 2)", "Schreibe Beschleunigungszeit (CV 3)",
                         "Schreibe Bremszeit (CV 4)", "Schreibe Maximalgeschwindigkeit (CV 5)",
                         "Schreibe Mittengeschwindigkeit (CV 6)", "Schreibe Periode (CV 9)",
                         "Schreibe Licht (CV 33)"}));
  EXPECT_EQ(inDecoder(33), 33);
  EXPECT_EQ(mark(33), CvMark::Verified);
  EXPECT_EQ(row(33).colour, TextColour::Blue);
  EXPECT_EQ(control("txtDcDrvUser").colour, TextColour::Blue);
  EXPECT_EQ(value(33), 33);
  EXPECT_EQ(mark(49), CvMark::None);
  EXPECT_EQ(view.statuses.last(), "Beende Kommunikation ...");
  EXPECT_EQ(view.hides, 1);
  expectSessionClosed();
}

TEST_F(WriteBatchTest, TheSpeedTableIsWrittenByItsBox) {
  openEco("[X]\nFAMILY=1");
  check("chkWrt_Tbl");
  write();
  EXPECT_EQ(sent().size(), 15);
  EXPECT_EQ(sent().first(), "xPTWD 67, 67");
  EXPECT_EQ(steps().last(), "Schreibe Geschwindigkeitstabelle (CV 81)");
  EXPECT_EQ(mark(81), CvMark::Verified);
  EXPECT_EQ(mark(82), CvMark::None);
}

TEST_F(WriteBatchTest, PagedModeWritesTheFirstCvsAndTheConfigurationOnly) {
  openEco((std::string(kPlain) + "PROGMODE=1\n").c_str());
  bench->buttonClicked(QStringLiteral("cmdWriteAll"));
  bench->checkBoxToggled(QStringLiteral("chkDcAdrWrite"), false);
  write();
  EXPECT_EQ(sent(), QStringList({"xPTWP 2, 2", "xPTWP 3, 3", "xPTWP 4, 4", "xPTWP 29, 2"}));
}

TEST_F(WriteBatchTest, TheConsistAddressIsWrittenWithItsDirection) {
  record.recCvValues[0][18] = '\x85';
  openEco(kPlain);
  check("chkWrt_19");
  write();
  EXPECT_EQ(sent(), QStringList({"xPTWD 19, 133"}));
  EXPECT_EQ(steps(), QStringList({"Schreibe Verbundadresse (CV 19)"}));
  EXPECT_EQ(value(19), 133);
  EXPECT_EQ(text("txtDcComConsist"), "5");
  EXPECT_EQ(mark(19), CvMark::Verified);
}

// ---- CV 29 ------------------------------------------------------------------------------------

TEST_F(WriteBatchTest, TheConfigurationOfAShortAddressIsWrittenAsItIs) {
  openEco(kPlain);
  check("chkWrt_29");
  write();
  EXPECT_EQ(sent(), QStringList({"xPTWD 29, 2"}));
  EXPECT_EQ(mark(29), CvMark::Verified);
  EXPECT_EQ(control("optDcComSteps28").colour, TextColour::Blue);
}

TEST_F(WriteBatchTest, WithoutACheckBit5FollowsTheNumberInTheField) {
  openEco(kPlain, "128");
  check("chkDrvWrt_29");
  write();
  EXPECT_EQ(sent(), QStringList({"xPTWD 29, 34"}));
  EXPECT_EQ(value(29), 2) << "bit 5 goes to the decoder only";
}

TEST_F(WriteBatchTest, WithTheAddressCheckBit5IsTheDecodersAndIsAdded) {
  settings.addressCheckNow = true;
  decoder().setAddress(2000);
  openEco(kPlain, "2000");
  check("chkWrt_29");
  write();
  EXPECT_EQ(sent().last(), "xPTWD 29, 34");
}

TEST_F(WriteBatchTest, ABit5ThatIsAlreadyThereCarriesIntoBit6) {
  settings.addressCheckNow = true;
  decoder().setAddress(2000);
  record.recCvValues[0][28] = 34;
  openEco(kPlain, "2000");
  check("chkWrt_29");
  prompt.answers = {Answer::Ok};
  write();
  EXPECT_EQ(sent().last(), "xPTWD 29, 66");
  EXPECT_EQ(value(29), 66) << "the user has agreed to it, and the mark stands beside it";
}

TEST_F(WriteBatchTest, AValueNeverLeavesItsByte) {
  settings.addressCheckNow = true;
  decoder().setAddress(2000);
  record.recCvValues[0][28] = '\xE2';  // 226
  openEco(kPlain, "2000");
  check("chkWrt_29");
  write();
  EXPECT_EQ(sent().last(), "xPTWD 29, 226");
}

TEST_F(WriteBatchTest, RailComAddsItsBitWhateverTheValueHolds) {
  openEco((std::string(kPlain) + "RAILCOM=J\n").c_str());
  bench->optionClicked(QStringLiteral("optDcComRailComYes"));
  bench->sets.setValue(CvIndex(29), 2);
  check("chkWrt_29");
  write();
  EXPECT_EQ(sent(), QStringList({"xPTWD 29, 10"}));
}

TEST_F(WriteBatchTest, AFailedConfigurationIsRed) {
  openEco(kPlain);
  check("chkWrt_29");
  decoder().readOnly.insert(29);
  write();
  EXPECT_EQ(mark(29), CvMark::Failed);
  EXPECT_EQ(control("optDcComDirNormal").colour, TextColour::Red);
  EXPECT_EQ(value(29), 2);
}

// ---- The address ------------------------------------------------------------------------------

TEST_F(WriteBatchTest, Address127WritesCv1AndClearsBit5) {
  settings.addressCheckNow = true;
  decoder().setAddress(2000);
  openEco(kPlain, "127");
  check("chkDcAdrWrite");
  write();
  EXPECT_EQ(sent(), QStringList({"xPTRB 29", "xPTWD 1, 127", "xPTWD 29, 2", "xPTWD 29, 2"}))
      << "and CV 29 once more, since the kind of address changed";
  EXPECT_EQ(decoder().address(), 127);
  EXPECT_EQ(mark(1), CvMark::Verified);
  EXPECT_EQ(control("dc_adr").colour, TextColour::Blue);
  EXPECT_EQ(steps(), QStringList({"Lese Grundeinstellungen...", "Schreibe Adresse...",
                                  "Schreibe Grundeinstellungen (CV 29)"}));
}

TEST_F(WriteBatchTest, Address128WritesCv18Then17) {
  settings.addressCheckNow = true;
  openEco(kPlain, "128");
  check("chkDcAdrWrite");
  write();
  EXPECT_EQ(sent(), QStringList({"xPTRB 29", "xPTWD 29, 34", "xPTWD 18, 128", "xPTWD 17, 192"}));
  EXPECT_EQ(decoder().address(), 128);
  EXPECT_EQ(mark(17), CvMark::Verified);
  EXPECT_EQ(mark(18), CvMark::Verified);
  EXPECT_EQ(control("dc_adr").colour, TextColour::Blue);
  EXPECT_EQ(view.percents, (QList<double>{0, 50, 0}));
}

TEST_F(WriteBatchTest, Address10239) {
  settings.addressCheckNow = true;
  openEco(kPlain, "10239");
  check("chkDcAdrWrite");
  write();
  EXPECT_EQ(sent().mid(2), QStringList({"xPTWD 18, 255", "xPTWD 17, 231"}));
  EXPECT_EQ(decoder().address(), 10239);
}

TEST_F(WriteBatchTest, AfterALongAddressTheConfigurationCarriesBit5) {
  settings.addressCheckNow = true;
  openEco(kPlain, "128");
  check("chkDcAdrWrite");
  check("chkWrt_29");
  write();
  EXPECT_EQ(sent().last(), "xPTWD 29, 34");
}

TEST_F(WriteBatchTest, AfterALongAddressBit5IsMergedAndCarriesNowhere) {
  settings.addressCheckNow = true;
  record.recCvValues[0][28] = 34;
  openEco(kPlain, "128");
  check("chkDcAdrWrite");
  check("chkWrt_29");
  write();
  EXPECT_EQ(sent().last(), "xPTWD 29, 34");
}

TEST_F(WriteBatchTest, WithoutTheCheckTheConfigurationIsForced) {
  openEco(kPlain, "128");
  check("chkDcAdrWrite");
  write();
  EXPECT_EQ(sent(), QStringList({"xPTWD 18, 128", "xPTWD 17, 192", "xPTWD 29, 34"}));
  openEco(kPlain, "5");
  check("chkDcAdrWrite");
  write();
  EXPECT_EQ(sent(), QStringList({"xPTWD 1, 5", "xPTWD 29, 2"}));
  EXPECT_EQ(decoder().address(), 5);
}

TEST_F(WriteBatchTest, ADecoderWithoutLongAddressesIsAskedAbout) {
  settings.addressCheckNow = true;
  decoder().readOnly.insert(29);
  settings.continueOnError = true;
  openEco(kPlain, "128");
  check("chkDcAdrWrite");
  markRowForWriting(33);
  prompt.answers = {Answer::Ok};
  write();
  EXPECT_EQ(prompt.shown, QStringList({"Decoder unterstützt keine Adresse über 127!"}));
  EXPECT_EQ(sent(), QStringList({"xPTRB 29", "xPTWD 29, 34", "xPTWD 33, 33"}))
      << "no address is written, the rest is";
  EXPECT_EQ(mark(1), CvMark::Failed);
  EXPECT_EQ(mark(33), CvMark::Verified);
}

TEST_F(WriteBatchTest, ADecoderWithoutLongAddressesWithCancelEndsOrderly) {
  settings.addressCheckNow = true;
  settings.continueOnError = true;
  decoder().readOnly.insert(29);
  openEco(kPlain, "128");
  check("chkDcAdrWrite");
  markRowForWriting(33);
  prompt.answers = {Answer::Cancel};
  write();
  EXPECT_EQ(inDecoder(33), 0);
  EXPECT_EQ(view.hides, 1);
  expectSessionClosed();
}

TEST_F(WriteBatchTest, AShortAddressThatFailsLeavesTheKindOfAddressAlone) {
  settings.addressCheckNow = true;
  settings.continueOnError = true;
  decoder().setAddress(2000);
  decoder().readOnly.insert(1);
  openEco(kPlain, "5");
  check("chkDcAdrWrite");
  write();
  EXPECT_EQ(sent(), QStringList({"xPTRB 29", "xPTWD 1, 5"}));
  EXPECT_EQ(decoder().address(), 2000);
  EXPECT_EQ(mark(1), CvMark::Failed);
  EXPECT_EQ(control("dc_adr").colour, TextColour::Red);
}

TEST_F(WriteBatchTest, AShortAddressThatFailsEndsTheRun) {
  decoder().readOnly.insert(1);
  openEco(kPlain, "5");
  check("chkDcAdrWrite");
  markRowForWriting(33);
  write();
  EXPECT_EQ(view.statuses.last(), "Kein ACK vom Decoder");
  EXPECT_EQ(mark(1), CvMark::Failed);
  EXPECT_EQ(inDecoder(33), 0);
  EXPECT_EQ(view.hides, 0);
  expectSessionClosed();
}

TEST_F(WriteBatchTest, TheMarksOfTheLongAddressAreCrossed) {
  openEco(kPlain, "128");
  check("chkDcAdrWrite");
  decoder().readOnly.insert(17);
  write();
  EXPECT_EQ(mark(17), CvMark::Failed) << "the write of CV 17 failed, over the good mark of CV 18";
  EXPECT_EQ(mark(18), CvMark::None);
  openEco(kPlain, "128");
  check("chkDcAdrWrite");
  decoder().readOnly = {18};
  write();
  EXPECT_EQ(mark(17), CvMark::None);
  EXPECT_EQ(mark(18), CvMark::Failed);
  EXPECT_EQ(control("dc_adr").colour, TextColour::Red);
}

TEST_F(WriteBatchTest, AContinuedFailureOfALongAddressMarksBothHalves) {
  settings.continueOnError = true;
  openEco(kPlain, "128");
  check("chkDcAdrWrite");
  decoder().readOnly.insert(18);
  write();
  EXPECT_EQ(sent(), QStringList({"xPTWD 18, 128", "xPTWD 17, 192"}))
      << "the kind of address is left alone";
  EXPECT_EQ(mark(17), CvMark::Failed);
  EXPECT_EQ(mark(18), CvMark::Failed);
  EXPECT_EQ(control("dc_adr").colour, TextColour::Red);
}

TEST_F(WriteBatchTest, AnAddressThatIsNoneIsReportedAndTheRestGoesOn) {
  for (const char* address : {"abc", "", "0", "10240"}) {
    prompt.shown.clear();
    openEco(kPlain, address);
    prompt.shown.clear();
    check("chkDcAdrWrite");
    markRowForWriting(33);
    write();
    EXPECT_EQ(prompt.shown, QStringList({"Eingegebene Adresse ungültig!"})) << address;
    EXPECT_EQ(sent(), QStringList({"xPTWD 33, 33"})) << address;
  }
}

TEST_F(WriteBatchTest, AnUnmarkedAddressIsCompared) {
  settings.addressCheckNow = true;
  decoder().setAddress(47);
  openEco(kPlain, "3");
  markRowForWriting(33);
  prompt.answers = {Answer::Cancel, Answer::Ok};
  write();
  EXPECT_EQ(prompt.shown, QStringList({"Abweichende Adresse im Empfänger (47)!"}));
  EXPECT_EQ(sent(), QStringList({"xPTRB 29", "xPTRB 29", "xPTRB 1"}));
  EXPECT_EQ(view.statuses.mid(1, 2),
            QStringList({"Lese Grundeinstellungen...", "Adresskontrolle ..."}));
  EXPECT_EQ(mark(1), CvMark::Failed);
  write();
  EXPECT_EQ(inDecoder(33), 33);
  EXPECT_EQ(text("dc_adr"), "3") << "nothing is taken over";
}

TEST_F(WriteBatchTest, AnAddressFieldThatIsNoNumberIsNotCompared) {
  settings.addressCheckNow = true;
  openEco(kPlain, "abc");
  markRowForWriting(33);
  write();
  EXPECT_TRUE(prompt.shown.isEmpty());
  EXPECT_EQ(inDecoder(33), 33);
}

TEST_F(WriteBatchTest, AnAddressCheckThatCouldNotBeMadeIsAskedAboutWithoutAnAddressToo) {
  settings.addressCheckNow = true;
  settings.continueOnError = true;
  for (const char* address : {"abc", "", "0"}) {
    openEco(kPlain, address);
    prompt.shown.clear();
    prompt.answers = {Answer::Cancel, Answer::Ok};
    markRowForWriting(33);
    fault("noack:4");
    write();
    EXPECT_EQ(prompt.shown, QStringList({"Die Adresse des Decoders ließ sich nicht prüfen!"}))
        << address;
    EXPECT_EQ(sent(), QStringList({"xPTRB 29", "xPTRB 29"})) << address;
    write();
    EXPECT_EQ(sent().last(), "xPTWD 33, 33") << address;
    decoder().store(33, 0);
  }
}

TEST_F(WriteBatchTest, AConfigurationThatCouldNotBeReadIsNotWrittenBack) {
  settings.addressCheckNow = true;
  settings.continueOnError = true;
  decoder().setAddress(2000);
  openEco(kPlain, "2001");
  check("chkDcAdrWrite");
  fault("noack");
  prompt.answers = {Answer::Ok};
  write();
  EXPECT_EQ(prompt.shown, QStringList({"Die Art des Decoders (CV 29) ließ sich nicht prüfen!"}));
  EXPECT_EQ(sent(), QStringList({"xPTRB 29", "xPTWD 18, 209", "xPTWD 17, 199", "xPTWD 29, 34"}));
}

// ---- Questions --------------------------------------------------------------------------------

TEST_F(WriteBatchTest, AnotherMakerEndsTheRunOnBothAnswers) {
  settings.manufacturerCheckNow = true;
  decoder().store(8, 131);
  describe("Fahrwerk/FW-28.dec", "[FW-28]\nMAXADDRESS=28");
  openEco(kPlain);
  markRowForWriting(33);
  prompt.answers = {Answer::Cancel, Answer::Ok};
  write();
  EXPECT_EQ(prompt.shown, QStringList({"Abweichender Decoderhersteller (Fahrwerk)!"}));
  EXPECT_EQ(text("cbDcManuf"), "Adlerton");
  EXPECT_EQ(inDecoder(33), 0);
  expectSessionClosed();
  view.captions.clear();
  write();
  EXPECT_EQ(text("cbDcManuf"), "Fahrwerk");
  EXPECT_EQ(bench->description.MAXADDRESS, 28);
  EXPECT_EQ(inDecoder(33), 0) << "the description differs now, so nothing is written";
  EXPECT_EQ(sent(), QStringList({"xPTRB 8"}));
  EXPECT_EQ(view.hides, 2);
  expectSessionClosed();
}

TEST_F(WriteBatchTest, TheSameMakerAndMaker13RaiseNoQuestion) {
  settings.manufacturerCheckNow = true;
  for (const int maker : {97, 13, 0}) {
    decoder().store(8, maker);
    openEco(kPlain);
    markRowForWriting(33);
    write();
    EXPECT_TRUE(prompt.shown.isEmpty()) << maker;
    EXPECT_EQ(sent(), QStringList({"xPTRB 8", "xPTWD 33, 33"}));
  }
}

TEST_F(WriteBatchTest, AFunctionDecoderIsWarnedOf) {
  settings.addressCheckNow = true;
  decoder().store(29, 128 + 2);
  openEco(kPlain);
  markRowForWriting(33);
  prompt.answers = {Answer::Cancel, Answer::Ok};
  write();
  EXPECT_EQ(prompt.shown, QStringList({"Achtung: Funktionsdecoder!"}));
  EXPECT_EQ(inDecoder(33), 0);
  write();
  EXPECT_EQ(inDecoder(33), 33);
}

// ---- Banks ------------------------------------------------------------------------------------

class WriteBanks : public WriteBatchTest {
 protected:
  WriteBanks() {
    decoder().banks = {{{16, 0}, {{257, 11}, {258, 12}}}, {{16, 1}, {{257, 21}}}};
    record.recCvValues[0][1023] = 51;
    record.recCvValues[0][1024] = 53;
    record.recCvValues[0][1279] = 52;
    openEco(
        "[X]\nMAPCVA=31\nMAPCVB=32\nMAPVALA_2=16\nMAPVALB_2=0\nMAPVALA_3=16\nMAPVALB_3=1\n"
        "CV_257_2=Motor,0-128,100,6\nCV_258_2=Pfiff,0-128,1,6\nCV_257_3=Bremse,0-128,1,6\n");
  }
};

TEST_F(WriteBanks, TheBankIsSelectedFirst) {
  markRowForWriting(1024);
  markRowForWriting(1280);
  write();
  EXPECT_EQ(sent(), QStringList({"xPTWD 31, 16", "xPTWD 32, 0", "xPTWD 257, 51", "xPTWD 31, 16",
                                 "xPTWD 32, 1", "xPTWD 257, 52"}));
  EXPECT_EQ(steps(), QStringList({"Schreibe Motor (CV 257 (2))", "Schreibe Bremse (CV 257 (3))"}));
  EXPECT_EQ(mark(1280), CvMark::Verified);
}

TEST_F(WriteBanks, ABankThatWasMissedIsSelectedAnewForTheNextCv) {
  settings.continueOnError = true;
  markRowForWriting(1024);
  markRowForWriting(1025);
  fault("noack@1");
  write();
  EXPECT_EQ(sent(), QStringList({"xPTWD 31, 16", "xPTWD 32, 0", "xPTWD 31, 16", "xPTWD 32, 0",
                                 "xPTWD 258, 53"}));
  EXPECT_EQ(mark(1024), CvMark::Failed);
  EXPECT_EQ(mark(1025), CvMark::Verified);
  EXPECT_EQ(view.details.first(), "CV 257 (2): Bank nicht gewählt (CV 32)");
}

TEST_F(WriteBanks, WithoutItsBankACvIsNeverWritten) {
  settings.continueOnError = true;
  decoder().store(31, 16);
  decoder().store(32, 0);
  decoder().readOnly.insert(32);
  markRowForWriting(1280);
  write();
  EXPECT_EQ(sent(), QStringList({"xPTWD 31, 16", "xPTWD 32, 1"}));
  EXPECT_EQ(decoder().banks[0].values[257], 11);
  EXPECT_EQ(mark(1280), CvMark::Failed);
  EXPECT_EQ(value(1280), 52);
  EXPECT_EQ(row(1280).colour, TextColour::Red);
}

// ---- The main track ---------------------------------------------------------------------------

TEST_F(WriteBatchTest, OnTheMainTrackNothingIsRead) {
  settings.addressCheckNow = true;
  settings.manufacturerCheckNow = true;
  openEco(kPlain, "3");
  markRowForWriting(33);
  check("chkWrt_29");
  runJob(CommJob::WriteMain);
  EXPECT_EQ(sent(), QStringList({"xPD 3, 29, 2", "xPD 3, 33, 33"}));
  EXPECT_EQ(link.pomAddr, 3);
  EXPECT_EQ(mark(33), CvMark::Verified);
  expectSessionClosed();
}

TEST_F(WriteBatchTest, WithoutAnAddressNothingIsWrittenOnTheMainTrack) {
  for (const char* address : {"", "0", "10240"}) {
    link.pomAddr = 7;  // of the vehicle before
    openEco(kPlain, address);
    prompt.shown.clear();
    markRowForWriting(33);
    runJob(CommJob::WriteMain);
    EXPECT_EQ(prompt.shown, QStringList({"Eingegebene Adresse ungültig!"})) << address;
    EXPECT_EQ(sent(), QStringList()) << address;
    EXPECT_EQ(link.commUseCount, 0);
  }
}

TEST_F(WriteBatchTest, AnAddressThatTheStationDoesNotKnowEndsTheRun) {
  settings.baseUnit = StationKind::Mx1;
  settings.continueOnError = true;
  openEco(kPlain, "1000");
  markRowForWriting(33);
  fault("silence:immer");
  runJob(CommJob::WriteMain);
  EXPECT_EQ(prompt.shown, QStringList({"Adresse derzeit nicht verfügbar!"}));
  EXPECT_EQ(sent().filter(QStringLiteral("E03E8")).size(), 2) << "asked twice, nothing written";
  EXPECT_FALSE(settings.continueOnError);
  EXPECT_EQ(view.hides, 0);
  EXPECT_EQ(view.statuses.last(), "Adresse derzeit nicht verfügbar!");
  EXPECT_EQ(mark(33), CvMark::None);
  expectSessionClosed();
}

// ---- Failures ---------------------------------------------------------------------------------

TEST_F(WriteBatchTest, AFailureEndsTheRunAndShowsTheValueInRed) {
  openEco(kPlain);
  decoder().readOnly.insert(33);
  markRowForWriting(33);
  markRowForWriting(49);
  write();
  EXPECT_EQ(view.statuses.last(), "Kein ACK vom Decoder");
  EXPECT_EQ(prompt.beeps, 1);
  EXPECT_EQ(mark(33), CvMark::Failed);
  EXPECT_EQ(row(33).text, "33");
  EXPECT_EQ(row(33).colour, TextColour::Red);
  EXPECT_EQ(inDecoder(49), 0);
  EXPECT_EQ(view.hides, 0);
  expectSessionClosed();
}

TEST_F(WriteBatchTest, AContinuedFailureGoesOnWithTheNextCv) {
  settings.continueOnError = true;
  openEco(kPlain);
  decoder().readOnly.insert(33);
  markRowForWriting(33);
  markRowForWriting(49);
  check("chkWrt_Tbl");
  decoder().readOnly.insert(70);
  write();
  EXPECT_EQ(mark(33), CvMark::Failed);
  EXPECT_EQ(value(33), 33);
  EXPECT_EQ(mark(49), CvMark::Verified);
  EXPECT_EQ(inDecoder(49), 49);
  EXPECT_EQ(mark(70), CvMark::Failed);
  EXPECT_EQ(mark(71), CvMark::Verified);
  EXPECT_EQ(prompt.beeps, 2);
  EXPECT_EQ(view.hides, 1);
  expectSessionClosed();
}

TEST_F(WriteBatchTest, SilenceAndGarbageHaveTheirTexts) {
  openEco(kPlain);
  markRowForWriting(33);
  fault("silence");
  write();
  EXPECT_EQ(view.statuses.last(), "Keine Antwort vom Basisgerät");
  fault("garbage");
  write();
  EXPECT_EQ(view.statuses.last(), "Falsche Antwort vom Basisgerät");
}

TEST_F(WriteBatchTest, ACancelEndsOrderly) {
  openEco(kPlain);
  markRowForWriting(33);
  markRowForWriting(49);
  fault("silence");
  clock.schedule(2000, [this] { link.cancelRequested = true; });
  write();
  EXPECT_EQ(sent(), QStringList({"xPTWD 33, 33"}));
  EXPECT_EQ(view.statuses.last(), "Beende Kommunikation ...");
  EXPECT_EQ(prompt.beeps, 0);
  expectSessionClosed();
}

TEST_F(WriteBatchTest, APortThatVanishesEndsTheRun) {
  settings.continueOnError = true;
  openEco(kPlain);
  markRowForWriting(33);
  markRowForWriting(49);
  fault("unplugged");
  write();
  EXPECT_EQ(sent(), QStringList({"xPTWD 33, 33"}));
  EXPECT_EQ(view.hides, 0);
  EXPECT_EQ(value(33), 33);
  expectSessionClosed();
}

}  // namespace
}  // namespace lokari
