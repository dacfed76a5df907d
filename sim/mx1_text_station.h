// An MX1 with the text protocol, in both its generations. mx1_text_lines.h has the lines.
//
// Long addresses have a table of indices from 128 on, which fills as they are asked for. Status
// numbers of a failed CV access: 01 no acknowledge, 02 no decoder, 03 short circuit, 04 busy.
//
// "Download" leads into the boot loader, which has the line until it is left: boot_loader.h.
#pragma once

#include <vector>

#include "sim/boot_loader.h"
#include "sim/mx1_text_lines.h"
#include "sim/station.h"

namespace lokari::sim {

class Mx1TextStation final : public Station {
 public:
  explicit Mx1TextStation(const Surroundings& surroundings)
      : Station(surroundings), bootLoader_(surroundings.faults) {}
  void receive(const QByteArray& data) override;

 private:
  void obey(const QByteArray& line);
  void answerState();
  void feedBootLoader(char byte);
  void answerCv(int cv, const TrackResult& result);
  void writeMain(const Mx1Command& command);
  /// The index of a long address, or 0 when no vehicle has it or the table is full.
  int indexOf(int address);

  BootLoader bootLoader_;
  QByteArray input_;
  std::vector<int> addresses_;  ///< the table: the first has index 128
};

}  // namespace lokari::sim
