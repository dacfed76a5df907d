// The tracks and what stands on them.
#pragma once

#include <memory>
#include <vector>

#include "sim/decoder.h"

namespace lokari::sim {

/// Where a vehicle stands. Both is a siding that is switched to the one or the other track.
enum class Place { Both, ProgrammingTrack, MainTrack };

struct Vehicle {
  Decoder decoder;
  Place place = Place::Both;
};

class Layout {
 public:
  Vehicle& add(Vehicle vehicle);

  /// The one vehicle on the programming track: the first that may stand there; null for none.
  Decoder* onProgrammingTrack();
  /// The vehicle of this address on the main track; null for none.
  Decoder* onMainTrack(int address);

  const std::vector<std::unique_ptr<Vehicle>>& vehicles() const { return vehicles_; }

 private:
  std::vector<std::unique_ptr<Vehicle>> vehicles_;
};

}  // namespace lokari::sim
