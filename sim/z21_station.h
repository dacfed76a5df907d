// A Z21. z21_messages.h has the wire form.
//
// Messages and their answers:
//
//   kind 10                         serial number: kind 10 and four bytes, low byte first
//   kind 30                         log off; no answer
//   21 81                           track power on: 61 01
//   23 11 cv                        read on the programming track, CV from 0, high byte first
//   24 12 cv value                  write there
//   E6 30 address option cv value   main track: option and CV see z21_messages.h
//   anything else                   61 82 unknown command
//
// CV accesses are answered 64 14 cv value, 61 13 no acknowledge, 61 12 short circuit or 61 82 not
// now; a write on the main track is not answered.
#pragma once

#include "sim/station.h"
#include "sim/z21_messages.h"

namespace lokari::sim {

class Z21Station final : public Station {
 public:
  static constexpr quint32 kSerialNumber = 123456;

  using Station::Station;
  void receive(const QByteArray& datagram) override;

  /// A program is there: it has spoken and not logged off.
  bool inUse() const { return inUse_; }

 private:
  void obey(const Z21Message& message);
  void accessCv(const Z21CvCommand& command);
  void answerCommand(std::initializer_list<int> data, Millis delay);

  bool inUse_ = false;
};

}  // namespace lokari::sim
