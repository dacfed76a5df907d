// What a Lenz interface says by its maker's documents, met by cabs and panels as they always were.
#include "cab_fixture.h"
#include "lenz_pieces.h"

namespace lokari {
namespace {

class LenzDocumented : public test::CabFixture, public ::testing::WithParamInterface<StationKind> {
 protected:
  LenzDocumented() : CabFixture(GetParam()) { panelState.address = 4; }

  bool usb() const { return GetParam() == StationKind::LiUsb; }
  QByteArray wire(const char* text) const {
    return (usb() ? fromHex("FF FE") : QByteArray()) + fromHex(text);
  }
  QByteArray broadcast(const char* text) const {
    return (usb() ? fromHex("FF FD") : QByteArray()) + fromHex(text);
  }
};

std::string nameOf(const ::testing::TestParamInfo<StationKind>& kind) {
  return QString::fromUtf16(stationKind(kind.param).name).toStdString();
}

INSTANTIATE_TEST_SUITE_P(Later, LenzDocumented,
                         ::testing::Values(StationKind::Li100V3, StationKind::LiUsb), nameOf);

/// All that a station tells of a vehicle: in its own right, in a multi-heading, in a double
/// heading.
constexpr const char* kStates[] = {"E4 04 A5 13 05 53", "E5 14 A5 13 05 02 40",
                                   "E6 64 A5 13 05 00 07 36"};

TEST_P(LenzDocumented, AVehicleInAHeadingIsReadAsAnyOther) {
  for (const char* reply : kStates) {
    line.expect(wire("E3 00 00 03 E0")).answer(wire(reply));
    EXPECT_EQ(read(), 0b1010'0111U) << reply;
    EXPECT_EQ(state.steps, 128);
    EXPECT_EQ(state.speed, 36);
    EXPECT_FALSE(state.backward);
  }
}

TEST_P(LenzDocumented, TheBaseOfAMultiHeadingHasASpeedAndNoFunctions) {
  line.expect(wire("E3 00 00 03 E0")).answer(wire("E2 24 A5 63"));
  EXPECT_EQ(read(), 0U);
  EXPECT_EQ(state.speed, 36);
  EXPECT_LT(state.funcCount, 0) << "none is offered";
  function(1, true);
  EXPECT_EQ(line.writes.size(), 1) << "its group would switch the others off";
  line.expect(wire("E3 00 00 03 E0")).answer(wire("E4 04 A5 13 05 53"));
  EXPECT_TRUE(read());
  EXPECT_EQ(state.funcCount, 7);
}

TEST_P(LenzDocumented, AStateCutAnywhereIsPutTogether) {
  for (const char* reply : kStates) {
    test::forEachCut(
        wire(reply), [&](const QByteArray& head, const QByteArray& rest, Millis pause) {
          line.expect(wire("E3 00 00 03 E0")).answer(head).answer(rest, pause);
          EXPECT_EQ(read(), 0b1010'0111U) << reply << " behind " << head.size() << ", " << pause;
        });
  }
}

TEST_P(LenzDocumented, BroadcastsAheadOfAStateAreNoAnswer) {
  for (const char* news : {"61 00 61", "61 01 60", "61 02 63", "81 00 81", "E3 40 00 07 A4"}) {
    for (const int times : {1, 2, 3}) {
      line.expect(wire("E3 00 00 03 E0"))
          .answer(broadcast(news).repeated(times))
          .answer(wire("E4 04 A5 13 05 53"), 300);
      EXPECT_EQ(read(), 0b1010'0111U) << news << ", " << times;
    }
  }
  for (const char* word : {"01 05 04", "01 07 06"}) {
    line.expect(wire("E3 00 00 03 E0")).answer(wire(word)).answer(wire("E4 04 A5 13 05 53"), 300);
    EXPECT_EQ(read(), 0b1010'0111U) << word;
  }
}

TEST_P(LenzDocumented, ABusyStationIsAskedOnceMore) {
  line.expect(wire("E3 00 00 03 E0")).answer(wire("61 81 E0"));
  line.expect(wire("E3 00 00 03 E0")).answer(wire("E4 04 A5 13 05 53"));
  EXPECT_EQ(read(), 0b1010'0111U);
}

TEST_P(LenzDocumented, ARefusalIsNotWaitedFor) {
  line.expect(wire("E3 00 00 03 E0")).answer(wire("61 82 E3"));
  EXPECT_LE(timeOf([this] { EXPECT_FALSE(read()); }), 500);
}

// -- accessories

TEST_P(LenzDocumented, AnOutputThatWasNeverSwitchedKeepsItsLampAndHasItsSign) {
  line.expect(wire("42 03 80 C1")).answer(wire("42 03 04 45"));
  line.expect(wire("42 03 81 C0")).answer(wire("42 03 18 59"));
  EXPECT_EQ(readPanel(), 0b1000'0100);
  EXPECT_EQ(panelState.neverSwitched, (std::array{true, false, true, false}));
  line.expect(wire("42 03 80 C1")).answer(wire("42 03 06 47"));
  line.expect(wire("42 03 81 C0")).answer(wire("42 03 19 58"));
  EXPECT_EQ(readPanel(), 0x96);
  EXPECT_EQ(panelState.neverSwitched, (std::array{false, false, false, false}));
}

TEST_P(LenzDocumented, ThatAnAccessoryMovesOrReportsIsNoOutput) {
  line.expect(wire("42 03 80 C1")).answer(wire("42 03 A6 E7"));
  line.expect(wire("42 03 81 C0")).answer(wire("42 03 D9 98"));
  EXPECT_EQ(readPanel(), 0x96);
}

TEST_P(LenzDocumented, WhatAnotherGroupReportsByItselfIsNoAnswer) {
  line.expect(wire("42 03 80 C1")).answer(broadcast("42 09 05 4E"));
  if (usb()) {
    line.answer(wire("42 03 06 47"), 300);
  } else {
    line.expect(wire("42 03 80 C1")).answer(wire("42 03 06 47"));
  }
  line.expect(wire("42 03 81 C0")).answer(wire("42 03 09 48"));
  EXPECT_EQ(readPanel(), 0x96);
}

TEST_P(LenzDocumented, AnOutputsStateCutAnywhereIsPutTogether) {
  test::forEachCut(wire("42 03 06 47"),
                   [&](const QByteArray& head, const QByteArray& rest, Millis pause) {
                     line.expect(wire("42 03 80 C1")).answer(head).answer(rest, pause);
                     line.expect(wire("42 03 81 C0")).answer(wire("42 03 09 48"));
                     EXPECT_EQ(readPanel(), 0x96) << "behind " << head.size() << ", " << pause;
                   });
}

}  // namespace
}  // namespace lokari
