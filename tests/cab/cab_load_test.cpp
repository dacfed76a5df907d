#include "scripted_cab_fixture.h"

namespace lokari {
namespace {

const QString kNoData = QStringLiteral("Keine Daten von Digitalzentrale erhalten");

class CabLoad : public test::CabFixture {
 protected:
  std::shared_ptr<Cab> make(int address = 3) {
    return std::make_shared<Cab>(cabParts(), address, false);
  }
  void load(Cab& cab) {
    bool flag = false;
    line.exchange(&cab, 0, [&] { cab.load(flag); });
  }
};

TEST_F(CabLoad, OpensTheSessionOnTheMainTrackAndShowsWhatTheStationTells) {
  station.told.speed = 77;
  station.told.backward = true;
  station.told.manual = true;
  station.answers = {FunctionMask{0b1010'0000'0001}};
  const auto cab = make();
  QStringList shown;
  QObject::connect(cab.get(), &Cab::barMoved, [&](int bar) { shown << QString::number(bar); });
  load(*cab);
  EXPECT_EQ(link.commUseCount, 1);
  EXPECT_FALSE(link.progTrack);
  EXPECT_TRUE(cab->hasState());
  EXPECT_EQ(cab->state().speed, 77);
  EXPECT_TRUE(cab->state().backward);
  EXPECT_TRUE(cab->state().manual);
  EXPECT_TRUE(cab->state().funcOn[0]);
  EXPECT_FALSE(cab->state().funcOn[1]);
  EXPECT_TRUE(cab->state().funcOn[9]);
  EXPECT_TRUE(cab->state().funcOn[11]);
  EXPECT_EQ(cab->state().funcCount, 12);
  EXPECT_EQ(shown, QStringList{QStringLiteral("77")});
  EXPECT_TRUE(prompt.shown.isEmpty());
}

TEST_F(CabLoad, SettingTheBarFromTheStationSendsNothing) {
  station.told.speed = 77;
  const auto cab = make();
  // As the window's bar does it: every move is told.
  QObject::connect(cab.get(), &Cab::barMoved, [&](int bar) { cab->vsbSpeed(bar); });
  load(*cab);
  EXPECT_EQ(station.log, QStringList{QStringLiteral("3: read")});
  EXPECT_EQ(cab->state().speed, 77);
}

TEST_F(CabLoad, AReadingThatFailsOnceIsTriedAgainWithoutAMessage) {
  station.answers = {std::nullopt, FunctionMask{1}};
  const auto cab = make();
  load(*cab);
  EXPECT_EQ(station.log.size(), 2);
  EXPECT_TRUE(cab->hasState());
  EXPECT_TRUE(prompt.shown.isEmpty());
}

TEST_F(CabLoad, ASecondFailureIsToldAndTheCabStaysOpenWithItsDefaults) {
  station.answers = {std::nullopt};
  const auto cab = make();
  load(*cab);
  EXPECT_EQ(station.log.size(), 2);
  EXPECT_EQ(prompt.shown, QStringList{kNoData});
  EXPECT_FALSE(cab->hasState());
  EXPECT_FALSE(cab->isUnloading());
  EXPECT_EQ(cab->state().speed, 0);
  EXPECT_FALSE(cab->state().backward);
  EXPECT_FALSE(cab->loading());
}

TEST_F(CabLoad, WhatIsPressedWhileTheStateIsReadIsSentBehindItAndShownAgain) {
  const auto cab = make();
  station.midst = [&] {
    cab->imgDirBackward();
    cab->imgMan();
    cab->cmdFunc(2);
  };
  bool backward = false;
  bool manual = false;
  bool lamp = false;
  QObject::connect(cab.get(), &Cab::directionChanged, [&](bool shown) { backward = shown; });
  QObject::connect(cab.get(), &Cab::manualChanged, [&](bool shown) { manual = shown; });
  QObject::connect(cab.get(), &Cab::functionChanged, [&](int n, bool on) {
    if (n == 2) lamp = on;
  });
  load(*cab);
  EXPECT_EQ(station.log, (QStringList{"3: read", "3: backward", "3: manual 1", "3: F2 1"}));
  EXPECT_TRUE(backward) << "no vehicle runs against the arrow that is shown";
  EXPECT_TRUE(manual);
  EXPECT_TRUE(lamp);
}

TEST_F(CabLoad, ADeviceThatVanishesIsAFailedReading) {
  station.vanished = true;
  const auto cab = make();
  load(*cab);
  EXPECT_EQ(prompt.shown, QStringList{kNoData});
}

TEST_F(CabLoad, ALinkThatCannotBeOpenedIsToldOnceWithItsReasonBelow) {
  serial.failsToOpen = true;
  station.answers = {std::nullopt};
  const auto cab = make();
  load(*cab);
  const QString failure = QStringLiteral("Kann Kommunikationsschnittstelle nicht öffnen (0)!");
  EXPECT_EQ(prompt.shown, QStringList({failure, kNoData}));
  EXPECT_EQ(prompt.below.first(), QStringLiteral("Kein Gerät!"));
  EXPECT_TRUE(cab->isStateMissing());
  EXPECT_TRUE(cab->notice().startsWith(QStringLiteral("Keine Verbindung zur Zentrale.")));
}

TEST_F(CabLoad, BothSessionsOfARetriedReadingAreGivenBack) {
  station.answers = {std::nullopt, FunctionMask{0}};
  const auto cab = make();
  load(*cab);
  cab->unload();
  EXPECT_EQ(link.commUseCount, 0);
  EXPECT_FALSE(serial.isOpen());
}

TEST_F(CabLoad, InputThatWaitsIsDroppedAheadOfTheReading) {
  const auto first = make();
  load(*first);
  serial.arrive("alt");
  const auto second = make(4);
  load(*second);
  EXPECT_EQ(serial.inBufferCount(), 0);
}

TEST_F(CabLoad, ALoadThatFindsItsFlagRaisedEndsAtOnce) {
  const auto cab = make();
  bool flag = true;
  cab->load(flag);
  EXPECT_TRUE(station.log.isEmpty());
  EXPECT_EQ(link.commUseCount, 0);
}

TEST_F(CabLoad, ACancelledJobDoesNotCutTheCabsOwnWaits) {
  const auto cab = make();
  load(*cab);
  link.cancelRequested = true;
  cab->vsbSpeed(5);
  EXPECT_FALSE(link.cancelRequested);
}

TEST_F(CabLoad, WithoutATimerNothingIsAskedOfItsOwnAccord) {
  const auto cab = make();
  load(*cab);
  station.log.clear();
  clock.advance(60000);
  EXPECT_TRUE(station.log.isEmpty());
}

class CabLoadOnCan : public CabLoad {
 protected:
  CabLoadOnCan() { settings.baseUnit = StationKind::Mx10; }
};

TEST_F(CabLoadOnCan, TheSessionIsTheOneThatWasOpenedAhead) {
  link.commUseCount = 1;
  const auto cab = make();
  load(*cab);
  EXPECT_TRUE(can.openCalls.isEmpty());
  EXPECT_EQ(link.commUseCount, 1);
  cab->unload();
  EXPECT_EQ(link.commUseCount, 0);
}

TEST_F(CabLoadOnCan, AFailedReadingClosesTheSessionAndTheRetryOpensItAnew) {
  link.commUseCount = 1;
  can.openResult = 5;
  station.answers = {std::nullopt};
  const auto cab = make();
  load(*cab);
  EXPECT_EQ(prompt.shown.size(), 2);
  EXPECT_EQ(prompt.shown.last(), kNoData);
  EXPECT_EQ(link.commUseCount, 0);
  // Nothing of it is left to be given back, and no timer runs on a closed line.
  station.log.clear();
  clock.advance(5000);
  cab->unload();
  EXPECT_EQ(link.commUseCount, 0);
  EXPECT_TRUE(station.log.isEmpty());
}

TEST_F(CabLoadOnCan, TheTimerComesEveryTwoSeconds) {
  const auto cab = make();
  load(*cab);
  station.log.clear();
  clock.advance(1999);
  EXPECT_TRUE(station.log.isEmpty());
  clock.advance(1);
  EXPECT_EQ(station.log, QStringList{QStringLiteral("3: tick")});
  clock.advance(4000);
  EXPECT_EQ(station.log.size(), 3);
}

class CabLoadOnZ21 : public CabLoad {
 protected:
  CabLoadOnZ21() { settings.baseUnit = StationKind::Z21Ip; }
};

TEST_F(CabLoadOnZ21, ThePollMovesTheLabelAndNotTheBar) {
  const auto cab = make();
  load(*cab);
  int bars = 0;
  int label = -1;
  QObject::connect(cab.get(), &Cab::barMoved, [&] { ++bars; });
  QObject::connect(cab.get(), &Cab::speedShown, [&](int speed) { label = speed; });
  station.told.speed = 50;
  station.told.backward = true;
  station.answers = {FunctionMask{1U << 28}};
  clock.advance(500);
  EXPECT_EQ(bars, 0);
  EXPECT_EQ(label, 50);
  EXPECT_TRUE(cab->state().backward);
  EXPECT_TRUE(cab->state().funcOn[28]);
}

TEST_F(CabLoadOnZ21, APollThatTellsAnOldSpeedDoesNotUndoTheBar) {
  const auto cab = make();
  load(*cab);
  station.log.clear();
  station.told.speed = 10;
  // The bar is moved while the poll waits for its answer.
  station.midst = [&] { cab->vsbSpeed(90); };
  clock.advance(500);
  EXPECT_EQ(station.log, QStringList({QStringLiteral("3: tick"), QStringLiteral("3: speed 90")}));
  EXPECT_EQ(cab->state().speed, 90);
}

TEST_F(CabLoadOnZ21, APollThatTellsAnOldLampDoesNotUndoThePress) {
  const auto cab = make();
  load(*cab);
  station.log.clear();
  station.midst = [&] { cab->cmdFunc(5); };
  clock.advance(500);
  EXPECT_EQ(station.log.last(), QStringLiteral("3: F5 1"));
  EXPECT_TRUE(cab->state().funcOn[5]);
}

TEST_F(CabLoadOnZ21, TheTimerKeepsSilentWhileAJobHasTheLine) {
  const auto cab = make();
  load(*cab);
  station.log.clear();
  line.exchange(this, 0, [&] {
    clock.advance(5000);
    EXPECT_TRUE(station.log.isEmpty());
  });
  clock.pump();
  EXPECT_EQ(station.log, QStringList{QStringLiteral("3: tick")});
}

TEST_F(CabLoadOnZ21, NothingIsSentToAnotherStationThanItsOwn) {
  const auto cab = make();
  load(*cab);
  station.log.clear();
  settings.baseUnit = StationKind::Mx1;
  cab->vsbSpeed(5);
  cab->imgStop();
  clock.advance(1000);
  cab->unload();
  EXPECT_TRUE(station.log.isEmpty());
}

TEST_F(CabLoadOnZ21, ManyCabsPollByTurns) {
  std::vector<std::shared_ptr<Cab>> cabs;
  for (int address = 1; address <= 8; ++address) {
    cabs.push_back(make(address));
    load(*cabs.back());
  }
  station.log.clear();
  station.wait = 100;
  clock.advance(4000);
  for (const auto& cab : cabs) {
    // Five each would fill the time without a gap.
    EXPECT_GE(station.log.count(QStringLiteral("%1: tick").arg(cab->address())), 3);
  }
}

}  // namespace
}  // namespace lokari
