// An MX1 with the binary protocol as public documents describe it. mx1_frames.h has the frames.
//
// A command is of kind 10. Its answer is of kind 40, or of kind 20 where a CV is told, has its
// message, and its sequence ahead of the rest:
//
//   02 s                    0 stop all, 1 track off, 2 on, 3 ask: s, 01 stopped, 02 off
//   03 aH aL speed f b1 b2  drives: error
//   08 aH aL                vehicle: error aH aL speed f b1 b2
//   13 aH aL cH cL [v]      CV, of address 0 on the programming track: kind 20, aH aL cH cL v, or
//                           aH aL error
//   00                      reset: 00
//   others                  error 0A
//
// aH has 80 for DCC; f is 20 backward, 10 F0, steps 04 14, 08 28, 0C 128, 80 manual in answers; b1
// F1 to F8, b2 F9 and up. The program acknowledges kind 20 with kind 50. Frames with the long
// checksum (kinds from 80 on) are passed over: its rule is not documented.
//
// Open are the coding of the speed, which is taken as it comes, and the error for a CV that nobody
// acknowledged: 06 of the documented ones.
#pragma once

#include <span>

#include "sim/makers/makers_options.h"
#include "sim/makers/mx1_frames.h"
#include "sim/station.h"

namespace lokari::sim::makers {

class Mx1Station final : public Station {
 public:
  Mx1Station(const Surroundings& surroundings, const MakersOptions& options)
      : Station(surroundings), options_(options) {}

  void receive(const QByteArray& data) override;

  /// CVs that were told and not acknowledged yet.
  int unacknowledged() const { return unacknowledged_; }

 protected:
  /// Another throttle has driven vehicle 3.
  QByteArray unasked() const override;

 private:
  struct Row {
    int message;
    qsizetype least;  ///< bytes of data
    qsizetype most;
    void (Mx1Station::*obey)(const Mx1Frame& command);
  };
  static std::span<const Row> rows();

  void obey(const Mx1Frame& command);
  void reset(const Mx1Frame& command);
  void switchTrack(const Mx1Frame& command);
  void drive(const Mx1Frame& command);
  void tellVehicle(const Mx1Frame& command);
  void accessCv(const Mx1Frame& command);

  QByteArray vehicleBytes(int address) const;
  void acknowledge(const Mx1Frame& command, const QByteArray& data);
  void tellCv(const Mx1Frame& command, const QByteArray& data);

  MakersOptions options_;
  Mx1Reader reader_;
  int sequence_ = 0;
  int unacknowledged_ = 0;
};

}  // namespace lokari::sim::makers
