// The LI100 in its two generations and the LI-USB. lenz_messages.h has the messages.
//
// The first generation says everything five times. The later ones confirm a command with 01 04 as
// soon as they have it: a read is followed by 61 02, a write by a second 01 04 when it is done, and
// 61 01 goes out twice. The LI-USB puts FF FE ahead of each message.
// lenz_driving.h has how vehicles are driven and outputs switched; normal operation puts power on
// and ends a stop.
//
// It tells its version and its state when it is asked: the first generation 2.3, the later ones 3.6
// with an LZ100 behind them.
//
// While the programming track works, the question for its result is answered 61 02; then 63 with
// the value, 61 12 for a short circuit, or 61 13 when nobody acknowledged. A busy track answers a
// write with 01 04 and 61 02 and does not write. 61 80 reports a wrong check byte, 61 82 an unknown
// command.
#pragma once

#include "sim/lenz_driving.h"
#include "sim/lenz_messages.h"
#include "sim/station.h"

namespace lokari::sim {

class LenzStation : public Station {
 public:
  void receive(const QByteArray& data) final;

  /// Whether the tracks are dead because a CV was accessed and normal operation not resumed.
  bool inServiceMode() const { return serviceMode_; }

 protected:
  LenzStation(const Surroundings& surroundings, bool firstGeneration, bool usb)
      : Station(surroundings),
        firstGeneration_(firstGeneration),
        usb_(usb),
        reader_(usb),
        driving_(layout(), firstGeneration) {}

  /// Another device has switched the tracks on.
  QByteArray unasked() const override;

 private:
  void obey(const LenzCommand& command);
  void readCv(const LenzCommand& command);
  void writeCv(const LenzCommand& command);
  void keepResult(const LenzCommand& command, const TrackResult& result);
  void answerResult();
  void answerState();
  /// Sends messages at once, as this interface does.
  void say(const std::vector<QByteArray>& messages);
  QByteArray wrapped(const QByteArray& message) const;

  bool firstGeneration_;
  bool usb_;
  LenzMessageReader reader_;
  LenzDriving driving_;
  bool serviceMode_ = false;
  QByteArray result_;  ///< of the last access; empty before the first
  Millis trackFreeAt_ = 0;
};

class Li100Station final : public LenzStation {
 public:
  explicit Li100Station(const Surroundings& surroundings)
      : LenzStation(surroundings, true, false) {}
};

class Li100V3Station final : public LenzStation {
 public:
  explicit Li100V3Station(const Surroundings& surroundings)
      : LenzStation(surroundings, false, false) {}
};

class LiUsbStation final : public LenzStation {
 public:
  explicit LiUsbStation(const Surroundings& surroundings)
      : LenzStation(surroundings, false, true) {}
};

}  // namespace lokari::sim
