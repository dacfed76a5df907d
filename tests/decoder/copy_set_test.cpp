// Copying from the first CV set into the current one.
#include "bench_fixture.h"

namespace lokari {
namespace {

constexpr const char* kSome =
    "[X]\nSPEEDTABLE=N\nCV_2=zwei,0-255,0,0\nCV_30=dreissig,0-255,0,5\nCV_40=vierzig,0-255,0,0\n";

class CopySet : public BenchFixture {
 protected:
  CopySet() {
    for (int cv : {2, 29, 30, 40, 50}) {
      record.recCvValues[0][cv - 1] = static_cast<char>(cv + 100);
      record.recCvMarks[0][cv - 1] = '1';
      record.recCvValues[2][cv - 1] = static_cast<char>(cv);
      record.recCvMarks[2][cv - 1] = '2';
    }
    record.recCvName[0] = QStringLiteral("Anlage");
    record.recCvName[2] = QStringLiteral("Reise %1");
    record.recSetName = QStringLiteral("Reise %1");
    openEco(kSome);
  }

  void copy(CopyAnswer answer) {
    bench->copyBox = [this, answer](const QString& text) {
      asked << text;
      return answer;
    };
    bench->buttonClicked(QStringLiteral("cmdCopy"));
  }

  QStringList asked;
};

TEST_F(CopySet, AsksWithTheNamesOfBothSets) {
  copy(CopyAnswer::None);
  EXPECT_EQ(asked, QStringList("CVs von Anlage nach Reise %1 kopieren?"));
}

TEST_F(CopySet, AllTakesEveryValueAndMarkOfTheFirst) {
  copy(CopyAnswer::All);
  for (int cv : {2, 29, 30, 40, 50}) {
    EXPECT_EQ(value(cv), cv + 100);
    EXPECT_EQ(mark(cv), CvMark::Verified);
  }
  EXPECT_EQ(bench->sets.setValues(SetNumber(3)), bench->sets.setValues(SetNumber(1)));
  EXPECT_EQ(bench->sets.setMarks(SetNumber(3)), bench->sets.setMarks(SetNumber(1)));
  EXPECT_EQ(text("txtDcDrvMinVolt"), "102") << "the fields are shown anew";
  EXPECT_EQ(row(30).text, "130");
  EXPECT_EQ(row(30).colour, TextColour::Blue);
}

TEST_F(CopySet, AnAddressThatFailedAndWasTypedAnewIsNoValueThatAReadLeft) {
  bench->chooseSet(QStringLiteral("Anlage"));
  settings.addressCheckNow = true;
  bench->fieldEdited(QStringLiteral("dc_adr"), QStringLiteral("1001"));
  markRow(30);
  read();
  ASSERT_EQ(control("dc_adr").colour, TextColour::Red);
  bench->fieldEdited(QStringLiteral("dc_adr"), QStringLiteral("1002"));
  ASSERT_EQ(control("dc_adr").colour, TextColour::Normal);
  bench->chooseSet(QStringLiteral("Reise %1"));
  copy(CopyAnswer::All);
  EXPECT_TRUE(prompt.asked.isEmpty());
  EXPECT_EQ(bench->sets.setValues(SetNumber(3)), bench->sets.setValues(SetNumber(1)));
}

TEST_F(CopySet, SelectedTakesTheNamedCvsThatAreMarkedForWriting) {
  markRowForWriting(30);
  check("chkWrt_2");
  check("chkWrt_29");
  copy(CopyAnswer::Selected);
  EXPECT_EQ(value(30), 130);
  EXPECT_EQ(mark(30), CvMark::Verified);
  EXPECT_EQ(value(2), 102);
  EXPECT_EQ(value(40), 40) << "not marked";
  EXPECT_EQ(value(29) & 128, 0) << "marked, but without a name of its own";
  EXPECT_EQ(value(50), 50) << "the decoder lacks it";
  EXPECT_EQ(mark(40), CvMark::Failed);
  EXPECT_EQ(bench->sets.setValues(SetNumber(3)), bench->sets.cvValues) << "and it is stored";
  EXPECT_EQ(bench->sets.setMarks(SetNumber(3)), bench->sets.cvMarks);
}

TEST_F(CopySet, CancelCopiesNothing) {
  markRowForWriting(30);
  copy(CopyAnswer::None);
  EXPECT_EQ(value(30), 30);
  EXPECT_EQ(mark(30), CvMark::Failed);
}

TEST_F(CopySet, IsNotAvailableWhileTheFirstSetIsCurrent) {
  EXPECT_TRUE(control("cmdCopy").enabled);
  bench->chooseSet(QStringLiteral("Anlage"));
  EXPECT_FALSE(control("cmdCopy").enabled);
  copy(CopyAnswer::All);
  EXPECT_TRUE(asked.isEmpty());
}

TEST_F(CopySet, TheOtherSetsStay) {
  copy(CopyAnswer::All);
  EXPECT_EQ(bench->sets.setValues(SetNumber(2)), QByteArray(kCvArraySize, '\0'));
  EXPECT_EQ(static_cast<quint8>(bench->sets.setValues(SetNumber(1))[29]), 130);
}

}  // namespace
}  // namespace lokari
