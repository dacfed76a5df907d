#include "scripted_cab_fixture.h"

namespace lokari {
namespace {

using CabDrive = test::CabFixture;

QStringList list(std::initializer_list<const char*> texts) {
  QStringList result;
  for (const char* text : texts) result << QString::fromUtf8(text);
  return result;
}

TEST_F(CabDrive, MovingTheBarShowsAndSendsTheSpeed) {
  const auto cab = loadedCab();
  int shown = -1;
  QObject::connect(cab.get(), &Cab::speedShown, [&](int speed) { shown = speed; });
  cab->vsbSpeed(64);
  EXPECT_EQ(shown, 64);
  EXPECT_EQ(station.log, list({"3: speed 64"}));
}

TEST_F(CabDrive, ABarThatIsDraggedQuicklySendsItsLastPosition) {
  const auto cab = loadedCab();
  station.wait = 100;
  for (int i = 1; i <= 90; ++i) {
    clock.schedule(i, [&cab, i] { cab->vsbSpeed(i); });
  }
  cab->vsbSpeed(0);
  EXPECT_EQ(station.log, list({"3: speed 0", "3: speed 90"}));
}

TEST_F(CabDrive, ALampChangesBeforeTheMessageIsSent) {
  const auto cab = loadedCab();
  bool lamp = false;
  QObject::connect(cab.get(), &Cab::functionChanged, [&](int n, bool on) {
    EXPECT_EQ(n, 7);
    EXPECT_TRUE(station.log.isEmpty());
    lamp = on;
  });
  cab->cmdFunc(7);
  EXPECT_TRUE(lamp);
  EXPECT_EQ(station.log, list({"3: F7 1"}));
}

TEST_F(CabDrive, AFailedSendDoesNotTurnTheLampBack) {
  const auto cab = loadedCab();
  station.vanished = true;
  cab->cmdFunc(2);
  cab->imgDirBackward();
  EXPECT_TRUE(cab->state().funcOn[2]);
  EXPECT_TRUE(cab->state().backward);
  EXPECT_TRUE(prompt.shown.isEmpty());
}

TEST_F(CabDrive, AHornPressedTwiceInsideAnExchangeSoundsOnAndOff) {
  const auto cab = loadedCab();
  station.midst = [&] {
    cab->cmdFunc(2);
    cab->cmdFunc(2);
  };
  cab->vsbSpeed(1);
  EXPECT_EQ(station.log, list({"3: speed 1", "3: F2 1", "3: F2 0"}));
}

TEST_F(CabDrive, ALampBeyondTheStationsFunctionsDoesNothing) {
  const auto cab = loadedCab();
  cab->cmdFunc(13);
  cab->cmdFunc(-1);
  cab->cmdFunc(29);
  EXPECT_TRUE(station.log.isEmpty());
  EXPECT_FALSE(cab->hasFunction(13));
  EXPECT_TRUE(cab->hasFunction(12));
}

TEST_F(CabDrive, TheArrowsSetTheDirectionAlsoWhenItIsInForce) {
  const auto cab = loadedCab();
  cab->imgDirBackward();
  cab->imgDirForward();
  cab->imgDirForward();
  EXPECT_EQ(station.log, list({"3: backward", "3: forward", "3: forward"}));
}

TEST_F(CabDrive, ManualModeIsInverted) {
  const auto cab = loadedCab();
  cab->imgMan();
  cab->imgMan();
  EXPECT_EQ(station.log, list({"3: manual 1", "3: manual 0"}));
}

TEST_F(CabDrive, AStationWithoutManualModeIsNotAskedForIt) {
  settings.baseUnit = StationKind::TamsMc;
  const auto cab = loadedCab();
  cab->imgMan();
  EXPECT_FALSE(cab->keyDown(u'x'));
  EXPECT_TRUE(cab->keyDown(u'm'));
  EXPECT_FALSE(cab->manualVisible());
  EXPECT_TRUE(station.log.isEmpty());
}

TEST_F(CabDrive, StopGoesOutAtOnceWhileAnotherCabsHandlerWaits) {
  const auto one = loadedCab(3);
  const auto two = loadedCab(4);
  const Millis start = clock.now();
  station.wait = 5000;
  clock.schedule(700, [&] { two->imgStop(); });
  one->vsbSpeed(9);
  EXPECT_EQ(station.log, QStringList({QStringLiteral("3: speed 9"),
                                      QStringLiteral("stop %1").arg(start + 700)}));
  EXPECT_TRUE(two->state().stopped);
  EXPECT_FALSE(one->state().stopped);
}

TEST_F(CabDrive, StopIsInvertedByTheNextPress) {
  const auto cab = loadedCab();
  QList<bool> told;
  QObject::connect(cab.get(), &Cab::stoppedChanged, [&](bool on) { told << on; });
  cab->imgStop();
  cab->imgStop();
  EXPECT_EQ(told, (QList<bool>{true, false}));
  EXPECT_TRUE(station.log[0].startsWith(QStringLiteral("stop")));
  EXPECT_TRUE(station.log[1].startsWith(QStringLiteral("go")));
}

TEST_F(CabDrive, TheKeysPressTheControls) {
  const auto cab = loadedCab();
  for (const QChar key : QStringLiteral("01234567+-m ")) EXPECT_TRUE(cab->keyDown(key));
  EXPECT_EQ(station.log.mid(0, 11),
            list({"3: F0 1", "3: F1 1", "3: F2 1", "3: F3 1", "3: F4 1", "3: F5 1", "3: F6 1",
                  "3: F7 1", "3: forward", "3: backward", "3: manual 1"}));
  EXPECT_TRUE(station.log[11].startsWith(QStringLiteral("stop")));
}

TEST_F(CabDrive, TheKeys8And9DoNothingAlthoughTheirLampsExist) {
  const auto cab = loadedCab();
  EXPECT_FALSE(cab->keyDown(u'8'));
  EXPECT_FALSE(cab->keyDown(u'9'));
  EXPECT_TRUE(cab->hasFunction(9));
  EXPECT_TRUE(station.log.isEmpty());
}

// ---- The end ------------------------------------------------------------------------------------

TEST_F(CabDrive, ClosingSendsNothingAndGivesTheSessionBack) {
  const auto cab = loadedCab();
  cab->imgStop();
  station.log.clear();
  cab->cmdOK();
  EXPECT_TRUE(station.log.isEmpty());
  EXPECT_EQ(link.commUseCount, 0);
  EXPECT_FALSE(serial.isOpen());
}

TEST_F(CabDrive, ThePortStaysOpenWhileAnotherCabUsesIt) {
  const auto one = loadedCab(3);
  const auto two = loadedCab(4);
  one->unload();
  EXPECT_TRUE(serial.isOpen());
  two->unload();
  EXPECT_FALSE(serial.isOpen());
}

TEST_F(CabDrive, WhatWasAskedForBeforeTheEndStillGoesOut) {
  const auto one = loadedCab(3);
  const auto two = loadedCab(4);
  station.midst = [&] {
    two->vsbSpeed(0);
    two->unload();
    two->vsbSpeed(99);
  };
  one->vsbSpeed(5);
  EXPECT_EQ(station.log, list({"3: speed 5", "4: speed 0"}));
  EXPECT_EQ(link.commUseCount, 1);
}

TEST_F(CabDrive, ACabThatIsClosedInsideItsOwnExchangeGoesBehindIt) {
  const auto cab = loadedCab();
  bool gone = false;
  cab->onGone = [&] { gone = true; };
  station.midst = [&] {
    cab->unload();
    EXPECT_TRUE(serial.isOpen());
    EXPECT_FALSE(gone);
  };
  cab->vsbSpeed(5);
  EXPECT_TRUE(gone);
  EXPECT_FALSE(serial.isOpen());
}

TEST_F(CabDrive, UnloadingTwiceGivesTheSessionBackOnce) {
  const auto one = loadedCab(3);
  const auto two = loadedCab(4);
  one->unload();
  one->unload();
  EXPECT_EQ(link.commUseCount, 1);
}

}  // namespace
}  // namespace lokari
