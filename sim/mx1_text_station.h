// An MX1 with the text protocol, in both its generations. mx1_text_lines.h and mx1_text_driving.h
// have the lines.
//
// Long addresses have a table of indices from 128 on, which fills as they are asked for. Status
// numbers of a failed CV access: 01 no acknowledge, 02 no decoder, 03 short circuit, 04 busy.
//
// "Download" leads into the boot loader, which has the line until it is left: boot_loader.h.
#pragma once

#include <vector>

#include "sim/boot_loader.h"
#include "sim/mx1_text_driving.h"
#include "sim/mx1_text_lines.h"
#include "sim/station.h"

namespace lokari::sim {

class Mx1TextStation : public Station {
 public:
  void receive(const QByteArray& data) override;

 protected:
  Mx1TextStation(const Surroundings& surroundings, bool newGeneration)
      : Station(surroundings), newGeneration_(newGeneration), bootLoader_(surroundings.faults) {}

  /// Another throttle has driven vehicle 3.
  QByteArray unasked() const override;

 private:
  void obey(const QByteArray& line);
  void drive(const Mx1Driving& command);
  void answerVehicle(const Mx1Driving& command, int address);
  void driveVehicle(const Mx1Driving& command, int address);
  void answerState();
  void feedBootLoader(char byte);
  void answerCv(int cv, const TrackResult& result);
  void writeMain(const Mx1Command& command);
  /// The index of a long address, or 0 when no vehicle has it or the table is full.
  int indexOf(int address);
  /// The address behind a vehicle's number, or nothing for an index that was never given.
  std::optional<int> addressOf(int number) const;
  /// What the station says of an index whenever it uses it; nothing for an address.
  QByteArray notice(int number, int address) const;

  bool newGeneration_;
  BootLoader bootLoader_;
  QByteArray input_;
  std::vector<int> addresses_;  ///< the table: the first has index 128
};

class Mx1Station final : public Mx1TextStation {
 public:
  explicit Mx1Station(const Surroundings& surroundings) : Mx1TextStation(surroundings, false) {}
};

class Mx1V25Station final : public Mx1TextStation {
 public:
  explicit Mx1V25Station(const Surroundings& surroundings) : Mx1TextStation(surroundings, true) {}
};

}  // namespace lokari::sim
