// A stop is shown as one only where the station confirms it: the real cab window at the simulated
// station of each kind that gives a word.
#include "stop_desk.h"

namespace lokari {
namespace {

using test::StopDesk;

class UnconfirmedStop : public StopDesk, public ::testing::WithParamInterface<StationKindRow> {
 protected:
  UnconfirmedStop() : StopDesk(GetParam().kind) {}
};

std::string nameOfKind(const ::testing::TestParamInfo<StationKindRow>& row) {
  return QString::fromUtf16(row.param.name).toStdString();
}

std::vector<StationKindRow> kindsThatConfirm() {
  std::vector<StationKindRow> kinds;
  for (const StationKindRow& row : kStationKinds) {
    // The text protocol says nothing to a stop.
    if (row.cab.available() && row.family != ProtocolFamily::Mx1Text) kinds.push_back(row);
  }
  return kinds;
}

INSTANTIATE_TEST_SUITE_P(Kinds, UnconfirmedStop, ::testing::ValuesIn(kindsThatConfirm()),
                         nameOfKind);

TEST_P(UnconfirmedStop, OfASilentStationGoesBackToHaltWithinAFewSeconds) {
  driving().OpenCab(3, true);
  fault("silence:immer");
  in(5000, [this] {
    EXPECT_EQ(word(), QStringLiteral("Halt"));
    EXPECT_TRUE(noticeOf(3).startsWith(unconfirmed())) << qPrintable(noticeOf(3));
    EXPECT_FALSE(stop().isHeld());
  });
  click("imgStop");
  clock().advance(6000);
  EXPECT_EQ(looks, 1);
}

TEST_P(UnconfirmedStop, ThatIsConfirmedStays) {
  driving().OpenCab(3, true);
  for (const char* expected : {"Los", "Halt"}) {
    click("imgStop");
    clock().advance(10'000);
    EXPECT_EQ(word(), QString::fromLatin1(expected));
    EXPECT_EQ(noticeOf(3), QString());
  }
  EXPECT_EQ(prompt().shown, QStringList());
  EXPECT_EQ(prompt().beeps, 0);
}

class StopHeardBeside : public UnconfirmedStop {};

/// Intellibox and Tams MC tell by the order of their replies only what they reply to: a stop's is
/// taken behind those that are awaited already.
std::vector<StationKindRow> kindsHeardBeside() {
  std::vector<StationKindRow> kinds = kindsThatConfirm();
  std::erase_if(kinds, [](const StationKindRow& row) {
    return row.family == ProtocolFamily::Intellibox || row.family == ProtocolFamily::Tams;
  });
  return kinds;
}

INSTANTIATE_TEST_SUITE_P(Kinds, StopHeardBeside, ::testing::ValuesIn(kindsHeardBeside()),
                         nameOfKind);

TEST_P(StopHeardBeside, BehindSpeedsThatAreNotAnsweredIsToldAsWell) {
  driving().OpenCab(3, true);
  fault("silence:immer");
  in(300, [this] { key(Qt::Key_Up); });
  in(500, [this] { key(Qt::Key_Space); });
  in(5500, [this] {
    EXPECT_EQ(word(), QStringLiteral("Halt"));
    EXPECT_TRUE(noticeOf(3).contains(unconfirmed())) << qPrintable(noticeOf(3));
    EXPECT_TRUE(halted());
  });
  key(Qt::Key_Up);
  clock().advance(6000);
  EXPECT_EQ(looks, 3);
}

TEST_P(UnconfirmedStop, OfTheKeyPauseIsToldInABox) {
  driving().OpenCab(3, true);
  fault("silence:immer");
  in(5000, [this] {
    EXPECT_EQ(word(), QStringLiteral("Halt"));
    EXPECT_EQ(prompt().shown.value(0), unconfirmed());
  });
  QTest::keyClick(window.get(), Qt::Key_Pause);
  clock().advance(6000);
  EXPECT_EQ(looks, 1);
}

TEST_P(StopHeardBeside, CanBeRepeatedAtOnce) {
  driving().OpenCab(3, true);
  fault("silence:immer");
  in(5000, [this] {
    layout.setStopped(false);
    layout.setTrackPower(true);
    click("imgStop");
    EXPECT_EQ(word(), QStringLiteral("Los"));
  });
  in(5100, [this] { EXPECT_TRUE(halted()); });
  click("imgStop");
  clock().advance(6000);
  EXPECT_EQ(looks, 2);
}

TEST_P(UnconfirmedStop, DoesNotHoldTheEndOfTheProgramUp) {
  driving().OpenCab(3, true);
  fault("silence:immer");
  Millis closedAt = -1;
  in(300, [this] { key(Qt::Key_Up); });
  in(500, [this] { key(Qt::Key_Space); });
  in(1000, [&] {
    closedAt = clock().now();
    window->endProgram();
  });
  key(Qt::Key_Up);
  clock().advance(2000);
  ASSERT_GE(closedAt, 0);
  EXPECT_FALSE(window->isVisible());
  EXPECT_EQ(link().commUseCount, 0);
  EXPECT_LE(clock().now() - closedAt, 6000);
}

// ---- Late words, refusals and the news of others ------------------------------------------------

/// What a station tells, by kind.
struct Words {
  StationKind kind;
  QList<const char*> off;  ///< power off, or all vehicles stopped: told to everybody
  const char* refused;     ///< nullptr where the kind has no such word
  const char* on;
};

const Words kWords[] = {
    {StationKind::Li100, {"61 00 61", "81 00 81"}, "61 82 E3", "61 01 60"},
    {StationKind::Li100V3, {"61 00 61", "81 00 81"}, "61 81 E0", "61 01 60"},
    {StationKind::LiUsb,
     {"FF FD 61 00 61", "FF FD 81 00 81", "FF FE 81 00 81"},
     "FF FE 01 03 02",
     "FF FD 61 01 60"},
    {StationKind::Z21Ip,
     {"07 00 40 00 61 00 61", "07 00 40 00 81 00 81"},
     "07 00 40 00 61 82 E3",
     "07 00 40 00 61 01 60"},
};

class WordsAboutAStop : public StopDesk, public ::testing::WithParamInterface<Words> {
 protected:
  WordsAboutAStop() : StopDesk(GetParam().kind) {}

  void tell(const char* hex) {
    const QByteArray message = QByteArray::fromHex(hex);
    line->arrive(message);
    socket->arrive(message);
  }
  /// The station says nothing but that, so many milliseconds behind the press.
  void stopAndHear(const char* hex, Millis moment = 500) {
    fault("silence:immer");
    in(moment, [this, hex] { tell(hex); });
    click("imgStop");
  }
};

INSTANTIATE_TEST_SUITE_P(Kinds, WordsAboutAStop, ::testing::ValuesIn(kWords), [](const auto& row) {
  return QString::fromUtf16(stationKind(row.param.kind).name).toStdString();
});

TEST_P(WordsAboutAStop, ARefusalShowsBesideTheBeepAndTheButtonIsHaltAgain) {
  driving().OpenCab(3, true);
  in(600, [this] {
    EXPECT_EQ(word(), QStringLiteral("Halt"));
    EXPECT_TRUE(noticeOf(3).startsWith(QStringLiteral("Die Zentrale hat „Halt“ abgelehnt!")))
        << qPrintable(noticeOf(3));
    EXPECT_EQ(prompt().beeps, 1);
  });
  stopAndHear(GetParam().refused);
  clock().advance(10'000);
  EXPECT_EQ(looks, 2);
  EXPECT_EQ(prompt().beeps, 1) << "told once";
}

TEST_P(WordsAboutAStop, TheNewsOfAnotherClientsStopConfirmsItAsWell) {
  for (const char* off : GetParam().off) {
    faults = {};
    driving().OpenCab(3, true);
    stopAndHear(off);
    clock().advance(5000);
    EXPECT_EQ(word(), QStringLiteral("Los")) << off;
    EXPECT_FALSE(noticeOf(3).contains(unconfirmed())) << off;
    EXPECT_TRUE(stop().isHeld()) << off;
    cabWindow(3)->close();
    clock().advance(3000);
    stop().noteTaken(false);
  }
}

TEST_P(WordsAboutAStop, TheNewsOfPowerConfirmsNoStop) {
  driving().OpenCab(3, true);
  stopAndHear(GetParam().on);
  clock().advance(4000);
  EXPECT_EQ(word(), QStringLiteral("Halt"));
  EXPECT_TRUE(noticeOf(3).contains(unconfirmed()));
}

TEST_P(WordsAboutAStop, AWordThatComesTooLateTurnsTheButtonAfterAll) {
  driving().OpenCab(3, true);
  in(4500, [this] { EXPECT_EQ(word(), QStringLiteral("Halt")); });
  stopAndHear(GetParam().off.front(), 5000);
  clock().advance(6000);
  EXPECT_EQ(word(), QStringLiteral("Los"));
  EXPECT_TRUE(stop().isHeld());
  EXPECT_FALSE(noticeOf(3).contains(unconfirmed())) << qPrintable(noticeOf(3));
}

// ---- The line beside it -------------------------------------------------------------------------

class FrozenZ21 : public StopDesk {
 protected:
  FrozenZ21() : StopDesk(StationKind::Z21Ip) {}
};

TEST_F(FrozenZ21, IsToldInTheCabWithinAFewSecondsAndNoMoreWhenItIsBack) {
  driving().OpenCab(3, true);
  fault("silence:8");
  clock().advance(3500);
  EXPECT_TRUE(noticeOf(3).startsWith(QStringLiteral("Keine Verbindung zur Zentrale.")))
      << qPrintable(noticeOf(3));
  clock().advance(5000);
  EXPECT_EQ(noticeOf(3), QString());
}

class BusyXpressNet : public StopDesk {
 protected:
  BusyXpressNet() : StopDesk(StationKind::Li100V3) {}
};

TEST_F(BusyXpressNet, AGoThatStillAsksForTheLineDoesNotUndoTheStopBehindIt) {
  driving().OpenCab(3, true);
  click("imgStop");
  clock().advance(1000);
  ASSERT_EQ(word(), QStringLiteral("Los"));
  in(20, [this] { click("imgStop"); });
  click("imgStop");
  clock().advance(2000);
  EXPECT_EQ(word(), QStringLiteral("Los"));
  EXPECT_TRUE(halted());
  EXPECT_EQ(line->writes.last().data, QByteArray::fromHex("8080"));
}

class BoxOfASecondCab : public StopDesk {
 protected:
  BoxOfASecondCab() : StopDesk(StationKind::Mx10Ip) {}
};

TEST_F(BoxOfASecondCab, LeavesTheKeepAlivesOfTheFirstOne) {
  driving().OpenCab(3, true);
  fault("silence:2");
  qsizetype before = 0;
  prompt().whileShown = [&] {
    clock().advance(500);
    before = socket->sent.size();
    clock().advance(10'000);
    EXPECT_GE(socket->sent.size() - before, 4);
  };
  driving().OpenCab(100, true);
  EXPECT_EQ(prompt().shown,
            QStringList{QStringLiteral("Keine Daten von Digitalzentrale erhalten")});
}

}  // namespace
}  // namespace lokari
