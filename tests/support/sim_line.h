// A serial line to a simulated station, in virtual time.
#pragma once

#include "sim/station.h"
#include "support/memory_line.h"

namespace lokari::test {

class SimLine final : public MemoryLine {
 public:
  /// `station` must outlive the line.
  SimLine(VirtualClock& clock, sim::Station& station) : MemoryLine(clock), station_(station) {
    station_.onAnswer = [this](const QByteArray& data) { arrive(data); };
    station_.onUnplug = [this] { vanish(); };
  }

 protected:
  void onWrite(const QByteArray& data) override { station_.receive(data); }

 private:
  sim::Station& station_;
};

}  // namespace lokari::test
