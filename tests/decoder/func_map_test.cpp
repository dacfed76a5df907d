// The function mapping matrix: its rows, and what the bench does with the answer of its dialog.
#include "bench_fixture.h"

namespace lokari {
namespace {

/// Twelve keys in three blocks of four, shifted by three outputs each.
constexpr const char* kTwelve =
    "[X]\nSPEEDTABLE=N\nFUNCMAP=J\nFUNCTIONS=12\nFUNCCOUNT=4\nFUNCSHIFT=3\n"
    "CV_33=a,0-255,1,3\nCV_34=b,0-255,2,3\nCV_37=c,0-15,0,3\nCV_45=d,0-255,0,3\n";

DecoderDescription described(int functions, int count, int shift) {
  DecoderDescription description;
  description.FUNCTIONS = functions;
  description.FUNCCOUNT = count;
  description.FUNCSHIFT = shift;
  return description;
}

std::vector<FuncMapRow> rowsOf(const DecoderDescription& description) {
  return funcMapRows(description, QByteArray(kCvArraySize, '\0'));
}

TEST(FuncMap, RowsGoFromZeroToFunctions) {
  EXPECT_EQ(rowsOf(described(1, 4, 3)).size(), 2U);
  EXPECT_EQ(rowsOf(described(12, 4, 3)).size(), 13U);
}

TEST(FuncMap, RowsAreNamedByTheirKeys) {
  QStringList labels;
  for (const FuncMapRow& row : rowsOf(described(4, 4, 3))) labels << row.label;
  EXPECT_EQ(labels, QStringList({QStringLiteral("F0 vorwärts"), QStringLiteral("F0 rückwärts"),
                                 "F1", "F2", "F3"}));
  EXPECT_EQ(rowsOf(described(12, 4, 3)).back().label, "F11");
}

TEST(FuncMap, RowsBelongToCv33AndThoseBehindIt) {
  const auto rows = rowsOf(described(12, 4, 3));
  EXPECT_EQ(rows.front().cv, CvIndex(33));
  EXPECT_EQ(rows.back().cv, CvIndex(45));
}

TEST(FuncMap, BlocksOfFunccountAreShiftedByFuncshift) {
  std::vector<int> offsets;
  for (const FuncMapRow& row : rowsOf(described(12, 4, 3))) offsets.push_back(row.offset);
  EXPECT_EQ(offsets, (std::vector<int>{0, 0, 0, 0, 3, 3, 3, 3, 6, 6, 6, 6, 6}));
  EXPECT_EQ(funcMapOutputs(rowsOf(described(12, 4, 3))), 14);
  EXPECT_EQ(funcMapOutputs(rowsOf(described(3, 4, 3))), 8);
}

TEST(FuncMap, TheStandardMappingIsOneOutputForEachKey) {
  const auto rows = rowsOf(described(12, 4, 3));
  EXPECT_TRUE(isStandardMapping(rows[0], 1));
  EXPECT_TRUE(isStandardMapping(rows[3], 8));
  EXPECT_TRUE(isStandardMapping(rows[4], 2)) << "2^(4 - 3)";
  EXPECT_FALSE(isStandardMapping(rows[4], 16));
  EXPECT_TRUE(isStandardMapping(rows[12], 64)) << "2^(12 - 6)";
  EXPECT_FALSE(isStandardMapping(rows[0], 0));
}

TEST(FuncMap, ARowShiftedBeyondItsOutputHasNoStandardMapping) {
  const auto rows = rowsOf(described(12, 1, 4));
  for (int value = 0; value <= 255; ++value) EXPECT_FALSE(isStandardMapping(rows[1], value));
  const auto unshifted = rowsOf(described(12, 8, 1));
  for (int value = 0; value <= 255; ++value) EXPECT_FALSE(isStandardMapping(unshifted[12], value));
}

class FuncMapBench : public BenchFixture {
 protected:
  /// Opens the dialog, which answers with the values it was given and these changes by row.
  void answer(const std::map<size_t, int>& changes) {
    bench->funcMapBox = [this, changes](const std::vector<FuncMapRow>& rows) {
      given = rows;
      std::vector<int> values;
      for (const FuncMapRow& row : rows) values.push_back(row.value);
      for (const auto& [row, value] : changes) values.at(row) = value;
      return std::optional(values);
    };
    bench->buttonClicked(QStringLiteral("cmdFuncMap"));
  }

