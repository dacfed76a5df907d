// RdComm against a simulated station, in virtual time: which CVs are read, and where they go.
#include "read_fixture.h"

namespace lokari {
namespace {

class ReadBatchTest : public ReadFixture {};

TEST_F(ReadBatchTest, NothingMarkedOpensNoLink) {
  openEco(kReadDescription);
  read();
  EXPECT_EQ(prompt.shown, QStringList({"Keine Daten zum Lesen ausgewählt!"}));
  EXPECT_EQ(line.opens, 0);
  EXPECT_EQ(view.hides, 1);
  EXPECT_EQ(view.statuses, QStringList({"Beginne Kommunikation ..."}));
  expectSessionClosed();
}

TEST_F(ReadBatchTest, ReadsWhatIsMarked) {
  openEco(kReadDescription);
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
  openEco(kReadDescription);
  for (const char* box : {"chkRd_2", "chkRd_3", "chkRd_4", "chkRd_5", "chkRd_6"}) check(box);
  read();
  EXPECT_EQ(steps(), QStringList({"Lese Minimalspannung (CV 2)", "Lese Beschleunigungszeit (CV 3)",
                                  "Lese Bremszeit (CV 4)", "Lese Maximalgeschwindigkeit (CV 5)",
                                  "Lese Mittengeschwindigkeit (CV 6)"}));
  EXPECT_EQ(text("txtDcDrvMedSpeed"), "6");
}

TEST_F(ReadBatchTest, AValueOutsideTheRangeIsTakenWithoutAMessage) {
  openEco(kReadDescription);
  markRow(33);
  read();
  EXPECT_EQ(value(33), 33) << "the decoder is right by definition";
  EXPECT_TRUE(prompt.shown.isEmpty());
}

TEST_F(ReadBatchTest, CvsOfTheListAloneAreNotRead) {
  openEco(kReadDescription);
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
  openEco(kReadDescription);
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
    openEco((std::string(kReadDescription) + mode).c_str());
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
  openEco(kReadDescription);
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
  openEco(kReadDescription);
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
  openEco(kReadDescription);
  check("chkRd_29");
  read();
  EXPECT_TRUE(checked("optDcComRailComYes"));
  EXPECT_TRUE(checked("optDcComDetectPulseNo"));
  EXPECT_EQ(value(29), 2) << "shown only: what was read is kept";
}

TEST_F(ReadBatchTest, RailComFollowsTheConfigurationOfTheAddressCheck) {
  settings.addressCheckNow = true;
  openEco(kReadDescription);
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
  openEco(kReadDescription);
  check("chkRd_29");
  read();
  EXPECT_TRUE(checked("optDcComDetectPulseYes"));
  EXPECT_TRUE(checked("optDcComManBitNo"));
  decoder().store(29, 8);
  read();
  EXPECT_TRUE(checked("optDcComDetectPulseNo")) << "bit 6 overrides bit 3";
}

TEST_F(ReadBatchTest, AConfigurationThatIsAsItWasTurnsBlueToo) {
  settings.addressCheckNow = true;
  record.recCvValues[0][28] = 2;
  openEco(kReadDescription);
  check("chkRd_29");
  EXPECT_EQ(control("optDcComSteps28").colour, TextColour::Normal);
  read();
  EXPECT_EQ(value(29), 2);
  EXPECT_EQ(control("optDcComSteps28").colour, TextColour::Blue);
  EXPECT_TRUE(checked("optDcComDirNormal")) << "switched over and back";
}

TEST_F(ReadBatchTest, TheTwinBoxReadsTheConfigurationToo) {
  openEco(kReadDescription);
  check("chkDrvRd_29");
  read();
  EXPECT_EQ(sent(), QStringList({"xPTRB 29"}));
}

}  // namespace
}  // namespace lokari
