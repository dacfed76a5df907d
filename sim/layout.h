// The tracks and what stands on them.
#pragma once

#include <QString>

#include <functional>
#include <map>
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

/// How a vehicle runs, as its station was told.
struct DriveState {
  int speed = 0;    ///< 0 to `steps`, the emergency stop left out
  int steps = 128;  ///< 14, 27, 28, 128 or 1024
  bool backward = false;
  bool manual = false;    ///< taken out of the station's automatic control
  quint32 functions = 0;  ///< bit n is function Fn, bit 0 the light

  bool operator==(const DriveState&) const = default;
};

class Layout {
 public:
  Vehicle& add(Vehicle vehicle);

  /// The one vehicle on the programming track: the first that may stand there; null for none.
  Decoder* onProgrammingTrack();
  /// The vehicle of this address on the main track; null for none.
  Decoder* onMainTrack(int address);

  const std::vector<std::unique_ptr<Vehicle>>& vehicles() const { return vehicles_; }

  // What the station keeps and sends to the main track. Each setter reports what has changed.

  /// Of any address, whether a vehicle answers to it or not.
  const DriveState& drive(int address) const;
  void setDrive(int address, const DriveState& state);

  /// Outputs count from 1: a function unit of address D has the four from 4 * (D - 1) + 1 on.
  bool output(int number) const;
  void setOutput(int number, bool on);

  bool trackPower() const { return trackPower_; }
  void setTrackPower(bool on);

  /// Every vehicle has been stopped; the track may still have power.
  bool stopped() const { return stopped_; }
  void setStopped(bool on);

  /// The track draws more current than the station gives.
  bool overloaded() const { return overloaded_; }
  void setOverloaded(bool on);

  /// A German line for each change, such as "Fahrzeug 3: Stufe 42 von 128 vorwärts, F0 F3".
  std::function<void(const QString& line)> onChange;

 private:
  void report(const QString& line) const;

  std::vector<std::unique_ptr<Vehicle>> vehicles_;
  std::map<int, DriveState> drives_;
  std::map<int, bool> outputs_;
  bool trackPower_ = true;
  bool stopped_ = false;
  bool overloaded_ = false;
};

}  // namespace lokari::sim
