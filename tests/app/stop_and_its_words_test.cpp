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

class FirstGeneration : public ToldDesk {
 protected:
  FirstGeneration() : ToldDesk(StationKind::Li100) {}
};

TEST_F(FirstGeneration, ARefusalOfASpeedThatIsSaidSeveralTimesIsNotTakenForThatOfTheStop) {
  key(Qt::Key_Up);
  in(100, [this] { tell("61 81 E0 61 81 E0 61 81 E0 61 81 E0 61 81 E0"); });
  in(200, [this] {
    EXPECT_EQ(word(), QStringLiteral("Los"));
    EXPECT_EQ(noticeOf(3), QString());
    EXPECT_EQ(prompt().beeps, 0);
  });
  click("imgStop");
  clock().advance(4000);
  EXPECT_EQ(looks, 2);
  EXPECT_TRUE(noticeOf(3).startsWith(unconfirmed())) << qPrintable(noticeOf(3));
}

TEST_F(FirstGeneration, AStopRightBehindAnotherClientsOneIsConfirmedByTheSameWords) {
  tell("81 00 81");
  in(300, [this] { tell("81 00 81"); });
  click("imgStop");
  clock().advance(4000);
  EXPECT_EQ(looks, 1);
  EXPECT_EQ(word(), QStringLiteral("Los"));
  EXPECT_EQ(noticeOf(3), QString());
}

class StopBehindPowerOn : public StopDesk {
 protected:
  StopBehindPowerOn() : StopDesk(StationKind::Mx1Ulf) {}

  /// Runs `act` right behind the message that switches the track on.
  void behindPowerOn(const std::function<void()>& act) {
    clock().schedule(5, [this, act] {
      const bool isOut = !line->writes.isEmpty() &&
                         line->writes.last().data.contains(QByteArray::fromHex("10 30 02 02"));
      isOut ? act() : behindPowerOn(act);
    });
  }
};

TEST_F(StopBehindPowerOn, IsNotConfirmedByTheAnswerToPowerOn) {
  behindPowerOn([this] {
    // The answer to what has gone out is on its way.
    fault("silence:immer");
    in(4000, [this] {
      EXPECT_EQ(prompt().shown.value(0), unconfirmed());
      EXPECT_FALSE(stop().isHeld());
      EXPECT_TRUE(stop().mayStand());
    });
    QTest::keyClick(window.get(), Qt::Key_Pause);
    EXPECT_TRUE(stop().isHeld());
  });
  driving().OpenCab(3, true);
  clock().advance(5000);
  EXPECT_EQ(looks, 1);
}

TEST_F(StopBehindPowerOn, IsConfirmedByItsOwnAnswer) {
  behindPowerOn([this] { QTest::keyClick(window.get(), Qt::Key_Pause); });
  driving().OpenCab(3, true);
  clock().advance(5000);
  EXPECT_EQ(prompt().shown, QStringList());
  EXPECT_TRUE(stop().isHeld());
  EXPECT_TRUE(halted());
}

/// What a station tells unasked, and what it answers.
struct Unasked {
  StationKind kind;
  const char* name;
  const char* news;
  const char* accepted;
  const char* busy;
};

const Unasked kUnasked[] = {
    {StationKind::LiUsb, "Feedback", "FF FD 42 01 11 52", "FF FE 01 04 05", "FF FE 61 81 E0"},
    {StationKind::LiUsb, "Taken", "FF FD E3 40 00 03 A0", "FF FE 01 04 05", "FF FE 61 81 E0"},
    {StationKind::LiUsb, "Back", "FF FE 01 07 06", "FF FE 01 04 05", "FF FE 61 81 E0"},
    {StationKind::LiUsb, "Version", "FF FD 02 30 01 33", "FF FE 01 04 05", "FF FE 61 81 E0"},
    {StationKind::Li100V3, "Feedback", "42 01 11 52", "01 04 05", "61 81 E0"},
    {StationKind::Li100V3, "Taken", "E3 40 00 03 A0", "01 04 05", "61 81 E0"},
    {StationKind::Li100V3, "Back", "01 07 06", "01 04 05", "61 81 E0"},
};

class UnaskedNews : public ToldDesk, public ::testing::WithParamInterface<Unasked> {
 protected:
  UnaskedNews() : ToldDesk(GetParam().kind) {}
};

INSTANTIATE_TEST_SUITE_P(Kinds, UnaskedNews, ::testing::ValuesIn(kUnasked), [](const auto& row) {
  return QString::fromUtf16(stationKind(row.param.kind).name).toStdString() + row.param.name;
});

TEST_P(UnaskedNews, BehindASpeedDoNotMakeTheSpeedsAnswerThatOfTheStop) {
  key(Qt::Key_Up);
  in(100, [this] { tell(GetParam().news); });
  in(150, [this] { tell(GetParam().accepted); });
  in(200, [this] { tell(GetParam().busy); });
  click("imgStop");
  clock().advance(4000);
  EXPECT_EQ(looks, 3);
  EXPECT_EQ(word(), QStringLiteral("Halt"));
  EXPECT_TRUE(noticeOf(3).startsWith(refused())) << qPrintable(noticeOf(3));
  EXPECT_FALSE(stop().isHeld());
  EXPECT_EQ(prompt().beeps, 1);
}

TEST_P(UnaskedNews, AreNoAnswerToAStop) {
  in(100, [this] { tell(GetParam().news); });
  in(200, [this] {
    EXPECT_EQ(word(), QStringLiteral("Los"));
    EXPECT_EQ(noticeOf(3), QString());
  });
  in(300, [this] { tell(GetParam().accepted); });
  click("imgStop");
  clock().advance(4000);
  EXPECT_EQ(looks, 3);
  EXPECT_EQ(word(), QStringLiteral("Los"));
  EXPECT_TRUE(stop().isHeld());
  EXPECT_EQ(prompt().beeps, 0);
}

}  // namespace
}  // namespace lokari
