// A UDP socket to a simulated station, in virtual time.
#pragma once

#include "sim/station.h"
#include "support/memory_socket.h"

namespace lokari::test {

class SimSocket final : public MemorySocket {
 public:
  /// `station` must outlive the socket. A station that is pulled out neither hears nor answers.
  SimSocket(VirtualClock& clock, sim::Station& station) : MemorySocket(clock), station_(station) {
    station_.onAnswer = [this](const QByteArray& data) {
      if (plugged_) arrive(data);
    };
    station_.onUnplug = [this] { unplug(); };
  }

  /// It is pulled out.
  void unplug() { plugged_ = false; }
  /// It is plugged in again.
  void plugIn() { plugged_ = true; }

 protected:
  void onSend(const QByteArray& datagram) override {
    if (plugged_) station_.receive(datagram);
  }

 private:
  sim::Station& station_;
  bool plugged_ = true;
};

}  // namespace lokari::test
