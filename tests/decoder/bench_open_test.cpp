// Opening the bench, choosing maker, type and set, closing it.
#include "bench_fixture.h"

namespace lokari {
namespace {

class BenchOpen : public BenchFixture {};

TEST_F(BenchOpen, TakesTheSetsAndFindsTheCurrentOneByItsName) {
  record.recCvName = {QStringLiteral("Anlage"), QStringLiteral("  "), QStringLiteral("Rangier"),
                      QString(), QString()};
  record.recSetName = QStringLiteral("Rangier");
  record.recCvValues[2][2] = 17;
  record.recCvMarks[2][2] = '1';
  openEco("[X]\nCV_3=Beschleunigung");
  EXPECT_EQ(control("cbDcVer").items,
            QStringList({"Anlage", "Set 2", "Rangier", "Set 4", "Set 5"}));
  EXPECT_EQ(text("cbDcVer"), "Rangier");
  EXPECT_EQ(bench->sets.currentSet(), SetNumber(3));
  EXPECT_EQ(value(3), 17);
  EXPECT_EQ(text("txtDcComAccTime"), "17");
  EXPECT_EQ(control("txtDcComAccTime").colour, TextColour::Blue);
  EXPECT_TRUE(control("cmdCopy").enabled);
}

TEST_F(BenchOpen, AnUnknownSetNameMeansSetOne) {
  record.recSetName = QStringLiteral("nirgends");
  openEco("[X]");
  EXPECT_EQ(bench->sets.currentSet(), SetNumber(1));
  EXPECT_EQ(text("cbDcVer"), "Set 1");
  EXPECT_FALSE(control("cmdCopy").enabled);
}

TEST_F(BenchOpen, ShorterStoredArraysGetZerosBehindThem) {
  record.recCvValues[0] = QByteArray(1000, '\x05');
  record.recCvMarks[0] = QByteArray();
  openEco("[X]");
  EXPECT_EQ(bench->sets.cvValues.size(), 4865);
  EXPECT_EQ(value(1000), 5);
  EXPECT_EQ(value(1001), 0);
  EXPECT_EQ(bench->sets.cvMarks, QByteArray(4865, '\0'));
}

TEST_F(BenchOpen, ShowsMakerTypeAndAddress) {
  openEco("[X]", "47");
  EXPECT_EQ(bench->dcManufNo, 97);
  EXPECT_EQ(text("cbDcManuf"), "Adlerton");
  EXPECT_EQ(control("cbDcManuf").items.first(), "Standard");
  EXPECT_EQ(control("cbDcDecoder").items, QStringList({"AT-SND16", "AT-NANO", "AT-ECO"}));
  EXPECT_EQ(text("cbDcDecoder"), "AT-ECO");
  EXPECT_EQ(text("dc_adr"), "47");
  EXPECT_EQ(focused, QStringList({"dc_adr"}));
  EXPECT_FALSE(control("cmdName").enabled);
  EXPECT_FALSE(bench->windowOpening);
  EXPECT_EQ(bench->selectedTab(), 0);
}

TEST_F(BenchOpen, AnUnknownTypeFallsBackToTheMakersFirst) {
  describe("Adlerton/AT-SND16.dec", "[X]\nMAXADDRESS=55");
  record.recManuf = 97;
  record.recDecoder = QStringLiteral("weg");
  bench->open(record, QStringLiteral("3"));
  EXPECT_EQ(text("cbDcDecoder"), "AT-SND16");
  EXPECT_EQ(bench->description.MAXADDRESS, 55);
}

TEST_F(BenchOpen, AMakerWithoutTypesFallsBackToDefault) {
  describe("Default.dec", "[X]\nMAXADDRESS=66");
  record.recManuf = 112;
  bench->open(record, QStringLiteral("3"));
  EXPECT_EQ(text("cbDcManuf"), "Brixner");
  EXPECT_EQ(text("cbDcDecoder"), "Default");
  EXPECT_EQ(bench->description.MAXADDRESS, 66);
}

TEST_F(BenchOpen, NoMakerMeansNoTypeAndTheDefaultFile) {
  describe("Default.dec", "[X]\nMAXADDRESS=66");
  record.recManuf = 99;
  bench->open(record, QStringLiteral("3"));
  EXPECT_EQ(bench->dcManufNo, 0);
  EXPECT_EQ(text("cbDcManuf"), "");
  EXPECT_EQ(text("cbDcDecoder"), "");
  EXPECT_EQ(bench->description.MAXADDRESS, 66);
  EXPECT_TRUE(prompt.shown.isEmpty());
}

TEST_F(BenchOpen, AMissingFileFallsBackToDefaultInSilence) {
  describe("default.DEC", "[X]\nMAXADDRESS=66");
  record.recManuf = 97;
  record.recDecoder = QStringLiteral("AT-NANO");
  bench->open(record, QStringLiteral("3"));
  EXPECT_EQ(bench->description.MAXADDRESS, 66);
  EXPECT_TRUE(prompt.shown.isEmpty());
}

TEST_F(BenchOpen, WithoutDefaultFileTheMessageNamesThePathAndNothingElseHappens) {
  record.recCvValues[0][6] = 33;
  bench->open(record, QStringLiteral("3"));
  EXPECT_EQ(prompt.shown, QStringList({"Standard-Decoderdatei " + folder.path() +
                                       "/Default.dec nicht gefunden!"}));
  EXPECT_TRUE(bench->rows().empty());
  EXPECT_EQ(value(7), 33);
}

TEST_F(BenchOpen, AFileThatStopsInTheMiddleKeepsWhatWasReadAndSaysNothing) {
  openEco("[X]\nMAXADDRESS=5\nCV_30=Name,0-5,3,5\nTYPE=40000\nCV_31=Name");
  EXPECT_EQ(bench->description.MAXADDRESS, 5);
  EXPECT_TRUE(cv(30).exists());
  EXPECT_FALSE(cv(31).exists());
  EXPECT_TRUE(bench->rows().empty()) << "the window is not adapted";
  EXPECT_EQ(control("labAdr").caption, "");
  EXPECT_TRUE(prompt.shown.isEmpty());
}

TEST_F(BenchOpen, UmlautsOfDescriptionFilesAreRead) {
  openEco("[X]\nCV_30=Höhe,0-5");
  EXPECT_EQ(cv(30).cvName, QStringLiteral("Höhe"));
}

TEST_F(BenchOpen, OpeningKeepsTheStoredValuesAndMarks) {
  record.recCvValues[0][29] = 9;
  record.recCvMarks[0][29] = '2';
  record.recCvValues[0][66] = 7;
  record.recCvValues[0][6] = 4;
  openEco("[X]\nSPEEDTABVALUES=1,2,3\nCV_30=Name,0-9,5,5");
  EXPECT_EQ(value(30), 9);
  EXPECT_EQ(mark(30), CvMark::Failed);
  EXPECT_EQ(value(67), 7);
  EXPECT_EQ(value(7), 4);
  EXPECT_EQ(row(30).text, "9");
  EXPECT_EQ(row(30).colour, TextColour::Red);
}

// ---- Choosing ---------------------------------------------------------------------------------

TEST_F(BenchOpen, AnotherTypeIsLoadedATenthOfASecondLater) {
  openEco("[X]\nMAXADDRESS=5", "3");
  describe("Adlerton/AT-NANO.dec", "[X]\nMAXADDRESS=77");
  bench->selectTab(1);
  bench->chooseDecoder(QStringLiteral("AT-NANO"));
  EXPECT_EQ(bench->selectedTab(), 0);
  EXPECT_FALSE(control("ssDecoder").enabled);
  EXPECT_EQ(bench->description.MAXADDRESS, 5);
  clock.advance(99);
  EXPECT_EQ(bench->description.MAXADDRESS, 5);
  clock.advance(1);
  EXPECT_EQ(bench->description.MAXADDRESS, 77);
  EXPECT_TRUE(control("ssDecoder").enabled);
}

TEST_F(BenchOpen, AnotherTypeThrowsMarksAwayAndTakesItsDefaults) {
  record.recCvMarks[0].fill('1');
  record.recCvValues[0].fill('\x09');
  chooseEco(
      "[X]\nINTERNALSTEPS=126\nCV_2=Spannung,0-63,3\nCV_30=Fehler,0-255,256,5\n"
      "CV_31=Wert,0-255,31,5");
  EXPECT_EQ(mark(1), CvMark::Verified) << "the address is not the type's";
  for (int i = 2; i <= 4864; ++i) ASSERT_EQ(mark(i), CvMark::None) << i;
  EXPECT_EQ(value(2), 3);
  EXPECT_EQ(value(30), 0);
  EXPECT_EQ(value(31), 31);
  EXPECT_EQ(value(32), 9) << "a CV that the type lacks keeps its value";
  EXPECT_EQ(value(7), 0);
}

TEST_F(BenchOpen, AnotherTypeGetsTheStraightTable) {
  chooseEco("[X]\nINTERNALSTEPS=126");
  EXPECT_EQ(value(67), 4);  // 4.5, tie to the even number
  EXPECT_EQ(value(68), 9);
  EXPECT_EQ(value(69), 14);  // 13.5
  EXPECT_EQ(value(94), 126);
}

TEST_F(BenchOpen, AShortStraightTableHasFifteenPoints) {
  record.recCvValues[0][81] = 3;
  chooseEco("[X]\nFAMILY=1\nINTERNALSTEPS=255");
  EXPECT_EQ(value(67), 17);
  EXPECT_EQ(value(81), 255);
  EXPECT_EQ(value(82), 3);
}

TEST_F(BenchOpen, AnotherTypeGetsItsFactoryTable) {
  chooseEco("[X]\nSPEEDTABVALUES=5,6,7");
  EXPECT_EQ(value(67), 5);
  EXPECT_EQ(value(69), 7);
  EXPECT_EQ(value(70), 0) << "no straight line beside a factory table";
}

TEST_F(BenchOpen, AnotherMakerOffersItsTypesAndTakesTheFirst) {
  openEco("[X]");
  describe("Fahrwerk/FW-28.dec", "[X]\nMAXADDRESS=28");
  bench->chooseManufacturer(QStringLiteral("Fahrwerk"));
  clock.advance(100);
  EXPECT_EQ(bench->dcManufNo, 131);
  EXPECT_EQ(control("cbDcDecoder").items, QStringList({"FW-28", "FW-F8"}));
  EXPECT_EQ(text("cbDcDecoder"), "FW-28");
  EXPECT_EQ(bench->description.MAXADDRESS, 28);
}

TEST_F(BenchOpen, AJobThatIsStartedAtOnceWaitsForTheType) {
  openEco("[X]");
  describe("Adlerton/AT-NANO.dec", "[X]\nMAXADDRESS=77");
  bench->chooseDecoder(QStringLiteral("AT-NANO"));
  bench->buttonClicked(QStringLiteral("cmdDcRead"));
  EXPECT_EQ(bench->description.MAXADDRESS, 77);
  EXPECT_EQ(link.commJob, CommJob::ReadProgTrack);
}

// ---- Sets -------------------------------------------------------------------------------------

TEST_F(BenchOpen, AnotherSetIsShownAndTheOldOneKept) {
  record.recCvValues[1][29] = 22;
  record.recCvMarks[1][29] = '1';
  openEco("[X]\nCV_30=Wert,0-255,0,5");
  bench->rowEdited(rowOf(30), QStringLiteral("11"));
  bench->rowLeft(rowOf(30));
  bench->chooseSet(QStringLiteral("Set 2"));
  EXPECT_EQ(bench->sets.currentSet(), SetNumber(2));
  EXPECT_EQ(row(30).text, "22");
  EXPECT_EQ(row(30).colour, TextColour::Blue);
  EXPECT_EQ(mark(30), CvMark::Verified) << "showing a set is no change by the user";
  EXPECT_TRUE(control("cmdCopy").enabled);
  bench->chooseSet(QStringLiteral("Set 1"));
  EXPECT_EQ(row(30).text, "11");
  EXPECT_FALSE(control("cmdCopy").enabled);
}

TEST_F(BenchOpen, AnotherSetKeepsTheMarksOfItsOptions) {
  record.recCvValues[1][28] = 1;
  record.recCvMarks[1][28] = '1';
  record.recCvValues[1][18] = '\x82';  // 130
  record.recCvMarks[1][18] = '2';
  openEco("[X]");
  bench->chooseSet(QStringLiteral("Set 2"));
  EXPECT_TRUE(checked("optDcComDirReverse"));
  EXPECT_EQ(mark(29), CvMark::Verified);
  EXPECT_EQ(control("optDcComDirReverse").colour, TextColour::Blue);
  EXPECT_EQ(mark(19), CvMark::Failed);
  EXPECT_EQ(text("txtDcComConsist"), "2");
  EXPECT_EQ(control("txtDcComConsist").colour, TextColour::Red);
}

TEST_F(BenchOpen, ATypeChosenJustBeforeAnotherSetGivesItsDefaultsToTheOldOne) {
  record.recCvValues[1][30] = 22;
  openEco("[X]");
  describe("Adlerton/AT-NANO.dec", "[X]\nCV_31=Wert,0-255,7,5");
  bench->chooseDecoder(QStringLiteral("AT-NANO"));
  bench->chooseSet(QStringLiteral("Set 2"));
  clock.advance(100);
  EXPECT_EQ(value(31), 22);
  EXPECT_EQ(row(31).text, "22");
  bench->chooseSet(QStringLiteral("Set 1"));
  EXPECT_EQ(value(31), 7);
}

TEST_F(BenchOpen, OfTwoSetsOfOneNameOnlyTheFirstIsReached) {
  record.recCvName[0] = QStringLiteral("Gleich");
  record.recCvName[3] = QStringLiteral("Gleich");
  record.recSetName = QStringLiteral("Set 2");
  openEco("[X]");
  bench->chooseSet(QStringLiteral("Gleich"));
  EXPECT_EQ(bench->sets.currentSet(), SetNumber(1));
}

TEST_F(BenchOpen, ASetIsRenamedWhenTheListIsLeft) {
  record.recSetName = QStringLiteral("Set 3");
  openEco("[X]");
  bench->setNameLeft(QStringLiteral("Gleis 5"));
  EXPECT_EQ(bench->sets.setNames(SetNumber(3)), "Gleis 5");
  EXPECT_EQ(bench->sets.currentSetName, "Gleis 5");
  EXPECT_EQ(control("cbDcVer").items.at(2), "Gleis 5");
}

TEST_F(BenchOpen, ABlankSetNameBecomesTheStandardOne) {
  record.recSetName = QStringLiteral("Set 3");
  openEco("[X]");
  bench->setNameLeft(QStringLiteral("  "));
  EXPECT_EQ(text("cbDcVer"), "Set 3");
  bench->cmdOK(record);
  EXPECT_EQ(record.recCvName[2], "Set 3");
  EXPECT_EQ(record.recSetName, "Set 3");
}

TEST_F(BenchOpen, ANinthCharacterOfASetNameIsSwallowed) {
  EXPECT_TRUE(DecoderBench::setNameTakes(QStringLiteral("1234567"), 'x'));
  EXPECT_FALSE(DecoderBench::setNameTakes(QStringLiteral("12345678"), 'x'));
  EXPECT_FALSE(DecoderBench::setNameTakes(QStringLiteral("12345678"), 32));
  EXPECT_TRUE(DecoderBench::setNameTakes(QStringLiteral("12345678"), 8));
}

// ---- Closing ----------------------------------------------------------------------------------

TEST_F(BenchOpen, OkHandsEverythingBack) {
  openEco("[X]\nCV_30=Wert,0-255,0,5");
  bool success = false;
  QObject::connect(bench.get(), &DecoderBench::closed, bench.get(),
                   [&success](bool ok) { success = ok; });
  bench->rowEdited(rowOf(30), QStringLiteral("11"));
  bench->rowLeft(rowOf(30));
  bench->setNameLeft(QStringLiteral("Neu"));
  bench->cmdOK(record);
  EXPECT_TRUE(success);
  EXPECT_EQ(record.recCvValues[0].at(29), 11);
  EXPECT_EQ(record.recCvValues[0].size(), 4865);
  EXPECT_EQ(record.recCvName[0], "Neu");
  EXPECT_EQ(record.recCvName[4], "Set 5");
  EXPECT_EQ(record.recSetName, "Neu");
  EXPECT_EQ(record.recManuf, 97);
  EXPECT_EQ(record.recDecoder, "AT-ECO");
}

TEST_F(BenchOpen, OkWithAnUnknownMakerSaysSoAndKeepsTheNumber) {
  describe("Default.dec", "[X]");
  record.recManuf = 99;
  bench->open(record, QStringLiteral("3"));
  bench->cmdOK(record);
  EXPECT_EQ(prompt.shown, QStringList({"Decoderhersteller nicht gefunden!"}));
  EXPECT_EQ(record.recManuf, 99);
}

TEST_F(BenchOpen, CancelLeavesTheRecordAlone) {
  openEco("[X]\nCV_30=Wert,0-255,0,5");
  const CvRecord before = record;
  bench->rowEdited(rowOf(30), QStringLiteral("11"));
  bench->rowLeft(rowOf(30));
  bench->cmdCancel();
  EXPECT_EQ(record.recCvValues[0], before.recCvValues[0]);
  EXPECT_EQ(record.recCvName[0], before.recCvName[0]);
}

TEST_F(BenchOpen, TheVersionShowsItsPartsForTheMakerThatHasThem) {
  record.recCvValues[0][6] = 30;
  openEco("[X]");
  EXPECT_EQ(text("txtDcComVersion"), "30");
  record.recCvValues[0][7] = '\x91';  // CV 8 = 145
  record.recCvValues[0][64] = 12;
  record.recCvValues[0][249] = '\xDC';  // CV 250 = 220
  openEco("[X]");
  EXPECT_EQ(text("txtDcComVersion"), "30.12 (MX620)");
  record.recCvValues[0][249] = 5;
  openEco("[X]");
  EXPECT_EQ(text("txtDcComVersion"), "30.12");
}

TEST_F(BenchOpen, TheCheckBoxesOfTheChecksShowAndSetThem) {
  settings.addressCheckNow = true;
  openEco("[X]");
  EXPECT_TRUE(checked("chkDcAdrChk"));
  EXPECT_FALSE(checked("chkDcManufChk"));
  bench->checkBoxToggled(QStringLiteral("chkDcAdrChk"), false);
  bench->checkBoxToggled(QStringLiteral("chkDcManufChk"), true);
  EXPECT_FALSE(settings.addressCheckNow);
  EXPECT_TRUE(settings.manufacturerCheckNow);
}

TEST_F(BenchOpen, ANameFromTheDatabaseCannotLeaveTheFolder) {
  describe("Default.dec", "[X]\nMAXADDRESS=66");
  describe("geheim.dec", "[X]\nMAXADDRESS=1");
  openEco("[X]");
  bench->chooseDecoder(QStringLiteral("../gehe"));
  clock.advance(100);
  EXPECT_EQ(bench->description.MAXADDRESS, 66);
}

}  // namespace
}  // namespace lokari
