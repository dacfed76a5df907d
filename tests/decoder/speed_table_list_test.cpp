// The list of the speed table: what its boxes show and take, and what giving up brings back.
#include "decoder/speed_table_list.h"

#include "speed_fixture.h"

namespace lokari {
namespace {

const QString kOutOfRange = QStringLiteral("Eingabe außerhalb des Wertebereichs!");

class SpeedTableListTest : public SpeedFixture {
 protected:
  void openList(const std::function<void(SpeedTableList&)>& script) {
    bench->tableListBox = [&](SpeedTableList& list) {
      ++opened;
      script(list);
    };
    bench->buttonClicked(QStringLiteral("cmdTblList"));
  }

  int opened = 0;
};

TEST_F(SpeedTableListTest, ShowsOneBoxAStep) {
  store(67, 20);
  store(94, 200, '1');
  openTable("INTERNALSTEPS=200\n");
  openList([&](SpeedTableList& list) {
    EXPECT_EQ(list.count(), 28);
    EXPECT_EQ(list.limit(), 200);
    EXPECT_EQ(list.text(1), QStringLiteral("20"));
    EXPECT_EQ(list.text(28), QStringLiteral("200"));
    EXPECT_EQ(list.colour(28), TextColour::Blue);
  });
  EXPECT_EQ(opened, 1);
}

TEST_F(SpeedTableListTest, WithFourteenStepsItShowsCv68To94) {
  store(68, 1);
  store(70, 2);
  store(94, 14);
  openTable("", 14);
  openList([&](SpeedTableList& list) {
    EXPECT_EQ(list.count(), 14);
    EXPECT_EQ(list.cvOf(1), CvIndex(68));
    EXPECT_EQ(list.cvOf(2), CvIndex(70));
    EXPECT_EQ(list.cvOf(14), CvIndex(94));
    EXPECT_EQ(list.text(14), QStringLiteral("14"));
  });
  EXPECT_EQ(opened, 1);
}

TEST_F(SpeedTableListTest, OfAShortTableItShowsFifteenBoxesAlsoWithFourteenSteps) {
  openTable("FAMILY=1\n", 14);
  openList([&](SpeedTableList& list) {
    EXPECT_EQ(list.count(), 15);
    EXPECT_EQ(list.cvOf(15), CvIndex(81));
  });
  EXPECT_EQ(opened, 1);
}

TEST_F(SpeedTableListTest, DoesNotOpenWhileTheTableIsOffAndSaysWhy) {
  openEco("");
  openList([](SpeedTableList&) {});
  EXPECT_EQ(opened, 0);
  EXPECT_EQ(prompt.shown, QStringList({"Die Geschwindigkeitstabelle ist ausgeschaltet."}));
  EXPECT_TRUE(prompt.below.last().contains(QStringLiteral("CV 67 bis 94")));
}

TEST_F(SpeedTableListTest, AValueThatIsLeftShowsInTheCurveAtOnce) {
  store(67, 20, '1');
  openTable("");
  int redraws = 0;
  QObject::connect(bench.get(), &DecoderBench::speedTableChanged, [&] { ++redraws; });
  openList([&](SpeedTableList& list) {
    EXPECT_TRUE(list.leave(1, QStringLiteral("33")));
    EXPECT_EQ(value(67), 33);
    EXPECT_EQ(mark(67), CvMark::None);
    EXPECT_EQ(redraws, 1);
  });
}

TEST_F(SpeedTableListTest, ABoxThatIsLeftUnchangedKeepsItsMark) {
  store(67, 20, '1');
  openTable("");
  openList([&](SpeedTableList& list) { EXPECT_TRUE(list.leave(1, QStringLiteral("20"))); });
  EXPECT_EQ(mark(67), CvMark::Verified);
}

TEST_F(SpeedTableListTest, TheLimitItselfIsTaken) {
  openTable("INTERNALSTEPS=120\n");
  openList([&](SpeedTableList& list) { EXPECT_TRUE(list.leave(3, QStringLiteral("120"))); });
  EXPECT_EQ(value(69), 120);
}

class RefusedText : public SpeedTableListTest, public ::testing::WithParamInterface<const char*> {};

TEST_P(RefusedText, IsToldAndChangesNothing) {
  store(69, 50);
  openTable("INTERNALSTEPS=120\n");
  openList([&](SpeedTableList& list) {
    EXPECT_FALSE(list.leave(3, QString::fromUtf8(GetParam())));
    EXPECT_EQ(prompt.shown, QStringList{kOutOfRange});
    EXPECT_EQ(value(69), 50);
  });
}

INSTANTIATE_TEST_SUITE_P(All, RefusedText,
                         ::testing::Values("121", "-1", "", "abc", "12x", "1e9", "99999999999"));

TEST_F(SpeedTableListTest, OkStoresTheNumbersOfAllBoxesAndLeavesTheCvsInBetween) {
  store(67, 99);
  store(69, 98);
  store(70, 5);
  openTable("", 14);
  openList([&](SpeedTableList& list) {
    QStringList texts(14, QStringLiteral("7"));
    texts[1] = QStringLiteral("abc");
    list.ok(texts);
  });
  EXPECT_EQ(tableValues(6), (std::vector<int>{99, 7, 98, 5, 0, 7}));
  EXPECT_EQ(value(94), 7);
}

TEST_F(SpeedTableListTest, CancelBringsAllTwentyEightValuesBack) {
  for (int i = 67; i <= 94; ++i) store(i, i, '1');
  openTable("");
  const QByteArray values = bench->sets.cvValues;
  const QByteArray marks = bench->sets.cvMarks;
  int redraws = 0;
  QObject::connect(bench.get(), &DecoderBench::speedTableChanged, [&] { ++redraws; });
  openList([&](SpeedTableList& list) {
    for (int box = 1; box <= 28; ++box) list.leave(box, QStringLiteral("200"));
    ASSERT_EQ(value(67), 200);
    ASSERT_EQ(value(94), 200);
    redraws = 0;
    list.cancel();
    EXPECT_GT(redraws, 0);
  });
  EXPECT_EQ(bench->sets.cvValues, values);
  EXPECT_EQ(bench->sets.cvMarks, marks);
}

}  // namespace
}  // namespace lokari
