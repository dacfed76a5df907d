// The list of a decoder's CVs for its sheet: which lines give an entry, what the entry says, and
// where the program's own entries stand.
#include "reports/print_cv_list.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

namespace lokari {
namespace {

/// No speed table, so that the program's own entries are 7, 19 and 29.
const QString kPlain = QStringLiteral("SPEEDTABLE=N\n");

QString shown(const std::vector<PrintCv>& list) {
  QStringList entries;
  for (const PrintCv& cv : list) {
    entries
        << QStringLiteral("%1|%2|%3|%4").arg(cv.numberText(), cv.name, cv.range).arg(cv.standard);
  }
  return entries.join(u'\n');
}

/// The entries of the lines alone, without the program's own.
QString described(const QString& text) {
  QStringList entries = shown(printCvList(kPlain + text)).split(u'\n');
  entries.removeOne(QStringLiteral("7|Versionsnummer|0-255|0"));
  entries.removeOne(QStringLiteral("19|Verbundadresse|0-255|0"));
  entries.removeOne(QStringLiteral("29|Grundeinstellungen|0-255|0"));
  return entries.join(u'\n');
}

QString numbers(const std::vector<PrintCv>& list) {
  QStringList result;
  for (const PrintCv& cv : list) result << cv.numberText();
  return result.join(u' ');
}

struct LineCase {
  const char* what;
  const char* text;
  const char* entries;
};

const LineCase kLineCases[] = {
    {"Whole", "CV_30=Licht,0-3,1,5,Tip", "30|Licht|0-3|1"},
    {"KeywordInAnyCaseWithBlanks", "  cv_30 =  Licht ,0-3,1", "30|Licht|0-3|1"},
    {"EmptyNameIsTheNumber", "CV_30=,0-3,1", "30|CV30|0-3|1"},
    {"EmptyRangeIsAByte", "CV_30=Licht,,1", "30|Licht|0-255|1"},
    {"MissingDefaultIsZero", "CV_30=Licht", "30|Licht|0-255|0"},
    {"DefaultThatIsNoNumberIsZero", "CV_30=Licht,0-3,hell", "30|Licht|0-3|0"},
    {"DefaultBeyondSixteenBitsIsZero", "CV_30=Licht,0-3,99999", "30|Licht|0-3|0"},
    {"DefaultIsNotCut", "CV_30=Licht,0-3,256", "30|Licht|0-3|256"},
    {"QuotesProtectCommas", "CV_30=\"Licht, vorne\",\"0,8,16-32\",8",
     "30|Licht, vorne|0,8,16-32|8"},
    {"LineWithoutEqualsIsPassedOver", "; Licht\n[ZX]\nCV_30\nCV_31=A", "31|A|0-255|0"},
    {"LineIsJoinedAtItsHyphen", "CV_30=Licht,-\n  0-3,2", "30|Licht|0-3|2"},
    {"LineIsJoinedOnce", "CV_30=A-\nB-\nCV_31=C", "30|AB-|0-255|0\n31|C|0-255|0"},
    {"KeywordMayStandInTheSecondLine", "CV_-\n30=Licht", "30|Licht|0-255|0"},
    {"RemarkWithAHyphenTakesTheNextLineAlong", "; Licht -\nCV_30=A\nCV_31=B", "31|B|0-255|0"},
    {"LastLineMayEndInAHyphen", "CV_30=A-", "30|A|0-255|0"},
    {"PartBehindTheNumber", "CV_30_3=A\nCV_30_16=B", "30 (3)|A|0-255|0\n30 (16)|B|0-255|0"},
    {"PartOutsideItsRangeIsNone", "CV_30_17=A\nCV_31_0=B\nCV_32_=C",
     "30|A|0-255|0\n31|B|0-255|0\n32|C|0-255|0"},
    {"NumberTwiceIsThereTwice", "CV_30=A\nCV_30=B", "30|A|0-255|0\n30|B|0-255|0"},
    {"NumbersThatTheProgramKeepsAreNotTaken",
     "CV_0=A\nCV_1=A\nCV_7=A\nCV_8=A\nCV_17=A\nCV_18=A\nCV_19=A\nCV_29=A\nCV_29_3=A\nCV_2=B",
     "2|B|0-255|0"},
    {"TableNumbersAreNotTakenEvenWithoutATable", "CV_66=A\nCV_67=B\nCV_94=C\nCV_95=D",
     "66|A|0-255|0\n95|D|0-255|0"},
    {"NumbersOutsideTheArrayAreSkipped",
     "CV_-2=A\nCV_4863=B\nCV_4864=C\nCV_4865=D\nCV_99999999999=E\nCV_x=F", "4863|B|0-255|0"},
    {"UnknownKeywordChangesNothing", "CV_30=A,0-3,1\nFOO=bar\nMAPLENGTH=5", "30|A|0-3|1"},
    {"LinesKeepTheirOrder", "CV_40=A\nCV_30=B", "40|A|0-255|0\n30|B|0-255|0"},
};

class PrintCvLine : public ::testing::TestWithParam<LineCase> {};

TEST_P(PrintCvLine, GivesItsEntry) {
  EXPECT_EQ(described(QString::fromUtf8(GetParam().text)), QString::fromUtf8(GetParam().entries));
}

INSTANTIATE_TEST_SUITE_P(Lines, PrintCvLine, ::testing::ValuesIn(kLineCases),
                         [](const auto& test) { return std::string(test.param.what); });

struct PlaceCase {
  const char* what;
  const char* text;
  const char* numbers;
};

const PlaceCase kPlaceCases[] = {
    {"EmptyFileHasThemAll", "SPEEDTABLE=N", "7 19 29"},
    {"AheadOfTheFirstCvAbove", "SPEEDTABLE=N\nCV_6=A\nCV_9=B\nCV_20=C\nCV_30=D",
     "6 7 9 19 20 29 30"},
    {"AtTheEndOfTheFile", "SPEEDTABLE=N\nCV_2=A\nCV_6=B", "2 6 7 19 29"},
    {"AllAheadOfOneCvAboveThem", "SPEEDTABLE=N\nCV_100=A\nCV_5=B", "7 19 29 100 5"},
    {"LinesOfTheirOwnDoNotMoveThem", "SPEEDTABLE=N\nCV_29=X\nCV_9=A", "7 9 19 29"},
    {"NoConsistNoEntry", "SPEEDTABLE=N\nCONSADDRESS=N\nCV_30=A", "7 29 30"},
    {"ConsistByJaOrYes", "SPEEDTABLE=N\nCONSADDRESS=ja\nCV_30=A", "7 19 29 30"},
    {"EmptyFlagIsNo", "SPEEDTABLE=\nCONSADDRESS=", "7 29"},
    {"KeywordsHoldWhereverTheyStand", "CV_20=A\nCV_95=B\nCONSADDRESS=N\nSPEEDTABLE=N",
     "7 20 29 95"},
    {"ConsistUnlessTheDescriptionSaysNo", "SPEEDTABLE=N\nCV_30=A", "7 19 29 30"},
    {"ShortTableAtTheEnd", "FAMILY=1\nCONSADDRESS=N\nCV_66=A",
     "7 29 66 67 68 69 70 71 72 73 74 75 76 77 78 79 80 81"},
    {"ShortTableAheadOfTheFirstCvAbove94", "FAMILY=1\nCONSADDRESS=N\nCV_66=A\nCV_95=B\nCV_96=C",
     "7 29 66 67 68 69 70 71 72 73 74 75 76 77 78 79 80 81 95 96"},
    {"WholeTable", "CONSADDRESS=N\nCV_105=A",
     "7 29 67 68 69 70 71 72 73 74 75 76 77 78 79 80 81 82 83 84 85 86 87 88 89 90 91 92 93 94 "
     "105"},
};

class PrintCvPlace : public ::testing::TestWithParam<PlaceCase> {};

TEST_P(PrintCvPlace, OfTheProgramsOwnEntries) {
  EXPECT_EQ(numbers(printCvList(QString::fromUtf8(GetParam().text))),
            QString::fromUtf8(GetParam().numbers));
}

INSTANTIATE_TEST_SUITE_P(Places, PrintCvPlace, ::testing::ValuesIn(kPlaceCases),
                         [](const auto& test) { return std::string(test.param.what); });

TEST(PrintCvTable, PointsAreNamedByTheirNumberAndTakeTheirDefaults) {
  EXPECT_EQ(shown(printCvList(QStringLiteral("CONSADDRESS=N\nFAMILY=1\nINTERNALSTEPS=100\n"
                                             "SPEEDTABVALUES=1, 20,,99,-\n 255"))),
            QStringLiteral("7|Versionsnummer|0-255|0\n"
                           "29|Grundeinstellungen|0-255|0\n"
                           "67|Geschw.-Tabelle Wert 1|0-255|1\n"
                           "68|Geschw.-Tabelle Wert 2|0-255|20\n"
                           "69|Geschw.-Tabelle Wert 3|0-255|99\n"
                           "70|Geschw.-Tabelle Wert 4|0-255|100\n"
                           "71|Geschw.-Tabelle Wert 5|0-255|0\n"
                           "72|Geschw.-Tabelle Wert 6|0-255|0\n"
                           "73|Geschw.-Tabelle Wert 7|0-255|0\n"
                           "74|Geschw.-Tabelle Wert 8|0-255|0\n"
                           "75|Geschw.-Tabelle Wert 9|0-255|0\n"
                           "76|Geschw.-Tabelle Wert 10|0-255|0\n"
                           "77|Geschw.-Tabelle Wert 11|0-255|0\n"
                           "78|Geschw.-Tabelle Wert 12|0-255|0\n"
                           "79|Geschw.-Tabelle Wert 13|0-255|0\n"
                           "80|Geschw.-Tabelle Wert 14|0-255|0\n"
                           "81|Geschw.-Tabelle Wert 15|0-255|0"));
}

TEST(PrintCvTable, DefaultsHoldWhereverTheyStand) {
  const auto list = printCvList(QStringLiteral("CV_95=A\nSPEEDTABVALUES=1,20,30\nFAMILY=1"));
  ASSERT_EQ(list.size(), 19U);
  EXPECT_EQ(list[4].number, 68);
  EXPECT_EQ(list[4].standard, 20);
}

TEST(PrintCvTable, StepsOutsideTheirRangeCutNothing) {
  for (const char* steps : {"0", "256", "viele"}) {
    const auto list = printCvList(QStringLiteral("FAMILY=1\nINTERNALSTEPS=%1\nSPEEDTABVALUES=254")
                                      .arg(QString::fromUtf8(steps)));
    ASSERT_EQ(list.size(), 18U) << steps;
    EXPECT_EQ(list[3].number, 67) << steps;
    EXPECT_EQ(list[3].standard, 254) << steps;
  }
}

TEST(PrintCvTable, FamilyOutsideItsRangeKeepsTheWholeTable) {
  EXPECT_EQ(printCvList(QStringLiteral("FAMILY=3")).size(), 31U);
}

TEST(PrintCvList, HoldsNoMoreThanAllIndices) {
  QString text = kPlain;
  for (int i = 0; i < 5000; ++i) text += QStringLiteral("CV_30=A\n");
  const auto list = printCvList(text);
  EXPECT_EQ(list.size(), 4865U);
  EXPECT_EQ(list.back().name, QStringLiteral("A"));
}

TEST(PrintCvList, ValuesOfBanksLieWhereTheDecoderWindowKeepsThem) {
  const auto list = printCvList(
      kPlain + QStringLiteral("MAPCVA=31\nMAPVALA_2=16\nMAPVALA_3=17\nCV_100=A\nCV_257_2=B\n"
                              "CV_300_2=C\nCV_257_3=D\nCV_40_5=E"));
  ASSERT_EQ(numbers(list), QStringLiteral("7 19 29 100 257 (2) 300 (2) 257 (3) 40 (5)"));
  EXPECT_EQ(list[3].index, CvIndex(100));
  EXPECT_EQ(list[4].index, CvIndex(1024));
  EXPECT_EQ(list[5].index, CvIndex(1067));
  EXPECT_EQ(list[6].index, CvIndex(1280));
  EXPECT_EQ(list[7].index, CvIndex(40));  // bank 5 is not described
}

class PrintCvFile : public ::testing::Test {
 protected:
  void put(const QString& name) {
    const QString path = folder.filePath(name);
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("SPEEDTABLE=N\nCONSADDRESS=N\nCV_30=Geh\xE4use,0-3,1\n");
  }
  QString load(const char* manufacturer, const char* decoder) {
    return numbers(loadPrintCvList(
        {folder.filePath(QStringLiteral("eins")), folder.filePath(QStringLiteral("zwei"))},
        QString::fromUtf8(manufacturer), QString::fromUtf8(decoder)));
  }
  QTemporaryDir folder;
};

TEST_F(PrintCvFile, LiesInTheManufacturersFolder) {
  put(QStringLiteral("eins/Zimo/ZX100.dec"));
  EXPECT_EQ(load("Zimo", "ZX100"), QStringLiteral("7 29 30"));
  EXPECT_EQ(load("zimo", "zx100"), QStringLiteral("7 29 30"));
}

TEST_F(PrintCvFile, IsReadInItsCodePage) {
  put(QStringLiteral("eins/Zimo/ZX100.dec"));
  const auto list = loadPrintCvList({folder.filePath(QStringLiteral("eins"))},
                                    QStringLiteral("Zimo"), QStringLiteral("ZX100"));
  ASSERT_EQ(list.size(), 3U);
  EXPECT_EQ(list[2].name, QStringLiteral("Gehäuse"));
}

TEST_F(PrintCvFile, LiesInAFolderOfEightCharactersOfALongName) {
  put(QStringLiteral("eins/Fahrwerk/FW.dec"));
  EXPECT_EQ(load("Fahrwerke Nord", "FW"), QStringLiteral("7 29 30"));
}

TEST_F(PrintCvFile, LiesInTheSecondFolderWhereTheFirstHasNone) {
  put(QStringLiteral("zwei/Zimo/ZX100.dec"));
  EXPECT_EQ(load("Zimo", "ZX100"), QStringLiteral("7 29 30"));
}

TEST_F(PrintCvFile, MissingGivesAnEmptyList) {
  put(QStringLiteral("eins/Default.dec"));
  EXPECT_EQ(load("Zimo", "ZX100"), QString());
  EXPECT_EQ(load("", "Default"), QString());
  EXPECT_EQ(load("Zimo", ""), QString());
}

TEST_F(PrintCvFile, NameNeverLeavesTheFolder) {
  put(QStringLiteral("geheim/X.dec"));
  EXPECT_EQ(load("../geheim", "X"), QString());
  EXPECT_EQ(load("..", "X"), QString());
}

}  // namespace
}  // namespace lokari
