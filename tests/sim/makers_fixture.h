// A station in its maker's form, with the built-in vehicles, faults and virtual time around it.
#pragma once

#include <gtest/gtest.h>

#include "sim/decoder_file.h"
#include "sim/station_table.h"
#include "support/virtual_clock.h"

namespace lokari::sim::makers {

class MakersFixture : public ::testing::Test {
 protected:
  explicit MakersFixture(QStringView name, const MakersOptions& options = {}) : name_(name) {
    EXPECT_EQ(readDecoders(builtInDecoders(), layout), "");
    layout.onChange = [this](const QString& line) { news << line; };
    make(options);
  }

  void make(const MakersOptions& options) {
    station = stationByName(name_)->makeMakers({clock, layout, faults, 20}, options);
    station->onAnswer = [this](const QByteArray& data) { answers.append({clock.now(), 0, data}); };
    station->onAnswerTo = [this](int client, const QByteArray& data) {
      answers.append({clock.now(), client, data});
    };
  }

  static QByteArray fromHex(const char* hex) { return QByteArray::fromHex(hex); }
  static QString hex(const QByteArray& data) { return QString::fromLatin1(data.toHex(' ')); }

  /// Enough for an answer and a CV, too short for a pause to end a message.
  static constexpr Millis kSoon = 900;
  /// What the station sends soon after a message, joined, as hexadecimal text.
  QString reply(const char* message) { return replyTo(0, message); }
  QString replyTo(int client, const char* message) {
    send(client, message);
    clock.advance(kSoon);
    return sentTo(client);
  }
  void send(int client, const char* message) {
    answers.clear();
    station->receiveFrom(client, fromHex(message));
    EXPECT_TRUE(answers.isEmpty()) << "answered from inside the write";
  }
  /// What has gone to a client since the last message.
  QString sentTo(int client) const {
    QByteArray all;
    for (const Answer& answer : answers) {
      if (answer.client == client) all += answer.data;
    }
    return hex(all);
  }

  struct Answer {
    Millis at = 0;
    int client = 0;
    QByteArray data;
  };

  test::VirtualClock clock;
  Layout layout;
  FaultPlan faults;
  std::unique_ptr<Station> station;
  QList<Answer> answers;
  QStringList news;  ///< of the layout

 private:
  QStringView name_;
};

}  // namespace lokari::sim::makers
