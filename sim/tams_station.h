// A Tams MC. Commands are lines closed by a carriage return:
//
//   xPTR<m> cv            read on the programming track; m is P paged, R register, B direct
//   xPTW<m> cv, value     write there; m is P, R, or D direct
//   xPD address, cv, value    write on the main track
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
  QByteArray replyTo(const QByteArray& line);

  QByteArray input_;
};

}  // namespace lokari::sim
