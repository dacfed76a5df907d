// The communication test of stations that answer as their makers' documents have it, and of one
// that stands in another's place.
#include "comm_fixture.h"
#include "station/p50x_versions.h"
#include "station/zimo_binary.h"

namespace lokari {
namespace {

using test::CommFixture;

const char* const kIntellibox = "02 50 15 02 10 13 01 14 01 09 01 2A 05 00 01 23 4F 56 00";
const char* const kTams = "03 02 01 04 04 00 01 E2 40 00";
const char* const kFew = "02 50 15 01 14 00";

TEST(P50xModel, IsToldByTheEntries) {
  const auto model = [](const char* text) { return p50xModel(QByteArray::fromHex(text)); };
  EXPECT_EQ(model(kIntellibox), P50xModel::Intellibox);
  EXPECT_EQ(model(kTams), P50xModel::Tams);
  EXPECT_EQ(model(kFew), P50xModel::Other);
  for (const char* text : {"", "00", "01", "02 50", "02 50 15", "02 50 15 00 00", "01 05 05 00"}) {
    EXPECT_EQ(model(text), P50xModel::None) << text;
  }
}

class DocumentedIbx : public CommFixture {
 protected:
  DocumentedIbx() : CommFixture(StationKind::Ibx) {}
};

class DocumentedTams : public CommFixture {
 protected:
  DocumentedTams() : CommFixture(StationKind::TamsMc) {}
};

TEST_F(DocumentedIbx, ATamsMcBehindItIsNamed) {
  expect("78 A0").answer(fromHex(kTams));
  expect("78 A2").answer(fromHex("08"));
  const CommTestResult result = run();
  EXPECT_EQ(result.outcome, Outcome::NotUnderstood);
  EXPECT_EQ(result.lines,
            (QStringList{"Tams MC SPU Version 2.14", "MC Serien-#: 0001E240",
                         "Hier antwortet eine Tams MC (TAMSMC). Bitte die eingestellte Zentrale "
                         "ändern.",
                         "Power On "}));
}

TEST_F(DocumentedTams, AnIntelliboxBehindItIsNamed) {
  expect("78 A0").answer(fromHex(kIntellibox));
  expect("78 A2").answer(fromHex("08"));
  const CommTestResult result = run();
  EXPECT_EQ(result.outcome, Outcome::NotUnderstood);
  EXPECT_EQ(result.lines.first(), "IBX SPU Version 1.550 / KPU Version 1.310");
  EXPECT_TRUE(result.lines.contains(
      "Hier antwortet eine Intellibox (IBX). Bitte die eingestellte Zentrale ändern."));
}

TEST_F(DocumentedTams, TheDocumentsListOffersTheirMessages) {
  expect("78 A0").answer(fromHex(kTams));
  expect("78 A2").answer(fromHex("08"));
  const CommTestResult result = run();
  EXPECT_EQ(result.outcome, Outcome::Answered);
  EXPECT_EQ(result.lines,
            (QStringList{"Tams MC SPU Version 2.14", "MC Serien-#: 0001E240", "Power On "}));
  EXPECT_TRUE(result.wantsMakerForm);
}

TEST_F(DocumentedIbx, AShortListIsAnAnswer) {
  expect("78 A0").answer(fromHex(kFew));
  expect("78 A2").answer(fromHex("08"));
  const CommTestResult result = run();
  EXPECT_EQ(result.outcome, Outcome::Answered);
  EXPECT_EQ(result.lines,
            (QStringList{"Zentrale mit P50X-Protokoll, Versionen 15 50 / 14", "Power On "}));
  EXPECT_TRUE(result.wantsMakerForm);
}

TEST_F(DocumentedIbx, AStationThatDoesNotKnowTheQuestionHasAStateAllTheSame) {
  expect("78 A0").answer(fromHex("01"));
  expect("78 A2").answer(fromHex("00"));
  EXPECT_EQ(run().lines,
            (QStringList{"Zentrale mit P50X-Protokoll ohne Versionsangabe", "Power Off "}));
  expect("78 A0").answer(fromHex("01"));
  expect("78 A2");
  EXPECT_EQ(run().lines.first(), "Keine Antwort vom Basisgerät!");
}

TEST_F(DocumentedIbx, AStateMayHaveASecondByte) {
  expect("78 A0").answer(fromHex(kIntellibox));
  expect("78 A2").answer(fromHex("98")).answer(fromHex("41"), 300);
  EXPECT_EQ(run().lines.last(), "Power On Halt aktiv ");
}

/// A list in two pieces, by the byte it is cut behind.
class ListPieces : public CommFixture, public ::testing::WithParamInterface<int> {
 protected:
  ListPieces() : CommFixture(StationKind::Ibx) {}
};

INSTANTIATE_TEST_SUITE_P(Cuts, ListPieces, ::testing::Range(1, 10));

TEST_P(ListPieces, AShorterListMayComeInPieces) {
  const QByteArray whole = fromHex(kTams);
  expect("78 A0").answer(whole.left(GetParam())).answer(whole.mid(GetParam()), 900);
  expect("78 A2").answer(fromHex("08"));
  EXPECT_EQ(run().lines.first(), "Tams MC SPU Version 2.14");
}

class DocumentedMx1 : public CommFixture {
 protected:
  DocumentedMx1() : CommFixture(StationKind::Mx1Bin) {
    expect("0101 00 1030 00 3E 17").answer(fromHex("0101 04 40 00 00 00 36 17"));
    expect("0101 1021 1030 11 04 1021 B8 17").answer(fromHex("0101 05 40 11 1021 0A A0 17"));
  }
  void expectEnd(const char* frame) { expect(frame).answer(fromHex("0101 06 40 11 04 0A 11 17")); }
};

TEST_F(DocumentedMx1, OneThatDoesNotTellItsModelTellsOfTheTrack) {
  expect("0101 02 1030 0D 00 2F 17").answer(fromHex("0101 30 40 0D 02 0A 52 17"));
  expect("0101 03 1030 02 03 5A 17").answer(fromHex("0101 31 40 02 03 00 7A 17"));
  expectEnd("0101 04 1030 11 04 00 34 17");
  const CommTestResult result = run();
  EXPECT_EQ(result.outcome, Outcome::Answered);
  EXPECT_EQ(result.lines, (QStringList{"MX1 (unbekannter Typ)", "Fahrspannung eingeschaltet"}));
  EXPECT_TRUE(result.wantsMakerForm);
}

TEST(ZimoDocumentedLines, TheTrackIsTheLastByte) {
  const auto lines = [](const char* text) {
    return zimoDocumentedTrackLines(QByteArray::fromHex(text));
  };
  EXPECT_EQ(lines("02 00"), QStringList{"Fahrspannung eingeschaltet"});
  EXPECT_EQ(lines("02 01"), (QStringList{"Sammelstop ein", "Fahrspannung eingeschaltet"}));
  EXPECT_EQ(lines("02 02"), QStringList{"Fahrspannung ausgeschaltet"});
  EXPECT_EQ(lines("02 03"), (QStringList{"Sammelstop ein", "Fahrspannung ausgeschaltet"}));
  EXPECT_EQ(lines("02"), QStringList{});
}

}  // namespace
}  // namespace lokari
