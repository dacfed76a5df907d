// The description file: every key with its limits, the lines, the banks, and the quirks.
#include "decoder/dec_loader.h"

#include <gtest/gtest.h>

namespace lokari {
namespace {

class Loading : public ::testing::Test {
 protected:
  bool load(const char* text) {
    d = DecoderDescription();
    return loadDescription(QString::fromUtf8(text), d);
  }
  const CvDescriptor& cv(int index) const { return d.info(CvIndex(index)); }

  DecoderDescription d;
};

TEST_F(Loading, AnEmptyFileDescribesAFullDecoderOf28Steps) {
  EXPECT_TRUE(load(""));
  EXPECT_EQ(d.MAXADDRESS, 10239);
  EXPECT_EQ(d.TYPE, 1);
  EXPECT_EQ(d.PROGMODE, 0);
  EXPECT_EQ(d.SPEEDSTEPS, 28);
  EXPECT_TRUE(d.DIRECTION && d.ANALOGMODE && d.SPEEDTABLE && d.EXTADDRESS && d.CONSADDRESS);
  EXPECT_FALSE(d.DETECTPULSE || d.MANBIT || d.RAILCOM || d.PROGMAIN || d.FUNCMAP);
  EXPECT_EQ(d.FAMILY, 0);
  EXPECT_EQ(d.INTERNALSTEPS, 255);
  EXPECT_EQ(d.FUNCTIONS, 8);
  EXPECT_EQ(d.FUNCSHIFT, 3);
  EXPECT_EQ(d.FUNCCOUNT, 4);
  EXPECT_EQ(d.MAXTABS, 34);
  EXPECT_EQ(d.MAPCVA, 0);
  EXPECT_EQ(d.MAPCVB, 0);
  EXPECT_FALSE(d.hasSpeedTabValues);
  EXPECT_EQ(d.lineCount, 0);
}

struct NumberKeyCase {
  const char* key;
  int DecoderDescription::*member;
  int low;
  int high;
  int standard;
};

TEST_F(Loading, NumbersAreTakenWithinTheirLimits) {
  using D = DecoderDescription;
  const NumberKeyCase cases[] = {
      {"MAXADDRESS", &D::MAXADDRESS, 1, 10239, 10239},
      {"TYPE", &D::TYPE, 0, 3, 1},
      {"PROGMODE", &D::PROGMODE, 0, 2, 0},
      {"FAMILY", &D::FAMILY, 0, 2, 0},
      {"INTERNALSTEPS", &D::INTERNALSTEPS, 1, 255, 255},
      {"FUNCTIONS", &D::FUNCTIONS, 1, 12, 8},
      {"FUNCSHIFT", &D::FUNCSHIFT, 1, 4, 3},
      {"FUNCCOUNT", &D::FUNCCOUNT, 1, 8, 4},
      {"MAXTABS", &D::MAXTABS, 1, 28, 34},
      {"MAPCVA", &D::MAPCVA, 1, 255, 0},
  };
  for (const NumberKeyCase& c : cases) {
    const auto loadValue = [&](int value) {
      load(qPrintable(QStringLiteral("%1=%2").arg(c.key).arg(value)));
      return d.*c.member;
    };
    EXPECT_EQ(loadValue(c.low), c.low) << c.key;
    EXPECT_EQ(loadValue(c.high), c.high) << c.key;
    EXPECT_EQ(loadValue(c.low - 1), c.standard) << c.key;
    EXPECT_EQ(loadValue(c.high + 1), c.standard) << c.key;
  }
}

TEST_F(Loading, MaxAddressOf10240IsRefused) {
  load("MAXADDRESS=10240");
  EXPECT_EQ(d.MAXADDRESS, 10239);
}

TEST_F(Loading, SpeedStepsOf126Are128AndOf127AreRefusedAndTextIsZero) {
  load("SPEEDSTEPS=126");
  EXPECT_EQ(d.SPEEDSTEPS, 128);
  load("SPEEDSTEPS=14\nSPEEDSTEPS=127");
  EXPECT_EQ(d.SPEEDSTEPS, 14);
  load("SPEEDSTEPS=abc");
  EXPECT_EQ(d.SPEEDSTEPS, 0);
  load("SPEEDSTEPS=128");
  EXPECT_EQ(d.SPEEDSTEPS, 128);
}

TEST_F(Loading, ATextIsTheNumberZeroWhereZeroIsAccepted) {
  load("TYPE=3\nTYPE=x\nMAXADDRESS=x");
  EXPECT_EQ(d.TYPE, 0);
  EXPECT_EQ(d.MAXADDRESS, 10239);
}

TEST_F(Loading, FlagsLookAtTheFirstCharacter) {
  for (const char* yes : {"RAILCOM=ja", "RAILCOM=J", "RAILCOM=Yes", "RAILCOM=y"}) {
    load(yes);
    EXPECT_TRUE(d.RAILCOM) << yes;
  }
  for (const char* no : {"RAILCOM=Nein", "RAILCOM=", "RAILCOM=1", "RAILCOM=0", "RAILCOM=true"}) {
    load((std::string("RAILCOM=J\n") + no).c_str());
    EXPECT_FALSE(d.RAILCOM) << no;
  }
}

TEST_F(Loading, TheLaterLineWins) {
  load("MAXADDRESS=100\nMAXADDRESS=200\nDIRECTION=N\nDIRECTION=J");
  EXPECT_EQ(d.MAXADDRESS, 200);
  EXPECT_TRUE(d.DIRECTION);
}

TEST_F(Loading, LinesWithoutEqualsAreSkipped) {
  load("[Name]\n\n; Kommentar\nCV_30\nMAXADDRESS=5");
  EXPECT_EQ(d.MAXADDRESS, 5);
  EXPECT_EQ(d.lineCount, 0);
}

TEST_F(Loading, KeysHaveNoCaseAndNoBlanksAndValuesDo) {
  load("  cv_30 =  Name X  , 0-255 ");
  EXPECT_EQ(cv(30).cvName, "Name X");
  EXPECT_EQ(cv(30).cvRange, "0-255");
}

TEST_F(Loading, ALineGoesOnOnce) {
  load("CV_30=Eins, -\n   0-5,3");
  EXPECT_EQ(cv(30).cvName, "Eins");
  EXPECT_EQ(cv(30).cvRange, "0-5");
  EXPECT_EQ(cv(30).cvDefault, 3);
}

TEST_F(Loading, ASecondContinuationIsPartOfTheText) {
  load("CV_30=Eins,-\n0-5,3,5,Tip-\nCV_31=Zwei");
  EXPECT_EQ(cv(30).cvTip, "Tip-");
  EXPECT_EQ(cv(31).cvName, "Zwei");
}

TEST_F(Loading, AContinuationAtTheEndOfTheFileHasNothingToAppend) {
  EXPECT_TRUE(load("MAXADDRESS=9-"));
  EXPECT_EQ(d.MAXADDRESS, 9);
}

TEST_F(Loading, ALineOfDashesSwallowsNothing) {
  load("----------\nMAXADDRESS=9");
  EXPECT_EQ(d.MAXADDRESS, 9);
}

TEST_F(Loading, TheValueBeginsBehindTheFirstEquals) {
  load("CV_30=a=b,0-5");
  EXPECT_EQ(cv(30).cvName, "a=b");
}

// ---- CV lines ---------------------------------------------------------------------------------

TEST_F(Loading, EveryFieldOfACvLine) {
  load("CV_33=Ausgang F0,0-15,1,3,Hinweis,\"1,Licht,Aus,Ein|1,X,A,B\"");
  EXPECT_EQ(cv(33).cvName, "Ausgang F0");
  EXPECT_EQ(cv(33).cvRange, "0-15");
  EXPECT_EQ(cv(33).cvDefault, 1);
  EXPECT_EQ(cv(33).cvPage, 3);
  EXPECT_EQ(cv(33).cvTip, "Hinweis");
  EXPECT_EQ(cv(33).cvBits, "1,Licht,Aus,Ein|1,X,A,B");
  EXPECT_EQ(cv(33).cvBank, 0);
  EXPECT_FALSE(cv(33).cvRead);
  EXPECT_FALSE(cv(33).cvWrite);
  EXPECT_EQ(d.pageCount[3], 1);
  EXPECT_EQ(d.lineCount, 1);
}

TEST_F(Loading, MissingFieldsHaveTheirStandards) {
  load("CV_30=");
  EXPECT_EQ(cv(30).cvName, "CV 30");
  EXPECT_EQ(cv(30).cvRange, "0-255");
  EXPECT_EQ(cv(30).cvDefault, 0);
  EXPECT_EQ(cv(30).cvPage, 0);
}

TEST_F(Loading, TheMadeNameOfABankCvShowsTheIndexAndTheBank) {
  load("MAPVALA_3=1\nCV_257_3=");
  EXPECT_EQ(cv(1280).cvName, "CV 1280 (3)");
}

TEST_F(Loading, ANameWithACommaNeedsQuotes) {
  load("CV_49=\"Licht, vorne\",0-255,0,3");
  EXPECT_EQ(cv(49).cvName, "Licht, vorne");
  EXPECT_EQ(cv(49).cvRange, "0-255");
  load("CV_49=Licht, vorne,0-255,0,3");
  EXPECT_EQ(cv(49).cvName, "Licht");
  EXPECT_EQ(cv(49).cvRange, "vorne");
}

TEST_F(Loading, FixedCvsAreCountedAndHaveNoEffect) {
  load("CV_0=a\nCV_1=a\nCV_7=a\nCV_8=a\nCV_17=a\nCV_18=a\nCV_19=a\nCV_29=a\nCV_4864=a\nCV_9=b");
  for (const int index : {0, 1, 7, 8, 17, 18, 19, 29, 4864}) {
    EXPECT_FALSE(cv(index).exists()) << index;
  }
  EXPECT_TRUE(cv(9).exists());
  EXPECT_EQ(d.lineCount, 10);
}

TEST_F(Loading, TheHighestIndexThatAFileCanDescribeIs4863) {
  load("CV_4863=a");
  EXPECT_EQ(cv(4863).cvName, "a");
}

TEST_F(Loading, TableCvsAreIgnoredWhileTheProgramMakesThem) {
  load("CV_66=a\nCV_67=a\nCV_94=a\nCV_95=a");
  EXPECT_TRUE(cv(66).exists());
  EXPECT_FALSE(cv(67).exists());
  EXPECT_FALSE(cv(94).exists());
  EXPECT_TRUE(cv(95).exists());
  load("SPEEDTABLE=N\nCV_67=a");
  EXPECT_TRUE(cv(67).exists());
  load("TYPE=3\nCV_67=a");
  EXPECT_TRUE(cv(67).exists());
}

TEST_F(Loading, MinimumAndMaximumOfTheSpeedCvsOnly) {
  load("CV_2=a,3-63\nCV_3=a,3-63\nCV_5=a,\"7,9\"\nCV_6=a");
  EXPECT_EQ(cv(2).cvMin, 3);
  EXPECT_EQ(cv(2).cvMax, 63);
  EXPECT_EQ(cv(3).cvMin, 0);
  EXPECT_EQ(cv(3).cvMax, 0);
  EXPECT_EQ(cv(5).cvMin, 7);
  EXPECT_EQ(cv(5).cvMax, 9);
  EXPECT_EQ(cv(6).cvMax, 255);
}

TEST_F(Loading, PagesOutsideOneToSixAreTheGridOnly) {
  load("CV_30=a,,,0\nCV_31=a,,,7\nCV_32=a,,,x\nCV_33=a,,,1\nCV_34=a,,,6\nCV_35=a,,,-1");
  EXPECT_EQ(cv(30).cvPage, 0);
  EXPECT_EQ(cv(31).cvPage, 0);
  EXPECT_EQ(cv(32).cvPage, 0);
  EXPECT_EQ(cv(33).cvPage, 1);
  EXPECT_EQ(cv(34).cvPage, 6);
  EXPECT_EQ(cv(35).cvPage, 0);
  EXPECT_EQ(d.pageCount, (std::array<int, 7>{0, 1, 0, 0, 0, 0, 1}));
}

TEST_F(Loading, APageThatRoundsToZeroCountsForPageThree) {
  load("CV_30=a,0-5,0,0.4");
  EXPECT_EQ(cv(30).cvPage, 0);
  EXPECT_EQ(d.pageCount[3], 1);
  EXPECT_EQ(d.pageCount[0], 0);
}

TEST_F(Loading, APageThatRoundsToSevenEndsTheReading) {
  EXPECT_FALSE(load("CV_30=a,0-5,0,6.7\nCV_31=b"));
  EXPECT_TRUE(cv(30).exists());
  EXPECT_FALSE(cv(31).exists());
  EXPECT_TRUE(load("CV_30=a,0-5,0,6.5"));
  EXPECT_EQ(cv(30).cvPage, 6);
}

TEST_F(Loading, ADefaultThatIsNoNumberIsZero) {
  load("CV_30=a,0-5,x\nCV_31=a,0-5,256");
  EXPECT_EQ(cv(30).cvDefault, 0);
  EXPECT_EQ(cv(31).cvDefault, 256);
}

// ---- The quirks -------------------------------------------------------------------------------

TEST_F(Loading, AnUnknownKeyBehindACvDescribesItAgain) {
  load("CV_40=Name,0-3,1,5,Tip,1\nFOO=bar");
  EXPECT_EQ(cv(40).cvName, "bar");
  EXPECT_EQ(cv(40).cvRange, "0-255");
  EXPECT_EQ(cv(40).cvDefault, 0);
  EXPECT_EQ(cv(40).cvPage, 0);
  EXPECT_EQ(cv(40).cvTip, "");
  EXPECT_EQ(cv(40).cvBits, "");
  EXPECT_EQ(d.pageCount[5], 1) << "the page's count stays one too high";
  EXPECT_EQ(d.lineCount, 1);
}

TEST_F(Loading, AKnownKeyInBetweenDoesNotEndTheQuirk) {
  load("CV_40=Name\nRAILCOM=J\nFOO=bar");
  EXPECT_EQ(cv(40).cvName, "bar");
  EXPECT_TRUE(d.RAILCOM);
}

TEST_F(Loading, AnUnknownKeyAheadOfTheFirstCvAndBehindABankValueDoesNothing) {
  load("FOO=bar\nMANUFACTURER=97\nCV_40=Name\nMAPVALA_2=1\nBAR=foo");
  EXPECT_EQ(cv(40).cvName, "Name");
  EXPECT_EQ(d.lineCount, 1);
}

TEST_F(Loading, AnUnknownKeyBehindAFixedCvDoesNothing) {
  load("CV_29=x\nFOO=bar");
  EXPECT_FALSE(cv(29).exists());
}

TEST_F(Loading, AnUnknownKeyBehindABankCvKeepsItsBank) {
  load("MAPVALA_2=1\nCV_257_2=Name\nFOO=bar");
  EXPECT_EQ(cv(1024).cvName, "bar");
  EXPECT_EQ(cv(1024).cvBank, 2);
}

TEST_F(Loading, ANumberBeyondSixteenBitsEndsTheReadingAndKeepsWhatWasRead) {
  EXPECT_FALSE(load("MAXADDRESS=5\nCV_30=a\nMAXADDRESS=40000\nCV_31=b"));
  EXPECT_EQ(d.MAXADDRESS, 5);
  EXPECT_TRUE(cv(30).exists());
  EXPECT_FALSE(cv(31).exists());
  EXPECT_EQ(d.lineCount, 1);
}

TEST_F(Loading, ANumberBeyondSixteenBitsEndsTheReadingWhereverItStands) {
  EXPECT_FALSE(load("CV_99999=a"));
  EXPECT_FALSE(load("CV_30=a,0-5,40000"));
  EXPECT_FALSE(load("CV_2=a,0-40000"));
  EXPECT_FALSE(load("CV_30=40000"));
  EXPECT_FALSE(load("FOO=1e9"));
  EXPECT_FALSE(load("MAPVALA_99999=1"));
  EXPECT_TRUE(load("CV_30=a,0-40000"));
}

// ---- Banks ------------------------------------------------------------------------------------

TEST_F(Loading, BanksLieBehindThePlainCvs) {
  load(
      "MAPCVA=31\nMAPCVB=32\nMAPVALA_2=16\nMAPVALB_2=5\nMAPVALA_16=1\n"
      "CV_257_2=Motor,0-128,100,6\nCV_258_2=Pfiff\nCV_300_16=Letzter");
  EXPECT_EQ(d.MAPCVA, 31);
  EXPECT_EQ(d.MAPCVB, 32);
  EXPECT_EQ(d.bankMap[2].selectA, 16);
  EXPECT_EQ(d.bankMap[2].selectB, 5);
  EXPECT_EQ(d.bankMap[2].bankBase, 1024);
  EXPECT_EQ(d.bankMap[2].bankFirst, 257);
  EXPECT_EQ(d.bankMap[16].bankBase, 4608);
  EXPECT_EQ(cv(1024).cvName, "Motor");
  EXPECT_EQ(cv(1024).cvBank, 2);
  EXPECT_EQ(cv(1025).cvName, "Pfiff");
  EXPECT_EQ(cv(4608).cvName, "Letzter");
  EXPECT_EQ(d.realNumber(CvIndex(1025)), CvNumber(258));
  EXPECT_EQ(d.numberText(CvIndex(1025)), "258 (2)");
  EXPECT_EQ(d.cvText(CvIndex(1025)), "CV 258 (2)");
  EXPECT_EQ(d.getCvIndex("258 (2)"), CvIndex(1025));
  EXPECT_EQ(d.getCvIndex("258"), CvIndex(258));
  EXPECT_EQ(d.getCvIndex(""), CvIndex());
  EXPECT_EQ(d.getCvIndex("258 (77)"), CvIndex());
}

TEST_F(Loading, TheSecondIndexRegisterNeedsTheFirst) {
  load("MAPCVB=32\nMAPCVA=31");
  EXPECT_EQ(d.MAPCVA, 31);
  EXPECT_EQ(d.MAPCVB, 0);
  load("MAPCVA=31\nMAPCVB=256");
  EXPECT_EQ(d.MAPCVB, 0);
}

TEST_F(Loading, ABankOutsideOneToSixteenIsDropped) {
  load("MAPVALA_0=1\nMAPVALA_17=1\nCV_40_17=Name");
  for (const CvBank& bank : d.bankMap) EXPECT_EQ(bank.selectA, 0);
  EXPECT_EQ(cv(40).cvName, "Name") << "a bank above 16 counts as none";
  EXPECT_EQ(cv(40).cvBank, 0);
}

TEST_F(Loading, BankOneMapsOntoTheRealNumbers) {
  load("MAPVALA_1=3\nCV_40_1=a\nCV_44_1=b");
  EXPECT_EQ(d.bankMap[1].selectA, 3);
  EXPECT_EQ(d.bankMap[1].bankBase, 40);
  EXPECT_EQ(d.bankMap[1].bankFirst, 40);
  EXPECT_EQ(cv(40).cvName, "a");
  EXPECT_EQ(cv(44).cvName, "b");
  EXPECT_EQ(d.realNumber(CvIndex(44)), CvNumber(44));
}

TEST_F(Loading, ALowerNumberLaterLandsOnAnIndexInUse) {
  load("MAPVALA_2=1\nCV_300_2=a\nCV_257_2=b");
  EXPECT_EQ(cv(1024).cvName, "b");
  EXPECT_EQ(d.bankMap[2].bankFirst, 257);
  EXPECT_EQ(d.lineCount, 2);
  EXPECT_FALSE(cv(1067).exists());
}

TEST_F(Loading, ABankWithoutItsValueVanishes) {
  load("CV_257_2=a\nCV_258_2=b");
  for (int i = 0; i <= kHighestCvIndex; ++i) EXPECT_FALSE(cv(i).exists()) << i;
  EXPECT_EQ(d.lineCount, 2);
}

TEST_F(Loading, AnUnderscoreAtTheEndOfTheKeyIsNoBank) {
  load("CV_40_=a");
  EXPECT_EQ(cv(40).cvName, "a");
  EXPECT_EQ(cv(40).cvBank, 0);
}

// ---- The factory speed table ------------------------------------------------------------------

TEST_F(Loading, SpeedTableValuesFillTheTable) {
  load(
      "SPEEDTABVALUES=1,10,20,30,40,50,60,70,80,90,100,110,120,130,-\n"
      "  140,150,160,170,180,190,200,210,220,230,240,250,252,255");
  ASSERT_EQ(d.speedTabValues.size(), 28U);
  EXPECT_EQ(d.speedTabValues.front().cv, CvIndex(67));
  EXPECT_EQ(d.speedTabValues.front().value, 1);
  EXPECT_EQ(d.speedTabValues[14].value, 140);
  EXPECT_EQ(d.speedTabValues.back().cv, CvIndex(94));
  EXPECT_EQ(d.speedTabValues.back().value, 255);
  EXPECT_TRUE(d.hasSpeedTabValues);
}

TEST_F(Loading, SpeedTableValuesAreCutToTheInternalSteps) {
  load("INTERNALSTEPS=126\nSPEEDTABVALUES=1,200,,3");
  ASSERT_EQ(d.speedTabValues.size(), 3U);
  EXPECT_EQ(d.speedTabValues[1].value, 126);
  EXPECT_EQ(d.speedTabValues[2].cv, CvIndex(69));
}

TEST_F(Loading, AListOfThreeDigitItemsIsNoGroupedNumber) {
  load("SPEEDTABVALUES=100,110,120\nCV_40=Name,0-3,1,5");
  ASSERT_EQ(d.speedTabValues.size(), 3U);
  EXPECT_EQ(d.speedTabValues[2].value, 120);
  EXPECT_EQ(cv(40).cvName, "Name");
}

TEST_F(Loading, AShortTableDropsItem16) {
  load("FAMILY=1\nSPEEDTABVALUES=1,2,3,4,5,6,7,8,9,10,11,12,13,14,15,16");
  ASSERT_EQ(d.speedTabValues.size(), 15U);
  EXPECT_EQ(d.speedTabValues.back().cv, CvIndex(81));
  EXPECT_EQ(d.speedTabValues.back().value, 15);
}

TEST_F(Loading, TheWorkedExample) {
  EXPECT_TRUE(
      load("[SD-100]\nMANUFACTURER=97\nMAXADDRESS=9999\nSPEEDSTEPS=126\n"
           "INTERNALSTEPS=255\nRAILCOM=J\nDETECTPULSE=N\nFUNCMAP=Y\nFUNCTIONS=12\n"
           "FUNCCOUNT=8\nMAPCVA=31\nMAPCVB=32\nMAPVALA_2=16\nMAPVALB_2=0\n"
           "CV_2=Anfahrspannung,0-63,3,0,\"Spannung beim ersten Fahrstufenschritt\"\n"
           "CV_60=Dimmen,\"0,8,16-32\",16,5\n"
           "CV_257_2=Lautstaerke Motor,0-128,100,6\n"
           "CV_258_2=Lautstaerke Pfiff,0-128,128,6\n"));
  EXPECT_EQ(d.MAXADDRESS, 9999);
  EXPECT_EQ(d.FUNCTIONS, 12);
  EXPECT_EQ(d.FUNCCOUNT, 8);
  EXPECT_EQ(cv(60).cvRange, "0,8,16-32");
  EXPECT_EQ(cv(1024).cvDefault, 100);
  EXPECT_EQ(cv(1025).cvDefault, 128);
  EXPECT_EQ(d.pageCount, (std::array<int, 7>{0, 0, 0, 0, 0, 1, 2}));
}

}  // namespace
}  // namespace lokari
