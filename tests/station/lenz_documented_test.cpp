// The communication test at a Lenz interface that follows its maker's documents.
#include "comm_fixture.h"
#include "station/lenz.h"

namespace lokari {
namespace {

class LenzDocumentedTest : public test::CommFixture {
 protected:
  explicit LenzDocumentedTest(StationKind kind = StationKind::Li100V3) : CommFixture(kind) {}

  const QStringList kLines{"Lenz Zentrale Version 3.0", "LH200", "Programmiermodus aus",
                           "Startmodus manuell"};
};

class LiUsbDocumentedTest : public LenzDocumentedTest {
 protected:
  LiUsbDocumentedTest() : LenzDocumentedTest(StationKind::LiUsb) {}
};

TEST_F(LenzDocumentedTest, AStationThatSaysEverythingOnceWantsTheFormOfItsDocuments) {
  expect("21 21 00").answer(fromHex("63 21 30 01 73"));
  expect("21 24 05").answer(fromHex("62 22 00 40"));
  expect("21 81 A0").answer(fromHex("61 01 60"));
  const CommTestResult result = run();
  EXPECT_EQ(result.lines, kLines);
  EXPECT_TRUE(result.wantsMakerForm);
}

TEST_F(LenzDocumentedTest, OneThatSaysItAsAlwaysDoesNot) {
  expect("21 21 00").answer(fromHex("63 21 30 01 73"));
  expect("21 24 05").answer(fromHex("62 22 00 40"));
  expect("21 81 A0").answer(fromHex("01 04 05 61 01 60 61 01 60"));
  EXPECT_FALSE(run().wantsMakerForm);
}

TEST_F(LiUsbDocumentedTest, ABroadcastForAFarewellShowsItToo) {
  expect("FF FE 21 21 00").answer(fromHex("FF FE 63 21 36 00 74"));
  expect("FF FE 21 24 05").answer(fromHex("FF FE 62 22 04 44"));
  expect("FF FE 21 81 A0").answer(fromHex("FF FD 61 01 60"));
  EXPECT_TRUE(run().wantsMakerForm);
}

TEST_F(LenzDocumentedTest, InThatFormTheInterfaceTellsItsVersionAndNothingIsOffered) {
  settings.makerForm = true;
  expect("21 21 00").answer(fromHex("63 21 30 01 73"));
  expect("21 24 05").answer(fromHex("62 22 00 40"));
  expect("F0 F0").answer(fromHex("02 30 01 33"));
  expect("21 81 A0").answer(fromHex("61 01 60"));
  const CommTestResult result = run();
  EXPECT_EQ(result.lines, kLines + QStringList{"Interface Version 3.0"});
  EXPECT_FALSE(result.wantsMakerForm);
}

TEST_F(LiUsbDocumentedTest, InThatFormTheStationIsNamedThereToo) {
  settings.makerForm = true;
  expect("FF FE 21 21 00").answer(fromHex("FF FE 63 21 36 02 76"));
  expect("FF FE 21 24 05").answer(fromHex("FF FE 62 22 04 44"));
  expect("FF FE F0 F0").answer(fromHex("FF FE 02 36 01 35"));
  expect("FF FE 21 81 A0").answer(fromHex("FF FD 61 01 60"));
  EXPECT_EQ(run().lines, (QStringList{"Lenz Zentrale Version 3.6", "Programmiermodus aus",
                                      "Startmodus automatisch", "Compact oder Commander",
                                      "Interface Version 3.6"}));
}

TEST_F(LenzDocumentedTest, NewsAheadOfAnAnswerIsNoAnswer) {
  for (const char* news : {"61 01 60", "61 00 61", "01 07 06", "81 00 81"}) {
    expect("21 21 00").answer(fromHex(news)).answer(fromHex("63 21 30 01 73"), 20);
    expect("21 24 05").answer(fromHex(news)).answer(fromHex("62 22 00 40"), 20);
    expect("21 81 A0").answer(fromHex("61 01 60"));
    EXPECT_EQ(run().lines, kLines) << news;
    view = {};
  }
}

TEST_F(LiUsbDocumentedTest, BroadcastsAheadOfAnAnswerHaveTheirOwnHead) {
  expect("FF FE 21 21 00").answer(fromHex("FF FD 61 01 60 FF FE 63 21 36 00 74"));
  expect("FF FE 21 24 05").answer(fromHex("FF FD 61 01 60 FF FE 62 22 04 44"));
  expect("FF FE 21 81 A0").answer(fromHex("FF FD 61 01 60"));
  const CommTestResult result = run();
  EXPECT_EQ(result.lines.first(), "Lenz Zentrale Version 3.6");
  EXPECT_EQ(result.connected, (StationChoice{StationKind::LiUsb, true}));
}

TEST(LenzDocumentedLines, AreThoseOfSoundAnswers) {
  const auto fromHex = [](const char* hex) { return QByteArray::fromHex(hex); };
  EXPECT_EQ(lenzDocumentedLines(fromHex("63 21 36 00 74"), fromHex("02 30 01 33")),
            (QStringList{"LZ100", "Interface Version 3.0"}));
  EXPECT_EQ(lenzDocumentedLines(fromHex("62 21 23 60"), fromHex("61 82 E3")), QStringList());
  EXPECT_EQ(lenzDocumentedLines(fromHex("63 21 36 07 73"), fromHex("02 30 01 34")), QStringList());
  EXPECT_EQ(lenzDocumentedLines({}, {}), QStringList());
}

}  // namespace
}  // namespace lokari
