// An MX10, behind its CAN key or on the network. can_frames.h has the wire forms.
//
// It announces itself with 0A/00 event, data its serial number, high byte first: at once when a
// program opens the line, and every second from then on. Messages and their answers:
//
//   0A/06, 0A/07     the network opens and closes; without a word for 30 s it counts as closed
//   0A/0A            log on; no answer
//   06/00            data node 01 mode: 04 programming track, 00 normal; answer 16/00 the same data
//   16/08            data node, address, CV, 00 00 (low byte first but the node): read the CV;
//                    answer the same data and the value, or none when there is no value
//   16/09            the same and the value: write it; answer the same data
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

  void obey(const BusMessage& message);
  void openLine();
  void closeLine() { open_ = false; }

 private:
  void announce(int turn);
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
