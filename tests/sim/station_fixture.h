// Tracks with the built-in vehicles, faults and virtual time around a simulated station.
#pragma once

#include <gtest/gtest.h>

#include "sim/decoder_file.h"
#include "sim/station_table.h"
#include "support/virtual_clock.h"

namespace lokari::sim {

class StationFixture : public ::testing::Test {
 protected:
  explicit StationFixture(QStringView name) {
    EXPECT_EQ(readDecoders(builtInDecoders(), layout), "");
    station = stationByName(name)->make({clock, layout, faults, 20});
    station->onAnswer = [this](const QByteArray& data) { answers.append({clock.now(), data}); };
    station->onUnplug = [this] { unplugged = true; };
  }

  /// What the station answers to a message, joined, within a minute.
  QByteArray replyTo(const QByteArray& message) {
    answers.clear();
    station->receive(message);
    EXPECT_TRUE(answers.isEmpty()) << "answered from inside the write";
    clock.advance(60000);
    QByteArray all;
    for (const Answer& answer : answers) all += answer.data;
    return all;
  }

  struct Answer {
    Millis at = 0;
    QByteArray data;
  };

  test::VirtualClock clock;
  Layout layout;
  FaultPlan faults;
  std::unique_ptr<Station> station;
  QList<Answer> answers;
  bool unplugged = false;
};

}  // namespace lokari::sim
