// An XpressNet interface and the station behind it, as their maker's documents describe them.
//
// xpressnet_frames.h has the wire, xpressnet_driving.h and xpressnet_programming.h most commands.
//
//   F0                 the interface's version: 02 30 01
//   21 21              the station's: 63 21 version 00
//   21 24              status: 62 22. Version 3.6: bit 0 stop, bit 1 off; ahead of it bit 0 off,
//                      bit 1 stop. Bit 3 service mode
//   21 81, 21 80, 80   on, off, stop of all; the answer is the broadcast 61 01, 61 00, 81 00
//   21 10              result of the programming track; 61 82 outside service mode. While the track
//                      works, version 3.6 says 61 1F, an older one keeps its answer until then
//   E6 30              a CV on the main track, xbus.h: writes only; what a read is answered is not
//                      documented
//
// The first access of the programming track enters service mode, and the broadcast 61 02 is its
// answer. A command without an answer of its own is answered 01 04, a wrong checksum 61 80, an
// unknown command, or one that drives in service mode, 61 82, one that comes while the station is
// busy 61 81, a message that never ends 01 01. Nothing of the programming track is told without the
// question for it; 21 81 leaves service mode.
#pragma once

#include <span>

#include "sim/makers/makers_options.h"
#include "sim/makers/xpressnet_driving.h"
#include "sim/makers/xpressnet_frames.h"
#include "sim/station.h"

namespace lokari::sim::makers {

struct XpressNetModel {
  int version;  ///< of the station
  bool framed;
};

class XpressNetStation : public Station {
 public:
  XpressNetStation(const Surroundings& surroundings, const MakersOptions& options,
                   const XpressNetModel& model)
      : Station(surroundings),
        options_(options),
        version_(options.stationVersion != 0 ? options.stationVersion : model.version),
        framed_(model.framed),
        reader_(model.framed),
        driving_(surroundings.layout, version_) {}

  void receive(const QByteArray& data) override;

  bool inServiceMode() const { return serviceMode_; }
  const Accessories& accessories() const { return driving_.accessories(); }

 protected:
  /// Another device has switched the track on.
  QByteArray unasked() const override;

 private:
  struct Row {
    QByteArray message;
    void (XpressNetStation::*obey)();
  };
  static std::span<const Row> rows();

  void obey(const QByteArray& message);
  void tellInterface();
  void tellVersion();
  void tellStatus();
  void switchOn();
  void switchOff();
  void stopAll();
  void tellResult();
  void accessProgrammingTrack(const QByteArray& message);
  void accessMainTrack(const QByteArray& message);
  void drive(const QByteArray& message);

  /// Gives a message that has begun its time to end.
  void watchForTheEnd();
  void tell(const QByteArray& message);
  void tell(const QByteArray& message, Millis delay);
  void answerWithBroadcast(const QByteArray& message);
  QByteArray broadcastBytes(const QByteArray& message) const;

  MakersOptions options_;
  int version_;
  bool framed_;
  XpressNetReader reader_;
  XpressNetDriving driving_;
  int portions_ = 0;
  bool serviceMode_ = false;
  QByteArray result_;
  Millis resultAt_ = 0;
};

/// The station behind it is a 3.0.
class Li100Station final : public XpressNetStation {
 public:
  Li100Station(const Surroundings& surroundings, const MakersOptions& options)
      : XpressNetStation(surroundings, options, {kXpressNet30, false}) {}
};

class Li100V3Station final : public XpressNetStation {
 public:
  Li100V3Station(const Surroundings& surroundings, const MakersOptions& options)
      : XpressNetStation(surroundings, options, {kXpressNet36, false}) {}
};

class LiUsbStation final : public XpressNetStation {
 public:
  LiUsbStation(const Surroundings& surroundings, const MakersOptions& options)
      : XpressNetStation(surroundings, options, {kXpressNet36, true}) {}
};

}  // namespace lokari::sim::makers
