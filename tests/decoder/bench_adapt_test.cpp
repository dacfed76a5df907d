// How the bench fits a description and the station: labels, options, buttons, tabs, rows, boxes.
#include "bench_fixture.h"

namespace lokari {
namespace {

class BenchAdapt : public BenchFixture {};

/// `count` CV lines of a page, from CV 100 on.
std::string linesOfPage(int page, int count, int first = 100) {
  std::string lines;
  for (int i = 0; i < count; ++i) {
    lines += "CV_" + std::to_string(first + i) + "=Wert " + std::to_string(i) + ",0-255,0," +
             std::to_string(page) + "\n";
  }
  return lines;
}

TEST_F(BenchAdapt, TheAddressLabelShowsTheHighestAddress) {
  openEco("[X]\nMAXADDRESS=99");
  EXPECT_EQ(control("labAdr").caption, "Adresse (1-99):");
}

TEST_F(BenchAdapt, AnAddressAboveTheHighestIsReported) {
  openEco("[X]\nMAXADDRESS=99", "100");
  EXPECT_EQ(prompt.shown, QStringList({"Adresse für diesen Decodertyp ungültig!"}));
  EXPECT_EQ(focused.last(), "dc_adr");
  EXPECT_EQ(text("dc_adr"), "100");
}

TEST_F(BenchAdapt, ALongAddressIsDroppedWhereThereAreNone) {
  openEco("[X]\nEXTADDRESS=N", "128");
  EXPECT_EQ(prompt.shown, QStringList({"Adresse 128 ist für diesen Decoder nicht zulässig!"}));
  EXPECT_EQ(text("dc_adr"), "0");
  openEco("[X]\nEXTADDRESS=N", "127");
  EXPECT_EQ(text("dc_adr"), "127");
}

TEST_F(BenchAdapt, ADecoderWithoutDriveHasNoDriveTab) {
  openEco("[X]\nTYPE=3\nCV_2=a\nCV_3=b\nCV_9=c,,,2");
  EXPECT_FALSE(bench->tabs()[1].visible);
  for (const char* box : {"chkRd_2", "chkRd_5", "chkRd_6", "chkRd_9", "chkRd_Tbl", "chkWrt_2",
                          "chkWrt_5", "chkWrt_6", "chkWrt_9", "chkWrt_Tbl"}) {
    EXPECT_FALSE(control(box).enabled) << box;
  }
  EXPECT_TRUE(control("chkRd_3").enabled);
  openEco("[X]\nCV_2=a\nCV_9=c,,,2");
  EXPECT_TRUE(bench->tabs()[1].visible);
  EXPECT_TRUE(control("chkRd_2").enabled && control("chkRd_9").enabled);
  EXPECT_TRUE(control("chkRd_Tbl").enabled);
}

TEST_F(BenchAdapt, ADecoderOf14StepsHasNoChoice) {
  record.recCvValues[0][28] = 2;
  openEco("[X]\nSPEEDSTEPS=14");
  for (const char* name : {"optDcComSteps14", "optDcComSteps28", "optDcDrvSteps14",
                           "optDcDrvSteps28", "labDcComSteps", "labDcDrvSteps"}) {
    EXPECT_FALSE(control(name).enabled) << name;
  }
  EXPECT_TRUE(checked("optDcComSteps14") && checked("optDcDrvSteps14"));
}

TEST_F(BenchAdapt, OpeningShowsTheStoredOptions) {
  record.recCvValues[0][28] = 1 + 2 + 4 + 8 + 16 + 64;
  openEco("[X]\nRAILCOM=J\nDETECTPULSE=J\nMANBIT=J");
  for (const char* name : {"optDcComDirReverse", "optDcComSteps28", "optDcDrvSteps28",
                           "optDcComAnalogYes", "optDcComDetectPulseYes", "optDcComRailComYes",
                           "optDcComSpdTblYes", "optDcDrvSpdTblYes", "optDcComManBitYes"}) {
    EXPECT_TRUE(checked(name)) << name;
  }
  EXPECT_EQ(value(29), 95);
}

TEST_F(BenchAdapt, AnotherTypeResetsTheOptionsToNoNormalAnd28Steps) {
  record.recCvValues[0][28] = 1 + 4 + 8 + 16;
  record.recCvValues[0][18] = static_cast<char>(128 + 9);
  chooseEco("[X]\nRAILCOM=J\nMANBIT=J");
  for (const char* name : {"optDcComDirNormal", "optDcComSteps28", "optDcDrvSteps28",
                           "optDcComAnalogNo", "optDcComSpdTblNo", "optDcDrvSpdTblNo",
                           "optDcComRailComNo", "optDcComManBitYes", "optDcConsistDirNormal"}) {
    EXPECT_TRUE(checked(name)) << name;
  }
  EXPECT_EQ(value(29), 2 + 64);
  EXPECT_EQ(value(19), 0);
  EXPECT_EQ(text("txtDcComConsist"), "0");
}

TEST_F(BenchAdapt, WhatADecoderLacksIsSwitchedOff) {
  openEco("[X]\nANALOGMODE=N\nDIRECTION=N\nSPEEDTABLE=N\nCONSADDRESS=N");
  for (const char* name :
       {"optDcComAnalogNo", "labDcComAnalog", "optDcComDirReverse", "labDcComDir",
        "optDcComSpdTblYes", "optDcDrvSpdTblYes", "labDcDrvSpdTbl", "txtDcComConsist",
        "labDcComConsist", "optDcConsistDirReverse", "chkRd_19", "chkWrt_19"}) {
    EXPECT_FALSE(control(name).enabled) << name;
  }
  EXPECT_TRUE(checked("optDcComAnalogNo") && checked("optDcComDirNormal"));
}

TEST_F(BenchAdapt, PulseManBitAndRailComAreShownWhereTheyExist) {
  openEco("[X]");
  for (const char* name : {"optDcComDetectPulseNo", "labDcComDetectPulse", "optDcComManBitYes",
                           "optDcComRailComNo", "labDcComRailCom"}) {
    EXPECT_FALSE(control(name).visible) << name;
  }
  openEco("[X]\nRAILCOM=J");
  EXPECT_TRUE(control("optDcComRailComNo").visible && control("labDcComRailCom").visible);
  EXPECT_FALSE(control("optDcComDetectPulseNo").visible);
}

TEST_F(BenchAdapt, FixedFieldsFollowTheirLines) {
  record.recCvValues[0][2] = 12;
  openEco(
      "[X]\nCV_3=Ein Name mit deutlich mehr als 32 Zeichen,\"0,1,2,3,4,5,6,7,8,9,10-255\",0\n"
      "INTERNALSTEPS=126");
  EXPECT_EQ(control("labDcComAccTime").caption,
            "Ein Name mit deutlich mehr als 3 (0,1,2,3,4,5,6,7,):");
  EXPECT_TRUE(control("txtDcComAccTime").enabled);
  EXPECT_EQ(text("txtDcComAccTime"), "12");
  EXPECT_FALSE(control("txtDcComDecTime").enabled);
  EXPECT_FALSE(control("chkRd_4").enabled);
  EXPECT_EQ(text("txtDcComDecTime"), "0");
  EXPECT_EQ(control("lblDcDrvLeg2").caption, "126");
}

TEST_F(BenchAdapt, AFieldThatTheNewTypeLacksIsZeroInTheNormalColour) {
  record.recCvValues[0][3] = 9;
  record.recCvMarks[0][3] = '2';
  openEco("[X]\nCV_4=Bremse");
  check("chkRd_4");
  EXPECT_EQ(control("txtDcComDecTime").colour, TextColour::Red);
  describe("Adlerton/AT-NANO.dec", "[X]\nCV_3=Zeit");
  bench->chooseDecoder(QStringLiteral("AT-NANO"));
  clock.advance(100);
  EXPECT_EQ(text("txtDcComDecTime"), "0");
  EXPECT_EQ(control("txtDcComDecTime").colour, TextColour::Normal);
  EXPECT_FALSE(checked("chkRd_4") || cv(4).cvRead);
  EXPECT_EQ(value(4), 9) << "a CV that the type lacks keeps its value";
}

TEST_F(BenchAdapt, TheSpareRowBelongsToThePageOfTheDriveTab) {
  record.recCvValues[0][8] = 44;
  openEco("[X]\nCV_9=Periode,0-99,0,2");
  EXPECT_TRUE(control("txtDcDrvUser").enabled);
  EXPECT_EQ(control("labDcDrvUser").caption, "Periode (0-99):");
  EXPECT_EQ(text("txtDcDrvUser"), "44");
  openEco("[X]\nCV_9=Periode,0-99,0,5");
  EXPECT_FALSE(control("txtDcDrvUser").enabled);
  EXPECT_EQ(row(9).text, "44");
}

// ---- Tabs and rows ----------------------------------------------------------------------------

TEST_F(BenchAdapt, FortyFiveFunctionRowsHaveThreeTabs) {
  openEco(linesOfPage(3, 45).c_str());
  ASSERT_EQ(bench->rows().size(), 45U);
  EXPECT_EQ(bench->rows()[0].tab, 2);
  EXPECT_EQ(bench->rows()[19].tab, 2);
  EXPECT_EQ(bench->rows()[19].rowOnTab, 19);
  EXPECT_EQ(bench->rows()[20].tab, 6);
  EXPECT_EQ(bench->rows()[20].rowOnTab, 0);
  EXPECT_EQ(bench->rows()[40].tab, 7);
  EXPECT_EQ(bench->rows()[44].rowOnTab, 4);
  EXPECT_TRUE(bench->tabs()[2].visible && bench->tabs()[6].visible && bench->tabs()[7].visible);
  EXPECT_FALSE(bench->tabs()[8].visible);
  EXPECT_EQ(bench->tabs()[6].caption, bench->tabs()[2].caption + " 2");
  EXPECT_EQ(bench->tabs()[7].caption, bench->tabs()[2].caption + " 3");
  EXPECT_EQ(cv(144).cvRow, 45);
}

TEST_F(BenchAdapt, TwentyRowsHaveOneTab) {
  openEco(linesOfPage(4, 20).c_str());
  EXPECT_TRUE(bench->tabs()[3].visible);
  EXPECT_FALSE(bench->tabs()[6].visible);
  EXPECT_FALSE(bench->tabs()[2].visible);
}

TEST_F(BenchAdapt, FurtherTabsGoToThePagesInTheirOrder) {
  openEco((linesOfPage(6, 21, 300) + linesOfPage(3, 21, 100)).c_str());
  EXPECT_EQ(bench->tabs()[6].page, 3);
  EXPECT_EQ(bench->tabs()[7].page, 6);
  EXPECT_EQ(bench->tabs()[7].ordinal, 2);
}

TEST_F(BenchAdapt, MaxTabsOfSixGivesOneTabPerPage) {
  openEco(("MAXTABS=6\n" + linesOfPage(3, 45)).c_str());
  EXPECT_EQ(bench->rows().size(), 20U);
  EXPECT_FALSE(bench->tabs()[6].visible);
  EXPECT_TRUE(cv(120).exists()) << "in the grid only";
  EXPECT_EQ(cv(120).cvRow, 0);
  EXPECT_EQ(bench->grid().rowOf(CvIndex(144)) > 0, true);
}

TEST_F(BenchAdapt, ThereAreNeverMoreThan34Tabs) {
  openEco(linesOfPage(5, 700).c_str());
  EXPECT_EQ(bench->tabs().size(), 34U);
  EXPECT_TRUE(bench->tabs()[33].visible);
  EXPECT_EQ(bench->rows().size(), 29U * 20U);
}

TEST_F(BenchAdapt, ARowShowsItsCv) {
  record.recCvValues[0][1023] = 5;
  openEco(
      "[X]\nMAPVALA_2=1\nCV_257_2=Lautstärke der Dampfpfeife ganz vorn,"
      "\"0,1,2,3,4,5,6,7,8,9,10,11,12\",0,6,,\"1,a,b\"");
  const PageRow& shown = row(1024);
  EXPECT_EQ(shown.label, "Lautstärke der Dampfpfeife ganz  (0,1,2,3,4,5,6,7,8,9,10,1):");
  EXPECT_EQ(shown.labelTip, "CV 257 (2)");
  EXPECT_EQ(shown.text, "5");
  EXPECT_EQ(shown.fieldName(), "txtSound_1");
  EXPECT_TRUE(shown.bitEnabled);
}

TEST_F(BenchAdapt, TheFunctionMapBelongsToFunctionTabs) {
  openEco(("FUNCMAP=J\n" + linesOfPage(3, 21) + linesOfPage(4, 1, 200)).c_str());
  EXPECT_TRUE(bench->tabs()[2].funcMapEnabled);
  EXPECT_TRUE(bench->tabs()[6].funcMapEnabled);
  EXPECT_FALSE(bench->tabs()[3].funcMapEnabled);
}

TEST_F(BenchAdapt, AFileOfAllCvsFillsTheGrid) {
  std::string lines = "[X]\nSPEEDTABLE=N\n";
  for (int i = 2; i < 1024; ++i) lines += "CV_" + std::to_string(i) + "=Wert,0-255,0,5\n";
  for (int bank = 2; bank <= 16; ++bank) {
    lines += "MAPVALA_" + std::to_string(bank) + "=1\n";
    for (int i = 257; i < 513; ++i) {
      lines += "CV_" + std::to_string(i) + "_" + std::to_string(bank) + "=Bank,0-255,0,6\n";
    }
  }
  openEco(lines.c_str());
  EXPECT_EQ(bench->grid().rowCount(), 1022 + 15 * 256 + 1);
  EXPECT_EQ(bench->gridRow(bench->grid().rowOf(CvIndex(4863))).number, "512 (16)");
  EXPECT_EQ(bench->rows().size(), 30U * 20U) << "the other pages took all further tabs";
}

// ---- The station ------------------------------------------------------------------------------

struct StationCase {
  StationKind kind;
  bool programsOnMain;
  bool readsOnMain;
  int lastWritable;  // of CV 255 and 256
  bool readsAbove255;
  bool locks;
};

TEST_F(BenchAdapt, WhatTheStationAllows) {
  const StationCase cases[] = {
      {StationKind::Mx1, true, false, 255, false, false},
      {StationKind::Li100, false, false, 256, false, false},
      {StationKind::Li100V3, true, false, 256, false, true},
      {StationKind::Ibx, true, false, 256, true, false},
      {StationKind::Mx1V25, true, false, 255, false, false},
      {StationKind::LiUsb, true, false, 256, false, true},
      {StationKind::TamsMc, true, false, 256, true, false},
      {StationKind::Mx1Bin, true, false, 256, true, false},
      {StationKind::Mx1Ulf, false, false, 256, true, false},
      {StationKind::LiDp, false, false, 256, true, false},
      {StationKind::Mx10, true, true, 256, true, false},
      {StationKind::Mx10Ip, true, true, 256, true, false},
      {StationKind::Z21Ip, true, true, 256, true, false},
  };
  for (const StationCase& c : cases) {
    settings.baseUnit = c.kind;
    openEco("[X]\nPROGMAIN=J\nRAILCOM=J\nCV_255=a,,,5\nCV_256=b,,,5\nCV_257=c,,256,5");
    const int kind = static_cast<int>(c.kind);
    EXPECT_TRUE(control("cmdDcRead").enabled) << kind;
    EXPECT_EQ(control("cmdDcProgMain").enabled, c.programsOnMain) << kind;
    EXPECT_EQ(control("cmdDcReadMain").enabled, c.readsOnMain) << kind;
    EXPECT_TRUE(row(255).writeEnabled && row(255).readEnabled && !row(255).locked) << kind;
    EXPECT_EQ(row(256).writeEnabled, c.lastWritable > 255) << kind;
    EXPECT_EQ(row(256).readEnabled, c.readsAbove255) << kind;
    EXPECT_EQ(row(256).locked, c.locks) << kind;
    EXPECT_FALSE(row(257).writeEnabled) << "a CV without a default is read-only, kind " << kind;
  }
}

TEST_F(BenchAdapt, TheLenzVersionLiftsTheLimitForReading) {
  settings.baseUnit = StationKind::Li100V3;
  settings.lenzV36 = true;
  openEco("[X]\nCV_256=b,,,5");
  EXPECT_TRUE(row(256).readEnabled);
  EXPECT_FALSE(row(256).locked);
}

TEST_F(BenchAdapt, MainTrackNeedsTheDescriptionToo) {
  settings.baseUnit = StationKind::Z21Ip;
  openEco("[X]");
  EXPECT_FALSE(control("cmdDcProgMain").enabled);
  EXPECT_FALSE(control("cmdDcReadMain").enabled);
}

TEST_F(BenchAdapt, TheLinkLearnsTheProgrammingMode) {
  openEco("[X]\nPROGMODE=2");
  EXPECT_EQ(link.progMode, 2);
  openEco("[X]");
  EXPECT_EQ(link.progMode, 0);
}

}  // namespace
}  // namespace lokari
