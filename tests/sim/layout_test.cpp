#include "sim/layout.h"

#include <gtest/gtest.h>

#include <QStringList>

namespace lokari::sim {
namespace {

TEST(SimLayout, EmptyTracksAnswerWithNobody) {
  Layout layout;
  EXPECT_EQ(layout.onProgrammingTrack(), nullptr);
  EXPECT_EQ(layout.onMainTrack(3), nullptr);
}

TEST(SimLayout, AVehicleOnTheSidingIsOnBothTracks) {
  Layout layout;
  layout.add({}).decoder.setAddress(3);
  EXPECT_EQ(layout.onProgrammingTrack(), layout.onMainTrack(3));
  EXPECT_NE(layout.onMainTrack(3), nullptr);
}

TEST(SimLayout, AReprogrammedVehicleAnswersToItsNewAddress) {
  Layout layout;
  layout.add({}).decoder.setAddress(3);
  layout.onProgrammingTrack()->write(1, 5);
  EXPECT_EQ(layout.onMainTrack(3), nullptr);
  EXPECT_NE(layout.onMainTrack(5), nullptr);
}

TEST(SimLayout, EachChangeOfAVehicleIsReportedOnce) {
  Layout layout;
  QStringList lines;
  layout.onChange = [&lines](const QString& line) { lines.append(line); };
  layout.setDrive(3, {.speed = 42, .steps = 128, .functions = 0b1001});
  layout.setDrive(3, {.speed = 42, .steps = 128, .functions = 0b1001});
  layout.setDrive(4, {.speed = 5, .steps = 28, .backward = true, .manual = true});
  EXPECT_EQ(lines, (QStringList{"Fahrzeug 3: Stufe 42 von 128 vorwärts, F0 F3",
                                "Fahrzeug 4: Stufe 5 von 28 rückwärts von Hand, alles aus"}));
  EXPECT_EQ(layout.drive(3).speed, 42);
  EXPECT_EQ(layout.drive(5), DriveState{});
}

TEST(SimLayout, OutputsAndTrackPowerAreReportedOnChange) {
  Layout layout;
  QStringList lines;
  layout.onChange = [&lines](const QString& line) { lines.append(line); };
  layout.setOutput(13, true);
  layout.setOutput(13, true);
  layout.setOutput(14, false);
  layout.setTrackPower(true);
  layout.setTrackPower(false);
  EXPECT_EQ(lines, (QStringList{"Ausgang 13: ein", "Fahrspannung aus"}));
  EXPECT_TRUE(layout.output(13));
  EXPECT_FALSE(layout.output(14));
  EXPECT_FALSE(layout.trackPower());
}

}  // namespace
}  // namespace lokari::sim
