#include "sim/layout.h"

namespace lokari::sim {

Vehicle& Layout::add(Vehicle vehicle) {
  vehicles_.push_back(std::make_unique<Vehicle>(std::move(vehicle)));
  return *vehicles_.back();
}

Decoder* Layout::onProgrammingTrack() {
  for (const auto& vehicle : vehicles_) {
    if (vehicle->place != Place::MainTrack) return &vehicle->decoder;
  }
  return nullptr;
}

Decoder* Layout::onMainTrack(int address) {
  for (const auto& vehicle : vehicles_) {
    if (vehicle->place == Place::ProgrammingTrack) continue;
    if (vehicle->decoder.address() == address) return &vehicle->decoder;
  }
  return nullptr;
}

}  // namespace lokari::sim
