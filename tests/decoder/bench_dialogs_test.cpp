// What the bench hands to its dialogs and takes from them.
#include "bench_fixture.h"

namespace lokari {
namespace {

class BenchDialogs : public BenchFixture {
 protected:
  /// Opens the bit dialog of a grid row, which answers with `result`.
  void editBits(int cv, int result) {
    bench->bitDialogBox = [this, result](int, const QString&, const QString& caption) {
      captions << caption;
      return result;
    };
    for (int row = 1; row < bench->grid().rowCount(); ++row)
      if (bench->grid().cvAt(row) == CvIndex(cv)) bench->gridClicked(row, GridColumn::Details);
  }

  QStringList captions;
};

TEST_F(BenchDialogs, TheCaptionNamesThePlainCv) {
  openEco("[X]\nSPEEDTABLE=N\nCV_50=a,0-255,0,0,,\"8,Wert\"\n");
  editBits(50, -1);
  EXPECT_EQ(captions, QStringList("Detaileingabe CV 50"));
}

TEST_F(BenchDialogs, TheCaptionOfABankCvNamesItsRealNumberAndTheBank) {
  openEco("[X]\nSPEEDTABLE=N\nMAPVALA_2=1\nCV_257_2=a,0-255,0,0,,\"8,Wert\"\n");
  editBits(1024, -1);
  EXPECT_EQ(captions, QStringList("Detaileingabe CV 257 (2)"));
}

TEST_F(BenchDialogs, TheCaptionOfTheSixteenthBankHasTheIndex) {
  openEco(
      "[X]\nSPEEDTABLE=N\nMAPVALA_15=1\nMAPVALA_16=2\nCV_257_15=a,0-255,0,0,,\"8,Wert\"\n"
      "CV_257_16=b,0-255,0,0,,\"8,Wert\"\n");
  editBits(4352, -1);
  editBits(4608, -1);
  EXPECT_EQ(captions, QStringList({"Detaileingabe CV 257 (15)", "Detaileingabe CV 4608"}));
}

TEST_F(BenchDialogs, AnAcceptedValueThatStaysKeepsItsMark) {
  record.recCvValues[0][49] = 7;
  openEco("[X]\nSPEEDTABLE=N\nCV_50=a,0-255,0,0,,\"8,Wert\"\n");
  setMark(50, CvMark::Verified);
  editBits(50, 7);
  EXPECT_EQ(mark(50), CvMark::Verified);
  editBits(50, 8);
  EXPECT_EQ(mark(50), CvMark::None);
  EXPECT_EQ(value(50), 8);
}

TEST_F(BenchDialogs, AnAddressThatStaysChangesNeitherOfItsCvs) {
  record.recCvValues[0][49] = 3;
  record.recCvValues[0][50] = 100;
  openEco("[X]\nSPEEDTABLE=N\nCV_50=hoch,0-255,0,5,,A\nCV_51=tief,0-255,0,5\n");
  setMark(50, CvMark::Verified);
  editBits(50, 3 * 256 + 100);
  EXPECT_EQ(value(50), 3) << "without the two high bits that a new address gets";
  EXPECT_EQ(value(51), 100);
  EXPECT_EQ(mark(50), CvMark::Verified);
}

TEST_F(BenchDialogs, F2HasNoCalculatorForAnAddressOrALockedField) {
  settings.baseUnit = StationKind::Li100V3;
  settings.lenzV36 = false;
  openEco("[X]\nSPEEDTABLE=N\nCV_30=a,0-255,0,5\nCV_300=b,0-255,0,5\n", "77");
  int opened = 0;
  bench->calculatorBox = [&opened](const QString&) {
    ++opened;
    return QStringLiteral("5");
  };
  bench->fieldF2(QStringLiteral("dc_adr"));
  ASSERT_TRUE(row(300).locked);
  bench->rowF2(rowOf(300));
  EXPECT_EQ(opened, 0);
  EXPECT_EQ(text("dc_adr"), "77");
  bench->rowF2(rowOf(30));
  EXPECT_EQ(opened, 1);
}

TEST_F(BenchDialogs, F2ClearsTheMarkAsTypingDoes) {
  openEco("[X]\nSPEEDTABLE=N\nCV_30=a,0-255,0,5\n");
  setMark(30, CvMark::Verified);
  bench->calculatorBox = [](const QString&) { return QStringLiteral("12"); };
  bench->rowF2(rowOf(30));
  EXPECT_EQ(mark(30), CvMark::None);
  bench->rowLeft(rowOf(30));
  EXPECT_EQ(value(30), 12);
}

TEST_F(BenchDialogs, AnEmptiedCalculatorEmptiesTheField) {
  record.recCvValues[0][29] = 9;
  openEco("[X]\nSPEEDTABLE=N\nCV_30=a,0-255,0,5\n");
  bench->calculatorBox = [](const QString&) { return QStringLiteral(""); };
  bench->rowF2(rowOf(30));
  EXPECT_EQ(row(30).text, "");
}

}  // namespace
}  // namespace lokari
