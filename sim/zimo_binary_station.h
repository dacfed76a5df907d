// The MX1 and the MX1ULF with the binary protocol. zimo_binary_frames.h has the frames.
//
// Requests and their answers (command byte and data; an answer begins with the same command):
//
//   00                          greeting; answer 00
//   11 04 01, 11 04 00          log on, log off; answer 00
//   13 80 00 high low           read a CV on the programming track
//   13 80 00 high low value     write one there
//   13 80+high low high low value   write on the main track, address first
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
  ZimoBinaryStation(const Surroundings& surroundings, ZimoHeader header)
      : Station(surroundings), header_(header) {}

 private:
  void obey(const ZimoFrame& request);
  void takeAcknowledgement(const ZimoFrame& frame);
  void accessCv(const ZimoFrame& request);
  void accessProgrammingTrack(const ZimoFrame& request, int cv);
  void writeMain(const ZimoFrame& request, int cv);
  void confirm(const ZimoFrame& request, int status);
  /// A frame of this station; numbers it.
  QByteArray frame(const ZimoFrame& request, bool answer, const QByteArray& data);

  ZimoHeader header_;
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
      : ZimoBinaryStation(surroundings, ZimoHeader::Short) {}
};

/// It sends its frames with the long header.
class Mx1UlfStation final : public ZimoBinaryStation {
 public:
  explicit Mx1UlfStation(const Surroundings& surroundings)
      : ZimoBinaryStation(surroundings, ZimoHeader::Long) {}
};

}  // namespace lokari::sim
