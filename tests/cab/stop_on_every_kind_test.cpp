// The stop gets through on the simulated station of every kind, whatever else waits for an answer.
#include "cab/cab.h"
#include "cab/cab_line.h"
#include "cab/cab_table.h"
#include "sim/network_session_fixture.h"

namespace lokari {
namespace {

constexpr Millis kSoon = 100;

class StopOnEveryKind : public test::NetworkSession,
                        public ::testing::WithParamInterface<StationKindRow> {
 protected:
  StopOnEveryKind() : NetworkSession(GetParam().kind) {
    settings.comPort = 3;
    layout.onChange = [this](const QString&) {
      if (halted() && !haltedAt) haltedAt = clock.now();
    };
  }

  /// Loads as butDrive has it.
  std::shared_ptr<Cab> openCab(int address) {
    if (GetParam().cab.linkStaysOpen) {
      EXPECT_EQ(link->initComm(true, false, false), QString());
    }
    auto cab = std::make_shared<Cab>(CabParts{shared, prompt, records, QString(), makeCabProtocol},
                                     address, true);
    bool flag = false;
    shared.exchange(cab.get(), 0, [&] { cab->load(flag); });
    return cab;
  }
  /// Presses the stop of a cab so many milliseconds from now.
  void stopIn(Millis moment, Cab& cab) {
    haltedAt.reset();
    pressedAt = clock.now() + moment;
    clock.schedule(moment, [&cab] { cab.imgStop(); });
  }
  /// From the press to the moment when the station knew.
  Millis delay() const { return haltedAt ? *haltedAt - pressedAt : -1; }
  bool halted() const { return !layout.trackPower() || layout.stopped(); }

  CabLine shared{*link};
  VehicleRecords records{nullptr, prompt};
  std::optional<Millis> haltedAt;
  Millis pressedAt = 0;
};

std::vector<StationKindRow> kindsWithCabs() {
  std::vector<StationKindRow> kinds;
  for (const StationKindRow& row : kStationKinds)
    if (row.cab.available()) kinds.push_back(row);
  return kinds;
}

INSTANTIATE_TEST_SUITE_P(Kinds, StopOnEveryKind, ::testing::ValuesIn(kindsWithCabs()),
                         [](const auto& row) {
                           return QString::fromUtf16(row.param.name).toStdString();
                         });

TEST_P(StopOnEveryKind, IsObeyedAtOnceWhileAnotherCabIsRead) {
  const auto cab = openCab(3);
  for (Millis moment = 1; moment < 300; moment += 7) {
    stopIn(moment, *cab);
    const auto other = openCab(100);
    EXPECT_TRUE(other->hasState()) << "stopped after " << moment;
    clock.advance(500);
    ASSERT_TRUE(haltedAt) << "stopped after " << moment;
    EXPECT_LE(delay(), kSoon) << "stopped after " << moment;
    other->unload();
    EXPECT_TRUE(halted()) << "closing switches nothing";
    cab->imgStop();
    clock.advance(500);
    EXPECT_FALSE(halted());
  }
  EXPECT_EQ(prompt.shown, QStringList());
  EXPECT_EQ(prompt.beeps, 0);
}

TEST_P(StopOnEveryKind, IsObeyedAtOnceWhileAnotherCabsReadingFindsSilence) {
  const auto cab = openCab(3);
  fault("silence:immer");
  stopIn(700, *cab);
  const auto other = openCab(100);
  clock.advance(1000);
  EXPECT_FALSE(other->hasState());
  ASSERT_TRUE(haltedAt);
  EXPECT_LE(delay(), kSoon);
}

TEST_P(StopOnEveryKind, OfACabThatClosesInItsOwnExchangeStands) {
  const auto cab = openCab(3);
  fault("silence:immer");
  stopIn(0, *cab);
  clock.schedule(1, [&] { cab->unload(); });
  cab->vsbSpeed(20);
  clock.advance(60000);
  ASSERT_TRUE(haltedAt);
  EXPECT_LE(delay(), kSoon);
  EXPECT_TRUE(halted());
  EXPECT_EQ(link->commUseCount, 0);
}

}  // namespace
}  // namespace lokari
