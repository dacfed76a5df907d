// The MX1 and the MX1ULF with the binary protocol. zimo_binary_frames.h has the frames.
//
// Requests and their answers (command byte and data; an answer begins with the same command):
//
//   00                          greeting; answer 00
//   0D 00                       who are you? answer 00 00, model, 00 x 4, software's version,
//                               day, month, year and build, 00 00, boot ROM's version, 00 00,
//                               serial number with its high byte first
//   02 00, 02 02                track power off, on; answer 00
//   02 03                       the track: answer 03 and 80 DCC, 40 Motorola, 04 overcurrent, 02
//                               voltage on, 01 stopped
//   03 high low speed flags low [high]
//                               drive a vehicle; answer 00. Without the last byte F9 to F12 stay
//   07 high low value           switch an output of a function unit; answer 00
//   08 high low                 ask for a vehicle; answer 00, address, speed, flags, low, high
//   09 high low                 ask for a function unit; answer 00, its address, 00, its outputs
//   11 04 01, 11 04 00          log on, log off; answer 00
//   13 80 00 high low           read a CV on the programming track
//   13 80 00 high low value     write one there
//   13 80+high low high low value   write on the main track, address first
//
// zimo_vehicle.h has the bytes of vehicles and units. A vehicle's address above 127 is told with C0
// in its high byte and taken with or without marks there. Any of 02, 03, 07, 08 and 09 may be
// answered 04 busy.
//
// A CV request is answered 00 accepted, 04 busy or another byte refused. On the programming track
// a second frame follows an accepted one: 80 00 high low value, or, failed, 80 00 and 01 no
// acknowledge, 02 no decoder, 03 short circuit. The program acknowledges it with an answer frame
// 13, its sequence byte, 00.
#pragma once

#include "sim/station.h"
#include "sim/zimo_binary_frames.h"

namespace lokari::sim {

class ZimoBinaryStation : public Station {
 public:
  void receive(const QByteArray& data) override;

  /// Results that were sent and not acknowledged yet.
  int unacknowledged() const { return unacknowledged_; }
  /// Whether a program has logged on.
  bool loggedOn() const { return loggedOn_; }

 protected:
  /// `model`: 1 MX1 2000, 2 MX1 EC, 3 MX31ZL, 4 MXULF, 10 MX10.
  ZimoBinaryStation(const Surroundings& surroundings, ZimoHeader header, int model)
      : Station(surroundings), header_(header), model_(model) {}

  /// Another throttle has driven vehicle 3.
  QByteArray unasked() const override;

 private:
  void obey(const ZimoFrame& request);
  void tellModel(const ZimoFrame& request);
  void obeyTrack(const ZimoFrame& request);
  void tellTrack(const ZimoFrame& request);
  void obeyDriving(const ZimoFrame& request);
  void driveVehicle(const ZimoFrame& request);
  void switchUnit(const ZimoFrame& request);
  void tellVehicle(const ZimoFrame& request);
  void tellUnit(const ZimoFrame& request);
  void takeAcknowledgement(const ZimoFrame& frame);
  void accessCv(const ZimoFrame& request);
  void accessProgrammingTrack(const ZimoFrame& request, int cv);
  void writeMain(const ZimoFrame& request, int cv);
  void confirm(const ZimoFrame& request, int status);
  /// A frame of this station; numbers it.
  QByteArray frame(const ZimoFrame& request, bool answer, const QByteArray& data);

  ZimoHeader header_;
  int model_;
  ZimoFrameReader reader_;
  int seq_ = 0;
  int resultSeq_ = -1;  ///< of the result sent last
  int unacknowledged_ = 0;
  bool loggedOn_ = false;
  Millis trackFreeAt_ = 0;
};

class Mx1BinStation final : public ZimoBinaryStation {
 public:
  explicit Mx1BinStation(const Surroundings& surroundings)
      : ZimoBinaryStation(surroundings, ZimoHeader::Short, 1) {}
};

/// It sends its frames with the long header.
class Mx1UlfStation final : public ZimoBinaryStation {
 public:
  explicit Mx1UlfStation(const Surroundings& surroundings)
      : ZimoBinaryStation(surroundings, ZimoHeader::Long, 4) {}
};

}  // namespace lokari::sim
