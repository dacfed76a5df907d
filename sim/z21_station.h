// A Z21. z21_messages.h has the wire form.
//
// Messages and their answers:
//
//   kind 10                         serial number: kind 10 and four bytes, low byte first
//   kind 30                         log off; no answer
//   21 81                           track power on: 61 01
//   F1 0A                           firmware: F3 0A 01 43
//   80                              stop of all vehicles: 81 00
//   E4 steps address speed          drive: steps 10, 12, 13 for 14, 28, 128; speed with 80
//                                   forward; no answer
//   E4 F8 address n                 function n, with 40 on; no answer
//   E3 F0 address                   vehicle: EF address steps speed functions, filled up to 16
//                                   bytes
//   43 output                       output, from 0, high byte first: 43 output 01 on or 02 off
//   53 output A8 or A9              switch it on or off; answer as to 43
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

 protected:
  /// Another device has switched the track on.
  QByteArray unasked() const override;

 private:
  void obey(const Z21Message& message);
  void obeyCommand(const QByteArray& data);
  /// True when it was a message of driving or switching.
  bool operate(const QByteArray& data);
  void tellVehicle(int address);
  void tellOutput(int output);
  void accessCv(const Z21CvCommand& command);
  void answerCommand(std::initializer_list<int> data, Millis delay);
  void answerCommand(const QByteArray& data, Millis delay);

  bool inUse_ = false;
};

}  // namespace lokari::sim
