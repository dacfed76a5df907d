// The Intellibox: binary commands behind the letter "x".
//
//   EE lo hi, EC lo 00, F2 lo hi   read, paged, by register, direct
//   EF lo hi v, ED lo 00 v, F1 lo hi v   write, the same
//   DE al ah lo hi v               write on the main track, address first
//   CE                             the programming event
//   E2                             end of programming
//   A0                             versions; sim/ibx_status.h
//   A2                             state; the same
//   80 and others                  driving and switching; sim/ibx_driving.h
//
// Each of the others but CE is answered by one byte: 00 accepted, 02 unknown, 06 the programming
// track is busy. CE is answered F5 while there is no event, else by a length, a status and, after a
// read, the value: 00 done, FF nobody answered, FE no acknowledge, FD short circuit, FC no decoder.
#pragma once

#include "sim/station.h"

namespace lokari::sim {

class IntelliboxStation final : public Station {
 public:
  using Station::Station;
  void receive(const QByteArray& data) override;

  /// Whether a CV was accessed and the programming not ended.
  bool programming() const { return programming_; }

 private:
  void obey(const QByteArray& command);
  void readCv(int cv, Method method);
  void writeCv(int cv, int value, Method method);
  void startProgramming(const TrackResult& result, const QByteArray& data);
  void answerEvent();
  void answerByte(int byte);

  QByteArray input_;
  Millis lastAt_ = 0;
  bool programming_ = false;
  QByteArray event_;  ///< of the last access; empty when there is none
  Millis eventAt_ = 0;
};

}  // namespace lokari::sim
