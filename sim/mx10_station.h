// An MX10, behind its CAN key or on the network. can_frames.h has the wire forms.
//
// It announces itself with 0A/00 event, data its serial number, high byte first: at once when a
// program opens the line, and every second from then on. Messages and their answers:
//
//   0A/06, 0A/07     the network opens and closes; without a word for 30 s it counts as closed
//   0A/0A            log on; no answer
//   08/08            data node (low byte first) 02 00: versions; answer the same, a number (16 bit)
//                    and the version's parts, low one first; the number's high byte is its lowest
//   06/00            data node 01 mode: 04 programming track, 00 normal; answer 16/00 the same data
//   16/08            data node, address, CV, 00 00 (low byte first but the node): read the CV;
//                    answer the same data and the value, or none when there is no value
//   16/09            the same and the value: write it; answer the same data
//   02/03            data address: ask for the functions; answer the address and four bytes
//   02/02            data address: ask for the speed; answer the address, speed, flags, functions.
//                    The flags hold the speed's bits 8 and 9 and, in bit 3, backward
//   02/02 command    data address, speed, flags, functions, 00: drive; bit 2 of the flags is
//                    backward
//   02/04 command    data address, n (16 bit), on (16 bit): function
//   02/05            data address, 01 00: ask for manual; answer the same and the state
//   02/05 command    data address, 01 00, on (16 bit): manual
//   02/10 command    data address, 01 00: keep-alive; no answer
//   00/00 command    data 00 00 03 mode: 02 stop, 01 go
//   01/02            data address: ask for a unit's outputs; answer the address, 00 00 and a byte
//                    with bit 2i set when output i is off
//   01/04 command    data address, n, on: switch an output
//
// Commands of driving and switching are answered with their own data.
//
// Messages to another node are not obeyed. A CV is on the programming track when that is switched
// on, else it is the addressed vehicle's on the main track.
#pragma once

#include "sim/can_frames.h"
#include "sim/station.h"

namespace lokari::sim {

class Mx10Station : public Station {
 public:
  static constexpr int kNode = 0xC0A1;
  static constexpr quint32 kSerialNumber = 0x80012345;

  using Station::Station;

  bool programmingTrack() const { return programmingTrack_; }
  /// Somebody listens.
  bool isOpen() const { return open_; }

 protected:
  virtual QByteArray encode(const BusMessage& message) const = 0;

  /// Another node tells what CV 8 of vehicle 3 holds there.
  QByteArray unasked() const override;

  void obey(const BusMessage& message);
  void openLine();
  void closeLine() { open_ = false; }

 private:
  void announce(int turn);
  void obeyDriving(const BusMessage& message);
  void command(const BusMessage& message);
  void ask(const BusMessage& message);
  void tellVersions(const BusMessage& message);
  void switchTrack(const BusMessage& message);
  void readCv(const BusMessage& message);
  void writeCv(const BusMessage& message);
  void answerTo(const BusMessage& message, int group, const QByteArray& data, Millis delay);

  bool open_ = false;
  bool programmingTrack_ = false;
  int turn_ = 0;  ///< counts openings, so that the announcing of an earlier one ends
};

/// Bytes of the serial line.
class Mx10KeyStation final : public Mx10Station {
 public:
  using Mx10Station::Mx10Station;
  void receive(const QByteArray& data) override;

 protected:
  QByteArray encode(const BusMessage& message) const override { return keyFrame(message); }

 private:
  KeyReader reader_;
};

/// Datagrams.
class Mx10IpStation final : public Mx10Station {
 public:
  using Mx10Station::Mx10Station;
  void receive(const QByteArray& datagram) override;

 protected:
  QByteArray encode(const BusMessage& message) const override { return ipDatagram(message); }

 private:
  void forget(Millis heard);

  Millis heardAt_ = 0;
};

}  // namespace lokari::sim
