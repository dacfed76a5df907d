// RdComm: the checks of address, maker and kind of decoder ahead of the reading.
#include "read_fixture.h"

namespace lokari {
namespace {

class ReadChecks : public ReadFixture {};

// ---- Address ----------------------------------------------------------------------------------

TEST_F(ReadChecks, TheSameAddressRaisesNoQuestion) {
  settings.addressCheckNow = true;
  openEco(kReadDescription);
  markRow(33);
  read();
  EXPECT_EQ(sent(), QStringList({"xPTRB 29", "xPTRB 1", "xPTRB 33"}));
  EXPECT_EQ(steps().first(), "Adresskontrolle ...");
  EXPECT_TRUE(prompt.shown.isEmpty());
  EXPECT_EQ(mark(1), CvMark::None);
}

TEST_F(ReadChecks, AnotherAddressIsAskedAboutAndOkGoesOn) {
  settings.addressCheckNow = true;
  decoder().setAddress(47);
  openEco(kReadDescription);
  markRow(33);
  prompt.answers = {Answer::Ok};
  read();
  EXPECT_EQ(prompt.shown, QStringList({"Abweichende Adresse im Empfänger (47)!"}));
  EXPECT_EQ(value(33), 33);
  EXPECT_EQ(text("dc_adr"), "3") << "not asked for, so not taken over";
  EXPECT_EQ(mark(1), CvMark::Failed);
  EXPECT_EQ(control("dc_adr").colour, TextColour::Red);
}

TEST_F(ReadChecks, AnotherAddressWithCancelEndsOrderly) {
  settings.addressCheckNow = true;
  decoder().setAddress(47);
  openEco(kReadDescription);
  markRow(33);
  prompt.answers = {Answer::Cancel};
  read();
  EXPECT_EQ(value(33), 0);
  EXPECT_EQ(view.statuses.last(), "Beende Kommunikation ...");
  EXPECT_EQ(view.hides, 1);
  expectSessionClosed();
}

TEST_F(ReadChecks, AnAddressThatIsNoNumberDiffersFromEveryOther) {
  settings.addressCheckNow = true;
  openEco(kReadDescription, "abc");
  markRow(33);
  prompt.answers = {Answer::Ok};
  read();
  EXPECT_EQ(prompt.shown, QStringList({"Abweichende Adresse im Empfänger (3)!"}));
}

TEST_F(ReadChecks, OnlyTheAddressMarkedIsOneReadAndTakesItOver) {
  decoder().setAddress(47);
  openEco(kReadDescription);
  check("chkDcAdrRead");
  prompt.answers = {Answer::Ok};
  read();
  EXPECT_EQ(sent(), QStringList({"xPTRB 29", "xPTRB 1"}));
  EXPECT_EQ(text("dc_adr"), "47");
  EXPECT_EQ(mark(1), CvMark::Verified);
  EXPECT_EQ(control("dc_adr").colour, TextColour::Blue);
  EXPECT_EQ(view.percents, (QList<double>{0, 100, 0}));
}

TEST_F(ReadChecks, ALongAddressComesFromCv18And17) {
  decoder().store(29, 34);
  decoder().store(17, 192 + 7);
  decoder().store(18, 208);
  openEco(kReadDescription, "2000");
  check("chkDcAdrRead");
  read();
  EXPECT_EQ(sent(), QStringList({"xPTRB 29", "xPTRB 18", "xPTRB 17"}));
  EXPECT_TRUE(prompt.shown.isEmpty());
  EXPECT_EQ(text("dc_adr"), "2000");
}

TEST_F(ReadChecks, ALongAddressBeyondTheHighestIsNotTakenOver) {
  decoder().store(29, 34);
  decoder().store(17, 192 + 40);
  decoder().store(18, 0);
  openEco(kReadDescription, "3");
  check("chkDcAdrRead");
  prompt.answers = {Answer::Ok};
  read();
  EXPECT_EQ(prompt.shown, QStringList({"Abweichende Adresse im Empfänger (10240)!"}));
  EXPECT_EQ(text("dc_adr"), "3");
  EXPECT_EQ(mark(1), CvMark::Failed);
}

TEST_F(ReadChecks, AContinuedFailureOfTheCheckFindsAddressZero) {
  settings.continueOnError = true;
  openEco(kReadDescription);
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

TEST_F(ReadChecks, AContinuedFailureOfHalfALongAddressFindsAddressZero) {
  settings.continueOnError = true;
  decoder().setAddress(2000);
  openEco(kReadDescription, "2000");
  check("chkDcAdrRead");
  fault("noack@1");
  prompt.answers = {Answer::Ok};
  read();
  EXPECT_EQ(sent(), QStringList({"xPTRB 29", "xPTRB 18"})) << "the other half is not read";
  EXPECT_EQ(prompt.shown, QStringList({"Abweichende Adresse im Empfänger (0)!"}));
  EXPECT_EQ(text("dc_adr"), "2000") << "nothing was found to take over";
  EXPECT_EQ(mark(1), CvMark::Failed);
}

// ---- Maker ------------------------------------------------------------------------------------

TEST_F(ReadChecks, TheSameMakerRaisesNoQuestionAndTheVersionIsRead) {
  settings.manufacturerCheckNow = true;
  openEco(kReadDescription);
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

TEST_F(ReadChecks, MakersZeroAndThirteenRaiseNoQuestion) {
  settings.manufacturerCheckNow = true;
  for (const int maker : {0, 13}) {
    decoder().store(8, maker);
    openEco(kReadDescription);
    markRow(33);
    read();
    EXPECT_TRUE(prompt.shown.isEmpty()) << maker;
    EXPECT_EQ(value(8), maker);
  }
}

TEST_F(ReadChecks, AnotherMakerIsTakenOverWithOk) {
  settings.manufacturerCheckNow = true;
  decoder().store(8, 131);
  describe("Fahrwerk/FW-28.dec", "[FW-28]\nMAXADDRESS=28");
  openEco(kReadDescription);
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

TEST_F(ReadChecks, AnotherMakersTypeTakesTheMarksAndTheTabInViewAway) {
  settings.manufacturerCheckNow = true;
  decoder().store(8, 131);
  describe("Fahrwerk/FW-28.dec", "[FW-28]\nCV_33=Licht,0-15,7,5");
  openEco(kReadDescription);
  bench->selectTab(2);
  markRow(33);
  prompt.answers = {Answer::Ok};
  read();
  EXPECT_EQ(bench->selectedTab(), 0) << "the new type has no such tab";
  EXPECT_EQ(sent(), QStringList({"xPTRB 8", "xPTRB 7"}));
  EXPECT_FALSE(cv(33).cvRead) << "marked was a CV of the other type";
  EXPECT_EQ(value(33), 7);
}

TEST_F(ReadChecks, AnotherMakerWithCancelEndsOrderly) {
  settings.manufacturerCheckNow = true;
  decoder().store(8, 131);
  openEco(kReadDescription);
  markRow(33);
  prompt.answers = {Answer::Cancel};
  read();
  EXPECT_EQ(text("cbDcManuf"), "Adlerton");
  EXPECT_EQ(value(8), 0);
  EXPECT_EQ(view.hides, 1);
  expectSessionClosed();
}

TEST_F(ReadChecks, AnUnknownMakerShowsAsItsNumber) {
  settings.manufacturerCheckNow = true;
  decoder().store(8, 99);
  openEco(kReadDescription);
  markRow(33);
  read();
  EXPECT_EQ(prompt.shown, QStringList({"Abweichender Decoderhersteller (99)!"}));
}

TEST_F(ReadChecks, Maker145TellsItsSubVersionAndType) {
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

TEST_F(ReadChecks, Maker145WithoutThoseTwoIsNoFailure) {
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

TEST_F(ReadChecks, AFunctionDecoderIsWarnedOf) {
  settings.addressCheckNow = true;
  decoder().store(29, 128 + 2);
  openEco(kReadDescription);
  markRow(33);
  prompt.answers = {Answer::Cancel, Answer::Ok};
  read();
  EXPECT_EQ(prompt.shown, QStringList({"Achtung: Funktionsdecoder!"}));
  EXPECT_EQ(value(33), 0);
  EXPECT_EQ(view.hides, 1);
  read();
  EXPECT_EQ(value(33), 33);
}

}  // namespace
}  // namespace lokari
