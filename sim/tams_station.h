// A Tams MC. Commands are lines closed by a carriage return:
//
//   xPTR<m> cv            read on the programming track; m is P paged, R register, B direct
//   xPTW<m> cv, value     write there; m is P, R, or D direct
//   xPD address, cv, value    write on the main track
//
// Behind the letter "x" it takes binary commands, too: the questions of sim/ibx_status.h, driving
// and switching of sim/ibx_driving.h. An unknown one is answered 02.
//
// Replies: the value or "Ok", "No ack", "Error", each closed by "]" and a carriage return.
#pragma once

#include "sim/station.h"

namespace lokari::sim {

class TamsStation final : public Station {
 public:
  using Station::Station;
  void receive(const QByteArray& data) override;

 private:
  /// The input begins with a binary command, or the beginning of one.
  bool beginsBinary() const;
  /// Each takes one command off the input and answers it; false when there is no whole one.
  bool takeBinary();
  bool takeLine();
  QByteArray replyTo(const QByteArray& line);

  QByteArray input_;
  Millis lastAt_ = 0;
};

}  // namespace lokari::sim
