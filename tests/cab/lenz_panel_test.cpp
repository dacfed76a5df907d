// Panels on the Lenz interfaces, by script.
#include "cab_fixture.h"
#include "link/link_error.h"

namespace lokari {
namespace {

class LenzPanel : public test::CabFixture, public ::testing::WithParamInterface<StationKind> {
 protected:
  LenzPanel() : CabFixture(GetParam()) { panelState.address = 4; }

  QByteArray wire(const char* text) const {
    return (GetParam() == StationKind::LiUsb ? fromHex("FF FE") : QByteArray()) + fromHex(text);
  }
};

INSTANTIATE_TEST_SUITE_P(Kinds, LenzPanel,
                         ::testing::Values(StationKind::Li100, StationKind::Li100V3,
                                           StationKind::LiUsb),
                         [](const auto& kind) {
                           return QString::fromUtf16(stationKind(kind.param).name).toStdString();
                         });

TEST_P(LenzPanel, ReadsFourOutputsInTwoHalves) {
  line.expect(wire("42 03 80 C1")).answer(wire("42 03 06 47"));
  line.expect(wire("42 03 81 C0")).answer(wire("42 03 09 48"));
  EXPECT_EQ(readPanel(), 0x96) << "on, off, off, on";
  EXPECT_EQ(panelState.panelCmd, fromHex("52 03 80"));
}

TEST_P(LenzPanel, TheSecondHalfsUpperBitsFallOffTheMask) {
  line.expect(wire("42 03 80 C1")).answer(wire("42 03 05 44"));
  line.expect(wire("42 03 81 C0")).answer(wire("42 03 15 54"));
  EXPECT_EQ(readPanel(), 0x55);
}

TEST_P(LenzPanel, SwitchesEachOutput) {
  const QList<std::pair<const char*, const char*>> rows{{"52 03 88 D9", "52 03 89 D8"},
                                                        {"52 03 8A DB", "52 03 8B DA"},
                                                        {"52 03 8C DD", "52 03 8D DC"},
                                                        {"52 03 8E DF", "52 03 8F DE"}};
  for (int n = 0; n < rows.size(); ++n) {
    line.expect(wire(rows[n].second));
    output(n, true);
    line.expect(wire(rows[n].first));
    output(n, false);
  }
}

TEST_P(LenzPanel, AReplyInPiecesIsWaitedFor) {
  line.expect(wire("42 03 80 C1"));
  const QByteArray reply = wire("42 03 06 47");
  for (const char byte : reply) line.answer(QByteArray(1, byte), 100);
  line.expect(wire("42 03 81 C0")).answer(wire("42 03 09 48"));
  EXPECT_EQ(readPanel(), 0x96);
}

TEST_P(LenzPanel, ARepeatOfTheFirstReplyIsNotTakenForTheSecond) {
  line.expect(wire("42 03 80 C1")).answer(wire("42 03 06 47").repeated(5));
  line.expect(wire("42 03 81 C0")).answer(wire("42 03 09 48"));
  EXPECT_EQ(readPanel(), 0x96);
}

TEST_P(LenzPanel, ConfirmationsOfEarlierCommandsArePassedOver) {
  line.expect(wire("42 03 80 C1")).answer(wire("01 04 05") + wire("42 03 06 47"));
  line.expect(wire("42 03 81 C0")).answer(wire("61 01 60") + wire("42 03 09 48"));
  EXPECT_EQ(readPanel(), 0x96);
}

TEST_P(LenzPanel, SilenceAShortReplyAndAnotherHeadAreFailures) {
  line.expect(wire("42 03 80 C1"));
  EXPECT_FALSE(readPanel());
  line.expect(wire("42 03 80 C1")).answer(wire("42 03 06"));
  EXPECT_FALSE(readPanel());
  line.expect(wire("42 03 80 C1")).answer(wire("61 82 E3 00"));
  EXPECT_FALSE(readPanel());
  line.expect(wire("42 03 80 C1")).answer(wire("42 03 06 47"));
  line.expect(wire("42 03 81 C0"));
  EXPECT_FALSE(readPanel());
  EXPECT_EQ(panelState.panelCmd, fromHex("52 03 80"));
}

TEST_P(LenzPanel, AVanishedDeviceIsToldByEveryOperation) {
  line.expect(wire("42 03 80 C1")).then([this] { line.vanish(); }, 300);
  EXPECT_THROW(readPanel(), LinkError);
  EXPECT_THROW(output(0, true), LinkError);
}

TEST_P(LenzPanel, AnAddressWithoutAGroupIsNeverSent) {
  for (const int address : {0, 257, 10239}) {
    panelState.address = address;
    EXPECT_FALSE(readPanel()) << address;
    output(0, true);
  }
  EXPECT_TRUE(line.writes.isEmpty());
}

}  // namespace
}  // namespace lokari
