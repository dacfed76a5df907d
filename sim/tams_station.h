// A Tams MC. Commands are lines closed by a carriage return:
//
//   xPTR<m> cv            read on the programming track; m is P paged, R register, B direct
//   xPTW<m> cv, value     write there; m is P, R, or D direct
//   xPD address, cv, value    write on the main track
//
// Behind the letter "x" it takes the binary questions of sim/ibx_status.h, too.
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
  /// Answers a binary question that the input begins with; false when there is none.
  bool takeQuestion();
  QByteArray replyTo(const QByteArray& line);

  QByteArray input_;
};

}  // namespace lokari::sim
