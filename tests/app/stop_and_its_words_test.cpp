// Which words of a station count for a stop: the real cab window at the simulated station.
#include "stop_desk.h"

namespace lokari {
namespace {

using test::StopDesk;

// ---- A stop that has to wait for its line -------------------------------------------------------

class StopWithoutALine : public StopDesk, public ::testing::WithParamInterface<StationKind> {
 protected:
  StopWithoutALine() : StopDesk(GetParam()) {
    workbench->settings().timeoutVal = 20;
    driving().OpenCab(3, true);
    in(8000, [this] { line->cts = true; });
    line->cts = false;
  }
};

INSTANTIATE_TEST_SUITE_P(Kinds, StopWithoutALine,
                         ::testing::Values(StationKind::Li100, StationKind::Li100V3),
                         [](const auto& kind) {
                           return QString::fromUtf16(stationKind(kind.param).name).toStdString();
                         });

TEST_P(StopWithoutALine, IsNotToldAsUnconfirmedBeforeItHasGoneOut) {
  in(7900, [this] {
    EXPECT_EQ(noticeOf(3), QString());
    EXPECT_FALSE(halted());
  });
  click("imgStop");
  clock().advance(5000);
  EXPECT_EQ(looks, 2);
  EXPECT_TRUE(halted());
  EXPECT_EQ(word(), QStringLiteral("Los"));
  EXPECT_EQ(noticeOf(3), QString());
  EXPECT_EQ(prompt().beeps, 0);
}

TEST_P(StopWithoutALine, IsToldAsUnconfirmedThreeSecondsBehindItsSending) {
  fault("silence:immer");
  in(10'800, [this] { EXPECT_EQ(noticeOf(3), QString()); });
  click("imgStop");
  clock().advance(5000);
  EXPECT_EQ(looks, 2);
  EXPECT_EQ(word(), QStringLiteral("Halt"));
  EXPECT_TRUE(noticeOf(3).startsWith(unconfirmed())) << qPrintable(noticeOf(3));
  EXPECT_EQ(prompt().beeps, 1);
}

TEST_P(StopWithoutALine, DoesNotHoldTheEndOfTheProgramUp) {
  Millis closedAt = -1;
  in(1000, [&] {
    closedAt = clock().now();
    window->endProgram();
    EXPECT_LE(clock().now() - closedAt, 7000);
  });
  click("imgStop");
  clock().advance(2000);
  ASSERT_GE(closedAt, 0);
  EXPECT_FALSE(window->isVisible());
  EXPECT_EQ(link().commUseCount, 0);
}

// ---- A word that was meant for something else ---------------------------------------------------

/// The station says only what a test tells.
class ToldDesk : public StopDesk {
 protected:
  explicit ToldDesk(StationKind kind) : StopDesk(kind) {
    driving().OpenCab(3, true);
    fault("silence:immer");
  }

  void tell(const char* hex) {
    const QByteArray message = QByteArray::fromHex(hex);
    line->arrive(message);
    socket->arrive(message);
  }
  static QString refused() { return QStringLiteral("Die Zentrale hat „Halt“ abgelehnt!"); }
};

class StopThatHoldsAllTheSame : public ToldDesk, public ::testing::WithParamInterface<StationKind> {
 protected:
  StopThatHoldsAllTheSame() : ToldDesk(GetParam()) {}
};

INSTANTIATE_TEST_SUITE_P(Kinds, StopThatHoldsAllTheSame,
                         ::testing::Values(StationKind::Li100, StationKind::Z21Ip),
                         [](const auto& kind) {
                           return QString::fromUtf16(stationKind(kind.param).name).toStdString();
                         });

/// On the Z21 an unknown message of somebody else's is refused with the same words.
TEST_P(StopThatHoldsAllTheSame, IsShownWhenTheStationTellsItBehindARefusal) {
  const bool isZ21 = GetParam() == StationKind::Z21Ip;
  in(300, [&] { tell(isZ21 ? "07 00 40 00 61 82 E3" : "61 82 E3"); });
  in(400, [this] { EXPECT_EQ(word(), QStringLiteral("Halt")); });
  in(500, [&] { tell(isZ21 ? "07 00 40 00 81 00 81" : "81 00 81"); });
  click("imgStop");
  clock().advance(5000);
  EXPECT_EQ(looks, 3);
  EXPECT_EQ(word(), QStringLiteral("Los"));
  EXPECT_TRUE(stop().isHeld());
  EXPECT_FALSE(noticeOf(3).contains(refused())) << qPrintable(noticeOf(3));
}

TEST_P(StopThatHoldsAllTheSame, IsNotShownForNewsOfPowerBehindARefusal) {
  const bool isZ21 = GetParam() == StationKind::Z21Ip;
  in(300, [&] { tell(isZ21 ? "07 00 40 00 61 82 E3" : "61 82 E3"); });
  in(500, [&] { tell(isZ21 ? "07 00 40 00 61 01 60" : "61 01 60"); });
  click("imgStop");
  clock().advance(5000);
  EXPECT_EQ(looks, 2);
  EXPECT_EQ(word(), QStringLiteral("Halt"));
  EXPECT_FALSE(stop().isHeld());
}

}  // namespace
}  // namespace lokari
