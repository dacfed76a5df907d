// A speed bar that is dragged by a mouse that tells a thousand positions a second, on every kind of
// station at the true speed of its line: a stop is on the wire within 100 ms all the same.
#include "cab_sim_fixture.h"

namespace lokari {
namespace {

constexpr Millis kSoon = 100;
constexpr int kBottom = 20;  // pixels

class StopBehindDrag : public test::CabOnStation,
                       public ::testing::WithParamInterface<StationKindRow> {
 protected:
  StopBehindDrag() : CabOnStation(GetParam().kind) {
    line->atLineSpeed = true;
    layout.onChange = [this](const QString&) {
      ++changes;
      if (halted() && haltedAt < 0) haltedAt = clock.now();
    };
  }

  /// The mouse takes the grip and goes up and down for so long, one position a millisecond.
  void drag(SpeedBar* vsbSpeed, Millis span) {
    const int bottom = vsbSpeed->height() - kBottom;
    QTest::mousePress(vsbSpeed, Qt::LeftButton, {}, QPoint(20, vsbSpeed->height() - 10));
    const int way = bottom - kBottom;
    for (Millis moment = 1; moment <= span; ++moment) {
      const int along = static_cast<int>(moment) % (2 * way);
      const int y = bottom - (along < way ? along : 2 * way - along);
      clock.schedule(moment, [vsbSpeed, y] { QTest::mouseMove(vsbSpeed, QPoint(20, y)); });
    }
  }
  /// What was written and is not on the wire yet, whenever the mouse moves.
  void watchBacklog(Millis span) {
    for (Millis moment = 1; moment <= span; ++moment) {
      clock.schedule(moment, [this] {
        if (line->isOpen()) backlog = std::max(backlog, line->untilSent());
      });
    }
  }

  int changes = 0;
  Millis haltedAt = -1;
  Millis backlog = 0;
};

INSTANTIATE_TEST_SUITE_P(Kinds, StopBehindDrag, ::testing::ValuesIn(test::kindsWithCabs()),
                         test::nameOfKind);

TEST_P(StopBehindDrag, IsOnTheWireWithin100MsWhateverTheMouseDoes) {
  for (const Millis span : {600, 3000}) {
    for (Millis moment = 0; moment < 120; moment += 13) {
      // The grip stands at the bottom.
      layout.setDrive(test::kAddress, {});
      FrmCab* window = openCab();
      haltedAt = -1;
      drag(control<SpeedBar>(window, "vsbSpeed"), span + 500);
      const Millis pressedAt = clock.now() + span + moment;
      clock.schedule(span + moment, [window] { click(window, "imgStop"); });
      clock.advance(span + 2000);
      ASSERT_GE(haltedAt, 0) << span << " ms of mouse, stopped after " << moment;
      EXPECT_LE(haltedAt - pressedAt, kSoon) << span << " ms of mouse, stopped after " << moment;
      click(window, "imgStop");
      clock.advance(1000);
      closeMoving(window);
    }
  }
}

TEST_P(StopBehindDrag, OneMessageAtMostIsOnItsWayAndTheNewestPositionWins) {
  FrmCab* window = openCab();
  auto* vsbSpeed = control<SpeedBar>(window, "vsbSpeed");
  drag(vsbSpeed, 3100);
  watchBacklog(3100);
  clock.advance(3600);
  // The longest message of any kind, at the slowest default rate.
  EXPECT_LE(backlog, 35);
  EXPECT_GT(vsbSpeed->value(), 5);
  EXPECT_NEAR(position(), vsbSpeed->value(), 128 / vehicle().steps + 1);
  EXPECT_GT(changes, 10);
}

}  // namespace
}  // namespace lokari