  std::vector<FuncMapRow> given;
};

TEST_F(FuncMapBench, TheDialogGetsThePresentValues) {
  record.recCvValues[0][32] = 5;
  record.recCvValues[0][44] = static_cast<char>(0x81);
  openEco(kTwelve);
  answer({});
  ASSERT_EQ(given.size(), 13U);
  EXPECT_EQ(given[0].value, 5);
  EXPECT_EQ(given[12].value, 0x81);
}

TEST_F(FuncMapBench, BoxesThatTheRangeForbidsAreNotOfferedUnlessTheyAreSet) {
  record.recCvValues[0][36] = 64;
  openEco(kTwelve);
  answer({});
  EXPECT_EQ(given[4].offered,
            (std::array<bool, 8>{true, true, true, true, false, false, true, false}));
  EXPECT_EQ(given[0].offered,
            (std::array<bool, 8>{true, true, true, true, true, true, true, true}));
}

TEST_F(FuncMapBench, ACvThatTheDescriptionLacksIsTold) {
  openEco(kTwelve);
  answer({});
  EXPECT_TRUE(given[0].described);
  EXPECT_FALSE(given[2].described);
}

TEST_F(FuncMapBench, OkStoresEveryRow) {
  openEco(kTwelve);
  answer({{0, 3}, {2, 255}, {12, 128}});
  EXPECT_EQ(value(33), 3);
  EXPECT_EQ(value(34), 0);
  EXPECT_EQ(value(35), 255);
  EXPECT_EQ(value(45), 128);
  EXPECT_EQ(row(33).text, "3") << "and the row of the page shows it";
}

TEST_F(FuncMapBench, CancelLeavesEverything) {
  record.recCvValues[0][32] = 5;
  openEco(kTwelve);
  setMark(33, CvMark::Verified);
  bench->funcMapBox = [](const std::vector<FuncMapRow>&) { return std::nullopt; };
  bench->buttonClicked(QStringLiteral("cmdFuncMap"));
  EXPECT_EQ(value(33), 5);
  EXPECT_EQ(mark(33), CvMark::Verified);
}

TEST_F(FuncMapBench, AChangedRowLosesItsMarkAndAnotherKeepsIt) {
  record.recCvValues[0][32] = 5;
  record.recCvValues[0][33] = 6;
  openEco(kTwelve);
  setMark(33, CvMark::Verified);
  setMark(34, CvMark::Failed);
  answer({{0, 7}});
  EXPECT_EQ(mark(33), CvMark::None);
  EXPECT_EQ(mark(34), CvMark::Failed);
}

TEST_F(FuncMapBench, TheStandardMappingOfTheFirstSetComesWithItsMark) {
  record.recCvValues[0][32] = 1;
  record.recCvMarks[0][32] = '1';
  record.recCvValues[0][33] = 4;
  record.recCvMarks[0][33] = '1';
  record.recCvValues[1][32] = 9;
  record.recSetName = QStringLiteral("Set 2");
  openEco(kTwelve);
  answer({{0, 1}, {1, 4}});
  EXPECT_EQ(mark(33), CvMark::Verified) << "1 is the standard of F0, and the first set holds it";
  EXPECT_EQ(mark(34), CvMark::None) << "4 is in the first set, but no standard";
  EXPECT_EQ(row(33).colour, TextColour::Blue);
}

TEST_F(FuncMapBench, InTheFirstSetAMappingThatWasOverwrittenInTheDecoderIsNotBlue) {
  record.recCvValues[0][32] = 1;
  record.recCvMarks[0][32] = '1';
  openEco(kTwelve);
  bench->rowEdited(rowOf(33), QStringLiteral("5"));
  bench->rowLeft(rowOf(33));
  markRowForWriting(33);
  write();
  ASSERT_EQ(decoder().stored(33), 5);
  answer({{0, 1}});
  EXPECT_EQ(value(33), 1);
  EXPECT_EQ(mark(33), CvMark::None) << "the decoder holds 5";
  EXPECT_EQ(row(33).colour, TextColour::Normal);
}

TEST_F(FuncMapBench, WithoutTheKeyThereIsNoDialog) {
  openEco("[X]\nFUNCMAP=N\nCV_33=a\n");
  answer({});
  EXPECT_TRUE(given.empty());
}

}  // namespace
}  // namespace lokari
