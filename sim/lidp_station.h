// The Lenz decoder programmer: lines of text, closed by a carriage return. Numbers are upper-case
// hexadecimal, CVs count from 0.
//
//   0Bcccc     read a CV: answered vvOK
//   0Accccvv   write one: answered vvOK with the value that the decoder holds
//   01         end of the session, output off: answered OK
//
// X1 is a command that it does not understand, X2 no acknowledge, X3 too much current, X4 a busy
// programmer. Answers end with a carriage return and a line feed.
#pragma once

#include "sim/station.h"

namespace lokari::sim {

class LidpStation final : public Station {
 public:
  using Station::Station;
  void receive(const QByteArray& data) override;

 private:
  QByteArray replyTo(const QByteArray& line);

  QByteArray input_;
};

}  // namespace lokari::sim
