// Read and write marks, and the grid.
#include "bench_fixture.h"

namespace lokari {
namespace {

const char* const kSome =
    "[X]\n"
    "CV_2=Spannung\nCV_3=Zeit\nCV_9=Periode,0-99,0,2\n"
    "CV_30=Fehler,0-255,256,5\n"
    "CV_31=Wert,0-255,0,5\n"
    "CV_50=nur Liste,0-9,3,0,,\"1,a,b\"\n";

class BenchMarks : public BenchFixture {
 protected:
  void click(const char* button) { bench->buttonClicked(QString::fromUtf8(button)); }
  int gridRowOf(int cv) const { return bench->grid().rowOf(CvIndex(cv)); }
  GridRow gridRow(int cv) const { return bench->gridRow(gridRowOf(cv)); }
};

TEST_F(BenchMarks, BoxesSetTheMarksOfTheirCv) {
  openEco(kSome);
  check("chkRd_2");
  check("chkWrt_19");
  markRow(31);
  EXPECT_TRUE(cv(2).cvRead && !cv(2).cvWrite);
  EXPECT_TRUE(cv(19).cvWrite);
  EXPECT_TRUE(cv(31).cvRead && row(31).read);
  EXPECT_TRUE(gridRow(31).read);
  bench->checkBoxToggled(QStringLiteral("chkRd_2"), false);
  EXPECT_FALSE(cv(2).cvRead);
}

TEST_F(BenchMarks, TheBoxesOfCv29AreTwins) {
  openEco(kSome);
  check("chkDrvRd_29");
  EXPECT_TRUE(checked("chkRd_29") && cv(29).cvRead);
  bench->checkBoxToggled(QStringLiteral("chkRd_29"), false);
  EXPECT_FALSE(checked("chkDrvRd_29"));
  check("chkWrt_29");
  EXPECT_TRUE(checked("chkDrvWrt_29") && cv(29).cvWrite && !cv(29).cvRead);
}

TEST_F(BenchMarks, ReadAllSetsEveryEnabledMark) {
  openEco(kSome);
  click("cmdReadAll");
  for (const char* box : {"chkDcAdrRead", "chkRd_2", "chkRd_3", "chkRd_9", "chkRd_19", "chkRd_29",
                          "chkDrvRd_29", "chkRd_Tbl"}) {
    EXPECT_TRUE(checked(box)) << box;
  }
  EXPECT_FALSE(checked("chkRd_5")) << "the decoder lacks it";
  EXPECT_FALSE(cv(5).cvRead);
  for (const int index : {2, 3, 9, 19, 29, 30, 31, 50, 67, 94}) {
    EXPECT_TRUE(cv(index).cvRead) << index;
    EXPECT_FALSE(cv(index).cvWrite) << index;
  }
  click("cmdReadNone");
  for (const char* box : {"chkDcAdrRead", "chkRd_2", "chkRd_19", "chkRd_29", "chkRd_Tbl"}) {
    EXPECT_FALSE(checked(box)) << box;
  }
  for (int i = 1; i <= 4864; ++i) ASSERT_FALSE(cv(i).cvRead) << i;
}

TEST_F(BenchMarks, WriteAllLeavesReadOnlyCvsOut) {
  openEco(kSome);
  click("cmdWriteAll");
  EXPECT_TRUE(checked("chkDcAdrWrite") && checked("chkWrt_Tbl"));
  EXPECT_TRUE(cv(31).cvWrite && cv(50).cvWrite);
  EXPECT_FALSE(cv(30).cvWrite);
  EXPECT_FALSE(cv(31).cvRead);
  click("cmdWriteNone");
  EXPECT_FALSE(cv(31).cvWrite);
  EXPECT_FALSE(checked("chkDcAdrWrite"));
}

TEST_F(BenchMarks, AllLeavesTheTableOutWhereThereIsNone) {
  openEco("[X]\nSPEEDTABLE=N");
  click("cmdReadAll");
  EXPECT_FALSE(checked("chkRd_Tbl"));
  EXPECT_FALSE(cv(67).cvRead);
}

TEST_F(BenchMarks, ATypeWithoutTableTakesItsMarksAway) {
  for (const char* type : {"[X]\nTYPE=3", "[X]\nSPEEDTABLE=N"}) {
    openEco(kSome);
    check("chkRd_Tbl");
    check("chkWrt_Tbl");
    describe("Adlerton/AT-NANO.dec", type);
    bench->chooseDecoder(QStringLiteral("AT-NANO"));
    clock.advance(100);
    EXPECT_FALSE(checked("chkRd_Tbl")) << type;
    EXPECT_FALSE(checked("chkWrt_Tbl")) << type;
    EXPECT_FALSE(bench->isPlanned(true, CvIndex(67))) << type;
  }
}

TEST_F(BenchMarks, ATypeWithATableTakesTheMarksOfTheTypeBeforeAwayToo) {
  openEco(kSome);
  check("chkRd_Tbl");
  check("chkWrt_Tbl");
  check("chkDcAdrRead");
  check("chkDcAdrWrite");
  describe("Adlerton/AT-NANO.dec", "[X]");
  bench->chooseDecoder(QStringLiteral("AT-NANO"));
  clock.advance(100);
  for (const char* box : {"chkRd_Tbl", "chkWrt_Tbl", "chkDcAdrRead", "chkDcAdrWrite"}) {
    EXPECT_FALSE(checked(box)) << box;
  }
}

TEST_F(BenchMarks, AllTakesTheRowsThatADecoderWithoutDriveHasInPlaceOfTheTable) {
  openEco("[X]\nTYPE=3\nCV_67=Blinken,0-255,0,3");
  click("cmdReadAll");
  click("cmdWriteAll");
  EXPECT_TRUE(cv(67).cvRead && cv(67).cvWrite);
  EXPECT_TRUE(row(67).read && row(67).write);
  EXPECT_FALSE(cv(68).cvRead || cv(68).cvWrite);
}

TEST_F(BenchMarks, TabButtonsMarkTheirTab) {
  std::string lines = kSome;
  for (int i = 100; i < 125; ++i) lines += "CV_" + std::to_string(i) + "=F,0-255,0,3\n";
  openEco(lines.c_str());
  click("cmdReadFunc_2");
  EXPECT_FALSE(cv(100).cvRead);
  EXPECT_TRUE(cv(120).cvRead && cv(124).cvRead);
  click("cmdWriteFunc_1");
  EXPECT_TRUE(cv(100).cvWrite && cv(119).cvWrite);
  EXPECT_FALSE(cv(120).cvWrite);
  click("cmdWriteOther_1");
  EXPECT_TRUE(cv(31).cvWrite);
  EXPECT_FALSE(cv(30).cvWrite);
  click("cmdReadGen");
  EXPECT_TRUE(checked("chkDcAdrRead") && checked("chkRd_3") && checked("chkRd_19"));
  EXPECT_FALSE(checked("chkRd_4"));
  EXPECT_FALSE(checked("chkRd_2"));
  click("cmdWriteDrv");
  EXPECT_TRUE(checked("chkWrt_2") && checked("chkWrt_9") && checked("chkDrvWrt_29") &&
              checked("chkWrt_Tbl"));
  EXPECT_FALSE(checked("chkWrt_3"));
}

TEST_F(BenchMarks, JobButtonsSetTheJob) {
  openEco(kSome);
  QList<CommJob> jobs;
  QObject::connect(bench.get(), &DecoderBench::jobRequested, bench.get(),
                   [&jobs](CommJob job) { jobs << job; });
  for (const char* button : {"cmdDcRead", "cmdDcReadMain", "cmdDcProg", "cmdDcProgMain"}) {
    click(button);
    EXPECT_EQ(jobs.last(), link.commJob);
  }
  EXPECT_EQ(jobs, (QList<CommJob>{CommJob::ReadProgTrack, CommJob::ReadMain,
                                  CommJob::WriteProgTrack, CommJob::WriteMain}));
}

// ---- The grid ---------------------------------------------------------------------------------

TEST_F(BenchMarks, TheGridShowsEveryCvOfTheDecoder) {
  record.recCvValues[0][49] = 7;
  record.recCvMarks[0][49] = '2';
  openEco(kSome);
  EXPECT_EQ(bench->grid().rowCount(), 6 + 29);
  EXPECT_EQ(bench->grid().cvAt(1), CvIndex(2));
  EXPECT_EQ(bench->grid().cvAt(7), CvIndex(67));
  const GridRow shown = gridRow(50);
  EXPECT_EQ(shown.number, "50");
  EXPECT_EQ(shown.name, "nur Liste");
  EXPECT_EQ(shown.range, "0-9");
  EXPECT_EQ(shown.value, "7");
  EXPECT_EQ(shown.colour, TextColour::Red);
  EXPECT_TRUE(shown.details);
  EXPECT_FALSE(gridRow(31).details);
  EXPECT_EQ(gridRow(94).name, "Geschwindigkeits-Tabelle Wert 28");
  EXPECT_EQ(gridRow(94).range, "0-255");
}

TEST_F(BenchMarks, TheGridCountsLinesAndLeavesRowsEmpty) {
  openEco("[X]\nSPEEDTABLE=N\nCV_29=a\nCV_30=a\nCV_30=b");
  EXPECT_EQ(bench->grid().rowCount(), 4);
  EXPECT_EQ(bench->gridRow(1).name, "b");
  EXPECT_EQ(bench->gridRow(2).number, "");
  EXPECT_EQ(bench->gridRow(3).value, "");
}

TEST_F(BenchMarks, ABankCvShowsItsRealNumberAndBank) {
  openEco("[X]\nSPEEDTABLE=N\nMAPVALA_2=1\nCV_257_2=Laut");
  EXPECT_EQ(bench->gridRow(1).number, "257 (2)");
}

TEST_F(BenchMarks, AHeaderClickTogglesEachRowOfTheRange) {
  openEco(kSome);
  markRow(31);
  bench->gridHeaderClicked(GridColumn::Read);
  EXPECT_FALSE(cv(31).cvRead);
  EXPECT_TRUE(cv(2).cvRead && checked("chkRd_2"));
  EXPECT_TRUE(cv(30).cvRead && cv(94).cvRead);
  bench->gridHeaderClicked(GridColumn::Write);
  EXPECT_TRUE(cv(30).cvWrite) << "no other test is made here";
}

TEST_F(BenchMarks, AHeaderClickWorksOnTheSelection) {
  openEco(kSome);
  bench->gridSelected(gridRowOf(31), gridRowOf(9));
  bench->gridSelected(2, 2);
  bench->gridHeaderClicked(GridColumn::Read);
  EXPECT_FALSE(cv(3).cvRead);
  EXPECT_TRUE(cv(9).cvRead && cv(30).cvRead && cv(31).cvRead);
  EXPECT_FALSE(cv(50).cvRead);
}

TEST_F(BenchMarks, ASelectionEndsWithTheTypeItWasMadeUnder) {
  openEco(kSome);
  bench->gridSelected(1, 2);
  describe("Adlerton/AT-NANO.dec", kSome);
  bench->chooseDecoder(QStringLiteral("AT-NANO"));
  clock.advance(100);
  bench->gridHeaderClicked(GridColumn::Read);
  EXPECT_TRUE(cv(2).cvRead && cv(50).cvRead);
}

TEST_F(BenchMarks, ASelectionBeyondTheNewTypesRowsIsNone) {
  openEco(kSome);
  bench->gridSelected(30, 34);
  describe("Adlerton/AT-NANO.dec", "[X]\nSPEEDTABLE=N\nCV_31=Wert\nCV_32=Wert");
  bench->chooseDecoder(QStringLiteral("AT-NANO"));
  clock.advance(100);
  bench->gridHeaderClicked(GridColumn::Read);
  EXPECT_TRUE(cv(31).cvRead && cv(32).cvRead);
}

TEST_F(BenchMarks, ClicksOnBoxesOfTheGrid) {
  openEco(kSome);
  bench->gridClicked(gridRowOf(30), GridColumn::Read);
  EXPECT_TRUE(cv(30).cvRead && row(30).read);
  bench->gridClicked(gridRowOf(30), GridColumn::Write);
  EXPECT_FALSE(cv(30).cvWrite) << "read-only";
  bench->gridClicked(gridRowOf(31), GridColumn::Write);
  EXPECT_TRUE(cv(31).cvWrite && row(31).write);
  bench->gridClicked(gridRowOf(31), GridColumn::Write);
  EXPECT_FALSE(cv(31).cvWrite);
}

TEST_F(BenchMarks, HighCvsAreNotWritableInTheGridOfAnOldStation) {
  settings.baseUnit = StationKind::Mx1;
  openEco("[X]\nCV_255=a\nCV_256=b");
  bench->gridClicked(gridRowOf(256), GridColumn::Write);
  bench->gridClicked(gridRowOf(255), GridColumn::Write);
  EXPECT_FALSE(cv(256).cvWrite);
  EXPECT_TRUE(cv(255).cvWrite);
  bench->gridClicked(gridRowOf(256), GridColumn::Value);
  EXPECT_FALSE(control("tabText").visible);
}

TEST_F(BenchMarks, AValueIsEditedInTheGrid) {
  record.recCvMarks[0][49] = '1';
  openEco(kSome);
  EXPECT_EQ(gridRow(50).colour, TextColour::Blue);
  bench->gridClicked(gridRowOf(50), GridColumn::Value);
  EXPECT_TRUE(control("tabText").visible);
  EXPECT_EQ(text("tabText"), "0");
  EXPECT_EQ(control("tabText").tag, "50");
  bench->fieldEdited(QStringLiteral("tabText"), QStringLiteral("10"));
  bench->fieldLeft(QStringLiteral("tabText"));
  EXPECT_EQ(prompt.shown, QStringList({"Eingabe außerhalb des Wertebereichs!"}));
  EXPECT_TRUE(control("tabText").visible);
  bench->fieldEdited(QStringLiteral("tabText"), QStringLiteral("9"));
  bench->fieldLeft(QStringLiteral("tabText"));
  EXPECT_FALSE(control("tabText").visible);
  EXPECT_EQ(gridRow(50).value, "9");
  EXPECT_EQ(gridRow(50).colour, TextColour::Normal);
}

TEST_F(BenchMarks, AValueEditedInTheGridShowsInItsRowToo) {
  openEco(kSome);
  bench->gridClicked(gridRowOf(31), GridColumn::Value);
  bench->fieldEdited(QStringLiteral("tabText"), QStringLiteral("99"));
  bench->fieldLeft(QStringLiteral("tabText"));
  EXPECT_EQ(row(31).text, "99");
}

TEST_F(BenchMarks, AReadOnlyValueIsNotEdited) {
  openEco(kSome);
  bench->gridClicked(gridRowOf(30), GridColumn::Value);
  EXPECT_FALSE(control("tabText").visible);
}

TEST_F(BenchMarks, DetailsOpenTheBitDialog) {
  record.recCvValues[0][49] = 1;
  openEco(kSome);
  QString asked;
  bench->bitDialogBox = [&](int value, const QString& bits, const QString& caption) {
    asked = QStringLiteral("%1|%2|%3").arg(value).arg(bits, caption);
    return 0;
  };
  setMark(50, CvMark::Verified);
  bench->gridClicked(gridRowOf(50), GridColumn::Details);
  EXPECT_EQ(asked, "1|1,a,b|Detaileingabe CV 50");
  EXPECT_EQ(value(50), 0);
  EXPECT_EQ(mark(50), CvMark::None);
  asked.clear();
  bench->gridClicked(gridRowOf(31), GridColumn::Details);
  EXPECT_EQ(asked, "") << "without bits there is nothing to open";
}

TEST_F(BenchMarks, ACancelledBitDialogChangesNothing) {
  record.recCvValues[0][49] = 1;
  openEco(kSome);
  setMark(50, CvMark::Verified);
  bench->bitDialogBox = [](int, const QString&, const QString&) { return -1; };
  bench->gridClicked(gridRowOf(50), GridColumn::Details);
  EXPECT_EQ(value(50), 1);
  EXPECT_EQ(mark(50), CvMark::Verified);
}

TEST_F(BenchMarks, AnAddressInTwoCvsIsJoinedAndSplit) {
  record.recCvValues[0][99] = static_cast<char>(192 + 3);
  record.recCvValues[0][100] = 20;
  openEco("[X]\nSPEEDTABLE=N\nCV_100=hoch,0-255,0,0,,A\nCV_101=tief");
  int given = 0;
  bench->bitDialogBox = [&given](int value, const QString&, const QString&) {
    given = value;
    return 1000;
  };
  bench->gridClicked(gridRowOf(100), GridColumn::Details);
  EXPECT_EQ(given, 3 * 256 + 20);
  EXPECT_EQ(value(100), 3 | 192);
  EXPECT_EQ(value(101), 1000 % 256);
}

TEST_F(BenchMarks, OnlyTheBareLetterJoinsTheTwoCvs) {
  record.recCvValues[0][99] = 5;
  openEco("[X]\nSPEEDTABLE=N\nCV_100=hoch,0-255,0,0,,\"A,Adresse\"\nCV_101=tief");
  int given = 0;
  bench->bitDialogBox = [&given](int value, const QString&, const QString&) {
    given = value;
    return 130;
  };
  bench->gridClicked(gridRowOf(100), GridColumn::Details);
  EXPECT_EQ(given, 5);
  EXPECT_EQ(value(100), 192);
  EXPECT_EQ(value(101), 130);
}

TEST_F(BenchMarks, ABitButtonOfARowWorksOnItsCv) {
  openEco("[X]\nCV_31=Wert,0-255,0,5,,\"8,Wert\"");
  bench->bitDialogBox = [](int, const QString&, const QString&) { return 200; };
  bench->rowBitClicked(rowOf(31));
  EXPECT_EQ(value(31), 200);
  EXPECT_EQ(row(31).text, "200");
}

}  // namespace
}  // namespace lokari
